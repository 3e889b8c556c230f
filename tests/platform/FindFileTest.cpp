#include "FindFile.h"
#include "Drives.h"
#include "FileUtils.h"
#include "TestSupport.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <utime.h>

namespace {

struct Entry {
    QString name;
    int attr;
};

QList<Entry> list(const QString& path, int attr) {
    QList<Entry> out;
    TSearchRec sr;
    for (int rc = FindFirst(path, attr, sr); rc == 0; rc = FindNext(sr))
        out.append({sr.Name, sr.Attr});
    FindClose(sr);
    return out;
}

QStringList names(const QList<Entry>& entries) {
    QStringList out;
    for (const Entry& e : entries)
        out << e.name;
    return out;
}

int attrOf(const QList<Entry>& entries, const QString& name) {
    for (const Entry& e : entries)
        if (e.name == name)
            return e.attr;
    return -1;
}

void makeReadOnly(const QString& file) {
    ASSERT_EQ(::chmod(QFile::encodeName(file).constData(), 0444), 0);
}

} // namespace

TEST(Masks, FollowTheWindowsRules) {
    // Case-blind, and "*.*" takes every name, also one without a dot.
    EXPECT_TRUE(MatchesMask(QStringLiteral("readme.TXT"), QStringLiteral("*.txt")));
    EXPECT_TRUE(MatchesMask(QStringLiteral("README"), QStringLiteral("*.*")));
    EXPECT_TRUE(MatchesMask(QStringLiteral(".profile"), QStringLiteral("*")));
    EXPECT_FALSE(MatchesMask(QStringLiteral("readme.txt.bak"), QStringLiteral("*.txt")));
    EXPECT_TRUE(MatchesMask(QStringLiteral("x1y.dat"), QStringLiteral("x*y.*")));
    // "name.*" also finds the name without extension; "*." only names without one.
    EXPECT_TRUE(MatchesMask(QStringLiteral("makefile"), QStringLiteral("makefile.*")));
    EXPECT_TRUE(MatchesMask(QStringLiteral("makefile"), QStringLiteral("*.")));
    EXPECT_FALSE(MatchesMask(QStringLiteral("make.am"), QStringLiteral("*.")));
    // "?" takes one character; a run before a dot or the end may take fewer, never a dot.
    EXPECT_TRUE(MatchesMask(QStringLiteral("SCAN007.BMP"), QStringLiteral("SCAN???.BMP")));
    EXPECT_TRUE(MatchesMask(QStringLiteral("SCAN7.BMP"), QStringLiteral("SCAN???.BMP")));
    EXPECT_FALSE(MatchesMask(QStringLiteral("SCAN0007.BMP"), QStringLiteral("SCAN???.BMP")));
    EXPECT_FALSE(MatchesMask(QStringLiteral("a.c"), QStringLiteral("a?c")));
    EXPECT_TRUE(MatchesMask(QStringLiteral("ab"), QStringLiteral("ab??")));
    EXPECT_FALSE(MatchesMask(QStringLiteral("abcde"), QStringLiteral("ab??")));
    EXPECT_FALSE(MatchesMask(QStringLiteral("a.txt"), QString()));
}

TEST(FindFirst, AttributesOrderAndExclusions) {
    qxtest::TempDir dir;
    dir.write(QStringLiteral("b.txt"), "12345");
    dir.write(QStringLiteral("A.txt"), "");
    dir.write(QStringLiteral("c.txt"), "x");
    dir.write(QStringLiteral(".hidden"), "h");
    dir.write(QStringLiteral("sub/inner.txt"), "i");
    makeReadOnly(dir.file(QStringLiteral("c.txt")));
    qxtest::TempDir outside;
    ASSERT_TRUE(QFile::link(outside.path(), dir.file(QStringLiteral("link"))));

    const QString all = dir.path() + QStringLiteral("/*.*");
    const QList<Entry> any = list(all, faAnyFile);
    // "." and ".." first, then by upper-cased name, as NTFS lists a directory.
    EXPECT_EQ(names(any),
              QStringList({".", "..", ".hidden", "A.txt", "b.txt", "c.txt", "link", "sub"}));
    EXPECT_EQ(attrOf(any, "."), faDirectory);
    EXPECT_EQ(attrOf(any, "A.txt"), faArchive);
    EXPECT_EQ(attrOf(any, "c.txt"), faArchive | faReadOnly);
    EXPECT_EQ(attrOf(any, ".hidden"), faArchive | faHidden);
    EXPECT_EQ(attrOf(any, "sub"), faDirectory);
    // A link to a directory is never a directory, so no walk leaves the tree through it.
    EXPECT_EQ(attrOf(any, "link"), faSysFile);

    // Hidden, system and directory entries come only when asked for.
    EXPECT_EQ(names(list(all, 0)), QStringList({"A.txt", "b.txt", "c.txt"}));
    EXPECT_EQ(names(list(all, faDirectory)),
              QStringList({".", "..", "A.txt", "b.txt", "c.txt", "sub"}));
    EXPECT_EQ(names(list(all, faHidden)), QStringList({".hidden", "A.txt", "b.txt", "c.txt"}));

    TSearchRec sr;
    ASSERT_EQ(FindFirst(dir.path() + QStringLiteral("/B.TXT"), faAnyFile, sr), 0);
    EXPECT_EQ(sr.Name, QStringLiteral("b.txt"));
    EXPECT_EQ(sr.Size, 5);
    EXPECT_EQ(FindNext(sr), ERROR_NO_MORE_FILES);
    EXPECT_EQ(FindFirst(dir.path() + QStringLiteral("/*.gif"), faAnyFile, sr),
              ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(FindFirst(dir.path() + QStringLiteral("/none/*.*"), faAnyFile, sr),
              ERROR_PATH_NOT_FOUND);
}

TEST(FindFirst, EntriesRemovedDuringTheSearchArePassedOver) {
    qxtest::TempDir dir;
    dir.write(QStringLiteral("a"), "");
    dir.write(QStringLiteral("b"), "");
    dir.write(QStringLiteral("c"), "");
    TSearchRec sr;
    ASSERT_EQ(FindFirst(dir.path() + QStringLiteral("/?"), faAnyFile, sr), 0);
    EXPECT_EQ(sr.Name, QStringLiteral("a"));
    ASSERT_TRUE(QFile::remove(dir.file(QStringLiteral("b"))));
    ASSERT_EQ(FindNext(sr), 0);
    EXPECT_EQ(sr.Name, QStringLiteral("c"));
}

TEST(FileAttributes, ReadOnlyRoundTripAndDosTime) {
    qxtest::TempDir dir;
    const QString f = dir.write(QStringLiteral("f.dat"), "data");
    EXPECT_EQ(FileGetAttr(f), faArchive);
    EXPECT_EQ(FileSetAttr(f, faReadOnly), 0);
    EXPECT_EQ(FileGetAttr(f), faArchive | faReadOnly);
    EXPECT_EQ(FileSetAttr(f, 0), 0);
    EXPECT_EQ(FileGetAttr(f), faArchive);
    EXPECT_EQ(FileGetAttr(dir.file(QStringLiteral("missing"))), -1);
    EXPECT_EQ(FileGetAttr(dir.path()), faDirectory);

    // DOS times step in two seconds: 10:20:31 reads back as 10:20:30.
    const QDateTime when(QDate(2001, 2, 3), QTime(10, 20, 31));
    struct utimbuf times {};
    times.actime = times.modtime = time_t(when.toSecsSinceEpoch());
    ASSERT_EQ(::utime(QFile::encodeName(f).constData(), &times), 0);
    EXPECT_EQ(FileDateToDateTime(FileAge(f)), QDateTime(QDate(2001, 2, 3), QTime(10, 20, 30)));
    EXPECT_EQ(FileAge(dir.file(QStringLiteral("missing"))), -1);
    EXPECT_FALSE(FileDateToDateTime(-1).isValid());
}

TEST(FileUtils, KeepTheWindowsRulesForRenameDeleteAndCopy) {
    qxtest::TempDir dir;
    const QString a = dir.write(QStringLiteral("a"), "alpha");
    const QString b = dir.write(QStringLiteral("b"), "beta");
    // Renaming never replaces.
    EXPECT_FALSE(RenameFile(a, b));
    EXPECT_TRUE(RenameFile(a, a));
    EXPECT_TRUE(RenameFile(a, dir.file(QStringLiteral("c"))));
    EXPECT_FALSE(QFileInfo::exists(a));

    // Copies carry permissions and write time; read-only targets are refused.
    const QString c = dir.file(QStringLiteral("c"));
    struct utimbuf times {};
    times.actime = times.modtime = 1000000000;
    ASSERT_EQ(::utime(QFile::encodeName(c).constData(), &times), 0);
    makeReadOnly(c);
    EXPECT_FALSE(CopyFile(c, b, true));
    EXPECT_TRUE(CopyFile(c, b, false));
    QFile copy(b);
    ASSERT_TRUE(copy.open(QIODevice::ReadOnly));
    EXPECT_EQ(copy.readAll(), QByteArray("alpha"));
    EXPECT_EQ(QFileInfo(b).lastModified().toSecsSinceEpoch(), 1000000000);
    EXPECT_EQ(FileGetAttr(b) & faReadOnly, faReadOnly);
    EXPECT_FALSE(CopyFile(c, b, false));
    EXPECT_FALSE(CopyFile(dir.path(), dir.file(QStringLiteral("d")), false));

    // Read-only files and directories are not deleted; a link goes, its target stays.
    EXPECT_FALSE(DeleteFile(c));
    EXPECT_FALSE(DeleteFile(dir.path()));
    const QString link = dir.file(QStringLiteral("l"));
    ASSERT_TRUE(QFile::link(c, link));
    EXPECT_TRUE(DeleteFile(link));
    EXPECT_TRUE(QFileInfo::exists(c));
    FileSetAttr(c, 0);
    EXPECT_TRUE(DeleteFile(c));

    EXPECT_EQ(ExtractFilePath(QStringLiteral("/a/b.c/d.txt")), QStringLiteral("/a/b.c/"));
    EXPECT_EQ(ExtractFileName(QStringLiteral("/a/b.c/d.txt")), QStringLiteral("d.txt"));
    EXPECT_EQ(ExtractFileExt(QStringLiteral("/a/b.c/d")), QString());
    EXPECT_EQ(ExtractFileExt(QStringLiteral("/a/b/d.tar.gz")), QStringLiteral(".gz"));
    EXPECT_EQ(ExpandFileName(QStringLiteral("/a/./b/../c")), QStringLiteral("/a/c"));
}

TEST(Drives, MountInfoAndDriveTypes) {
    const QByteArray text = "22 27 0:21 / /proc rw,relatime - proc proc rw\n"
                            "27 1 254:0 / / rw,relatime shared:1 - ext4 /dev/vda rw\n"
                            "40 27 0:40 / /mnt/my\\040share rw master:3 - cifs //server/share rw\n"
                            "41 27 11:0 / /media/cd ro - iso9660 /dev/sr0 ro\n"
                            "42 27 0:45 / /run/user/1000 rw - tmpfs tmpfs rw\n"
                            "garbage line\n";
    const QList<TMountPoint> mounts = ParseMountInfo(text);
    ASSERT_EQ(mounts.size(), 5);
    EXPECT_EQ(mounts[1].Root, QStringLiteral("/"));
    EXPECT_EQ(mounts[1].Source, QStringLiteral("/dev/vda"));
    EXPECT_EQ(mounts[1].Major, 254u);
    EXPECT_EQ(mounts[2].Root, QStringLiteral("/mnt/my share/"));
    EXPECT_EQ(mounts[2].FsType, QStringLiteral("cifs"));
    EXPECT_EQ(DriveTypeOf(mounts[0]), DRIVE_UNKNOWN);
    EXPECT_EQ(DriveTypeOf(mounts[2]), DRIVE_REMOTE);
    EXPECT_EQ(DriveTypeOf(mounts[3]), DRIVE_CDROM);
    EXPECT_EQ(DriveTypeOf(mounts[4]), DRIVE_RAMDISK);
    TMountPoint optical = mounts[3];
    optical.FsType = QStringLiteral("ext4");
    EXPECT_EQ(DriveTypeOf(optical), DRIVE_CDROM); // a /dev/sr* device is a CD drive

    EXPECT_TRUE(IsDriveRoot(QStringLiteral("/")));
    qxtest::TempDir dir;
    EXPECT_FALSE(IsDriveRoot(dir.path()));
    EXPECT_EQ(GetDriveType(dir.path()), DRIVE_NO_ROOT_DIR);
    EXPECT_NE(GetDriveType(QStringLiteral("/")), DRIVE_NO_ROOT_DIR);
    const TMountPoint holder = MountPointOf(dir.path());
    EXPECT_TRUE(QDir(dir.path()).canonicalPath().startsWith(holder.Root))
        << holder.Root.toStdString();
}

TEST(Drives, LogicalDrivesKeepTheFirstOrderAndTheVisibleMount) {
    const QByteArray text = "27 1 254:0 / / rw - ext4 /dev/vda rw\n"
                            "22 27 0:21 / /proc rw - proc proc rw\n"
                            "30 27 8:17 / /media/usb rw - vfat /dev/sdb1 rw\n"
                            "31 27 0:50 / /home rw - ext4 /dev/vda2 rw\n"
                            "32 27 0:45 / /run/user/1000 rw - tmpfs tmpfs rw\n"
                            "33 27 0:46 / /dev/shm rw - tmpfs tmpfs rw\n"
                            "34 27 0:47 / /tmp rw - tmpfs tmpfs rw\n"
                            "35 30 8:18 / /media/usb rw - ext4 /dev/sdb2 rw\n";
    const QList<TMountPoint> mounts = ParseMountInfo(text);
    QStringList roots;
    for (const TMountPoint& m : LogicalDrives(mounts, false))
        roots << m.Root;
    EXPECT_EQ(roots, (QStringList{QStringLiteral("/"), QStringLiteral("/media/usb/"),
                                  QStringLiteral("/home/"), QStringLiteral("/tmp/")}));
    // A file system mounted over another hides it: the drive is the one mounted last.
    EXPECT_EQ(LogicalDrives(mounts, false)[1].Source, QStringLiteral("/dev/sdb2"));
    EXPECT_EQ(LogicalDrives(mounts, true).size(), 7);
    EXPECT_TRUE(LogicalDrives({}, false).isEmpty());
    TMountPoint noDevice = mounts[0];
    noDevice.Major = 0;
    EXPECT_EQ(VolumeLabel(noDevice), QString());
    EXPECT_EQ(VolumeUuid(TMountPoint{}), QString());
}
