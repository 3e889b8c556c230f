// One frame of the LCD panel, the dot-matrix marquee and the gauge, each painted into an
// off-screen image, beside the Qt widget that does the same job (QLCDNumber, QProgressBar).
#include "QXGauge.h"
#include "Qxdotpan.h"
#include "Qxlcdpan.h"

#include <QApplication>
#include <QImage>
#include <QLCDNumber>
#include <QProgressBar>
#include <benchmark/benchmark.h>

namespace {

QApplication& app() {
    static int argc = 1;
    static char name[] = "bench_display1";
    static char* argv[] = {name, nullptr};
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    static QApplication a(argc, argv);
    return a;
}

// Paints the widget into the image the way a screen update would.
void paint(QWidget& w, QImage& image) {
    w.render(&image);
    benchmark::DoNotOptimize(image.constBits());
}

QImage imageFor(const QWidget& w) {
    return QImage(w.size(), QImage::Format_RGB32);
}

// 20 x 4 cells of 30 x 40 pixels, with text in every row.
void setUpLCD(TQXLCDPanel& lcd) {
    lcd.SetColumns(20);
    lcd.SetRows(4);
    lcd.SetBounds(0, 0, 600, 160);
    TStringList lines;
    lines.Add(QStringLiteral("QXTOOLS LCD PANEL 20"));
    lines.Add(QStringLiteral("0123456789 ABCDEFGHI"));
    lines.Add(QStringLiteral("JKLMNOPQRSTUVWXYZ+-*"));
    lines.Add(QStringLiteral("TIME 12:30 TEMP 21.5"));
    lcd.SetItems(&lines);
}

// Repainting an unchanged panel.
void BM_LCDPanel20x4(benchmark::State& state) {
    app();
    TQXLCDPanel lcd;
    setUpLCD(lcd);
    QImage image = imageFor(lcd);
    paint(lcd, image);
    for (auto _ : state)
        paint(lcd, image);
}
BENCHMARK(BM_LCDPanel20x4)->Unit(benchmark::kMicrosecond)->UseRealTime();

// The same panel with a new lit colour every frame: every character is drawn afresh.
void BM_LCDPanel20x4NewColour(benchmark::State& state) {
    app();
    TQXLCDPanel lcd;
    setUpLCD(lcd);
    QImage image = imageFor(lcd);
    int shade = 0;
    for (auto _ : state) {
        shade = (shade + 1) % 256;
        lcd.SetLCDHiColor(RGB(0, 255, shade));
        paint(lcd, image);
    }
}
BENCHMARK(BM_LCDPanel20x4NewColour)->Unit(benchmark::kMicrosecond)->UseRealTime();

// 80 digits on the same 600 x 160 pixels.
void BM_QLCDNumber80(benchmark::State& state) {
    app();
    QLCDNumber lcd(80);
    lcd.resize(600, 160);
    lcd.setSegmentStyle(QLCDNumber::Filled);
    lcd.display(QStringLiteral("01234567890123456789012345678901234567890123456789012345678901234"
                               "567890123456789"));
    QImage image = imageFor(lcd);
    paint(lcd, image);
    for (auto _ : state)
        paint(lcd, image);
}
BENCHMARK(BM_QLCDNumber80)->Unit(benchmark::kMicrosecond)->UseRealTime();

// A 40-column marquee scrolling by pixels: one tick and its paint (840 x 27 pixels).
void BM_DOTPanelMarqueeTick(benchmark::State& state) {
    app();
    TQXDOTPanel dot;
    dot.SetColumns(40);
    dot.SetScrollChar(false);
    dot.SetCaption(
        QStringLiteral("QXTools dot-matrix marquee: 0123456789 ABCDEFGHIJKLMNOPQRSTUVWXYZ"));
    dot.SetInterval(20);
    QImage image(840, 27, QImage::Format_RGB32);
    dot.render(&image); // the first paint gives the control its natural size
    for (auto _ : state) {
        dot.QXOnTime();
        paint(dot, image);
    }
}
BENCHMARK(BM_DOTPanelMarqueeTick)->Unit(benchmark::kMicrosecond)->UseRealTime();

// The same 840 x 27 pixels showing 40 digits that change every frame.
void BM_QLCDNumber40(benchmark::State& state) {
    app();
    QLCDNumber lcd(40);
    lcd.resize(840, 27);
    lcd.setSegmentStyle(QLCDNumber::Filled);
    const QString digits = QStringLiteral("0123456789012345678901234567890123456789012345678");
    QImage image = imageFor(lcd);
    int shift = 0;
    for (auto _ : state) {
        lcd.display(digits.mid(shift, 40));
        shift = (shift + 1) % 10;
        paint(lcd, image);
    }
}
BENCHMARK(BM_QLCDNumber40)->Unit(benchmark::kMicrosecond)->UseRealTime();

// 30 boxes on 300 x 24 pixels; every update lights another box count.
void BM_Gauge30Boxes(benchmark::State& state) {
    app();
    TQXGauge gauge;
    gauge.SetShowPeak(false);
    gauge.SetBoxes(30);
    gauge.SetBounds(0, 0, 300, 24);
    QImage image = imageFor(gauge);
    int value = 0;
    for (auto _ : state) {
        value = (value + 7) % 101;
        gauge.SetProgress(value);
        paint(gauge, image);
    }
}
BENCHMARK(BM_Gauge30Boxes)->Unit(benchmark::kMicrosecond)->UseRealTime();

void BM_QProgressBar(benchmark::State& state) {
    app();
    QProgressBar bar;
    bar.resize(300, 24);
    bar.setRange(0, 100);
    QImage image = imageFor(bar);
    int value = 0;
    for (auto _ : state) {
        value = (value + 7) % 101;
        bar.setValue(value);
        paint(bar, image);
    }
}
BENCHMARK(BM_QProgressBar)->Unit(benchmark::kMicrosecond)->UseRealTime();

} // namespace

BENCHMARK_MAIN();
