// Copies one 512 MiB file and a directory of 10,000 small files with TQXCopy (8 KiB and 64 KiB
// blocks, both gauges attached, ProcessMessages off) and with cp(1), on one file system: the
// directory named by QX_BENCH_DIR, else the temporary directory. Every copy goes to a new
// destination (the old one is removed outside the timing); the sources stay in the page cache.
// Beside the wall time, "cpu" is the processor time (user + system) of one copy, cp's included,
// which on a loaded machine compares the two better than the wall time.

#include "BenchSupport.h"
#include "Dialogs.h"
#include "QXGauge.h"
#include "Qxcopy.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

using qxbench::cpuNow;
using qxbench::reportCpu;

constexpr qint64 kLargeSize = qint64(512) << 20;
constexpr int kSmallFiles = 10'000;

QString g_root;
qint64 g_smallBytes = 0;

QString large() {
    return g_root + QStringLiteral("/large.bin");
}
QString small() {
    return g_root + QStringLiteral("/small");
}
QString target() {
    return g_root + QStringLiteral("/copy");
}

bool writeFile(const QString& name, qint64 size, quint32 seed) {
    QFile f(name);
    if (!f.open(QIODevice::WriteOnly))
        return false;
    QByteArray chunk(qMin<qint64>(size, 1 << 20), Qt::Uninitialized);
    quint32 x = seed * 2654435761u + 1;
    for (char& c : chunk) {
        x ^= x << 13;
        x ^= x >> 17;
        x ^= x << 5;
        c = char(x);
    }
    for (qint64 left = size; left > 0; left -= chunk.size())
        if (f.write(chunk.constData(), qMin<qint64>(left, chunk.size())) < 0)
            return false;
    return true;
}

// Small files of 100 bytes to 8 KiB, about 4 KiB on average.
bool makeSources() {
    if (!writeFile(large(), kLargeSize, 1) || !QDir().mkdir(small()))
        return false;
    for (int i = 0; i < kSmallFiles; ++i) {
        const qint64 size = 100 + (qint64(i) * 7919) % 8092;
        if (!writeFile(small() + QStringLiteral("/f%1.dat").arg(i, 5, 10, QLatin1Char('0')), size,
                       quint32(i)))
            return false;
        g_smallBytes += size;
    }
    return true;
}

// Adds the processor time of its lifetime to a sum.
class CpuSpan {
public:
    explicit CpuSpan(double& sum) : m_sum(sum), m_start(cpuNow()) {}
    ~CpuSpan() { m_sum += cpuNow() - m_start; }
    CpuSpan(const CpuSpan&) = delete;
    CpuSpan& operator=(const CpuSpan&) = delete;

private:
    double& m_sum;
    double m_start;
};

void removeTarget() {
    QFile::remove(target());
    QDir(target()).removeRecursively();
}

// The bytes now at the destination: the file, or the files of the directory.
qint64 copiedBytes() {
    const QFileInfo info(target());
    if (info.isFile())
        return info.size();
    qint64 bytes = 0;
    for (const QFileInfo& f : QDir(target()).entryInfoList(QDir::Files | QDir::Hidden))
        bytes += f.size();
    return bytes;
}

void runTQXCopy(benchmark::State& state, const QString& source, bool directory, qint64 bytes) {
    TQXCopy copy;
    TQXGauge total, file;
    copy.SetCopyProgressGauge(&total);
    copy.SetFileProgressGauge(&file);
    copy.SetBufferSize(quint16(state.range(0) == 65536 ? 0 : state.range(0)));
    int questions = 0;
    double cpu = 0;
    const TDialogHandler previous = SetDialogHandler([&questions](TDialogRequest&) {
        ++questions;
        return int(mrAbort);
    });
    for (auto _ : state) {
        state.PauseTiming();
        removeTarget();
        if (directory)
            QDir().mkdir(target());
        state.ResumeTiming();
        const CpuSpan span(cpu);
        if (!copy.CopyFile(source, directory ? target() + QLatin1Char('/') : target(), false))
            state.SkipWithError("the copy failed");
    }
    reportCpu(state, cpu);
    SetDialogHandler(previous);
    if (questions > 0)
        state.SkipWithError("the copy asked a question");
    if (copiedBytes() != bytes || total.Progress() != total.MaxValue())
        state.SkipWithError("the copy is incomplete");
    state.SetBytesProcessed(state.iterations() * bytes);
}

void runCp(benchmark::State& state, const QString& source, qint64 bytes) {
    const QByteArray from = QFile::encodeName(source), to = QFile::encodeName(target());
    double cpu = 0;
    for (auto _ : state) {
        state.PauseTiming();
        removeTarget();
        state.ResumeTiming();
        std::vector<char*> argv{const_cast<char*>("cp"), const_cast<char*>("-R"),
                                const_cast<char*>(from.constData()),
                                const_cast<char*>(to.constData()), nullptr};
        const CpuSpan span(cpu);
        pid_t pid = 0;
        int status = 0;
        if (::posix_spawnp(&pid, "cp", nullptr, nullptr, argv.data(), environ) != 0 ||
            ::waitpid(pid, &status, 0) != pid || status != 0)
            state.SkipWithError("cp failed");
    }
    reportCpu(state, cpu);
    if (copiedBytes() != bytes)
        state.SkipWithError("cp's copy is incomplete");
    state.SetBytesProcessed(state.iterations() * bytes);
}

void BM_TQXCopyLargeFile(benchmark::State& state) {
    runTQXCopy(state, large(), false, kLargeSize);
}
void BM_cpLargeFile(benchmark::State& state) {
    runCp(state, large(), kLargeSize);
}
void BM_TQXCopySmallFiles(benchmark::State& state) {
    runTQXCopy(state, small() + QStringLiteral("/*"), true, g_smallBytes);
}
void BM_cpSmallFiles(benchmark::State& state) {
    runCp(state, small(), g_smallBytes);
}

BENCHMARK(BM_TQXCopyLargeFile)
    ->Arg(8192)
    ->Arg(65536)
    ->Unit(benchmark::kMillisecond)
    ->MinTime(3)
    ->UseRealTime();
BENCHMARK(BM_cpLargeFile)->Unit(benchmark::kMillisecond)->MinTime(3)->UseRealTime();
BENCHMARK(BM_TQXCopySmallFiles)
    ->Arg(8192)
    ->Arg(65536)
    ->Unit(benchmark::kMillisecond)
    ->MinTime(3)
    ->UseRealTime();
BENCHMARK(BM_cpSmallFiles)->Unit(benchmark::kMillisecond)->MinTime(3)->UseRealTime();

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    const QString base = qEnvironmentVariable("QX_BENCH_DIR", QDir::tempPath());
    QTemporaryDir dir(base + QStringLiteral("/qxcopy-bench-XXXXXX"));
    g_root = dir.path();
    if (!dir.isValid() || !makeSources()) {
        std::fprintf(stderr, "cannot write the sources under %s\n", qPrintable(base));
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
