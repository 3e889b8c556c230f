#include "ControlHost.h"
#include "Qx3dlbl.h"
#include "TestSupport.h"

#include <QApplication>
#include <QEnterEvent>
#include <QFontMetrics>
#include <gtest/gtest.h>

namespace {

// One copy of the caption: its offset and colour.
struct Copy {
    int dx;
    int dy;
    TColor color;
};

// The label painted with a plain background (navy) and no resizing.
QImage paintLabel(TQX3dLabel& label, TcsStyle style) {
    label.SetCaptionStyle(style);
    return qxtest::renderControl(label);
}

// The picture the copies give: the background, each copy of the text mask in its colour in
// drawing order, the text itself in red on top.
QImage expected(const QImage& flat, const QList<Copy>& copies) {
    QImage out(flat.size(), QImage::Format_RGB32);
    out.fill(TColorToQColor(clNavy));
    const auto isText = [&](int x, int y) {
        return flat.valid(x, y) && qxtest::pixelBGR(flat, x, y) == clRed;
    };
    for (const Copy& c : copies + QList<Copy>{{0, 0, clRed}})
        for (int y = 0; y < out.height(); ++y)
            for (int x = 0; x < out.width(); ++x)
                if (isText(x - c.dx, y - c.dy))
                    out.setPixelColor(x, y, TColorToQColor(c.color));
    return out;
}

} // namespace

TEST(QX3dLabel, Defaults) {
    qxtest::ControlHost host;
    TQX3dLabel label(&host);
    label.show();
    EXPECT_EQ(label.size(), QSize(170, 45));
    EXPECT_EQ(label.sizeHint(), QSize(170, 45));
    EXPECT_EQ(label.Font()->Color(), clRed);
    EXPECT_EQ(label.Font()->Size(), 15);
    EXPECT_EQ(label.CaptionStyle(), csRaised);
    EXPECT_EQ(label.Alignment(), dtCenter);
    EXPECT_EQ(label.BorderStyle(), bvNone);
    EXPECT_EQ(label.BorderSize(), 1);
    EXPECT_EQ(label.CaptionSpacing(), 1);
    EXPECT_EQ(label.ShadowColor(), clGray);
    EXPECT_EQ(label.ShadowDepth(), 2);
    EXPECT_TRUE(label.AutoSize());
    EXPECT_TRUE(label.WordWrap());
    EXPECT_FALSE(label.Transparent());
    EXPECT_EQ(label.About_QXTools(), QStringLiteral("12.04.99"));
    label.SetShadowDepth(0);
    EXPECT_EQ(label.ShadowDepth(), 1);
    label.SetShadowDepth(80);
    EXPECT_EQ(label.ShadowDepth(), 50);
}

TEST(QX3dLabel, EffectCopiesLandAtTheirOffsets) {
    qxtest::ControlHost host;
    TQX3dLabel label(&host);
    label.show();
    label.SetAutoSize(false);
    label.SetColor(clNavy);
    label.SetCaption(QStringLiteral("|"));
    const QImage flat = paintLabel(label, csNONE);
    const QRect bar =
        qxtest::pixelBounds(flat, [](QRgb p) { return QColorToTColor(QColor(p)) == clRed; });
    ASSERT_FALSE(bar.isEmpty());

    const QImage raised = paintLabel(label, csRaised);
    EXPECT_EQ(
        raised,
        expected(flat, {{-1, 0, clWhite}, {-1, -1, clWhite}, {0, 1, clGray}, {1, 0, clGray}}));
    // Where only one copy lands: the upper-left copy above the bar's left edge, the lower one
    // below the bar, the right one beside its top; nothing beyond the lower-right corner.
    EXPECT_EQ(qxtest::pixelBGR(raised, bar.left() - 1, bar.top() - 1), clWhite);
    EXPECT_EQ(qxtest::pixelBGR(raised, bar.left(), bar.bottom() + 1), clGray);
    EXPECT_EQ(qxtest::pixelBGR(raised, bar.right() + 1, bar.top()), clGray);
    EXPECT_EQ(qxtest::pixelBGR(raised, bar.right() + 1, bar.bottom() + 1), clNavy);

    const QImage lowered = paintLabel(label, csLowered);
    EXPECT_EQ(
        lowered,
        expected(flat, {{-1, 0, clGray}, {-1, -1, clGray}, {0, 1, clWhite}, {1, 0, clWhite}}));
    EXPECT_EQ(qxtest::pixelBGR(lowered, bar.left() - 1, bar.top() - 1), clGray);
    EXPECT_EQ(qxtest::pixelBGR(lowered, bar.left(), bar.bottom() + 1), clWhite);

    label.SetShadowColor(clLime);
    label.SetShadowDepth(3);
    const QImage shadow = paintLabel(label, csShadow);
    EXPECT_EQ(shadow, expected(flat, {{3, 3, clLime}}));
    EXPECT_EQ(qxtest::pixelBGR(shadow, bar.right() + 3, bar.bottom() + 3), clLime);
}

TEST(QX3dLabel, BorderAndVerticalCentring) {
    qxtest::ControlHost host;
    TQX3dLabel label(&host);
    label.show();
    label.SetAutoSize(false);
    label.SetColor(clNavy);
    label.SetCaptionStyle(csNONE);
    label.SetCaption(QStringLiteral("H"));
    label.resize(60, 40);
    const auto isText = [](QRgb p) { return QColorToTColor(QColor(p)) == clRed; };
    const QRect at40 = qxtest::pixelBounds(qxtest::renderControl(label), isText);
    label.resize(60, 60);
    const QRect at60 = qxtest::pixelBounds(qxtest::renderControl(label), isText);
    EXPECT_EQ(at60.top() - at40.top(), 10);
    EXPECT_EQ(at60.left(), at40.left());

    label.SetBorderStyle(bvRaised);
    label.SetBorderSize(2);
    QImage image = qxtest::renderControl(label);
    EXPECT_EQ(qxtest::pixelBGR(image, 0, 0), clWhite);
    EXPECT_EQ(qxtest::pixelBGR(image, 1, 30), clWhite);
    EXPECT_EQ(qxtest::pixelBGR(image, 59, 59), clGray);
    EXPECT_EQ(qxtest::pixelBGR(image, 30, 58), clGray);
    EXPECT_EQ(qxtest::pixelBGR(image, 2, 2), clNavy);
    // Centred in what the border leaves: the same place, as the border is even all round.
    EXPECT_EQ(qxtest::pixelBounds(image, isText), at60);
    label.SetBorderStyle(bvLowered);
    image = qxtest::renderControl(label);
    EXPECT_EQ(qxtest::pixelBGR(image, 0, 0), clGray);
    EXPECT_EQ(qxtest::pixelBGR(image, 59, 59), clWhite);
}

TEST(QX3dLabel, AutoSizeSpacingAndLineBreaks) {
    qxtest::ControlHost host;
    TQX3dLabel label(&host);
    label.show();
    label.SetAlign(alClient);
    label.SetCaption(QStringLiteral("Hallo"));
    // Text + 10 across, + 6 down, measured with one extra pixel after each character.
    QFont font = label.Font()->ToQFont();
    font.setLetterSpacing(QFont::AbsoluteSpacing, 1);
    const QFontMetrics fm(font);
    EXPECT_EQ(label.size(),
              QSize(fm.horizontalAdvance(QStringLiteral("Hallo")) + 10, fm.height() + 6));
    EXPECT_EQ(label.Align(), alNone);
    label.SetCaption(QStringLiteral("Hallo^MHallo"));
    EXPECT_EQ(label.size(),
              QSize(fm.horizontalAdvance(QStringLiteral("Hallo")) + 10, 2 * fm.height() + 6));
    // Five more pixels after each of the five characters.
    label.SetCaption(QStringLiteral("Hallo"));
    const int narrow = label.Width();
    label.SetCaptionSpacing(6);
    EXPECT_EQ(label.Width(), narrow + 25);
    // Painting leaves the size as it is.
    qxtest::renderControl(label);
    EXPECT_EQ(label.Width(), narrow + 25);
}

TEST(QX3dLabel, TransparencyAndWordWrap) {
    qxtest::ControlHost host;
    host.setAutoFillBackground(true);
    QPalette p = host.palette();
    p.setColor(QPalette::Window, Qt::green);
    host.setPalette(p);
    TQX3dLabel label(&host);
    label.show();
    label.SetAutoSize(false);
    label.SetColor(clNavy);
    label.SetCaption(QStringLiteral("eins zwei drei"));
    label.resize(50, 120);
    QImage image(host.size(), QImage::Format_RGB32);
    host.render(&image);
    EXPECT_EQ(qxtest::pixelBGR(image, 1, 1), clNavy);
    label.SetTransparent(true);
    host.render(&image);
    EXPECT_EQ(qxtest::pixelBGR(image, 1, 1), clLime);

    // Three words on three lines; without wrapping one line, cut at the edges.
    const auto textRows = [&]() {
        const QImage img = qxtest::renderControl(label);
        return qxtest::pixelBounds(img, [](QRgb p) { return QColorToTColor(QColor(p)) == clRed; })
            .height();
    };
    const int lineHeight = QFontMetrics(label.Font()->ToQFont()).height();
    EXPECT_GT(textRows(), 2 * lineHeight);
    label.SetWordWrap(false);
    EXPECT_LT(textRows(), lineHeight + 2);
}

TEST(QX3dLabel, MouseEnterAndLeave) {
    qxtest::ControlHost host;
    TQX3dLabel label(&host);
    label.show();
    QStringList seen;
    label.OnMouseEnter = [&](QObject* s) { seen << (s == &label ? "enter" : "?"); };
    label.OnMouseLeave = [&](QObject* s) { seen << (s == &label ? "leave" : "?"); };
    QEnterEvent enter(QPointF(1, 1), QPointF(1, 1), QPointF(1, 1));
    QApplication::sendEvent(&label, &enter);
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&label, &leave);
    EXPECT_EQ(seen, (QStringList{"enter", "leave"}));
}
