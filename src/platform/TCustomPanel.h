#pragma once

#include "QXExport.h"
#include "TAlignment.h"
#include "TBevelCut.h"
#include "TComponent.h"

#include <QColor>
#include <QObject>
#include <QString>

// Known to Qt's meta-object system so Designer offers the values.
namespace TBorderStyleEnums {
Q_NAMESPACE_EXPORT(QXT_EXPORT)

// Whether a control has a sunken edge around everything else it draws.
enum TBorderStyle { bsNone, bsSingle };
Q_ENUM_NS(TBorderStyle)

} // namespace TBorderStyleEnums

using TBorderStyle = TBorderStyleEnums::TBorderStyle;
using enum TBorderStyleEnums::TBorderStyle;

// A panel as the framework draws it: from the outside in, an optional sunken edge
// (BorderStyle), the outer bevel, a border of BorderWidth pixels in Color, the inner bevel,
// and the inside filled with Color with the caption centred vertically in it. A raised bevel
// is light at the top and left and dark at the bottom and right; a lowered one the reverse.
class QXT_EXPORT TCustomPanel : public TCustomControl {
    Q_OBJECT
    Q_PROPERTY(QString Caption READ Caption WRITE SetCaption)
    Q_PROPERTY(TAlignmentEnums::TAlignment Alignment READ Alignment WRITE SetAlignment)
    Q_PROPERTY(TBevelEnums::TBevelCut BevelInner READ BevelInner WRITE SetBevelInner)
    Q_PROPERTY(TBevelEnums::TBevelCut BevelOuter READ BevelOuter WRITE SetBevelOuter)
    Q_PROPERTY(int BevelWidth READ BevelWidth WRITE SetBevelWidth)
    Q_PROPERTY(int BorderWidth READ BorderWidth WRITE SetBorderWidth)
    Q_PROPERTY(TBorderStyleEnums::TBorderStyle BorderStyle READ BorderStyle WRITE SetBorderStyle)
    Q_PROPERTY(QColor Color READ colorProperty WRITE setColorProperty)

public:
    // A raised panel of 185 x 41 pixels that does not take the focus.
    explicit TCustomPanel(QWidget* parent = nullptr);
    ~TCustomPanel() override;

    // The text shown inside; "&" marks the next character as a mnemonic.
    QString Caption() const { return m_caption; }
    void SetCaption(const QString& Value);
    // Where the caption lines up (centred by default).
    TAlignment Alignment() const { return m_alignment; }
    void SetAlignment(TAlignment Value);
    // The bevel inside the border (none by default).
    TBevelCut BevelInner() const { return m_bevelInner; }
    void SetBevelInner(TBevelCut Value);
    // The bevel outside the border (raised by default).
    TBevelCut BevelOuter() const { return m_bevelOuter; }
    void SetBevelOuter(TBevelCut Value);
    // Pixels of each bevel.
    int BevelWidth() const { return m_bevelWidth; }
    void SetBevelWidth(int Value);
    // Pixels of Color between the two bevels.
    int BorderWidth() const { return m_borderWidth; }
    void SetBorderWidth(int Value);
    // bsSingle adds a two-pixel sunken edge outside the bevels.
    TBorderStyle BorderStyle() const { return m_borderStyle; }
    void SetBorderStyle(TBorderStyle Value);

protected:
    void Paint() override;
    // Draws the edge, the bevels and the border between them; r shrinks to what is inside.
    void PaintFrame(TCanvas* canvas, TRect& r) const;

private:
    QColor colorProperty() const { return TColorToQColor(Color()); }
    void setColorProperty(const QColor& c) { SetColor(QColorToTColor(c)); }

    QString m_caption;
    TAlignment m_alignment = taCenter;
    TBevelCut m_bevelInner = bvNone;
    TBevelCut m_bevelOuter = bvRaised;
    int m_bevelWidth = 1;
    int m_borderWidth = 0;
    TBorderStyle m_borderStyle = bsNone;
};
