// The destination's file system: ready or not, room or not, full in the middle of a copy.
#include "CopySupport.h"
#include "Dialogs.h"
#include "Drives.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <csignal>
#include <gtest/gtest.h>
#include <memory>
#include <sys/mount.h>
#include <sys/resource.h>

using namespace copytest;

namespace {

// A small tmpfs of its own, where the process may mount one (root); unmounted with the object.
class SmallDisk {
public:
    SmallDisk(const QString& where, int kib) : m_where(QFile::encodeName(where)) {
        QDir().mkpath(where);
        const QByteArray options = "size=" + QByteArray::number(kib) + "k";
        m_mounted = ::mount("tmpfs", m_where.constData(), "tmpfs", 0, options.constData()) == 0;
    }
    ~SmallDisk() {
        if (m_mounted)
            ::umount2(m_where.constData(), MNT_DETACH);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;
    bool Mounted() const { return m_mounted; }

private:
    QByteArray m_where;
    bool m_mounted = false;
};

// Lets files of this process grow to at most limit bytes while alive; a write beyond fails as
// on a full disk.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t limit) {
        ::getrlimit(RLIMIT_FSIZE, &m_old);
        m_oldHandler = std::signal(SIGXFSZ, SIG_IGN);
        const rlimit lower{limit, m_old.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &lower);
    }
    ~FileSizeLimit() {
        ::setrlimit(RLIMIT_FSIZE, &m_old);
        std::signal(SIGXFSZ, m_oldHandler);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit m_old{};
    void (*m_oldHandler)(int) = nullptr;
};

QString fullText(const QString& target) {
    return "Fehler beim schreiben von " + target + ". Ziel-Datenträger voll ?";
}

} // namespace

TEST_F(CopyTest, DiskFreeAndIsSameDriveTakeMissingPathsAsTheirParents) {
    const qint64 free = DiskFree(dir.path());
    EXPECT_GT(free, 0);
    EXPECT_GT(DiskFree(path(QStringLiteral("not/yet/made"))), 0);
    EXPECT_TRUE(IsSameDrive(dir.path(), path(QStringLiteral("not/yet/made"))));
    // A path running through a file cannot be reached: "not ready".
    const QString file = dir.write(QStringLiteral("file"), "x");
    EXPECT_EQ(DiskFree(file + "/sub"), -1);
    EXPECT_GT(DiskFree(file), 0);
    EXPECT_FALSE(IsSameDrive(dir.path(), file + "/sub"));
    EXPECT_FALSE(IsSameDrive(dir.path(), QStringLiteral("/proc")));
}

// Source and destination on different file systems: the destination is checked before the run.
TEST_F(CopyTest, ADestinationThatIsNotReadyIsAskedAboutUntilItIs) {
    QTemporaryDir other(QStringLiteral("/dev/shm/qxcopy-XXXXXX"));
    if (!other.isValid() || IsSameDrive(other.path(), dir.path()))
        GTEST_SKIP() << "no second file system at /dev/shm";
    const QString from = dir.write(QStringLiteral("other.txt"), "across");
    const QString blocker = other.filePath(QStringLiteral("blocker"));
    QFile(blocker).open(QIODevice::WriteOnly);
    const QString dest = blocker + "/sub/";
    TQXCopy copy;
    watch(copy);

    dialogs.answers = {mrRetry, mrAbort};
    EXPECT_FALSE(copy.CopyFile(from, dest, false));
    EXPECT_EQ(dialogs.texts(),
              QStringList({"Zieldatenträger nicht bereit", "Zieldatenträger nicht bereit"}));
    EXPECT_EQ(dialogs.requests[0].Buttons, TMsgDlgButtons({mbAbort, mbRetry}));
    EXPECT_EQ(dialogs.requests[0].Type, mtWarning);
    EXPECT_EQ(log, QStringList({"start", "end"}));

    // The way is cleared while the question is shown: Retry goes on.
    dialogs.requests.clear();
    SetDialogHandler([&](TDialogRequest& r) {
        dialogs.requests << r;
        if (r.Text == QStringLiteral("Zieldatenträger nicht bereit")) {
            QFile::remove(blocker);
            return mrRetry;
        }
        return mrYes;
    });
    EXPECT_TRUE(copy.CopyFile(from, dest, false));
    EXPECT_EQ(dialogs.texts(), QStringList({"Zieldatenträger nicht bereit",
                                            "Zielverzeichnis " + dest +
                                                " existiert nicht. Soll es erstellt werden ?"}));
    EXPECT_EQ(readFile(dest + "other.txt"), QByteArray("across"));
}

TEST_F(CopyTest, TooLittleRoomIsAskedForTheRunAndForEachFile) {
    SmallDisk disk(path(QStringLiteral("small")), 256);
    if (!disk.Mounted())
        GTEST_SKIP() << "cannot mount a tmpfs here";
    const QString filler = dir.write(QStringLiteral("small/filler"), bytes(200'000));
    src(QStringLiteral("a.bin"), bytes(100'000, 1));
    src(QStringLiteral("b.bin"), bytes(10'000, 2));
    const QString mask = path(QStringLiteral("src/*.bin"));
    const QString dest = path(QStringLiteral("small/"));
    const QString forAll = QStringLiteral("Zu wenig Speicherplatz für alle Dateien");
    const QString forA = "Zu wenig Speicherplatz für Datei >" + dest + "a.bin< auf Zieldatenträger";
    TQXCopy copy;

    dialogs.answers = {mrAbort};
    EXPECT_FALSE(copy.CopyFile(mask, dest, false));
    EXPECT_EQ(dialogs.texts(), QStringList({forAll}));
    EXPECT_EQ(dialogs.requests[0].Buttons, TMsgDlgButtons({mbAbort, mbRetry, mbIgnore}));

    // Ignore goes on to the files; the one that does not fit is asked about, and Abort ends
    // the run before anything of it is written.
    dialogs.requests.clear();
    dialogs.answers = {mrIgnore, mrAbort};
    EXPECT_FALSE(copy.CopyFile(mask, dest, false));
    EXPECT_EQ(dialogs.texts(), QStringList({forAll, forA}));
    EXPECT_EQ(dialogs.requests[1].Buttons, TMsgDlgButtons({mbAbort, mbRetry}));
    EXPECT_EQ(entries(dest), QStringList({"filler"}));

    // Room made while the question is shown: Retry copies the file and the run goes on.
    dialogs.requests.clear();
    SetDialogHandler([&](TDialogRequest& r) {
        dialogs.requests << r;
        if (r.Text != forA)
            return mrIgnore;
        QFile::remove(filler);
        return mrRetry;
    });
    EXPECT_TRUE(copy.CopyFile(mask, dest, false));
    EXPECT_EQ(dialogs.texts(), QStringList({forAll, forA}));
    EXPECT_EQ(entries(dest), QStringList({"a.bin", "b.bin"}));
}

// The disk fills up after the checks (another program writes meanwhile): the write fails, the
// message names the file, and the old destination is left as it was.
TEST_F(CopyTest, AFullDiskDuringTheCopyLeavesTheOldDestinationIntact) {
    SmallDisk disk(path(QStringLiteral("small")), 1024);
    if (!disk.Mounted())
        GTEST_SKIP() << "cannot mount a tmpfs here (the file-size limit test covers the failure)";
    const QByteArray old = bytes(300'000, 9);
    const QString to = dir.write(QStringLiteral("small/data.bin"), old);
    const QString from = src(QStringLiteral("data.bin"), bytes(400'000, 8));
    TQXCopy copy;
    copy.SetOverWrite(true);
    copy.OnChange = [&](QObject*, int, const QString&, const QString&) {
        dir.write(QStringLiteral("small/filler"), QByteArray(DiskFree(to) - 64 * 1024, 'f'));
    };
    EXPECT_FALSE(copy.CopyFile(from, to, false));
    EXPECT_EQ(dialogs.texts(), QStringList({fullText(to)}));
    EXPECT_EQ(readFile(to), old);
    EXPECT_EQ(entries(path(QStringLiteral("small"))), QStringList({"data.bin", "filler"}));
}

// The same failure without a mount: the process may not let a file grow beyond 50 KiB.
TEST_F(CopyTest, AWriteFailureLeavesTheOldDestinationIntactAndNoPartialFile) {
    const QByteArray old = bytes(20'000, 3);
    const QString to = dir.write(QStringLiteral("dst/data.bin"), old);
    const QString from = src(QStringLiteral("data.bin"), bytes(200'000, 4));
    TQXCopy copy;
    copy.SetOverWrite(true);
    bool ok = true;
    {
        const FileSizeLimit limit(50 * 1024);
        ok = copy.CopyFile(from, to, false);
    }
    EXPECT_FALSE(ok);
    EXPECT_EQ(dialogs.texts(), QStringList({fullText(to)}));
    EXPECT_EQ(dialogs.requests[0].Type, mtError);
    EXPECT_EQ(readFile(to), old);
    EXPECT_EQ(entries(path(QStringLiteral("dst"))), QStringList({"data.bin"}));

    // A new file that fails leaves nothing behind either.
    dialogs.requests.clear();
    {
        const FileSizeLimit limit(50 * 1024);
        ok = copy.CopyFile(from, path(QStringLiteral("dst/new.bin")), false);
    }
    EXPECT_FALSE(ok);
    EXPECT_EQ(dialogs.texts(), QStringList({fullText(path(QStringLiteral("dst/new.bin")))}));
    EXPECT_EQ(entries(path(QStringLiteral("dst"))), QStringList({"data.bin"}));
}
