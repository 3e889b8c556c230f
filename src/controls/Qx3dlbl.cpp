#include "Qx3dlbl.h"

#include "QXDesign.h"
#include "QXTools.h"
#include "QxutilText.h"

#include <QEnterEvent>
#include <QImage>

namespace {

const bool classKnown = RegisterClass(ComponentClassOf<TQX3dLabel>());

constexpr TColor highlight = clWhite;
constexpr TColor shade = clGray;

// One copy of the text: where it lands relative to the text and in which colour.
struct Copy {
    int dx;
    int dy;
    TColor color;
};

} // namespace

TQX3dLabel::TQX3dLabel(QWidget* parent) : TCustomLabel(parent), TQXAboutCarrier(QX3dLabelVersion) {
    setAccessibleName(QStringLiteral("3D-Beschriftung"));
    setAccessibleDescription(QStringLiteral("Beschriftung, erhaben, vertieft oder mit Schatten"));
    SetWordWrap(true);
    Font()->SetColor(clRed);
    Font()->SetSize(15);
    SetDefaultSize(170, 45);
}

TQX3dLabel::~TQX3dLabel() = default;

void TQX3dLabel::SetAlignment(dtFormat Value) {
    m_alignment = Value;
    Invalidate();
}

void TQX3dLabel::SetBorderSize(int Value) {
    m_borderSize = Value;
    Invalidate();
}

void TQX3dLabel::SetBorderStyle(TBevelCut Value) {
    m_borderStyle = Value;
    Invalidate();
}

void TQX3dLabel::SetCaptionSpacing(std::uint8_t Value) {
    m_captionSpacing = Value;
    AdjustBounds();
    Invalidate();
}

void TQX3dLabel::SetCaptionStyle(TcsStyle Value) {
    m_captionStyle = Value;
    Invalidate();
}

void TQX3dLabel::SetShadowColor(TColor Value) {
    m_shadowColor = Value;
    Invalidate();
}

void TQX3dLabel::SetShadowDepth(int Value) {
    qxtMinMaxInteger(Value, 1, 50);
    m_shadowDepth = Value;
    Invalidate();
}

QString TQX3dLabel::text() const {
    QString s = Caption();
    qxtReplaceString(s, QStringLiteral("^M"), QStringLiteral("\n\r"));
    return s;
}

unsigned TQX3dLabel::alignmentFlag() const {
    switch (m_alignment) {
    case dtLeft:
        return DT_LEFT;
    case dtRight:
        return DT_RIGHT;
    case dtCenter:
        break;
    }
    return DT_CENTER;
}

void TQX3dLabel::applyAutoSize(TCanvas* canvas, const QString& text) {
    if (!AutoSize())
        return;
    SetAlign(alNone);
    TRect r = ClientRect();
    canvas->DrawText(text, r, alignmentFlag() | DT_CALCRECT);
    if (Width() != r.Width() + 10 || Height() != r.Height() + 6)
        resize(r.Width() + 10, r.Height() + 6);
}

void TQX3dLabel::AdjustBounds() {
    TCanvas* canvas = Canvas();
    canvas->Font.Assign(*Font());
    const int extra = canvas->SetTextCharacterExtra(m_captionSpacing);
    applyAutoSize(canvas, text());
    canvas->SetTextCharacterExtra(extra);
}

void TQX3dLabel::Paint() {
    QImage bitmap;
    TCanvas offscreen;
    TCanvas* canvas = Canvas();
    if (!Transparent()) {
        bitmap = QImage(size(), QImage::Format_RGB32);
        offscreen.SetImage(&bitmap);
        offscreen.SetPalette(palette());
        canvas = &offscreen;
    }
    const QString s = text();
    canvas->Font.Assign(*Font());
    const int extra = canvas->SetTextCharacterExtra(m_captionSpacing);
    applyAutoSize(canvas, s);
    TRect r = ClientRect();
    if (!Transparent()) {
        canvas->Brush.Color = Color();
        canvas->Brush.Style = bsSolid;
        canvas->FillRect(r);
    }
    if (m_borderStyle == bvRaised)
        Frame3D(canvas, r, highlight, shade, m_borderSize);
    else if (m_borderStyle == bvLowered)
        Frame3D(canvas, r, shade, highlight, m_borderSize);

    const unsigned flags = alignmentFlag() | (WordWrap() ? DT_WORDBREAK : 0);
    TRect measured = r;
    canvas->DrawText(s, measured, flags | DT_CALCRECT);
    OffsetRect(r, 0, (r.Height() - measured.Height()) / 2);
    canvas->SetBkMode(TRANSPARENT);
    canvas->Brush.Style = bsClear;

    const auto drawCopy = [&](const Copy& c) {
        TRect at = r;
        OffsetRect(at, c.dx, c.dy);
        canvas->Font.SetColor(c.color);
        canvas->DrawText(s, at, flags);
    };
    switch (m_captionStyle) {
    case csLowered:
        for (const Copy& c : {Copy{-1, 0, shade}, Copy{-1, -1, shade}, Copy{0, 1, highlight},
                              Copy{1, 0, highlight}})
            drawCopy(c);
        break;
    case csRaised:
        for (const Copy& c : {Copy{-1, 0, highlight}, Copy{-1, -1, highlight}, Copy{0, 1, shade},
                              Copy{1, 0, shade}})
            drawCopy(c);
        break;
    case csShadow:
        drawCopy({m_shadowDepth, m_shadowDepth, m_shadowColor});
        break;
    case csNONE:
        break;
    }
    drawCopy({0, 0, Font()->Color()});
    canvas->SetTextCharacterExtra(extra);
    if (!Transparent())
        Canvas()->DrawImage(ClientRect(), bitmap);
}

void TQX3dLabel::enterEvent(QEnterEvent* e) {
    TCustomLabel::enterEvent(e);
    if (OnMouseEnter)
        OnMouseEnter(this);
}

void TQX3dLabel::leaveEvent(QEvent* e) {
    TCustomLabel::leaveEvent(e);
    if (OnMouseLeave)
        OnMouseLeave(this);
}

void Qx3dlbl::Register() {
    Q_UNUSED(classKnown);
    QXRegisterOne(QLatin1String(QXPalettePage), "TQX3dLabel");
}
