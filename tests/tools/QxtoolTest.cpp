#include "TestSupport.h"

#include <QRegularExpression>
#include <gtest/gtest.h>

namespace {

// The command names of the overview, read back from "qxtool --help".
QStringList listedCommands(const QString& overview) {
    QStringList names;
    const qsizetype start = overview.indexOf(QStringLiteral("Commands:\n"));
    if (start < 0)
        return names;
    static const QRegularExpression line(QStringLiteral("^  (\\S+)  +\\S.*$"));
    for (const QString& l : overview.sliced(start).split('\n').mid(1)) {
        const auto m = line.match(l);
        if (!m.hasMatch())
            break;
        names << m.captured(1);
    }
    return names;
}

// An environment with nothing from the test's own but a private home: no XDG_RUNTIME_DIR, no
// display, no Qt platform.
QProcessEnvironment bareEnvironment(const QString& home) {
    QProcessEnvironment env;
    env.insert(QStringLiteral("HOME"), home);
    env.insert(QStringLiteral("PATH"), QStringLiteral("/usr/bin:/bin"));
    return env;
}

} // namespace

TEST(Qxtool, OverviewListsEveryCommandOnOneShortLine) {
    const auto help = qxtest::runQxtool({QStringLiteral("--help")});
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_TRUE(help.err.isEmpty());
    EXPECT_TRUE(help.out.startsWith(QStringLiteral("usage: qxtool")));
    const QStringList names = listedCommands(help.out);
    for (const char* known : {"find", "gif2bmp", "hexversion", "ini", "killpath", "match",
                              "nextname", "verinfo", "winstart"})
        EXPECT_TRUE(names.contains(QLatin1String(known))) << known;
    QStringList sorted = names;
    sorted.sort();
    EXPECT_EQ(names, sorted);
    for (const QString& l : help.out.split('\n'))
        EXPECT_LE(l.size(), 79) << l.toStdString();
    EXPECT_EQ(qxtest::runQxtool({QStringLiteral("-h")}).out, help.out);
    EXPECT_EQ(qxtest::runQxtool({QStringLiteral("help")}).out, help.out);

    const auto version = qxtest::runQxtool({QStringLiteral("--version")});
    EXPECT_EQ(version.exitCode, 0);
    EXPECT_TRUE(version.out.startsWith(QStringLiteral("qxtool 3.")));
}

TEST(Qxtool, WrongCallsPrintTheUsageAndExit2) {
    // Without arguments, with an unknown command or option: the overview on standard error.
    const QList<QStringList> calls = {
        {},
        {QStringLiteral("no-such-command")},
        {QStringLiteral("--frobnicate")},
        {QStringLiteral("help"), QStringLiteral("no-such-command")},
        {QStringLiteral("help"), QStringLiteral("find"), QStringLiteral("ini")}};
    for (const QStringList& args : calls) {
        const auto run = qxtest::runQxtool(args);
        EXPECT_EQ(run.exitCode, 2) << args.join(' ').toStdString();
        EXPECT_TRUE(run.out.isEmpty());
        EXPECT_TRUE(run.err.contains(QStringLiteral("usage: qxtool [--help]")));
    }
    EXPECT_TRUE(
        qxtest::runQxtool({QStringLiteral("no-such-command")})
            .err.startsWith(QStringLiteral("qxtool: unbekannter Befehl 'no-such-command'")));
    EXPECT_TRUE(qxtest::runQxtool({QStringLiteral("--frobnicate")})
                    .err.startsWith(QStringLiteral("qxtool: unbekannte Option '--frobnicate'")));
}

// Every command, those added later included: help in three spellings, and an unknown option
// refused before anything is done.
TEST(Qxtool, EveryCommandExplainsItselfAndRefusesUnknownOptions) {
    const QStringList names = listedCommands(qxtest::runQxtool({QStringLiteral("--help")}).out);
    ASSERT_FALSE(names.isEmpty());
    for (const QString& name : names) {
        SCOPED_TRACE(name.toStdString());
        const auto help = qxtest::runQxtool({QStringLiteral("help"), name});
        EXPECT_EQ(help.exitCode, 0);
        EXPECT_TRUE(help.out.startsWith(QStringLiteral("usage: qxtool ") + name));
        for (const char* section :
             {"\nOptions:\n", "\nExit codes:\n  0  ", "\n  2  wrong usage", "\nExample"})
            EXPECT_TRUE(help.out.contains(QLatin1String(section))) << section;
        EXPECT_TRUE(help.out.contains(QStringLiteral("\n  qxtool ") + name));
        // Help wins wherever it stands before "--", even after other arguments.
        EXPECT_EQ(qxtest::runQxtool({name, QStringLiteral("--help")}).out, help.out);
        EXPECT_EQ(qxtest::runQxtool({name, QStringLiteral("x"), QStringLiteral("-h")}).out,
                  help.out);

        const auto unknown = qxtest::runQxtool({name, QStringLiteral("--no-such-option")});
        EXPECT_EQ(unknown.exitCode, 2);
        EXPECT_TRUE(unknown.out.isEmpty());
        EXPECT_TRUE(unknown.err.startsWith(QStringLiteral("qxtool %1: unbekannte Option "
                                                          "'--no-such-option'\nusage: qxtool %1")
                                               .arg(name)));
    }
}

TEST(Qxtool, OptionsValuesAndTheEndOfOptions) {
    qxtest::TempDir dir;
    dir.write(QStringLiteral("-a.gif"), "");
    dir.write(QStringLiteral("sub/b.gif"), "");
    const QString root = dir.path() + '/';
    // Options may stand anywhere before "--"; after it a leading "-" is data.
    EXPECT_EQ(qxtest::runQxtool({"find", "--subdirs", dir.path(), "-a.gif"}).exitCode, 2);
    const auto ended = qxtest::runQxtool({"find", "--subdirs", "--", dir.path(), "-a.gif"});
    EXPECT_EQ(ended.exitCode, 0);
    EXPECT_EQ(ended.out, root + "-a.gif\nDirs: 1\nFiles: 1\n");
    EXPECT_EQ(qxtest::runQxtool({"find", dir.path(), "*.gif", "--subdirs"}).out,
              root + "sub/b.gif\n" + root + "-a.gif\nDirs: 1\nFiles: 2\n");
    // "--help" after "--" is an argument: here a pattern that matches nothing.
    EXPECT_EQ(qxtest::runQxtool({"find", "--", dir.path(), "--help"}).out,
              QStringLiteral("Dirs: 0\nFiles: 0\n"));
    // A flag takes no value; missing and extra arguments are named.
    const auto valued = qxtest::runQxtool({"find", "--subdirs=yes", dir.path(), "*"});
    EXPECT_EQ(valued.exitCode, 2);
    EXPECT_TRUE(valued.err.startsWith(QStringLiteral("qxtool find: die Option --subdirs nimmt "
                                                     "keinen Wert\n")));
    const auto missing = qxtest::runQxtool({"find", dir.path()});
    EXPECT_EQ(missing.exitCode, 2);
    EXPECT_EQ(missing.err, QStringLiteral("qxtool find: das Argument PATTERN fehlt\n"
                                          "usage: qxtool find [--subdirs] DIR PATTERN\n"
                                          "Hilfe: qxtool help find\n"));
    const auto extra = qxtest::runQxtool({"match", "a", "b", "c"});
    EXPECT_EQ(extra.exitCode, 2);
    EXPECT_TRUE(extra.err.startsWith(QStringLiteral("qxtool match: ein Argument zu viel: 'c'")));
    // A negative number is an argument, not an option.
    const QString ini = dir.file(QStringLiteral("n.ini"));
    const auto negative = qxtest::runQxtool({"ini", ini, "readint", "S", "K", "-4"});
    EXPECT_EQ(negative.exitCode, 0);
    EXPECT_EQ(negative.out, QStringLiteral("-4\n"));
}

// A command-line tool says nothing about things the user did not ask for: run with no
// XDG_RUNTIME_DIR, no display and no Qt settings, successful calls print nothing on
// standard error.
TEST(Qxtool, QuietWithoutRuntimeDirectoryOrDisplay) {
    qxtest::TempDir dir;
    const QProcessEnvironment env = bareEnvironment(dir.path());
    dir.write(QStringLiteral("a.txt"), "");
    // A 1 x 1 GIF: decoding needs no display either.
    dir.write(QStringLiteral("one.gif"),
              QByteArray::fromHex("474946383961010001008000000000"
                                  "00ffffff2c00000000010001000002024401003b"));
    const QString ini = dir.file(QStringLiteral("q.ini"));
    const QList<QStringList> calls = {
        {"--version"},
        {"--help"},
        {"help", "killpath"},
        {"match", "A.TXT", "*.TXT"},
        {"hexversion", "3.0.4"},
        {"find", dir.path(), "*.txt", "--subdirs"},
        {"ini", ini, "write", "S", "K", "V"},
        {"ini", ini, "read", "S", "K"},
        {"nextname", dir.file(QStringLiteral("N##.txt"))},
        {"verinfo", dir.file(QStringLiteral("a.txt"))},
        {"winstart"},
        {"gif2bmp", dir.file(QStringLiteral("one.gif")), dir.file(QStringLiteral("one.bmp"))}};
    for (const QStringList& args : calls) {
        const auto run = qxtest::runQxtool(args, env);
        EXPECT_EQ(run.exitCode, 0) << args.join(' ').toStdString();
        EXPECT_EQ(run.err, QString()) << args.join(' ').toStdString();
    }
}
