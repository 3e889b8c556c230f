#include "Application.h"
#include "Qxfximg.h"
#include "SysUtils.h"
#include "TestSupport.h"

#include <QEvent>
#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <memory>

namespace {

// Counts the dissolve's pauses instead of waiting, and lets a test look at the screen there.
class TPausingFx : public TQXFxImage {
public:
    void Delay(int Milliseconds) override {
        EXPECT_EQ(Milliseconds, 1);
        if (atPause)
            atPause(pauses);
        ++pauses;
    }
    int pauses = 0;
    std::function<void(int)> atPause;
};

// Calls a function at every paint event a widget gets, before the widget paints.
class TPaintWatch : public QObject {
public:
    bool eventFilter(QObject*, QEvent* e) override {
        if (e->type() == QEvent::Paint) {
            if (onPaint)
                onPaint(paints);
            ++paints;
        }
        return false;
    }
    int paints = 0;
    std::function<void(int)> onPaint;
};

std::unique_ptr<TBitmap> solid(int w, int h, TColor colour) {
    auto bitmap = std::make_unique<TBitmap>(w, h);
    bitmap->Canvas()->Brush.Color = colour;
    bitmap->Canvas()->FillRect(Rect(0, 0, w, h));
    return bitmap;
}

void paintColumn(TBitmap& bitmap, int x, TColor colour) {
    bitmap.Canvas()->Brush.Color = colour;
    bitmap.Canvas()->FillRect(Rect(x, 0, x + 1, bitmap.Height()));
}

int countPixels(const QImage& image, TColor colour) {
    int n = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            n += qxtest::pixelBGR(image, x, y) == int(colour);
    return n;
}

bool pointBefore(const TPoint& a, const TPoint& b) {
    return a.Y != b.Y ? a.Y < b.Y : a.X < b.X;
}

} // namespace

TEST(FxImage, BlocksGrowUntilTheListFitsAMegabyte) {
    TQXFxImage fx;
    EXPECT_EQ(fx.Width(), 40);
    EXPECT_EQ(fx.Height(), 40);
    EXPECT_EQ(fx.About_QXTools(), QStringLiteral("25.11.96^M(Beta)"));
    EXPECT_EQ(fx.FadeStyle(), qxfsNONE);
    EXPECT_TRUE(fx.Shown());
    EXPECT_EQ(fx.Step(), 100);

    auto pic = solid(400, 300, clRed);
    fx.SetPicture(pic.get());
    Screen()->SetCursor(crCross);
    fx.INITPoints(fx.Picture()->Canvas());
    EXPECT_EQ(Screen()->Cursor(), crCross) << "the hourglass goes when the blocks are ready";
    Screen()->SetCursor(crDefault);
    EXPECT_EQ(fx.BlockSize(), 1);
    EXPECT_EQ(fx.Count(), 120000);
    EXPECT_EQ(fx.Points()[401], Point(1, 1));
    EXPECT_TRUE(fx.Shown()) << "without a transition the picture stays shown";

    pic = solid(500, 300, clRed);
    fx.SetPicture(pic.get());
    fx.INITPoints(fx.Picture()->Canvas());
    EXPECT_EQ(fx.BlockSize(), 2);
    EXPECT_EQ(fx.Count(), 37500);
    ASSERT_EQ(fx.Points().size(), 37500u);
    // 250 blocks a row: block 251 is the second of the second row.
    EXPECT_EQ(fx.Points()[251], Point(2, 2));
    EXPECT_EQ(fx.Points()[37499], Point(498, 298));

    std::vector<TPoint> inOrder = fx.Points();
    fx.SetFadeStyle(qxfsRandom);
    fx.INITPoints(fx.Picture()->Canvas());
    EXPECT_FALSE(fx.Shown());
    std::vector<TPoint> shuffled = fx.Points();
    EXPECT_NE(shuffled, inOrder);
    std::sort(shuffled.begin(), shuffled.end(), pointBefore);
    EXPECT_EQ(shuffled, inOrder) << "the shuffle keeps every block once";
    fx.SetFadeStyle(qxfsNONE);
    EXPECT_TRUE(fx.Shown());
}

TEST(FxImage, RandomDissolveShowsItsProgressAndEndsComplete) {
    TPausingFx fx;
    fx.resize(100, 100);
    fx.SetColor(clBlue);
    auto pic = solid(100, 100, clRed);
    fx.SetPicture(pic.get());
    // A shown picture would be on screen before the dissolve starts.
    fx.FadeOut();
    ASSERT_EQ(countPixels(fx.ScreenImage(), clBlue), 10000);
    fx.SetFadeStyle(qxfsRandom);
    fx.show();
    TApplication::ProcessMessages();
    TPaintWatch watch;
    fx.installEventFilter(&watch);
    // At pause k the blocks 0 to 100 k are in: one pixel each, in random places.
    QList<int> redAtPause;
    int redInLowerHalfAtPause10 = 0;
    fx.atPause = [&](int k) {
        redAtPause << countPixels(fx.ScreenImage(), clRed);
        if (k == 10)
            redInLowerHalfAtPause10 = countPixels(fx.ScreenImage().copy(0, 50, 100, 50), clRed);
    };
    fx.FadeIn();
    EXPECT_TRUE(fx.Shown());
    EXPECT_EQ(fx.Step(), 100);
    EXPECT_EQ(fx.pauses, 100);
    ASSERT_EQ(redAtPause.size(), 100);
    EXPECT_EQ(redAtPause[0], 1);
    EXPECT_EQ(redAtPause[50], 5001);
    EXPECT_EQ(redAtPause[99], 9901);
    EXPECT_GT(redInLowerHalfAtPause10, 200) << "the blocks are spread, not row by row";
    EXPECT_GE(watch.paints, 100) << "every pause shows the screen";
    EXPECT_EQ(countPixels(fx.ScreenImage(), clRed), 10000);
    EXPECT_EQ(countPixels(fx.grab().toImage(), clRed), 10000);

    fx.pauses = 0;
    fx.atPause = nullptr;
    fx.FadeOut();
    EXPECT_FALSE(fx.Shown());
    EXPECT_EQ(fx.pauses, 100) << "FadeOut pauses with the step of the last FadeIn";
    EXPECT_EQ(countPixels(fx.ScreenImage(), clBlue), 10000);
}

TEST(FxImage, TooFewBlocksRaiseTheDivisionErrorAndLeaveTheControlUsable) {
    TPausingFx fx;
    fx.SetColor(clBlue);
    auto tiny = solid(5, 5, clRed);
    fx.SetPicture(tiny.get());
    fx.FadeOut();
    fx.SetFadeStyle(qxfsRandom);
    EXPECT_THROW(fx.FadeIn(), EDivByZero);
    EXPECT_EQ(fx.Step(), 0);
    EXPECT_EQ(fx.Count(), 25);
    EXPECT_FALSE(fx.Shown());
    EXPECT_EQ(fx.pauses, 0);
    EXPECT_EQ(countPixels(fx.ScreenImage(), clRed), 1) << "the first block is copied";
    EXPECT_THROW(fx.FadeOut(), EDivByZero) << "FadeOut keeps the step of 0";

    fx.SetFadeStyle(qxfsNONE);
    fx.FadeIn();
    EXPECT_TRUE(fx.Shown());
    EXPECT_EQ(countPixels(fx.ScreenImage(), clRed), 25);
}

TEST(FxImage, SlidesComeInFromTheRightOneColumnAStep) {
    // Yellow, then green up to the middle, blue after it; it slides in over itself.
    auto pic = solid(50, 30, clLime);
    pic->Canvas()->Brush.Color = clBlue;
    pic->Canvas()->FillRect(Rect(25, 0, 50, 30));
    paintColumn(*pic, 0, clYellow);

    for (TFadeStyle style : {qxfsFadeLeft, qxfsWipeLeft}) {
        SCOPED_TRACE(int(style));
        TQXFxImage fx;
        fx.resize(50, 30);
        fx.SetPicture(pic.get());
        fx.show();
        TApplication::ProcessMessages();
        fx.SetFadeStyle(style);
        TPaintWatch watch;
        QImage afterTenSteps;
        watch.onPaint = [&](int n) {
            if (n == 10)
                afterTenSteps = fx.ScreenImage();
        };
        fx.installEventFilter(&watch);
        fx.FadeIn();
        EXPECT_GE(watch.paints, 51) << "steps 0 to 50, each shown";
        ASSERT_FALSE(afterTenSteps.isNull());
        // Ten steps in, the picture's first column stands at 40.
        EXPECT_EQ(qxtest::pixelBGR(afterTenSteps, 40, 5), int(clYellow));
        EXPECT_EQ(qxtest::pixelBGR(afterTenSteps, 39, 5), int(clBlue));
        // Sliding over, the old content stays; wiping, it has moved ten columns left.
        EXPECT_EQ(qxtest::pixelBGR(afterTenSteps, 15, 5),
                  int(style == qxfsFadeLeft ? clLime : clBlue));
        const QImage done = fx.ScreenImage();
        EXPECT_EQ(qxtest::pixelBGR(done, 0, 5), int(clYellow));
        EXPECT_EQ(qxtest::pixelBGR(done, 24, 5), int(clLime));
        EXPECT_EQ(qxtest::pixelBGR(done, 25, 5), int(clBlue));
        EXPECT_TRUE(fx.Shown());
    }
}

TEST(FxImage, ANarrowSlideLeavesItsTrailAndSlidingOutRepeatsTheLastColumn) {
    auto red = solid(20, 30, clRed);
    paintColumn(*red, 0, clYellow);
    for (TFadeStyle style : {qxfsFadeLeft, qxfsWipeLeft}) {
        SCOPED_TRACE(int(style));
        TQXFxImage fx;
        fx.resize(50, 30);
        fx.SetColor(clWhite);
        fx.FadeOut();
        fx.SetPicture(red.get());
        ASSERT_EQ(countPixels(fx.ScreenImage(), clWhite), 50 * 30) << "hidden after FadeOut";
        fx.SetFadeStyle(style);
        fx.FadeIn();
        const QImage in = fx.ScreenImage();
        EXPECT_EQ(qxtest::pixelBGR(in, 0, 5), int(clYellow));
        EXPECT_EQ(qxtest::pixelBGR(in, 1, 5), int(clRed));
        // Every column right of the picture last showed the picture's red right edge.
        EXPECT_EQ(countPixels(in.copy(20, 0, 30, 30), clRed), 30 * 30);

        // Going out, the screen moves left 50 times; the right column keeps its colour.
        auto full = solid(50, 30, clRed);
        paintColumn(*full, 49, clBlue);
        fx.SetPicture(full.get());
        fx.FadeOut();
        EXPECT_FALSE(fx.Shown());
        EXPECT_EQ(countPixels(fx.ScreenImage(), clBlue), 50 * 30);
    }
}

TEST(FxImage, CenterPlacesTheOriginEvenWhenNegative) {
    TQXFxImage fx;
    fx.SetColor(clBlue);
    auto wide = solid(100, 20, clRed);
    paintColumn(*wide, 30, clYellow);
    fx.SetPicture(wide.get());
    fx.SetCenter(true);
    fx.FadeIn();
    EXPECT_EQ(fx.X0(), -30);
    EXPECT_EQ(fx.Y0(), 10);
    // Drawn anew: Color, and the picture at the new origin.
    fx.SetColor(clBlue);
    QImage shot = fx.ScreenImage();
    EXPECT_EQ(qxtest::pixelBGR(shot, 0, 15), int(clYellow));
    EXPECT_EQ(qxtest::pixelBGR(shot, 1, 15), int(clRed));
    EXPECT_EQ(qxtest::pixelBGR(shot, 5, 5), int(clBlue));
    EXPECT_EQ(qxtest::pixelBGR(shot, 5, 30), int(clBlue));

    fx.SetCenter(false);
    fx.SetColor(clBlue);
    EXPECT_EQ(qxtest::pixelBGR(fx.ScreenImage(), 0, 15), int(clYellow))
        << "the origin changes only with the next transition";
    fx.FadeIn();
    EXPECT_EQ(qxtest::pixelBGR(fx.ScreenImage(), 5, 25), int(clRed)) << "drawn over the old";
    EXPECT_EQ(fx.X0(), 0);
    EXPECT_EQ(fx.Y0(), 0);
    EXPECT_EQ(qxtest::pixelBGR(fx.ScreenImage(), 30, 5), int(clYellow));

    // FadeOut measures the control itself, so a centred origin is 0 and only the picture's
    // size at the top left is cleared.
    fx.SetCenter(true);
    fx.FadeOut();
    EXPECT_EQ(fx.X0(), 0);
    EXPECT_EQ(countPixels(fx.ScreenImage().copy(0, 0, 40, 20), clBlue), 40 * 20);
    EXPECT_EQ(countPixels(fx.ScreenImage().copy(0, 20, 40, 20), clBlue), 40 * 10);
    EXPECT_EQ(qxtest::pixelBGR(fx.ScreenImage(), 5, 25), int(clRed)) << "left of the centred one";
}

TEST(FxImage, CaptionReplacesThePictureUntilTheNextFadeIn) {
    TQXFxImage fx;
    fx.SetColor(clWhite);
    fx.Font()->SetColor(clBlack);
    auto pic = solid(30, 30, clRed);
    fx.SetPicture(pic.get());
    ASSERT_EQ(countPixels(fx.ScreenImage(), clRed), 900);

    fx.SetCaption(QStringLiteral("Hallo"));
    EXPECT_EQ(fx.Caption(), QStringLiteral("Hallo"));
    EXPECT_FALSE(fx.Shown());
    QImage scratch(1, 1, QImage::Format_RGB32);
    TCanvas measure(&scratch);
    measure.Font.Assign(*fx.Font());
    EXPECT_EQ(fx.Picture()->Width(), measure.TextWidth(QStringLiteral("Hallo")));
    EXPECT_EQ(fx.Picture()->Height(), measure.TextHeight(QStringLiteral("Hallo")));
    const QImage caption = fx.Picture()->Image();
    const int ink = countPixels(caption, clBlack);
    EXPECT_GT(ink, 10) << "the text is written";
    EXPECT_GT(countPixels(caption, clWhite), ink) << "on Color";
    EXPECT_EQ(countPixels(fx.ScreenImage(), clWhite), 1600) << "hidden until the next FadeIn";

    fx.FadeIn();
    EXPECT_TRUE(fx.Shown());
    EXPECT_EQ(countPixels(fx.ScreenImage(), clBlack), ink);
}

TEST(FxImage, StretchMakesThePictureTheControlsSize) {
    TQXFxImage fx;
    fx.resize(40, 30);
    TBitmap empty;
    fx.SetPicture(&empty);
    fx.Stretch();
    EXPECT_EQ(fx.Picture()->Width(), 0) << "an empty picture stays empty";

    auto small = solid(10, 10, clRed);
    small->Canvas()->SetPixel(9, 9, clYellow);
    fx.SetPicture(small.get());
    fx.Stretch();
    EXPECT_EQ(fx.Picture()->Width(), 40);
    EXPECT_EQ(fx.Picture()->Height(), 30);
    EXPECT_EQ(qxtest::pixelBGR(fx.Picture()->Image(), 0, 0), int(clRed));
    EXPECT_EQ(qxtest::pixelBGR(fx.Picture()->Image(), 39, 29), int(clYellow));
    EXPECT_EQ(qxtest::pixelBGR(fx.Picture()->Image(), 36, 27), int(clYellow));
    EXPECT_EQ(qxtest::pixelBGR(fx.Picture()->Image(), 35, 29), int(clRed));
    EXPECT_EQ(qxtest::pixelBGR(fx.ScreenImage(), 39, 29), int(clYellow));
}
