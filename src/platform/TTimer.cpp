#include "TTimer.h"

TTimer::TTimer(QObject* owner) : QObject(owner) {
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, [this]() {
        if (OnTimer)
            OnTimer(this);
    });
    update();
}

TTimer::~TTimer() = default;

void TTimer::SetEnabled(bool value) {
    if (value == m_enabled)
        return;
    m_enabled = value;
    update();
}

void TTimer::SetInterval(int value) {
    if (value == m_interval)
        return;
    m_interval = value;
    update();
}

void TTimer::update() {
    if (m_enabled && m_interval > 0)
        m_timer.start(m_interval);
    else
        m_timer.stop();
}
