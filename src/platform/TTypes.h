#pragma once

#include "QXExport.h"

#include <QPoint>
#include <QRect>
#include <QSize>

// A point in device pixels.
struct TPoint {
    // From the left.
    int X = 0;
    // From the top.
    int Y = 0;
    // Equal in both coordinates.
    constexpr bool operator==(const TPoint&) const = default;
    // The point as a QPoint.
    QPoint ToQPoint() const { return {X, Y}; }
};

// A GDI rectangle: Right and Bottom are exclusive, so the width is Right - Left.
struct TRect {
    // The first column inside.
    int Left = 0;
    // The first row inside.
    int Top = 0;
    // The first column after.
    int Right = 0;
    // The first row after.
    int Bottom = 0;
    // Right - Left.
    constexpr int Width() const { return Right - Left; }
    // Bottom - Top.
    constexpr int Height() const { return Bottom - Top; }
    // The first pixel inside.
    constexpr TPoint TopLeft() const { return {Left, Top}; }
    // The corner after the last pixel.
    constexpr TPoint BottomRight() const { return {Right, Bottom}; }
    // Whether it covers no pixel.
    constexpr bool IsEmpty() const { return Right <= Left || Bottom <= Top; }
    // Whether p is a pixel inside.
    constexpr bool Contains(TPoint p) const {
        return p.X >= Left && p.X < Right && p.Y >= Top && p.Y < Bottom;
    }
    // Equal in all four edges.
    constexpr bool operator==(const TRect&) const = default;
    // The covered pixels as a QRect (a QRect's right() is inclusive).
    QRect ToQRect() const { return QRect(Left, Top, Right - Left, Bottom - Top); }
    // The rectangle covering the QRect's pixels.
    static TRect FromQRect(const QRect& r) {
        return {r.left(), r.top(), r.left() + r.width(), r.top() + r.height()};
    }
};

constexpr TRect Rect(int left, int top, int right, int bottom) {
    return {left, top, right, bottom};
}
constexpr TRect Bounds(int left, int top, int width, int height) {
    return {left, top, left + width, top + height};
}
constexpr TPoint Point(int x, int y) {
    return {x, y};
}
// Moves every side inward by dx and dy (outward when negative).
constexpr void InflateRect(TRect& r, int dx, int dy) {
    r.Left -= dx;
    r.Top -= dy;
    r.Right += dx;
    r.Bottom += dy;
}
// Moves the rectangle by dx and dy.
constexpr void OffsetRect(TRect& r, int dx, int dy) {
    r.Left += dx;
    r.Right += dx;
    r.Top += dy;
    r.Bottom += dy;
}
// The overlap of a and b; false (and an empty result) when they do not overlap.
QXT_EXPORT bool IntersectRect(TRect& result, const TRect& a, const TRect& b);
