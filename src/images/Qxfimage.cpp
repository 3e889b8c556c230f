#include "Qxfimage.h"

#include "QXDesign.h"
#include "QXTools.h"
#include "SysUtils.h"

#include <algorithm>

namespace {

const bool classKnown = RegisterClass(ComponentClassOf<TQXFillImage>());

// The pattern resources of the pattern styles, from BCyan on.
constexpr const char* patternNames[] = {"QXBCYAN",  "QXBGRAY", "QXLCYAN", "QXLGRAY",
                                        "QXWDGRAY", "QXWEAVE", "QXWGRAY", "QXWLGRAY"};

// Bitmaps this large or larger in either direction are not drawn.
constexpr int largestBitmap = 256;
// Bitmaps with fewer rows are repeated as a brush.
constexpr int brushRows = 9;

// A colour byte as the rainbow reads it: the raw value, system colours unresolved.
int colorByte(TColor c, int shift) {
    return int((std::uint32_t(c) >> shift) & 0xFF);
}

} // namespace

TQXFillImage::TQXFillImage(QWidget* parent)
    : TGraphicControl(parent), TQXAboutCarrier(QXFillImageVersion),
      m_fillBitmap(std::make_unique<TBitmap>()), m_pattern(std::make_unique<TBitmap>()) {
    SetDefaultSize(100, 100);
    setAccessibleName(QStringLiteral("Füllbild"));
    setAccessibleDescription(QStringLiteral("Hintergrund aus Farbverlauf, Kachelbild oder Muster"));
}

TQXFillImage::~TQXFillImage() = default;

void TQXFillImage::SetAdjustToParent(bool Value) {
    m_adjustToParent = Value;
    Invalidate();
}

void TQXFillImage::SetFillBitmap(TBitmap* Value) {
    m_fillBitmap->Assign(Value);
    Invalidate();
}

void TQXFillImage::SetFillStyle(TFStyle Value) {
    m_fillStyle = Value;
    if (Value >= BCyan) {
        m_pattern->LoadFromFile(QStringLiteral(":/qxtools/bitmap/") +
                                QLatin1String(patternNames[Value - BCyan]));
    } else {
        m_pattern->SetSize(0, 0);
    }
    Invalidate();
}

void TQXFillImage::SetRBFromColor(TColor Value) {
    m_rbFromColor = Value;
    Invalidate();
}

void TQXFillImage::SetRBSteps(std::uint8_t Value) {
    m_rbSteps = std::max<std::uint8_t>(Value, 2);
    Invalidate();
}

void TQXFillImage::SetRBToColor(TColor Value) {
    m_rbToColor = Value;
    Invalidate();
}

void TQXFillImage::Paint() {
    TCanvas* c = Canvas();
    if (ComponentState().Contains(csDesigning)) {
        c->Pen.Style = psDash;
        c->Brush.Style = bsClear;
        c->Rectangle(ClientRect());
        c->Pen.Style = psSolid;
        c->Brush.Style = bsSolid;
    }
    if (m_adjustToParent && parentWidget()) {
        SetAlign(alNone);
        SetBounds(0, 0, parentWidget()->width(), parentWidget()->height());
    }
    const int w = Width(), h = Height();
    switch (m_fillStyle) {
    case NONE:
        break;
    case vRAINBOW:
        paintRainbow(true, w, h);
        break;
    case hRAINBOW:
        paintRainbow(false, w, h);
        break;
    case BITMAP:
        paintBitmap(w, h);
        break;
    default:
        if (m_pattern->Height() > 0)
            fillWithBrush(*m_pattern, w, h);
        break;
    }
}

void TQXFillImage::paintRainbow(bool vertical, int w, int h) {
    TCanvas* c = Canvas();
    const int size = vertical ? h : w;
    const int n = std::min(size, int(m_rbSteps));
    const int step = IntDiv(size, n);
    const int count = IntDiv(size, step);
    int from[3], delta[3];
    for (int k = 0; k < 3; ++k) {
        from[k] = colorByte(m_rbFromColor, 8 * k);
        delta[k] = from[k] - colorByte(m_rbToColor, 8 * k);
    }
    c->Brush = TBrush{};
    for (int i = 0; i <= count - 2; ++i) {
        int rgb[3];
        for (int k = 0; k < 3; ++k)
            rgb[k] = (from[k] - IntDiv(i * delta[k], count - 1)) & 0xFF;
        c->Brush.Color = RGB(rgb[0], rgb[1], rgb[2]);
        c->FillRect(vertical ? Rect(0, i * step, w, i * step + step)
                             : Rect(i * step, 0, i * step + step, h));
    }
    c->Brush.Color = m_rbToColor;
    const int last = (count - 1) * step;
    c->FillRect(vertical ? Rect(0, last, w, h) : Rect(last, 0, w, h));
}

void TQXFillImage::paintBitmap(int w, int h) {
    const int bw = m_fillBitmap->Width(), bh = m_fillBitmap->Height();
    if (bh == 0 || bw > largestBitmap || bh > largestBitmap)
        return;
    if (bh < brushRows) {
        fillWithBrush(*m_fillBitmap, w, h);
        return;
    }
    for (int r = 0; r <= h / bh; ++r)
        for (int col = 0; col <= w / bw; ++col)
            Canvas()->Draw(col * bw, r * bh, m_fillBitmap.get());
}

void TQXFillImage::fillWithBrush(const TBitmap& tile, int w, int h) {
    TCanvas* c = Canvas();
    c->Brush = TBrush{};
    c->Brush.Bitmap = std::make_shared<QImage>(tile.Image());
    c->FillRect(Rect(0, 0, w, h));
    c->Brush.Bitmap.reset();
}

QPixmap TQXFillImage::fillBitmapProperty() const {
    return QPixmap::fromImage(m_fillBitmap->Image());
}

void TQXFillImage::setFillBitmapProperty(const QPixmap& value) {
    TBitmap bitmap;
    bitmap.SetImage(value.toImage());
    SetFillBitmap(&bitmap);
}

void QXFillImage::Register() {
    Q_UNUSED(classKnown);
    QXRegisterOne(QLatin1String(QXPalettePage), "TQXFillImage");
}
