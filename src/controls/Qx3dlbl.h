#pragma once

#include "QXAboutString.h"
#include "QXExport.h"
#include "TBevelCut.h"
#include "TComponent.h"
#include "TCustomLabel.h"

#include <QColor>
#include <QObject>
#include <QString>
#include <cstdint>

// Known to Qt's meta-object system so Designer offers the values.
namespace QX3dLabelEnums {
Q_NAMESPACE_EXPORT(QXT_EXPORT)

// How the caption stands out: flat, engraved, embossed or with a drop shadow.
enum TcsStyle { csNONE, csLowered, csRaised, csShadow };
Q_ENUM_NS(TcsStyle)

// Where the caption's lines line up.
enum dtFormat { dtCenter, dtLeft, dtRight };
Q_ENUM_NS(dtFormat)

} // namespace QX3dLabelEnums

using TcsStyle = QX3dLabelEnums::TcsStyle;
using enum QX3dLabelEnums::TcsStyle;
using dtFormat = QX3dLabelEnums::dtFormat;
using enum QX3dLabelEnums::dtFormat;

// A label whose caption is engraved (csLowered), embossed (csRaised) or casts a shadow
// (csShadow), inside an optional bevelled border, centred vertically, with CaptionSpacing
// extra pixels after every character. "^M" in the caption breaks the line. The embossing is
// four copies of the text one pixel off: white to the left and to the upper left and grey
// below and to the right (engraving swaps the colours); the shadow is one copy ShadowDepth
// pixels down and to the right. With AutoSize the label takes the size of its text plus 10
// pixels across and 6 down.
//
// Example:
//
//     auto* title = new TQX3dLabel(window);
//     title->SetCaption(QStringLiteral("Willkommen"));
//     title->SetCaptionStyle(csShadow);
class QXT_EXPORT TQX3dLabel : public TCustomLabel, public TQXAboutCarrier {
    Q_OBJECT
    Q_PROPERTY(QString About_QXTools READ About_QXTools WRITE SetAbout_QXTools DESIGNABLE false)
    Q_PROPERTY(QX3dLabelEnums::dtFormat Alignment READ Alignment WRITE SetAlignment)
    Q_PROPERTY(int BorderSize READ BorderSize WRITE SetBorderSize)
    Q_PROPERTY(TBevelEnums::TBevelCut BorderStyle READ BorderStyle WRITE SetBorderStyle)
    Q_PROPERTY(int CaptionSpacing READ CaptionSpacing WRITE setCaptionSpacingProperty)
    Q_PROPERTY(QX3dLabelEnums::TcsStyle CaptionStyle READ CaptionStyle WRITE SetCaptionStyle)
    Q_PROPERTY(QColor ShadowColor READ shadowColorProperty WRITE setShadowColorProperty)
    Q_PROPERTY(int ShadowDepth READ ShadowDepth WRITE SetShadowDepth)
    Q_PROPERTY(int Tag READ Tag WRITE SetTag)

public:
    // A raised caption with the default font, border and spacing.
    explicit TQX3dLabel(QWidget* parent = nullptr);
    ~TQX3dLabel() override;

    // Where the lines line up (centred by default).
    dtFormat Alignment() const { return m_alignment; }
    void SetAlignment(dtFormat Value);
    // Width of the border's bevel in pixels.
    int BorderSize() const { return m_borderSize; }
    void SetBorderSize(int Value);
    // bvRaised or bvLowered draw a bevelled border; other cuts draw none.
    TBevelCut BorderStyle() const { return m_borderStyle; }
    void SetBorderStyle(TBevelCut Value);
    // Extra pixels after every character.
    std::uint8_t CaptionSpacing() const { return m_captionSpacing; }
    void SetCaptionSpacing(std::uint8_t Value);
    // How the caption stands out (embossed by default).
    TcsStyle CaptionStyle() const { return m_captionStyle; }
    void SetCaptionStyle(TcsStyle Value);
    // Colour of the drop shadow.
    TColor ShadowColor() const { return m_shadowColor; }
    void SetShadowColor(TColor Value);
    // Offset of the drop shadow, 1 to 50 pixels.
    int ShadowDepth() const { return m_shadowDepth; }
    void SetShadowDepth(int Value);

    // Called when the mouse comes over the label.
    TNotifyEvent OnMouseEnter;
    // Called when the mouse leaves the label.
    TNotifyEvent OnMouseLeave;

protected:
    // Draws the border and the caption in its style.
    void Paint() override;
    void AdjustBounds() override;
    // Fires OnMouseEnter.
    void enterEvent(QEnterEvent* e) override;
    // Fires OnMouseLeave.
    void leaveEvent(QEvent* e) override;

private:
    QString text() const;
    unsigned alignmentFlag() const;
    void applyAutoSize(TCanvas* canvas, const QString& text);
    void setCaptionSpacingProperty(int v) { SetCaptionSpacing(std::uint8_t(v)); }
    QColor shadowColorProperty() const { return TColorToQColor(m_shadowColor); }
    void setShadowColorProperty(const QColor& c) { SetShadowColor(QColorToTColor(c)); }

    dtFormat m_alignment = dtCenter;
    int m_borderSize = 1;
    TBevelCut m_borderStyle = bvNone;
    std::uint8_t m_captionSpacing = 1;
    TcsStyle m_captionStyle = csRaised;
    TColor m_shadowColor = clGray;
    int m_shadowDepth = 2;
};

namespace Qx3dlbl {
// Puts TQX3dLabel on the "QX Tools" palette page.
QXT_EXPORT void Register();
} // namespace Qx3dlbl
