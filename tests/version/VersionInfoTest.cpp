#include "QxutilVersion.h"
#include "SysUtils.h"
#include "TestSupport.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QPlainTextEdit>
#include <QProcess>
#include <QTextEdit>
#include <gtest/gtest.h>

namespace {

QString pe(const char* name) {
    return QStringLiteral(QX_PE_DIR "/") + QLatin1String(name);
}

// A copy of a test file with a chosen modification time.
QString copyWithTime(const qxtest::TempDir& dir, const char* name, const QDateTime& time) {
    const QString copy = dir.file(QLatin1String(name));
    QFile::copy(pe(name), copy);
    QFile file(copy);
    EXPECT_TRUE(file.open(QIODevice::ReadWrite));
    EXPECT_TRUE(file.setFileTime(time, QFileDevice::FileModificationTime));
    return copy;
}

qint64 byteCount(const QString& fileName) {
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll().size() : -1;
}

} // namespace

TEST(VersionInfo, ReadsTheStringTableOfTheFirstTranslation) {
    // German is listed first; the English table holds other values and LegalTrademarks,
    // which the German one lacks. Keys in the file are spelled LegalTrademarks and
    // OriginalFilename, and the English table name is lower-case: lookups are case-blind.
    TVersionType german;
    german.CompanyName = QStringLiteral("Müller & Söhne GmbH");
    german.FileDescription = QStringLiteral("Prüfprogramm");
    german.FileVersion = QStringLiteral("1.2.0.7");
    german.InternalName = QStringLiteral("known");
    german.LegalCopyright = QStringLiteral("© 1999 Müller");
    german.OriginalFileName = QStringLiteral("KNOWN.EXE");
    german.ProductName = QStringLiteral("QX Prüfung");
    german.ProductVersion = QStringLiteral("3.0");
    german.Comments = QStringLiteral("nur für Tests");
    EXPECT_EQ(qxtGetFileVersionsInfo(pe("known.exe")), german);

    TVersionType english; // a PE32 image this time
    english.CompanyName = QStringLiteral("English Company");
    english.LegalTradeMarks = QStringLiteral("<b>Trademark</b> & Co");
    english.ProductVersion = QStringLiteral("2.5");
    EXPECT_EQ(qxtGetFileVersionsInfo(pe("english.exe")), english);

    // The product version, not the file version.
    EXPECT_EQ(qxtGetFileVersion(pe("known.exe")), QStringLiteral("3.0"));
}

TEST(VersionInfo, FilesWithoutVersionInformationGiveTheEmptyRecord) {
    qxtest::TempDir dir;
    QFile known(pe("known.exe"));
    ASSERT_TRUE(known.open(QIODevice::ReadOnly));
    const QByteArray bytes = known.readAll();
    const QStringList files{
        pe("noversion.exe"),                     // no resources at all
        pe("icons.dll"),                         // resources, but no version
        pe("notranslation.exe"),                 // strings, but no translation to name their table
        QCoreApplication::applicationFilePath(), // an ELF program
        dir.write(QStringLiteral("half.exe"), bytes.left(bytes.size() / 2)),
        dir.write(QStringLiteral("empty.exe"), {}),
        dir.path(),
        dir.file(QStringLiteral("missing.exe")),
    };
    for (const QString& file : files) {
        EXPECT_EQ(qxtGetFileVersionsInfo(file), TVersionType{}) << file.toStdString();
        EXPECT_EQ(qxtGetFileVersion(file), QString()) << file.toStdString();
    }
}

TEST(VersionInfo, ListsTheRecordInGerman) {
    qxtest::TempDir dir;
    const QString file =
        copyWithTime(dir, "known.exe", QDateTime(QDate(2001, 2, 3), QTime(4, 5, 6)));
    const QStringList expected{
        QStringLiteral("         Dateiname: ") + file,
        QStringLiteral("        FirmenName: Müller & Söhne GmbH"),
        QStringLiteral("DateiInformationen: Prüfprogramm"),
        QStringLiteral("      DateiVersion: 1.2.0.7"),
        QStringLiteral("     Interner Name: known"),
        QStringLiteral("    LegalCopyright: © 1999 Müller"),
        QStringLiteral("Original DateiName: KNOWN.EXE"),
        QStringLiteral("       ProductName: QX Prüfung"),
        QStringLiteral("    ProduktVersion: 3.0"),
        QStringLiteral("       Bemerkungen: nur für Tests"),
        QStringLiteral("        Dateigröße: ") + QString::number(byteCount(file)),
        QStringLiteral("        DateiDatum: 03.02.2001 04:05:06"),
    };
    EXPECT_EQ(qxtFileVersionsInfoLines(file), expected);
}

TEST(VersionInfo, ListsOnlyNameSizeAndDateWithoutVersionAndAnErrorForAMissingFile) {
    qxtest::TempDir dir;
    // At exactly midnight the date is written without a time.
    const QString file = copyWithTime(dir, "noversion.exe", QDateTime(QDate(2001, 2, 3), QTime()));
    EXPECT_EQ(
        qxtFileVersionsInfoLines(file),
        (QStringList{QStringLiteral("         Dateiname: ") + file,
                     QStringLiteral("        Dateigröße: ") + QString::number(byteCount(file)),
                     QStringLiteral("        DateiDatum: 03.02.2001")}));

    const QString missing = dir.file(QStringLiteral("missing.exe"));
    const QStringList notFound{QStringLiteral("         Dateiname: ") + missing,
                               QStringLiteral("Fehler : Datei nicht gefunden")};
    EXPECT_EQ(qxtFileVersionsInfoLines(missing), notFound);
    EXPECT_EQ(qxtFileVersionsInfoLines(dir.path()).last(), notFound.last());
}

TEST(VersionInfo, MemosGetTheLinesAppendedAsPlainText) {
    const QStringList lines = qxtFileVersionsInfoLines(pe("english.exe"));
    ASSERT_TRUE(lines.contains(QStringLiteral("   LegalTradeMarks: <b>Trademark</b> & Co")));

    QPlainTextEdit plain;
    qxtFileVersionsInfoToMemo(pe("english.exe"), &plain);
    EXPECT_EQ(plain.toPlainText().split(QLatin1Char('\n')), lines);
    QTextEdit rich;
    qxtFileVersionsInfoToMemo(pe("english.exe"), &rich);
    EXPECT_EQ(rich.toPlainText().split(QLatin1Char('\n')), lines);

    // Lines already there stay in front.
    plain.setPlainText(QStringLiteral("vorher"));
    rich.setPlainText(QStringLiteral("vorher"));
    qxtFileVersionsInfoToMemo(pe("english.exe"), &plain);
    qxtFileVersionsInfoToMemo(pe("english.exe"), &rich);
    EXPECT_EQ(plain.toPlainText().split(QLatin1Char('\n')), QStringList{"vorher"} + lines);
    EXPECT_EQ(rich.toPlainText().split(QLatin1Char('\n')), QStringList{"vorher"} + lines);
}

TEST(VersionInfo, AppVersionIsTheProductVersionUpToItsLastDot) {
    const QString saved = QCoreApplication::applicationVersion();
    const std::pair<const char*, const char*> cases[] = {
        {"3.0", "3"}, {"1.2.0.7", "1.2.0"}, {"7", ""}, {"", ""}, {".5", ""}};
    for (const auto& [version, expected] : cases) {
        QCoreApplication::setApplicationVersion(QLatin1String(version));
        EXPECT_EQ(qxtGetAppVersion(), QLatin1String(expected)) << version;
    }
    QCoreApplication::setApplicationVersion(saved);

    // A program without an application object has no record to read.
    QProcess program;
    program.start(QStringLiteral(QX_APPVERSION_PROGRAM), {});
    ASSERT_TRUE(program.waitForFinished(30000));
    EXPECT_EQ(program.readAllStandardOutput().trimmed(), QByteArray("Version-ERROR"));
}

TEST(VersionInfo, HexVersionHasFourGroupsOfFourDigits) {
    const std::pair<const char*, const char*> cases[] = {
        {"1.2.0.7", "0001000200000007"},
        {"V 1.2.0.7 (beta)", "0001000200000007"}, // only digits and dots count
        {"10.11.12.13", "000A000B000C000D"},
        {"1.2.3.4.5", "0001000200030004"}, // a fifth part is dropped
        {"1..3", "0001000000030000"},      // an empty part is 0
        {"4", "0004000000000000"},
        {"", "0000000000000000"},
        {"70000.0.1", "11170000000010000"}, // a part beyond four digits keeps them all
        // One dot: a number formatted "00.00" behind "01.00.".
        {"3.0", "0001000000030000"},
        {"1.5", "0001000000010032"},    // 01.50
        {"2.675", "0001000000020044"},  // 02.68, rounded on the decimal digits
        {"2.995", "0001000000030000"},  // 03.00
        {"99.996", "0001000000640000"}, // 100.00
        {".5", "0001000000000032"},     // 00.50
        {"7.", "0001000000070000"},
        {"0012.341", "00010000000C0022"},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(qxtGetHexFileVersion(QString::fromUtf8(text)), QLatin1String(expected)) << text;

    EXPECT_THROW(qxtGetHexFileVersion(QStringLiteral(".")), EConvertError);
    EXPECT_THROW(qxtGetHexFileVersion(QStringLiteral("99999999999.0.0")), EConvertError);
    // The dots are counted in 8 bits: 257 dots count as one, and such a text is no number.
    EXPECT_THROW(qxtGetHexFileVersion(QStringLiteral("1") + QString(257, QLatin1Char('.'))),
                 EConvertError);
    EXPECT_EQ(qxtGetHexFileVersion(QStringLiteral("1") + QString(256, QLatin1Char('.')) +
                                   QStringLiteral("2")),
              QStringLiteral("0001000000000000"));
}
