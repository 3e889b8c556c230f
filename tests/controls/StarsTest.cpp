#include "ControlHost.h"
#include "Qxstars.h"
#include "TestSupport.h"

#include <gtest/gtest.h>

TEST(QXStars, DefaultsAndClamps) {
    qxtest::ControlHost host;
    TQXStars stars(&host);
    stars.show();
    EXPECT_EQ(stars.size(), QSize(75, 50));
    EXPECT_EQ(stars.sizeHint(), QSize(75, 50));
    EXPECT_EQ(stars.Color(), clBlack);
    EXPECT_EQ(stars.Interval(), 0);
    EXPECT_FALSE(stars.Timer()->Enabled());
    EXPECT_EQ(stars.MaxStars(), 500);
    EXPECT_EQ(stars.Zoom(), 2);
    EXPECT_EQ(stars.About_QXTools(), QStringLiteral("15.11.96"));
    stars.SetInterval(5);
    EXPECT_EQ(stars.Interval(), 20);
    EXPECT_EQ(stars.Timer()->Interval(), 20);
    EXPECT_TRUE(stars.Timer()->Enabled());
    stars.SetInterval(-3);
    EXPECT_EQ(stars.Interval(), -3);
    EXPECT_FALSE(stars.Timer()->Enabled());
    stars.SetMaxStars(0);
    EXPECT_EQ(stars.MaxStars(), 1);
    stars.SetMaxStars(1000);
    EXPECT_EQ(stars.MaxStars(), 500);
    stars.SetZoom(0);
    EXPECT_EQ(stars.Zoom(), 1);
    stars.SetZoom(250);
    EXPECT_EQ(stars.Zoom(), 100);
}

TEST(QXStars, ProjectionAndGreyLevels) {
    qxtest::ControlHost host;
    TQXStars stars(&host);
    stars.show();
    stars.resize(200, 100);
    stars.SetRandomSeed(7);
    stars.SetMaxStars(3);
    // Depth 9 after its step: (100 + 2 * 100 div 10, 50 + 2 * -50 div 10) in grey 11 * 17.
    stars.Star(1) = {100, -50, 10};
    // Depth 1 after the step: white; depth 2: grey 14 * 17.
    stars.Star(2) = {-30, 20, 2};
    stars.Star(3) = {40, 10, 3};
    const TQXStar beyond = stars.Star(4);
    stars.QXOnTime();
    EXPECT_EQ(stars.Star(1).Z, 9);
    const QImage image = qxtest::renderControl(stars);
    EXPECT_EQ(qxtest::pixelBGR(image, 120, 40), RGB(187, 187, 187));
    EXPECT_EQ(qxtest::pixelBGR(image, 100 + 2 * -30 / 2, 50 + 2 * 20 / 2), clWhite);
    EXPECT_EQ(qxtest::pixelBGR(image, 100 + 2 * 40 / 3, 50 + 2 * 10 / 3), RGB(238, 238, 238));
    // Nothing else is lit, and the stars beyond MaxStars stand still.
    int lit = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            lit += qxtest::pixelBGR(image, x, y) != clBlack;
    EXPECT_EQ(lit, 3);
    EXPECT_EQ(stars.Star(4).X, beyond.X);
    EXPECT_EQ(stars.Star(4).Y, beyond.Y);
    EXPECT_EQ(stars.Star(4).Z, beyond.Z);
    // A plain repaint shows the same frame again without moving the stars.
    EXPECT_EQ(qxtest::renderControl(stars), image);
    EXPECT_EQ(stars.Star(1).Z, 9);
}

TEST(QXStars, RebirthAtDepth30IsDrawnBlack) {
    qxtest::ControlHost host;
    TQXStars stars(&host);
    stars.show();
    stars.resize(200, 100);
    stars.SetColor(clNavy);
    stars.SetRandomSeed(11);
    stars.SetMaxStars(1);
    stars.Star(1) = {5, 5, 1};
    stars.QXOnTime();
    const TQXStar s = stars.Star(1);
    EXPECT_EQ(s.Z, 30);
    // Born again anywhere in the field, spread over the height this time.
    EXPECT_GE(s.X, -200);
    EXPECT_LT(s.X, 200);
    EXPECT_GE(s.Y, -100);
    EXPECT_LT(s.Y, 100);
    const QImage image = qxtest::renderControl(stars);
    EXPECT_EQ(qxtest::pixelBGR(image, 100 + 2 * s.X / 31, 50 + 2 * s.Y / 31), clBlack);
}

TEST(QXStars, SeedingOnResize) {
    qxtest::ControlHost host;
    TQXStars stars(&host);
    stars.show();
    stars.SetRandomSeed(3);
    stars.resize(400, 50);
    // The first seeding shifts Y by the width: every star starts 300 to 400 above the centre.
    for (int i = 1; i <= TQXStars::StarCount; ++i) {
        const TQXStar& s = stars.Star(i);
        ASSERT_GE(s.X, -400);
        ASSERT_LT(s.X, 400);
        ASSERT_GE(s.Y, -400);
        ASSERT_LT(s.Y, -300);
        ASSERT_GE(s.Z, 1);
        ASSERT_LE(s.Z, 30);
    }
    // The same seed and size give the same table.
    TQXStars twin(&host);
    twin.show();
    twin.SetRandomSeed(3);
    twin.resize(400, 50);
    for (int i = 1; i <= TQXStars::StarCount; ++i)
        ASSERT_EQ(QPoint(twin.Star(i).X, twin.Star(i).Y), QPoint(stars.Star(i).X, stars.Star(i).Y));
    // Without a seed two fields differ.
    TQXStars a(&host), b(&host);
    a.show();
    b.show();
    a.resize(400, 50);
    b.resize(400, 50);
    int same = 0;
    for (int i = 1; i <= TQXStars::StarCount; ++i)
        same += a.Star(i).X == b.Star(i).X && a.Star(i).Y == b.Star(i).Y;
    EXPECT_LT(same, 50);
}
