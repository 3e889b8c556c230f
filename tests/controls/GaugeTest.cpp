#include "ControlImage.h"
#include "QXDesign.h"
#include "QXGauge.h"
#include "TestSupport.h"

#include <QApplication>
#include <QMetaProperty>
#include <gtest/gtest.h>

using qxtest::pixelBGR;
using qxtest::renderControl;

namespace {

// The default horizontal gauge (100 x 20, lowered frame, border 2): pitch 9, margin 2, so box
// k covers x = 9k - 3 .. 9k + 4 and y = 3 .. 16.
int hx(int k) {
    return 9 * k;
}
constexpr int hy = 10;

// The same gauge on its side (20 x 100): box k covers y = 95 - 9k .. 102 - 9k.
int vy(int k) {
    return 99 - 9 * k;
}
constexpr int vx = 10;

constexpr TColor dimNavy = 0x351C1C;
constexpr TColor dimLime = 0x1C4E1C;
constexpr TColor dimYellow = 0x1C4E4E;
constexpr TColor dimRed = 0x1C1C4E;
constexpr TColor dimGray = 0x353535;

std::vector<int> boxColours(const QImage& image, int boxes) {
    std::vector<int> colours;
    for (int k = 1; k <= boxes; ++k)
        colours.push_back(pixelBGR(image, hx(k), hy));
    return colours;
}

class CountingGauge : public TQXGauge {
public:
    int paints = 0;

protected:
    void Paint() override {
        ++paints;
        TQXGauge::Paint();
    }
};

} // namespace

TEST(Gauge, DefaultsAndSetterRules) {
    TQXGauge g;
    EXPECT_EQ(g.Width(), 100);
    EXPECT_EQ(g.Height(), 20);
    EXPECT_EQ(g.sizeHint(), QSize(100, 20));
    EXPECT_EQ(g.BorderStyle(), bvLowered);
    EXPECT_EQ(g.BorderWidth(), 2);
    EXPECT_EQ(g.Boxes(), 10);
    EXPECT_EQ(g.BoxColor(), clNavy);
    EXPECT_EQ(g.Color(), clSilver);
    EXPECT_EQ(g.Kind(), qxgHorizontal);
    EXPECT_EQ(g.MaxValue(), 100);
    EXPECT_EQ(g.MinValue(), 0);
    EXPECT_EQ(g.Progress(), 0);
    EXPECT_TRUE(g.BoxPreview());
    EXPECT_TRUE(g.ShowPeak());
    EXPECT_EQ(g.PeakTimer()->Interval(), 50);
    EXPECT_EQ(g.PeakTimer()->Tag(), 0);
    EXPECT_EQ(g.About_QXTools(), QStringLiteral("10.10.98"));
    EXPECT_FALSE(g.accessibleName().isEmpty());
    EXPECT_FALSE(g.accessibleDescription().isEmpty());

    g.SetBoxes(3);
    EXPECT_EQ(g.Boxes(), 3);
    g.SetBoxColor(clGreen);
    g.SetBoxes(4);
    EXPECT_EQ(g.Boxes(), 5);

    g.SetMinValue(-1);
    EXPECT_EQ(g.MinValue(), 0);
    g.SetMinValue(100);
    EXPECT_EQ(g.MinValue(), 0);
    g.SetMinValue(20);
    EXPECT_EQ(g.MinValue(), 20);
    g.SetMaxValue(20);
    EXPECT_EQ(g.MaxValue(), 100);
    g.SetMaxValue(-5);
    EXPECT_EQ(g.MaxValue(), 100);
    g.SetMaxValue(50);
    EXPECT_EQ(g.MaxValue(), 50);

    g.SetProgress(7);
    EXPECT_EQ(g.Progress(), 20);
    g.SetProgress(150);
    EXPECT_EQ(g.Progress(), 50);
    g.AddProgress(-15);
    EXPECT_EQ(g.Progress(), 35);
    EXPECT_EQ(g.GetPercentDone(), 50);

    g.SetShowPeak(false);
    EXPECT_EQ(g.PeakTimer()->Tag(), -1);
    EXPECT_EQ(g.PeakTimer()->Interval(), 0);
}

TEST(Gauge, PropertiesForDesignerAndPalette) {
    TQXGauge g;
    const QMetaObject* mo = g.metaObject();
    for (const char* name : {"BorderStyle", "BorderWidth", "Boxes", "BoxColor", "Color", "Kind",
                             "MaxValue", "MinValue", "Progress", "BoxPreview", "ShowPeak"})
        EXPECT_GE(mo->indexOfProperty(name), 0) << name;
    EXPECT_TRUE(mo->property(mo->indexOfProperty("Kind")).isEnumType());
    EXPECT_TRUE(mo->property(mo->indexOfProperty("BorderStyle")).isEnumType());
    ASSERT_TRUE(g.setProperty("BoxColor", QColor(255, 0, 0)));
    EXPECT_EQ(g.BoxColor(), clRed);
    EXPECT_EQ(g.property("Color").value<QColor>(), QColor(192, 192, 192));
    ASSERT_TRUE(g.setProperty("Boxes", 12));
    EXPECT_EQ(g.Boxes(), 12);

    const TComponentClass* cls = FindComponentClass(QStringLiteral("TQXGauge"));
    ASSERT_NE(cls, nullptr);
    EXPECT_TRUE(cls->IsWidget);
}

TEST(Gauge, SolveForXAndY) {
    EXPECT_EQ(TQXGauge::SolveForX(55, 10), 5);
    EXPECT_EQ(TQXGauge::SolveForX(100, 30), 30);
    EXPECT_EQ(TQXGauge::SolveForX(99, 30), 29);
    EXPECT_EQ(TQXGauge::SolveForY(50, 0), 0);
    EXPECT_EQ(TQXGauge::SolveForY(1, 3), 33);
    EXPECT_EQ(TQXGauge::SolveForY(2, 3), 66);
    EXPECT_EQ(TQXGauge::SolveForY(-5, 100), -5);
    // The largest range that still multiplies first, with a value whose product leaves 32 bits.
    EXPECT_EQ(TQXGauge::SolveForY(21474836, 21474836), 100);
    EXPECT_EQ(TQXGauge::SolveForY(21474835, 21474836), 99);
    // Larger ranges divide first.
    EXPECT_EQ(TQXGauge::SolveForY(2147483647, 2147483647), 100);
    EXPECT_EQ(TQXGauge::SolveForY(1073741823, 2147483647), 49);
    EXPECT_EQ(TQXGauge::SolveForY(1073741824, 2147483647), 50);
}

TEST(Gauge, HorizontalBoxesFrameAndPreview) {
    TQXGauge g;
    g.SetShowPeak(false);
    g.SetProgress(55);
    const QImage img = renderControl(g);
    // Lowered frame: grey top-left, white bottom-right; the border ring in Color.
    EXPECT_EQ(pixelBGR(img, 0, 0), clGray);
    EXPECT_EQ(pixelBGR(img, 98, 0), clGray);
    EXPECT_EQ(pixelBGR(img, 0, 18), clGray);
    EXPECT_EQ(pixelBGR(img, 99, 0), clWhite);
    EXPECT_EQ(pixelBGR(img, 99, 19), clWhite);
    EXPECT_EQ(pixelBGR(img, 0, 19), clWhite);
    EXPECT_EQ(pixelBGR(img, 1, 1), clSilver);
    EXPECT_EQ(pixelBGR(img, 2, 10), clSilver);
    // 55 % of 10 boxes: 5 lit, 5 dimmed.
    const std::vector<int> expected = {clNavy,  clNavy,  clNavy,  clNavy,  clNavy,
                                       dimNavy, dimNavy, dimNavy, dimNavy, dimNavy};
    EXPECT_EQ(boxColours(img, 10), expected);
    // Box 1 spans x 6..13 and y 3..16; the margins and the gaps keep Color.
    EXPECT_EQ(pixelBGR(img, 6, 3), clNavy);
    EXPECT_EQ(pixelBGR(img, 13, 16), clNavy);
    EXPECT_EQ(pixelBGR(img, 5, 10), clSilver);
    EXPECT_EQ(pixelBGR(img, 14, 10), clSilver);
    EXPECT_EQ(pixelBGR(img, 94, 16), dimNavy);
    EXPECT_EQ(pixelBGR(img, 95, 10), clSilver);
    EXPECT_EQ(pixelBGR(img, 10, 17), clSilver);

    g.SetBoxPreview(false);
    const QImage plain = renderControl(g);
    EXPECT_EQ(pixelBGR(plain, hx(5), hy), clNavy);
    EXPECT_EQ(pixelBGR(plain, hx(6), hy), clSilver);

    g.SetBorderStyle(bvRaised);
    const QImage raised = renderControl(g);
    EXPECT_EQ(pixelBGR(raised, 0, 0), clWhite);
    EXPECT_EQ(pixelBGR(raised, 99, 19), clGray);
    g.SetBorderStyle(bvNone);
    const QImage flat = renderControl(g);
    EXPECT_EQ(pixelBGR(flat, 0, 0), clSilver);
    EXPECT_EQ(pixelBGR(flat, hx(1), hy), clNavy);
}

TEST(Gauge, VerticalBoxesLightFromTheBottom) {
    TQXGauge g;
    g.SetShowPeak(false);
    g.SetKind(qxgVertical);
    g.SetBounds(0, 0, 20, 100);
    g.SetProgress(30);
    const QImage img = renderControl(g);
    EXPECT_EQ(g.Boxes(), 10);
    for (int k = 1; k <= 3; ++k)
        EXPECT_EQ(pixelBGR(img, vx, vy(k)), clNavy) << k;
    for (int k = 4; k <= 10; ++k)
        EXPECT_EQ(pixelBGR(img, vx, vy(k)), dimNavy) << k;
    // Box 1 spans y 86..93, box 10 y 5..12, the full inner width x 3..16.
    EXPECT_EQ(pixelBGR(img, 3, 93), clNavy);
    EXPECT_EQ(pixelBGR(img, 16, 86), clNavy);
    EXPECT_EQ(pixelBGR(img, 10, 94), clSilver);
    EXPECT_EQ(pixelBGR(img, 10, 85), clSilver);
    EXPECT_EQ(pixelBGR(img, 10, 5), dimNavy);
    EXPECT_EQ(pixelBGR(img, 10, 4), clSilver);
}

TEST(Gauge, GreenLevelMeterZones) {
    TQXGauge g;
    g.SetShowPeak(false);
    g.SetBoxColor(clGreen);
    g.SetBoxPreview(false);
    g.SetProgress(100);
    // Ten boxes: 1-4 green, 5-6 bright green, 7-8 yellow, 9-10 red.
    const std::vector<int> full = {clGreen, clGreen,  clGreen,  clGreen, clLime,
                                   clLime,  clYellow, clYellow, clRed,   clRed};
    EXPECT_EQ(boxColours(renderControl(g), 10), full);

    // With the preview the bright green reaches down to box 1, and unlit boxes are dimmed.
    g.SetBoxPreview(true);
    g.SetProgress(60);
    const std::vector<int> preview = {clLime, clLime,    clLime,    clLime, clLime,
                                      clLime, dimYellow, dimYellow, dimRed, dimRed};
    EXPECT_EQ(boxColours(renderControl(g), 10), preview);
}

TEST(Gauge, DisabledGaugeDrawsGrey) {
    TQXGauge g;
    g.SetShowPeak(false);
    g.SetProgress(20);
    g.setEnabled(false);
    const QImage img = renderControl(g);
    EXPECT_EQ(pixelBGR(img, hx(1), hy), clGray);
    EXPECT_EQ(pixelBGR(img, hx(2), hy), clGray);
    EXPECT_EQ(pixelBGR(img, hx(3), hy), dimGray);
}

TEST(Gauge, PeakHoldsForTwentyTicks) {
    TQXGauge g;
    g.SetProgress(80);
    g.QXOnTime();
    EXPECT_EQ(g.PeakTimer()->Tag(), 1);
    EXPECT_EQ(g.Peak(), 80);
    EXPECT_GE(TQXGauge::ProcessMaxProgress(), 80);
    g.SetProgress(20);
    const QImage held = renderControl(g);
    EXPECT_EQ(pixelBGR(held, hx(2), hy), clNavy);
    EXPECT_EQ(pixelBGR(held, hx(3), hy), dimNavy);
    EXPECT_EQ(pixelBGR(held, hx(7), hy), dimNavy);
    EXPECT_EQ(pixelBGR(held, hx(8), hy), clNavy);
    EXPECT_EQ(pixelBGR(held, hx(9), hy), dimNavy);

    for (int i = 2; i <= 20; ++i)
        g.QXOnTime();
    EXPECT_EQ(g.PeakTimer()->Tag(), 20);
    EXPECT_EQ(g.Peak(), 80);
    g.QXOnTime();
    EXPECT_EQ(g.PeakTimer()->Tag(), 0);
    EXPECT_EQ(g.Peak(), 0);
    EXPECT_EQ(pixelBGR(renderControl(g), hx(8), hy), dimNavy);

    // A green peak takes its zone's colour.
    g.SetBoxColor(clGreen);
    g.SetProgress(95);
    g.QXOnTime();
    g.SetProgress(10);
    const QImage zone = renderControl(g);
    EXPECT_EQ(pixelBGR(zone, hx(9), hy), clRed);
    EXPECT_EQ(pixelBGR(zone, hx(1), hy), clLime);
    EXPECT_EQ(pixelBGR(zone, hx(2), hy), dimLime);

    g.SetShowPeak(false);
    g.SetBoxColor(clNavy);
    g.SetProgress(90);
    g.QXOnTime();
    EXPECT_EQ(g.Peak(), 0);
    EXPECT_EQ(g.PeakTimer()->Tag(), -1);
}

TEST(Gauge, GreenGaugeDecaysByItself) {
    TQXGauge g;
    g.SetBoxColor(clGreen);
    g.SetProgress(23);
    g.QXOnTime();
    EXPECT_EQ(g.Progress(), 18);
    for (int i = 0; i < 5; ++i)
        g.QXOnTime();
    EXPECT_EQ(g.Progress(), 0);
    g.SetMinValue(10);
    g.SetProgress(60);
    for (int i = 0; i < 20; ++i)
        g.QXOnTime();
    EXPECT_EQ(g.Progress(), 10);

    // Other colours hold their value.
    TQXGauge navy;
    navy.SetProgress(40);
    navy.QXOnTime();
    EXPECT_EQ(navy.Progress(), 40);
}

TEST(Gauge, ProgressRepaintsOnlyWhenTheLitCountChanges) {
    CountingGauge g;
    g.SetShowPeak(false);
    g.show();
    for (int i = 0; i < 5; ++i)
        QApplication::processEvents();
    ASSERT_GT(g.paints, 0);
    g.paints = 0;
    g.SetProgress(5); // still 0 boxes
    EXPECT_EQ(g.paints, 0);
    g.SetProgress(12); // 1 box: painted at once
    EXPECT_EQ(g.paints, 1);
    g.SetProgress(19);
    g.AddProgress(-2);
    EXPECT_EQ(g.paints, 1);
    g.SetProgress(20);
    EXPECT_EQ(g.paints, 2);
    QApplication::processEvents();
    EXPECT_EQ(g.paints, 2);
}

TEST(Gauge, LowControlDropsOneBoxPerPaint) {
    TQXGauge g;
    g.SetShowPeak(false);
    g.SetKind(qxgVertical);
    g.SetBounds(0, 0, 20, 30); // pitch (30 - 2 - 2) div 10 = 2
    renderControl(g);
    EXPECT_EQ(g.Boxes(), 9);
    renderControl(g); // 26 div 9 = 2
    EXPECT_EQ(g.Boxes(), 8);
    renderControl(g); // 26 div 8 = 3: fits
    EXPECT_EQ(g.Boxes(), 8);
    renderControl(g);
    EXPECT_EQ(g.Boxes(), 8);

    g.SetHeight(6);
    for (int i = 0; i < 20; ++i)
        renderControl(g);
    EXPECT_EQ(g.Boxes(), 1);

    // A control too narrow for any inner area grows by a pixel a paint.
    TQXGauge narrow;
    narrow.SetShowPeak(false);
    narrow.SetBounds(0, 0, 5, 20);
    renderControl(narrow);
    EXPECT_EQ(narrow.Width(), 6);
}

TEST(Gauge, GoldenPictureAtDefaults) {
    TQXGauge g;
    EXPECT_TRUE(qxtest::matchesGolden(renderControl(g), QStringLiteral("gauge")));
}
