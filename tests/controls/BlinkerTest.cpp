#include "ControlHost.h"
#include "QxBlink.h"
#include "TCustomLabel.h"
#include "TCustomPanel.h"
#include "TestSupport.h"

#include <QLabel>
#include <gtest/gtest.h>

TEST(QXBlinker, Defaults) {
    TQXBlinker blinker;
    EXPECT_FALSE(blinker.Blink());
    EXPECT_EQ(blinker.BlinkHiColor(), clYellow);
    EXPECT_EQ(blinker.BlinkLoColor(), clOlive);
    EXPECT_EQ(blinker.BlinkInAktColor(), clBtnFace);
    EXPECT_EQ(blinker.BlinkStyle(), bsColor);
    EXPECT_EQ(blinker.Interval(), 1000);
    EXPECT_EQ(blinker.Control(), nullptr);
    EXPECT_FALSE(blinker.Timer()->Enabled());
    EXPECT_EQ(blinker.GetControlColor(), 0);
    EXPECT_EQ(blinker.About_QXTools(), QStringLiteral("15.11.96"));
    blinker.SetInterval(10);
    EXPECT_EQ(blinker.Interval(), 20);
    EXPECT_EQ(blinker.Timer()->Interval(), 20);
}

TEST(QXBlinker, BackgroundBlinksAndRests) {
    qxtest::ControlHost host;
    TCustomPanel panel(&host);
    panel.show();
    panel.SetColor(clSilver);
    TQXBlinker blinker;
    blinker.SetBlink(true);
    EXPECT_TRUE(blinker.Timer()->Enabled());
    // Without a control the ticks change nothing and the phase stays where it was.
    blinker.QXOnTime();
    blinker.QXOnTime();
    blinker.QXOnTime();
    blinker.SetControl(&panel);
    EXPECT_EQ(blinker.BlinkInAktColor(), clSilver);
    QList<TColor> seen;
    for (int i = 0; i < 3; ++i) {
        blinker.QXOnTime();
        seen << panel.Color();
    }
    EXPECT_EQ(seen, (QList<TColor>{clYellow, clOlive, clYellow}));
    EXPECT_EQ(qxtest::pixelBGR(qxtest::renderControl(panel), 20, 20), clYellow);
    blinker.SetBlink(false);
    EXPECT_EQ(panel.Color(), clSilver);
    EXPECT_FALSE(blinker.Timer()->Enabled());
    // Switched on again, the high colour comes first.
    blinker.SetBlink(true);
    blinker.QXOnTime();
    EXPECT_EQ(panel.Color(), clYellow);
    // A new resting colour applies at once.
    blinker.SetBlinkInAktColor(clAqua);
    EXPECT_EQ(panel.Color(), clAqua);
}

TEST(QXBlinker, FontColourStyleAndRetargeting) {
    qxtest::ControlHost host;
    TCustomLabel label(&host);
    label.show();
    label.SetCaption(QStringLiteral("Achtung"));
    label.SetColor(clWhite);
    label.Font()->SetColor(clRed);
    TQXBlinker blinker;
    blinker.SetBlinkStyle(bsFontColor);
    blinker.SetControl(&label);
    EXPECT_EQ(blinker.BlinkInAktColor(), clRed);
    blinker.SetBlink(true);
    for (int i = 0; i < 5; ++i)
        blinker.QXOnTime();
    EXPECT_EQ(label.Font()->Color(), clYellow);
    EXPECT_EQ(label.Color(), clWhite);
    blinker.SetBlink(false);
    EXPECT_EQ(label.Font()->Color(), clRed);

    // A style change restores the old resting colour and takes the new one from the control.
    blinker.SetBlink(true);
    blinker.QXOnTime();
    blinker.SetBlinkStyle(bsColor);
    EXPECT_EQ(label.Font()->Color(), clRed);
    EXPECT_EQ(blinker.BlinkInAktColor(), clWhite);

    // Another control: the first one rests again, the new one gives the resting colour.
    TCustomPanel panel(&host);
    panel.show();
    panel.SetColor(clTeal);
    blinker.QXOnTime();
    EXPECT_EQ(label.Color(), clOlive);
    blinker.SetControl(&panel);
    EXPECT_EQ(label.Color(), clWhite);
    EXPECT_EQ(blinker.BlinkInAktColor(), clTeal);
}

TEST(QXBlinker, PlainWidgetsAndRemoval) {
    qxtest::ControlHost host;
    auto* label = new QLabel(QStringLiteral("Hinweis"), &host);
    label->show();
    TQXBlinker blinker;
    blinker.SetControl(label);
    const TColor resting = blinker.BlinkInAktColor();
    blinker.SetBlink(true);
    blinker.QXOnTime();
    EXPECT_EQ(QColorToTColor(label->palette().color(label->backgroundRole())), clYellow);
    EXPECT_TRUE(label->autoFillBackground());
    EXPECT_EQ(qxtest::pixelBGR(qxtest::renderControl(*label), 1, 1), clYellow);
    blinker.SetBlink(false);
    EXPECT_EQ(QColorToTColor(label->palette().color(label->backgroundRole())), resting);
    // The control goes away: no control, no blinking.
    blinker.SetBlink(true);
    delete label;
    EXPECT_EQ(blinker.Control(), nullptr);
    EXPECT_FALSE(blinker.Blink());
    EXPECT_FALSE(blinker.Timer()->Enabled());
}
