#include "Application.h"
#include "SysUtils.h"
#include "TThread.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QPointer>
#include <QThread>
#include <atomic>
#include <functional>
#include <gtest/gtest.h>
#include <stdexcept>

namespace {

// Lets the event loop run until done() holds or five seconds have passed.
bool runUntil(const std::function<bool()>& done) {
    QElapsedTimer clock;
    clock.start();
    while (!done() && clock.elapsed() < 5000) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        QThread::msleep(1);
    }
    return done();
}

// A thread whose work is a function given by the test.
class TWorker : public TThread {
public:
    TWorker(bool suspended, std::function<void(TWorker*)> work)
        : TThread(suspended), m_work(std::move(work)) {}
    ~TWorker() override {
        Terminate();
        WaitFor();
    }
    using TThread::Queue;
    using TThread::SetReturnValue;
    std::atomic<QThread*> ranOn{nullptr};

protected:
    void Execute() override {
        ranOn = QThread::currentThread();
        m_work(this);
    }

private:
    std::function<void(TWorker*)> m_work;
};

} // namespace

TEST(Thread, ExecuteRunsApartAndQueuedWorkAndTheEndComeBackInOrder) {
    QList<int> order;
    QThread* terminateOn = nullptr;
    TWorker worker(true, [](TWorker* w) {
        for (int i = 1; i <= 50; ++i)
            w->Queue([w, i]() { w->setProperty("last", i); });
        w->SetReturnValue(7);
    });
    worker.setProperty("last", 0);
    worker.OnTerminate = [&](QObject*) {
        terminateOn = QThread::currentThread();
        order << worker.property("last").toInt();
    };
    EXPECT_TRUE(worker.Suspended());
    QCoreApplication::processEvents();
    EXPECT_EQ(worker.ranOn.load(), nullptr) << "a suspended thread started by itself";
    worker.Resume();
    EXPECT_FALSE(worker.Suspended());
    EXPECT_EQ(worker.WaitFor(), 7);
    ASSERT_TRUE(runUntil([&]() { return !order.isEmpty(); }));
    EXPECT_NE(worker.ranOn.load(), QThread::currentThread());
    EXPECT_EQ(terminateOn, QThread::currentThread());
    // Every queued call ran, in order, before the end handler.
    EXPECT_EQ(order, QList<int>{50});
    EXPECT_EQ(worker.FatalException(), QString());
}

TEST(Thread, StartsByItselfAfterConstructionAndStopsWhenAsked) {
    std::atomic<int> rounds{0};
    TWorker worker(false, [&](TWorker* w) {
        while (!w->Terminated())
            ++rounds;
    });
    EXPECT_EQ(worker.ranOn.load(), nullptr);
    ASSERT_TRUE(runUntil([&]() { return rounds.load() > 0; }));
    EXPECT_TRUE(worker.Running());
    worker.Terminate();
    worker.WaitFor();
    EXPECT_FALSE(worker.Running());
    EXPECT_TRUE(worker.Terminated());
}

TEST(Thread, AnEscapingExceptionIsKeptAndFreeOnTerminateDeletesTheObject) {
    QPointer<TWorker> worker =
        new TWorker(false, [](TWorker*) { throw std::runtime_error("Platte voll"); });
    bool ended = false;
    QString fatal;
    worker->SetFreeOnTerminate(true);
    worker->OnTerminate = [&](QObject* sender) {
        ended = true;
        fatal = static_cast<TWorker*>(sender)->FatalException();
    };
    ASSERT_TRUE(runUntil([&]() { return worker.isNull(); }));
    EXPECT_TRUE(ended);
    EXPECT_EQ(fatal, QStringLiteral("Platte voll"));
}

TEST(Thread, DeletingARunningThreadEndsItAndDropsItsQueue) {
    std::atomic<bool> started{false};
    int queuedRan = 0;
    auto* worker = new TWorker(true, [&](TWorker* w) {
        started = true;
        w->Queue([&]() { ++queuedRan; });
        while (!w->Terminated())
            QThread::msleep(1);
    });
    worker->Resume();
    ASSERT_TRUE(runUntil([&]() { return started.load(); }));
    delete worker;
    QCoreApplication::processEvents();
    EXPECT_EQ(queuedRan, 0);
}

TEST(IntegerArithmetic, DivisionByZeroRaisesInsteadOfStoppingTheProcess) {
    EXPECT_EQ(IntDiv(7, 2), 3);
    EXPECT_EQ(IntDiv(-7, 2), -3);
    EXPECT_EQ(IntMod(-7, 2), -1);
    EXPECT_THROW(IntMod(5, 0), EDivByZero);
    try {
        IntDiv(1, 0);
        FAIL() << "no exception";
    } catch (const EIntError& e) {
        EXPECT_EQ(e.Message(), QStringLiteral("Division durch Null"));
    }
    EXPECT_FALSE(Application()->Terminated());
}
