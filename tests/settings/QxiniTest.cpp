#include "Qxini.h"

#include "QXDesign.h"
#include "QXTools.h"

#include "TIniFile.h"
#include "TestSupport.h"

#include <QCoreApplication>
#include <QFile>
#include <QHeaderView>
#include <QMetaProperty>
#include <QTreeWidget>
#include <gtest/gtest.h>

namespace {

QString exeDir() {
    return QCoreApplication::applicationDirPath() + QLatin1Char('/');
}

QStringList keysOf(const QString& file, const QString& section) {
    TStringList l;
    TIniFile(file).ReadSection(section, &l);
    return l.ToStringList();
}

} // namespace

TEST(QxiniProperties, DefaultsAndFileNames) {
    TQXINI ini;
    EXPECT_EQ(ini.INIFileName(), QStringLiteral("Default.INI"));
    EXPECT_EQ(ini.GetINIFileName(), exeDir() + QStringLiteral("Default.INI"));
    EXPECT_EQ(ini.SaveWinPos(), swpNone);
    EXPECT_FALSE(ini.SaveLastRes());
    EXPECT_TRUE(ini.Caption().isEmpty());

    ini.SetINIFileName(QStringLiteral("settings.ini"));
    EXPECT_EQ(ini.INIFileName(), QStringLiteral("settings.ini"));
    EXPECT_EQ(ini.GetINIFileName(), exeDir() + QStringLiteral("settings.ini"));
    ini.SetINIFileName(QStringLiteral("/data/settings.ini"));
    EXPECT_EQ(ini.GetINIFileName(), QStringLiteral("/data/settings.ini"));
    ini.SetINIFileName(QStringLiteral("sub/settings.ini"));
    EXPECT_EQ(ini.GetINIFileName(), QStringLiteral("sub/settings.ini"));
    ini.SetINIFileName(QString());
    EXPECT_EQ(ini.INIFileName(), QStringLiteral("Default.INI"));
    EXPECT_EQ(ini.GetINIFileName(), exeDir() + QStringLiteral("Default.INI"));

    ini.SetName(QStringLiteral("QXINI1"));
    ini.SetCaption(QString());
    EXPECT_EQ(ini.Caption(), QStringLiteral("QXINI1"));

    // The about property reads the revision whatever is assigned, also through Qt's properties.
    EXPECT_TRUE(ini.setProperty("About_QXTools", QStringLiteral("anything")));
    EXPECT_EQ(ini.property("About_QXTools").toString(), QStringLiteral("17.05.97"));
    EXPECT_TRUE(ini.setProperty("SaveWinPos", QStringLiteral("swpSizePosition")));
    EXPECT_EQ(ini.SaveWinPos(), swpSizePosition);
}

TEST(QxiniProperties, OnThePalette) {
    TPaletteRegistry::Instance().Clear();
    Qxini::Register();
    QStringList names;
    for (const TComponentClass& c :
         TPaletteRegistry::Instance().ClassesOnPage(QStringLiteral("QX Tools")))
        names << c.Name;
    EXPECT_EQ(names, QStringList{QStringLiteral("TQXINI")});
    TPaletteRegistry::Instance().Clear();
    QXTools::Register();
    names.clear();
    for (const TComponentClass& c :
         TPaletteRegistry::Instance().ClassesOnPage(QStringLiteral("QX Tools")))
        names << c.Name;
    EXPECT_TRUE(names.contains(QStringLiteral("TQXINI")));
    // The palette makes it with its owner, like the form designer does.
    QWidget form;
    std::unique_ptr<QObject> made(FindComponentClass(QStringLiteral("TQXINI"))->Create(&form));
    auto* ini = qobject_cast<TQXINI*>(made.get());
    ASSERT_NE(ini, nullptr);
    EXPECT_EQ(ini->Form(), &form);
    EXPECT_EQ(ini->GetAboutQXT(), QXIniVersion);
}

TEST(QxiniForm, ReadAndWriteINIUseNameAndFireEvents) {
    qxtest::TempDir dir;
    QWidget form;
    form.winId();
    auto* ini = new TQXINI(&form);
    ini->SetName(QStringLiteral("Settings"));
    ini->SetINIFileName(dir.file(QStringLiteral("f.ini")));
    QStringList fired;
    ini->OnWriteINI = [&](QObject* s) { fired << (s == ini ? "write" : "?"); };
    ini->OnReadINI = [&](QObject* s) { fired << (s == ini ? "read" : "?"); };

    // swpNone: only the events, no file.
    ini->WriteINI();
    ini->ReadINI();
    EXPECT_EQ(fired, (QStringList{"write", "read"}));
    EXPECT_FALSE(QFile::exists(ini->GetINIFileName()));
    EXPECT_EQ(ini->Caption(), QStringLiteral("Settings"));

    ini->SetSaveWinPos(swpSizePosition);
    form.move(11, 22);
    form.resize(333, 244);
    ini->WriteINI();
    EXPECT_EQ(keysOf(ini->GetINIFileName(), QStringLiteral("WinPos")),
              (QStringList{"Settings_WindowState", "Settings_Top", "Settings_Left",
                           "Settings_Height", "Settings_Width"}));
    form.move(0, 0);
    form.resize(50, 50);
    ini->ReadINI();
    EXPECT_EQ(form.pos(), QPoint(11, 22));
    EXPECT_EQ(form.size(), QSize(333, 244));
    EXPECT_EQ(fired.size(), 4);
}

TEST(QxiniForm, WindowStates) {
    qxtest::TempDir dir;
    QWidget form;
    form.winId();
    TQXINI ini(&form);
    ini.SetINIFileName(dir.file(QStringLiteral("w.ini")));
    const QString f = ini.GetINIFileName();
    form.move(10, 20);
    form.resize(200, 100);
    ini.INISaveWinPos(QStringLiteral("F"), &form, swpSizePosition);

    // A maximised form writes only its state; the normal bounds stay as saved before.
    form.move(500, 500);
    form.resize(600, 600);
    form.setWindowState(Qt::WindowMaximized);
    ini.INISaveWinPos(QStringLiteral("F"), &form, swpSizePosition);
    const TIniFile file(f);
    EXPECT_EQ(file.ReadInteger(QStringLiteral("WinPos"), QStringLiteral("F_WindowState"), -1), 2);
    EXPECT_EQ(file.ReadInteger(QStringLiteral("WinPos"), QStringLiteral("F_Top"), -1), 20);
    EXPECT_EQ(file.ReadInteger(QStringLiteral("WinPos"), QStringLiteral("F_Width"), -1), 200);

    // Loading sets the bounds, then the state.
    QWidget other;
    other.winId();
    ini.INILoadWinPos(QStringLiteral("F"), &other, swpSizePosition);
    EXPECT_EQ(other.pos(), QPoint(10, 20));
    EXPECT_EQ(other.size(), QSize(200, 100));
    EXPECT_EQ(FormWindowState(&other), wsMaximized);

    TIniFile(f).WriteInteger(QStringLiteral("WinPos"), QStringLiteral("F_WindowState"), 1);
    ini.INILoadWinPos(QStringLiteral("F"), &other, swpPosition);
    EXPECT_EQ(FormWindowState(&other), wsMinimized);
    // Out-of-range states restore the form.
    for (int bad : {3, -1, 1000}) {
        SetFormWindowState(&other, wsMaximized);
        TIniFile(f).WriteInteger(QStringLiteral("WinPos"), QStringLiteral("F_WindowState"), bad);
        ini.INILoadWinPos(QStringLiteral("F"), &other, swpPosition);
        EXPECT_EQ(FormWindowState(&other), wsNormal) << bad;
    }

    // swpPosition neither writes nor reads the size.
    QWidget small;
    small.winId();
    small.move(1, 2);
    small.resize(30, 40);
    ini.INISaveWinPos(QStringLiteral("P"), &small, swpPosition);
    EXPECT_EQ(keysOf(f, QStringLiteral("WinPos")).filter(QStringLiteral("P_")),
              (QStringList{"P_WindowState", "P_Top", "P_Left"}));
    TIniFile(f).WriteInteger(QStringLiteral("WinPos"), QStringLiteral("P_Width"), 999);
    QWidget target;
    target.winId();
    target.move(0, 0);
    target.resize(77, 88);
    ini.INILoadWinPos(QStringLiteral("P"), &target, swpPosition);
    EXPECT_EQ(target.pos(), QPoint(1, 2));
    EXPECT_EQ(target.size(), QSize(77, 88));
    EXPECT_EQ(FormWindowState(&target), wsNormal);
}

TEST(QxiniItems, CountNamesTheHighestIndex) {
    qxtest::TempDir dir;
    TQXINI ini;
    ini.SetINIFileName(dir.write(QStringLiteral("i.ini"), "[Two]\nAnzahl=2\n0=a\n2=c\n"
                                                          "[NoCount]\n0=only\n1=ignored\n"
                                                          "[Minus]\nAnzahl=-1\n0=x\n"
                                                          "[Empty]\n"));
    TStringList items;
    items.Add(QStringLiteral("old"));
    ini.INIReadItems(QStringLiteral("Two"), &items);
    EXPECT_EQ(items.ToStringList(), (QStringList{"a", "Leer", "c"}));
    ini.INIReadItems(QStringLiteral("NoCount"), &items);
    EXPECT_EQ(items.ToStringList(), (QStringList{"only"}));
    ini.INIReadItems(QStringLiteral("Empty"), &items);
    EXPECT_EQ(items.ToStringList(), (QStringList{"Leer"}));
    ini.INIReadItems(QStringLiteral("Minus"), &items);
    EXPECT_TRUE(items.ToStringList().isEmpty());

    ini.INIReadSection(QStringLiteral("two"), &items);
    EXPECT_EQ(items.ToStringList(), (QStringList{"Anzahl", "0", "2"}));
    ini.INIReadSectionValues(QStringLiteral("minus"), &items);
    EXPECT_EQ(items.ToStringList(), (QStringList{"Anzahl=-1", "0=x"}));
    ini.KillSection(QStringLiteral("TWO"));
    EXPECT_FALSE(TIniFile(ini.GetINIFileName()).SectionExists(QStringLiteral("Two")));
    EXPECT_TRUE(TIniFile(ini.GetINIFileName()).SectionExists(QStringLiteral("Minus")));
}

TEST(QxiniValues, TypedAccess) {
    qxtest::TempDir dir;
    TQXINI ini;
    ini.SetINIFileName(dir.file(QStringLiteral("t.ini")));
    ini.INIWriteBool(QStringLiteral("S"), QStringLiteral("b"), true);
    ini.INIWriteInteger(QStringLiteral("S"), QStringLiteral("i"), -42);
    ini.INIWriteString(QStringLiteral("S"), QStringLiteral("s"), QStringLiteral("Grüße"));
    EXPECT_TRUE(ini.INIReadBool(QStringLiteral("s"), QStringLiteral("B"), false));
    EXPECT_EQ(ini.INIReadInteger(QStringLiteral("s"), QStringLiteral("I"), 0), -42);
    EXPECT_EQ(ini.INIReadString(QStringLiteral("s"), QStringLiteral("S"), QString()),
              QStringLiteral("Grüße"));
    EXPECT_EQ(ini.INIReadInteger(QStringLiteral("s"), QStringLiteral("none"), 8), 8);
    // Every call reads the file as it is now.
    TIniFile(ini.GetINIFileName()).WriteInteger(QStringLiteral("S"), QStringLiteral("i"), 5);
    EXPECT_EQ(ini.INIReadInteger(QStringLiteral("S"), QStringLiteral("i"), 0), 5);
}

TEST(QxiniFont, StylesAndLetters) {
    qxtest::TempDir dir;
    TQXINI ini;
    ini.SetINIFileName(dir.file(QStringLiteral("font.ini")));
    TFont font;
    font.SetStyle({fsBold, fsUnderline});
    ini.INISaveFont(QStringLiteral("Fonts"), QStringLiteral("Memo"), &font);
    EXPECT_EQ(ini.INIReadString(QStringLiteral("Fonts"), QStringLiteral("Memo_Style"), QString()),
              QStringLiteral("BU"));

    ini.INIWriteString(QStringLiteral("Fonts"), QStringLiteral("Memo_Style"), QStringLiteral("SB"));
    TFont loaded;
    ini.INILoadFont(QStringLiteral("Fonts"), QStringLiteral("Memo"), &loaded);
    EXPECT_EQ(loaded.Style(), (TFontStyles{fsBold, fsStrikeOut}));
    ini.INIWriteString(QStringLiteral("Fonts"), QStringLiteral("Memo_Style"), QStringLiteral("b"));
    ini.INILoadFont(QStringLiteral("Fonts"), QStringLiteral("Memo"), &loaded);
    EXPECT_TRUE(loaded.Style().Empty());
}

TEST(QxiniColumns, SaveAndLoad) {
    qxtest::TempDir dir;
    TQXINI ini;
    ini.SetINIFileName(dir.file(QStringLiteral("c.ini")));
    QTreeWidget view;
    view.setHeaderLabels({QStringLiteral("Datei"), QStringLiteral("Typ")});
    view.header()->setStretchLastSection(false);
    view.setColumnWidth(0, 150);
    view.setColumnWidth(1, 80);
    ini.INISaveColumns(QStringLiteral("Cols"), QStringLiteral("lv"), &view);
    EXPECT_EQ(ini.INIReadString(QStringLiteral("Cols"), QStringLiteral("lvColum_0"), QString()),
              QStringLiteral("Datei|150"));
    EXPECT_EQ(ini.INIReadString(QStringLiteral("Cols"), QStringLiteral("lvColum_1"), QString()),
              QStringLiteral("Typ|80"));

    // Without captions only the widths change; entries past the last column are ignored.
    ini.INIWriteString(QStringLiteral("Cols"), QStringLiteral("lvColum_0"),
                       QStringLiteral("Name|60"));
    ini.INIWriteString(QStringLiteral("Cols"), QStringLiteral("lvColum_2"),
                       QStringLiteral("Extra|10"));
    QTreeWidget other;
    other.setHeaderLabels({QStringLiteral("A"), QStringLiteral("B")});
    other.header()->setStretchLastSection(false);
    other.setColumnWidth(1, 33);
    ini.INIWriteString(QStringLiteral("Cols"), QStringLiteral("lvColum_1"), QString());
    ini.INILoadColumns(QStringLiteral("Cols"), QStringLiteral("lv"), &other, false);
    EXPECT_EQ(other.headerItem()->text(0), QStringLiteral("A"));
    EXPECT_EQ(other.columnWidth(0), 60);
    EXPECT_EQ(other.columnWidth(1), 33);
    EXPECT_EQ(other.columnCount(), 2);

    ini.INIWriteString(QStringLiteral("Cols"), QStringLiteral("lvColum_1"),
                       QStringLiteral("Größe|wide"));
    try {
        ini.INILoadColumns(QStringLiteral("Cols"), QStringLiteral("lv"), &other, true);
        FAIL() << "no conversion error";
    } catch (const EConvertError& e) {
        EXPECT_EQ(e.Message(), QStringLiteral("'wide' is not a valid integer value"));
    }
    // The first column was set before the error, the second got its caption only.
    EXPECT_EQ(other.headerItem()->text(0), QStringLiteral("Name"));
    EXPECT_EQ(other.columnWidth(0), 60);
    EXPECT_EQ(other.headerItem()->text(1), QStringLiteral("Größe"));
    EXPECT_EQ(other.columnWidth(1), 33);
}

TEST(QxiniViewStyle, ExactTexts) {
    qxtest::TempDir dir;
    TQXINI ini;
    ini.SetINIFileName(dir.file(QStringLiteral("v.ini")));
    ini.INIWriteViewStyle(QStringLiteral("V"), QStringLiteral("Style"), vsReport);
    EXPECT_EQ(ini.INIReadString(QStringLiteral("V"), QStringLiteral("Style"), QString()),
              QStringLiteral("Report"));
    EXPECT_EQ(ini.INIReadViewStyle(QStringLiteral("V"), QStringLiteral("Style"), vsIcon), vsReport);
    ini.INIWriteString(QStringLiteral("V"), QStringLiteral("Style"), QStringLiteral("report"));
    EXPECT_EQ(ini.INIReadViewStyle(QStringLiteral("V"), QStringLiteral("Style"), vsIcon),
              vsSmallIcon);
    EXPECT_EQ(ini.INIReadViewStyle(QStringLiteral("V"), QStringLiteral("Missing"), vsList), vsList);
}
