#include "Qxbounce.h"

#include "QXDesign.h"
#include "QXTools.h"
#include "QxutilText.h"

#include <cmath>
#include <cstdlib>

namespace {

const bool classKnown = RegisterClass(ComponentClassOf<TQXBounce>());

constexpr int shortestTick = 20;
constexpr int ballSize = 10;

int truncated(long double v) {
    return int(std::trunc(v));
}

} // namespace

TQXBounce::TQXBounce(QWidget* parent) : TCustomControl(parent), TQXAboutCarrier(QXBounceVersion) {
    setFocusPolicy(Qt::NoFocus);
    // The field image covers every pixel.
    setAutoFillBackground(false);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName(QStringLiteral("Springender Ball"));
    setAccessibleDescription(QStringLiteral("Ein Ball, der mit Schwerkraft und Reibung springt"));
    m_timer = new TTimer(this);
    m_timer->OnTimer = [this](QObject* sender) { QXOnTime(sender); };
    m_timer->SetEnabled(false);
    SetDefaultSize(75, 50);
    SetColor(clBlack);
    SetStartXPos(1);
    SetStartYPos(1);
    takeBallSize();
    SetStartXSpeed(10);
    SetStartYSpeed(10);
    SetFriction(1);
    SetGravitation(1);
    SetInterval(0);
}

TQXBounce::~TQXBounce() {
    forgetControl();
}

void TQXBounce::forgetControl() {
    // The control may be one of this control's children, destroyed after this part of it.
    if (m_control)
        disconnect(m_control, &QObject::destroyed, this, nullptr);
    m_control = nullptr;
}

void TQXBounce::takeBallSize() {
    m_ballWidth = m_control ? m_control->width() : ballSize;
    m_ballHeight = m_control ? m_control->height() : ballSize;
}

void TQXBounce::SetControl(QWidget* Value) {
    forgetControl();
    m_control = Value;
    FreeNotification(Value);
    takeBallSize();
}

void TQXBounce::Notification(QObject* Component, TOperation Operation) {
    TCustomControl::Notification(Component, Operation);
    if (Operation == opRemove && Component == m_control) {
        m_control = nullptr;
        takeBallSize();
    }
}

void TQXBounce::SetFriction(int Value) {
    qxtMinMaxInteger(Value, 0, 100);
    m_friction = Value;
}

void TQXBounce::SetGravitation(int Value) {
    qxtMinMaxInteger(Value, 0, 10);
    m_gravitation = Value;
    Start();
}

void TQXBounce::SetInterval(int Value) {
    if (Value > 0 && Value < shortestTick)
        Value = shortestTick;
    m_interval = Value;
    m_timer->SetInterval(Value);
}

void TQXBounce::SetNoRefresh(bool Value) {
    m_noRefresh = Value;
    Invalidate();
}

void TQXBounce::SetStartXPos(int Value) {
    qxtMinMaxInteger(Value, 0, Width());
    m_startXPos = Value;
    m_xPos = Value;
    Invalidate();
    Start();
}

void TQXBounce::SetStartYPos(int Value) {
    qxtMinMaxInteger(Value, 0, Height());
    m_startYPos = Value;
    m_yPos = Value;
    Invalidate();
    Start();
}

void TQXBounce::SetStartXSpeed(int Value) {
    qxtMinMaxInteger(Value, -100, 100);
    m_startXSpeed = Value;
    m_xSpeed = Value;
    Start();
}

void TQXBounce::SetStartYSpeed(int Value) {
    qxtMinMaxInteger(Value, -100, 100);
    m_startYSpeed = Value;
    m_ySpeed = Value;
    Start();
}

void TQXBounce::Start() {
    m_xPos = m_startXPos;
    m_yPos = m_startYPos;
    m_xSpeed = m_startXSpeed;
    m_ySpeed = m_startYSpeed;
    takeBallSize();
    m_timer->SetEnabled(true);
    Invalidate();
}

void TQXBounce::QXOnTime(QObject*) {
    m_ySpeed += m_gravitation;
    m_xPos += m_xSpeed;
    m_yPos += m_ySpeed;
    CheckCollision();
    PaintBMP();
}

void TQXBounce::CheckCollision() {
    const long double damp = 1.0L - m_friction / 1000.0L;
    if (OnMove)
        OnMove(this, m_xPos, m_yPos, m_ballWidth, m_ballHeight, m_xSpeed, m_ySpeed);
    if (m_xPos < 1) {
        m_xPos = 1;
        m_xSpeed = -truncated(m_xSpeed * damp);
        if (m_xSpeed != 0 && OnHitLeftWall)
            OnHitLeftWall(this);
    }
    if (m_xPos + m_ballWidth >= Width()) {
        m_xPos = Width() - m_ballWidth - 1;
        m_xSpeed = -truncated(m_xSpeed * damp);
        if (m_xSpeed != 0 && OnHitRightWall)
            OnHitRightWall(this);
    }
    if (m_yPos < 1) {
        m_yPos = 1;
        m_ySpeed = -truncated(m_ySpeed * damp);
        if (OnHitRoof)
            OnHitRoof(this);
    }
    if (m_yPos + m_ballHeight < Height())
        return;
    m_yPos = Height() - m_ballHeight - 1;
    m_ySpeed = -truncated(m_ySpeed * damp);
    // Barely bouncing any more: the ball rolls, and the floor slows it down.
    if (std::abs(m_ySpeed) < 2)
        m_xSpeed = truncated(m_xSpeed * damp);
    if (m_xSpeed != 0 || m_ySpeed != 0) {
        if (OnHitFloor)
            OnHitFloor(this);
        return;
    }
    m_timer->SetEnabled(false);
    if (OnStop)
        OnStop(this);
}

void TQXBounce::ensureField() {
    if (m_field.size() == size())
        return;
    m_field = QImage(size(), QImage::Format_RGB32);
    m_field.fill(TColorToQColor(Color(), &palette()));
    m_fieldCanvas.SetImage(&m_field);
}

void TQXBounce::PaintBMP() {
    if (!Visible() && !ComponentState().Contains(csDesigning))
        return;
    if (m_control) {
        m_control->move(m_xPos, m_yPos);
        return;
    }
    ensureField();
    TCanvas& c = m_fieldCanvas;
    c.SetPalette(palette());
    if (!m_noRefresh && (m_xPos != m_prevXPos || m_yPos != m_prevYPos)) {
        c.Brush.Color = Color();
        c.Pen.Color = Color();
        c.Ellipse(m_prevXPos, m_prevYPos, m_prevXPos + ballSize, m_prevYPos + ballSize);
        m_prevXPos = m_xPos;
        m_prevYPos = m_yPos;
    }
    // The pen stays as it was: black at first, the background once a ball was erased.
    c.Brush.Color = clWhite;
    c.Ellipse(m_xPos, m_yPos, m_xPos + ballSize, m_yPos + ballSize);
    // Inside a paint the field is shown next; a tick asks for a paint.
    if (!Canvas()->IsDrawable())
        update();
}

void TQXBounce::Paint() {
    // Without NoRefresh the control is cleared first, as a windowed control erases itself.
    ensureField();
    if (!m_noRefresh)
        m_field.fill(TColorToQColor(Color(), &palette()));
    PaintBMP();
    Canvas()->DrawImage(ClientRect(), m_field);
}

void Qxbounce::Register() {
    Q_UNUSED(classKnown);
    QXRegisterOne(QLatin1String(QXPalettePage), "TQXBounce");
}
