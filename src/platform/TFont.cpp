#include "TFont.h"

#include <cmath>

TFont::TFont() {
    m_font.setFamily(QStringLiteral("Sans Serif"));
    m_font.setPixelSize(11);
    m_font.setStyleStrategy(QFont::NoAntialias);
}

void TFont::SetName(const QString& name) {
    m_font.setFamily(name);
    changed();
}

int TFont::Size() const {
    return static_cast<int>(std::lround(-m_height * 72.0 / ScreenPixelsPerInch));
}

void TFont::SetSize(int points) {
    SetHeight(-static_cast<int>(std::lround(points * double(ScreenPixelsPerInch) / 72.0)));
}

void TFont::SetHeight(int pixels) {
    m_height = pixels;
    m_font.setPixelSize(std::max(1, std::abs(pixels)));
    changed();
}

void TFont::SetColor(TColor c) {
    m_color = c;
    changed();
}

void TFont::SetStyle(TFontStyles s) {
    m_style = s;
    m_font.setBold(s.Contains(fsBold));
    m_font.setItalic(s.Contains(fsItalic));
    m_font.setUnderline(s.Contains(fsUnderline));
    m_font.setStrikeOut(s.Contains(fsStrikeOut));
    changed();
}

void TFont::SetPitch(TFontPitch p) {
    m_pitch = p;
    m_font.setFixedPitch(p == fpFixed);
    changed();
}

void TFont::Assign(const TFont& other) {
    m_font = other.m_font;
    m_height = other.m_height;
    m_color = other.m_color;
    m_style = other.m_style;
    m_pitch = other.m_pitch;
    changed();
}

void TFont::SetQFont(const QFont& f) {
    m_font = f;
    if (f.pixelSize() > 0)
        m_height = -f.pixelSize();
    else
        m_height = -static_cast<int>(std::lround(f.pointSizeF() * ScreenPixelsPerInch / 72.0));
    m_font.setPixelSize(std::max(1, std::abs(m_height)));
    TFontStyles s;
    if (f.bold())
        s.Include(fsBold);
    if (f.italic())
        s.Include(fsItalic);
    if (f.underline())
        s.Include(fsUnderline);
    if (f.strikeOut())
        s.Include(fsStrikeOut);
    m_style = s;
    m_pitch = f.fixedPitch() ? fpFixed : fpDefault;
    changed();
}

bool TFont::operator==(const TFont& other) const {
    return Name() == other.Name() && m_height == other.m_height && m_color == other.m_color &&
           m_style == other.m_style && m_pitch == other.m_pitch;
}

void TFont::changed() {
    if (OnChange)
        OnChange();
}
