#include "TestSupport.h"

#include <gtest/gtest.h>

TEST(VersionTool, HexVersionPrintsWhatItCanRepresentAndRejectsTheRest) {
    const auto full = qxtest::runQxtool({"hexversion", "3.0.4.17"});
    EXPECT_EQ(full.exitCode, 0);
    EXPECT_EQ(full.out, QStringLiteral("0003000000040011\n"));
    EXPECT_EQ(qxtest::runQxtool({"hexversion", "V 2.5"}).out, QStringLiteral("0001000000020032\n"));
    EXPECT_EQ(qxtest::runQxtool({"hexversion", "65535.0.0.1"}).out,
              QStringLiteral("FFFF000000000001\n"));

    const QList<QPair<QString, QString>> rejected = {
        {"abc", "'abc' enthält keine Versionsnummer"},
        {"", "'' enthält keine Versionsnummer"},
        {"65536.0.0.1", "ein Teil von '65536.0.0.1' ist größer als 65535"},
        {"1.2.3.4.5", "'1.2.3.4.5' hat mehr als vier Teile"},
        {"70000.5", "ein Teil von '70000.5' ist größer als 65535"},
    };
    for (const auto& [text, message] : rejected) {
        const auto run = qxtest::runQxtool({"hexversion", text});
        EXPECT_EQ(run.exitCode, 1) << text.toStdString();
        EXPECT_TRUE(run.out.isEmpty()) << text.toStdString();
        EXPECT_EQ(run.err, "qxtool hexversion: " + message + '\n');
    }
    // A part too long for a number is the conversion's error.
    const auto huge = qxtest::runQxtool({"hexversion", "99999999999.1.1.1"});
    EXPECT_EQ(huge.exitCode, 1);
    EXPECT_TRUE(huge.err.startsWith(QStringLiteral("qxtool hexversion: ")));
    EXPECT_TRUE(huge.out.isEmpty());
}

TEST(VersionTool, VerInfoExitsByWhetherTheFileExists) {
    qxtest::TempDir dir;
    const QString file = dir.write(QStringLiteral("plain.txt"), "12345");
    const auto run = qxtest::runQxtool({"verinfo", file});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(run.out.contains(QStringLiteral("        Dateigröße: 5\n")));
    const auto missing = qxtest::runQxtool({"verinfo", dir.file(QStringLiteral("none.exe"))});
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_TRUE(missing.out.contains(QStringLiteral("Fehler : Datei nicht gefunden")));
}
