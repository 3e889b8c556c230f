#include "TestSupport.h"

#include <QDir>
#include <QFileInfo>
#include <gtest/gtest.h>

TEST(FilesTool, MatchAnswersThroughItsExitCode) {
    const auto yes = qxtest::runQxtool({"match", "README.TXT", "*.BAK;*.TXT"});
    EXPECT_EQ(yes.exitCode, 0);
    EXPECT_EQ(yes.out, QStringLiteral("true\n"));
    const auto no = qxtest::runQxtool({"match", "A.TXT", "A*.TXT"});
    EXPECT_EQ(no.exitCode, 1);
    EXPECT_EQ(no.out, QStringLiteral("false\n"));
    EXPECT_TRUE(no.err.isEmpty());
    EXPECT_EQ(qxtest::runQxtool({"match", "only-one"}).exitCode, 2);
}

TEST(FilesTool, NextName) {
    qxtest::TempDir dir;
    dir.write(QStringLiteral("SCAN041.BMP"), "");
    const auto next = qxtest::runQxtool({"nextname", dir.file(QStringLiteral("SCAN###.BMP"))});
    EXPECT_EQ(next.exitCode, 0);
    EXPECT_EQ(next.out, dir.file(QStringLiteral("SCAN042.BMP")) + '\n');
    const auto bad = qxtest::runQxtool({"nextname", dir.file(QStringLiteral("SCAN.BMP"))});
    EXPECT_EQ(bad.exitCode, 1);
    EXPECT_TRUE(bad.out.isEmpty());
    EXPECT_TRUE(bad.err.contains(QStringLiteral("Fehler in Filepattern")));
}

TEST(FilesTool, FindListsFilesThenCountsAndRefusesAMissingDirectory) {
    qxtest::TempDir dir;
    dir.write(QStringLiteral("a.gif"), "");
    dir.write(QStringLiteral("b.txt"), "");
    dir.write(QStringLiteral("sub/c.GIF"), "");
    const QString root = dir.path() + '/';
    const auto deep = qxtest::runQxtool({"find", dir.path(), "*.gif", "--subdirs"});
    EXPECT_EQ(deep.exitCode, 0);
    EXPECT_EQ(deep.out, root + "sub/c.GIF\n" + root + "a.gif\nDirs: 1\nFiles: 2\n");
    EXPECT_EQ(qxtest::runQxtool({"find", dir.path(), "*.gif"}).out,
              root + "a.gif\nDirs: 0\nFiles: 1\n");
    // Nothing matching is a successful search.
    EXPECT_EQ(qxtest::runQxtool({"find", dir.path(), "*.wav"}).exitCode, 0);

    for (const QString& notADir : {dir.file(QStringLiteral("missing")), root + "b.txt"}) {
        const auto run = qxtest::runQxtool({"find", notADir, "*.*"});
        EXPECT_EQ(run.exitCode, 1);
        EXPECT_TRUE(run.out.isEmpty());
        EXPECT_EQ(run.err,
                  QStringLiteral("qxtool find: Verzeichnis %1 nicht gefunden\n").arg(notADir));
    }
}

TEST(FilesTool, KillPathDeletesATreeButNeverTheHomeOrADriveUnasked) {
    qxtest::TempDir dir;
    dir.write(QStringLiteral("tree/a/b.txt"), "");
    const auto run = qxtest::runQxtool({"killpath", dir.file(QStringLiteral("tree"))});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_FALSE(QFileInfo::exists(dir.file(QStringLiteral("tree"))));
    EXPECT_EQ(qxtest::runQxtool({"killpath", ""}).exitCode, 2);
    EXPECT_TRUE(QFileInfo::exists(dir.path()));

    // A typo never deletes: "--help" is answered, an unknown option refused.
    dir.write(QStringLiteral("--help/keep.txt"), "");
    dir.write(QStringLiteral("-x/keep.txt"), "");
    EXPECT_EQ(qxtest::runQxtool({"killpath", "--help"}).exitCode, 0);
    EXPECT_EQ(qxtest::runQxtool({"killpath", "-x"}).exitCode, 2);
    EXPECT_TRUE(QFileInfo::exists(dir.file(QStringLiteral("--help/keep.txt"))));
    EXPECT_TRUE(QFileInfo::exists(dir.file(QStringLiteral("-x/keep.txt"))));

    // The home directory (here a private one) and the directories above it need --yes when
    // standard input is no terminal, as in this test.
    const QString home = dir.write(QStringLiteral("users/me/notes.txt"), "");
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("HOME"), dir.file(QStringLiteral("users/me")));
    for (const QString& precious :
         {dir.file(QStringLiteral("users/me")), dir.file(QStringLiteral("users/me/")),
          dir.file(QStringLiteral("users")), dir.file(QStringLiteral("users/me/../me"))}) {
        const auto refused = qxtest::runQxtool({"killpath", precious}, env);
        EXPECT_EQ(refused.exitCode, 1) << precious.toStdString();
        EXPECT_EQ(refused.err, QStringLiteral("qxtool killpath: %1 ist ein Laufwerk oder das "
                                              "Home-Verzeichnis; ohne Terminal wird es nur mit "
                                              "--yes geleert.\n")
                                   .arg(precious));
        EXPECT_TRUE(QFileInfo::exists(home));
    }
    // A mount point is a drive: /proc stands for it, as nothing there can be deleted anyway.
    EXPECT_EQ(qxtest::runQxtool({"killpath", "/proc"}).exitCode, 1);
    EXPECT_TRUE(QFileInfo::exists(QStringLiteral("/proc/self")));

    EXPECT_EQ(
        qxtest::runQxtool({"killpath", "--yes", dir.file(QStringLiteral("users"))}, env).exitCode,
        0);
    EXPECT_FALSE(QFileInfo::exists(dir.file(QStringLiteral("users"))));
}
