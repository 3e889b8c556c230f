// The hint on a real X server (run under xvfb-run by the app_x11 test): the pointer hovers a
// control, the bubble appears after HintPause and the screen is read back.
#include "AppSupport.h"
#include "Application.h"
#include "Qxhint.h"
#include "TestSupport.h"

#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QToolTip>
#include <gtest/gtest.h>

using apptest::shadowed;
using qxtest::pixelBGR;

namespace {

class HintX11 : public ::testing::Test {
protected:
    void SetUp() override {
        if (QGuiApplication::platformName() != QLatin1String("xcb"))
            GTEST_SKIP() << "needs an X server (the app_x11 test runs it under xvfb-run)";
        screen = QGuiApplication::primaryScreen()->geometry();
        form.setWindowFlag(Qt::FramelessWindowHint);
        form.setGeometry(screen);
        backdrop = new QLabel(&form);
        backdrop->setPixmap(
            QPixmap::fromImage(apptest::busyBackground(screen.width(), screen.height())));
        backdrop->setGeometry(0, 0, screen.width(), screen.height());
        button = new QPushButton(QStringLiteral("Knopf"), &form);
        button->setToolTip(QStringLiteral("Ein Hinweis"));
        form.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&form));
        hint = std::make_unique<TQXHint>();
        hint->SetHintPause(50);
        hint->SetHintHidePause(20000);
        hint->EndLoading();
    }
    void TearDown() override {
        hint.reset();
        Application()->SetShowHint(false);
        Application()->SetHintWindowClass({});
        Application()->SetShowHint(true);
    }
    // Moves the pointer onto the button placed at (x, y) and waits for the hint.
    TQXHintWindow* hover(int x, int y) {
        button->setGeometry(x, y, 90, 30);
        QTest::mouseMove(&form, QPoint(5, 5));
        QTest::qWait(30);
        QTest::mouseMove(button, QPoint(45, 15));
        auto* window = qobject_cast<TQXHintWindow*>(Application()->HintWindow());
        if (!window)
            return nullptr;
        if (!QTest::qWaitFor([&]() { return window->isVisible(); }, 5000))
            return nullptr;
        // Let the X server take the window's picture.
        QTest::qWait(200);
        return window;
    }
    QImage grabScreen() {
        return QGuiApplication::primaryScreen()->grabWindow(0).toImage().convertToFormat(
            QImage::Format_RGB32);
    }

    QRect screen;
    QWidget form;
    QLabel* backdrop = nullptr;
    QPushButton* button = nullptr;
    std::unique_ptr<TQXHint> hint;
};

unsigned at(const QImage& image, const QPoint& p) {
    return unsigned(pixelBGR(image, p.x(), p.y()));
}

} // namespace

TEST_F(HintX11, HoverShowsTheBubbleOverTheScreenBehindIt) {
    const QImage before = grabScreen();
    TQXHintWindow* window = hover(300, 400);
    ASSERT_NE(window, nullptr);
    EXPECT_FALSE(window->Params().Translucent);
    EXPECT_EQ(window->Position(), hpAboveRight);
    const QImage shot = grabScreen();
    EXPECT_TRUE(shot.save(apptest::artefact(QStringLiteral("bubble-xvfb.png"))));
    const QRect g = window->geometry();
    EXPECT_TRUE(apptest::zoomed(shot, g.adjusted(-60, -40, 60, 40), 3)
                    .save(apptest::artefact(QStringLiteral("bubble-xvfb-zoom.png"))));
    const int depth = 10, w = g.width() - depth, h = g.height() - depth;
    const QPoint o = g.topLeft();
    // Balloon colour, black outline.
    EXPECT_EQ(at(shot, o + QPoint(w / 2, 4)), unsigned(clYellow));
    EXPECT_EQ(at(shot, o + QPoint(w / 2, 0)), unsigned(clBlack));
    EXPECT_EQ(at(shot, o + QPoint(0, (h - 20) / 2)), unsigned(clBlack));
    EXPECT_EQ(at(shot, o + QPoint(w - 1, (h - 20) / 2)), unsigned(clBlack));
    // The shadow darkens what was on the screen, ShadowDepth to the right and below.
    for (const QPoint p : {QPoint(w + 4, 30), QPoint(w / 2, h - 20 + 5)})
        EXPECT_EQ(at(shot, o + p), shadowed(at(before, o + p))) << p.x() << "," << p.y();
    // Beside it the screen is as it was.
    for (const QPoint p : {QPoint(w + depth - 1, 1), QPoint(w + depth - 1, h + depth - 1),
                           QPoint(w + 20, 30), QPoint(-5, 10)})
        EXPECT_EQ(at(shot, o + p), at(before, o + p)) << p.x() << "," << p.y();
    // The tail leads to the pointer.
    const QPoint pointer = QCursor::pos();
    EXPECT_LE(std::abs(g.left() - pointer.x()), 4);
    EXPECT_LE(std::abs(g.top() + h - pointer.y()), 4);
    // The hint took neither the focus nor the activation.
    EXPECT_NE(QApplication::focusWidget(), static_cast<QWidget*>(window));
    EXPECT_NE(QApplication::activeWindow(), static_cast<QWidget*>(window));

    // A key press takes it down.
    QTest::keyClick(button, Qt::Key_Space);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(HintX11, NearTheRightAndBottomEdgesItTurnsAndStaysOnScreen) {
    TQXHintWindow* window = hover(screen.width() - 95, screen.height() - 35);
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(window->Position(), hpAboveLeft);
    EXPECT_TRUE(screen.contains(window->geometry()));
    // Neither the balloon nor its shadow lies under the pointer.
    EXPECT_FALSE(window->geometry().contains(QCursor::pos()));
    EXPECT_TRUE(apptest::zoomed(grabScreen(), window->geometry().adjusted(-60, -40, 60, 40), 3)
                    .save(apptest::artefact(QStringLiteral("bubble-xvfb-edge.png"))));
    Application()->CancelHint();

    hint->SetHintPosition(hpBelowRight);
    const QImage before = grabScreen();
    window = hover(screen.width() - 95, screen.height() - 35);
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(window->Position(), hpAboveLeft);
    EXPECT_TRUE(screen.contains(window->geometry()));
    // The tail is mirrored: the smallest circle at the bottom right, next to the pointer.
    const QImage shot = grabScreen();
    const QRect g = window->geometry();
    const int w = g.width() - 10, h = g.height() - 10;
    const unsigned tail = at(shot, g.topLeft() + QPoint(w - 3, h - 3));
    EXPECT_TRUE(tail == unsigned(clBlack) || tail == unsigned(clYellow)) << std::hex << tail;
    EXPECT_EQ(at(shot, g.topLeft() + QPoint(2, h - 3)), at(before, g.topLeft() + QPoint(2, h - 3)));
}

TEST_F(HintX11, CaretMBreaksTheLineAndAClickEndsIt) {
    button->setToolTip(QStringLiteral("Zeile eins"));
    TQXHintWindow* window = hover(200, 300);
    ASSERT_NE(window, nullptr);
    const int oneLine = window->height();
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_FALSE(window->isVisible());

    button->setToolTip(QStringLiteral("Zeile eins^MZeile zwei"));
    window = hover(400, 300);
    ASSERT_NE(window, nullptr);
    const int lineHeight = QFontMetrics(QXH_Font->ToQFont()).height();
    EXPECT_EQ(window->height(), oneLine + lineHeight);
}

TEST_F(HintX11, InactiveShowsNoHintAtAll) {
    hint->SetActive(false);
    button->setGeometry(300, 300, 90, 30);
    QTest::mouseMove(button, QPoint(45, 15));
    QTest::qWait(1500);
    EXPECT_EQ(Application()->HintWindow(), nullptr);
    EXPECT_FALSE(QToolTip::isVisible());
    const auto tops = QApplication::topLevelWidgets();
    for (QWidget* w : tops)
        EXPECT_FALSE(w->isVisible() && w->windowType() == Qt::ToolTip);
}
