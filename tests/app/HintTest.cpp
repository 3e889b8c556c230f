#include "AppSupport.h"
#include "Application.h"
#include "QXDesign.h"
#include "Qxhint.h"
#include "Qxhint_p.h"
#include "TestSupport.h"

#include <QApplication>
#include <QCursor>
#include <QHelpEvent>
#include <QPainter>
#include <QPushButton>
#include <QTest>
#include <QToolTip>
#include <gtest/gtest.h>

using apptest::shadowed;
using qxtest::pixelBGR;

namespace {

// Puts the module settings and the application's hint machinery back after each test.
class Hint : public ::testing::Test {
protected:
    void SetUp() override {
        QXH_Color = clYellow;
        QXH_DefaultWidth = 150;
        QXH_ShadowDepth = 10;
        QXH_HintPosition = hpAboveRight;
    }
    void TearDown() override {
        Application()->SetShowHint(false);
        Application()->SetHintWindowClass({});
        Application()->SetShowHint(true);
        QToolTip::hideText();
    }
};

unsigned at(const QImage& image, int x, int y) {
    return unsigned(pixelBGR(image, x, y));
}

// The window-sized piece of the background with a bubble composed on it.
QImage composeOn(const QImage& background, const TQXHintLayout& layout, const QString& text,
                 bool alpha = false) {
    TBitmap bak;
    if (alpha) {
        QImage clear(layout.Window.Width(), layout.Window.Height(),
                     QImage::Format_ARGB32_Premultiplied);
        clear.fill(Qt::transparent);
        bak.SetImage(clear);
    } else {
        bak.SetImage(background.copy(layout.Window.ToQRect()));
    }
    QXHCompose(&bak, layout, text, alpha);
    return bak.Image();
}

} // namespace

TEST_F(Hint, DefaultsReachTheModuleAndTheApplication) {
    QXH_Color = clRed;
    QXH_ShadowDepth = 3;
    TQXHint hint;
    EXPECT_TRUE(hint.Active());
    EXPECT_EQ(hint.Color(), clYellow);
    EXPECT_EQ(hint.DefaultWidth(), 150);
    EXPECT_EQ(hint.HintPause(), 800);
    EXPECT_EQ(hint.HintHidePause(), 2500);
    EXPECT_EQ(hint.HintPosition(), hpAboveRight);
    EXPECT_EQ(hint.ShadowDepth(), 10);
    EXPECT_EQ(hint.About_QXTools(), QStringLiteral("14.08.98"));
    EXPECT_EQ(QXH_Color, clYellow);
    EXPECT_EQ(QXH_ShadowDepth, 10);
    EXPECT_EQ(QXH_DefaultWidth, 150);
    EXPECT_EQ(Application()->HintPause(), 800);
    EXPECT_EQ(Application()->HintHidePause(), 2500);
    ASSERT_NE(QXH_BakBitmap, nullptr);
    ASSERT_NE(QXH_Font, nullptr);

    hint.SetColor(clAqua);
    hint.SetDefaultWidth(220);
    hint.SetShadowDepth(6);
    hint.SetHintPosition(hpBelowLeft);
    hint.SetHintPause(120);
    hint.SetHintHidePause(900);
    hint.Font()->SetName(QStringLiteral("DejaVu Sans Mono"));
    hint.Font()->SetHeight(-17);
    EXPECT_EQ(QXH_Color, clAqua);
    EXPECT_EQ(QXH_DefaultWidth, 220);
    EXPECT_EQ(QXH_ShadowDepth, 6);
    EXPECT_EQ(QXH_HintPosition, hpBelowLeft);
    EXPECT_EQ(Application()->HintPause(), 120);
    EXPECT_EQ(Application()->HintHidePause(), 900);
    EXPECT_EQ(QXH_Font->Name(), QStringLiteral("DejaVu Sans Mono"));
    EXPECT_EQ(QXH_Font->Height(), -17);
    // Designer sees the published properties under their names.
    EXPECT_EQ(hint.property("Color").value<QColor>(), QColor(0, 255, 255));
    EXPECT_TRUE(hint.setProperty("HintPosition", int(hpAboveLeft)));
    EXPECT_EQ(QXH_HintPosition, hpAboveLeft);
    EXPECT_FALSE(hint.setProperty("About_QXTools", QStringLiteral("x")) &&
                 hint.About_QXTools() != QStringLiteral("14.08.98"));

    // A second component's settings replace the first one's for every hint.
    TQXHint second;
    EXPECT_EQ(QXH_Color, clYellow);
    EXPECT_EQ(QXH_ShadowDepth, 10);
    EXPECT_EQ(hint.Color(), clAqua);
}

TEST_F(Hint, ActiveTakesOverTheTooltipsAndOffLeavesNone) {
    // Counts the tooltip requests that reach it (and so Qt's own tooltip).
    struct Tipped : QPushButton {
        int tips = 0;
        bool event(QEvent* e) override {
            if (e->type() == QEvent::ToolTip)
                ++tips;
            return QPushButton::event(e);
        }
    } button;
    button.setToolTip(QStringLiteral("Ein Hinweis"));
    button.show();
    // True when Qt's tooltip got the request.
    const auto askTooltip = [&]() {
        const int before = button.tips;
        QHelpEvent help(QEvent::ToolTip, QPoint(5, 5), button.mapToGlobal(QPoint(5, 5)));
        QApplication::sendEvent(&button, &help);
        return button.tips > before;
    };
    // Without the component Qt's own tooltip serves.
    EXPECT_TRUE(askTooltip());
    EXPECT_TRUE(QToolTip::isVisible());

    TQXHint hint;
    // Applied when loading ends, not in the constructor.
    EXPECT_EQ(Application()->HintWindow(), nullptr);
    hint.EndLoading();
    ASSERT_NE(qobject_cast<TQXHintWindow*>(Application()->HintWindow()), nullptr);
    EXPECT_TRUE(Application()->ShowHint());
    EXPECT_FALSE(askTooltip());

    hint.SetActive(false);
    EXPECT_FALSE(Application()->ShowHint());
    EXPECT_EQ(Application()->HintWindow(), nullptr);
    EXPECT_FALSE(askTooltip());
    Application()->ActivateHint(button.mapToGlobal(QPoint(5, 5)));
    EXPECT_EQ(Application()->HintWindow(), nullptr);

    hint.SetActive(true);
    EXPECT_TRUE(Application()->ShowHint());
    EXPECT_NE(qobject_cast<TQXHintWindow*>(Application()->HintWindow()), nullptr);
    // A widget without a tooltip of its own keeps Qt's handling (item views show theirs).
    button.setToolTip(QString());
    EXPECT_TRUE(askTooltip());

    // In the designer the application's hints are left alone.
    TQXHint designed;
    designed.SetDesigning(true);
    designed.SetActive(false);
    designed.EndLoading();
    EXPECT_TRUE(Application()->ShowHint());
}

TEST_F(Hint, CompositionOverABusyBackground) {
    const QImage background = apptest::busyBackground(480, 320);
    const TQXHintLayout layout = QXHLayoutHint({120, 220}, 120, 30, Rect(0, 0, 480, 320));
    EXPECT_EQ(layout.Position, hpAboveRight);
    // Text plus the 40-pixel margin plus the shadow.
    EXPECT_EQ(layout.Window.Width(), 120 + 40 + 10);
    EXPECT_EQ(layout.Window.Height(), 30 + 40 + 10);
    // The tail ends just above and right of the pointer.
    EXPECT_EQ(layout.Window.Left, 122);
    EXPECT_EQ(layout.Window.Top + layout.Window.Height() - 10, 218);
    const QImage bubble = composeOn(background, layout, QStringLiteral("Ein Hinweis"));
    const QImage behind = background.copy(layout.Window.ToQRect());
    const int w = 160, h = 70;

    // Balloon colour inside, black outline around it.
    EXPECT_EQ(at(bubble, w / 2, 4), unsigned(clYellow));
    EXPECT_EQ(at(bubble, 4, (h - 20) / 2), unsigned(clYellow));
    EXPECT_EQ(at(bubble, w / 2, 0), unsigned(clBlack));
    EXPECT_EQ(at(bubble, 0, (h - 20) / 2), unsigned(clBlack));
    EXPECT_EQ(at(bubble, w - 1, (h - 20) / 2), unsigned(clBlack));
    EXPECT_EQ(at(bubble, w / 2, h - 21), unsigned(clBlack));
    // The shadow: the background ANDed with grey, ShadowDepth to the right and below.
    for (const QPoint p : {QPoint(w + 4, 30), QPoint(w + 9, 40), QPoint(w / 2, h - 20 + 5)})
        EXPECT_EQ(at(bubble, p.x(), p.y()), shadowed(at(behind, p.x(), p.y())))
            << p.x() << "," << p.y();
    // Beside it the background is unchanged: above the shadow, right of the tail, the corner.
    for (const QPoint p : {QPoint(w + 9, 2), QPoint(30, h + 5), QPoint(w + 9, h + 9)})
        EXPECT_EQ(at(bubble, p.x(), p.y()), at(behind, p.x(), p.y())) << p.x() << "," << p.y();
    // The smallest circle of the tail sits at the bottom left, nothing at the bottom right.
    EXPECT_NE(at(bubble, 2, h - 3), at(behind, 2, h - 3));
    EXPECT_EQ(at(bubble, w - 3, h - 3), at(behind, w - 3, h - 3));

    QImage shot = background;
    QPainter(&shot).drawImage(layout.Window.Left, layout.Window.Top, bubble);
    EXPECT_TRUE(shot.save(apptest::artefact(QStringLiteral("bubble-composed.png"))));
}

TEST_F(Hint, OtherPositionsMirrorTheTail) {
    const QImage background = apptest::busyBackground(480, 320);
    const TRect screen = Rect(0, 0, 480, 320);
    const int w = 160, h = 70;
    QImage shot = background;
    struct Case {
        THintPosition position;
        TPoint tail;     // the smallest circle, in window coordinates
        TPoint opposite; // where the tail would be unmirrored
    };
    for (const Case c :
         {Case{hpAboveLeft, {w - 3, h - 3}, {2, h - 3}}, Case{hpBelowLeft, {w - 3, 2}, {2, 2}},
          Case{hpBelowRight, {2, 2}, {w - 3, 2}}}) {
        QXH_HintPosition = c.position;
        const TQXHintLayout layout = QXHLayoutHint({240, 160}, 120, 30, screen);
        EXPECT_EQ(layout.Position, c.position);
        const QImage bubble = composeOn(background, layout, QStringLiteral("Gespiegelt"));
        const QImage behind = background.copy(layout.Window.ToQRect());
        EXPECT_NE(at(bubble, c.tail.X, c.tail.Y), at(behind, c.tail.X, c.tail.Y));
        EXPECT_EQ(at(bubble, c.opposite.X, c.opposite.Y), at(behind, c.opposite.X, c.opposite.Y))
            << "nothing where the tail would be unmirrored";
        // The balloon body is above the tail for the above positions, below it otherwise.
        const int bodyY = c.position == hpAboveLeft ? 4 : 24;
        EXPECT_EQ(at(bubble, w / 2, bodyY), unsigned(clYellow));
        // The tail points at the pointer.
        const int tipX = layout.Window.Left + (c.position == hpBelowRight ? 0 : w);
        EXPECT_LE(std::abs(tipX - 240), 12);
        // Nothing of the window lies under the pointer.
        EXPECT_FALSE(layout.Window.Contains({240, 160}));
        QPainter(&shot).drawImage(layout.Window.Left, layout.Window.Top, bubble);
    }
    EXPECT_TRUE(shot.save(apptest::artefact(QStringLiteral("bubble-positions.png"))));
}

TEST_F(Hint, NearTheEdgesTheBubbleTurnsAndStaysOnScreen) {
    const TRect screen = Rect(0, 0, 640, 480);
    struct Case {
        THintPosition preferred;
        TPoint cursor;
        THintPosition taken;
    };
    for (const Case c :
         {Case{hpAboveRight, {630, 240}, hpAboveLeft}, Case{hpAboveRight, {320, 20}, hpBelowRight},
          Case{hpAboveRight, {635, 10}, hpBelowLeft}, Case{hpBelowRight, {630, 470}, hpAboveLeft},
          Case{hpBelowLeft, {5, 470}, hpAboveRight}, Case{hpAboveLeft, {320, 240}, hpAboveLeft}}) {
        QXH_HintPosition = c.preferred;
        const TQXHintLayout layout = QXHLayoutHint(c.cursor, 150, 45, screen);
        EXPECT_EQ(layout.Position, c.taken) << c.cursor.X << "," << c.cursor.Y;
        EXPECT_GE(layout.Window.Left, 0);
        EXPECT_GE(layout.Window.Top, 0);
        EXPECT_LE(layout.Window.Right, 640);
        EXPECT_LE(layout.Window.Bottom, 480);
    }
    // A bubble wider than the room on both sides is pushed onto the screen.
    QXH_HintPosition = hpAboveRight;
    const TQXHintLayout wide = QXHLayoutHint({300, 200}, 560, 20, screen);
    EXPECT_GE(wide.Window.Left, 0);
    EXPECT_LE(wide.Window.Right, 640);
}

TEST_F(Hint, LineBreaksAndWrapping) {
    EXPECT_EQ(QXHHintText(QStringLiteral("Zeile eins^MZeile zwei")),
              QStringLiteral("Zeile eins\nZeile zwei"));
    EXPECT_EQ(ReplaceString(QStringLiteral("a^Mb^Mc"), QStringLiteral("^M"), QStringLiteral("-")),
              QStringLiteral("a-b-c"));
    const TRect one = QXHMeasure(QXHHintText(QStringLiteral("Zeile eins")));
    const TRect two = QXHMeasure(QXHHintText(QStringLiteral("Zeile eins^MZeile zwei")));
    EXPECT_EQ(two.Height(), 2 * one.Height());
    EXPECT_LE(two.Width(), 150);
    // Long text wraps at DefaultWidth; a narrower width gives more lines.
    const QString text = QStringLiteral("Ein langer Hinweis, der über mehrere Zeilen laufen muss.");
    const TRect wrapped = QXHMeasure(text);
    EXPECT_LE(wrapped.Width(), 150);
    EXPECT_GE(wrapped.Height(), 2 * one.Height());
    QXH_DefaultWidth = 60;
    EXPECT_GT(QXHMeasure(text).Height(), wrapped.Height());
}

TEST_F(Hint, CopyTransparentLeavesWhiteOut) {
    TBitmap dest(4, 1), source(4, 1);
    dest.Canvas()->Brush.Color = clBlue;
    dest.Canvas()->FillRect(Rect(0, 0, 4, 1));
    source.Canvas()->SetPixel(0, 0, clWhite);
    source.Canvas()->SetPixel(1, 0, clRed);
    source.Canvas()->SetPixel(2, 0, 0xFEFFFF);
    source.Canvas()->SetPixel(3, 0, clBlack);
    CopyTransparent(dest.Canvas(), source.Canvas(), 3, 1);
    EXPECT_EQ(dest.Canvas()->Pixels(0, 0), clBlue);
    EXPECT_EQ(dest.Canvas()->Pixels(1, 0), clRed);
    EXPECT_EQ(dest.Canvas()->Pixels(2, 0), 0xFEFFFF);
    // Only width pixels are copied.
    EXPECT_EQ(dest.Canvas()->Pixels(3, 0), clBlue);
}

TEST_F(Hint, TranslucentWindowWithAnAlphaShadow) {
    const TQXHintLayout layout = QXHLayoutHint({100, 200}, 120, 30, Rect(0, 0, 480, 320));
    const QImage bubble = composeOn(QImage(), layout, QStringLiteral("Durchscheinend"), true);
    const int w = 160, h = 70;
    EXPECT_EQ(qAlpha(bubble.pixel(w + 9, 0)), 0);
    EXPECT_EQ(qAlpha(bubble.pixel(w + 9, h + 9)), 0);
    const QRgb shadow = bubble.pixel(w + 4, 30);
    EXPECT_GT(qAlpha(shadow), 40);
    EXPECT_LT(qAlpha(shadow), 200);
    EXPECT_EQ(qRed(shadow) + qGreen(shadow) + qBlue(shadow), 0);
    EXPECT_EQ(bubble.pixel(w / 2, 4), qRgb(255, 255, 0));
    EXPECT_EQ(bubble.pixel(w / 2, 0), qRgb(0, 0, 0));

    // Shown over the busy background it looks shaped as well.
    const QImage background = apptest::busyBackground(480, 320);
    QImage shot = background;
    QPainter(&shot).drawImage(layout.Window.Left, layout.Window.Top, bubble);
    EXPECT_TRUE(shot.save(apptest::artefact(QStringLiteral("bubble-translucent.png"))));
}

TEST_F(Hint, WindowShowsWithoutTheFocusAndGoesOnKeyOrClick) {
    QWidget form;
    form.setGeometry(40, 40, 300, 200);
    auto* button = new QPushButton(QStringLiteral("Knopf"), &form);
    button->setGeometry(100, 120, 100, 30);
    button->setToolTip(QStringLiteral("Zeile eins^MZeile zwei"));
    auto* other = new QPushButton(QStringLiteral("Anderer"), &form);
    other->setGeometry(10, 10, 80, 30);
    form.show();
    form.activateWindow();
    other->setFocus();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&form));

    TQXHint hint;
    hint.EndLoading();
    const QPoint pointer = button->mapToGlobal(QPoint(50, 15));
    QCursor::setPos(pointer);
    Application()->ActivateHint(pointer);
    auto* window = qobject_cast<TQXHintWindow*>(Application()->HintWindow());
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(window->Params().Translucent);
    EXPECT_TRUE(window->testAttribute(Qt::WA_TranslucentBackground));
    EXPECT_TRUE(window->windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus));
    EXPECT_TRUE(window->windowFlags().testFlag(Qt::WindowTransparentForInput));
    EXPECT_EQ(QXH_Crs, (TPoint{pointer.x(), pointer.y()}));
    EXPECT_EQ(window->Caption(), QStringLiteral("Zeile eins^MZeile zwei"));
    EXPECT_EQ(window->geometry().size(), QXH_BakBitmap->Image().size());
    // Two lines of text in the balloon.
    const TRect two = QXHMeasure(QStringLiteral("Zeile eins\nZeile zwei"));
    EXPECT_EQ(window->height(), two.Height() + 40 + 10);
    EXPECT_EQ(QApplication::focusWidget(), other);
    EXPECT_EQ(QApplication::activeWindow(), &form);
    // What the window shows is the composed picture.
    const QImage shown = window->grab().toImage();
    EXPECT_EQ(shown.pixel(window->width() / 2, 0) & 0xFFFFFF, 0u);

    QTest::keyClick(other, Qt::Key_A);
    EXPECT_FALSE(window->isVisible());

    Application()->ActivateHint(pointer);
    EXPECT_TRUE(window->isVisible());
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_FALSE(window->isVisible());

    // A window moving under the hint ends it too: the picture would no longer match.
    Application()->ActivateHint(pointer);
    EXPECT_TRUE(window->isVisible());
    form.move(60, 60);
    EXPECT_FALSE(window->isVisible());

    // No control with a hint under the pointer: nothing shows.
    Application()->ActivateHint(other->mapToGlobal(QPoint(5, 5)));
    EXPECT_FALSE(window->isVisible());
}

TEST_F(Hint, RegistersItsClass) {
    TPaletteRegistry::Instance().Clear();
    Qxhint::Register();
    const auto classes = TPaletteRegistry::Instance().ClassesOnPage(QStringLiteral("QX Tools"));
    ASSERT_EQ(classes.size(), 1);
    EXPECT_EQ(classes[0].Name, QStringLiteral("TQXHint"));
    std::unique_ptr<QObject> made(classes[0].Create(nullptr));
    EXPECT_NE(qobject_cast<TQXHint*>(made.get()), nullptr);
}
