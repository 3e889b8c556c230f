#include "QxutilSysStat.h"

#include <QList>
#include <gtest/gtest.h>

namespace {

// Hands out the processor samples given, then reports them unreadable.
class SampleReader : public TSystemReader {
public:
    QList<TCPUTimes> samples;
    bool ReadCPUTimes(TCPUTimes& times) override {
        if (samples.isEmpty())
            return false;
        times = samples.takeFirst();
        return true;
    }
    bool ReadMemoryStatus(TMemoryStatus&) override { return false; }
};

} // namespace

TEST(SysStat, ProcStatSummaryLine) {
    TCPUTimes t;
    // user nice system idle iowait irq softirq steal, then guest and guest_nice (already
    // counted in user and nice).
    ASSERT_TRUE(qxtParseCPUTimes("cpu  100 20 30 400 50 6 7 8 90 10\ncpu0 1 1 1 1 1 1 1 1\n", t));
    EXPECT_EQ(t.Busy, 100u + 20 + 30 + 6 + 7 + 8);
    EXPECT_EQ(t.Total, 100u + 20 + 30 + 400 + 50 + 6 + 7 + 8);
    // Kernels before steal time give fewer columns.
    ASSERT_TRUE(qxtParseCPUTimes("cpu 5 0 5 80 10", t));
    EXPECT_EQ(t.Busy, 10u);
    EXPECT_EQ(t.Total, 100u);
    // Only the summary line counts, and only whole numbers; a failed parse keeps what was there.
    EXPECT_FALSE(qxtParseCPUTimes("cpu0 1 2 3 4 5\n", t));
    EXPECT_FALSE(qxtParseCPUTimes("cpu 1 2 x 4 5\n", t));
    EXPECT_FALSE(qxtParseCPUTimes("cpu 1 2 3\n", t));
    EXPECT_FALSE(qxtParseCPUTimes("", t));
    EXPECT_EQ(t.Total, 100u);
}

TEST(SysStat, UsageBetweenTwoReadings) {
    EXPECT_EQ(qxtCPUUsageBetween({160, 1010}, {370, 1430}), 50);
    EXPECT_EQ(qxtCPUUsageBetween({0, 0}, {3, 3}), 100);
    // No time passed, or the counters went back (a new boot, a wrapped counter).
    EXPECT_EQ(qxtCPUUsageBetween({10, 100}, {10, 100}), 0);
    EXPECT_EQ(qxtCPUUsageBetween({10, 100}, {20, 50}), 0);
    EXPECT_EQ(qxtCPUUsageBetween({10, 100}, {5, 200}), 0);
}

TEST(SysStat, UsageStartsAtZeroAndSurvivesAFailedRead) {
    auto reader = std::make_shared<SampleReader>();
    reader->samples = {{100, 1000}, {150, 1100}};
    TCPUUsage usage(reader);
    qint32 percent = -1;
    EXPECT_TRUE(usage.Read(percent));
    EXPECT_EQ(percent, 0);
    EXPECT_TRUE(usage.Read(percent));
    EXPECT_EQ(percent, 50);
    EXPECT_FALSE(usage.Read(percent));
    EXPECT_EQ(percent, 0);
    // The next good reading is measured against the last good one.
    reader->samples = {{175, 1200}};
    EXPECT_TRUE(usage.Read(percent));
    EXPECT_EQ(percent, 25);
}

TEST(SysStat, MemInfoFiguresAndLoad) {
    TMemoryStatus m;
    m.TotalVirtual = 7;
    const QByteArray text = "DirectMemTotal:   9 kB\n"
                            "MemTotal:        2048 kB\n"
                            "MemFree:          100 kB\n"
                            "MemAvailable:     512 kB\n"
                            "SwapTotal:        100 kB\n"
                            "SwapFree:          40 kB\n";
    ASSERT_TRUE(qxtParseMemInfo(text, m));
    EXPECT_EQ(m.TotalPhys, 2048u * 1024);
    EXPECT_EQ(m.AvailPhys, 512u * 1024);
    EXPECT_EQ(m.TotalPageFile, 100u * 1024);
    EXPECT_EQ(m.AvailPageFile, 40u * 1024);
    EXPECT_EQ(m.MemoryLoad, 75u);
    EXPECT_EQ(m.TotalVirtual, 7u);
    // Without swap lines there is no page file; more available than total is no load.
    ASSERT_TRUE(qxtParseMemInfo("MemTotal: 100 kB\nMemAvailable: 150 kB\n", m));
    EXPECT_EQ(m.TotalPageFile, 0u);
    EXPECT_EQ(m.MemoryLoad, 0u);
    // Kernels without MemAvailable leave the figures to the fallback.
    EXPECT_FALSE(qxtParseMemInfo("MemTotal: 100 kB\nMemFree: 50 kB\n", m));
    EXPECT_FALSE(qxtParseMemInfo("MemTotal: kB\nMemAvailable: 1 kB\n", m));
}

TEST(SysStat, TheRunningSystem) {
    const auto reader = qxtSystemReader();
    TCPUTimes t;
    ASSERT_TRUE(reader->ReadCPUTimes(t));
    EXPECT_GT(t.Total, 0u);
    EXPECT_LE(t.Busy, t.Total);
    TMemoryStatus m;
    ASSERT_TRUE(reader->ReadMemoryStatus(m));
    EXPECT_GT(m.TotalPhys, 0u);
    EXPECT_LE(m.AvailPhys, m.TotalPhys);
    EXPECT_LE(m.AvailPageFile, m.TotalPageFile);
    EXPECT_LE(m.MemoryLoad, 100u);
    // This process has mapped something, and not the whole address space.
    EXPECT_LT(m.AvailVirtual, m.TotalVirtual);
    EXPECT_GT(m.AvailVirtual, 0u);
}
