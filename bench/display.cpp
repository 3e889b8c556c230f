// Frames of the animated display controls and the system figures the status panel reads.
#include "QXScroll.h"
#include "Qxpanel.h"
#include "Qxstars.h"
#include "QxutilSysStat.h"

#include <QApplication>
#include <QImage>
#include <benchmark/benchmark.h>

namespace {

// One timer tick of the control followed by the paint that shows it, as the screen sees it.
template <typename Control> void tickAndPaint(benchmark::State& state, Control& control) {
    QImage screen(control.size(), QImage::Format_RGB32);
    for (auto _ : state) {
        control.QXOnTime();
        control.render(&screen);
        benchmark::DoNotOptimize(screen.constBits());
    }
}

void BM_StarsFrame(benchmark::State& state) {
    TQXStars stars;
    stars.resize(640, 480);
    stars.SetRandomSeed(1);
    stars.SetMaxStars(500);
    stars.show();
    tickAndPaint(state, stars);
}
BENCHMARK(BM_StarsFrame)->Unit(benchmark::kMicrosecond);

void BM_ScrollTextTick(benchmark::State& state) {
    TQXScrollText text;
    text.resize(600, 40);
    text.SetCaption(QStringLiteral("Eine Laufschrift, die breiter ist als die sechshundert "
                                   "Pixel des Feldes, durch das sie läuft"));
    text.SetShadow(true);
    text.show();
    tickAndPaint(state, text);
}
BENCHMARK(BM_ScrollTextTick)->Unit(benchmark::kMicrosecond);

void BM_PanelChartTick(benchmark::State& state) {
    TQXPanel panel;
    panel.resize(300, 60);
    panel.SetStyle(sgCPU);
    panel.show();
    tickAndPaint(state, panel);
}
BENCHMARK(BM_PanelChartTick)->Unit(benchmark::kMicrosecond);

void BM_ReadCPUUsage(benchmark::State& state) {
    TCPUUsage usage;
    qint32 percent = 0;
    for (auto _ : state) {
        usage.Read(percent);
        benchmark::DoNotOptimize(percent);
    }
}
BENCHMARK(BM_ReadCPUUsage)->Unit(benchmark::kMicrosecond);

void BM_ReadMemoryStatus(benchmark::State& state) {
    const auto reader = qxtSystemReader();
    TMemoryStatus status;
    for (auto _ : state) {
        reader->ReadMemoryStatus(status);
        benchmark::DoNotOptimize(status);
    }
}
BENCHMARK(BM_ReadMemoryStatus)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
