// Decoding single-image GIF files: TGIFImage (load + first bitmap) against giflib's DGifSlurp
// and Qt's own GIF reader, all on the same bytes (encoded by giflib).
#include "QXGif.h"

#include "GiflibMemory.h"
#include <QBuffer>
#include <QGuiApplication>
#include <QImageReader>
#include <benchmark/benchmark.h>
#include <cmath>
#include <cstring>
#include <gif_lib.h>
#include <map>
#include <random>
#include <vector>

namespace {

using namespace giflibmem;

QByteArray encode(int width, int height, int colourBits, const std::vector<GifPixelType>& pixels) {
    std::vector<GifColorType> colours;
    for (int i = 0; i < (1 << colourBits); ++i) {
        const auto v = std::uint8_t(i * 255 / ((1 << colourBits) - 1));
        colours.push_back({v, std::uint8_t(255 - v), std::uint8_t(v / 2)});
    }
    QByteArray out;
    int error = 0;
    GifFileType* gif = EGifOpen(&out, writeToBuffer, &error);
    ColorMapObject* map = GifMakeMapObject(1 << colourBits, colours.data());
    EGifPutScreenDesc(gif, width, height, colourBits, 0, map);
    EGifPutImageDesc(gif, 0, 0, width, height, false, nullptr);
    for (int y = 0; y < height; ++y)
        EGifPutLine(gif, const_cast<GifPixelType*>(&pixels[std::size_t(y) * width]), width);
    EGifCloseFile(gif, &error);
    GifFreeMapObject(map);
    return out;
}

// A photograph reduced to 256 colours: smooth shading with dithering noise.
QByteArray photoGif(int size) {
    std::mt19937 rng(1);
    std::vector<GifPixelType> pixels(std::size_t(size) * size);
    for (int y = 0; y < size; ++y)
        for (int x = 0; x < size; ++x) {
            const double shade = 127.5 + 60 * std::sin(x / 97.0) * std::cos(y / 61.0) +
                                 50 * std::sin((x + y) / 233.0);
            const int noisy = int(shade) + int(rng() % 9) - 4;
            pixels[std::size_t(y) * size + x] = GifPixelType(std::clamp(noisy, 0, 255));
        }
    return encode(size, size, 8, pixels);
}

// A two-colour drawing: large flat areas, circles and stripes.
QByteArray flatGif(int size) {
    std::vector<GifPixelType> pixels(std::size_t(size) * size);
    for (int y = 0; y < size; ++y)
        for (int x = 0; x < size; ++x) {
            const int dx = x % 400 - 200, dy = y % 300 - 150;
            const bool inCircle = dx * dx + dy * dy < 120 * 120;
            const bool stripe = (y / 40) % 5 == 0 && x > size / 3;
            pixels[std::size_t(y) * size + x] = GifPixelType(inCircle != stripe);
        }
    return encode(size, size, 1, pixels);
}

const QByteArray& sample(int kind, int size) {
    static std::map<std::pair<int, int>, QByteArray> cache;
    QByteArray& bytes = cache[{kind, size}];
    if (bytes.isEmpty())
        bytes = kind == 0 ? photoGif(size) : flatGif(size);
    return bytes;
}

void setLabel(benchmark::State& state) {
    const QByteArray& bytes = sample(int(state.range(0)), int(state.range(1)));
    state.SetLabel((state.range(0) == 0 ? "photo-256 " : "flat-2 ") + std::to_string(bytes.size()) +
                   " bytes");
    state.SetItemsProcessed(state.iterations() * state.range(1) * state.range(1));
}

void BM_QXGif(benchmark::State& state) {
    const QByteArray& bytes = sample(int(state.range(0)), int(state.range(1)));
    for (auto _ : state) {
        QBuffer buffer;
        buffer.setData(bytes);
        buffer.open(QIODevice::ReadOnly);
        TGIFImage gif;
        gif.LoadFromStream(buffer);
        TBitmap* bitmap = gif.GetBitmap();
        benchmark::DoNotOptimize(bitmap->Image().constBits());
    }
    setLabel(state);
}

void BM_Giflib(benchmark::State& state) {
    const QByteArray& bytes = sample(int(state.range(0)), int(state.range(1)));
    for (auto _ : state) {
        Reader reader{&bytes};
        int error = 0;
        GifFileType* gif = DGifOpen(&reader, readFromBuffer, &error);
        if (!gif || DGifSlurp(gif) != GIF_OK)
            state.SkipWithError("giflib failed");
        benchmark::DoNotOptimize(gif->SavedImages[0].RasterBits);
        DGifCloseFile(gif, &error);
    }
    setLabel(state);
}

void BM_QtGif(benchmark::State& state) {
    const QByteArray& bytes = sample(int(state.range(0)), int(state.range(1)));
    for (auto _ : state) {
        QBuffer buffer;
        buffer.setData(bytes);
        buffer.open(QIODevice::ReadOnly);
        QImageReader reader(&buffer, "gif");
        const QImage image = reader.read();
        if (image.isNull())
            state.SkipWithError("Qt failed");
        benchmark::DoNotOptimize(image.constBits());
    }
    setLabel(state);
}

// Photo-like (0) and flat (1) images, 512 and 2049 pixels square.
void sizes(benchmark::internal::Benchmark* b) {
    for (int kind : {0, 1})
        for (int size : {512, 2049})
            b->Args({kind, size});
    b->Unit(benchmark::kMillisecond)->Repetitions(9)->ReportAggregatesOnly(true);
}

BENCHMARK(BM_QXGif)->Apply(sizes);
BENCHMARK(BM_Giflib)->Apply(sizes);
BENCHMARK(BM_QtGif)->Apply(sizes);

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
