#pragma once

// Figures of the running system: processor time and memory.
//
// The processor figures are the time counters of the first line of /proc/stat; a usage in
// percent is the busy share of the time that passed between two readings. The memory status
// follows GlobalMemoryStatus: physical memory is RAM, "available" being what programs can
// still get without swapping (MemAvailable of /proc/meminfo); the page file is the swap
// space; virtual memory is this process's address space, its size being the address-space
// limit (RLIMIT_AS) or, without one, the user part of the architecture's address space
// (128 TiB on 64-bit systems, 3 GiB on 32-bit ones), and its available part what the process
// has not mapped yet. Without a readable /proc/meminfo the physical and swap figures come
// from sysinfo(2), counting free and buffer memory as available.

#include "QXExport.h"

#include <QByteArray>
#include <QDateTime>
#include <memory>

// The processors' time counters, in clock ticks since the system started.
struct TCPUTimes {
    // Every state but idle and waiting for input or output.
    quint64 Busy = 0;
    // Every state.
    quint64 Total = 0;
};

// The memory status; every size is in bytes.
struct TMemoryStatus {
    // Percent of physical memory in use.
    quint32 MemoryLoad = 0;
    // Physical memory.
    quint64 TotalPhys = 0;
    // Physical memory free or reclaimable.
    quint64 AvailPhys = 0;
    // Swap space.
    quint64 TotalPageFile = 0;
    // Free swap space.
    quint64 AvailPageFile = 0;
    // The address space a process may use.
    quint64 TotalVirtual = 0;
    // The part of it not in use.
    quint64 AvailVirtual = 0;
};

// Reads the counters of the "cpu" line that starts the text of /proc/stat.
QXT_EXPORT bool qxtParseCPUTimes(const QByteArray& ProcStat, TCPUTimes& Times);
// Reads the physical and swap figures and the memory load from the text of /proc/meminfo;
// the virtual figures are left as they are.
QXT_EXPORT bool qxtParseMemInfo(const QByteArray& MemInfo, TMemoryStatus& Status);
// The busy share in percent between two readings; 0 when no time passed between them.
QXT_EXPORT qint32 qxtCPUUsageBetween(const TCPUTimes& Previous, const TCPUTimes& Now);

// Where system figures come from: the running system, or fixed figures in tests.
class QXT_EXPORT TSystemReader {
public:
    virtual ~TSystemReader();
    // The processors' time counters now; false when they cannot be read.
    virtual bool ReadCPUTimes(TCPUTimes& Times) = 0;
    // The memory status now; false when it cannot be read.
    virtual bool ReadMemoryStatus(TMemoryStatus& Status) = 0;
    // The local date and time now.
    virtual QDateTime Now();
};

// The reader of the running system (one shared object; it keeps no state).
QXT_EXPORT std::shared_ptr<TSystemReader> qxtSystemReader();

// The processors' usage since the previous reading of the same object.
//
// Example, the processor load once a second:
//
//     auto usage = std::make_shared<TCPUUsage>();
//     timer->OnTimer = [usage, gauge](QObject*) {
//         qint32 percent = 0;
//         if (usage->Read(percent))
//             gauge->SetProgress(percent);
//     };
class QXT_EXPORT TCPUUsage {
public:
    // Reads through Reader, or the running system when none is given.
    explicit TCPUUsage(std::shared_ptr<TSystemReader> Reader = {});
    // The busy share in percent since the previous successful reading, 0 on the first one;
    // false (and 0) when the counters cannot be read.
    bool Read(qint32& Percent);

private:
    std::shared_ptr<TSystemReader> m_reader;
    TCPUTimes m_previous;
    bool m_havePrevious = false;
};
