#include "PeResources_p.h"
#include "QxutilVersion.h"
#include "TestSupport.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace {

QString pe(const char* name) {
    return QStringLiteral(QX_PE_DIR "/") + QLatin1String(name);
}

QByteArray readFile(const QString& name) {
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray le16(int v) {
    const char bytes[] = {char(v & 0xFF), char((v >> 8) & 0xFF)};
    return QByteArray(bytes, 2);
}

QByteArray utf16z(const QString& s) {
    QByteArray bytes;
    for (QChar c : s)
        bytes += le16(c.unicode());
    return bytes + le16(0);
}

void pad4(QByteArray& bytes) {
    while (bytes.size() % 4)
        bytes += '\0';
}

// A version block entry as a resource compiler writes one.
QByteArray entry(const QString& key, const QByteArray& value, int valueLength,
                 const QList<QByteArray>& children = {}) {
    QByteArray bytes = le16(0) + le16(valueLength) + le16(1) + utf16z(key);
    pad4(bytes);
    bytes += value;
    for (const QByteArray& child : children) {
        pad4(bytes);
        bytes += child;
    }
    bytes.replace(0, 2, le16(int(bytes.size())));
    return bytes;
}

QByteArray block(const QList<QByteArray>& strings) {
    return entry(QStringLiteral("VS_VERSION_INFO"), {}, 0,
                 {entry(QStringLiteral("StringFileInfo"), {}, 0,
                        {entry(QStringLiteral("040904B0"), {}, 0, strings)})});
}

} // namespace

TEST(VersionBlock, FindsValuesCaseBlindAndStaysInsideDamagedEntries) {
    const QByteArray acme = utf16z(QStringLiteral("ACME"));
    const QString path = QStringLiteral("\\stringfileinfo\\040904b0\\COMPANYNAME");
    // Text lengths in characters, and (as some compilers write them) in bytes.
    EXPECT_EQ(qxpe::queryText(block({entry(QStringLiteral("CompanyName"), acme, 5)}), path),
              QStringLiteral("ACME"));
    EXPECT_EQ(qxpe::queryText(block({entry(QStringLiteral("CompanyName"), acme, 10)}), path),
              QStringLiteral("ACME"));
    EXPECT_FALSE(qxpe::queryText(block({entry(QStringLiteral("Company"), acme, 5)}), path));

    // An entry of length 0 ends the walk over its siblings.
    QByteArray broken = entry(QStringLiteral("Broken"), {}, 0);
    broken.replace(0, 2, le16(0));
    EXPECT_FALSE(
        qxpe::queryText(block({broken, entry(QStringLiteral("CompanyName"), acme, 5)}), path));

    // An entry claiming more than its parent holds is cut at the parent's end.
    QByteArray greedy = entry(QStringLiteral("CompanyName"), acme, 5);
    greedy.replace(0, 2, le16(0xFFFF));
    EXPECT_EQ(qxpe::queryText(block({greedy}), path), QStringLiteral("ACME"));
    QByteArray cut = block({entry(QStringLiteral("CompanyName"), acme, 5)});
    cut.chop(6); // the block ends after two characters
    EXPECT_EQ(qxpe::queryText(cut, path), QStringLiteral("AC"));

    // A key without its terminator is no key.
    QByteArray unterminated = le16(10) + le16(0) + le16(1) + QByteArray("A\0B\0", 4);
    EXPECT_FALSE(qxpe::queryValue(unterminated, u"\\"));
}

TEST(VersionBlock, NamesTheStringTableAfterTheFirstTranslation) {
    const auto withTranslation = [](const QByteArray& value) {
        return entry(QStringLiteral("VS_VERSION_INFO"), {}, 0,
                     {entry(QStringLiteral("VarFileInfo"), {}, 0,
                            {entry(QStringLiteral("Translation"), value, int(value.size()))})});
    };
    EXPECT_EQ(qxpe::firstTranslation(
                  withTranslation(le16(0x0407) + le16(0x04E4) + le16(0x0409) + le16(0x04B0))),
              QStringLiteral("040704E4"));
    EXPECT_FALSE(qxpe::firstTranslation(withTranslation(le16(0x0407))));
    EXPECT_FALSE(qxpe::firstTranslation(block({})));
}

TEST(Icons, CountsAndPicksIconsOfPeFiles) {
    EXPECT_EQ(qxtGetIconCount(pe("known.exe")), 1);
    EXPECT_EQ(qxtGetIconCount(pe("icons.dll")), 2);
    EXPECT_EQ(qxtGetIconCount(pe("noversion.exe")), 0);
    EXPECT_EQ(qxtGetIconCount(QCoreApplication::applicationFilePath()), 0);
    EXPECT_EQ(qxtGetIconCount(QStringLiteral("/nonexistent/file.exe")), 0);

    const QImage large = qxtGetFileIcon(pe("known.exe"), true);
    ASSERT_EQ(large.size(), QSize(32, 32));
    EXPECT_EQ(large.pixelColor(5, 5), QColor(Qt::blue));
    const QImage small = qxtGetFileIcon(pe("known.exe"), false);
    ASSERT_EQ(small.size(), QSize(16, 16));
    EXPECT_EQ(small.pixelColor(5, 5), QColor(Qt::red));

    // The named group comes before the numbered one; its only image is a PNG.
    const QImage png = qxtGetFileIcon(pe("icons.dll"), false);
    ASSERT_EQ(png.size(), QSize(48, 48));
    EXPECT_EQ(png.pixelColor(20, 20), QColor(Qt::green));

    EXPECT_TRUE(qxtGetFileIcon(pe("noversion.exe"), true).isNull());
    EXPECT_TRUE(qxtGetFileIcon(QCoreApplication::applicationFilePath(), true).isNull());
}

TEST(Icons, GroupsRebuildTheIconFilesTheyWereMadeFrom) {
    const QByteArray dll = readFile(pe("icons.dll"));
    const auto second = qxpe::iconGroup(dll, 1);
    ASSERT_EQ(second.size(), 2);
    EXPECT_EQ(second[0].width, 16);
    EXPECT_EQ(second[1].width, 32);
    EXPECT_EQ(qxpe::icoFile(second), readFile(QStringLiteral(QX_PE_DATA "/red16_blue32.ico")));
    EXPECT_EQ(qxpe::icoFile(qxpe::iconGroup(dll, 0)),
              readFile(QStringLiteral(QX_PE_DATA "/green48.ico")));
    EXPECT_TRUE(qxpe::iconGroup(dll, 2).isEmpty());
    EXPECT_TRUE(qxpe::iconGroup(dll, -1).isEmpty());
}

TEST(Resources, LooksUpAndExtractsLibraryResources) {
    EXPECT_TRUE(qxtResExists(QStringLiteral("QXINFO.TXT"), QStringLiteral("RCDATA")));
    EXPECT_TRUE(qxtResExists(QStringLiteral("qxinfo.txt"), QStringLiteral("rcdata")));
    EXPECT_FALSE(qxtResExists(QStringLiteral("QXINFO.TXT"), QStringLiteral("ICON")));
    EXPECT_FALSE(qxtResExists(QStringLiteral("MISSING"), QStringLiteral("RCDATA")));
    EXPECT_FALSE(qxtResExists(QStringLiteral("RCDATA"), QString())); // a type is no resource

    qxtest::TempDir dir;
    qxtest::DialogRecorder dialogs;
    const QByteArray content = readFile(QStringLiteral(":/qxtools/rcdata/qxinfo.txt"));
    ASSERT_FALSE(content.isEmpty());
    const QString target = dir.write(QStringLiteral("info.txt"), "older and longer content");
    EXPECT_TRUE(qxtExtractRes(QStringLiteral("QxInfo.txt"), QStringLiteral("RcData"), target));
    EXPECT_EQ(readFile(target), content);
    EXPECT_TRUE(dialogs.texts().isEmpty());

    // A missing resource leaves the target alone.
    EXPECT_FALSE(qxtExtractRes(QStringLiteral("MISSING"), QStringLiteral("RCDATA"), target));
    EXPECT_EQ(dialogs.texts(), QStringList{QStringLiteral("Ressource nicht gefunden")});
    EXPECT_EQ(readFile(target), content);

    // A target that cannot be deleted (a directory with a file in it).
    const QString busy = dir.file(QStringLiteral("busy"));
    dir.write(QStringLiteral("busy/inside.txt"), "x");
    EXPECT_FALSE(qxtExtractRes(QStringLiteral("QXINFO.TXT"), QStringLiteral("RCDATA"), busy));
    EXPECT_EQ(dialogs.texts().last(),
              QStringLiteral("Datei ") + busy +
                  QStringLiteral(" ist in Benutzung und kann nicht aktualisiert werden"));
    EXPECT_TRUE(QFile::exists(busy + QStringLiteral("/inside.txt")));

    // A target that cannot be written fails without a message.
    const int shown = int(dialogs.texts().size());
    EXPECT_FALSE(qxtExtractRes(QStringLiteral("QXINFO.TXT"), QStringLiteral("RCDATA"),
                               dir.file(QStringLiteral("no/such/dir.txt"))));
    EXPECT_EQ(dialogs.texts().size(), shown);
}

TEST(Qxtool, VerinfoPrintsTheMemoLinesAndHexversionTheHexText) {
    const auto known = qxtest::runQxtool({QStringLiteral("verinfo"), pe("known.exe")});
    EXPECT_EQ(known.exitCode, 0);
    EXPECT_EQ(known.out, qxtFileVersionsInfoLines(pe("known.exe")).join(QLatin1Char('\n')) + '\n');

    const auto missing =
        qxtest::runQxtool({QStringLiteral("verinfo"), QStringLiteral("/nonexistent.exe")});
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_EQ(missing.out, QStringLiteral("         Dateiname: /nonexistent.exe\n"
                                          "Fehler : Datei nicht gefunden\n"));
    EXPECT_EQ(qxtest::runQxtool({QStringLiteral("verinfo")}).exitCode, 2);

    const auto hex = qxtest::runQxtool({QStringLiteral("hexversion"), QStringLiteral("V 3.0")});
    EXPECT_EQ(hex.exitCode, 0);
    EXPECT_EQ(hex.out, QStringLiteral("0001000000030000\n"));
    const auto bad = qxtest::runQxtool({QStringLiteral("hexversion"), QStringLiteral(".")});
    EXPECT_EQ(bad.exitCode, 1);
    EXPECT_TRUE(bad.err.endsWith(QStringLiteral("'.' is not a valid floating point value\n")))
        << bad.err.toStdString();
    EXPECT_EQ(
        qxtest::runQxtool({QStringLiteral("hexversion"), QStringLiteral("1"), QStringLiteral("2")})
            .exitCode,
        2);
}

TEST(Icons, AGroupGivesTheImageClosestToTheWantedSize) {
    const QByteArray dll = readFile(pe("icons.dll"));
    const QImage small = qxpe::iconGroupImage(dll, 1, 20);
    ASSERT_EQ(small.size(), QSize(16, 16));
    EXPECT_EQ(small.pixelColor(5, 5), QColor(Qt::red));
    const QImage large = qxpe::iconGroupImage(dll, 1, 64);
    ASSERT_EQ(large.size(), QSize(32, 32));
    EXPECT_EQ(large.pixelColor(5, 5), QColor(Qt::blue));
    // The only image of the first group is a PNG.
    EXPECT_EQ(qxpe::iconGroupImage(dll, 0, 16).size(), QSize(48, 48));
    EXPECT_TRUE(qxpe::iconGroupImage(dll, 2, 16).isNull());
    EXPECT_TRUE(qxpe::iconGroupImage(QByteArray("MZ"), 0, 16).isNull());
}
