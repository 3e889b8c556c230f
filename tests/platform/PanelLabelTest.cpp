#include "TCustomLabel.h"
#include "TCustomPanel.h"
#include "TestSupport.h"

#include <QFontMetrics>
#include <QImage>
#include <gtest/gtest.h>

namespace {

// The control as it shows itself.
QImage shot(QWidget& w) {
    return w.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

// A colour as the control shows it, system colours resolved through its palette.
QRgb shown(const QWidget& w, TColor c) {
    return TColorToQColor(c, &w.palette()).rgb();
}

class Panel : public TCustomPanel {
public:
    Panel() { resize(40, 20); }
};

class Label : public TCustomLabel {};

// The rows and columns holding pixels of one colour.
QRect boundsOf(const QImage& image, QRgb colour) {
    QRect r;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixel(x, y) == colour)
                r |= QRect(x, y, 1, 1);
    return r;
}

} // namespace

TEST(CustomPanel, RaisedAndLoweredBevels) {
    Panel p;
    p.SetColor(clBlue);
    EXPECT_EQ(p.BevelOuter(), bvRaised);
    EXPECT_EQ(p.BevelInner(), bvNone);
    EXPECT_EQ(p.Alignment(), taCenter);
    QImage image = shot(p);
    EXPECT_EQ(image.pixel(0, 0), shown(p, clBtnHighlight));
    EXPECT_EQ(image.pixel(38, 0), shown(p, clBtnHighlight));
    EXPECT_EQ(image.pixel(0, 18), shown(p, clBtnHighlight));
    EXPECT_EQ(image.pixel(39, 19), shown(p, clBtnShadow));
    EXPECT_EQ(image.pixel(39, 1), shown(p, clBtnShadow));
    EXPECT_EQ(image.pixel(1, 19), shown(p, clBtnShadow));
    EXPECT_EQ(image.pixel(1, 1), shown(p, clBlue));
    EXPECT_EQ(image.pixel(38, 18), shown(p, clBlue));
    p.SetBevelOuter(bvLowered);
    image = shot(p);
    EXPECT_EQ(image.pixel(0, 0), shown(p, clBtnShadow));
    EXPECT_EQ(image.pixel(39, 19), shown(p, clBtnHighlight));
    p.SetBevelOuter(bvNone);
    image = shot(p);
    EXPECT_EQ(image.pixel(0, 0), shown(p, clBlue));
    EXPECT_EQ(image.pixel(39, 19), shown(p, clBlue));
}

TEST(CustomPanel, EdgeBevelsAndBorderFromTheOutsideIn) {
    Panel p;
    p.SetColor(clBlue);
    p.SetBorderStyle(bsSingle);
    p.SetBevelWidth(2);
    p.SetBorderWidth(3);
    p.SetBevelInner(bvLowered);
    const QImage image = shot(p);
    // The sunken edge: two rings, shadow outside dark shadow.
    EXPECT_EQ(image.pixel(0, 0), shown(p, clBtnShadow));
    EXPECT_EQ(image.pixel(39, 19), shown(p, clBtnHighlight));
    EXPECT_EQ(image.pixel(1, 1), shown(p, cl3DDkShadow));
    EXPECT_EQ(image.pixel(38, 18), shown(p, cl3DLight));
    // The raised outer bevel, two pixels.
    EXPECT_EQ(image.pixel(2, 2), shown(p, clBtnHighlight));
    EXPECT_EQ(image.pixel(3, 10), shown(p, clBtnHighlight));
    EXPECT_EQ(image.pixel(36, 10), shown(p, clBtnShadow));
    // Three pixels of Color, then the lowered inner bevel, then the inside.
    EXPECT_EQ(image.pixel(4, 10), shown(p, clBlue));
    EXPECT_EQ(image.pixel(6, 10), shown(p, clBlue));
    EXPECT_EQ(image.pixel(7, 10), shown(p, clBtnShadow));
    EXPECT_EQ(image.pixel(8, 10), shown(p, clBtnShadow));
    EXPECT_EQ(image.pixel(9, 10), shown(p, clBlue));
    EXPECT_EQ(image.pixel(32, 10), shown(p, clBtnHighlight));
    // Widths below their least count as it.
    p.SetBevelWidth(0);
    p.SetBorderWidth(-4);
    EXPECT_EQ(p.BevelWidth(), 1);
    EXPECT_EQ(p.BorderWidth(), 0);
}

TEST(CustomPanel, CaptionLinesUpInTheMiddleRow) {
    Panel p;
    p.resize(200, 40);
    p.SetColor(clWhite);
    p.Font()->SetColor(clRed);
    p.SetCaption(QStringLiteral("Mitte"));
    const QRgb red = shown(p, clRed);
    const QRect centred = boundsOf(shot(p), red);
    ASSERT_FALSE(centred.isEmpty());
    EXPECT_LE(std::abs(centred.center().x() - 100), 2);
    EXPECT_LE(std::abs(centred.center().y() - 20), 3);
    p.SetAlignment(taLeftJustify);
    const QRect left = boundsOf(shot(p), red);
    EXPECT_LE(left.left(), 4);
    EXPECT_EQ(left.top(), centred.top());
    p.SetAlignment(taRightJustify);
    EXPECT_GE(boundsOf(shot(p), red).right(), 195);
}

TEST(CustomLabel, AutoSizeFollowsTheText) {
    Label l;
    l.move(100, 10);
    EXPECT_TRUE(l.AutoSize());
    const QFontMetrics fm(l.Font()->ToQFont());
    l.SetCaption(QStringLiteral("Hallo Welt"));
    EXPECT_EQ(l.height(), fm.height());
    EXPECT_NEAR(l.width(), fm.horizontalAdvance(QStringLiteral("Hallo Welt")), 1);
    // An accelerator marker takes no room unless it is shown as itself.
    l.SetCaption(QStringLiteral("&Datei"));
    const int marked = l.width();
    l.SetShowAccelChar(false);
    EXPECT_GT(l.width(), marked);
    // Two lines are twice as high; an empty caption is one blank wide.
    l.SetCaption(QStringLiteral("eins\nzwei"));
    EXPECT_EQ(l.height(), 2 * fm.height());
    l.SetCaption(QString());
    EXPECT_GT(l.width(), 0);
    EXPECT_EQ(l.height(), fm.height());
    // A right-aligned label keeps its right edge as it grows.
    l.SetAlignment(taRightJustify);
    const int right = l.x() + l.width();
    l.SetCaption(QStringLiteral("ein langer Text"));
    EXPECT_EQ(l.x() + l.width(), right);
    // Without AutoSize the size stays.
    l.SetAutoSize(false);
    l.resize(30, 30);
    l.SetCaption(QStringLiteral("noch ein viel längerer Text"));
    EXPECT_EQ(l.size(), QSize(30, 30));
}

TEST(CustomLabel, ColourTransparencyAndEngravedWhenDisabled) {
    QWidget parent;
    QPalette green;
    green.setColor(QPalette::Window, Qt::green);
    parent.setPalette(green);
    parent.setAutoFillBackground(true);
    parent.resize(200, 50);
    auto* l = new Label;
    l->setParent(&parent);
    l->SetAutoSize(false);
    l->resize(150, 30);
    l->SetColor(clBlue);
    l->Font()->SetColor(clRed);
    l->SetCaption(QStringLiteral("Beschriftung"));
    QImage image = shot(parent);
    EXPECT_EQ(image.pixel(148, 28), shown(*l, clBlue));
    EXPECT_FALSE(boundsOf(image, shown(*l, clRed)).isEmpty());
    l->SetTransparent(true);
    image = shot(parent);
    EXPECT_EQ(image.pixel(148, 28), QColor(Qt::green).rgb());
    EXPECT_FALSE(boundsOf(image, shown(*l, clRed)).isEmpty());
    // Disabled: no font colour, a light copy one pixel below and right of a dark one.
    l->SetTransparent(false);
    l->setEnabled(false);
    image = shot(parent);
    EXPECT_TRUE(boundsOf(image, shown(*l, clRed)).isEmpty());
    const QRect dark = boundsOf(image, shown(*l, clBtnShadow));
    const QRect light = boundsOf(image, shown(*l, clBtnHighlight));
    ASSERT_FALSE(dark.isEmpty());
    ASSERT_FALSE(light.isEmpty());
    EXPECT_EQ(light.bottomRight(), dark.bottomRight() + QPoint(1, 1));
}
