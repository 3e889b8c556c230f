#pragma once

#include "QXAboutString.h"
#include "QXExport.h"
#include "TComponent.h"
#include "TFont.h"
#include "TGraphic.h"
#include "THintWindow.h"

#include <QColor>
#include <QFont>
#include <QObject>

// Known to Qt's meta-object system so Designer offers the values.
namespace QxhintEnums {
Q_NAMESPACE_EXPORT(QXT_EXPORT)

// Where the balloon stands relative to the pointer.
enum THintPosition { hpAboveLeft, hpAboveRight, hpBelowLeft, hpBelowRight };
Q_ENUM_NS(THintPosition)

} // namespace QxhintEnums

using THintPosition = QxhintEnums::THintPosition;
using enum QxhintEnums::THintPosition;

// The settings every hint is composed with. The hint window is made by the application and
// cannot reach the component, so the component publishes them here; a second TQXHint
// overwrites the first one's.
// The composed hint picture (the screen behind the hint with the bubble on it).
extern QXT_EXPORT TBitmap* QXH_BakBitmap;
// The pointer position the last hint was placed by.
extern QXT_EXPORT TPoint QXH_Crs;
// The width the hint text is wrapped at.
extern QXT_EXPORT int QXH_DefaultWidth;
// The preferred side of the pointer.
extern QXT_EXPORT THintPosition QXH_HintPosition;
// The shadow's offset in pixels.
extern QXT_EXPORT int QXH_ShadowDepth;
// The balloon's colour.
extern QXT_EXPORT TColor QXH_Color;
// The hint text's font.
extern QXT_EXPORT TFont* QXH_Font;

// Copies source onto dest from (0, 0), leaving out white (0xFFFFFF) pixels; both canvases
// must draw into images.
QXT_EXPORT void CopyTransparent(TCanvas* dest, TCanvas* source, int width, int height);
// text with every from replaced by to.
QXT_EXPORT QString ReplaceString(const QString& text, const QString& from, const QString& to);

// Shows every tooltip of the application as a thought bubble: a rounded balloon in Color with
// three small circles trailing to the pointer, over a soft grey shadow, drawn over a copy of
// the screen behind it so that the window looks shaped. "^M" in a tooltip breaks the line.
//
// The settings take effect at the next hint. Active is applied when loading ends (at the first
// turn of the event loop, or EndLoading), and never inside the designer.
//
// Example:
//
//     auto* hints = new TQXHint(window);
//     hints->SetColor(clAqua);
//     hints->SetActive(true);
class QXT_EXPORT TQXHint : public TComponent, public TQXAboutCarrier {
    Q_OBJECT
    Q_PROPERTY(QString About_QXTools READ About_QXTools WRITE SetAbout_QXTools DESIGNABLE false)
    Q_PROPERTY(bool Active READ Active WRITE SetActive)
    Q_PROPERTY(QColor Color READ colorProperty WRITE setColorProperty)
    Q_PROPERTY(int DefaultWidth READ DefaultWidth WRITE SetDefaultWidth)
    Q_PROPERTY(QFont Font READ fontProperty WRITE setFontProperty)
    Q_PROPERTY(int HintPause READ HintPause WRITE SetHintPause)
    Q_PROPERTY(int HintHidePause READ HintHidePause WRITE SetHintHidePause)
    Q_PROPERTY(QxhintEnums::THintPosition HintPosition READ HintPosition WRITE SetHintPosition)
    Q_PROPERTY(int ShadowDepth READ ShadowDepth WRITE SetShadowDepth)

public:
    // Off until Active is set; yellow, 150 pixels wide, above right.
    explicit TQXHint(QObject* owner = nullptr);
    ~TQXHint() override;

    // On: the application's hints become thought bubbles. Off: no hints at all.
    bool Active() const { return m_active; }
    void SetActive(bool Value);
    // The balloon's colour (yellow by default).
    TColor Color() const { return m_color; }
    void SetColor(TColor Value);
    // The width hint text is wrapped at (150).
    int DefaultWidth() const { return m_defaultWidth; }
    void SetDefaultWidth(int Value);
    // The hint text's font; changes go to every hint.
    TFont* Font() { return &m_font; }
    void SetFont(const TFont& Value) { m_font.Assign(Value); }
    // Milliseconds before a hint shows (800); written to the application.
    int HintPause() const { return m_hintPause; }
    void SetHintPause(int Value);
    // Milliseconds a hint stays (2500); written to the application.
    int HintHidePause() const { return m_hintHidePause; }
    void SetHintHidePause(int Value);
    // The preferred side of the pointer (hpAboveRight).
    THintPosition HintPosition() const { return m_hintPosition; }
    void SetHintPosition(THintPosition Value);
    // The shadow's offset in pixels (10).
    int ShadowDepth() const { return m_shadowDepth; }
    void SetShadowDepth(int Value);

protected:
    void Loaded() override;

private:
    void applyActive();
    QColor colorProperty() const { return TColorToQColor(m_color); }
    void setColorProperty(const QColor& c) { SetColor(QColorToTColor(c)); }
    QFont fontProperty() const { return m_font.ToQFont(); }
    void setFontProperty(const QFont& f) { m_font.SetQFont(f); }

    bool m_active = true;
    TColor m_color = clYellow;
    int m_defaultWidth = 150;
    TFont m_font;
    int m_hintPause = 800;
    int m_hintHidePause = 2500;
    THintPosition m_hintPosition = hpAboveRight;
    int m_shadowDepth = 10;
};

// The application's hint window while a TQXHint is active: composes each hint afresh into
// QXH_BakBitmap and shows that picture. Where the screen can be read (X11) the picture holds
// the screen behind the hint; elsewhere the window is translucent and the shadow a real alpha
// shadow.
class QXT_EXPORT TQXHintWindow : public THintWindow {
    Q_OBJECT
public:
    TQXHintWindow();
    ~TQXHintWindow() override;
    // Composes the bubble for hint at the pointer and shows it; rect is only the framework's
    // proposal, the bubble places itself.
    void ActivateHint(const TRect& rect, const QString& hint) override;
    // Besides the inherited keys, clicks and wheel: a window moving or changing size, since the
    // picture holds a copy of what was behind the hint.
    bool IsHintMsg(QObject* watched, QEvent* e) override;
    // The side the last bubble took (the preferred one, or mirrored at a screen edge).
    THintPosition Position() const { return m_position; }

protected:
    // A window without border or shadow of its own: the bubble draws its own.
    void CreateParams(TCreateParams& params) override;
    // Shows QXH_BakBitmap.
    void Paint() override;

private:
    QImage background(const QRect& area);
    THintPosition m_position = hpAboveRight;
    // The screen behind the hint that is up, kept for a hint that moves over it.
    QImage m_behind;
    QRect m_behindArea;
};

namespace Qxhint {
// Puts TQXHint on the "QX Tools" palette page.
QXT_EXPORT void Register();
} // namespace Qxhint
