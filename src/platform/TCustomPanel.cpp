#include "TCustomPanel.h"

#include <algorithm>

namespace {

void bevel(TCanvas* canvas, TRect& r, TBevelCut cut, int width) {
    if (cut == bvNone)
        return;
    if (cut == bvLowered)
        Frame3D(canvas, r, clBtnShadow, clBtnHighlight, width);
    else
        Frame3D(canvas, r, clBtnHighlight, clBtnShadow, width);
}

} // namespace

TCustomPanel::TCustomPanel(QWidget* parent) : TCustomControl(parent) {
    setFocusPolicy(Qt::NoFocus);
    SetDefaultSize(185, 41);
}

TCustomPanel::~TCustomPanel() = default;

void TCustomPanel::SetCaption(const QString& Value) {
    if (Value == m_caption)
        return;
    m_caption = Value;
    Invalidate();
}

void TCustomPanel::SetAlignment(TAlignment Value) {
    m_alignment = Value;
    Invalidate();
}

void TCustomPanel::SetBevelInner(TBevelCut Value) {
    m_bevelInner = Value;
    Invalidate();
}

void TCustomPanel::SetBevelOuter(TBevelCut Value) {
    m_bevelOuter = Value;
    Invalidate();
}

void TCustomPanel::SetBevelWidth(int Value) {
    m_bevelWidth = std::max(1, Value);
    Invalidate();
}

void TCustomPanel::SetBorderWidth(int Value) {
    m_borderWidth = std::max(0, Value);
    Invalidate();
}

void TCustomPanel::SetBorderStyle(TBorderStyle Value) {
    m_borderStyle = Value;
    Invalidate();
}

void TCustomPanel::PaintFrame(TCanvas* canvas, TRect& r) const {
    if (m_borderStyle == bsSingle) {
        Frame3D(canvas, r, clBtnShadow, clBtnHighlight, 1);
        Frame3D(canvas, r, cl3DDkShadow, cl3DLight, 1);
    }
    bevel(canvas, r, m_bevelOuter, m_bevelWidth);
    Frame3D(canvas, r, Color(), Color(), m_borderWidth);
    bevel(canvas, r, m_bevelInner, m_bevelWidth);
}

void TCustomPanel::Paint() {
    TCanvas* canvas = Canvas();
    TRect r = ClientRect();
    PaintFrame(canvas, r);
    canvas->Brush.Color = Color();
    canvas->Brush.Style = bsSolid;
    canvas->FillRect(r);
    canvas->Brush.Style = bsClear;
    canvas->Font.Assign(*Font());
    // One line high, in the middle of what the bevels leave.
    const int lineHeight = canvas->TextHeight(QStringLiteral("W"));
    r.Top = (r.Bottom + r.Top - lineHeight) / 2;
    r.Bottom = r.Top + lineHeight;
    canvas->DrawText(m_caption, r, DT_EXPANDTABS | DT_VCENTER | AlignmentFlag(m_alignment));
}
