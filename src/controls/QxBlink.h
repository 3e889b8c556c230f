#pragma once

#include "QXAboutString.h"
#include "QXExport.h"
#include "TComponent.h"
#include "TTimer.h"

#include <QColor>
#include <QObject>
#include <QWidget>

// Known to Qt's meta-object system so Designer offers the values.
namespace QXBlinkerEnums {
Q_NAMESPACE_EXPORT(QXT_EXPORT)

// What blinks: the control's background or its text.
enum TBlinkStyle { bsColor, bsFontColor };
Q_ENUM_NS(TBlinkStyle)

} // namespace QXBlinkerEnums

using TBlinkStyle = QXBlinkerEnums::TBlinkStyle;
using enum QXBlinkerEnums::TBlinkStyle;

// Makes another control blink: while Blink is on, every tick gives the control's background
// (bsColor) or text (bsFontColor) BlinkHiColor and BlinkLoColor in turn, the high colour
// first. Whenever Blink is off the control rests in BlinkInAktColor, which the blinker takes
// from the control when it is assigned or the style changes; switching off, assigning another
// control or changing the style gives the control its resting colour back first. A control of
// this library changes its Color or its font colour; any other widget the palette colour of
// its background or text role.
//
// Example:
//
//     auto* blinker = new TQXBlinker(window);
//     blinker->SetControl(warningLabel);
//     blinker->SetBlink(true);
class QXT_EXPORT TQXBlinker : public TComponent, public TQXAboutCarrier {
    Q_OBJECT
    Q_PROPERTY(QString About_QXTools READ About_QXTools WRITE SetAbout_QXTools DESIGNABLE false)
    Q_PROPERTY(bool Blink READ Blink WRITE SetBlink)
    Q_PROPERTY(QColor BlinkHiColor READ hiColorProperty WRITE setHiColorProperty)
    Q_PROPERTY(QColor BlinkLoColor READ loColorProperty WRITE setLoColorProperty)
    Q_PROPERTY(QColor BlinkInAktColor READ inAktColorProperty WRITE setInAktColorProperty)
    Q_PROPERTY(int Interval READ Interval WRITE SetInterval)
    Q_PROPERTY(QXBlinkerEnums::TBlinkStyle BlinkStyle READ BlinkStyle WRITE SetBlinkStyle)
    Q_PROPERTY(int Tag READ Tag WRITE SetTag)

public:
    // A blinker without a control, yellow and olive every 500 ms once Blink is on.
    explicit TQXBlinker(QObject* owner = nullptr);
    ~TQXBlinker() override;

    // Blinks while on; switching it off restores the resting colour.
    bool Blink() const { return m_blink; }
    void SetBlink(bool Value);
    // The first colour of the blink (yellow by default).
    TColor BlinkHiColor() const { return m_hiColor; }
    void SetBlinkHiColor(TColor Value) { m_hiColor = Value; }
    // The second colour of the blink (olive by default).
    TColor BlinkLoColor() const { return m_loColor; }
    void SetBlinkLoColor(TColor Value) { m_loColor = Value; }
    // The resting colour; setting it colours the control at once.
    TColor BlinkInAktColor() const { return m_inAktColor; }
    void SetBlinkInAktColor(TColor Value);
    // Milliseconds per tick, at least 20 when positive.
    int Interval() const { return m_interval; }
    void SetInterval(int Value);
    // Background or text.
    TBlinkStyle BlinkStyle() const { return m_blinkStyle; }
    void SetBlinkStyle(TBlinkStyle Value);
    // The control that blinks (not owned), or null.
    QWidget* Control() const { return m_control; }
    void SetControl(QWidget* Value);

    // Gives the control's background or text (by BlinkStyle) the colour; no control, no change.
    void SetControlColor(TColor Color);
    // The control's background or text colour by BlinkStyle; 0 without a control.
    TColor GetControlColor() const;
    // The blinker's timer.
    TTimer* Timer() const { return m_timer; }

public slots:
    // One tick: the next colour of the blink (nothing without a control).
    void QXOnTime(QObject* Sender = nullptr);

protected:
    void Notification(QObject* Component, TOperation Operation) override;

private:
    void forgetControl();
    QColor hiColorProperty() const { return TColorToQColor(m_hiColor); }
    void setHiColorProperty(const QColor& c) { SetBlinkHiColor(QColorToTColor(c)); }
    QColor loColorProperty() const { return TColorToQColor(m_loColor); }
    void setLoColorProperty(const QColor& c) { SetBlinkLoColor(QColorToTColor(c)); }
    QColor inAktColorProperty() const { return TColorToQColor(m_inAktColor); }
    void setInAktColorProperty(const QColor& c) { SetBlinkInAktColor(QColorToTColor(c)); }

    bool m_blink = false;
    TColor m_hiColor = clYellow;
    TColor m_loColor = clOlive;
    TColor m_inAktColor = clBtnFace;
    TBlinkStyle m_blinkStyle = bsColor;
    QWidget* m_control = nullptr;
    int m_interval = 1000;
    // True: the next tick shows the high colour.
    bool m_phase = true;
    TTimer* m_timer = nullptr;
};

namespace QxBlink {
// Puts TQXBlinker on the "QX Tools" palette page.
QXT_EXPORT void Register();
} // namespace QxBlink
