#include "TestSupport.h"

#include <QFile>
#include <gtest/gtest.h>

namespace {

struct ToolRun {
    int code;
    QString out;
    QString err;
};

ToolRun qxtool(const QStringList& args) {
    // A runtime directory of its own keeps Qt's warning about a missing one off stderr.
    static const qxtest::TempDir runtime;
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtime.path()));
    const qxtest::ToolResult r = qxtest::runQxtool(QStringList{QStringLiteral("ini")} + args);
    return {r.exitCode, r.out, r.err};
}

} // namespace

TEST(QxtoolIni, VerbsPrintOneItemALine) {
    qxtest::TempDir dir;
    const QString f = dir.write(QStringLiteral("t.ini"), "[A]\nn=12 ; twelve\nflag=1;x\nbad=zz\n");
    EXPECT_EQ(qxtool({f, "write", "B", "Name", "Grüße aus Köln"}).code, 0);
    EXPECT_EQ(qxtool({f, "read", "b", "name"}).out, QStringLiteral("Grüße aus Köln\n"));
    EXPECT_EQ(qxtool({f, "read", "B", "missing", "fallback"}).out, QStringLiteral("fallback\n"));
    EXPECT_EQ(qxtool({f, "read", "B", "missing"}).out, QStringLiteral("\n"));
    EXPECT_EQ(qxtool({f, "readint", "A", "n", "0"}).out, QStringLiteral("12\n"));
    EXPECT_EQ(qxtool({f, "readint", "A", "missing", "-4"}).out, QStringLiteral("-4\n"));
    EXPECT_EQ(qxtool({f, "readbool", "A", "flag", "0"}).out, QStringLiteral("1\n"));
    EXPECT_EQ(qxtool({f, "readbool", "A", "missing", "0"}).out, QStringLiteral("0\n"));
    EXPECT_EQ(qxtool({f, "sections"}).out, QStringLiteral("A\nB\n"));
    EXPECT_EQ(qxtool({f, "keys", "a"}).out, QStringLiteral("n\nflag\nbad\n"));
    EXPECT_EQ(qxtool({f, "values", "A"}).out, QStringLiteral("n=12 ; twelve\nflag=1;x\nbad=zz\n"));
    EXPECT_EQ(qxtool({f, "erase", "a"}).code, 0);
    EXPECT_EQ(qxtool({f, "sections"}).out, QStringLiteral("B\n"));
}

TEST(QxtoolIni, ErrorsAndUsage) {
    qxtest::TempDir dir;
    const QString f = dir.write(QStringLiteral("t.ini"), "[A]\nbad=zz\n");
    const ToolRun bad = qxtool({f, "readint", "A", "bad", "0"});
    EXPECT_EQ(bad.code, 1);
    EXPECT_TRUE(bad.out.isEmpty());
    EXPECT_EQ(bad.err, QStringLiteral("'zz' is not a valid integer value\n"));
    EXPECT_EQ(qxtool({f, "readint", "A", "bad", "x"}).code, 1);
    const ToolRun blocked = qxtool({f + QStringLiteral("/below.ini"), "write", "S", "K", "V"});
    EXPECT_EQ(blocked.code, 1);
    EXPECT_EQ(blocked.err, QStringLiteral("Unable to write to %1/below.ini\n").arg(f));
    for (const QStringList& args :
         {QStringList{f}, QStringList{f, "read", "A"}, QStringList{f, "write", "A", "k"},
          QStringList{f, "frobnicate"}}) {
        const ToolRun r = qxtool(args);
        EXPECT_EQ(r.code, 2) << args.join(' ').toStdString();
        EXPECT_TRUE(r.err.contains(QStringLiteral("\nusage: qxtool ini FILE VERB")));
    }
}
