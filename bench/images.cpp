// The effects image's random dissolve and the fill image's rainbows.
#include "Qxfimage.h"
#include "Qxfximg.h"

#include <QApplication>
#include <QImage>
#include <benchmark/benchmark.h>

namespace {

// The dissolve without its pauses: what remains is the block list, the shuffle, the block
// copies and the screen updates at each pause.
class TUnpausedFx : public TQXFxImage {
public:
    void Delay(int) override {}
};

void dissolve(benchmark::State& state, bool shown) {
    TUnpausedFx fx;
    fx.resize(400, 300);
    TBitmap picture(400, 300);
    picture.Canvas()->Brush.Color = 0x3080C0;
    picture.Canvas()->FillRect(Rect(0, 0, 400, 300));
    fx.SetPicture(&picture);
    fx.SetFadeStyle(qxfsRandom);
    if (shown)
        fx.show();
    for (auto _ : state) {
        fx.FadeIn();
        benchmark::DoNotOptimize(fx.ScreenImage().constBits());
    }
    state.counters["blocks"] = fx.Count();
}

// The dissolve's own work: the control is hidden, so the screen updates cost nothing.
void BM_FxRandomDissolve400x300(benchmark::State& state) {
    dissolve(state, false);
}
BENCHMARK(BM_FxRandomDissolve400x300)->Unit(benchmark::kMillisecond);

// With the control on screen (offscreen platform): 100 repaints of the control as well.
void BM_FxRandomDissolve400x300Shown(benchmark::State& state) {
    dissolve(state, true);
}
BENCHMARK(BM_FxRandomDissolve400x300Shown)->Unit(benchmark::kMillisecond);

// One paint of a 1920 x 1080 rainbow (64 bands) into an image of its size.
void rainbow(benchmark::State& state, TFStyle style) {
    TQXFillImage fill;
    fill.resize(1920, 1080);
    fill.SetFillStyle(style);
    QImage screen(fill.size(), QImage::Format_RGB32);
    for (auto _ : state) {
        fill.render(&screen);
        benchmark::DoNotOptimize(screen.constBits());
    }
}

void BM_FillVerticalRainbow1920x1080(benchmark::State& state) {
    rainbow(state, vRAINBOW);
}
BENCHMARK(BM_FillVerticalRainbow1920x1080)->Unit(benchmark::kMillisecond);

void BM_FillHorizontalRainbow1920x1080(benchmark::State& state) {
    rainbow(state, hRAINBOW);
}
BENCHMARK(BM_FillHorizontalRainbow1920x1080)->Unit(benchmark::kMillisecond);

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
