// A picture box on a directory of 10,000 small pictures (BMP, GIF and PNG in turn): the time
// from Active to the first screen of thumbnails painted, and the whole scan beside find(1)
// reading the size and time of every file of the same directory.

#include "BenchSupport.h"
#include "GifBuilder.h"
#include "Qxpicbox.h"

#include <QApplication>
#include <QBuffer>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QImage>
#include <QSet>
#include <QTemporaryDir>
#include <QTimer>
#include <benchmark/benchmark.h>
#include <string>

namespace {

using qxbench::CpuCounter;

constexpr int kFiles = 10000;
constexpr int kSide = 32;

QString g_dir;

QByteArray encoded(const QImage& image, const char* format) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return bytes;
}

// Writes the pictures: a diagonal gradient shifted for each file, so no two are alike.
bool writePictures(const QString& dir) {
    for (int i = 0; i < kFiles; ++i) {
        std::vector<std::uint8_t> grey(std::size_t(kSide * kSide));
        QImage image(kSide, kSide, QImage::Format_RGB888);
        for (int y = 0; y < kSide; ++y)
            for (int x = 0; x < kSide; ++x) {
                const int v = (x * 5 + y * 3 + i) & 0xFF;
                grey[std::size_t(y * kSide + x)] = std::uint8_t(v);
                image.setPixel(x, y, qRgb(v, (v * 7 + i) & 0xFF, 255 - v));
            }
        QByteArray bytes;
        QString name = QStringLiteral("%1/pic%2.").arg(dir).arg(i, 5, 10, QLatin1Char('0'));
        switch (i % 3) {
        case 0:
            bytes = encoded(image, "BMP");
            name += QLatin1String("bmp");
            break;
        case 1:
            bytes = gifbuild::simpleGif(kSide, kSide, grey);
            name += QLatin1String("gif");
            break;
        default:
            bytes = encoded(image, "PNG");
            name += QLatin1String("png");
            break;
        }
        QFile f(name);
        if (!f.open(QIODevice::WriteOnly) || f.write(bytes) != bytes.size())
            return false;
    }
    return true;
}

// A box with a client area of 800 x 560 pixels (8 columns of 7 rows of 100 x 70 cells),
// listing the three kinds.
std::unique_ptr<TQXPicBox> makeBox(bool shown) {
    auto box = std::make_unique<TQXPicBox>();
    box->SetFilter(QStringLiteral("*.BMP;*.GIF;*.PNG"));
    box->SetPicPattern(g_dir + QStringLiteral("/*.*"));
    if (shown) {
        box->show();
        box->resize(800 + box->width() - box->ClientWidth(),
                    560 + box->height() - box->ClientHeight());
        QApplication::processEvents();
    }
    return box;
}

// Runs the event loop, as a program does, until done is called (at most a minute).
bool runUntil(const std::function<void(const std::function<void()>& done)>& start) {
    QEventLoop loop;
    bool finished = false;
    QTimer::singleShot(60000, &loop, &QEventLoop::quit);
    start([&]() {
        finished = true;
        loop.quit();
    });
    if (!finished)
        loop.exec();
    return finished;
}

// From setting Active until every cell of the first screen has been painted with its picture.
void BM_FirstScreen(benchmark::State& state) {
    int cells = 0;
    CpuCounter cpu(state);
    for (auto _ : state) {
        std::unique_ptr<TQXPicBox> box = makeBox(true);
        cells = box->Columns() * box->Rows();
        QSet<int> painted;
        QElapsedTimer clock;
        const bool done = runUntil([&](const std::function<void()>& done) {
            box->OnRequestFileName = [&](QObject*, int viewIndex, QString&, QString&) {
                painted.insert(viewIndex);
                if (painted.size() == cells)
                    done();
            };
            clock.start();
            box->SetActive(true);
        });
        const double seconds = double(clock.nsecsElapsed()) * 1e-9;
        state.SetIterationTime(seconds);
        if (!done)
            state.SkipWithError("the first screen was not painted");
        // The process's very first box: fonts, image readers and styles are loaded on the way.
        static const double firstInProcess = seconds;
        state.counters["first_ms"] = firstInProcess * 1000;
    }
    state.counters["cells"] = cells;
}

// From setting Active until the end handler has run; shown draws the cells meanwhile.
void scanAll(benchmark::State& state, bool shown) {
    int count = 0;
    CpuCounter cpu(state);
    for (auto _ : state) {
        std::unique_ptr<TQXPicBox> box = makeBox(shown);
        QElapsedTimer clock;
        runUntil([&](const std::function<void()>& done) {
            box->OnStopScan = [done](QObject*) { done(); };
            clock.start();
            box->SetActive(true);
        });
        state.SetIterationTime(double(clock.nsecsElapsed()) * 1e-9);
        count = box->PicCount();
    }
    if (count != kFiles)
        state.SkipWithError("wrong number of pictures");
    state.counters["files"] = count;
}

void BM_ScanHidden(benchmark::State& state) {
    scanAll(state, false);
}

void BM_ScanShown(benchmark::State& state) {
    scanAll(state, true);
}

// find reading the size and time of every file, its output read through a pipe.
void BM_findWithStat(benchmark::State& state) {
    long lines = 0;
    const std::string command = "find '" + g_dir.toStdString() + "' -type f -printf '%s %T@\\n'";
    CpuCounter cpu(state);
    for (auto _ : state) {
        QElapsedTimer clock;
        clock.start();
        lines = qxbench::countLines(command);
        if (lines < 0) {
            state.SkipWithError("cannot run find");
            break;
        }
        state.SetIterationTime(double(clock.nsecsElapsed()) * 1e-9);
    }
    if (lines != kFiles)
        state.SkipWithError("wrong number of files");
    state.counters["files"] = double(lines);
}

BENCHMARK(BM_FirstScreen)->Unit(benchmark::kMillisecond)->UseManualTime()->MinTime(2);
BENCHMARK(BM_ScanHidden)->Unit(benchmark::kMillisecond)->UseManualTime()->MinTime(2);
BENCHMARK(BM_ScanShown)->Unit(benchmark::kMillisecond)->UseManualTime()->MinTime(2);
BENCHMARK(BM_findWithStat)->Unit(benchmark::kMillisecond)->UseManualTime()->MinTime(2);

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    QTemporaryDir dir;
    if (!dir.isValid() || !writePictures(dir.path())) {
        std::fprintf(stderr, "cannot write the pictures\n");
        return 1;
    }
    g_dir = dir.path();
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
