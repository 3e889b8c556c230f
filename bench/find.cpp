// Walks a generated tree of 100,000 files (100 directories of 10 subdirectories of 100 files)
// with TQXFind, qxtool find, find(1) and std::filesystem::recursive_directory_iterator; counts
// and sizes it with the library's counters, and deletes trees of 10,000 files with qxtKillPath
// and rm(1). The counters and qxtKillPath run beside the walks that read every directory twice.

#include "BenchSupport.h"
#include "QXFind.h"
#include "QxutilFiles.h"
#include "TwoReadingWalks.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using qxbench::countLines;
using qxbench::CpuCounter;
using qxbench::cpuNow;

constexpr int kTop = 100, kSub = 10, kFiles = 100;
constexpr long kTotal = long(kTop) * kSub * kFiles;

std::string g_root;
// Where the trees to delete are built, one at a time.
std::string g_killRoot;
constexpr int kKillTop = 10;
constexpr long kKillTotal = long(kKillTop) * kSub * kFiles;

bool buildTree(const std::string& root, int topDirs = kTop) {
    for (int t = 0; t < topDirs; ++t) {
        const std::string top = root + "/dir" + std::to_string(t);
        if (::mkdir(top.c_str(), 0755) != 0)
            return false;
        for (int s = 0; s < kSub; ++s) {
            const std::string sub = top + "/sub" + std::to_string(s);
            if (::mkdir(sub.c_str(), 0755) != 0)
                return false;
            for (int f = 0; f < kFiles; ++f) {
                const std::string name =
                    sub + "/file" + std::to_string(f) + (f % 2 ? ".txt" : ".dat");
                const int fd = ::open(name.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
                if (fd < 0 || ::write(fd, "x", 1) != 1)
                    return false;
                ::close(fd);
            }
        }
    }
    return true;
}

void reportFiles(benchmark::State& state, long files) {
    if (files != kTotal)
        state.SkipWithError("wrong number of files");
    state.counters["files"] = double(files);
    state.SetItemsProcessed(state.iterations() * kTotal);
}

void BM_TQXFind(benchmark::State& state) {
    long files = 0;
    CpuCounter cpu(state);
    for (auto _ : state) {
        TQXFind find;
        find.SetStartPath(QString::fromStdString(g_root));
        find.SetSubdirs(true);
        long found = 0;
        find.OnFindFile = [&found](QObject*, const TSearchRec&, const QString&, const QString&) {
            ++found;
        };
        find.Execute();
        files = found;
    }
    reportFiles(state, files);
}

// A pattern list goes through qxtIsMatch for every name.
void BM_TQXFindPatternList(benchmark::State& state) {
    long files = 0;
    CpuCounter cpu(state);
    for (auto _ : state) {
        TQXFind find;
        find.SetStartPath(QString::fromStdString(g_root));
        find.SetSubdirs(true);
        find.SetFilePattern(QStringLiteral("*.txt;*.dat"));
        find.Execute();
        files = find.FileCount();
    }
    reportFiles(state, files);
}

// Names only: find takes the entry types from the directory listing.
void BM_find(benchmark::State& state) {
    long files = 0;
    CpuCounter cpu(state);
    for (auto _ : state)
        files = countLines("find '" + g_root + "' -type f");
    reportFiles(state, files);
}

// Size and time of every file, which TQXFind reports too: find has to look at each one.
void BM_findWithStat(benchmark::State& state) {
    long files = 0;
    CpuCounter cpu(state);
    for (auto _ : state)
        files = countLines("find '" + g_root + "' -type f -printf '%s %T@\\n'");
    reportFiles(state, files);
}

// qxtool find over the same tree, its output (one line per file and two count lines) read
// through a pipe like find's.
void BM_qxtoolFind(benchmark::State& state) {
    const std::string tool =
        (QCoreApplication::applicationDirPath() + QStringLiteral("/../tools/qxtool")).toStdString();
    long files = 0;
    CpuCounter cpu(state);
    for (auto _ : state)
        files = countLines("'" + tool + "' find '" + g_root + "' '*.*' --subdirs") - 2;
    reportFiles(state, files);
}

void BM_recursive_directory_iterator(benchmark::State& state) {
    long files = 0;
    CpuCounter cpu(state);
    for (auto _ : state) {
        long found = 0;
        for (const auto& e : std::filesystem::recursive_directory_iterator(g_root))
            found += e.is_regular_file();
        files = found;
    }
    reportFiles(state, files);
}

void BM_recursive_directory_iteratorWithStat(benchmark::State& state) {
    long files = 0;
    CpuCounter cpu(state);
    for (auto _ : state) {
        long found = 0;
        std::uintmax_t bytes = 0;
        for (const auto& e : std::filesystem::recursive_directory_iterator(g_root))
            if (e.is_regular_file()) {
                bytes += e.file_size();
                benchmark::DoNotOptimize(e.last_write_time());
                ++found;
            }
        benchmark::DoNotOptimize(bytes);
        files = found;
    }
    reportFiles(state, files);
}

QString root() {
    return QString::fromStdString(g_root);
}

void BM_qxtFileCount(benchmark::State& state) {
    long files = 0;
    CpuCounter cpu(state);
    for (auto _ : state)
        files = qxtFileCount(root(), QStringLiteral("*.*"), true);
    reportFiles(state, files);
}

void BM_qxtFileCountTwoReadings(benchmark::State& state) {
    long files = 0;
    CpuCounter cpu(state);
    for (auto _ : state) {
        long found = 0;
        tworeadings::walk(root(), QStringLiteral("*.*"), true, [&found](auto&, auto&) {
            ++found;
            return true;
        });
        files = found;
    }
    reportFiles(state, files);
}

// Every file holds one byte, so the total is the number of files.
void BM_qxtGetFileSize(benchmark::State& state) {
    long bytes = 0;
    CpuCounter cpu(state);
    for (auto _ : state)
        bytes = long(qxtGetFileSize(root() + QStringLiteral("/*.*"), true));
    reportFiles(state, bytes);
}

void BM_qxtGetFileSizeTwoReadings(benchmark::State& state) {
    long bytes = 0;
    CpuCounter cpu(state);
    for (auto _ : state)
        bytes = long(tworeadings::size(root() + QStringLiteral("/*.*"), true));
    reportFiles(state, bytes);
}

// Builds a tree of 10,000 files outside the timing and deletes it with kill, which returns
// false on a failure; "cpu" counts the deleting only.
template <typename Kill> void deleteTrees(benchmark::State& state, Kill kill) {
    const std::string tree = g_killRoot + "/tree";
    double cpu = 0;
    for (auto _ : state) {
        state.PauseTiming();
        if (::mkdir(tree.c_str(), 0755) != 0 || !buildTree(tree, kKillTop)) {
            state.SkipWithError("cannot build the tree to delete");
            break;
        }
        state.ResumeTiming();
        const double start = cpuNow();
        const bool ok = kill(tree);
        cpu += cpuNow() - start;
        if (!ok || ::access(tree.c_str(), F_OK) == 0) {
            state.SkipWithError("the tree was not deleted");
            break;
        }
    }
    state.counters["cpu"] = benchmark::Counter(cpu, benchmark::Counter::kAvgIterations);
    state.SetItemsProcessed(state.iterations() * kKillTotal);
}

void BM_qxtKillPath(benchmark::State& state) {
    deleteTrees(state,
                [](const std::string& tree) { return qxtKillPath(QString::fromStdString(tree)); });
}

void BM_qxtKillPathTwoReadings(benchmark::State& state) {
    deleteTrees(state, [](const std::string& tree) {
        return tworeadings::kill(QString::fromStdString(tree));
    });
}

void BM_rm(benchmark::State& state) {
    deleteTrees(state, [](const std::string& tree) {
        return std::system(("rm -r '" + tree + "'").c_str()) == 0;
    });
}

BENCHMARK(BM_TQXFind)->Unit(benchmark::kMillisecond)->MinTime(2)->UseRealTime();
BENCHMARK(BM_TQXFindPatternList)->Unit(benchmark::kMillisecond)->MinTime(2)->UseRealTime();
BENCHMARK(BM_qxtoolFind)->Unit(benchmark::kMillisecond)->MinTime(2)->UseRealTime();
BENCHMARK(BM_find)->Unit(benchmark::kMillisecond)->MinTime(2)->UseRealTime();
BENCHMARK(BM_findWithStat)->Unit(benchmark::kMillisecond)->MinTime(2)->UseRealTime();
BENCHMARK(BM_recursive_directory_iterator)
    ->Unit(benchmark::kMillisecond)
    ->MinTime(2)
    ->UseRealTime();
BENCHMARK(BM_recursive_directory_iteratorWithStat)
    ->Unit(benchmark::kMillisecond)
    ->MinTime(2)
    ->UseRealTime();
BENCHMARK(BM_qxtFileCount)->Unit(benchmark::kMillisecond)->MinTime(2)->UseRealTime();
BENCHMARK(BM_qxtFileCountTwoReadings)->Unit(benchmark::kMillisecond)->MinTime(2)->UseRealTime();
BENCHMARK(BM_qxtGetFileSize)->Unit(benchmark::kMillisecond)->MinTime(2)->UseRealTime();
BENCHMARK(BM_qxtGetFileSizeTwoReadings)->Unit(benchmark::kMillisecond)->MinTime(2)->UseRealTime();
BENCHMARK(BM_qxtKillPath)->Unit(benchmark::kMillisecond)->Iterations(5)->UseRealTime();
BENCHMARK(BM_qxtKillPathTwoReadings)->Unit(benchmark::kMillisecond)->Iterations(5)->UseRealTime();
BENCHMARK(BM_rm)->Unit(benchmark::kMillisecond)->Iterations(5)->UseRealTime();

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    QTemporaryDir dir, killDir;
    if (!dir.isValid() || !killDir.isValid() || !buildTree(dir.path().toStdString())) {
        std::fprintf(stderr, "cannot build the test tree\n");
        return 1;
    }
    g_root = dir.path().toStdString();
    g_killRoot = killDir.path().toStdString();
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
