#include "Qxfimage.h"
#include "SysUtils.h"
#include "TestSupport.h"

#include <QPainter>
#include <gtest/gtest.h>

namespace {

// Paints the control into an image of its size, as its paint event does.
class TPaintedFill : public TQXFillImage {
public:
    QImage paintImage(QColor background = Qt::white) {
        QImage image(std::max(1, Width()), std::max(1, Height()), QImage::Format_RGB32);
        image.fill(background);
        QPainter painter(&image);
        Canvas()->Attach(&painter, image.rect());
        try {
            Paint();
        } catch (...) {
            Canvas()->Detach();
            throw;
        }
        Canvas()->Detach();
        return image;
    }
};

void fillSolid(TBitmap& bitmap, TColor colour) {
    bitmap.Canvas()->Brush.Color = colour;
    bitmap.Canvas()->FillRect(Rect(0, 0, bitmap.Width(), bitmap.Height()));
}

} // namespace

TEST(FillImage, DefaultsAndTheStepClamp) {
    TPaintedFill fill;
    EXPECT_EQ(fill.Width(), 100);
    EXPECT_EQ(fill.Height(), 100);
    EXPECT_EQ(fill.FillStyle(), NONE);
    EXPECT_EQ(fill.RBFromColor(), TColor(0x00FF00));
    EXPECT_EQ(fill.RBToColor(), TColor(0xFFFF00));
    EXPECT_EQ(fill.RBSteps(), 64);
    EXPECT_EQ(fill.About_QXTools(), QStringLiteral("27.07.98"));
    fill.SetRBSteps(1);
    EXPECT_EQ(fill.RBSteps(), 2);
    fill.SetRBSteps(0);
    EXPECT_EQ(fill.RBSteps(), 2);
    // NONE leaves the background alone.
    EXPECT_EQ(fill.paintImage(Qt::black).pixelColor(50, 50), QColor(Qt::black));
}

TEST(FillImage, VerticalRainbowBandsAndTheLastBand) {
    TPaintedFill fill;
    fill.SetFillStyle(vRAINBOW);
    // 64 steps over 100 rows: bands of one row, Count 100; blue rises by i * 255 div 99.
    QImage image = fill.paintImage();
    for (int row : {0, 1, 50, 98})
        EXPECT_EQ(qxtest::pixelBGR(image, 10, row), int(RGB(0, 0xFF, row * 255 / 99)))
            << "row " << row;
    EXPECT_EQ(qxtest::pixelBGR(image, 10, 99), 0xFFFF00);

    // 30 steps: bands of three rows, Count 33; the last band holds rows 96 to 99.
    fill.SetRBSteps(30);
    image = fill.paintImage();
    EXPECT_EQ(qxtest::pixelBGR(image, 10, 0), int(RGB(0, 0xFF, 0)));
    EXPECT_EQ(qxtest::pixelBGR(image, 10, 5), int(RGB(0, 0xFF, 255 / 32)));
    EXPECT_EQ(qxtest::pixelBGR(image, 99, 93), int(RGB(0, 0xFF, 31 * 255 / 32)));
    EXPECT_EQ(qxtest::pixelBGR(image, 10, 95), int(RGB(0, 0xFF, 31 * 255 / 32)));
    for (int row = 96; row < 100; ++row)
        EXPECT_EQ(qxtest::pixelBGR(image, 10, row), 0xFFFF00) << "row " << row;

    // Falling bytes: from white to black, every byte drops alike.
    fill.SetRBFromColor(0xFFFFFF);
    fill.SetRBToColor(0x000000);
    image = fill.paintImage();
    EXPECT_EQ(qxtest::pixelBGR(image, 0, 3),
              int(RGB(255 - 255 / 32, 255 - 255 / 32, 255 - 255 / 32)));
}

TEST(FillImage, HorizontalRainbowAndZeroSizeRaiseTheDivisionError) {
    TPaintedFill fill;
    fill.resize(70, 20);
    fill.SetRBSteps(20);
    fill.SetFillStyle(hRAINBOW);
    // 20 steps over 70 columns: bands of 3, Count 23; the last band holds columns 66 to 69.
    const QImage image = fill.paintImage();
    EXPECT_EQ(qxtest::pixelBGR(image, 0, 10), int(RGB(0, 0xFF, 0)));
    EXPECT_EQ(qxtest::pixelBGR(image, 4, 10), int(RGB(0, 0xFF, 255 / 22)));
    EXPECT_EQ(qxtest::pixelBGR(image, 65, 10), int(RGB(0, 0xFF, 21 * 255 / 22)));
    EXPECT_EQ(qxtest::pixelBGR(image, 66, 10), 0xFFFF00);

    fill.resize(70, 0);
    EXPECT_NO_THROW(fill.paintImage());
    fill.resize(0, 20);
    EXPECT_THROW(fill.paintImage(), EDivByZero);
    fill.SetFillStyle(vRAINBOW);
    fill.resize(20, 0);
    EXPECT_THROW(fill.paintImage(), EDivByZero);
}

TEST(FillImage, BitmapsAreTiledUsedAsBrushOrLeftOutWhenTooLarge) {
    TPaintedFill fill;
    fill.resize(40, 40);
    fill.SetFillStyle(BITMAP);
    TBitmap wide(300, 20);
    fillSolid(wide, clRed);
    fill.SetFillBitmap(&wide);
    EXPECT_EQ(fill.paintImage(Qt::black).pixelColor(5, 5), QColor(Qt::black));

    // A 16 x 16 tile with a blue top-left pixel repeats every 16 pixels from the top left.
    TBitmap tile(16, 16);
    fillSolid(tile, clLime);
    tile.Canvas()->SetPixel(0, 0, clBlue);
    fill.SetFillBitmap(&tile);
    QImage image = fill.paintImage(Qt::black);
    EXPECT_EQ(qxtest::pixelBGR(image, 32, 32), int(clBlue));
    EXPECT_EQ(qxtest::pixelBGR(image, 16, 0), int(clBlue));
    EXPECT_EQ(qxtest::pixelBGR(image, 39, 39), int(clLime));

    // An 8 x 8 bitmap is a brush: it repeats over the whole area too.
    TBitmap brush(8, 8);
    fillSolid(brush, clYellow);
    brush.Canvas()->SetPixel(1, 1, clRed);
    fill.SetFillBitmap(&brush);
    image = fill.paintImage(Qt::black);
    EXPECT_EQ(qxtest::pixelBGR(image, 9, 9), int(clRed));
    EXPECT_EQ(qxtest::pixelBGR(image, 38, 38), int(clYellow));
    TBitmap empty;
    fill.SetFillBitmap(&empty);
    EXPECT_EQ(fill.paintImage(Qt::black).pixelColor(5, 5), QColor(Qt::black));
}

TEST(FillImage, PatternsAreEightByEightInTheirColoursAndAdjustToParentFillsIt) {
    struct Expected {
        TFStyle style;
        bool cyan;
    };
    for (const Expected& e :
         {Expected{BCyan, true}, Expected{BGray, false}, Expected{LCyan, true},
          Expected{LGray, false}, Expected{WDGray, false}, Expected{Weave, false},
          Expected{WGray, false}, Expected{WLGray, false}}) {
        TPaintedFill fill;
        fill.SetFillStyle(e.style);
        ASSERT_EQ(fill.PatternBitmap()->Width(), 8) << int(e.style);
        ASSERT_EQ(fill.PatternBitmap()->Height(), 8);
        const QImage pattern = fill.PatternBitmap()->Image();
        bool hasCyan = false;
        QSet<QRgb> colours;
        for (int y = 0; y < 8; ++y)
            for (int x = 0; x < 8; ++x) {
                const QColor c = pattern.pixelColor(x, y);
                colours.insert(c.rgb());
                hasCyan = hasCyan || (c.blue() > c.red() + 40 && c.green() > c.red() + 40);
                // The weave's name states no colour.
                if (!e.cyan && e.style != Weave) {
                    EXPECT_LE(std::abs(c.red() - c.blue()), 24) << int(e.style) << " grey";
                }
            }
        if (e.style != Weave) {
            EXPECT_EQ(hasCyan, e.cyan) << int(e.style);
        }
        EXPECT_GE(colours.size(), 2) << "a pattern, not a plain colour";
        const QImage image = fill.paintImage(Qt::black);
        EXPECT_EQ(image.pixel(3, 5), pattern.pixel(3, 5));
        EXPECT_EQ(image.pixel(83, 45), pattern.pixel(3, 5));
    }

    QWidget parent;
    parent.resize(300, 200);
    TPaintedFill fill;
    fill.setParent(&parent);
    fill.SetBounds(10, 10, 50, 50);
    fill.SetAlign(alRight);
    fill.SetAdjustToParent(true);
    fill.paintImage();
    EXPECT_EQ(fill.Align(), alNone);
    EXPECT_EQ(fill.geometry(), QRect(0, 0, 300, 200));
}
