#include "ControlImage.h"
#include "QXDesign.h"
#include "Qxlcdpan.h"
#include "TestSupport.h"

#include <QMetaProperty>
#include <gtest/gtest.h>

using qxtest::pixelBGR;
using qxtest::renderControl;

namespace {

constexpr TColor lo = 0x004000;

// A point inside each segment of a default cell (22 x 36 at x0, top 2, unit 2) that no other
// segment drawn later covers, as an offset from the cell's left edge and an absolute y.
struct Probe {
    int dx, y;
};
constexpr Probe top{6, 4}, upperLeft{2, 12}, upperRight{20, 12}, middleLeft{5, 20},
    middleRight{17, 20}, lowerLeft{2, 28}, lowerRight{20, 28}, bottom{6, 36}, upperCentre{11, 11},
    lowerCentre{11, 28}, diagUpperLeft{6, 12}, diagUpperRight{16, 12}, diagLowerRight{16, 28},
    diagLowerLeft{6, 28};

// Cell c of the default panel starts at x = 30c + 4.
int at(const QImage& img, int cell, Probe p) {
    return pixelBGR(img, cell * 30 + 4 + p.dx, p.y);
}

QImage showing(TQXLCDPanel& lcd, const QString& text) {
    lcd.SetCaption(text);
    return renderControl(lcd);
}

} // namespace

TEST(LCDPanel, DefaultsAndSetterRules) {
    TQXLCDPanel lcd;
    EXPECT_EQ(lcd.Width(), 300);
    EXPECT_EQ(lcd.Height(), 40);
    EXPECT_EQ(lcd.sizeHint(), QSize(300, 40));
    EXPECT_EQ(lcd.Columns(), 10);
    EXPECT_EQ(lcd.Rows(), 1);
    EXPECT_EQ(lcd.SegmentSize(), 2);
    EXPECT_EQ(lcd.LCDHiColor(), clLime);
    EXPECT_EQ(lcd.LCDLoColor(), lo);
    EXPECT_EQ(lcd.Color(), clBlack);
    EXPECT_EQ(lcd.Items()->ToStringList(), QStringList{QStringLiteral("QXLCDPanel")});
    EXPECT_TRUE(lcd.Caption().isEmpty());
    EXPECT_EQ(lcd.About_QXTools(), QStringLiteral("15.11.96"));
    EXPECT_FALSE(lcd.accessibleName().isEmpty());

    lcd.SetColumns(200);
    EXPECT_EQ(lcd.Columns(), 200);
    lcd.SetColumns(0);
    EXPECT_EQ(lcd.Columns(), 1);
    lcd.SetRows(200);
    EXPECT_EQ(lcd.Rows(), 50);
    lcd.SetRows(0);
    EXPECT_EQ(lcd.Rows(), 1);
    lcd.SetSegmentSize(0);
    EXPECT_EQ(lcd.SegmentSize(), 1);

    lcd.SetCaption(QStringLiteral("12:30"));
    EXPECT_EQ(lcd.Items()->ToStringList(), QStringList{QStringLiteral("12:30")});
    lcd.Items()->Add(QStringLiteral("second"));
    lcd.SetCaption(QString());
    EXPECT_EQ(lcd.Items()->Count(), 2);
    EXPECT_TRUE(lcd.Caption().isEmpty());

    const QMetaObject* mo = lcd.metaObject();
    for (const char* name : {"Caption", "Columns", "Items", "LCDHiColor", "LCDLoColor", "Rows",
                             "SegmentSize", "Color"})
        EXPECT_GE(mo->indexOfProperty(name), 0) << name;
    ASSERT_TRUE(lcd.setProperty("LCDHiColor", QColor(255, 0, 0)));
    EXPECT_EQ(lcd.LCDHiColor(), clRed);
    ASSERT_TRUE(lcd.setProperty("Items", QStringList{"A", "B"}));
    EXPECT_EQ(lcd.Items()->Count(), 2);
    ASSERT_NE(FindComponentClass(QStringLiteral("TQXLCDPanel")), nullptr);
}

TEST(LCDPanel, PaintGrowsTheControlAndFitsTheSegmentSize) {
    TQXLCDPanel lcd;
    lcd.SetAlign(alTop);
    lcd.SetBounds(0, 0, 50, 20);
    lcd.SetRows(3);
    renderControl(lcd);
    EXPECT_EQ(lcd.Width(), 130);
    EXPECT_EQ(lcd.Height(), 39);
    EXPECT_EQ(lcd.Align(), alNone);
    // A pitch of 13 leaves 13 div 2 = 6 < 8: the unit becomes 13 div 8 = 1.
    EXPECT_EQ(lcd.SegmentSize(), 1);

    // The defaults keep their unit: 30 div 2 = 15, 40 div 2 = 20.
    TQXLCDPanel wide;
    renderControl(wide);
    EXPECT_EQ(wide.SegmentSize(), 2);
    EXPECT_EQ(wide.Width(), 300);
    // A large unit shrinks to an eighth of the pitch.
    wide.SetSegmentSize(9);
    renderControl(wide);
    EXPECT_EQ(wide.SegmentSize(), 3);
}

TEST(LCDPanel, DigitsAndLettersLightTheirSegments) {
    TQXLCDPanel lcd;
    const QImage img = showing(lcd, QStringLiteral("0MK+"));
    // "0": the outer frame, nothing inside.
    for (Probe p : {top, upperLeft, upperRight, lowerLeft, lowerRight, bottom})
        EXPECT_EQ(at(img, 0, p), clLime) << p.dx << "," << p.y;
    for (Probe p : {middleLeft, middleRight, upperCentre, lowerCentre, diagUpperLeft,
                    diagUpperRight, diagLowerRight, diagLowerLeft})
        EXPECT_EQ(at(img, 0, p), lo) << p.dx << "," << p.y;
    // "M": frame without bottom, and the upper centre vertical.
    for (Probe p : {top, upperLeft, upperRight, lowerLeft, lowerRight, upperCentre})
        EXPECT_EQ(at(img, 1, p), clLime) << p.dx << "," << p.y;
    for (Probe p : {bottom, lowerCentre, middleLeft, diagUpperLeft, diagLowerRight})
        EXPECT_EQ(at(img, 1, p), lo) << p.dx << "," << p.y;
    // "K": left verticals, left half bar, the two right diagonals.
    for (Probe p : {upperLeft, lowerLeft, middleLeft, diagUpperRight, diagLowerRight})
        EXPECT_EQ(at(img, 2, p), clLime) << p.dx << "," << p.y;
    for (Probe p : {top, bottom, middleRight, upperRight, diagUpperLeft, diagLowerLeft})
        EXPECT_EQ(at(img, 2, p), lo) << p.dx << "," << p.y;
    // "+": the centre verticals and both half bars.
    for (Probe p : {upperCentre, lowerCentre, middleLeft, middleRight})
        EXPECT_EQ(at(img, 3, p), clLime) << p.dx << "," << p.y;
    for (Probe p : {top, bottom, upperLeft, diagUpperLeft})
        EXPECT_EQ(at(img, 3, p), lo) << p.dx << "," << p.y;

    // Cells are 30 pixels apart with 22 x 36 character rectangles: the margins stay in Color.
    EXPECT_EQ(pixelBGR(img, 2, 20), clBlack);
    EXPECT_EQ(pixelBGR(img, 27, 20), clBlack);
    EXPECT_EQ(pixelBGR(img, 40, 0), clBlack);
    EXPECT_EQ(pixelBGR(img, 40, 39), clBlack);
    // Unlit segments have black outlines: the left edge of the upper left vertical.
    EXPECT_EQ(at(img, 3, {0, 12}), clBlack);
    // A gap inside the cell between top bar, diagonal and centre vertical.
    EXPECT_EQ(at(img, 0, {7, 8}), clBlack);
}

TEST(LCDPanel, MarksAndBlankCharacters) {
    TQXLCDPanel lcd;
    const QImage img = showing(lcd, QStringLiteral(",.:ä/ a"));
    // xc = x0 + 11, yc = 20, bottom 38, unit 2.
    EXPECT_EQ(at(img, 0, {11, 36}), clLime); // comma
    EXPECT_EQ(at(img, 0, {6, 36}), lo);
    EXPECT_EQ(at(img, 1, {11, 36}), clLime); // full stop
    EXPECT_EQ(at(img, 1, {10, 35}), clLime);
    EXPECT_EQ(at(img, 1, {6, 36}), lo);
    EXPECT_EQ(at(img, 2, {11, 24}), clLime); // colon, lower dot
    EXPECT_EQ(at(img, 2, {11, 16}), clLime); // upper dot
    EXPECT_EQ(at(img, 2, {11, 20}), lo);
    EXPECT_EQ(at(img, 2, {6, 36}), lo);
    // "ä", "/" and " " are dark cells; lower case shows as upper case.
    for (int cell : {3, 4, 5})
        for (Probe p : {top, upperLeft, middleLeft, upperCentre, diagLowerLeft, bottom})
            EXPECT_EQ(at(img, cell, p), lo) << cell;
    TQXLCDPanel upper;
    const QImage a = showing(upper, QStringLiteral(",.:ä/ A"));
    EXPECT_EQ(a, img);
}

TEST(LCDPanel, RowsComeFromItemsAndLongTextIsCut) {
    TQXLCDPanel lcd;
    lcd.SetBounds(0, 0, 300, 80);
    lcd.SetRows(2);
    TStringList lines;
    lines.Add(QStringLiteral("88888888881"));
    lines.Add(QStringLiteral("-"));
    lines.Add(QStringLiteral("8"));
    lcd.SetItems(&lines);
    const QImage img = renderControl(lcd);
    // Rows are 40 pixels apart; "8" lights the whole frame and the middle bar.
    EXPECT_EQ(at(img, 9, {6, 4}), clLime);
    EXPECT_EQ(at(img, 9, {5, 20}), clLime);
    EXPECT_EQ(at(img, 0, {5, 60}), clLime); // "-" in row 2
    EXPECT_EQ(at(img, 0, {6, 44}), lo);     // its top bar
    EXPECT_EQ(at(img, 1, {5, 60}), lo);     // nothing after it
    EXPECT_EQ(img.width(), 300);            // the eleventh character has no cell
}

TEST(LCDPanel, UnlitSegmentsVanishWhenTheirColourIsTheBackground) {
    TQXLCDPanel lcd;
    lcd.SetColor(clNavy);
    lcd.SetLCDLoColor(clNavy);
    const QImage img = showing(lcd, QStringLiteral("1 "));
    for (int cell : {0, 1})
        for (Probe p : {top, upperLeft, middleLeft, upperCentre, diagLowerLeft, bottom})
            EXPECT_EQ(at(img, cell, p), clNavy) << cell;
    // Outlines of unlit segments vanish too; lit ones keep their black outline.
    EXPECT_EQ(at(img, 1, {0, 12}), clNavy);
    EXPECT_EQ(at(img, 0, upperRight), clLime);
    EXPECT_EQ(at(img, 0, {22, 12}), clBlack);
}

// Every cell drawn straight onto one image with DrawLCD, as the panel's picture must look.
QImage drawnCellByCell(TQXLCDPanel& lcd) {
    QImage image(lcd.Width(), lcd.Height(), QImage::Format_RGB32);
    TCanvas canvas(&image);
    canvas.Brush.Color = lcd.Color();
    canvas.FillRect(Rect(0, 0, lcd.Width(), lcd.Height()));
    const int w = lcd.Width() / lcd.Columns(), h = lcd.Height() / lcd.Rows();
    for (int r = 0; r < lcd.Rows(); ++r)
        for (int c = 0; c < lcd.Columns(); ++c) {
            const QString line = r < lcd.Items()->Count() ? (*lcd.Items())[r].toUpper() : "";
            const QChar ch = c < line.size() ? line[c] : QChar(u' ');
            lcd.DrawLCD(&canvas,
                        Bounds(c * lcd.Width() / lcd.Columns() + 4,
                               r * lcd.Height() / lcd.Rows() + 2, w - 8, h - 4),
                        lcd.SegmentSize(), ch);
        }
    return image;
}

TEST(LCDPanel, KeptCellPicturesLookLikeCellsDrawnInPlace) {
    // Uneven pitches (317 / 20 and 163 / 4) put cells at odd and even places.
    TQXLCDPanel lcd;
    lcd.SetBounds(0, 0, 317, 163);
    lcd.SetColumns(20);
    lcd.SetRows(4);
    TStringList lines;
    lines.Add(QStringLiteral("*+,-./0123456789:;<="));
    lines.Add(QStringLiteral(">?@ABCDEFGHIJKLMNOPQ"));
    lines.Add(QStringLiteral("RSTUVWXYZ abc 12:30,"));
    lines.Add(QStringLiteral("8.8.8.8 MKW+*"));
    lcd.SetItems(&lines);
    // Painting first: it may correct SegmentSize.
    auto samePicture = [&lcd]() {
        const QImage painted = qxtest::renderSettled(lcd);
        return painted == drawnCellByCell(lcd);
    };
    EXPECT_TRUE(samePicture());
    EXPECT_EQ(lcd.SegmentSize(), 1); // 317 div 20 = 15 leaves room for a unit of 1
    // Kept pictures follow the colours, the unit and the size.
    lcd.SetLCDLoColor(clMaroon);
    EXPECT_TRUE(samePicture());
    lcd.SetLCDHiColor(clYellow);
    EXPECT_TRUE(samePicture());
    lcd.SetColor(clMaroon);
    EXPECT_TRUE(samePicture());
    lcd.SetBounds(0, 0, 640, 200);
    EXPECT_TRUE(samePicture());
    lcd.SetSegmentSize(3);
    EXPECT_TRUE(samePicture());
}

TEST(LCDPanel, GoldenPictureAtDefaults) {
    TQXLCDPanel lcd;
    EXPECT_TRUE(qxtest::matchesGolden(renderControl(lcd), QStringLiteral("lcdpanel")));
}
