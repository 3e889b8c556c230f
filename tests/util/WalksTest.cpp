// The directory walks read each directory once; what they find, report and delete must be what
// the walks that read every directory twice (TwoReadingWalks.h) found, reported and deleted, on a
// tree with links, hidden entries, empty, read-only and unreadable directories.
#include "FileUtils.h"
#include "QxutilFiles.h"
#include "TestSupport.h"
#include "TwoReadingWalks.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <cstring>
#include <functional>
#include <gtest/gtest.h>
#include <linux/capability.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

// Takes from this thread, while alive, root's power to read, search and write any directory,
// so that permission bits bar it as they bar everybody else.
class PermissionsApply {
public:
    PermissionsApply() {
        m_saved = ::syscall(SYS_capget, &m_header, m_old) == 0;
        if (!m_saved)
            return;
        __user_cap_data_struct reduced[2] = {m_old[0], m_old[1]};
        reduced[0].effective &= ~((1u << CAP_DAC_OVERRIDE) | (1u << CAP_DAC_READ_SEARCH));
        ::syscall(SYS_capset, &m_header, reduced);
    }
    ~PermissionsApply() {
        if (m_saved)
            ::syscall(SYS_capset, &m_header, m_old);
    }
    PermissionsApply(const PermissionsApply&) = delete;
    PermissionsApply& operator=(const PermissionsApply&) = delete;

private:
    __user_cap_header_struct m_header{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct m_old[2]{};
    bool m_saved = false;
};

void setMode(const QString& path, mode_t mode) {
    ::chmod(QFile::encodeName(path).constData(), mode);
}

// root/ with files of every kind, hidden ones, links to a directory inside and outside, to a
// file and to nothing, a pipe, empty directories, a read-only directory and an unreadable one.
void buildTree(const qxtest::TempDir& dir, const QString& root, const QString& outside) {
    for (const char* f : {"a.txt", "B.TXT", "c.dat", ".hidden", ".hdir/x.txt", "sub/one.txt",
                          "sub/Two.DAT", "sub/deeper/three.txt", "sub/deeper/four", "ro.txt",
                          "rodir/r.txt", "rodir/inner/s.txt", "locked/secret.txt"})
        dir.write(root + '/' + QString::fromLatin1(f), QByteArray(int(std::strlen(f)), 'x'));
    const QString r = dir.file(root);
    QDir(r).mkpath(QStringLiteral("empty"));
    QDir(r).mkpath(QStringLiteral("sub/deeper/empty"));
    QFile::link(r + "/sub", r + "/link-to-sub");
    QFile::link(outside, r + "/sub/link-outside");
    QFile::link(r + "/a.txt", r + "/link-to-a.txt");
    QFile::link(r + "/none", r + "/dangling.txt");
    ::mkfifo(QFile::encodeName(r + "/pipe.txt").constData(), 0644);
    FileSetAttr(r + "/ro.txt", faReadOnly);
    setMode(r + "/rodir", 0555);
    setMode(r + "/locked", 0);
}

void unlockTree(const QString& root) {
    setMode(root + "/rodir", 0755);
    setMode(root + "/locked", 0755);
}

// What is left under root, relative, directories marked with "/".
QStringList remains(const QString& root) {
    QStringList names;
    QDirIterator it(root, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        it.next();
        names << QDir(root).relativeFilePath(it.filePath()) +
                     (it.fileInfo().isDir() && !it.fileInfo().isSymLink() ? "/" : "");
    }
    names.sort();
    return names;
}

class Walks : public ::testing::Test {
protected:
    void SetUp() override {
        buildTree(dir, QStringLiteral("t"), outside.path());
        outside.write(QStringLiteral("keep.txt"), "keep");
        root = dir.file(QStringLiteral("t/"));
        // Listings taken from now on can tell later changes by the time stamps.
        qxtest::passClockTick();
    }
    void TearDown() override { unlockTree(dir.file(QStringLiteral("t"))); }

    qxtest::TempDir dir, outside;
    QString root;
};

const char* const kMasks[] = {"*.*", "*.txt", "*", "?.*", "*.", "sub*", "deeper/*.*", "zz"};

} // namespace

TEST_F(Walks, FileListsCountsAndSizesAreThoseOfTheTwoReadingWalk) {
    const PermissionsApply permissions;
    int compared = 0;
    for (const char* m : kMasks)
        for (const bool recursive : {false, true}) {
            const QString mask = QString::fromLatin1(m);
            SCOPED_TRACE(testing::Message() << m << (recursive ? " recursive" : ""));
            QStringList expected;
            tworeadings::walk(root, mask, recursive, [&](const QString& d, const TSearchRec& r) {
                expected << d + r.Name;
                return true;
            });
            TStringList files;
            EXPECT_EQ(qxtGetFiles(&files, root, mask, recursive), expected.size());
            EXPECT_EQ(files.ToStringList(), expected);
            compared += int(expected.size());

            for (const int attr : {0, faReadOnly, faHidden, faSysFile, faArchive})
                for (const int most : {0, 1, 3}) {
                    int count = 0;
                    tworeadings::walk(root, mask, recursive,
                                      [&](const QString&, const TSearchRec& r) {
                                          if ((r.Attr & attr) == attr)
                                              ++count;
                                          return most <= 0 || count < most;
                                      });
                    EXPECT_EQ(qxtFileCount3(root, mask, recursive, attr, most), count)
                        << "attributes " << attr << ", at most " << most;
                }
            EXPECT_EQ(qxtFilesExists(root, mask, recursive), !expected.isEmpty());
            EXPECT_EQ(qxtGetFileSize(root + mask, recursive),
                      tworeadings::size(root + mask, recursive));
        }
    // The tree gives the walks plenty to find; the unreadable directory adds nothing.
    EXPECT_GT(compared, 60);
    TStringList all;
    qxtGetFiles(&all, root, QStringLiteral("*.*"), true);
    EXPECT_FALSE(all.ToStringList().contains(root + "locked/secret.txt"));
    EXPECT_TRUE(all.ToStringList().contains(root + "rodir/inner/s.txt"));
}

TEST_F(Walks, RelativeDirectoriesAndMasksWithADirectoryOfTheirOwn) {
    const QString old = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(root));
    for (const QString& mask : {QStringLiteral("*.txt"), QStringLiteral("sub/*.*")}) {
        QStringList expected;
        tworeadings::walk(QString(), mask, true, [&](const QString& d, const TSearchRec& r) {
            expected << d + r.Name;
            return true;
        });
        TStringList files;
        qxtGetFiles(&files, QString(), mask, true);
        EXPECT_EQ(files.ToStringList(), expected) << mask.toStdString();
        EXPECT_FALSE(expected.isEmpty());
        EXPECT_EQ(qxtGetFileSize(mask, true), tworeadings::size(mask, true));
    }
    QDir::setCurrent(old);
}

TEST_F(Walks, KillPathDeletesAndReportsWhatTheTwoReadingWalkDid) {
    // The same tree twice: one for each walk.
    buildTree(dir, QStringLiteral("u"), outside.path());
    const QString other = dir.file(QStringLiteral("u/"));
    qxtest::passClockTick();
    QStringList expectedTexts, texts;
    bool expected = false, result = false;
    {
        const PermissionsApply permissions;
        {
            qxtest::DialogRecorder dialogs;
            expected = tworeadings::kill(other);
            expectedTexts = dialogs.texts().replaceInStrings(other, QStringLiteral("<T>/"));
        }
        qxtest::DialogRecorder dialogs;
        result = qxtKillPath(root);
        texts = dialogs.texts().replaceInStrings(root, QStringLiteral("<T>/"));
    }
    EXPECT_EQ(result, expected);
    EXPECT_EQ(texts, expectedTexts);
    EXPECT_EQ(remains(root), remains(other));
    // Unreadable and read-only directories keep what they hold, and the walk goes on past them.
    EXPECT_TRUE(remains(root).contains("locked/"));
    EXPECT_TRUE(remains(root).contains("rodir/r.txt"));
    EXPECT_FALSE(remains(root).contains("sub/"));
    EXPECT_FALSE(expected);
    EXPECT_EQ(remains(outside.path()), QStringList({"keep.txt"}));
    unlockTree(dir.file(QStringLiteral("u")));

    // Without the barriers both delete the whole tree and report nothing.
    unlockTree(dir.file(QStringLiteral("t")));
    buildTree(dir, QStringLiteral("v"), outside.path());
    unlockTree(dir.file(QStringLiteral("v")));
    qxtest::passClockTick();
    qxtest::DialogRecorder dialogs;
    EXPECT_TRUE(qxtKillPath(root));
    EXPECT_TRUE(tworeadings::kill(dir.file(QStringLiteral("v"))));
    EXPECT_TRUE(dialogs.texts().isEmpty()) << dialogs.texts().join('|').toStdString();
    EXPECT_FALSE(QFileInfo::exists(root));
    EXPECT_EQ(remains(outside.path()), QStringList({"keep.txt"}));
}

TEST(KillPathEvents, AFileAddedByAnEventDuringTheWalkIsDeletedToo) {
    qxtest::TempDir dir;
    for (int i = 0; i < 20; ++i)
        dir.write(QStringLiteral("leaf/f%1.txt").arg(i), "x");
    qxtest::passClockTick();
    // Pending events run while the walk goes over the entries, before the files are deleted.
    QMetaObject::invokeMethod(
        qApp, [&dir] { dir.write(QStringLiteral("leaf/late.txt"), "late"); }, Qt::QueuedConnection);
    qxtest::DialogRecorder dialogs;
    EXPECT_TRUE(qxtKillPath(dir.file(QStringLiteral("leaf"))));
    EXPECT_TRUE(dialogs.texts().isEmpty()) << dialogs.texts().join('|').toStdString();
    EXPECT_FALSE(QFileInfo::exists(dir.file(QStringLiteral("leaf"))));
}
