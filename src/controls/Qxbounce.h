#pragma once

#include "QXAboutString.h"
#include "QXExport.h"
#include "TComponent.h"
#include "TTimer.h"

#include <QColor>
#include <QImage>
#include <QObject>
#include <functional>

// Reports the ball's move before the walls are checked; the handler may change the position
// and the speeds.
using TQXBounceEvent = std::function<void(QObject* Sender, int& XPos, int& YPos, int AWidth,
                                          int AHeight, int& XSpeed, int& YSpeed)>;

// A ball thrown inside the control. Every tick gravity adds Gravitation to the vertical
// speed, the ball moves by its speeds, and each edge it reaches sends it back slowed by
// Friction tenths of a per cent (speeds are truncated toward zero). A floor contact that
// leaves less than 2 pixels per tick of vertical speed also slows the rolling. When a floor
// contact leaves both speeds at 0 the throw ends: the timer stops and OnStop fires. Wall
// events fire only while the ball still moves sideways after the bounce; the roof event
// always fires. The ball is a white 10 x 10 circle on the control, or another control
// (Control) that is moved around instead; with NoRefresh the ball leaves a trail.
//
// Example:
//
//     auto* ball = new TQXBounce(window);
//     ball->SetGravitation(2);
//     ball->OnStop = [ball](QObject*) { ball->Start(); };
class QXT_EXPORT TQXBounce : public TCustomControl, public TQXAboutCarrier {
    Q_OBJECT
    Q_PROPERTY(QString About_QXTools READ About_QXTools WRITE SetAbout_QXTools DESIGNABLE false)
    Q_PROPERTY(QColor Color READ colorProperty WRITE setColorProperty)
    Q_PROPERTY(int Friction READ Friction WRITE SetFriction)
    Q_PROPERTY(int Gravitation READ Gravitation WRITE SetGravitation)
    Q_PROPERTY(int Interval READ Interval WRITE SetInterval)
    Q_PROPERTY(bool NoRefresh READ NoRefresh WRITE SetNoRefresh)
    Q_PROPERTY(int StartXPos READ StartXPos WRITE SetStartXPos)
    Q_PROPERTY(int StartYPos READ StartYPos WRITE SetStartYPos)
    Q_PROPERTY(int StartXSpeed READ StartXSpeed WRITE SetStartXSpeed)
    Q_PROPERTY(int StartYSpeed READ StartYSpeed WRITE SetStartYSpeed)
    Q_PROPERTY(int Tag READ Tag WRITE SetTag)

public:
    // A ball at rest on a black field until the timer runs.
    explicit TQXBounce(QWidget* parent = nullptr);
    ~TQXBounce() override;

    // The control moved as the ball (not owned), or null for the drawn ball.
    QWidget* Control() const { return m_control; }
    void SetControl(QWidget* Value);
    // Energy lost per bounce in tenths of a per cent, 0 to 100.
    int Friction() const { return m_friction; }
    void SetFriction(int Value);
    // Added to the vertical speed every tick, 0 to 10; setting it throws again.
    int Gravitation() const { return m_gravitation; }
    void SetGravitation(int Value);
    // Milliseconds per tick (at least 20 when positive); 0 delivers no ticks.
    int Interval() const { return m_interval; }
    void SetInterval(int Value);
    // Leaves the old balls standing (a trail).
    bool NoRefresh() const { return m_noRefresh; }
    void SetNoRefresh(bool Value);
    // Where the throw starts, within the control; setting one throws again.
    int StartXPos() const { return m_startXPos; }
    void SetStartXPos(int Value);
    // Where the throw starts from the top; setting it throws again.
    int StartYPos() const { return m_startYPos; }
    void SetStartYPos(int Value);
    // The speeds the throw starts with, -100 to 100 pixels per tick; setting one throws again.
    int StartXSpeed() const { return m_startXSpeed; }
    void SetStartXSpeed(int Value);
    // The downward speed the throw starts with; setting it throws again.
    int StartYSpeed() const { return m_startYSpeed; }
    void SetStartYSpeed(int Value);

    // Throws the ball again from the start values.
    void Start();
    // The ball now: top-left corner, size and speeds (positive = right, down).
    int XPos() const { return m_xPos; }
    // The ball's top.
    int YPos() const { return m_yPos; }
    // The ball's width in pixels.
    int BallWidth() const { return m_ballWidth; }
    // The ball's height in pixels.
    int BallHeight() const { return m_ballHeight; }
    // The speed to the right (negative: to the left).
    int XSpeed() const { return m_xSpeed; }
    // The speed downwards (negative: upwards).
    int YSpeed() const { return m_ySpeed; }
    // The simulation's timer.
    TTimer* Timer() const { return m_timer; }

    // Called after each move, before the walls are checked.
    TQXBounceEvent OnMove;
    // Called when the ball bounces off the bottom.
    TNotifyEvent OnHitFloor;
    // Called when the ball bounces off the left side.
    TNotifyEvent OnHitLeftWall;
    // Called when the ball bounces off the right side.
    TNotifyEvent OnHitRightWall;
    // Called when the ball bounces off the top.
    TNotifyEvent OnHitRoof;
    // Called when the ball has come to rest.
    TNotifyEvent OnStop;

public slots:
    // One tick: gravity, move, walls, draw.
    void QXOnTime(QObject* Sender = nullptr);

protected:
    // Draws the ball at its position, or nothing while it moves another control.
    void Paint() override;
    void Notification(QObject* Component, TOperation Operation) override;
    // The walls, floor and roof of one tick, with their events and the stop.
    void CheckCollision();
    // Moves the other control, or erases the old ball and draws the new one.
    void PaintBMP();

private:
    void takeBallSize();
    void ensureField();
    void forgetControl();
    QColor colorProperty() const { return TColorToQColor(Color()); }
    void setColorProperty(const QColor& c) { SetColor(QColorToTColor(c)); }

    QWidget* m_control = nullptr;
    int m_friction = 1;
    int m_gravitation = 1;
    int m_interval = 0;
    int m_startXPos = 1;
    int m_startYPos = 1;
    int m_ballWidth = 10;
    int m_ballHeight = 10;
    int m_startXSpeed = 10;
    int m_startYSpeed = 10;
    int m_xPos = 1;
    int m_yPos = 1;
    int m_prevXPos = 0;
    int m_prevYPos = 0;
    int m_xSpeed = 10;
    int m_ySpeed = 10;
    bool m_noRefresh = false;
    TTimer* m_timer = nullptr;
    // What the control shows; its canvas keeps the pen from one drawing to the next.
    QImage m_field;
    TCanvas m_fieldCanvas;
};

namespace Qxbounce {
// Puts TQXBounce on the "QX Tools" palette page.
QXT_EXPORT void Register();
} // namespace Qxbounce
