#include "Application.h"
#include "Drives.h"
#include "FileUtils.h"
#include "QxutilFiles.h"
#include "SysUtils.h"
#include "TestSupport.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/fs.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/mount.h>
#include <unistd.h>

namespace {

QByteArray contents(const QString& file) {
    QFile f(file);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<missing>");
}

// Mounts a small tmpfs on dir inside a mount namespace of this test process, so nothing outside
// sees it; false where the process may not mount.
bool mountTmpfs(const QString& dir) {
    static bool ownNamespace = false;
    if (!ownNamespace) {
        if (::unshare(CLONE_NEWNS) != 0 ||
            ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
            return false;
        ownNamespace = true;
    }
    return ::mount("qxtest", QFile::encodeName(dir).constData(), "tmpfs", 0, "size=1m") == 0;
}

// Sets or clears the immutable flag, which stops even root from deleting a file.
bool setImmutable(const QString& file, bool on) {
    const int fd = ::open(QFile::encodeName(file).constData(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return false;
    int flags = 0;
    bool ok = ::ioctl(fd, FS_IOC_GETFLAGS, &flags) == 0;
    flags = on ? (flags | FS_IMMUTABLE_FL) : (flags & ~FS_IMMUTABLE_FL);
    ok = ok && ::ioctl(fd, FS_IOC_SETFLAGS, &flags) == 0;
    ::close(fd);
    return ok;
}

// A small SZDD compressor as COMPRESS.EXE writes the format: LZSS over a 4096-byte window that
// starts filled with blanks at position 4080, eight items per control byte (bit set = literal),
// matches of 3 to 18 bytes as a 12-bit window position and a 4-bit length.
QByteArray szdd(const QByteArray& data) {
    QByteArray out("SZDD\x88\xF0\x27\x33", 8);
    out.append('A');
    out.append('\0');
    for (int i = 0; i < 4; ++i)
        out.append(char((data.size() >> (8 * i)) & 0xFF));
    std::array<char, 4096> window;
    window.fill(' ');
    int pos = 4096 - 16;
    qsizetype i = 0;
    while (i < data.size()) {
        quint8 control = 0;
        QByteArray items;
        for (int bit = 0; bit < 8 && i < data.size(); ++bit) {
            const int maxLen = int(std::min<qsizetype>(18, data.size() - i));
            int bestLen = 0, bestOff = 0;
            for (int off = 0; off < 4096 && maxLen >= 3; ++off) {
                int len = 0;
                // The expander copies byte by byte, so a match may read what it just wrote.
                while (len < maxLen) {
                    const int src = (off + len) & 4095;
                    const int written = (src - pos) & 4095;
                    const char c = written < len ? data[i + written] : window[src];
                    if (c != data[i + len])
                        break;
                    ++len;
                }
                if (len > bestLen) {
                    bestLen = len;
                    bestOff = off;
                }
            }
            int taken = 1;
            if (bestLen >= 3) {
                items.append(char(bestOff & 0xFF));
                items.append(char(((bestOff >> 4) & 0xF0) | (bestLen - 3)));
                taken = bestLen;
            } else {
                control |= quint8(1u << bit);
                items.append(data[i]);
            }
            for (int k = 0; k < taken; ++k) {
                window[pos] = data[i + k];
                pos = (pos + 1) & 4095;
            }
            i += taken;
        }
        out.append(char(control));
        out.append(items);
    }
    return out;
}

} // namespace

TEST(MoveFile, RenameAndItsFallbacks) {
    qxtest::TempDir dir;
    const QString a = dir.write(QStringLiteral("a.txt"), "alpha");
    EXPECT_TRUE(qxtMoveFile(a, dir.file(QStringLiteral("b.txt"))));
    EXPECT_FALSE(QFileInfo::exists(a));
    EXPECT_EQ(contents(dir.file(QStringLiteral("b.txt"))), QByteArray("alpha"));

    // An existing target stops the rename; the copy then replaces it.
    const QString c = dir.write(QStringLiteral("c.txt"), "gamma");
    EXPECT_TRUE(qxtMoveFile(c, dir.file(QStringLiteral("b.txt"))));
    EXPECT_FALSE(QFileInfo::exists(c));
    EXPECT_EQ(contents(dir.file(QStringLiteral("b.txt"))), QByteArray("gamma"));

    // A missing target directory is created with its parents.
    const QString d = dir.write(QStringLiteral("d.txt"), "delta");
    EXPECT_TRUE(qxtMoveFile(d, dir.file(QStringLiteral("new/deeper/d.txt"))));
    EXPECT_EQ(contents(dir.file(QStringLiteral("new/deeper/d.txt"))), QByteArray("delta"));

    // A read-only source that cannot simply be renamed stays where it is.
    const QString ro = dir.write(QStringLiteral("ro.txt"), "fixed");
    FileSetAttr(ro, faReadOnly);
    EXPECT_FALSE(qxtMoveFile(ro, dir.file(QStringLiteral("b.txt"))));
    EXPECT_EQ(contents(ro), QByteArray("fixed"));
    EXPECT_EQ(contents(dir.file(QStringLiteral("b.txt"))), QByteArray("gamma"));
    EXPECT_TRUE(qxtMoveFile(ro, dir.file(QStringLiteral("ro2.txt"))));

    EXPECT_FALSE(qxtMoveFile(dir.file(QStringLiteral("none")), dir.file(QStringLiteral("x"))));
    // Moving a file onto its own name keeps it.
    EXPECT_TRUE(qxtMoveFile(dir.file(QStringLiteral("b.txt")), dir.file(QStringLiteral("b.txt"))));
    EXPECT_EQ(contents(dir.file(QStringLiteral("b.txt"))), QByteArray("gamma"));
}

TEST(MoveFile, AcrossFileSystems) {
    qxtest::TempDir dir;
    qxtest::TempDir mountPoint;
    if (!mountTmpfs(mountPoint.path()))
        GTEST_SKIP() << "no permission to mount a tmpfs";
    const QString a = dir.write(QStringLiteral("a.txt"), "far away");
    const QString target = mountPoint.file(QStringLiteral("sub/a.txt"));
    EXPECT_TRUE(qxtMoveFile(a, target));
    EXPECT_FALSE(QFileInfo::exists(a));
    EXPECT_EQ(contents(target), QByteArray("far away"));
    EXPECT_TRUE(
        qxtMoveDir(mountPoint.file(QStringLiteral("sub")), dir.file(QStringLiteral("back"))));
    EXPECT_EQ(contents(dir.file(QStringLiteral("back/a.txt"))), QByteArray("far away"));
    ::umount2(QFile::encodeName(mountPoint.path()).constData(), MNT_DETACH);
}

TEST(MoveDir, WholeDirectoryOrFileByFile) {
    qxtest::TempDir dir;
    dir.write(QStringLiteral("src/a.txt"), "a");
    dir.write(QStringLiteral("src/sub/b.txt"), "b");
    EXPECT_TRUE(qxtMoveDir(dir.file(QStringLiteral("src/")), dir.file(QStringLiteral("dst/"))));
    EXPECT_EQ(contents(dir.file(QStringLiteral("dst/sub/b.txt"))), QByteArray("b"));
    EXPECT_FALSE(QFileInfo::exists(dir.file(QStringLiteral("src"))));

    // The target exists: files move one by one, subdirectories stay, and so does the source.
    dir.write(QStringLiteral("src2/c.txt"), "c");
    dir.write(QStringLiteral("src2/sub/d.txt"), "d");
    EXPECT_FALSE(qxtMoveDir(dir.file(QStringLiteral("src2")), dir.file(QStringLiteral("dst"))));
    EXPECT_EQ(contents(dir.file(QStringLiteral("dst/c.txt"))), QByteArray("c"));
    EXPECT_FALSE(QFileInfo::exists(dir.file(QStringLiteral("src2/c.txt"))));
    EXPECT_EQ(contents(dir.file(QStringLiteral("src2/sub/d.txt"))), QByteArray("d"));

    // Without subdirectories the emptied source is removed.
    dir.write(QStringLiteral("src3/e.txt"), "e");
    EXPECT_TRUE(qxtMoveDir(dir.file(QStringLiteral("src3")), dir.file(QStringLiteral("dst"))));
    EXPECT_FALSE(QFileInfo::exists(dir.file(QStringLiteral("src3"))));
    EXPECT_EQ(contents(dir.file(QStringLiteral("dst/e.txt"))), QByteArray("e"));
}

TEST(CopyDir, FilesOnlyIntoACreatedTarget) {
    qxtest::TempDir dir;
    EXPECT_FALSE(qxtCopyDir(dir.file(QStringLiteral("none")), dir.file(QStringLiteral("t"))));
    EXPECT_FALSE(QFileInfo::exists(dir.file(QStringLiteral("t"))));

    dir.write(QStringLiteral("src/a.txt"), "a");
    dir.write(QStringLiteral("src/b.txt"), "b");
    dir.write(QStringLiteral("src/sub/c.txt"), "c");
    EXPECT_TRUE(qxtCopyDir(dir.file(QStringLiteral("src/")), dir.file(QStringLiteral("x/y/t/"))));
    EXPECT_EQ(contents(dir.file(QStringLiteral("x/y/t/a.txt"))), QByteArray("a"));
    EXPECT_EQ(contents(dir.file(QStringLiteral("x/y/t/b.txt"))), QByteArray("b"));
    EXPECT_FALSE(QFileInfo::exists(dir.file(QStringLiteral("x/y/t/sub"))));
    EXPECT_EQ(contents(dir.file(QStringLiteral("src/a.txt"))), QByteArray("a"));

    // A read-only file in the way fails the result; the other files are still copied.
    dir.write(QStringLiteral("src/a.txt"), "A2");
    dir.write(QStringLiteral("src/b.txt"), "B2");
    FileSetAttr(dir.file(QStringLiteral("x/y/t/a.txt")), faReadOnly);
    EXPECT_FALSE(qxtCopyDir(dir.file(QStringLiteral("src")), dir.file(QStringLiteral("x/y/t"))));
    EXPECT_EQ(contents(dir.file(QStringLiteral("x/y/t/a.txt"))), QByteArray("a"));
    EXPECT_EQ(contents(dir.file(QStringLiteral("x/y/t/b.txt"))), QByteArray("B2"));
}

TEST(KillPath, DriveRootIsWarnedAboutEmptiedAndKept) {
    qxtest::TempDir mountPoint;
    if (!mountTmpfs(mountPoint.path()))
        GTEST_SKIP() << "no permission to mount a tmpfs";
    const QString root = mountPoint.path() + '/';
    EXPECT_TRUE(IsDriveRoot(root));
    EXPECT_EQ(qxtFindDrive(mountPoint.file(QStringLiteral("x/y"))), root);
    EXPECT_EQ(GetDriveType(root), DRIVE_RAMDISK);
    mountPoint.write(QStringLiteral("a.txt"), "a");
    mountPoint.write(QStringLiteral("dir/b.txt"), "b");
    {
        qxtest::DialogRecorder dialogs;
        EXPECT_TRUE(qxtKillPath(mountPoint.path()));
        EXPECT_EQ(dialogs.texts(),
                  QStringList({"qxtKillPath - Fehler : " + root + " kann nicht gelöscht werden"}));
    }
    EXPECT_TRUE(QDir(root).exists());
    EXPECT_TRUE(QDir(root).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
    EXPECT_TRUE(IsDriveRoot(root));
    ::umount2(QFile::encodeName(mountPoint.path()).constData(), MNT_DETACH);
}

TEST(KillPath, UndeletableFilesAreReportedAndTheWalkGoesOn) {
    qxtest::TempDir dir;
    const QString stuck = dir.write(QStringLiteral("t/sub/stuck.txt"), "s");
    dir.write(QStringLiteral("t/sub/gone.txt"), "g");
    dir.write(QStringLiteral("t/later/gone.txt"), "g");
    if (!setImmutable(stuck, true))
        GTEST_SKIP() << "the file system cannot make a file immutable here";
    qxtest::DialogRecorder dialogs;
    const bool result = qxtKillPath(dir.file(QStringLiteral("t")));
    setImmutable(stuck, false);
    EXPECT_FALSE(result);
    const QString t = dir.file(QStringLiteral("t/"));
    EXPECT_EQ(
        dialogs.texts(),
        QStringList({"qxtKillPath - Fehler : " + t + "sub/stuck.txt kann nicht gelöscht werden",
                     "qxtKillPath - Verzeichnis " + t + "sub/ läßt sich nicht löschen",
                     "qxtKillPath - Verzeichnis " + t + " läßt sich nicht löschen"}));
    ASSERT_EQ(dialogs.requests.size(), 3);
    EXPECT_EQ(dialogs.requests[1].Type, mtWarning);
    EXPECT_EQ(dialogs.requests[1].Buttons, TMsgDlgButtons({mbOK}));
    EXPECT_FALSE(QFileInfo::exists(dir.file(QStringLiteral("t/later"))));
    EXPECT_FALSE(QFileInfo::exists(dir.file(QStringLiteral("t/sub/gone.txt"))));
    EXPECT_TRUE(QFileInfo::exists(stuck));
}

TEST(LZCopy, ExpandsSzddAndCopiesOtherFiles) {
    qxtest::TempDir dir;
    QByteArray text;
    for (int i = 0; i < 40; ++i)
        text += "    line " + QByteArray::number(i % 7) + " of the README\n";
    const QByteArray packed = szdd(text);
    ASSERT_LT(packed.size(), text.size() / 2); // the matches did their work
    const QString src = dir.write(QStringLiteral("README.TX_"), packed);
    Screen()->SetCursor(crCross);
    EXPECT_EQ(qxtLZCopyFile(src, dir.file(QStringLiteral("README.TXT"))), text.size());
    EXPECT_EQ(Screen()->Cursor(), crCross);
    Screen()->SetCursor(crDefault);
    QFile out(dir.file(QStringLiteral("README.TXT")));
    ASSERT_TRUE(out.open(QIODevice::ReadOnly));
    EXPECT_EQ(out.readAll(), text);

    // Literals only, built by hand: a control byte of five set bits, then the bytes.
    const QByteArray literal = QByteArray("SZDD\x88\xF0\x27\x33"
                                          "A\0\5\0\0\0\x1F"
                                          "Hello",
                                          20);
    const QString lit = dir.write(QStringLiteral("hello.tx_"), literal);
    EXPECT_EQ(qxtLZCopyFile(lit, dir.file(QStringLiteral("hello.txt"))), 5);
    QFile hello(dir.file(QStringLiteral("hello.txt")));
    ASSERT_TRUE(hello.open(QIODevice::ReadOnly));
    EXPECT_EQ(hello.readAll(), QByteArray("Hello"));

    // Anything else is copied as it is.
    const QByteArray plain("not compressed\0at all", 21);
    const QString p = dir.write(QStringLiteral("plain.bin"), plain);
    EXPECT_EQ(qxtLZCopyFile(p, dir.file(QStringLiteral("copy.bin"))), plain.size());
    QFile copy(dir.file(QStringLiteral("copy.bin")));
    ASSERT_TRUE(copy.open(QIODevice::ReadOnly));
    EXPECT_EQ(copy.readAll(), plain);
}

TEST(LZCopy, FailuresRaiseTheLibraryMessage) {
    qxtest::TempDir dir;
    const auto expectFailure = [&](const QString& source, const QString& dest) {
        try {
            qxtLZCopyFile(source, dest);
            ADD_FAILURE() << "no exception for " << source.toStdString();
        } catch (const Exception& e) {
            EXPECT_EQ(e.Message(), QStringLiteral("Error using LZCopy"));
        }
    };
    expectFailure(dir.file(QStringLiteral("missing")), dir.file(QStringLiteral("out")));
    const QString packed = dir.write(QStringLiteral("p.tx_"), szdd("some text to expand"));
    expectFailure(packed, dir.file(QStringLiteral("no/such/dir/out")));
    const QString plain = dir.write(QStringLiteral("plain"), "x");
    expectFailure(plain, dir.path());
    EXPECT_EQ(Screen()->Cursor(), crDefault);
}
