#include "TestSupport.h"

#include <QFileInfo>
#include <gtest/gtest.h>

TEST(FilesTool, MatchAndNextName) {
    EXPECT_EQ(qxtest::runQxtool({"match", "README.TXT", "*.BAK;*.TXT"}).out,
              QStringLiteral("true\n"));
    EXPECT_EQ(qxtest::runQxtool({"match", "A.TXT", "A*.TXT"}).out, QStringLiteral("false\n"));
    EXPECT_EQ(qxtest::runQxtool({"match", "only-one"}).exitCode, 2);

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

TEST(FilesTool, FindListsFilesThenCounts) {
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
    EXPECT_EQ(qxtest::runQxtool({"find", dir.path()}).exitCode, 2);
}

TEST(FilesTool, KillPathReportsThroughItsExitCode) {
    qxtest::TempDir dir;
    dir.write(QStringLiteral("tree/a/b.txt"), "");
    const auto run = qxtest::runQxtool({"killpath", dir.file(QStringLiteral("tree"))});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_FALSE(QFileInfo::exists(dir.file(QStringLiteral("tree"))));
    EXPECT_EQ(qxtest::runQxtool({"killpath", ""}).exitCode, 2);
    EXPECT_TRUE(QFileInfo::exists(dir.path()));
}
