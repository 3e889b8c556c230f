#pragma once

#include "QXAboutString.h"
#include "QXExport.h"
#include "TComponent.h"
#include "TTimer.h"

#include <QColor>
#include <QImage>
#include <QObject>
#include <QString>
#include <cstdint>

// A marquee. Horizontally its caption moves as one line from right to left, centred
// vertically; vertically its lines ("^M" breaks them) move up, centred horizontally. Once
// the text has left the control it comes in again from the right or bottom edge and
// OnStartText fires.
//
// Interval sets the pace in milliseconds (at least 20 when not 0). A positive interval lets
// the text come in from the right or bottom edge; a negative one starts it standing 10
// pixels from the left edge (horizontally) or at the top, and 0 stops it at the top left.
// Each tick moves the text by Steps pixels, or by one character (the width or height of "X")
// when Steps is 0. With AutoScroll a caption that fits (its width + 10 <= Width) stands
// still at the left edge and only a longer one runs.
//
// Example:
//
//     auto* news = new TQXScrollText(window);
//     news->SetCaption(QStringLiteral("+++ Neue Version verfügbar +++"));
//     news->SetAutoScroll(true);
class QXT_EXPORT TQXScrollText : public TGraphicControl, public TQXAboutCarrier {
    Q_OBJECT
    Q_PROPERTY(QString About_QXTools READ About_QXTools WRITE SetAbout_QXTools DESIGNABLE false)
    Q_PROPERTY(bool AutoScroll READ AutoScroll WRITE SetAutoScroll)
    Q_PROPERTY(QString Caption READ Caption WRITE SetCaption)
    Q_PROPERTY(QColor Color READ colorProperty WRITE setColorProperty)
    Q_PROPERTY(int Interval READ Interval WRITE SetInterval)
    Q_PROPERTY(bool ScrollHorizontal READ ScrollHorizontal WRITE SetScrollHorizontal)
    Q_PROPERTY(bool Shadow READ Shadow WRITE SetShadow)
    Q_PROPERTY(QColor ShadowColor READ shadowColorProperty WRITE setShadowColorProperty)
    Q_PROPERTY(int ShadowDepth READ ShadowDepth WRITE SetShadowDepth)
    Q_PROPERTY(int Steps READ Steps WRITE setStepsProperty)
    Q_PROPERTY(int Tag READ Tag WRITE SetTag)

public:
    // A marquee with the default caption, stopped until AutoScroll is on.
    explicit TQXScrollText(QWidget* parent = nullptr);
    ~TQXScrollText() override;

    // Runs the marquee only while the caption does not fit (checked when the caption is set).
    bool AutoScroll() const { return m_autoScroll; }
    void SetAutoScroll(bool Value) { m_autoScroll = Value; }
    // The text; "^M" breaks lines in vertical mode.
    QString Caption() const { return m_caption; }
    void SetCaption(const QString& Value);
    // Milliseconds per tick with its sign (see the class comment); 0 stops.
    int Interval() const { return m_interval; }
    void SetInterval(int Value);
    // One line from right to left (true) or several lines upwards (false).
    bool ScrollHorizontal() const { return m_scrollHorizontal; }
    void SetScrollHorizontal(bool Value);
    // Draws a copy of the text in ShadowColor below and right of it.
    bool Shadow() const { return m_shadow; }
    void SetShadow(bool Value);
    // The shadow's colour (grey by default).
    TColor ShadowColor() const { return m_shadowColor; }
    void SetShadowColor(TColor Value);
    // Offset of the shadow, 1 to 50 pixels.
    int ShadowDepth() const { return m_shadowDepth; }
    void SetShadowDepth(int Value);
    // Pixels per tick; 0 moves by one character.
    std::uint8_t Steps() const { return m_steps; }
    void SetSteps(std::uint8_t Value) { m_steps = Value; }

    // Where the text stands, relative to the client area.
    int PosX() const { return m_posX; }
    // The text's top, relative to the client area.
    int PosY() const { return m_posY; }
    // The marquee's timer.
    TTimer* Timer() const { return m_timer; }

    // Called at the start of every tick.
    TNotifyEvent OnScroll;
    // Called each time the text comes in again from the edge.
    TNotifyEvent OnStartText;

public slots:
    // One tick: OnScroll, move the text, show the new frame.
    void QXOnTime(QObject* Sender = nullptr);

protected:
    // Draws the caption at its current position.
    void Paint() override;
    // Composes the current frame into the backing image (placing the text again once it has
    // left) and shows it.
    void PaintBMP();

private:
    void compose();
    QString verticalText() const;
    QColor colorProperty() const { return TColorToQColor(Color()); }
    void setColorProperty(const QColor& c) { SetColor(QColorToTColor(c)); }
    QColor shadowColorProperty() const { return TColorToQColor(m_shadowColor); }
    void setShadowColorProperty(const QColor& c) { SetShadowColor(QColorToTColor(c)); }
    void setStepsProperty(int v) { SetSteps(std::uint8_t(v)); }

    QString m_caption;
    bool m_autoScroll = false;
    int m_interval = 0;
    bool m_scrollHorizontal = true;
    bool m_shadow = false;
    TColor m_shadowColor = clWhite;
    int m_shadowDepth = 2;
    std::uint8_t m_steps = 1;
    int m_posX = 0;
    int m_posY = 0;
    TTimer* m_timer = nullptr;
    QImage m_frame;
};

namespace QXScroll {
// Puts TQXScrollText on the "QX Tools" palette page.
QXT_EXPORT void Register();
} // namespace QXScroll
