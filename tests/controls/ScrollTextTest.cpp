#include "ControlHost.h"
#include "QXScroll.h"
#include "TestSupport.h"

#include <QFontMetrics>
#include <gtest/gtest.h>

namespace {

// Ticks until OnStartText fires (at most limit ticks); returns the number of ticks.
int ticksToRestart(TQXScrollText& text, int limit = 10000) {
    int restarts = 0;
    text.OnStartText = [&](QObject*) { ++restarts; };
    int ticks = 0;
    while (restarts == 0 && ticks < limit) {
        text.QXOnTime();
        ++ticks;
    }
    text.OnStartText = nullptr;
    return ticks;
}

} // namespace

TEST(QXScrollText, DefaultsAndIntervalSigns) {
    qxtest::ControlHost host;
    TQXScrollText text(&host);
    text.show();
    EXPECT_EQ(text.size(), QSize(75, 50));
    EXPECT_EQ(text.sizeHint(), QSize(75, 50));
    EXPECT_EQ(text.Interval(), 0);
    EXPECT_FALSE(text.Timer()->Enabled());
    EXPECT_TRUE(text.ScrollHorizontal());
    EXPECT_EQ(text.Steps(), 1);
    EXPECT_EQ(text.ShadowColor(), clWhite);
    EXPECT_EQ(text.About_QXTools(), QStringLiteral("01.05.98"));
    text.SetShadowDepth(0);
    EXPECT_EQ(text.ShadowDepth(), 1);

    // Positive: at least 20 ms, the text comes in from the right and bottom edges.
    text.SetInterval(5);
    EXPECT_EQ(text.Interval(), 20);
    EXPECT_EQ(text.Timer()->Interval(), 20);
    EXPECT_TRUE(text.Timer()->Enabled());
    EXPECT_EQ((QPoint(text.PosX(), text.PosY())), QPoint(75, 50));
    // Negative: the sign is kept, the magnitude ticks, the text starts 10 pixels in.
    text.SetInterval(-5);
    EXPECT_EQ(text.Interval(), -20);
    EXPECT_EQ(text.Timer()->Interval(), 20);
    EXPECT_TRUE(text.Timer()->Enabled());
    EXPECT_EQ((QPoint(text.PosX(), text.PosY())), QPoint(10, 0));
    text.SetInterval(-300);
    EXPECT_EQ(text.Timer()->Interval(), 300);
    EXPECT_EQ((QPoint(text.PosX(), text.PosY())), QPoint(10, 0));
    text.SetInterval(0);
    EXPECT_FALSE(text.Timer()->Enabled());
    EXPECT_EQ((QPoint(text.PosX(), text.PosY())), QPoint(0, 0));
}

TEST(QXScrollText, HorizontalTicksAndRestart) {
    qxtest::ControlHost host;
    TQXScrollText text(&host);
    text.show();
    text.resize(100, 30);
    text.SetCaption(QStringLiteral("Hallo Welt"));
    text.SetInterval(50);
    text.SetSteps(3);
    int scrolls = 0;
    text.OnScroll = [&](QObject*) { ++scrolls; };
    for (int i = 0; i < 10; ++i)
        text.QXOnTime();
    EXPECT_EQ(text.PosX(), 70);
    EXPECT_EQ(scrolls, 10);
    const QFontMetrics fm(text.Font()->ToQFont());
    EXPECT_EQ(text.PosY(), (30 - fm.height()) / 2);

    // The text runs until it is wholly left of the edge, then starts again at the right.
    const int width = fm.horizontalAdvance(QStringLiteral("Hallo Welt"));
    const int fromHere = ticksToRestart(text);
    EXPECT_EQ(fromHere, (70 + width) / 3 + 1);
    EXPECT_EQ(text.PosX(), 100);
    EXPECT_EQ(ticksToRestart(text), (100 + width) / 3 + 1);

    // Steps 0: one "X" per tick.
    text.SetSteps(0);
    text.QXOnTime();
    EXPECT_EQ(text.PosX(), 100 - fm.horizontalAdvance(QStringLiteral("X")));
}

TEST(QXScrollText, VerticalTicksAndRestart) {
    qxtest::ControlHost host;
    TQXScrollText text(&host);
    text.show();
    text.resize(120, 80);
    text.SetScrollHorizontal(false);
    text.SetCaption(QStringLiteral("Zeile^MZweite Zeile"));
    text.SetInterval(40);
    text.SetSteps(2);
    EXPECT_EQ(text.PosY(), 80);
    for (int i = 0; i < 5; ++i)
        text.QXOnTime();
    EXPECT_EQ(text.PosY(), 70);
    // Centred across as a block; both lines must leave the top before the text comes back at
    // the bottom.
    const QFontMetrics fm(text.Font()->ToQFont());
    const QRect block = fm.boundingRect(QRect(0, 0, 120, 80), Qt::AlignHCenter | Qt::TextWordWrap,
                                        QStringLiteral("Zeile\nZweite Zeile"));
    EXPECT_GT(block.height(), fm.height());
    EXPECT_EQ(text.PosX(), (120 - block.width()) / 2);
    EXPECT_EQ(ticksToRestart(text), (70 + block.height()) / 2 + 1);
    EXPECT_EQ(text.PosY(), 80);
    text.SetSteps(0);
    text.QXOnTime();
    EXPECT_EQ(text.PosY(), 80 - fm.height());
}

TEST(QXScrollText, AutoScrollRunsOnlyWhatDoesNotFit) {
    qxtest::ControlHost host;
    TQXScrollText text(&host);
    text.show();
    text.resize(200, 30);
    text.SetAutoScroll(true);
    text.SetInterval(50);
    text.SetCaption(QStringLiteral("kurz"));
    EXPECT_FALSE(text.Timer()->Enabled());
    EXPECT_EQ((QPoint(text.PosX(), text.PosY())), QPoint(0, 0));
    text.SetCaption(QStringLiteral("ein Text, der sehr viel breiter ist als das ganze Feld"));
    EXPECT_TRUE(text.Timer()->Enabled());
    EXPECT_EQ(text.PosX(), 0);
}

TEST(QXScrollText, ShadowAndTheRestingTimer) {
    qxtest::ControlHost host;
    TQXScrollText text(&host);
    text.show();
    text.resize(120, 40);
    text.SetColor(clBlack);
    text.Font()->SetColor(clWhite);
    text.SetCaption(QStringLiteral("HI"));
    text.SetInterval(-20);
    text.SetShadow(true);
    text.SetShadowColor(clBlue);
    text.SetShadowDepth(3);
    bool restingDuringPaint = false;
    text.OnScroll = [&](QObject*) {
        // Called inside the tick before the frame: the timer still runs here.
        EXPECT_TRUE(text.Timer()->Enabled());
    };
    text.QXOnTime();
    EXPECT_TRUE(text.Timer()->Enabled());
    const QImage image = qxtest::renderControl(text);
    const QRect white =
        qxtest::pixelBounds(image, [](QRgb p) { return QColorToTColor(QColor(p)) == clWhite; });
    const QRect blue =
        qxtest::pixelBounds(image, [](QRgb p) { return QColorToTColor(QColor(p)) == clBlue; });
    ASSERT_FALSE(white.isEmpty());
    EXPECT_EQ(blue.bottomRight(), white.bottomRight() + QPoint(3, 3));
    // The tick moved the text from 10 to 9 pixels in.
    EXPECT_EQ(text.PosX(), 9);
    EXPECT_GE(white.left(), 9);
    EXPECT_LE(white.left(), 12);
    // The restart happens inside the frame, while the timer rests.
    text.OnStartText = [&](QObject*) { restingDuringPaint = !text.Timer()->Enabled(); };
    text.SetInterval(-20);
    for (int i = 0; i < 200 && !restingDuringPaint; ++i)
        text.QXOnTime();
    EXPECT_TRUE(restingDuringPaint);
    EXPECT_TRUE(text.Timer()->Enabled());
}
