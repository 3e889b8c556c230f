#pragma once

#include "QXExport.h"

#include <QObject>
#include <QTimer>
#include <functional>

// The framework's timer: it ticks only while Enabled and Interval > 0 (a Qt timer with
// interval 0 would fire on every pass of the event loop).
//
// Example, a clock label refreshed every second:
//
//     auto* timer = new TTimer(label);
//     timer->OnTimer = [label](QObject*) { label->setText(TimeToStr(QTime::currentTime())); };
class QXT_EXPORT TTimer : public QObject {
    Q_OBJECT
public:
    // An enabled timer of 1000 ms, ticking from now on.
    explicit TTimer(QObject* owner = nullptr);
    ~TTimer() override;
    // Whether the timer ticks (while Interval is above 0).
    bool Enabled() const { return m_enabled; }
    void SetEnabled(bool value);
    // Milliseconds between ticks.
    int Interval() const { return m_interval; }
    void SetInterval(int value);
    // Free-form value for the application.
    int Tag() const { return m_tag; }
    void SetTag(int value) { m_tag = value; }
    // True while the underlying timer is running.
    bool IsActive() const { return m_timer.isActive(); }
    // Called on every tick with the timer as sender.
    std::function<void(QObject* sender)> OnTimer;

private:
    void update();
    QTimer m_timer;
    bool m_enabled = true;
    int m_interval = 1000;
    int m_tag = 0;
};
