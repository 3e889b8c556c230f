#pragma once

#include "QXExport.h"
#include "TColor.h"
#include "TFont.h"
#include "TTypes.h"

#include <QImage>
#include <QPalette>
#include <QString>
#include <QVector>
#include <cstdint>
#include <memory>

class QPainter;
class QPaintDevice;
class TGraphic;
class TBitmap;

enum TPenStyle { psSolid, psDash, psDot, psDashDot, psDashDotDot, psClear, psInsideFrame };
enum TPenMode { pmCopy, pmNot, pmXor, pmNotXor, pmMerge, pmMask };
enum TBrushStyle {
    bsSolid,
    bsClear,
    bsHorizontal,
    bsVertical,
    bsFDiagonal,
    bsBDiagonal,
    bsCross,
    bsDiagCross
};

// The pen lines and outlines are drawn with.
struct QXT_EXPORT TPen {
    // The line colour.
    TColor Color = clBlack;
    // The line width in pixels.
    int Width = 1;
    // Solid, dashed, dotted or no line.
    TPenStyle Style = psSolid;
    // How the pen's colour combines with the pixels under it.
    TPenMode Mode = pmCopy;
};

// The brush areas are filled with; a Bitmap, when set, is tiled instead of the colour.
struct QXT_EXPORT TBrush {
    // The fill colour.
    TColor Color = clWhite;
    // Solid, hatched or no fill.
    TBrushStyle Style = bsSolid;
    // A pattern tiled instead of the colour, or null.
    std::shared_ptr<QImage> Bitmap;
};

// DrawText flags, as GDI numbers them.
constexpr unsigned DT_TOP = 0x0;
constexpr unsigned DT_LEFT = 0x0;
constexpr unsigned DT_CENTER = 0x1;
constexpr unsigned DT_RIGHT = 0x2;
constexpr unsigned DT_VCENTER = 0x4;
constexpr unsigned DT_BOTTOM = 0x8;
constexpr unsigned DT_WORDBREAK = 0x10;
constexpr unsigned DT_SINGLELINE = 0x20;
constexpr unsigned DT_EXPANDTABS = 0x40;
constexpr unsigned DT_NOCLIP = 0x100;
constexpr unsigned DT_CALCRECT = 0x400;
constexpr unsigned DT_NOPREFIX = 0x800;

// Background modes of text output.
constexpr int TRANSPARENT = 1;
constexpr int OPAQUE = 2;

// Raster operations of BitBlt and CopyMode.
constexpr std::uint32_t SRCCOPY = 0x00CC0020;
constexpr std::uint32_t SRCPAINT = 0x00EE0086;
constexpr std::uint32_t SRCAND = 0x008800C6;
constexpr std::uint32_t SRCINVERT = 0x00660046;
constexpr std::uint32_t NOTSRCCOPY = 0x00330008;
constexpr std::uint32_t BLACKNESS = 0x00000042;
constexpr std::uint32_t WHITENESS = 0x00FF0062;
// Not a GDI operation: draws the image over the target by its alpha (icons, transparent bitmaps).
constexpr std::uint32_t ROP_BLEND = 0;

// A drawing surface with GDI rules: rectangles exclude their right and bottom edges, LineTo
// does not draw its end point, text is placed by the top-left corner of its cell, and no
// drawing is antialiased. A canvas draws either into an image (a bitmap's canvas) or through
// a painter attached for the length of a paint event.
//
// Example, a framed cross drawn into a bitmap:
//
//     TBitmap bitmap(32, 32);
//     TCanvas* canvas = bitmap.Canvas();
//     canvas->Brush.Color = clWhite;
//     canvas->Rectangle(0, 0, 32, 32);
//     canvas->MoveTo(0, 0);
//     canvas->LineTo(32, 32);
class QXT_EXPORT TCanvas {
public:
    TCanvas();
    // A canvas on an image it does not own; the image must outlive the canvas.
    explicit TCanvas(QImage* image);
    ~TCanvas();
    TCanvas(const TCanvas&) = delete;
    TCanvas& operator=(const TCanvas&) = delete;

    // Draws through painter until Detach (used by controls in their paint event).
    void Attach(QPainter* painter, const QRect& deviceRect);
    // Ends drawing through the painter given to Attach.
    void Detach();
    // Points the canvas at another image (bitmaps call this when they reallocate).
    void SetImage(QImage* image);
    // The image drawn into, or nullptr for a painter canvas.
    QImage* Image() const { return m_image; }
    // Whether there is something to draw on.
    bool IsDrawable() const { return m_painter || (m_image && !m_image->isNull()); }
    // The palette system colours resolve through (a control's palette).
    void SetPalette(const QPalette& palette) { m_palette = palette; }
    // The palette system colours resolve through.
    const QPalette& Palette() const { return m_palette; }

    // The pen of lines and outlines.
    TPen Pen;
    // The brush of fills.
    TBrush Brush;
    // The font of text output.
    TFont Font;
    // The raster operation of CopyRect.
    std::uint32_t CopyMode = SRCCOPY;
    // Where the next LineTo starts.
    TPoint PenPos() const { return m_penPos; }
    void SetPenPos(TPoint p) { m_penPos = p; }
    // TRANSPARENT or OPAQUE: whether text output fills its background with the brush.
    int BkMode() const { return m_bkMode; }
    void SetBkMode(int mode) { m_bkMode = mode; }
    // Extra pixels after every character that text output and measuring add (GDI's
    // SetTextCharacterExtra); returns the previous value.
    int SetTextCharacterExtra(int extra);
    // The extra pixels after every character.
    int TextCharacterExtra() const { return m_charExtra; }

    // Moves the pen position to (x, y) without drawing.
    void MoveTo(int x, int y);
    // Draws from the pen position to (x, y) without (x, y) itself, then moves there.
    void LineTo(int x, int y);
    // Connected lines; the last point is not drawn, as with LineTo.
    void Polyline(const QVector<TPoint>& points);
    // A closed outline with the pen, filled with the brush.
    void Polygon(const QVector<TPoint>& points);
    // Outline with the pen, inside with the brush; covers x1..x2-1 by y1..y2-1.
    void Rectangle(int x1, int y1, int x2, int y2);
    // Rectangle over r.
    void Rectangle(const TRect& r) { Rectangle(r.Left, r.Top, r.Right, r.Bottom); }
    // The ellipse in the box, outlined with the pen and filled with the brush.
    void Ellipse(int x1, int y1, int x2, int y2);
    // Ellipse in r.
    void Ellipse(const TRect& r) { Ellipse(r.Left, r.Top, r.Right, r.Bottom); }
    // A rectangle with corners rounded by ellipses x3 wide and y3 high.
    void RoundRect(int x1, int y1, int x2, int y2, int x3, int y3);
    // Fills r with the brush, without an outline.
    void FillRect(const TRect& r);
    // A one-pixel border in the brush colour.
    void FrameRect(const TRect& r);

    // Writes text with its top-left at (x, y) in Font; moves the pen position after it.
    void TextOut(int x, int y, const QString& text);
    // Text clipped to r; the background of r is filled unless the brush is clear.
    void TextRect(const TRect& r, int x, int y, const QString& text);
    // The width of text in Font, with the character extra.
    int TextWidth(const QString& text) const;
    // The height of a line of text in Font.
    int TextHeight(const QString& text) const;
    // GDI DrawText: returns the text height; with DT_CALCRECT only measures into r. Line feeds,
    // carriage returns and pairs of the two (either order) each break the line once.
    int DrawText(const QString& text, TRect& r, unsigned flags);

    // Draws graphic at its own size with its top-left at (x, y).
    void Draw(int x, int y, TGraphic* graphic);
    // Draws graphic stretched into r.
    void StretchDraw(const TRect& r, TGraphic* graphic);
    // Copies (stretching) source's srcRect into destRect with CopyMode.
    void CopyRect(const TRect& destRect, TCanvas* source, const TRect& srcRect);
    // Draws an image stretched into r by nearest neighbour, with the given raster operation.
    void DrawImage(const TRect& r, const QImage& image, std::uint32_t rop = SRCCOPY);

    // Reading needs an image canvas; a painter canvas answers clNone.
    TColor Pixels(int x, int y) const;
    // Sets one pixel.
    void SetPixel(int x, int y, TColor c);
    // The area drawing can reach.
    TRect ClipRect() const;

    // c as a QColor, system colours through Palette.
    QColor ToQColor(TColor c) const { return TColorToQColor(c, &m_palette); }

private:
    class Scope;
    QPainter* begin(std::unique_ptr<QPainter>& local);
    void applyPen(QPainter& p) const;
    void applyBrush(QPainter& p) const;
    void applyPenMode(QPainter& p) const;
    void fillSolid(QPainter& p, const QRect& r, const QColor& c) const;
    void drawTextRun(QPainter& p, int x, int y, const QString& text, const QRect* clip);
    QFont textFont() const;

    QImage* m_image = nullptr;
    QPainter* m_painter = nullptr;
    QRect m_deviceRect;
    QPalette m_palette;
    TPoint m_penPos;
    int m_bkMode = OPAQUE;
    int m_charExtra = 0;
};

// Copies a block between canvases with a raster operation.
QXT_EXPORT void BitBlt(TCanvas* dest, int x, int y, int width, int height, TCanvas* source,
                       int xSrc, int ySrc, std::uint32_t rop);

// The framework's 3D frame: top and left in topColor, bottom and right in bottomColor, width
// rings inward; rect comes back shrunk by width on every side.
QXT_EXPORT void Frame3D(TCanvas* canvas, TRect& rect, TColor topColor, TColor bottomColor,
                        int width);
