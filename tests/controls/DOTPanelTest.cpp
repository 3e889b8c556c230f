#include "ControlImage.h"
#include "QXDesign.h"
#include "Qxdotpan.h"
#include "TestSupport.h"

#include <QFile>
#include <QMetaProperty>
#include <QSet>
#include <gtest/gtest.h>
#include <memory>

using qxtest::pixelBGR;
using qxtest::renderControl;
using qxtest::renderSettled;

namespace {

constexpr TColor unlitDot = 0x008000; // the built-in font's own unlit colour

// The dot position (i, j) of a 21 x 27 cell at (x, y): its pixel (1, 1) shows a lit or an
// unlit dot, its pixel (2, 1) is lit or background.
int dotPixel(const QImage& img, int x, int y, int i, int j) {
    return pixelBGR(img, x + 3 * i + 1, y + 3 * j + 1);
}
int besidePixel(const QImage& img, int x, int y, int i, int j) {
    return pixelBGR(img, x + 3 * i + 2, y + 3 * j + 1);
}

// Whether the cell at (x, y) shows the top row of "A" (".###.") in the given colours.
bool showsA(const QImage& img, int x, int y, TColor lit = clLime, TColor unlit = unlitDot) {
    return dotPixel(img, x, y, 1, 1) == unlit && dotPixel(img, x, y, 2, 1) == lit &&
           dotPixel(img, x, y, 4, 1) == lit && dotPixel(img, x, y, 5, 1) == unlit &&
           dotPixel(img, x, y, 1, 2) == lit; // the left stroke
}

// Whether the cell at (x, y) shows no lit dot in its top two glyph rows.
bool blankTop(const QImage& img, int x, int y, TColor unlit = unlitDot) {
    for (int j = 1; j <= 2; ++j)
        for (int i = 1; i <= 5; ++i)
            if (dotPixel(img, x, y, i, j) != unlit)
                return false;
    return true;
}

std::unique_ptr<TQXDOTPanel> loadedPanel() {
    auto p = std::make_unique<TQXDOTPanel>();
    p->EndLoading();
    return p;
}

} // namespace

TEST(DOTPanel, DefaultsAndNaturalSize) {
    TQXDOTPanel dot;
    EXPECT_EQ(dot.sizeHint(), QSize(10, 10));
    EXPECT_EQ(dot.Columns(), 10);
    EXPECT_EQ(dot.Rows(), 1);
    EXPECT_EQ(dot.Color(), clBlack);
    EXPECT_EQ(dot.DOTHiColor(), clLime);
    EXPECT_EQ(dot.DOTLoColor(), 0x004000);
    EXPECT_EQ(dot.DOTCharSet().size(), 64);
    EXPECT_EQ(dot.DOTCharSet().left(3), QStringLiteral(" !\""));
    EXPECT_EQ(dot.DOTCharSet().right(5), QStringLiteral("[\\]^_"));
    EXPECT_EQ(dot.DOTColumns(), 32);
    EXPECT_EQ(dot.DOTRows(), 2);
    EXPECT_EQ(dot.DOTSpace(), 0);
    EXPECT_FALSE(dot.DOTStretch());
    EXPECT_TRUE(dot.ScrollChar());
    EXPECT_EQ(dot.Interval(), 0);
    EXPECT_FALSE(dot.Timer()->IsActive());
    EXPECT_EQ(dot.DOTImage(), nullptr);
    EXPECT_EQ(dot.Items()->ToStringList(), QStringList{QStringLiteral("QXDOTPanel")});
    EXPECT_EQ(dot.About_QXTools(), QStringLiteral("01.09.98"));
    EXPECT_FALSE(dot.accessibleName().isEmpty());

    renderSettled(dot);
    EXPECT_EQ(dot.size(), QSize(210, 27));

    dot.SetRows(0);
    EXPECT_EQ(dot.Rows(), 1);
    dot.SetRows(99);
    EXPECT_EQ(dot.Rows(), 50);

    // Gaps between cells add to the natural size.
    dot.SetColumns(4);
    dot.SetRows(2);
    dot.SetDOTSpace(3);
    renderSettled(dot);
    EXPECT_EQ(dot.size(), QSize(84 + 9, 54 + 3));

    const QMetaObject* mo = dot.metaObject();
    for (const char* name : {"AdjustToParent", "Caption", "Color", "Columns", "DOTImage",
                             "DOTHiColor", "DOTLoColor", "DOTCharSet", "DOTColumns", "DOTRows",
                             "DOTSpace", "DOTStretch", "Items", "Rows", "ScrollChar", "Interval"})
        EXPECT_GE(mo->indexOfProperty(name), 0) << name;
    ASSERT_NE(FindComponentClass(QStringLiteral("TQXDOTPanel")), nullptr);
}

TEST(DOTPanel, BuiltInFontHasThreeColoursInSixtyFourCells) {
    QFile file(QStringLiteral(":/qxtools/QXDOTFNT.bmp"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    ASSERT_GE(bytes.size(), 54);
    EXPECT_EQ(bytes.left(2), QByteArray("BM"));
    EXPECT_EQ(int(bytes[28]), 4); // bits per pixel: 16 colours
    const QImage font = QImage::fromData(bytes, "BMP");
    ASSERT_EQ(font.size(), QSize(672, 54));
    QSet<int> colours;
    for (int y = 0; y < font.height(); ++y)
        for (int x = 0; x < font.width(); ++x)
            colours.insert(pixelBGR(font, x, y));
    EXPECT_EQ(colours, (QSet<int>{clBlack, unlitDot, clLime}));
    // The reference pixels: background, an unlit dot, the top of "!".
    EXPECT_EQ(pixelBGR(font, 0, 0), clBlack);
    EXPECT_EQ(pixelBGR(font, 1, 1), unlitDot);
    EXPECT_EQ(pixelBGR(font, 31, 4), clLime);
    // Cell 33 ("a") holds a capital A; the margin ring stays unlit.
    EXPECT_TRUE(showsA(font, 21, 27));
    for (int i = 0; i < 7; ++i) {
        EXPECT_EQ(dotPixel(font, 21, 27, i, 0), unlitDot);
        EXPECT_EQ(dotPixel(font, 21, 27, i, 8), unlitDot);
    }
    // An unlit dot is the diagonal pair, a lit one the full 2 x 2 block.
    EXPECT_EQ(pixelBGR(font, 2, 2), unlitDot);
    EXPECT_EQ(pixelBGR(font, 2, 1), clBlack);
    EXPECT_EQ(pixelBGR(font, 31, 5), clLime);
    EXPECT_EQ(pixelBGR(font, 32, 4), clLime);
    EXPECT_EQ(pixelBGR(font, 33, 4), clBlack);
}

TEST(DOTPanel, DefaultColoursAtDotPositions) {
    TQXDOTPanel dot;
    dot.SetCaption(QStringLiteral("A a"));
    const QImage img = renderSettled(dot);
    EXPECT_TRUE(showsA(img, 0, 0));
    EXPECT_TRUE(showsA(img, 42, 0));
    EXPECT_TRUE(blankTop(img, 21, 0));
    EXPECT_EQ(besidePixel(img, 0, 0, 2, 1), clLime);
    EXPECT_EQ(besidePixel(img, 0, 0, 1, 1), clBlack);
    EXPECT_EQ(pixelBGR(img, 0, 0), clBlack);
    EXPECT_EQ(dotPixel(img, 0, 0, 0, 0), unlitDot);
    // Lower and upper case look the same.
    TQXDOTPanel upper;
    upper.SetCaption(QStringLiteral("A A"));
    EXPECT_EQ(renderSettled(upper), img);
}

TEST(DOTPanel, ColoursReplaceTheFontsOwnOnceLoaded) {
    TQXDOTPanel dot;
    dot.SetColor(clNavy);
    dot.SetDOTHiColor(clYellow);
    dot.SetDOTLoColor(clMaroon);
    // While loading, the font keeps its colours.
    EXPECT_EQ(dot.DOTBitmap()->Image().pixelColor(31, 4), QColor(0, 255, 0));
    dot.EndLoading();
    dot.SetCaption(QStringLiteral("A"));
    const QImage img = renderSettled(dot);
    EXPECT_TRUE(showsA(img, 0, 0, clYellow, clMaroon));
    EXPECT_EQ(besidePixel(img, 0, 0, 1, 1), clNavy);
    EXPECT_EQ(pixelBGR(img, 0, 0), clNavy);
    EXPECT_TRUE(blankTop(img, 21, 0, clMaroon));

    // Back to the defaults: the font's own colours again.
    dot.SetColor(clBlack);
    dot.SetDOTHiColor(clLime);
    dot.SetDOTLoColor(0x004000);
    EXPECT_TRUE(showsA(renderControl(dot), 0, 0));
    // Any change from the defaults uses DOTLoColor for the unlit dots.
    dot.SetDOTHiColor(clWhite);
    const QImage white = renderControl(dot);
    EXPECT_TRUE(showsA(white, 0, 0, clWhite, 0x004000));
}

TEST(DOTPanel, MissingCharactersFallBackToUpperCaseThenSpace) {
    auto dot = loadedPanel();
    dot->SetCaption(QStringLiteral("ä{~"));
    const QImage img = renderSettled(*dot);
    for (int c = 0; c < 3; ++c)
        EXPECT_TRUE(blankTop(img, 21 * c, 0)) << c;

    // With "Ä" in the set, "ä" finds it through its upper-case form: cell 1 holds "!".
    dot->SetDOTCharSet(QStringLiteral(" Ä"));
    dot->SetCaption(QStringLiteral("äx"));
    const QImage upper = renderControl(*dot);
    EXPECT_EQ(dotPixel(upper, 0, 0, 3, 1), clLime);
    EXPECT_EQ(dotPixel(upper, 0, 0, 2, 1), unlitDot);
    EXPECT_TRUE(blankTop(upper, 21, 0));

    // Without a space in the set an unknown character leaves the background. ("!" is the
    // set's first character, so it shows the font's first cell, the blank one.)
    dot->SetDOTCharSet(QStringLiteral("!"));
    dot->SetCaption(QStringLiteral("!x"));
    const QImage none = renderControl(*dot);
    EXPECT_EQ(dotPixel(none, 0, 0, 0, 0), unlitDot);
    EXPECT_EQ(dotPixel(none, 21, 0, 0, 0), clBlack);
}

TEST(DOTPanel, StaticLayoutWithGapsRowsAndStretch) {
    auto dot = loadedPanel();
    dot->SetColumns(3);
    dot->SetRows(2);
    dot->SetDOTSpace(3);
    TStringList lines;
    lines.Add(QStringLiteral("AAAA"));
    lines.Add(QStringLiteral(" A"));
    dot->SetItems(&lines);
    const QImage img = renderSettled(*dot);
    ASSERT_EQ(img.size(), QSize(63 + 6, 54 + 3));
    // Cells are 24 pixels apart across and 30 down; the gaps keep Color.
    EXPECT_TRUE(showsA(img, 0, 0));
    EXPECT_TRUE(showsA(img, 48, 0));
    EXPECT_TRUE(blankTop(img, 0, 30));
    EXPECT_TRUE(showsA(img, 24, 30));
    EXPECT_TRUE(blankTop(img, 48, 30));
    EXPECT_EQ(pixelBGR(img, 22, 10), clBlack);
    EXPECT_EQ(pixelBGR(img, 10, 28), clBlack);

    // Stretched glyphs fill the control as it is: 2 cells of 42 x 54.
    auto wide = loadedPanel();
    wide->SetDOTStretch(true);
    wide->SetColumns(2);
    wide->SetCaption(QStringLiteral("A"));
    wide->SetBounds(0, 0, 84, 54);
    const QImage big = renderSettled(*wide);
    EXPECT_EQ(wide->size(), QSize(84, 54));
    EXPECT_EQ(pixelBGR(big, 2 * 7 + 1, 2 * 4 + 1), clLime); // dot (2, 1) doubled
    EXPECT_EQ(pixelBGR(big, 2 * 4 + 1, 2 * 4 + 1), unlitDot);
}

TEST(DOTPanel, IntervalRules) {
    auto dot = loadedPanel();
    dot->SetInterval(5);
    EXPECT_EQ(dot->Interval(), 20);
    EXPECT_EQ(dot->Timer()->Interval(), 20);
    EXPECT_TRUE(dot->Timer()->IsActive());
    dot->SetInterval(250);
    EXPECT_EQ(dot->Interval(), 250);
    dot->QXOnTime();
    dot->QXOnTime();
    EXPECT_EQ(dot->ScrollIndex(), 3);
    dot->SetInterval(-7);
    EXPECT_EQ(dot->Interval(), 0);
    EXPECT_FALSE(dot->Timer()->IsActive());
    EXPECT_EQ(dot->ScrollIndex(), 1);
    EXPECT_EQ(dot->ScrollOffset(), 0);
}

TEST(DOTPanel, ScrollsByWholeCellsAndStartsOverOncePerPass) {
    auto dot = loadedPanel();
    dot->SetColumns(4);
    dot->SetCaption(QStringLiteral("AB"));
    dot->SetInterval(20);
    renderSettled(*dot);
    int scrolls = 0, starts = 0;
    dot->OnScroll = [&](QObject* sender) {
        EXPECT_EQ(sender, dot.get());
        ++scrolls;
    };
    dot->OnStartText = [&](QObject*) { ++starts; };

    // The text "AB " (the line break became a space) enters from the right.
    dot->QXOnTime();
    dot->QXOnTime();
    EXPECT_EQ(dot->ScrollIndex(), 3);
    EXPECT_EQ(dot->ScrollOffset(), 0);
    const QImage third = renderControl(*dot);
    EXPECT_TRUE(blankTop(third, 42, 0));
    EXPECT_TRUE(showsA(third, 63, 0));
    dot->QXOnTime();
    const QImage fourth = renderControl(*dot);
    EXPECT_TRUE(showsA(fourth, 42, 0));
    EXPECT_FALSE(blankTop(fourth, 63, 0)); // "B"
    EXPECT_TRUE(blankTop(fourth, 0, 0));

    // 3 characters + 4 columns: the pass ends when the index passes 7.
    for (int i = 4; i <= 6; ++i)
        dot->QXOnTime();
    EXPECT_EQ(starts, 0);
    EXPECT_EQ(dot->ScrollIndex(), 7);
    dot->QXOnTime();
    EXPECT_EQ(starts, 1);
    EXPECT_EQ(dot->ScrollIndex(), 1);
    for (int i = 0; i < 14; ++i)
        dot->QXOnTime();
    EXPECT_EQ(starts, 3);
    EXPECT_EQ(scrolls, 21);

    // A new caption starts again from the right edge.
    dot->QXOnTime();
    dot->SetCaption(QStringLiteral("C"));
    EXPECT_EQ(dot->ScrollIndex(), 1);
    EXPECT_EQ(dot->ScrollOffset(), 0);
}

TEST(DOTPanel, ScrollsByPixels) {
    auto dot = loadedPanel();
    dot->SetColumns(4);
    dot->SetScrollChar(false);
    dot->SetCaption(QStringLiteral("AB"));
    dot->SetInterval(20);
    renderSettled(*dot);
    for (int i = 0; i < 20; ++i)
        dot->QXOnTime();
    EXPECT_EQ(dot->ScrollOffset(), -20);
    EXPECT_EQ(dot->ScrollIndex(), 1);
    dot->QXOnTime();
    EXPECT_EQ(dot->ScrollOffset(), 0);
    EXPECT_EQ(dot->ScrollIndex(), 2);

    // Bring "A" in, then every tick moves the picture one pixel to the left.
    for (int i = 0; i < 21 + 5; ++i)
        dot->QXOnTime();
    const QImage before = renderControl(*dot);
    dot->QXOnTime();
    const QImage after = renderControl(*dot);
    EXPECT_EQ(dot->ScrollOffset(), -6);
    EXPECT_NE(before, after);
    for (int x = 0; x + 1 < before.width(); ++x)
        for (int y = 0; y < before.height(); ++y)
            ASSERT_EQ(after.pixel(x, y), before.pixel(x + 1, y)) << x << "," << y;
}

TEST(DOTPanel, ImageControlFont) {
    // A font of two 8 x 6 cells: "X" all red, "Y" all blue.
    TImage image;
    TBitmap* bitmap = image.Picture()->Bitmap();
    bitmap->SetSize(16, 6);
    bitmap->Canvas()->Brush.Color = clRed;
    bitmap->Canvas()->FillRect(Rect(0, 0, 8, 6));
    bitmap->Canvas()->Brush.Color = clBlue;
    bitmap->Canvas()->FillRect(Rect(8, 0, 16, 6));

    auto dot = loadedPanel();
    dot->SetDOTColumns(2);
    dot->SetDOTRows(1);
    dot->SetDOTCharSet(QStringLiteral("XY"));
    dot->SetColumns(3);
    dot->SetCaption(QStringLiteral("YXq"));
    dot->SetDOTImage(&image);
    EXPECT_EQ(dot->DOTImage(), &image);
    // Linked fonts keep their colours.
    dot->SetDOTHiColor(clWhite);
    const QImage img = renderSettled(*dot);
    EXPECT_EQ(img.size(), QSize(24, 6));
    EXPECT_EQ(pixelBGR(img, 3, 3), clBlue);
    EXPECT_EQ(pixelBGR(img, 11, 3), clRed);
    EXPECT_EQ(pixelBGR(img, 19, 3), clBlack); // no "q" and no space: background

    // Removing the image clears the link.
    {
        TImage gone;
        gone.Picture()->Bitmap()->SetSize(8, 8);
        dot->SetDOTImage(&gone);
    }
    EXPECT_EQ(dot->DOTImage(), nullptr);
    // Unlinking goes back to the built-in font.
    dot->SetDOTImage(nullptr);
    EXPECT_EQ(dot->DOTBitmap()->Width(), 672);
}

TEST(DOTPanel, GoldenPictureAtDefaults) {
    TQXDOTPanel dot;
    EXPECT_TRUE(qxtest::matchesGolden(renderSettled(dot), QStringLiteral("dotpanel")));
}
