// Reading the format of many small WAV files: qxtGetWavInfo and TQXWAV's FileName against
// libsndfile's sf_open on the same files; and painting the waveform of a 100 MB file into a
// 1000-pixel control.
#include "QXWAV.h"
#include "Qxutil.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QtEndian>
#include <benchmark/benchmark.h>
#include <sndfile.h>
#include <vector>

namespace {

constexpr int fileCount = 10000;

QByteArray le32(quint32 v) {
    QByteArray out(4, '\0');
    qToLittleEndian(v, out.data());
    return out;
}

// 16-bit stereo at 44100 Hz with a LIST chunk before "fmt ", as many editors write them.
QByteArray wavFile(int dataBytes) {
    const QByteArray fmt = QByteArray::fromHex("0100020044AC000010B1020004001000");
    const QByteArray list = "INFOISFT" + le32(6) + QByteArray("bench", 6);
    const QByteArray body = "WAVE" + ("LIST" + le32(quint32(list.size())) + list) +
                            ("fmt " + le32(16) + fmt) +
                            ("data" + le32(quint32(dataBytes)) + QByteArray(dataBytes, '\x11'));
    return "RIFF" + le32(quint32(body.size())) + body;
}

// The directory of test files: in memory (/dev/shm) where it exists, so the disk is not timed.
const QTemporaryDir& scratch() {
    static QTemporaryDir dir(QDir(QStringLiteral("/dev/shm")).exists()
                                 ? QStringLiteral("/dev/shm/qxbench-XXXXXX")
                                 : QDir::tempPath() + QStringLiteral("/qxbench-XXXXXX"));
    return dir;
}

const std::vector<QString>& wavFiles() {
    static std::vector<QString> files = [] {
        std::vector<QString> names;
        const QByteArray bytes = wavFile(4000);
        for (int i = 0; i < fileCount; ++i) {
            names.push_back(scratch().filePath(QStringLiteral("w%1.wav").arg(i)));
            QFile f(names.back());
            if (f.open(QIODevice::WriteOnly))
                f.write(bytes);
        }
        return names;
    }();
    return files;
}

void BM_qxtGetWavInfo(benchmark::State& state) {
    const auto& files = wavFiles();
    for (auto _ : state)
        for (const QString& name : files) {
            TWAVInfo info;
            qxtGetWavInfo(name, info);
            benchmark::DoNotOptimize(info.SamplesPerSec);
        }
    state.SetItemsProcessed(state.iterations() * fileCount);
}

void BM_TQXWAVFileName(benchmark::State& state) {
    const auto& files = wavFiles();
    TQXWAV wav;
    for (auto _ : state)
        for (const QString& name : files) {
            wav.GetFormatInfo(name);
            benchmark::DoNotOptimize(wav.SamplesPerSec());
        }
    state.SetItemsProcessed(state.iterations() * fileCount);
}

void BM_sf_open(benchmark::State& state) {
    std::vector<QByteArray> names;
    for (const QString& name : wavFiles())
        names.push_back(QFile::encodeName(name));
    for (auto _ : state)
        for (const QByteArray& name : names) {
            SF_INFO info{};
            SNDFILE* file = sf_open(name.constData(), SFM_READ, &info);
            benchmark::DoNotOptimize(info.samplerate);
            sf_close(file);
        }
    state.SetItemsProcessed(state.iterations() * fileCount);
}

// A 100 MB file in a control 1000 pixels wide: one sample every 100,000 bytes.
void BM_Waveform100MB(benchmark::State& state) {
    const QString name = scratch().filePath(QStringLiteral("big.wav"));
    {
        QFile f(name);
        if (f.open(QIODevice::WriteOnly))
            f.write(wavFile(100 * 1000 * 1000 - 70));
    }
    TQXWAV wav;
    wav.resize(1000, 200);
    wav.SetFileName(name);
    QImage image(1000, 200, QImage::Format_RGB32);
    for (auto _ : state) {
        wav.render(&image);
        benchmark::DoNotOptimize(image.constBits());
    }
    state.SetBytesProcessed(state.iterations() * QFile(name).size());
}

} // namespace

BENCHMARK(BM_qxtGetWavInfo)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TQXWAVFileName)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_sf_open)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Waveform100MB)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
