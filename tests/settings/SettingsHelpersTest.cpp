#include "QxutilSettings.h"

#include "TIniFile.h"
#include "TestSupport.h"

#include <QFile>
#include <QWidget>
#include <gtest/gtest.h>

namespace {

const QString S = QStringLiteral("S");

QStringList keysOf(const QString& file, const QString& section) {
    TStringList l;
    qxtINIReadSection(file, section, &l);
    return l.ToStringList();
}

} // namespace

TEST(SettingsValues, ReadIntegerStripsCommentsAndReadsEmptyAsZero) {
    qxtest::TempDir dir;
    const QString f = dir.write(QStringLiteral("v.ini"), "[S]\n"
                                                         "commented=12 ; twelve\n"
                                                         "hex=$1F;x\n"
                                                         "empty=\n"
                                                         "onlyComment= ; nothing\n"
                                                         "text=abc\n");
    EXPECT_EQ(qxtINIReadInteger(f, S, QStringLiteral("commented"), 5), 12);
    EXPECT_EQ(qxtINIReadInteger(f, S, QStringLiteral("hex"), 5), 31);
    EXPECT_EQ(qxtINIReadInteger(f, S, QStringLiteral("empty"), 5), 0);
    EXPECT_EQ(qxtINIReadInteger(f, S, QStringLiteral("onlyComment"), 5), 0);
    EXPECT_EQ(qxtINIReadInteger(f, S, QStringLiteral("missing"), -5), -5);
    try {
        qxtINIReadInteger(f, S, QStringLiteral("text"), 5);
        FAIL() << "no conversion error";
    } catch (const EConvertError& e) {
        EXPECT_EQ(e.Message(), QStringLiteral("'abc' is not a valid integer value"));
    }
}

TEST(SettingsValues, ReadBoolTakesTwoPaths) {
    qxtest::TempDir dir;
    const QString f = dir.write(QStringLiteral("b.ini"), "[S]\n"
                                                         "one=1\n"
                                                         "zeroNote=0 ; off\n"
                                                         "twoNote=2;on\n"
                                                         "wordNote=True ; yes\n"
                                                         "emptyNote= ;\n"
                                                         "word=yes\n"
                                                         "badNote=yes;x\n");
    EXPECT_TRUE(qxtINIReadBool(f, S, QStringLiteral("one"), false));
    EXPECT_FALSE(qxtINIReadBool(f, S, QStringLiteral("zeroNote"), true));
    EXPECT_TRUE(qxtINIReadBool(f, S, QStringLiteral("twoNote"), false));
    EXPECT_TRUE(qxtINIReadBool(f, S, QStringLiteral("wordNote"), false));
    EXPECT_TRUE(qxtINIReadBool(f, S, QStringLiteral("emptyNote"), true));
    EXPECT_FALSE(qxtINIReadBool(f, S, QStringLiteral("emptyNote"), false));
    // Without a comment the text goes through the store's integer reading: bad text -> default.
    EXPECT_TRUE(qxtINIReadBool(f, S, QStringLiteral("word"), true));
    EXPECT_TRUE(qxtINIReadBool(f, S, QStringLiteral("missing"), true));
    EXPECT_THROW(qxtINIReadBool(f, S, QStringLiteral("badNote"), true), EConvertError);

    qxtINIWriteBool(f, S, QStringLiteral("w"), true);
    qxtINIWriteBool(f, S, QStringLiteral("x"), false);
    EXPECT_EQ(qxtINIReadString(f, S, QStringLiteral("w"), QString()), QStringLiteral("1"));
    EXPECT_EQ(qxtINIReadString(f, S, QStringLiteral("x"), QString()), QStringLiteral("0"));
}

TEST(SettingsValues, SectionFunctionsWorkOnTheFile) {
    qxtest::TempDir dir;
    const QString f = dir.file(QStringLiteral("s.ini"));
    qxtINIWriteString(f, QStringLiteral("One"), QStringLiteral("a"), QStringLiteral("x"));
    qxtINIWriteInteger(f, QStringLiteral("One"), QStringLiteral("b"), -7);
    qxtINIWriteString(f, QStringLiteral("Two"), QStringLiteral("c"), QStringLiteral("y"));
    qxtINIFlush(f);
    TStringList l;
    qxtINIReadSections(f, &l);
    EXPECT_EQ(l.ToStringList(), (QStringList{"One", "Two"}));
    EXPECT_EQ(keysOf(f, QStringLiteral("one")), (QStringList{"a", "b"}));
    qxtINIReadSectionValues(f, QStringLiteral("One"), &l);
    EXPECT_EQ(l.ToStringList(), (QStringList{"a=x", "b=-7"}));
    EXPECT_EQ(qxtINIReadString(f, QStringLiteral("two"), QStringLiteral("C"), QString()),
              QStringLiteral("y"));
    EXPECT_TRUE(qxtINISectionExists(f, QStringLiteral("Two")));
    qxtINIEraseSection(f, QStringLiteral("two"));
    EXPECT_FALSE(qxtINISectionExists(f, QStringLiteral("Two")));
    EXPECT_TRUE(qxtINISectionExists(f, QStringLiteral("One")));
}

TEST(SettingsWinPos, PositionOnlyAndMaximisedForms) {
    qxtest::TempDir dir;
    const QString f = dir.file(QStringLiteral("w.ini"));
    // Left and Top are the frame's position (move), Width and Height the client size (resize);
    // the forms get their native windows first, as shown forms have.
    QWidget form;
    form.winId();
    form.move(30, 40);
    form.resize(300, 200);
    form.setWindowState(Qt::WindowMaximized);
    qxtINISaveWinPos(f, QStringLiteral("Main"), &form, swpPosition);
    // The form is restored first, and only the position is written.
    EXPECT_FALSE(form.windowState() & Qt::WindowMaximized);
    EXPECT_EQ(keysOf(f, QStringLiteral("WinPos")), (QStringList{"Main_Top", "Main_Left"}));
    EXPECT_EQ(qxtINIReadInteger(f, QStringLiteral("WinPos"), QStringLiteral("Main_Top"), 0), 40);
    EXPECT_EQ(qxtINIReadInteger(f, QStringLiteral("WinPos"), QStringLiteral("Main_Left"), 0), 30);

    // Loading that file with size and position keeps the current size.
    QWidget other;
    other.winId();
    other.move(1, 2);
    other.resize(123, 77);
    qxtINILoadWinPos(f, QStringLiteral("main"), &other, swpSizePosition);
    EXPECT_EQ(other.pos(), QPoint(30, 40));
    EXPECT_EQ(other.size(), QSize(123, 77));

    qxtINISaveWinPos(f, QStringLiteral("Big"), &form, swpSizePosition);
    QWidget third;
    third.winId();
    qxtINILoadWinPos(f, QStringLiteral("Big"), &third, swpSizePosition);
    EXPECT_EQ(third.pos(), QPoint(30, 40));
    EXPECT_EQ(third.size(), QSize(300, 200));
}

TEST(SettingsWinPos, NoneTouchesNothing) {
    qxtest::TempDir dir;
    const QString f = dir.file(QStringLiteral("none.ini"));
    QWidget form;
    form.winId();
    form.move(5, 6);
    form.setWindowState(Qt::WindowMaximized);
    qxtINISaveWinPos(f, QStringLiteral("M"), &form, swpNone);
    EXPECT_FALSE(QFile::exists(f));
    EXPECT_TRUE(form.windowState() & Qt::WindowMaximized);
    TIniFile(f).WriteInteger(QStringLiteral("WinPos"), QStringLiteral("M_Top"), 99);
    qxtINILoadWinPos(f, QStringLiteral("M"), &form, swpNone);
    EXPECT_EQ(form.y(), 6);
}

TEST(SettingsFont, StyleLettersAndDefaults) {
    qxtest::TempDir dir;
    const QString f = dir.file(QStringLiteral("f.ini"));
    TFont font;
    font.SetName(QStringLiteral("DejaVu Serif"));
    font.SetSize(14);
    font.SetColor(TColorFromBits(0x80000014u));
    font.SetStyle({fsItalic, fsBold});
    qxtINISaveFont(f, S, QStringLiteral("Edit"), &font);
    EXPECT_EQ(qxtINIReadString(f, S, QStringLiteral("Edit_Style"), QString()),
              QStringLiteral("BI"));
    EXPECT_EQ(qxtINIReadString(f, S, QStringLiteral("Edit_Size"), QString()), QStringLiteral("14"));
    EXPECT_EQ(qxtINIReadString(f, S, QStringLiteral("Edit_Color"), QString()),
              QString::number(qint32(0x80000014u)));

    TFont loaded;
    qxtINILoadFont(f, S, QStringLiteral("Edit"), &loaded);
    EXPECT_EQ(loaded.Name(), QStringLiteral("DejaVu Serif"));
    EXPECT_EQ(loaded.Size(), 14);
    EXPECT_EQ(loaded.Color(), TColorFromBits(0x80000014u));
    EXPECT_EQ(loaded.Style(), (TFontStyles{fsBold, fsItalic}));

    TFont plain;
    qxtINISaveFont(f, S, QStringLiteral("Plain"), &plain);
    EXPECT_EQ(qxtINIReadString(f, S, QStringLiteral("Plain_Style"), QStringLiteral("x")),
              QString());

    // Any order and other characters; lower-case letters do not count.
    qxtINIWriteString(f, S, QStringLiteral("Odd_Style"), QStringLiteral("xSbU"));
    TFont odd;
    odd.SetName(QStringLiteral("Keep Me"));
    odd.SetSize(20);
    odd.SetColor(clRed);
    odd.SetStyle({fsItalic});
    qxtINILoadFont(f, S, QStringLiteral("Odd"), &odd);
    EXPECT_EQ(odd.Style(), (TFontStyles{fsStrikeOut, fsUnderline}));
    EXPECT_EQ(odd.Name(), QStringLiteral("Keep Me"));
    EXPECT_EQ(odd.Size(), 20);
    EXPECT_EQ(odd.Color(), clRed);
}

TEST(SettingsViewStyle, TextsAndUnknownValues) {
    qxtest::TempDir dir;
    const QString f = dir.file(QStringLiteral("v.ini"));
    for (TViewStyle v : {vsIcon, vsSmallIcon, vsList, vsReport}) {
        qxtINIWriteViewStyle(f, S, QStringLiteral("V"), v);
        EXPECT_EQ(qxtINIReadViewStyle(f, S, QStringLiteral("V"), vsIcon), v);
    }
    EXPECT_EQ(qxtINIReadString(f, S, QStringLiteral("V"), QString()), QStringLiteral("Report"));
    EXPECT_EQ(qxtViewStyleToStr(vsSmallIcon), QStringLiteral("SmallIcon"));
    EXPECT_EQ(qxtStrToViewStyle(QStringLiteral("List")), vsList);
    EXPECT_EQ(qxtStrToViewStyle(QStringLiteral("report")), vsSmallIcon);
    EXPECT_EQ(qxtStrToViewStyle(QString()), vsSmallIcon);
    EXPECT_EQ(qxtINIReadViewStyle(f, S, QStringLiteral("missing"), vsList), vsList);
}
