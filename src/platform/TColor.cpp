#include "TColor.h"

#include <QGuiApplication>
#include <QPalette>

namespace {

QColor systemColor(int index, const QPalette& p) {
    using R = QPalette::ColorRole;
    switch (index) {
    case 0:  // scroll bar
    case 4:  // menu
    case 15: // button face
    case 12: // application work space
    case 10: // active border
    case 11: // inactive border
        return p.color(QPalette::Active, index == 12 ? R::Mid : R::Button);
    case 1: // desktop
        return p.color(R::Dark);
    case 2:  // active caption
    case 13: // highlight
        return p.color(QPalette::Active, R::Highlight);
    case 3: // inactive caption
        return p.color(QPalette::Inactive, R::Mid);
    case 5: // window
        return p.color(R::Base);
    case 6:  // window frame
    case 21: // 3D dark shadow
        return p.color(R::Shadow);
    case 7: // menu text
    case 8: // window text
        return p.color(R::Text);
    case 9:  // caption text
    case 14: // highlight text
        return p.color(QPalette::Active, R::HighlightedText);
    case 16: // button shadow
        return p.color(R::Dark);
    case 17: // grey text
    case 19: // inactive caption text
        return p.color(QPalette::Disabled, R::Text);
    case 18: // button text
        return p.color(R::ButtonText);
    case 20: // button highlight
        return p.color(R::Light);
    case 22: // 3D light
        return p.color(R::Midlight);
    case 23: // info text
        return p.color(R::ToolTipText);
    case 24: // info background
        return p.color(R::ToolTipBase);
    default:
        return Qt::black;
    }
}

} // namespace

TColor QColorToTColor(const QColor& c) {
    return RGB(c.red(), c.green(), c.blue());
}

TColor ColorToRGB(TColor c, const QPalette* palette) {
    if (IsSystemColor(c)) {
        const QPalette p = palette ? *palette : QGuiApplication::palette();
        return QColorToTColor(systemColor(c & 0xFF, p));
    }
    if (c == clNone || c == clDefault)
        return clBlack;
    return c & 0xFFFFFF;
}

QColor TColorToQColor(TColor c, const QPalette* palette) {
    const TColor rgb = ColorToRGB(c, palette);
    return QColor(GetRValue(rgb), GetGValue(rgb), GetBValue(rgb));
}
