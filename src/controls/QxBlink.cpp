#include "QxBlink.h"

#include "QXDesign.h"
#include "QXTools.h"

namespace {

const bool classKnown = RegisterClass(ComponentClassOf<TQXBlinker>());

constexpr int shortestTick = 20;

} // namespace

TQXBlinker::TQXBlinker(QObject* owner) : TComponent(owner), TQXAboutCarrier(QXBlinkerVersion) {
    m_timer = new TTimer(this);
    m_timer->OnTimer = [this](QObject* sender) { QXOnTime(sender); };
    SetInterval(1000);
    m_hiColor = clYellow;
    m_loColor = clOlive;
    m_inAktColor = clBtnFace;
    SetBlink(false);
}

TQXBlinker::~TQXBlinker() {
    forgetControl();
}

void TQXBlinker::forgetControl() {
    if (m_control)
        disconnect(m_control, &QObject::destroyed, this, nullptr);
    m_control = nullptr;
}

void TQXBlinker::SetBlink(bool Value) {
    m_blink = Value;
    m_timer->SetEnabled(Value);
    m_phase = true;
    if (!Value)
        SetControlColor(m_inAktColor);
}

void TQXBlinker::SetBlinkInAktColor(TColor Value) {
    m_inAktColor = Value;
    SetControlColor(Value);
}

void TQXBlinker::SetInterval(int Value) {
    if (Value > 0 && Value < shortestTick)
        Value = shortestTick;
    m_interval = Value;
    m_timer->SetInterval(Value);
}

void TQXBlinker::SetBlinkStyle(TBlinkStyle Value) {
    SetControlColor(m_inAktColor);
    m_blinkStyle = Value;
    m_inAktColor = GetControlColor();
}

void TQXBlinker::SetControl(QWidget* Value) {
    SetControlColor(m_inAktColor);
    forgetControl();
    m_control = Value;
    if (!Value)
        return;
    FreeNotification(Value);
    m_inAktColor = GetControlColor();
}

void TQXBlinker::Notification(QObject* Component, TOperation Operation) {
    TComponent::Notification(Component, Operation);
    if (Operation == opRemove && Component == m_control) {
        m_control = nullptr;
        SetBlink(false);
    }
}

void TQXBlinker::SetControlColor(TColor Color) {
    if (!m_control)
        return;
    if (auto* control = qobject_cast<TControl*>(m_control)) {
        if (m_blinkStyle == bsColor)
            control->SetColor(Color);
        else
            control->Font()->SetColor(Color);
        return;
    }
    QPalette p = m_control->palette();
    const QPalette::ColorRole role =
        m_blinkStyle == bsColor ? m_control->backgroundRole() : m_control->foregroundRole();
    p.setColor(role, TColorToQColor(Color, &p));
    m_control->setPalette(p);
    // A plain widget shows its background colour only when it fills its background.
    if (m_blinkStyle == bsColor && role == QPalette::Window)
        m_control->setAutoFillBackground(true);
}

TColor TQXBlinker::GetControlColor() const {
    if (!m_control)
        return 0;
    if (auto* control = qobject_cast<TControl*>(m_control))
        return m_blinkStyle == bsColor ? control->Color() : control->Font()->Color();
    const QPalette::ColorRole role =
        m_blinkStyle == bsColor ? m_control->backgroundRole() : m_control->foregroundRole();
    return QColorToTColor(m_control->palette().color(role));
}

void TQXBlinker::QXOnTime(QObject*) {
    if (!m_control)
        return;
    // The timer rests while the colour changes, so a slow repaint cannot pile up ticks.
    const bool running = m_timer->Enabled();
    m_timer->SetEnabled(false);
    SetControlColor(m_phase ? m_hiColor : m_loColor);
    m_timer->SetEnabled(running);
    m_phase = !m_phase;
}

void QxBlink::Register() {
    Q_UNUSED(classKnown);
    QXRegisterOne(QLatin1String(QXPalettePage), "TQXBlinker");
}
