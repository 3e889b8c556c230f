#include "TIniFile.h"

#include "QxutilFiles.h"
#include "TestSupport.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>

namespace {

QByteArray readAll(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

QStringList list(void (TIniFile::*read)(TStrings*) const, const TIniFile& ini) {
    TStringList l;
    (ini.*read)(&l);
    return l.ToStringList();
}

QStringList section(void (TIniFile::*read)(const QString&, TStrings*) const, const TIniFile& ini,
                    const QString& name) {
    TStringList l;
    (ini.*read)(name, &l);
    return l.ToStringList();
}

const QByteArray sample = "; settings of the test\n"
                          "orphan=before any section\n"
                          "[Main]\n"
                          "  Name  =  Hello World  \n"
                          "Count=42\n"
                          "; a comment = not a key\n"
                          "no equals sign here\n"
                          "=no name\n"
                          "count=7\n"
                          "Empty=\n"
                          "Hex=0x1F\n"
                          "Dollar=$10\n"
                          "Bad=12abc\n"
                          "\n"
                          "[ Other ]\n"
                          "a=1\n"
                          "[MAIN]\n"
                          "Late=hidden\n";

} // namespace

TEST(IniFileRead, ProfileRules) {
    qxtest::TempDir dir;
    const TIniFile ini(dir.write(QStringLiteral("a.ini"), sample));
    // Case-blind names, trimmed values, first duplicate key and first duplicate section win.
    EXPECT_EQ(ini.ReadString(QStringLiteral("main"), QStringLiteral("NAME"), QStringLiteral("d")),
              QStringLiteral("Hello World"));
    EXPECT_EQ(ini.ReadInteger(QStringLiteral("Main"), QStringLiteral("count"), 0), 42);
    EXPECT_EQ(ini.ReadString(QStringLiteral("Main"), QStringLiteral("Late"), QStringLiteral("d")),
              QStringLiteral("d"));
    EXPECT_EQ(ini.ReadString(QStringLiteral("other"), QStringLiteral("a"), QString()),
              QStringLiteral("1"));
    // Lines before the first section, comments and lines without a name or "=" are no keys.
    EXPECT_EQ(ini.ReadString(QString(), QStringLiteral("orphan"), QStringLiteral("d")),
              QStringLiteral("d"));
    EXPECT_EQ(
        ini.ReadString(QStringLiteral("Main"), QStringLiteral("; a comment"), QStringLiteral("d")),
        QStringLiteral("d"));
    EXPECT_FALSE(ini.ValueExists(QStringLiteral("Main"), QStringLiteral("no equals sign here")));
    // An empty value is a value, not the default; integers fall back on bad text.
    EXPECT_EQ(ini.ReadString(QStringLiteral("Main"), QStringLiteral("Empty"), QStringLiteral("d")),
              QString());
    EXPECT_TRUE(ini.ValueExists(QStringLiteral("Main"), QStringLiteral("Empty")));
    EXPECT_EQ(ini.ReadInteger(QStringLiteral("Main"), QStringLiteral("Empty"), 5), 5);
    EXPECT_EQ(ini.ReadInteger(QStringLiteral("Main"), QStringLiteral("Hex"), 0), 31);
    EXPECT_EQ(ini.ReadInteger(QStringLiteral("Main"), QStringLiteral("Dollar"), 0), 16);
    EXPECT_EQ(ini.ReadInteger(QStringLiteral("Main"), QStringLiteral("Bad"), -3), -3);
    EXPECT_TRUE(ini.ReadBool(QStringLiteral("Main"), QStringLiteral("Count"), false));
    EXPECT_TRUE(ini.ReadBool(QStringLiteral("Main"), QStringLiteral("Missing"), true));

    EXPECT_EQ(list(&TIniFile::ReadSections, ini),
              (QStringList{QStringLiteral("Main"), QStringLiteral("Other")}));
    EXPECT_EQ(section(&TIniFile::ReadSection, ini, QStringLiteral("MAIN")),
              (QStringList{"Name", "Count", "Empty", "Hex", "Dollar", "Bad"}));
    EXPECT_EQ(section(&TIniFile::ReadSectionValues, ini, QStringLiteral("main")),
              (QStringList{"Name=Hello World", "Count=42", "Empty=", "Hex=0x1F", "Dollar=$10",
                           "Bad=12abc"}));
    EXPECT_TRUE(ini.SectionExists(QStringLiteral("OTHER")));
    EXPECT_FALSE(ini.SectionExists(QStringLiteral("Oth")));
}

TEST(IniFileRead, MissingFileGivesDefaults) {
    qxtest::TempDir dir;
    const TIniFile ini(dir.file(QStringLiteral("none/x.ini")));
    EXPECT_EQ(ini.ReadString(QStringLiteral("S"), QStringLiteral("K"), QStringLiteral("def")),
              QStringLiteral("def"));
    EXPECT_EQ(ini.ReadInteger(QStringLiteral("S"), QStringLiteral("K"), -9), -9);
    EXPECT_FALSE(ini.SectionExists(QStringLiteral("S")));
    EXPECT_TRUE(list(&TIniFile::ReadSections, ini).isEmpty());
}

TEST(IniFileWrite, KeepsEverythingElseInPlace) {
    qxtest::TempDir dir;
    const QString path = dir.write(QStringLiteral("a.ini"), sample);
    TIniFile ini(path);
    ini.WriteString(QStringLiteral("main"), QStringLiteral("name"), QStringLiteral("Bye"));
    ini.WriteInteger(QStringLiteral("Main"), QStringLiteral("New"), -12);
    ini.WriteBool(QStringLiteral("Other"), QStringLiteral("Flag"), true);
    ini.WriteString(QStringLiteral("Third"), QStringLiteral("K"), QStringLiteral("v"));
    QByteArray expected = sample;
    expected.replace("  Name  =  Hello World  \n", "  Name  =  Bye\n");
    expected.replace("Bad=12abc\n", "Bad=12abc\nNew=-12\n");
    expected.replace("a=1\n", "a=1\nFlag=1\n");
    expected += "\n[Third]\nK=v\n";
    EXPECT_EQ(readAll(path), expected);
    EXPECT_EQ(ini.ReadString(QStringLiteral("MAIN"), QStringLiteral("Name"), QString()),
              QStringLiteral("Bye"));
}

TEST(IniFileWrite, EraseAndDelete) {
    qxtest::TempDir dir;
    const QString path = dir.write(QStringLiteral("a.ini"), sample);
    TIniFile ini(path);
    ini.DeleteKey(QStringLiteral("MAIN"), QStringLiteral("COUNT"));
    // Both "Count" lines of the first section go, so no duplicate shows up afterwards.
    EXPECT_FALSE(ini.ValueExists(QStringLiteral("Main"), QStringLiteral("Count")));
    EXPECT_EQ(ini.ReadString(QStringLiteral("Main"), QStringLiteral("Hex"), QString()),
              QStringLiteral("0x1F"));
    // Every section of the name goes, with its comments and blank lines.
    ini.EraseSection(QStringLiteral("main"));
    EXPECT_FALSE(ini.SectionExists(QStringLiteral("Main")));
    EXPECT_EQ(readAll(path),
              QByteArray("; settings of the test\norphan=before any section\n[ Other ]\na=1\n"));
    // Erasing from a missing file does not create it.
    TIniFile none(dir.file(QStringLiteral("none.ini")));
    none.EraseSection(QStringLiteral("x"));
    none.DeleteKey(QStringLiteral("x"), QStringLiteral("y"));
    EXPECT_FALSE(QFile::exists(none.FileName()));
    // Nothing else is left beside the files either: the lock is the file itself.
    EXPECT_EQ(QDir(dir.path())
                  .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot),
              QStringList{QStringLiteral("a.ini")});
}

TEST(IniFileWrite, NewFilesLineBreaksAndEncoding) {
    qxtest::TempDir dir;
    // Missing directories are created; a new file uses "\n".
    TIniFile fresh(dir.file(QStringLiteral("sub/dir/new.ini")));
    fresh.WriteString(QStringLiteral("S"), QStringLiteral("K"), QStringLiteral("line1\nline2"));
    fresh.WriteString(QStringLiteral("s"), QStringLiteral("Zwei"), QStringLiteral(" Grüße "));
    EXPECT_EQ(readAll(fresh.FileName()), QByteArray("[S]\nK=line1 line2\nZwei= Grüße \n"));
    EXPECT_EQ(fresh.ReadString(QStringLiteral("S"), QStringLiteral("zwei"), QString()),
              QStringLiteral("Grüße"));

    // A "\r\n" file keeps "\r\n"; a last line without a break is closed before appending; the
    // byte-order mark stays; names outside ASCII compare case-blind.
    const QString crlf =
        dir.write(QStringLiteral("crlf.ini"), "\xEF\xBB\xBF[Größe]\r\nÄnderung=ja\r\nx=1");
    TIniFile ini(crlf);
    EXPECT_EQ(ini.ReadString(QStringLiteral("GRÖßE"), QStringLiteral("X"), QString()),
              QStringLiteral("1"));
    EXPECT_EQ(ini.ReadString(QStringLiteral("größe"), QStringLiteral("änderung"), QString()),
              QStringLiteral("ja"));
    ini.WriteString(QStringLiteral("GRÖßE"), QStringLiteral("y"), QStringLiteral("2"));
    ini.WriteString(QStringLiteral("Neu"), QStringLiteral("z"), QStringLiteral("3"));
    EXPECT_EQ(
        readAll(crlf),
        QByteArray("\xEF\xBB\xBF[Größe]\r\nÄnderung=ja\r\nx=1\r\ny=2\r\n\r\n[Neu]\r\nz=3\r\n"));
}

TEST(IniFileWrite, KeepsBrokenBytesAndPermissions) {
    qxtest::TempDir dir;
    const QByteArray raw = "[A]\nbin=\xFF\xFE\nk=1\n";
    const QString path = dir.write(QStringLiteral("raw.ini"), raw);
    QFile::setPermissions(path, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    TIniFile ini(path);
    ini.WriteString(QStringLiteral("A"), QStringLiteral("k"), QStringLiteral("2"));
    EXPECT_EQ(readAll(path), QByteArray("[A]\nbin=\xFF\xFE\nk=2\n"));
    // The replacement keeps the mode of the file it replaces (owner, group and others).
    EXPECT_EQ(QFileInfo(path).permissions() & QFileDevice::Permissions::fromInt(0x7077),
              QFileDevice::ReadOwner | QFileDevice::WriteOwner);
}

TEST(IniFileWrite, UnwritableFileRaises) {
    qxtest::TempDir dir;
    const QString blocker = dir.write(QStringLiteral("plain"), "x");
    TIniFile ini(blocker + QStringLiteral("/below.ini"));
    try {
        ini.WriteString(QStringLiteral("S"), QStringLiteral("K"), QStringLiteral("v"));
        FAIL() << "no exception";
    } catch (const EIniFileException& e) {
        EXPECT_EQ(e.Message(), QStringLiteral("Unable to write to ") + ini.FileName());
    }
}

TEST(IniFileName, BareNamesLiveInTheConfigurationDirectory) {
    qxtest::TempDir dir;
    const QByteArray saved = qgetenv("XDG_CONFIG_HOME");
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(dir.path()));
    EXPECT_EQ(qxtWinDir(), dir.path() + QStringLiteral("/"));
    TIniFile ini(QStringLiteral("bare.ini"));
    EXPECT_EQ(ini.FileName(), dir.path() + QStringLiteral("/bare.ini"));
    ini.WriteInteger(QStringLiteral("S"), QStringLiteral("K"), 1);
    EXPECT_TRUE(QFile::exists(dir.file(QStringLiteral("bare.ini"))));
    // A name with a directory part is used as it stands.
    EXPECT_EQ(TIniFile(QStringLiteral("rel/x.ini")).FileName(), QStringLiteral("rel/x.ini"));
    qputenv("XDG_CONFIG_HOME", saved);
    if (saved.isEmpty())
        qunsetenv("XDG_CONFIG_HOME");
    EXPECT_TRUE(qxtTMPDir().endsWith(QLatin1Char('/')));
    EXPECT_EQ(qxtSysDir(), QStringLiteral("/usr/lib/"));
}
