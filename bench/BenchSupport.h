#pragma once

// Measuring helpers shared by the benchmark programs (header only: every bench/*.cpp is a
// program of its own).

#include <benchmark/benchmark.h>
#include <cstdio>
#include <string>
#include <sys/resource.h>

namespace qxbench {

// Processor time (user + system, every thread) of this process and of the programs it ran and
// waited for, in seconds.
inline double cpuNow() {
    const auto seconds = [](const timeval& t) { return double(t.tv_sec) + t.tv_usec * 1e-6; };
    double total = 0;
    for (const int who : {RUSAGE_SELF, RUSAGE_CHILDREN}) {
        rusage usage{};
        ::getrusage(who, &usage);
        total += seconds(usage.ru_utime) + seconds(usage.ru_stime);
    }
    return total;
}

// Reports seconds of processor time as "cpu", per iteration: on a loaded machine wall time
// mostly measures waiting for a processor.
inline void reportCpu(benchmark::State& state, double seconds) {
    state.counters["cpu"] = benchmark::Counter(seconds, benchmark::Counter::kAvgIterations);
}

// Reports the processor time of its lifetime (reportCpu).
class CpuCounter {
public:
    explicit CpuCounter(benchmark::State& state) : m_state(state), m_start(cpuNow()) {}
    ~CpuCounter() { reportCpu(m_state, cpuNow() - m_start); }
    CpuCounter(const CpuCounter&) = delete;
    CpuCounter& operator=(const CpuCounter&) = delete;

private:
    benchmark::State& m_state;
    double m_start;
};

// Runs a shell command and counts the lines it writes; -1 when it cannot be started.
inline long countLines(const std::string& command) {
    FILE* p = ::popen(command.c_str(), "r");
    if (!p)
        return -1;
    long lines = 0;
    char buffer[65536];
    size_t n = 0;
    while ((n = std::fread(buffer, 1, sizeof buffer, p)) > 0)
        for (size_t i = 0; i < n; ++i)
            lines += buffer[i] == '\n';
    ::pclose(p);
    return lines;
}

} // namespace qxbench
