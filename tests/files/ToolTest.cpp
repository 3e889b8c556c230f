#include "TestSupport.h"

#include <QFileInfo>
#include <QProcess>
#include <gtest/gtest.h>

namespace {

struct ToolRun {
    int code = -1;
    QString out;
    QString err;
};

ToolRun qxtool(const QStringList& args) {
    QProcess p;
    p.start(QStringLiteral(QXTOOL_EXE), args);
    p.waitForFinished(60000);
    return {p.exitCode(), QString::fromUtf8(p.readAllStandardOutput()),
            QString::fromUtf8(p.readAllStandardError())};
}

} // namespace

TEST(Tool, MatchAndNextName) {
    EXPECT_EQ(qxtool({"match", "README.TXT", "*.BAK;*.TXT"}).out, QStringLiteral("true\n"));
    EXPECT_EQ(qxtool({"match", "A.TXT", "A*.TXT"}).out, QStringLiteral("false\n"));
    EXPECT_EQ(qxtool({"match", "only-one"}).code, 2);

    qxtest::TempDir dir;
    dir.write(QStringLiteral("SCAN041.BMP"), "");
    const ToolRun next = qxtool({"nextname", dir.file(QStringLiteral("SCAN###.BMP"))});
    EXPECT_EQ(next.code, 0);
    EXPECT_EQ(next.out, dir.file(QStringLiteral("SCAN042.BMP")) + '\n');
    const ToolRun bad = qxtool({"nextname", dir.file(QStringLiteral("SCAN.BMP"))});
    EXPECT_EQ(bad.code, 1);
    EXPECT_TRUE(bad.out.isEmpty());
    EXPECT_TRUE(bad.err.contains(QStringLiteral("Fehler in Filepattern")));
}

TEST(Tool, FindListsFilesThenCounts) {
    qxtest::TempDir dir;
    dir.write(QStringLiteral("a.gif"), "");
    dir.write(QStringLiteral("b.txt"), "");
    dir.write(QStringLiteral("sub/c.GIF"), "");
    const QString root = dir.path() + '/';
    const ToolRun deep = qxtool({"find", dir.path(), "*.gif", "--subdirs"});
    EXPECT_EQ(deep.code, 0);
    EXPECT_EQ(deep.out, root + "sub/c.GIF\n" + root + "a.gif\nDirs: 1\nFiles: 2\n");
    EXPECT_EQ(qxtool({"find", dir.path(), "*.gif"}).out, root + "a.gif\nDirs: 0\nFiles: 1\n");
    EXPECT_EQ(qxtool({"find", dir.path()}).code, 2);
}

TEST(Tool, KillPathReportsThroughItsExitCode) {
    qxtest::TempDir dir;
    dir.write(QStringLiteral("tree/a/b.txt"), "");
    const ToolRun run = qxtool({"killpath", dir.file(QStringLiteral("tree"))});
    EXPECT_EQ(run.code, 0);
    EXPECT_FALSE(QFileInfo::exists(dir.file(QStringLiteral("tree"))));
    EXPECT_EQ(qxtool({"killpath", ""}).code, 2);
    EXPECT_TRUE(QFileInfo::exists(dir.path()));
}
