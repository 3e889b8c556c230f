#include "TCanvas.h"
#include "TGraphic.h"
#include "TestSupport.h"

#include <QPalette>
#include <gtest/gtest.h>

using qxtest::pixelBGR;

namespace {

struct Surface {
    QImage image{12, 12, QImage::Format_RGB32};
    TCanvas canvas{&image};
    Surface() { image.fill(Qt::white); }
    int at(int x, int y) const { return pixelBGR(image, x, y); }
};

} // namespace

TEST(Canvas, RectangleCoversLeftTopButNotRightBottom) {
    Surface s;
    s.canvas.Pen.Color = clBlack;
    s.canvas.Brush.Color = clRed;
    s.canvas.Rectangle(2, 2, 6, 7);
    EXPECT_EQ(s.at(2, 2), clBlack);
    EXPECT_EQ(s.at(5, 6), clBlack);
    EXPECT_EQ(s.at(3, 3), clRed);
    EXPECT_EQ(s.at(4, 5), clRed);
    EXPECT_EQ(s.at(6, 6), clWhite);
    EXPECT_EQ(s.at(5, 7), clWhite);
    EXPECT_EQ(s.at(1, 1), clWhite);
}

TEST(Canvas, RectangleWithoutPenFillsOnePixelLess) {
    Surface s;
    s.canvas.Pen.Style = psClear;
    s.canvas.Brush.Color = clBlue;
    s.canvas.Rectangle(2, 2, 6, 6);
    EXPECT_EQ(s.at(2, 2), clBlue);
    EXPECT_EQ(s.at(4, 4), clBlue);
    EXPECT_EQ(s.at(5, 5), clWhite);
}

TEST(Canvas, WidePenStaysInsideTheRectangle) {
    Surface s;
    s.canvas.Pen.Width = 2;
    s.canvas.Pen.Color = clGreen;
    s.canvas.Brush.Color = clYellow;
    s.canvas.Rectangle(1, 1, 9, 9);
    EXPECT_EQ(s.at(1, 1), clGreen);
    EXPECT_EQ(s.at(2, 2), clGreen);
    EXPECT_EQ(s.at(8, 8), clGreen);
    EXPECT_EQ(s.at(3, 3), clYellow);
    EXPECT_EQ(s.at(9, 9), clWhite);
}

TEST(Canvas, EllipseTakesItsCornersInAnyOrder) {
    Surface upright;
    upright.canvas.Brush.Color = clRed;
    upright.canvas.Ellipse(2, 3, 10, 11);
    Surface swapped;
    swapped.canvas.Brush.Color = clRed;
    swapped.canvas.Ellipse(10, 11, 2, 3);
    EXPECT_EQ(swapped.image, upright.image);
    EXPECT_EQ(upright.at(6, 7), clRed);
    EXPECT_EQ(upright.at(6, 3), clBlack);
    EXPECT_EQ(upright.at(6, 11), clWhite);
}

TEST(Canvas, FillRectAndFrameRectExcludeRightAndBottom) {
    Surface s;
    s.canvas.Brush.Color = clNavy;
    s.canvas.FillRect(Rect(1, 1, 4, 3));
    EXPECT_EQ(s.at(1, 1), clNavy);
    EXPECT_EQ(s.at(3, 2), clNavy);
    EXPECT_EQ(s.at(4, 2), clWhite);
    EXPECT_EQ(s.at(3, 3), clWhite);
    s.canvas.Brush.Color = clRed;
    s.canvas.FrameRect(Rect(5, 5, 10, 10));
    EXPECT_EQ(s.at(9, 9), clRed);
    EXPECT_EQ(s.at(7, 7), clWhite);
    EXPECT_EQ(s.at(10, 10), clWhite);
    // A clear brush fills nothing.
    s.canvas.Brush.Style = bsClear;
    s.canvas.FillRect(Rect(6, 6, 8, 8));
    EXPECT_EQ(s.at(7, 7), clWhite);
}

TEST(Canvas, LineToLeavesOutItsEndPoint) {
    Surface s;
    s.canvas.MoveTo(0, 0);
    s.canvas.LineTo(5, 0);
    EXPECT_EQ(s.at(0, 0), clBlack);
    EXPECT_EQ(s.at(4, 0), clBlack);
    EXPECT_EQ(s.at(5, 0), clWhite);
    EXPECT_EQ(s.canvas.PenPos(), Point(5, 0));
    // Continuing from there draws the former end point as the new start.
    s.canvas.LineTo(5, 4);
    EXPECT_EQ(s.at(5, 0), clBlack);
    EXPECT_EQ(s.at(5, 3), clBlack);
    EXPECT_EQ(s.at(5, 4), clWhite);
    // Diagonal, and a line of no length draws nothing.
    s.canvas.MoveTo(0, 11);
    s.canvas.LineTo(4, 7);
    EXPECT_EQ(s.at(0, 11), clBlack);
    EXPECT_EQ(s.at(3, 8), clBlack);
    EXPECT_EQ(s.at(4, 7), clWhite);
    s.canvas.MoveTo(8, 8);
    s.canvas.LineTo(8, 8);
    EXPECT_EQ(s.at(8, 8), clWhite);
}

TEST(Canvas, PolylineLeavesOutTheLastPointAndKeepsThePenPosition) {
    Surface s;
    s.canvas.MoveTo(11, 11);
    s.canvas.Polyline({Point(1, 1), Point(4, 1), Point(4, 4)});
    EXPECT_EQ(s.at(1, 1), clBlack);
    EXPECT_EQ(s.at(4, 1), clBlack);
    EXPECT_EQ(s.at(4, 3), clBlack);
    EXPECT_EQ(s.at(4, 4), clWhite);
    EXPECT_EQ(s.canvas.PenPos(), Point(11, 11));
}

TEST(Canvas, Frame3DDrawsBothColoursAndShrinksTheRectangle) {
    Surface s;
    TRect r = Rect(1, 1, 7, 7);
    Frame3D(&s.canvas, r, clWhite - 1, clGray, 1);
    EXPECT_EQ(r, Rect(2, 2, 6, 6));
    EXPECT_EQ(s.at(1, 1), clWhite - 1);
    EXPECT_EQ(s.at(1, 5), clWhite - 1);
    EXPECT_EQ(s.at(5, 1), clWhite - 1);
    // The bottom line runs over the bottom-left corner; the right line starts at the top.
    EXPECT_EQ(s.at(1, 6), clGray);
    EXPECT_EQ(s.at(6, 1), clGray);
    EXPECT_EQ(s.at(6, 6), clGray);
    EXPECT_EQ(s.at(0, 6), clWhite); // the bottom line stops at the left edge
    EXPECT_EQ(s.at(3, 3), clWhite);
}

TEST(Canvas, PixelsReadWriteAndSystemColours) {
    Surface s;
    s.canvas.SetPixel(3, 4, clPurple);
    EXPECT_EQ(s.canvas.Pixels(3, 4), clPurple);
    EXPECT_EQ(s.canvas.Pixels(-1, 0), clNone);
    QPalette p;
    p.setColor(QPalette::Button, QColor(1, 2, 3));
    s.canvas.SetPalette(p);
    s.canvas.SetPixel(0, 0, clBtnFace);
    EXPECT_EQ(s.canvas.Pixels(0, 0), RGB(1, 2, 3));
    EXPECT_EQ(ColorToRGB(clBtnFace, &p), RGB(1, 2, 3));
    EXPECT_EQ(ColorToRGB(clRed), 0x0000FF);
}

TEST(Canvas, TextOutMovesThePenAndCalcRectOnlyMeasures) {
    Surface s;
    s.canvas.TextOut(1, 1, QStringLiteral("ab"));
    EXPECT_EQ(s.canvas.PenPos(), Point(1 + s.canvas.TextWidth(QStringLiteral("ab")), 1));
    Surface blank;
    TRect r = Rect(0, 0, 100, 0);
    const int h = blank.canvas.DrawText(QStringLiteral("Wort"), r, DT_CALCRECT | DT_SINGLELINE);
    EXPECT_EQ(h, blank.canvas.TextHeight(QStringLiteral("Wort")));
    EXPECT_EQ(r.Width(), blank.canvas.TextWidth(QStringLiteral("Wort")));
    EXPECT_EQ(blank.image.pixel(1, 1), QColor(Qt::white).rgb());
}

TEST(Canvas, StretchDrawIsNearestNeighbourAndBitBltCombines) {
    TBitmap src(2, 1);
    src.Canvas()->SetPixel(0, 0, clRed);
    src.Canvas()->SetPixel(1, 0, clBlue);
    Surface s;
    s.canvas.StretchDraw(Rect(0, 0, 4, 2), &src);
    EXPECT_EQ(s.at(0, 0), clRed);
    EXPECT_EQ(s.at(1, 1), clRed);
    EXPECT_EQ(s.at(2, 0), clBlue);
    EXPECT_EQ(s.at(3, 1), clBlue);
    EXPECT_EQ(s.at(4, 0), clWhite);
    // SRCAND keeps only the bits both have: red AND white = red, blue AND red = black.
    BitBlt(&s.canvas, 2, 0, 2, 1, src.Canvas(), 0, 0, SRCAND);
    EXPECT_EQ(s.at(2, 0), clBlack);
}

TEST(Canvas, TransparentBitmapLeavesItsKeyColourOut) {
    TBitmap b(2, 2);
    b.Canvas()->Brush.Color = clLime;
    b.Canvas()->FillRect(Rect(0, 0, 2, 2));
    b.Canvas()->SetPixel(1, 0, clRed);
    b.SetTransparent(true); // the key is the bottom-left pixel: lime
    Surface s;
    s.canvas.Draw(0, 0, &b);
    EXPECT_EQ(s.at(0, 0), clWhite);
    EXPECT_EQ(s.at(1, 0), clRed);
}

TEST(Canvas, CharacterExtraWidensEveryCharacter) {
    Surface s;
    const QString text = QStringLiteral("abcd");
    const int plain = s.canvas.TextWidth(text);
    EXPECT_EQ(s.canvas.SetTextCharacterExtra(3), 0);
    EXPECT_EQ(s.canvas.TextWidth(text), plain + 4 * 3);
    TRect r = Rect(0, 0, 200, 0);
    s.canvas.DrawText(text, r, DT_CALCRECT | DT_SINGLELINE);
    EXPECT_EQ(r.Width(), plain + 4 * 3);
    EXPECT_EQ(s.canvas.SetTextCharacterExtra(0), 3);
    EXPECT_EQ(s.canvas.TextWidth(text), plain);
}

TEST(Canvas, DrawTextBreaksOnceAtEitherLineEndOrAPairOfThem) {
    Surface s;
    const int line = s.canvas.TextHeight(QStringLiteral("X"));
    const auto height = [&](const char* text) {
        TRect r = Rect(0, 0, 200, 0);
        return s.canvas.DrawText(QString::fromLatin1(text), r, DT_CALCRECT) / line;
    };
    EXPECT_EQ(height("a"), 1);
    EXPECT_EQ(height("a\nb"), 2);
    EXPECT_EQ(height("a\rb"), 2);
    EXPECT_EQ(height("a\n\rb"), 2);
    EXPECT_EQ(height("a\r\nb"), 2);
    // Two line feeds, or a pair followed by a lone return, leave an empty line between.
    EXPECT_EQ(height("a\n\nb"), 3);
    EXPECT_EQ(height("a\n\r\rb"), 3);
}

TEST(Canvas, CentredTextMeasuresAsWideAsLeftAligned) {
    Surface s;
    for (const char* text : {"i", "Mittwoch", "17.01.2024 09:05:03"}) {
        TRect left = Rect(0, 0, 300, 0);
        TRect centred = left;
        s.canvas.DrawText(QString::fromLatin1(text), left, DT_CALCRECT | DT_LEFT);
        s.canvas.DrawText(QString::fromLatin1(text), centred, DT_CALCRECT | DT_CENTER);
        EXPECT_EQ(centred, left) << text;
    }
}
