#pragma once

#include "QXAboutString.h"
#include "QXExport.h"
#include "TComponent.h"
#include "TGraphic.h"

#include <QColor>
#include <QPixmap>
#include <algorithm>
#include <cstdint>
#include <memory>

// Known to Qt's meta-object system so Designer offers the values.
namespace QXFillImageEnums {
Q_NAMESPACE_EXPORT(QXT_EXPORT)

// What a fill image paints: nothing, a tiled bitmap, colour bands from top to bottom
// (vRAINBOW) or from left to right (hRAINBOW), or one of eight 8 x 8 patterns.
enum TFStyle {
    NONE,
    BITMAP,
    vRAINBOW,
    hRAINBOW,
    BCyan,
    BGray,
    LCyan,
    LGray,
    WDGray,
    Weave,
    WGray,
    WLGray
};
Q_ENUM_NS(TFStyle)

} // namespace QXFillImageEnums

using TFStyle = QXFillImageEnums::TFStyle;
using enum QXFillImageEnums::TFStyle;

// A background for forms and panels: a gradient in bands, a tiled bitmap or a pattern.
//
// - The rainbows use N = min(size, RBSteps) bands of size div N pixels, graded from
//   RBFromColor in equal integer steps per colour byte (system colours are not resolved: their
//   low bytes count as they are); the last band, RBToColor, takes what the division leaves. A
//   rainbow over a height (or width) of 0 raises EDivByZero.
// - A FillBitmap of 257 pixels or more in either direction draws nothing; one under 9 rows is
//   repeated as a brush pattern, any other is tiled from the top left.
// - With AdjustToParent every paint first moves the control to the top left of its parent and
//   sizes it to the parent's client area.
//
// Example, a form's background from navy at the top to aqua at the bottom:
//
//     auto* back = new TQXFillImage(form);
//     back->SetRBFromColor(clNavy);
//     back->SetRBToColor(clAqua);
//     back->SetFillStyle(vRAINBOW);
//     back->SetAdjustToParent(true);
class QXT_EXPORT TQXFillImage : public TGraphicControl, public TQXAboutCarrier {
    Q_OBJECT
    Q_PROPERTY(QString About_QXTools READ About_QXTools WRITE SetAbout_QXTools DESIGNABLE false)
    Q_PROPERTY(bool AdjustToParent READ AdjustToParent WRITE SetAdjustToParent)
    Q_PROPERTY(QPixmap FillBitmap READ fillBitmapProperty WRITE setFillBitmapProperty)
    Q_PROPERTY(QXFillImageEnums::TFStyle FillStyle READ FillStyle WRITE SetFillStyle)
    Q_PROPERTY(QColor RBFromColor READ rbFromColorProperty WRITE setRBFromColorProperty)
    Q_PROPERTY(int RBSteps READ RBSteps WRITE setRBStepsProperty)
    Q_PROPERTY(QColor RBToColor READ rbToColorProperty WRITE setRBToColorProperty)

public:
    // A 100 x 100 pixel control that fills nothing (style NONE) until a style is chosen.
    explicit TQXFillImage(QWidget* parent = nullptr);
    ~TQXFillImage() override;

    // Keep the control as large as its parent's client area.
    bool AdjustToParent() const { return m_adjustToParent; }
    void SetAdjustToParent(bool Value);
    // The bitmap of the BITMAP style (a copy is kept).
    TBitmap* FillBitmap() const { return m_fillBitmap.get(); }
    void SetFillBitmap(TBitmap* Value);
    // The fill; a pattern style loads its 8 x 8 pattern.
    TFStyle FillStyle() const { return m_fillStyle; }
    void SetFillStyle(TFStyle Value);
    // The first colour of the rainbows.
    TColor RBFromColor() const { return m_rbFromColor; }
    void SetRBFromColor(TColor Value);
    // The number of rainbow bands; at least 2.
    std::uint8_t RBSteps() const { return m_rbSteps; }
    void SetRBSteps(std::uint8_t Value);
    // The last colour of the rainbows.
    TColor RBToColor() const { return m_rbToColor; }
    void SetRBToColor(TColor Value);
    // The pattern of the current pattern style (empty for the other styles).
    TBitmap* PatternBitmap() const { return m_pattern.get(); }

protected:
    void Paint() override;

private:
    void paintRainbow(bool vertical, int w, int h);
    void paintBitmap(int w, int h);
    void fillWithBrush(const TBitmap& tile, int w, int h);
    QPixmap fillBitmapProperty() const;
    void setFillBitmapProperty(const QPixmap& value);
    QColor rbFromColorProperty() const { return TColorToQColor(m_rbFromColor); }
    void setRBFromColorProperty(const QColor& c) { SetRBFromColor(QColorToTColor(c)); }
    QColor rbToColorProperty() const { return TColorToQColor(m_rbToColor); }
    void setRBToColorProperty(const QColor& c) { SetRBToColor(QColorToTColor(c)); }
    void setRBStepsProperty(int value) { SetRBSteps(std::uint8_t(std::clamp(value, 0, 255))); }

    bool m_adjustToParent = false;
    std::uint8_t m_rbSteps = 64;
    std::unique_ptr<TBitmap> m_fillBitmap;
    std::unique_ptr<TBitmap> m_pattern;
    TFStyle m_fillStyle = NONE;
    TColor m_rbFromColor = 0x00FF00;
    TColor m_rbToColor = 0xFFFF00;
};

namespace QXFillImage {
// Puts TQXFillImage on the "QX Tools" palette page.
QXT_EXPORT void Register();
} // namespace QXFillImage
