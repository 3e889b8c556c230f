#pragma once

#include "QXExport.h"
#include "TComponent.h"

#include <QObject>
#include <QString>
#include <atomic>
#include <functional>
#include <memory>

enum TThreadPriority { tpIdle, tpLowest, tpLower, tpNormal, tpHigher, tpHighest, tpTimeCritical };

// The framework's worker thread. Execute runs on a thread of its own; everything else belongs
// to the thread that created the object (the GUI thread):
// - OnTerminate runs there after Execute has returned, and with FreeOnTerminate the object
//   then deletes itself (deferred, so OnTerminate may still use it);
// - Queue hands work from Execute over to it, in order;
// - termination is cooperative: Terminate only sets the flag that Execute reads through
//   Terminated().
// Deleting the object while Execute runs terminates it and waits for it; a subclass whose
// Execute uses its own members must end the thread first (Terminate, WaitFor), because its
// members are gone by the time the base class waits.
//
// Example, a sum worked out beside the interface and shown when done:
//
//     class TSumThread : public TThread {
//     public:
//         explicit TSumThread(QLabel* label) : TThread(false), m_label(label) {}
//     protected:
//         void Execute() override {
//             long long sum = 0;
//             for (int i = 0; i < 100000000 && !Terminated(); ++i)
//                 sum += i;
//             Queue([this, sum] { m_label->setNum(double(sum)); });
//         }
//     private:
//         QLabel* m_label;
//     };
class QXT_EXPORT TThread : public QObject {
    Q_OBJECT
public:
    // A thread created suspended starts with Resume; otherwise it starts at the next turn of
    // the creating thread's event loop (after the subclass is fully constructed).
    explicit TThread(bool CreateSuspended);
    ~TThread() override;
    TThread(const TThread&) = delete;
    TThread& operator=(const TThread&) = delete;

    // Starts a suspended thread; does nothing once it has started.
    void Resume();
    // True until the thread has been started.
    bool Suspended() const { return !m_started; }
    // Asks Execute to end.
    void Terminate() { m_terminated.store(true, std::memory_order_relaxed); }
    // True once Terminate was called; Execute polls it.
    bool Terminated() const { return m_terminated.load(std::memory_order_relaxed); }
    // Waits until Execute has returned (at once when it never started); returns ReturnValue.
    int WaitFor();
    // True while Execute runs.
    bool Running() const;
    // The scheduling priority; takes effect when the thread starts or at once while it runs.
    TThreadPriority Priority() const { return m_priority; }
    void SetPriority(TThreadPriority value);
    // Delete the object after OnTerminate.
    bool FreeOnTerminate() const { return m_freeOnTerminate; }
    void SetFreeOnTerminate(bool value) { m_freeOnTerminate = value; }
    // The result Execute leaves for WaitFor.
    int ReturnValue() const { return m_returnValue; }
    // The message of an exception that escaped Execute ("" when none did).
    QString FatalException() const;

    // Runs on the creating thread once Execute has returned.
    TNotifyEvent OnTerminate;

protected:
    // The thread's work; runs on the worker thread.
    virtual void Execute() = 0;
    // Sets what the thread returns when it ends.
    void SetReturnValue(int value) { m_returnValue = value; }
    // Runs method later on the creating thread, after everything queued before it; never
    // waits. Work still queued when the object is deleted is dropped.
    void Queue(std::function<void()> method);

private:
    class Runner;
    void run();
    void finished();

    std::unique_ptr<Runner> m_runner;
    std::atomic<bool> m_terminated{false};
    bool m_started = false;
    bool m_freeOnTerminate = false;
    TThreadPriority m_priority = tpNormal;
    int m_returnValue = 0;
    QString m_fatal;
};
