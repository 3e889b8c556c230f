#include "QxutilSysStat.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/sysinfo.h>
#include <unistd.h>

namespace {

// The states /proc/stat counts in: user, nice, system, idle, iowait, irq, softirq, steal.
// The guest columns after them are already part of user and nice.
constexpr int cpuStates = 8;
constexpr int idleState = 3;
constexpr int ioWaitState = 4;

// Reads up to size bytes of a /proc file, which the kernel writes out in one piece.
QByteArray readProcFile(const char* path, qsizetype size) {
    const int fd = ::open(path, O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return {};
    QByteArray data(size, Qt::Uninitialized);
    qsizetype filled = 0;
    while (filled < size) {
        const ssize_t n = ::read(fd, data.data() + filled, size_t(size - filled));
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            break;
        filled += n;
    }
    ::close(fd);
    data.truncate(filled);
    return data;
}

// The number after "key:" in /proc/meminfo, in kB; false when the key is missing.
bool memInfoValue(const QByteArray& text, const char* key, quint64& kilobytes) {
    const QByteArray wanted = QByteArray(key) + ':';
    qsizetype at = 0;
    while ((at = text.indexOf(wanted, at)) >= 0) {
        if (at == 0 || text[at - 1] == '\n')
            break;
        at += wanted.size();
    }
    if (at < 0)
        return false;
    qsizetype i = at + wanted.size();
    while (i < text.size() && text[i] == ' ')
        ++i;
    if (i >= text.size() || text[i] < '0' || text[i] > '9')
        return false;
    kilobytes = 0;
    for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i)
        kilobytes = kilobytes * 10 + quint64(text[i] - '0');
    return true;
}

quint32 loadPercent(quint64 total, quint64 available) {
    if (total == 0)
        return 0;
    return quint32((total - std::min(total, available)) * 100 / total);
}

void readAddressSpace(TMemoryStatus& status) {
    rlimit limit{};
    if (::getrlimit(RLIMIT_AS, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY)
        status.TotalVirtual = limit.rlim_cur;
    else
        status.TotalVirtual = sizeof(void*) == 8 ? (quint64(1) << 47) : (quint64(3) << 30);
    // The first figure of statm is the size of every mapping, in pages.
    const QByteArray statm = readProcFile("/proc/self/statm", 64);
    const quint64 mapped =
        statm.left(statm.indexOf(' ')).toULongLong() * quint64(::sysconf(_SC_PAGESIZE));
    status.AvailVirtual = status.TotalVirtual - std::min(status.TotalVirtual, mapped);
}

bool readSysinfo(TMemoryStatus& status) {
    struct sysinfo info {};
    if (::sysinfo(&info) != 0)
        return false;
    const quint64 unit = info.mem_unit ? info.mem_unit : 1;
    status.TotalPhys = info.totalram * unit;
    status.AvailPhys = (info.freeram + info.bufferram) * unit;
    status.TotalPageFile = info.totalswap * unit;
    status.AvailPageFile = info.freeswap * unit;
    status.MemoryLoad = loadPercent(status.TotalPhys, status.AvailPhys);
    return true;
}

class ProcReader : public TSystemReader {
public:
    bool ReadCPUTimes(TCPUTimes& times) override {
        // The summary line comes first; 512 bytes hold it with room to spare.
        return qxtParseCPUTimes(readProcFile("/proc/stat", 512), times);
    }
    bool ReadMemoryStatus(TMemoryStatus& status) override {
        if (!qxtParseMemInfo(readProcFile("/proc/meminfo", 8192), status) && !readSysinfo(status))
            return false;
        readAddressSpace(status);
        return true;
    }
};

} // namespace

bool qxtParseCPUTimes(const QByteArray& ProcStat, TCPUTimes& Times) {
    // A negative length would give nothing; a text of one line ends without a line feed.
    const qsizetype end = ProcStat.indexOf('\n');
    const QByteArray line = end < 0 ? ProcStat : ProcStat.left(end);
    const QList<QByteArray> fields = line.simplified().split(' ');
    if (fields.size() < 1 + ioWaitState + 1 || fields[0] != "cpu")
        return false;
    TCPUTimes t;
    for (int i = 0; i < cpuStates && i + 1 < fields.size(); ++i) {
        bool ok = false;
        const quint64 v = fields[i + 1].toULongLong(&ok);
        if (!ok)
            return false;
        t.Total += v;
        if (i != idleState && i != ioWaitState)
            t.Busy += v;
    }
    Times = t;
    return true;
}

bool qxtParseMemInfo(const QByteArray& MemInfo, TMemoryStatus& Status) {
    quint64 total = 0, available = 0, swapTotal = 0, swapFree = 0;
    if (!memInfoValue(MemInfo, "MemTotal", total) ||
        !memInfoValue(MemInfo, "MemAvailable", available))
        return false;
    memInfoValue(MemInfo, "SwapTotal", swapTotal);
    memInfoValue(MemInfo, "SwapFree", swapFree);
    Status.TotalPhys = total * 1024;
    Status.AvailPhys = available * 1024;
    Status.TotalPageFile = swapTotal * 1024;
    Status.AvailPageFile = swapFree * 1024;
    Status.MemoryLoad = loadPercent(total, available);
    return true;
}

qint32 qxtCPUUsageBetween(const TCPUTimes& Previous, const TCPUTimes& Now) {
    if (Now.Total <= Previous.Total || Now.Busy < Previous.Busy)
        return 0;
    const quint64 busy = std::min(Now.Busy - Previous.Busy, Now.Total - Previous.Total);
    return qint32(busy * 100 / (Now.Total - Previous.Total));
}

TSystemReader::~TSystemReader() = default;

QDateTime TSystemReader::Now() {
    return QDateTime::currentDateTime();
}

std::shared_ptr<TSystemReader> qxtSystemReader() {
    static const std::shared_ptr<TSystemReader> reader = std::make_shared<ProcReader>();
    return reader;
}

TCPUUsage::TCPUUsage(std::shared_ptr<TSystemReader> Reader)
    : m_reader(Reader ? std::move(Reader) : qxtSystemReader()) {}

bool TCPUUsage::Read(qint32& Percent) {
    Percent = 0;
    TCPUTimes now;
    if (!m_reader->ReadCPUTimes(now))
        return false;
    if (m_havePrevious)
        Percent = qxtCPUUsageBetween(m_previous, now);
    m_previous = now;
    m_havePrevious = true;
    return true;
}
