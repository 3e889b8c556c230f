// The ways the bytes take (within one file system, across two, out of files that claim a size
// they do not have) all give the same copy in the same blocks; and a mask run copies what its
// directory holds when the copy begins, however often that directory is read.
#include "CopySupport.h"
#include "FindFile.h"
#include "QXGauge.h"
#include "Qxcopy.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace copytest;

namespace {

// The size of every block, from the progress signal.
QList<qint64> blocksOf(TQXCopy& copy, const QString& source, const QString& dest) {
    QList<qint64> sizes;
    qint64 last = 0;
    const auto connection =
        QObject::connect(&copy, &TQXCopy::progressed, [&](qint64 fileDone, qint64, qint64, qint64) {
            sizes << fileDone - last;
            last = fileDone;
        });
    if (!copy.CopyFile(source, dest, false))
        sizes << -1;
    QObject::disconnect(connection);
    return sizes;
}

// What the blocks of a file of size bytes must be: full ones, then the rest, which is an empty
// block when the size is a multiple of the block.
QList<qint64> expectedBlocks(qint64 size, qint64 block) {
    QList<qint64> sizes(size / block, block);
    sizes << size % block;
    return sizes;
}

dev_t deviceOf(const QString& path) {
    struct stat st {};
    return ::stat(QFile::encodeName(path).constData(), &st) == 0 ? st.st_dev : dev_t(-1);
}

} // namespace

TEST_F(CopyTest, EveryBlockSizeGivesTheSameBlocksWithinAndAcrossFileSystems) {
    QTemporaryDir shm(QStringLiteral("/dev/shm/qxcopy-test-XXXXXX"));
    const bool across = shm.isValid() && deviceOf(shm.path()) != deviceOf(dir.path());
    for (const qint64 size : {qint64(0), qint64(1), qint64(8192), qint64(200'003)}) {
        const QByteArray data = bytes(size, quint32(size));
        const QString here = src(QStringLiteral("f%1.bin").arg(size), data);
        QStringList sources{here};
        if (across) {
            const QString there = shm.filePath(QStringLiteral("f%1.bin").arg(size));
            QFile f(there);
            ASSERT_TRUE(f.open(QIODevice::WriteOnly) && f.write(data) == data.size());
            sources << there;
        }
        for (const int block : {100, 8192, 0}) {
            for (const QString& source : sources) {
                SCOPED_TRACE(testing::Message()
                             << source.toStdString() << " in blocks of " << block);
                TQXCopy copy;
                copy.SetBufferSize(quint16(block));
                const QString target = path(QStringLiteral("dst/copy.bin"));
                QFile::remove(target);
                EXPECT_EQ(blocksOf(copy, source, target),
                          expectedBlocks(size, block == 0 ? 65536 : block));
                EXPECT_EQ(readFile(target), data);
            }
        }
    }
    EXPECT_TRUE(dialogs.requests.isEmpty());
    EXPECT_EQ(entries(path(QStringLiteral("dst"))), QStringList({"copy.bin"}));
    if (!across)
        GTEST_SKIP() << "no second file system at /dev/shm: only the one was tried";
}

// procfs files say they are empty and sysfs files that they hold a page; both hold something
// else, which only reading finds out.
TEST_F(CopyTest, KernelFilesOfAClaimedSizeAreCopiedAsTheyRead) {
    QStringList tried;
    for (const char* name : {"/proc/self/status", "/proc/version", "/proc/filesystems",
                             "/sys/kernel/mm/transparent_hugepage/enabled",
                             "/sys/devices/system/cpu/online", "/sys/class/net/lo/address"}) {
        const QString source = QString::fromLatin1(name);
        const QByteArray before = readFile(source);
        if (before.isEmpty())
            continue;
        tried << source;
        SCOPED_TRACE(name);
        for (const int block : {100, 0}) {
            TQXCopy copy;
            copy.SetBufferSize(quint16(block));
            const QString target = path(QStringLiteral("dst/kernel.txt"));
            QFile::remove(target);
            const QList<qint64> blocks = blocksOf(copy, source, target);
            const QByteArray copied = readFile(target);
            ASSERT_FALSE(blocks.isEmpty());
            EXPECT_NE(blocks.last(), -1);
            // /proc/self/status describes the process, which has changed a little meanwhile.
            if (!source.startsWith(QLatin1String("/proc/self/"))) {
                EXPECT_EQ(copied, before);
            }
            EXPECT_GT(copied.size(), 0);
            EXPECT_EQ(blocks, expectedBlocks(copied.size(), block == 0 ? 65536 : block));
        }
    }
    EXPECT_TRUE(dialogs.requests.isEmpty());
    if (tried.size() < 2)
        GTEST_SKIP() << "fewer than two kernel files to read here";
}

TEST_F(CopyTest, AMaskRunCopiesWhatItsDirectoryHoldsWhenTheCopyBegins) {
    src(QStringLiteral("a.txt"), bytes(10, 1));
    src(QStringLiteral("b.txt"), bytes(20, 2));
    src(QStringLiteral("c.txt"), bytes(30, 3));
    qxtest::passClockTick();

    // Between the reading for the total and the copy, pending events run: here they take a
    // file away, add one and change another's bytes.
    TQXCopy copy;
    TQXGauge total;
    copy.SetCopyProgressGauge(&total);
    watch(copy);
    auto startWork = QObject::connect(&copy, &TQXCopy::started, [this] {
        QMetaObject::invokeMethod(
            qApp,
            [this] {
                QFile::remove(path(QStringLiteral("src/b.txt")));
                src(QStringLiteral("late.txt"), bytes(40, 4));
                src(QStringLiteral("a.txt"), bytes(15, 5));
            },
            Qt::QueuedConnection);
    });
    ASSERT_TRUE(
        copy.CopyFile(path(QStringLiteral("src/*.txt")), path(QStringLiteral("dst/")), false));
    EXPECT_EQ(entries(path(QStringLiteral("dst"))), QStringList({"a.txt", "c.txt", "late.txt"}));
    EXPECT_EQ(readFile(path(QStringLiteral("dst/a.txt"))), bytes(15, 5));
    EXPECT_EQ(readFile(path(QStringLiteral("dst/late.txt"))), bytes(40, 4));
    EXPECT_EQ(log,
              QStringList({"start", "change 0 src/a.txt dst/a.txt", "change 1 src/c.txt dst/c.txt",
                           "change 2 src/late.txt dst/late.txt", "end"}));
    // The total was taken before: 10 + 20 + 30 bytes.
    EXPECT_EQ(total.MaxValue(), 60);
    EXPECT_TRUE(dialogs.requests.isEmpty());

    // Only a file's bytes change: the directory's names stand, and the new bytes are copied.
    qxtest::passClockTick();
    QObject::disconnect(startWork);
    QObject::connect(&copy, &TQXCopy::started, [this] {
        QMetaObject::invokeMethod(
            qApp, [this] { src(QStringLiteral("c.txt"), bytes(35, 6)); }, Qt::QueuedConnection);
    });
    log.clear();
    copy.SetOverWrite(true);
    ASSERT_TRUE(
        copy.CopyFile(path(QStringLiteral("src/*.txt")), path(QStringLiteral("dst/")), false));
    EXPECT_EQ(readFile(path(QStringLiteral("dst/c.txt"))), bytes(35, 6));
    EXPECT_EQ(log.size(), 5);
    EXPECT_EQ(copy.CopiedFiles(), 3);
}

TEST_F(CopyTest, AMaskInTheWorkingDirectoryAndOneThatMatchesNothing) {
    src(QStringLiteral("x.dat"), bytes(7, 1));
    src(QStringLiteral("y.dat"), bytes(8, 2));
    src(QStringLiteral("sub/z.dat"), bytes(9, 3));
    const QString old = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(path(QStringLiteral("src"))));
    TQXCopy copy;
    TQXGauge total;
    copy.SetCopyProgressGauge(&total);
    const bool ok = copy.CopyFile(QStringLiteral("*.dat"), path(QStringLiteral("dst/")), false);
    QDir::setCurrent(old);
    EXPECT_TRUE(ok);
    EXPECT_EQ(entries(path(QStringLiteral("dst"))), QStringList({"x.dat", "y.dat"}));
    EXPECT_EQ(total.MaxValue(), 15);
    EXPECT_EQ(total.Progress(), 15);

    EXPECT_TRUE(
        copy.CopyFile(path(QStringLiteral("src/*.none")), path(QStringLiteral("dst/")), false));
    EXPECT_EQ(copy.CopiedFiles(), 0);
    EXPECT_TRUE(dialogs.requests.isEmpty());
}
