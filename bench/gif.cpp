// Decoding single-image GIF files: TGIFImage (load + first bitmap) against giflib's DGifSlurp
// and Qt's own GIF reader, all on the same bytes (encoded by giflib), decode after decode in
// one process (warm) and as the first decode of a new process (fresh).
#include "QXGif.h"

#include "GiflibMemory.h"
#include <QBuffer>
#include <QFile>
#include <QGuiApplication>
#include <QImageReader>
#include <QProcess>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <gif_lib.h>
#include <map>
#include <random>
#include <sys/resource.h>
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

long minorFaults() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_minflt;
}

// Counts the minor page faults of the decodes (pages the process touches for the first time,
// or again after giving them back) as "faults" per decode.
class FaultCounter {
public:
    explicit FaultCounter(benchmark::State& state) : m_state(state), m_start(minorFaults()) {}
    ~FaultCounter() {
        m_state.counters["faults"] =
            benchmark::Counter(double(minorFaults() - m_start), benchmark::Counter::kAvgIterations);
    }
    FaultCounter(const FaultCounter&) = delete;
    FaultCounter& operator=(const FaultCounter&) = delete;

private:
    benchmark::State& m_state;
    long m_start;
};

void setLabel(benchmark::State& state) {
    const QByteArray& bytes = sample(int(state.range(0)), int(state.range(1)));
    state.SetLabel((state.range(0) == 0 ? "photo-256 " : "flat-2 ") + std::to_string(bytes.size()) +
                   " bytes");
    state.SetItemsProcessed(state.iterations() * state.range(1) * state.range(1));
}

// The three decoders, each from the file's bytes to the first picture; false on failure.
enum Decoder { kQXGif, kGiflib, kQt };

bool decode(Decoder decoder, const QByteArray& bytes) {
    if (decoder == kGiflib) {
        Reader reader{&bytes};
        int error = 0;
        GifFileType* gif = DGifOpen(&reader, readFromBuffer, &error);
        if (!gif)
            return false;
        const bool ok = DGifSlurp(gif) == GIF_OK;
        if (ok)
            benchmark::DoNotOptimize(gif->SavedImages[0].RasterBits);
        DGifCloseFile(gif, &error);
        return ok;
    }
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    if (decoder == kQt) {
        QImageReader reader(&buffer, "gif");
        const QImage image = reader.read();
        benchmark::DoNotOptimize(image.constBits());
        return !image.isNull();
    }
    TGIFImage gif;
    gif.LoadFromStream(buffer);
    benchmark::DoNotOptimize(gif.GetBitmap()->Image().constBits());
    return true;
}

// Warm process: decode after decode in this process.
template <Decoder D> void BM_Warm(benchmark::State& state) {
    const QByteArray& bytes = sample(int(state.range(0)), int(state.range(1)));
    FaultCounter faults(state);
    for (auto _ : state)
        if (!decode(D, bytes))
            state.SkipWithError("decoding failed");
    setLabel(state);
}

// Fresh process: each decode is the first of a new process (this program started again with
// --fresh DECODER FILE), which reads the file and reports the time and the minor page faults
// of the decode alone.
constexpr const char* kFreshOption = "--fresh";

int freshDecode(const char* decoder, const char* path) {
    QFile file(QString::fromLocal8Bit(path));
    if (!file.open(QIODevice::ReadOnly))
        return 1;
    const QByteArray bytes = file.readAll();
    const long faultsBefore = minorFaults();
    const auto start = std::chrono::steady_clock::now();
    const bool ok = decode(Decoder(std::atoi(decoder)), bytes);
    const auto end = std::chrono::steady_clock::now();
    const long faults = minorFaults() - faultsBefore;
    std::printf("%lld %ld\n", static_cast<long long>(std::chrono::nanoseconds(end - start).count()),
                faults);
    return ok ? 0 : 1;
}

const QString& sampleFile(int kind, int size) {
    static QTemporaryDir dir;
    static std::map<std::pair<int, int>, QString> paths;
    QString& path = paths[{kind, size}];
    if (path.isEmpty()) {
        path = dir.filePath(QStringLiteral("%1-%2.gif").arg(kind).arg(size));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(sample(kind, size)) < 0)
            path.clear();
    }
    return path;
}

template <Decoder D> void BM_Fresh(benchmark::State& state) {
    const QString& path = sampleFile(int(state.range(0)), int(state.range(1)));
    double faults = 0;
    for (auto _ : state) {
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(),
                    {QString::fromLatin1(kFreshOption), QString::number(D), path});
        long long nanoseconds = 0;
        long childFaults = 0;
        if (path.isEmpty() || !child.waitForFinished(60000) || child.exitCode() != 0 ||
            std::sscanf(child.readAllStandardOutput().constData(), "%lld %ld", &nanoseconds,
                        &childFaults) != 2) {
            state.SkipWithError("decoding in a fresh process failed");
            break;
        }
        state.SetIterationTime(double(nanoseconds) * 1e-9);
        faults += double(childFaults);
    }
    state.counters["faults"] = benchmark::Counter(faults, benchmark::Counter::kAvgIterations);
    setLabel(state);
}

// Photo-like (0) and flat (1) images, 512 and 2049 pixels square.
void sizes(benchmark::internal::Benchmark* b) {
    for (int kind : {0, 1})
        for (int size : {512, 2049})
            b->Args({kind, size});
    b->Unit(benchmark::kMillisecond)->Repetitions(9)->ReportAggregatesOnly(true);
}

// One decode per repetition, each in a process of its own.
void freshSizes(benchmark::internal::Benchmark* b) {
    sizes(b);
    b->Iterations(1)->UseManualTime();
}

BENCHMARK(BM_Warm<kQXGif>)->Name("BM_QXGif")->Apply(sizes);
BENCHMARK(BM_Warm<kGiflib>)->Name("BM_Giflib")->Apply(sizes);
BENCHMARK(BM_Warm<kQt>)->Name("BM_QtGif")->Apply(sizes);
BENCHMARK(BM_Fresh<kQXGif>)->Name("BM_QXGifFresh")->Apply(freshSizes);
BENCHMARK(BM_Fresh<kGiflib>)->Name("BM_GiflibFresh")->Apply(freshSizes);
BENCHMARK(BM_Fresh<kQt>)->Name("BM_QtGifFresh")->Apply(freshSizes);

} // namespace

int main(int argc, char** argv) {
    if (argc == 4 && std::strcmp(argv[1], kFreshOption) == 0) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        QGuiApplication app(argc, argv);
        return freshDecode(argv[2], argv[3]);
    }
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
