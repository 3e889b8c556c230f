#include "ControlHost.h"
#include "Qxpanel.h"
#include "TestSupport.h"

#include <gtest/gtest.h>

namespace {

// Hands out fixed figures: the processor samples in order, one memory status, one time.
class FixedReader : public TSystemReader {
public:
    QList<TCPUTimes> cpu;
    TMemoryStatus memory;
    QDateTime now;
    bool ReadCPUTimes(TCPUTimes& times) override {
        if (cpu.isEmpty())
            return false;
        times = cpu.takeFirst();
        return true;
    }
    bool ReadMemoryStatus(TMemoryStatus& status) override {
        status = memory;
        return true;
    }
    QDateTime Now() override { return now; }
};

// Wednesday, 17 January 2024, 09:05:03.
const QDateTime wednesday(QDate(2024, 1, 17), QTime(9, 5, 3));

TMemoryStatus memoryOf(quint32 load, quint64 totalKB, quint64 availKB) {
    TMemoryStatus m;
    m.MemoryLoad = load;
    m.TotalPhys = totalKB * 1024;
    m.AvailPhys = availKB * 1024;
    return m;
}

} // namespace

TEST(QXPanel, PlaceholdersInTheirOrder) {
    const TMemoryStatus m = memoryOf(40, 16384000, 999);
    const auto fill = [&](const char* format) {
        return TQXPanel::FormatCaption(QString::fromUtf8(format), 12, m, wednesday);
    };
    EXPECT_EQ(fill("%DayLong, %Date"), QStringLiteral("Mittwoch, 17.01.2024"));
    EXPECT_EQ(fill("%Day"), QStringLiteral("Mit"));
    EXPECT_EQ(fill("%Time"), QStringLiteral("09:05:03"));
    EXPECT_EQ(fill("CPU %CPU, Speicher %MemoryLoad"), QStringLiteral("CPU 12%, Speicher 40%"));
    EXPECT_EQ(fill("%TotalPhys / %AvailPhys"), QStringLiteral("16.384.000 KB / 999 KB"));
    // The line break is a line feed before a carriage return.
    EXPECT_EQ(fill("a^Mb"), QStringLiteral("a\n\rb"));
    // Unknown words stay; so does case.
    EXPECT_EQ(fill("%Foo %cpu"), QStringLiteral("%Foo %cpu"));
    // The CPU figure ends in "%", which a later placeholder can take as its own.
    EXPECT_EQ(fill("%CPUTime"), QStringLiteral("1209:05:03"));
    // A Sunday is day 1 of the week; it must not fall off either end of the name table.
    const QDateTime sunday(QDate(2024, 1, 21), QTime(12, 0));
    EXPECT_EQ(TQXPanel::FormatCaption(QStringLiteral("%DayLong %Day"), 0, m, sunday),
              QStringLiteral("Sonntag Son"));
    const QDateTime saturday(QDate(2024, 1, 20), QTime(12, 0));
    EXPECT_EQ(TQXPanel::FormatCaption(QStringLiteral("%DayLong"), 0, m, saturday),
              QStringLiteral("Samstag"));
    // Whole kilobytes: a thousand gets its separator, nothing stands before the unit for 0.
    EXPECT_EQ(TQXPanel::FormatCaption(QStringLiteral("%TotalPhys|%AvailPhys"), 0,
                                      memoryOf(0, 1000, 0), sunday),
              QStringLiteral("1.000 KB| KB"));
}

TEST(QXPanel, TicksFillTheCaptionFromTheReaders) {
    qxtest::ControlHost host;
    TQXPanel panel(&host);
    panel.show();
    auto reader = std::make_shared<FixedReader>();
    // user nice system idle iowait irq softirq steal: 160 busy of 1010, then 370 of 1430.
    reader->cpu = {{160, 1010}, {370, 1430}};
    reader->memory = memoryOf(75, 2048, 512);
    reader->now = wednesday;
    panel.SetSystemReader(reader);
    panel.SetCaptionFormat(QStringLiteral("%CPU %MemoryLoad %TotalPhys %AvailPhys %Day"));
    panel.QXOnTime();
    EXPECT_EQ(panel.Caption(), QStringLiteral("0% 75% 2.048 KB 512 KB Mit"));
    panel.QXOnTime();
    // 210 busy ticks of 420.
    EXPECT_EQ(panel.Caption(), QStringLiteral("50% 75% 2.048 KB 512 KB Mit"));
    // Unreadable counters count as 0, without a message.
    qxtest::DialogRecorder dialogs;
    panel.QXOnTime();
    EXPECT_EQ(panel.Caption(), QStringLiteral("0% 75% 2.048 KB 512 KB Mit"));
    EXPECT_TRUE(dialogs.requests.isEmpty());
}

TEST(QXPanel, ChartStylesKeepOneHistory) {
    qxtest::ControlHost host;
    TQXPanel panel(&host);
    panel.show();
    EXPECT_EQ(panel.Pipe()->PointAnz(), 80);
    auto reader = std::make_shared<FixedReader>();
    reader->cpu = {{0, 100}, {30, 200}, {30, 300}};
    reader->memory = memoryOf(64, 1, 1);
    panel.SetSystemReader(reader);
    panel.SetStyle(sgCPU);
    panel.QXOnTime();
    panel.QXOnTime();
    // The sys, gdi and user charts have no source: a tick adds nothing.
    panel.SetStyle(sgSYS);
    panel.QXOnTime();
    panel.SetStyle(sgMEM);
    panel.QXOnTime();
    panel.SetStyle(sgCPU);
    panel.QXOnTime();
    const TQXPipe* pipe = panel.Pipe();
    const QList<int> newest = {pipe->Value(75), pipe->Value(76), pipe->Value(77), pipe->Value(78),
                               pipe->Value(79)};
    EXPECT_EQ(newest, (QList<int>{0, 0, 30, 64, 0}));
    EXPECT_EQ(pipe->GraphMax(), 100);
    // The caption of a chart is cleared when it is drawn.
    panel.SetCaption(QStringLiteral("weg"));
    qxtest::renderControl(panel);
    EXPECT_TRUE(panel.Caption().isEmpty());
}

TEST(QXPanel, PipeShiftsAndReallocates) {
    TQXPipe pipe;
    EXPECT_EQ(pipe.PointAnz(), 10);
    pipe.SetPointAnz(3);
    for (int v : {1, 2, 3, 4})
        pipe.GraphAddRight(v);
    EXPECT_EQ((QList<int>{pipe.Value(0), pipe.Value(1), pipe.Value(2)}), (QList<int>{2, 3, 4}));
    pipe.SetPointAnz(2);
    EXPECT_EQ((QList<int>{pipe.Value(0), pipe.Value(1)}), (QList<int>{0, 0}));
    EXPECT_EQ(TQXPipe::Label(sgCPU, 50), QStringLiteral("cpu 50%"));
    EXPECT_EQ(TQXPipe::Label(sgSYS, 7), QStringLiteral("sys 7%"));
    EXPECT_EQ(TQXPipe::Label(sgGDI, 7), QStringLiteral("gdi 7%"));
    EXPECT_EQ(TQXPipe::Label(sgUSR, 7), QStringLiteral("usr 7%"));
    EXPECT_EQ(TQXPipe::Label(sgMEM, 50), QStringLiteral("mem 50 KB"));
}

TEST(QXPanel, ConstantHalfLoadIsAFlatAreaBelowTheLabel) {
    QImage image(400, 100, QImage::Format_RGB32);
    image.fill(Qt::white);
    TCanvas canvas(&image);
    const int labelHeight = canvas.TextHeight(QStringLiteral("X"));
    TQXPipe pipe;
    pipe.SetPointAnz(80);
    for (int i = 0; i < 80; ++i)
        pipe.GraphAddRight(50);
    pipe.Draw(sgCPU, &canvas, {0, 0, 400, 100}, clRed);
    const QVector<TPoint>& points = pipe.Points();
    ASSERT_EQ(points.size(), 82);
    // 400 div 80 = 5 pixels apart; half of the height left below the label line.
    const int y = 100 - (100 - labelHeight) * 50 / 100;
    for (int i = 0; i < 80; ++i)
        EXPECT_EQ(points[i], (TPoint{i * 5, y})) << i;
    EXPECT_EQ(points[80], (TPoint{400, 100}));
    EXPECT_EQ(points[81], (TPoint{0, 100}));
    // Filled below the black outline, untouched above it (right of the label).
    EXPECT_EQ(qxtest::pixelBGR(image, 200, y + 5), clRed);
    EXPECT_EQ(qxtest::pixelBGR(image, 200, y), clBlack);
    EXPECT_EQ(qxtest::pixelBGR(image, 200, y - 3), clWhite);
}

TEST(QXPanel, DefaultsAndTheFrame) {
    qxtest::ControlHost host;
    TQXPanel panel(&host);
    panel.show();
    EXPECT_EQ(panel.size(), QSize(137, 25));
    EXPECT_EQ(panel.sizeHint(), QSize(137, 25));
    EXPECT_EQ(panel.Style(), sString);
    EXPECT_EQ(panel.GraphColor(), clRed);
    EXPECT_TRUE(panel.CaptionFormat().isEmpty());
    EXPECT_EQ(panel.About_QXTools(), QStringLiteral("14.12.96^M(Beta)"));
    EXPECT_FALSE(panel.accessibleName().isEmpty());
    // Ticks once a second, in the designer too.
    panel.SetDesigning(true);
    EXPECT_EQ(panel.Timer()->Interval(), 1000);
    EXPECT_TRUE(panel.Timer()->IsActive());
    // Nothing is erased before a paint.
    EXPECT_TRUE(panel.testAttribute(Qt::WA_OpaquePaintEvent));
    EXPECT_FALSE(panel.autoFillBackground());
}

TEST(QXPanel, LineBreakShowsTwoLines) {
    qxtest::ControlHost host;
    TQXPanel panel(&host);
    panel.show();
    panel.resize(137, 60);
    panel.SetSystemReader(std::make_shared<FixedReader>());
    panel.SetCaptionFormat(QStringLiteral("HH^MHH"));
    panel.QXOnTime();
    const QImage image = qxtest::renderControl(panel);
    const QColor text = TColorToQColor(panel.Font()->Color(), &panel.palette());
    // The rows holding text, as runs of neighbouring rows.
    QList<QPair<int, int>> runs;
    for (int y = 1; y < image.height() - 1; ++y) {
        bool any = false;
        for (int x = 1; x < image.width() - 1; ++x)
            any = any || image.pixelColor(x, y) == text;
        if (!any)
            continue;
        if (runs.isEmpty() || runs.last().second != y - 1)
            runs.append({y, y});
        else
            runs.last().second = y;
    }
    // Two lines, the pair in the middle of the panel.
    ASSERT_EQ(runs.size(), 2);
    EXPECT_EQ(runs[0].second - runs[0].first, runs[1].second - runs[1].first);
    EXPECT_LE(std::abs((runs[0].first + runs[1].second) / 2 - 30), 4);
}
