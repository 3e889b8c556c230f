#include "Application.h"
#include "FileUtils.h"
#include "QxutilFiles.h"
#include "SysUtils.h"
#include "TestSupport.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

QByteArray contents(const QString& file) {
    QFile f(file);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<missing>");
}

bool exists(const QString& path) {
    return QFileInfo(path).exists() || QFileInfo(path).isSymLink();
}

// Puts the current directory somewhere else while alive.
class CurrentDir {
public:
    explicit CurrentDir(const QString& dir) : m_old(QDir::currentPath()) { QDir::setCurrent(dir); }
    ~CurrentDir() { QDir::setCurrent(m_old); }

private:
    QString m_old;
};

} // namespace

TEST(IsMatch, PatternListsAndTheStarRules) {
    // The second field matches; a star in the middle never matches; "*x" matches any name.
    EXPECT_TRUE(qxtIsMatch(QStringLiteral("README.TXT"), QStringLiteral("*.BAK;*.TXT")));
    EXPECT_FALSE(qxtIsMatch(QStringLiteral("A.TXT"), QStringLiteral("A*.TXT")));
    EXPECT_TRUE(qxtIsMatch(QStringLiteral("whatever"), QStringLiteral("*x")));
    EXPECT_TRUE(qxtIsMatch(QStringLiteral("whatever"), QStringLiteral("*")));
    EXPECT_TRUE(qxtIsMatch(QStringLiteral("README.TXT"), QStringLiteral("*.TXT")));
    EXPECT_FALSE(qxtIsMatch(QStringLiteral("README.TXX"), QStringLiteral("*.TXT")));
    EXPECT_TRUE(qxtIsMatch(QStringLiteral("SCAN.BMP"), QStringLiteral("SCAN*")));
    EXPECT_FALSE(qxtIsMatch(QStringLiteral("SCUN.BMP"), QStringLiteral("SCAN*")));
    // Case-sensitive: callers upper-case both sides.
    EXPECT_FALSE(qxtIsMatch(QStringLiteral("readme.txt"), QStringLiteral("*.TXT")));
    // Two stars: only the text between them counts.
    EXPECT_TRUE(qxtIsMatch(QStringLiteral("A.B"), QStringLiteral("*.*")));
    EXPECT_FALSE(qxtIsMatch(QStringLiteral("AB"), QStringLiteral("*.*")));
    EXPECT_TRUE(qxtIsMatch(QStringLiteral("zzabczz"), QStringLiteral("x*abc*y")));
    EXPECT_FALSE(qxtIsMatch(QStringLiteral("zzabzz"), QStringLiteral("x*abc*y")));
    // Fields without stars: exact, or the bounded question-mark compare.
    EXPECT_TRUE(qxtIsMatch(QStringLiteral("B"), QStringLiteral("A;B;C")));
    EXPECT_FALSE(qxtIsMatch(QStringLiteral("D"), QStringLiteral("A;B;C")));
    EXPECT_TRUE(qxtIsMatch(QStringLiteral("AB"), QStringLiteral("AB?D")));
    EXPECT_FALSE(qxtIsMatch(QStringLiteral("ABCD"), QStringLiteral("AB?")));
    EXPECT_TRUE(qxtIsMatch(QStringLiteral("AXC"), QStringLiteral("A?C")));
    EXPECT_FALSE(qxtIsMatch(QStringLiteral("AXD"), QStringLiteral("A?C")));
    EXPECT_TRUE(qxtIsMatch(QStringLiteral("X.GIF"), QStringLiteral("*.G?F")));
}

TEST(Paths, TerminationParentsAndNames) {
    EXPECT_EQ(qxtCheckPath(QString()), QString());
    EXPECT_EQ(qxtCheckPath(QStringLiteral("/usr")), QStringLiteral("/usr/"));
    EXPECT_EQ(qxtCheckPath(QStringLiteral("/usr/")), QStringLiteral("/usr/"));
    EXPECT_EQ(qxtCheckUnixPath(QStringLiteral("a/b")), QStringLiteral("a/b/"));
    EXPECT_EQ(qxtParentDir(QStringLiteral("/a/b/")), QStringLiteral("/a"));
    EXPECT_EQ(qxtParentDir(QStringLiteral("/a/b")), QStringLiteral("/a"));
    EXPECT_EQ(qxtParentDir(QStringLiteral("/a")), QString());
    EXPECT_EQ(qxtParentDir(QStringLiteral("ab")), QString());
    EXPECT_EQ(qxtDirName(QStringLiteral("/a/b/file.txt")), QStringLiteral("b"));
    EXPECT_EQ(qxtDirName(QStringLiteral("/a/b/")), QStringLiteral("b"));
    EXPECT_EQ(qxtDirName(QStringLiteral("/file.txt")), QString());
    EXPECT_EQ(qxtAppDir(), QCoreApplication::applicationDirPath() + QLatin1Char('/'));

    QString path, name = QStringLiteral("keep"), ext = QStringLiteral(".me");
    qxtSplitFileName(QStringLiteral("/x/y.z/README"), path, name, ext);
    EXPECT_EQ(path, QStringLiteral("/x/y.z/"));
    EXPECT_EQ(name, QStringLiteral("keep")); // no dot in the name part: left as they were
    EXPECT_EQ(ext, QStringLiteral(".me"));
    qxtSplitFileName(QStringLiteral("/x/archive.tar.gz"), path, name, ext);
    EXPECT_EQ(name, QStringLiteral("archive.tar"));
    EXPECT_EQ(ext, QStringLiteral(".gz"));

    qxtest::TempDir dir;
    const QString target = dir.write(QStringLiteral("real/file.txt"), "x");
    ASSERT_TRUE(QFile::link(dir.file(QStringLiteral("real")), dir.file(QStringLiteral("alias"))));
    EXPECT_EQ(qxtGetLongFileName(dir.file(QStringLiteral("alias/../alias/file.txt"))),
              QFileInfo(target).canonicalFilePath());
    EXPECT_EQ(qxtGetLongFileName(QStringLiteral("no/such/file")), QStringLiteral("no/such/file"));
    EXPECT_EQ(qxtGetShortFileName(QStringLiteral("/a/Long Name.text")),
              QStringLiteral("/a/Long Name.text"));
}

TEST(Predicates, EntriesAndAttributes) {
    TSearchRec r;
    r.Name = QStringLiteral(".");
    r.Attr = faDirectory;
    EXPECT_FALSE(qxtIsDirectory(r));
    EXPECT_FALSE(qxtIsFile(r));
    r.Name = QStringLiteral("sub");
    EXPECT_TRUE(qxtIsDirectory(r));
    r.Attr = faArchive | faCompressed;
    EXPECT_TRUE(qxtIsFile(r));
    EXPECT_TRUE(qxtIsCompressed(r));
    r.Attr = faSysFile; // a link
    EXPECT_TRUE(qxtIsFile(r));
    EXPECT_FALSE(qxtIsCompressed(r));

    qxtest::TempDir dir;
    const QString f = dir.write(QStringLiteral("f"), "1");
    EXPECT_FALSE(qxtHasAttr(f, faReadOnly));
    FileSetAttr(f, faReadOnly);
    EXPECT_TRUE(qxtHasAttr(f, faReadOnly | faArchive));
    EXPECT_FALSE(qxtHasAttr(f, faReadOnly | faHidden));
    // A missing file reads as -1, which holds every bit.
    EXPECT_TRUE(qxtHasAttr(dir.file(QStringLiteral("none")), faReadOnly));
    EXPECT_TRUE(qxtFileDateTime(f).isValid());
    EXPECT_LE(qAbs(qxtFileDateTime(f).secsTo(QFileInfo(f).lastModified())), 2);
    EXPECT_FALSE(qxtFileDateTime(dir.file(QStringLiteral("none"))).isValid());
}

TEST(Folders, XdgTwinsAndTheFoldersWithout) {
    EXPECT_EQ(qxtDesktopDir(),
              QStandardPaths::writableLocation(QStandardPaths::DesktopLocation) + '/');
    EXPECT_EQ(qxtPersonalDir(),
              QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation) + '/');
    EXPECT_EQ(qxtAppDataDir(),
              QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + '/');
    EXPECT_TRUE(qxtStartUpDir().endsWith(QStringLiteral("/autostart/")));
    EXPECT_EQ(qxtProgrammsDir(), qxtStartMenuDir());
    EXPECT_TRUE(qxtFontDir().endsWith('/'));
    EXPECT_TRUE(qxtInternetCacheDir().endsWith('/'));
    EXPECT_EQ(qxtFavoritesDir(), QString());
    EXPECT_EQ(qxtRecentDir(), QString());
    EXPECT_EQ(qxtSendToDir(), QString());
    EXPECT_EQ(qxtGetSpecialFolderDir(-1), QString());
}

TEST(NextFileName, SeriesGapsAndOverflow) {
    qxtest::TempDir dir;
    const QString pattern = dir.file(QStringLiteral("SCAN###.BMP"));
    EXPECT_EQ(qxtGetNextFileName(pattern), dir.file(QStringLiteral("SCAN000.BMP")));
    dir.write(QStringLiteral("SCAN012.BMP"), "");
    dir.write(QStringLiteral("SCAN007.BMP"), "");
    EXPECT_EQ(qxtGetNextFileName(pattern), dir.file(QStringLiteral("SCAN013.BMP")));
    // Not part of the series: other names, a counter that is no number, a directory.
    dir.write(QStringLiteral("SCAN9.BMP"), "");
    dir.write(QStringLiteral("SCANXYZ.BMP"), "");
    dir.write(QStringLiteral("SCAN999.GIF"), "");
    QDir(dir.path()).mkdir(QStringLiteral("SCAN500.BMP"));
    EXPECT_EQ(qxtGetNextFileName(pattern), dir.file(QStringLiteral("SCAN013.BMP")));
    // Matching is case-blind; the found name keeps its spelling.
    dir.write(QStringLiteral("scan020.bmp"), "");
    EXPECT_EQ(qxtGetNextFileName(pattern), dir.file(QStringLiteral("scan021.bmp")));
    // A counter that would outgrow its places gives the last name again.
    dir.write(QStringLiteral("SCAN99.BMP"), "");
    EXPECT_EQ(qxtGetNextFileName(dir.file(QStringLiteral("SCAN##.BMP"))),
              dir.file(QStringLiteral("SCAN99.BMP")));
    // A name without extension numbers as well.
    dir.write(QStringLiteral("LOG04"), "");
    EXPECT_EQ(qxtGetNextFileName(dir.file(QStringLiteral("LOG##"))), dir.file("LOG05"));

    qxtest::DialogRecorder dialogs;
    EXPECT_EQ(qxtGetNextFileName(dir.file(QStringLiteral("SCAN.BMP"))), QString());
    EXPECT_EQ(qxtGetNextFileName(dir.file(QStringLiteral("S###########.BMP"))), QString());
    EXPECT_EQ(dialogs.texts(), QStringList({"Fehler in Filepattern", "Fehler in Filepattern"}));
}

TEST(KillPath, TreeWithReadOnlyFilesAndALinkOutside) {
    qxtest::TempDir dir;
    qxtest::TempDir outside;
    const QString kept = outside.write(QStringLiteral("keep.txt"), "precious");
    dir.write(QStringLiteral("victim/a.txt"), "a");
    dir.write(QStringLiteral("victim/.hidden"), "h");
    dir.write(QStringLiteral("victim/sub/deeper/b.txt"), "b");
    const QString ro = dir.write(QStringLiteral("victim/sub/readonly.txt"), "r");
    FileSetAttr(ro, faReadOnly);
    ASSERT_TRUE(QFile::link(outside.path(), dir.file(QStringLiteral("victim/sub/out"))));

    qxtest::DialogRecorder dialogs;
    EXPECT_TRUE(qxtKillPath(dir.file(QStringLiteral("victim"))));
    EXPECT_TRUE(dialogs.texts().isEmpty()) << dialogs.texts().join('|').toStdString();
    EXPECT_FALSE(exists(dir.file(QStringLiteral("victim"))));
    EXPECT_EQ(contents(kept), QByteArray("precious"));

    // A link given as the path goes itself; its target stays.
    ASSERT_TRUE(QFile::link(outside.path(), dir.file(QStringLiteral("alias"))));
    EXPECT_TRUE(qxtKillPath(dir.file(QStringLiteral("alias/"))));
    EXPECT_FALSE(exists(dir.file(QStringLiteral("alias"))));
    EXPECT_EQ(contents(kept), QByteArray("precious"));
}

TEST(KillPath, ShortPathsAreWarnedAboutButDeleted) {
    qxtest::TempDir dir;
    dir.write(QStringLiteral("ab/x.txt"), "x");
    const CurrentDir cd(dir.path());
    qxtest::DialogRecorder dialogs;
    EXPECT_TRUE(qxtKillPath(QStringLiteral("ab")));
    EXPECT_EQ(dialogs.texts(),
              QStringList({"qxtKillPath - Fehler : ab/ kann nicht gelöscht werden"}));
    EXPECT_FALSE(exists(dir.file(QStringLiteral("ab"))));
}

TEST(Sizes, OneFileMasksAndRecursion) {
    qxtest::TempDir dir;
    dir.write(QStringLiteral("a.txt"), "12345");
    dir.write(QStringLiteral("b.TXT"), "123");
    dir.write(QStringLiteral("c.bin"), "1234567");
    dir.write(QStringLiteral("sub/d.txt"), "1");
    dir.write(QStringLiteral("sub/deep/e.txt"), "12");
    dir.write(QStringLiteral(".hid/f.txt"), "1234");
    EXPECT_EQ(qxtGetFileSize(dir.file(QStringLiteral("a.txt")), false), 5);
    EXPECT_EQ(qxtGetFileSize(dir.file(QStringLiteral("missing")), true), 0);
    EXPECT_EQ(qxtGetFileSize(dir.file(QStringLiteral("sub")), false), 0);
    EXPECT_EQ(qxtGetFileSize(dir.file(QStringLiteral("*.txt")), false), 8);
    EXPECT_EQ(qxtGetFileSize(dir.file(QStringLiteral("*.txt")), true), 15);
    EXPECT_EQ(qxtGetFileSize(dir.file(QStringLiteral("*.*")), true), 22);
    EXPECT_EQ(qxtGetFileSize(dir.file(QStringLiteral("?.bin")), true), 7);
}

TEST(Counters, CountsAttributesLimitsAndLists) {
    qxtest::TempDir dir;
    dir.write(QStringLiteral("one.txt"), "");
    dir.write(QStringLiteral("two.txt"), "");
    dir.write(QStringLiteral("pic.gif"), "");
    dir.write(QStringLiteral("sub/three.txt"), "");
    dir.write(QStringLiteral("sub/inner/four.txt"), "");
    dir.write(QStringLiteral(".cfg/five.txt"), "");
    FileSetAttr(dir.file(QStringLiteral("two.txt")), faReadOnly);
    FileSetAttr(dir.file(QStringLiteral("sub/three.txt")), faReadOnly);
    qxtest::TempDir outside;
    outside.write(QStringLiteral("six.txt"), "");
    ASSERT_TRUE(QFile::link(outside.path(), dir.file(QStringLiteral("sub/out.txt"))));

    // The link counts as a file of its own and is not followed.
    EXPECT_EQ(qxtFileCount(dir.path(), QStringLiteral("*.txt"), false), 2);
    EXPECT_EQ(qxtFileCount(dir.path(), QStringLiteral("*.txt"), true), 6);
    EXPECT_EQ(qxtFileCount(dir.path(), QStringLiteral("*.*"), true), 7);
    EXPECT_EQ(qxtFileCount2(dir.path(), QStringLiteral("*.txt"), true, faReadOnly), 2);
    EXPECT_EQ(qxtFileCount2(dir.path(), QStringLiteral("*.txt"), true, faSysFile), 1);
    EXPECT_EQ(qxtFileCount3(dir.path(), QStringLiteral("*.txt"), true, 0, 3), 3);
    EXPECT_EQ(qxtFileCount3(dir.path(), QStringLiteral("*.txt"), true, 0, 0), 6);
    EXPECT_TRUE(qxtFilesExists(dir.path(), QStringLiteral("*.gif"), false));
    EXPECT_FALSE(qxtFilesExists(dir.path(), QStringLiteral("*.png"), true));
    EXPECT_TRUE(qxtFilesExists(dir.path(), QStringLiteral("four.*"), true));

    TStringList files;
    EXPECT_EQ(qxtGetFiles(&files, dir.path() + '/', QStringLiteral("*.txt"), true), 6);
    const QString root = dir.path() + '/';
    EXPECT_EQ(
        files.ToStringList(),
        QStringList({root + "one.txt", root + "two.txt", root + ".cfg/five.txt",
                     root + "sub/out.txt", root + "sub/three.txt", root + "sub/inner/four.txt"}));
    EXPECT_EQ(qxtGetFiles(nullptr, dir.path(), QStringLiteral("*.*"), true), 0);
}

TEST(Drives, MountPointsSerialsAndLists) {
    qxtest::TempDir dir;
    const QString drive = qxtFindDrive(dir.path());
    EXPECT_TRUE(drive.endsWith('/'));
    EXPECT_TRUE(QDir(dir.path()).canonicalPath().startsWith(drive));
    EXPECT_EQ(qxtFindDrive(QStringLiteral("/")), QStringLiteral("/"));

    const QStringList drives = qxtGetLogicalDrivesString(false).split(';');
    const QStringList all = qxtGetLogicalDrivesString(true).split(';');
    EXPECT_TRUE(drives.contains(QStringLiteral("/")));
    EXPECT_TRUE(all.contains(QStringLiteral("/proc/")));
    EXPECT_FALSE(drives.contains(QStringLiteral("/proc/")));
    for (const QString& d : drives)
        EXPECT_TRUE(all.contains(d)) << d.toStdString();

    // The text form is the number as Windows shows it.
    const quint32 serial = qxtVolumeSerNum2(dir.path());
    EXPECT_EQ(qxtVolumeSerNum(dir.path()), QStringLiteral("%1-%2")
                                               .arg(serial >> 16, 4, 16, QLatin1Char('0'))
                                               .arg(serial & 0xFFFF, 4, 16, QLatin1Char('0'))
                                               .toUpper());
    EXPECT_EQ(qxtVolumeSerNum2(dir.file(QStringLiteral("none"))), 0u);
    EXPECT_EQ(qxtVolumeSerNum(dir.file(QStringLiteral("none"))), QString());
    EXPECT_EQ(qxtNetworkVolumeName(dir.path()), QString());
    EXPECT_EQ(qxtFindCDROM('Z'), QString());
}
