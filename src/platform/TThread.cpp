#include "TThread.h"

#include <QThread>
#include <exception>

namespace {

QThread::Priority qtPriority(TThreadPriority p) {
    switch (p) {
    case tpIdle:
        return QThread::IdlePriority;
    case tpLowest:
        return QThread::LowestPriority;
    case tpLower:
        return QThread::LowPriority;
    case tpNormal:
        break;
    case tpHigher:
        return QThread::HighPriority;
    case tpHighest:
        return QThread::HighestPriority;
    case tpTimeCritical:
        return QThread::TimeCriticalPriority;
    }
    return QThread::NormalPriority;
}

} // namespace

class TThread::Runner : public QThread {
public:
    explicit Runner(TThread* owner) : m_owner(owner) {}

protected:
    void run() override { m_owner->run(); }

private:
    TThread* m_owner;
};

TThread::TThread(bool CreateSuspended) : m_runner(std::make_unique<Runner>(this)) {
    // The runner lives on the creating thread, so its finished signal arrives here queued.
    connect(m_runner.get(), &QThread::finished, this, &TThread::finished, Qt::QueuedConnection);
    if (!CreateSuspended)
        QMetaObject::invokeMethod(this, &TThread::Resume, Qt::QueuedConnection);
}

TThread::~TThread() {
    Terminate();
    m_runner->wait();
}

void TThread::Resume() {
    if (m_started)
        return;
    m_started = true;
    m_runner->start(qtPriority(m_priority));
}

int TThread::WaitFor() {
    if (m_started)
        m_runner->wait();
    return m_returnValue;
}

bool TThread::Running() const {
    return m_runner->isRunning();
}

void TThread::SetPriority(TThreadPriority value) {
    m_priority = value;
    if (m_runner->isRunning())
        m_runner->setPriority(qtPriority(value));
}

QString TThread::FatalException() const {
    return m_runner->isRunning() ? QString() : m_fatal;
}

void TThread::Queue(std::function<void()> method) {
    QMetaObject::invokeMethod(this, std::move(method), Qt::QueuedConnection);
}

void TThread::run() {
    // An exception must not leave the thread: it would end the process.
    try {
        Execute();
    } catch (const std::exception& e) {
        m_fatal = QString::fromUtf8(e.what());
    } catch (...) {
        m_fatal = QStringLiteral("Unbekannter Fehler im Thread");
    }
}

void TThread::finished() {
    if (OnTerminate)
        OnTerminate(this);
    if (m_freeOnTerminate)
        deleteLater();
}
