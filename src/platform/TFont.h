#pragma once

#include "QXExport.h"
#include "TColor.h"
#include "TSet.h"

#include <QFont>
#include <QString>
#include <functional>

enum TFontStyle { fsBold, fsItalic, fsUnderline, fsStrikeOut };
using TFontStyles = TSet<TFontStyle>;
enum TFontPitch { fpDefault, fpVariable, fpFixed };

// Screen resolution the framework's point sizes are converted at.
constexpr int ScreenPixelsPerInch = 96;

// A font plus its colour, as the framework keeps them together.
// Height is in pixels: negative for the character height, as the framework stores it.
class QXT_EXPORT TFont {
public:
    TFont();
    // The family name.
    QString Name() const { return m_font.family(); }
    void SetName(const QString& name);
    // The size in points (at 96 pixels per inch).
    int Size() const;
    void SetSize(int points);
    // The height in pixels, negative for the character height.
    int Height() const { return m_height; }
    void SetHeight(int pixels);
    // The text colour.
    TColor Color() const { return m_color; }
    void SetColor(TColor c);
    // Bold, italic, underlined and struck out, in any combination.
    TFontStyles Style() const { return m_style; }
    void SetStyle(TFontStyles s);
    // Fixed or variable character widths, or the family's own.
    TFontPitch Pitch() const { return m_pitch; }
    void SetPitch(TFontPitch p);
    // Takes name, height, style, pitch and colour of another font.
    void Assign(const TFont& other);
    // The font for QPainter and widgets.
    const QFont& ToQFont() const { return m_font; }
    // Takes family, pixel or point size and style of a QFont; the colour is kept.
    void SetQFont(const QFont& f);
    // Equal in name, height, style, pitch and colour.
    bool operator==(const TFont& other) const;
    // Called after every change.
    std::function<void()> OnChange;

private:
    void changed();
    QFont m_font;
    int m_height = -11;
    TColor m_color = clWindowText;
    TFontStyles m_style;
    TFontPitch m_pitch = fpDefault;
};
