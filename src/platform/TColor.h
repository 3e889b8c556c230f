#pragma once

#include "QXExport.h"

#include <QColor>
#include <cstdint>

class QPalette;

// A colour as the framework stores it: 0x00BBGGRR, or 0x80000000 | n for system colour n.
using TColor = std::int32_t;

constexpr TColor TColorFromBits(std::uint32_t bits) {
    return static_cast<TColor>(bits);
}

constexpr TColor clBlack = 0x000000;
constexpr TColor clMaroon = 0x000080;
constexpr TColor clGreen = 0x008000;
constexpr TColor clOlive = 0x008080;
constexpr TColor clNavy = 0x800000;
constexpr TColor clPurple = 0x800080;
constexpr TColor clTeal = 0x808000;
constexpr TColor clGray = 0x808080;
constexpr TColor clSilver = 0xC0C0C0;
constexpr TColor clRed = 0x0000FF;
constexpr TColor clLime = 0x00FF00;
constexpr TColor clYellow = 0x00FFFF;
constexpr TColor clBlue = 0xFF0000;
constexpr TColor clFuchsia = 0xFF00FF;
constexpr TColor clAqua = 0xFFFF00;
constexpr TColor clLtGray = 0xC0C0C0;
constexpr TColor clDkGray = 0x808080;
constexpr TColor clWhite = 0xFFFFFF;
constexpr TColor clNone = 0x1FFFFFFF;
constexpr TColor clDefault = 0x20000000;

constexpr TColor clScrollBar = TColorFromBits(0x80000000);
constexpr TColor clBackground = TColorFromBits(0x80000001);
constexpr TColor clActiveCaption = TColorFromBits(0x80000002);
constexpr TColor clInactiveCaption = TColorFromBits(0x80000003);
constexpr TColor clMenu = TColorFromBits(0x80000004);
constexpr TColor clWindow = TColorFromBits(0x80000005);
constexpr TColor clWindowFrame = TColorFromBits(0x80000006);
constexpr TColor clMenuText = TColorFromBits(0x80000007);
constexpr TColor clWindowText = TColorFromBits(0x80000008);
constexpr TColor clCaptionText = TColorFromBits(0x80000009);
constexpr TColor clActiveBorder = TColorFromBits(0x8000000A);
constexpr TColor clInactiveBorder = TColorFromBits(0x8000000B);
constexpr TColor clAppWorkSpace = TColorFromBits(0x8000000C);
constexpr TColor clHighlight = TColorFromBits(0x8000000D);
constexpr TColor clHighlightText = TColorFromBits(0x8000000E);
constexpr TColor clBtnFace = TColorFromBits(0x8000000F);
constexpr TColor clBtnShadow = TColorFromBits(0x80000010);
constexpr TColor clGrayText = TColorFromBits(0x80000011);
constexpr TColor clBtnText = TColorFromBits(0x80000012);
constexpr TColor clInactiveCaptionText = TColorFromBits(0x80000013);
constexpr TColor clBtnHighlight = TColorFromBits(0x80000014);
constexpr TColor cl3DDkShadow = TColorFromBits(0x80000015);
constexpr TColor cl3DLight = TColorFromBits(0x80000016);
constexpr TColor clInfoText = TColorFromBits(0x80000017);
constexpr TColor clInfoBk = TColorFromBits(0x80000018);

constexpr bool IsSystemColor(TColor c) {
    return (static_cast<std::uint32_t>(c) & 0xFF000000u) == 0x80000000u;
}

// The plain 0x00BBGGRR value of c; system colours are looked up in the palette given
// (the application palette when none is), clNone and clDefault give black.
QXT_EXPORT TColor ColorToRGB(TColor c, const QPalette* palette = nullptr);
// c as a QColor, system colours resolved as ColorToRGB does.
QXT_EXPORT QColor TColorToQColor(TColor c, const QPalette* palette = nullptr);
// The opaque BGR value of a QColor.
QXT_EXPORT TColor QColorToTColor(const QColor& c);
// Builds a colour from its red, green and blue parts.
constexpr TColor RGB(int r, int g, int b) {
    return (r & 0xFF) | ((g & 0xFF) << 8) | ((b & 0xFF) << 16);
}
// The red, green and blue parts of a colour.
constexpr int GetRValue(TColor c) {
    return c & 0xFF;
}
constexpr int GetGValue(TColor c) {
    return (c >> 8) & 0xFF;
}
constexpr int GetBValue(TColor c) {
    return (c >> 16) & 0xFF;
}
