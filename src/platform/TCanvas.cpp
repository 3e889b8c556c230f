#include "TCanvas.h"

#include "TGraphic.h"

#include <QFontMetrics>
#include <QPainter>
#include <algorithm>
#include <cstdlib>

namespace {

Qt::PenStyle qtPenStyle(TPenStyle s) {
    switch (s) {
    case psDash:
        return Qt::DashLine;
    case psDot:
        return Qt::DotLine;
    case psDashDot:
        return Qt::DashDotLine;
    case psDashDotDot:
        return Qt::DashDotDotLine;
    case psClear:
        return Qt::NoPen;
    case psSolid:
    case psInsideFrame:
        break;
    }
    return Qt::SolidLine;
}

Qt::BrushStyle qtBrushStyle(TBrushStyle s) {
    switch (s) {
    case bsClear:
        return Qt::NoBrush;
    case bsHorizontal:
        return Qt::HorPattern;
    case bsVertical:
        return Qt::VerPattern;
    case bsFDiagonal:
        return Qt::FDiagPattern;
    case bsBDiagonal:
        return Qt::BDiagPattern;
    case bsCross:
        return Qt::CrossPattern;
    case bsDiagCross:
        return Qt::DiagCrossPattern;
    case bsSolid:
        break;
    }
    return Qt::SolidPattern;
}

QPainter::CompositionMode ropMode(std::uint32_t rop) {
    switch (rop) {
    case SRCAND:
        return QPainter::RasterOp_SourceAndDestination;
    case SRCPAINT:
        return QPainter::RasterOp_SourceOrDestination;
    case SRCINVERT:
        return QPainter::RasterOp_SourceXorDestination;
    case NOTSRCCOPY:
        return QPainter::RasterOp_NotSource;
    case ROP_BLEND:
        return QPainter::CompositionMode_SourceOver;
    default:
        return QPainter::CompositionMode_Source;
    }
}

// The pixels of a GDI line from a to b, without b.
QVector<QPoint> linePixels(TPoint a, TPoint b) {
    QVector<QPoint> pts;
    int x = a.X, y = a.Y;
    const int dx = std::abs(b.X - a.X), dy = -std::abs(b.Y - a.Y);
    const int sx = a.X < b.X ? 1 : -1, sy = a.Y < b.Y ? 1 : -1;
    int err = dx + dy;
    pts.reserve(std::max(dx, -dy));
    while (x != b.X || y != b.Y) {
        pts.append(QPoint(x, y));
        const int e2 = 2 * err;
        if (e2 >= dy) {
            err += dy;
            x += sx;
        }
        if (e2 <= dx) {
            err += dx;
            y += sy;
        }
    }
    return pts;
}

// Qt breaks lines only at line feeds and shows a carriage return as a blank; GDI breaks at
// either, and once at a pair of the two in either order.
QString gdiLineBreaks(const QString& text) {
    if (!text.contains(u'\r'))
        return text;
    QString out;
    out.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c != u'\n' && c != u'\r') {
            out += c;
            continue;
        }
        out += u'\n';
        const QChar other = c == u'\n' ? u'\r' : u'\n';
        if (i + 1 < text.size() && text[i + 1] == other)
            ++i;
    }
    return out;
}

} // namespace

// The painter for one drawing call: the attached one (state saved and restored) or a fresh
// one on the image.
class TCanvas::Scope {
public:
    explicit Scope(const TCanvas* c) {
        if (c->m_painter) {
            p = c->m_painter;
            p->save();
            saved = true;
        } else if (c->m_image && !c->m_image->isNull()) {
            local = std::make_unique<QPainter>(c->m_image);
            p = local->isActive() ? local.get() : nullptr;
        }
        if (p)
            p->setRenderHint(QPainter::Antialiasing, false);
    }
    ~Scope() {
        if (saved)
            p->restore();
    }
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;
    QPainter* p = nullptr;

private:
    std::unique_ptr<QPainter> local;
    bool saved = false;
};

TCanvas::TCanvas() = default;

TCanvas::TCanvas(QImage* image) : m_image(image) {}

TCanvas::~TCanvas() = default;

void TCanvas::Attach(QPainter* painter, const QRect& deviceRect) {
    m_painter = painter;
    m_deviceRect = deviceRect;
}

void TCanvas::Detach() {
    m_painter = nullptr;
}

void TCanvas::SetImage(QImage* image) {
    m_image = image;
}

void TCanvas::applyPen(QPainter& p) const {
    if (Pen.Style == psClear) {
        p.setPen(Qt::NoPen);
        return;
    }
    QPen pen(ToQColor(Pen.Color));
    pen.setWidth(std::max(1, Pen.Width));
    pen.setStyle(qtPenStyle(Pen.Style));
    pen.setCapStyle(Qt::FlatCap);
    pen.setJoinStyle(Qt::MiterJoin);
    p.setPen(pen);
}

void TCanvas::applyBrush(QPainter& p) const {
    if (Brush.Style == bsClear) {
        p.setBrush(Qt::NoBrush);
    } else if (Brush.Bitmap && !Brush.Bitmap->isNull()) {
        p.setBrush(QBrush(*Brush.Bitmap));
    } else {
        p.setBrush(QBrush(ToQColor(Brush.Color), qtBrushStyle(Brush.Style)));
    }
}

void TCanvas::applyPenMode(QPainter& p) const {
    switch (Pen.Mode) {
    case pmNot:
        p.setCompositionMode(QPainter::RasterOp_NotDestination);
        break;
    case pmXor:
        p.setCompositionMode(QPainter::RasterOp_SourceXorDestination);
        break;
    case pmNotXor:
        p.setCompositionMode(QPainter::RasterOp_NotSourceXorDestination);
        break;
    case pmMerge:
        p.setCompositionMode(QPainter::RasterOp_SourceOrDestination);
        break;
    case pmMask:
        p.setCompositionMode(QPainter::RasterOp_SourceAndDestination);
        break;
    case pmCopy:
        break;
    }
}

void TCanvas::fillSolid(QPainter& p, const QRect& r, const QColor& c) const {
    if (r.width() > 0 && r.height() > 0)
        p.fillRect(r, c);
}

void TCanvas::MoveTo(int x, int y) {
    m_penPos = {x, y};
}

void TCanvas::LineTo(int x, int y) {
    const TPoint from = m_penPos;
    m_penPos = {x, y};
    if (Pen.Style == psClear)
        return;
    Scope s(this);
    if (!s.p)
        return;
    applyPenMode(*s.p);
    if (Pen.Width <= 1 && (Pen.Style == psSolid || Pen.Style == psInsideFrame)) {
        QPen pen(ToQColor(Pen.Color), 1);
        s.p->setPen(pen);
        const QVector<QPoint> pts = linePixels(from, {x, y});
        if (!pts.isEmpty())
            s.p->drawPoints(pts.constData(), int(pts.size()));
        return;
    }
    applyPen(*s.p);
    s.p->drawLine(QPoint(from.X, from.Y), QPoint(x, y));
}

void TCanvas::Polyline(const QVector<TPoint>& points) {
    if (points.isEmpty())
        return;
    const TPoint keep = m_penPos;
    MoveTo(points[0].X, points[0].Y);
    for (qsizetype i = 1; i < points.size(); ++i)
        LineTo(points[i].X, points[i].Y);
    m_penPos = keep;
}

void TCanvas::Polygon(const QVector<TPoint>& points) {
    Scope s(this);
    if (!s.p || points.isEmpty())
        return;
    QPolygon poly;
    for (const TPoint& pt : points)
        poly << pt.ToQPoint();
    applyPenMode(*s.p);
    applyPen(*s.p);
    applyBrush(*s.p);
    s.p->drawPolygon(poly, Qt::OddEvenFill);
}

void TCanvas::Rectangle(int x1, int y1, int x2, int y2) {
    if (x2 < x1)
        std::swap(x1, x2);
    if (y2 < y1)
        std::swap(y1, y2);
    Scope s(this);
    if (!s.p)
        return;
    applyPenMode(*s.p);
    if (Pen.Style == psClear) {
        // Without a pen GDI fills one pixel less in each direction.
        s.p->setPen(Qt::NoPen);
        applyBrush(*s.p);
        s.p->drawRect(QRect(x1, y1, x2 - x1 - 1, y2 - y1 - 1));
        return;
    }
    const int w = std::max(1, Pen.Width);
    s.p->setPen(Qt::NoPen);
    applyBrush(*s.p);
    s.p->drawRect(QRect(x1 + w, y1 + w, x2 - x1 - 2 * w, y2 - y1 - 2 * w));
    if (w == 1) {
        applyPen(*s.p);
        s.p->setBrush(Qt::NoBrush);
        s.p->drawRect(QRect(x1, y1, x2 - x1 - 1, y2 - y1 - 1));
    } else {
        const QColor c = ToQColor(Pen.Color);
        const int width = x2 - x1, height = y2 - y1;
        fillSolid(*s.p, QRect(x1, y1, width, std::min(w, height)), c);
        fillSolid(*s.p, QRect(x1, y2 - std::min(w, height), width, std::min(w, height)), c);
        fillSolid(*s.p, QRect(x1, y1, std::min(w, width), height), c);
        fillSolid(*s.p, QRect(x2 - std::min(w, width), y1, std::min(w, width), height), c);
    }
}

void TCanvas::Ellipse(int x1, int y1, int x2, int y2) {
    // GDI takes the bounding corners in any order.
    if (x2 < x1)
        std::swap(x1, x2);
    if (y2 < y1)
        std::swap(y1, y2);
    Scope s(this);
    if (!s.p)
        return;
    applyPenMode(*s.p);
    applyPen(*s.p);
    applyBrush(*s.p);
    s.p->drawEllipse(QRect(x1, y1, x2 - x1 - 1, y2 - y1 - 1));
}

void TCanvas::RoundRect(int x1, int y1, int x2, int y2, int x3, int y3) {
    Scope s(this);
    if (!s.p)
        return;
    applyPenMode(*s.p);
    applyPen(*s.p);
    applyBrush(*s.p);
    s.p->drawRoundedRect(QRect(x1, y1, x2 - x1 - 1, y2 - y1 - 1), x3 / 2.0, y3 / 2.0);
}

void TCanvas::FillRect(const TRect& r) {
    if (Brush.Style == bsClear || r.IsEmpty())
        return;
    Scope s(this);
    if (!s.p)
        return;
    applyBrush(*s.p);
    s.p->fillRect(r.ToQRect(), s.p->brush());
}

void TCanvas::FrameRect(const TRect& r) {
    if (r.IsEmpty())
        return;
    Scope s(this);
    if (!s.p)
        return;
    const QColor c = ToQColor(Brush.Color);
    fillSolid(*s.p, QRect(r.Left, r.Top, r.Width(), 1), c);
    fillSolid(*s.p, QRect(r.Left, r.Bottom - 1, r.Width(), 1), c);
    fillSolid(*s.p, QRect(r.Left, r.Top, 1, r.Height()), c);
    fillSolid(*s.p, QRect(r.Right - 1, r.Top, 1, r.Height()), c);
}

int TCanvas::SetTextCharacterExtra(int extra) {
    const int previous = m_charExtra;
    m_charExtra = extra;
    return previous;
}

QFont TCanvas::textFont() const {
    if (m_charExtra == 0)
        return Font.ToQFont();
    QFont f = Font.ToQFont();
    f.setLetterSpacing(QFont::AbsoluteSpacing, m_charExtra);
    return f;
}

void TCanvas::drawTextRun(QPainter& p, int x, int y, const QString& text, const QRect* clip) {
    const QFontMetrics fm(textFont());
    if (clip)
        p.setClipRect(*clip, Qt::IntersectClip);
    if (Brush.Style == bsSolid && m_bkMode == OPAQUE)
        fillSolid(p, QRect(x, y, fm.horizontalAdvance(text), fm.height()), ToQColor(Brush.Color));
    p.setFont(textFont());
    p.setPen(ToQColor(Font.Color()));
    p.drawText(QPoint(x, y + fm.ascent()), text);
}

void TCanvas::TextOut(int x, int y, const QString& text) {
    {
        Scope s(this);
        if (s.p)
            drawTextRun(*s.p, x, y, text, nullptr);
    }
    MoveTo(x + TextWidth(text), y);
}

void TCanvas::TextRect(const TRect& r, int x, int y, const QString& text) {
    Scope s(this);
    if (!s.p)
        return;
    const QRect clip = r.ToQRect();
    if (Brush.Style != bsClear) {
        applyBrush(*s.p);
        s.p->fillRect(clip, s.p->brush());
    }
    drawTextRun(*s.p, x, y, text, &clip);
}

int TCanvas::TextWidth(const QString& text) const {
    return QFontMetrics(textFont()).horizontalAdvance(text);
}

int TCanvas::TextHeight(const QString& text) const {
    Q_UNUSED(text);
    return QFontMetrics(textFont()).height();
}

int TCanvas::DrawText(const QString& rawText, TRect& r, unsigned flags) {
    const QString text = gdiLineBreaks(rawText);
    int qf = 0;
    qf |= (flags & DT_CENTER)  ? Qt::AlignHCenter
          : (flags & DT_RIGHT) ? Qt::AlignRight
                               : Qt::AlignLeft;
    if (flags & DT_SINGLELINE) {
        qf |= Qt::TextSingleLine;
        qf |= (flags & DT_VCENTER)  ? Qt::AlignVCenter
              : (flags & DT_BOTTOM) ? Qt::AlignBottom
                                    : Qt::AlignTop;
    } else {
        qf |= Qt::AlignTop;
    }
    if (flags & DT_WORDBREAK)
        qf |= Qt::TextWordWrap;
    if (flags & DT_EXPANDTABS)
        qf |= Qt::TextExpandTabs;
    if (!(flags & DT_NOPREFIX))
        qf |= Qt::TextShowMnemonic;
    const QFontMetrics fm(textFont());
    if (flags & DT_CALCRECT) {
        // Measured left-aligned: centring fractional widths would round both edges outward.
        const QRect size = fm.boundingRect(
            r.ToQRect(), (qf & ~int(Qt::AlignHorizontal_Mask)) | Qt::AlignLeft, text);
        r.Right = r.Left + size.width();
        r.Bottom = r.Top + size.height();
        return size.height();
    }
    const QRect bounds = fm.boundingRect(r.ToQRect(), qf, text);
    Scope s(this);
    if (!s.p)
        return bounds.height();
    if (!(flags & DT_NOCLIP))
        s.p->setClipRect(r.ToQRect(), Qt::IntersectClip);
    if (Brush.Style == bsSolid && m_bkMode == OPAQUE)
        fillSolid(*s.p, bounds, ToQColor(Brush.Color));
    s.p->setFont(textFont());
    s.p->setPen(ToQColor(Font.Color()));
    s.p->drawText(r.ToQRect(), qf, text);
    return bounds.height();
}

void TCanvas::Draw(int x, int y, TGraphic* graphic) {
    if (graphic && !graphic->Empty())
        graphic->Draw(this, Bounds(x, y, graphic->Width(), graphic->Height()));
}

void TCanvas::StretchDraw(const TRect& r, TGraphic* graphic) {
    if (graphic && !graphic->Empty())
        graphic->Draw(this, r);
}

void TCanvas::DrawImage(const TRect& r, const QImage& image, std::uint32_t rop) {
    if (image.isNull() || r.Width() == 0 || r.Height() == 0)
        return;
    Scope s(this);
    if (!s.p)
        return;
    TRect target = r;
    bool flipX = false, flipY = false;
    if (target.Width() < 0) {
        std::swap(target.Left, target.Right);
        flipX = true;
    }
    if (target.Height() < 0) {
        std::swap(target.Top, target.Bottom);
        flipY = true;
    }
    s.p->setCompositionMode(ropMode(rop));
    if (rop == BLACKNESS || rop == WHITENESS) {
        s.p->fillRect(target.ToQRect(), rop == BLACKNESS ? Qt::black : Qt::white);
        return;
    }
    const QImage& src = (flipX || flipY) ? image.mirrored(flipX, flipY) : image;
    s.p->drawImage(target.ToQRect(), src);
}

void TCanvas::CopyRect(const TRect& destRect, TCanvas* source, const TRect& srcRect) {
    if (!source || !source->m_image || srcRect.IsEmpty())
        return;
    DrawImage(destRect, source->m_image->copy(srcRect.ToQRect()), CopyMode);
}

TColor TCanvas::Pixels(int x, int y) const {
    if (!m_image || !m_image->valid(x, y))
        return clNone;
    return QColorToTColor(m_image->pixelColor(x, y));
}

void TCanvas::SetPixel(int x, int y, TColor c) {
    if (m_image && !m_painter) {
        if (m_image->valid(x, y))
            m_image->setPixelColor(x, y, ToQColor(c));
        return;
    }
    Scope s(this);
    if (s.p)
        s.p->fillRect(QRect(x, y, 1, 1), ToQColor(c));
}

TRect TCanvas::ClipRect() const {
    if (m_painter) {
        if (m_painter->hasClipping())
            return TRect::FromQRect(m_painter->clipBoundingRect().toAlignedRect());
        return TRect::FromQRect(m_deviceRect);
    }
    if (m_image)
        return {0, 0, m_image->width(), m_image->height()};
    return {};
}

void BitBlt(TCanvas* dest, int x, int y, int width, int height, TCanvas* source, int xSrc, int ySrc,
            std::uint32_t rop) {
    if (!dest || !source || !source->Image())
        return;
    dest->DrawImage(Bounds(x, y, width, height),
                    source->Image()->copy(QRect(xSrc, ySrc, width, height)), rop);
}

void Frame3D(TCanvas* canvas, TRect& rect, TColor topColor, TColor bottomColor, int width) {
    canvas->Pen.Width = 1;
    canvas->Pen.Style = psSolid;
    --rect.Bottom;
    --rect.Right;
    while (width > 0) {
        --width;
        TPoint topRight{rect.Right, rect.Top};
        TPoint bottomLeft{rect.Left, rect.Bottom};
        canvas->Pen.Color = topColor;
        canvas->Polyline({bottomLeft, rect.TopLeft(), topRight});
        canvas->Pen.Color = bottomColor;
        --bottomLeft.X;
        canvas->Polyline({topRight, rect.BottomRight(), bottomLeft});
        InflateRect(rect, -1, -1);
    }
    ++rect.Bottom;
    ++rect.Right;
}
