#include "TCustomLabel.h"

#include <QEvent>

TCustomLabel::TCustomLabel(QWidget* parent) : TGraphicControl(parent) {
    SetDefaultSize(65, 17);
}

TCustomLabel::~TCustomLabel() = default;

void TCustomLabel::SetCaption(const QString& Value) {
    if (Value == m_caption)
        return;
    m_caption = Value;
    setAccessibleName(Value);
    AdjustBounds();
    Invalidate();
}

void TCustomLabel::SetAlignment(TAlignment Value) {
    m_alignment = Value;
    Invalidate();
}

void TCustomLabel::SetAutoSize(bool Value) {
    m_autoSize = Value;
    AdjustBounds();
}

void TCustomLabel::SetShowAccelChar(bool Value) {
    m_showAccelChar = Value;
    AdjustBounds();
    Invalidate();
}

void TCustomLabel::SetTransparent(bool Value) {
    m_transparent = Value;
    Invalidate();
}

void TCustomLabel::SetWordWrap(bool Value) {
    m_wordWrap = Value;
    AdjustBounds();
    Invalidate();
}

void TCustomLabel::FontChanged() {
    TGraphicControl::FontChanged();
    AdjustBounds();
}

void TCustomLabel::changeEvent(QEvent* e) {
    if (e->type() == QEvent::EnabledChange)
        Invalidate();
    TGraphicControl::changeEvent(e);
}

void TCustomLabel::AdjustBounds() {
    if (!m_autoSize)
        return;
    TRect r = ClientRect();
    DoDrawText(r, DT_EXPANDTABS | DT_CALCRECT | (m_wordWrap ? DT_WORDBREAK : 0));
    int left = Left();
    if (m_alignment == taRightJustify)
        left += Width() - r.Right;
    SetBounds(left, Top(), r.Right, r.Bottom);
}

void TCustomLabel::DoDrawText(TRect& r, unsigned flags) {
    TCanvas* canvas = Canvas();
    QString text = m_caption;
    if ((flags & DT_CALCRECT) &&
        (text.isEmpty() || (m_showAccelChar && text == QStringLiteral("&"))))
        text += u' ';
    if (!m_showAccelChar)
        flags |= DT_NOPREFIX;
    canvas->Font.Assign(*Font());
    if (isEnabled() || (flags & DT_CALCRECT)) {
        canvas->DrawText(text, r, flags);
        return;
    }
    OffsetRect(r, 1, 1);
    canvas->Font.SetColor(clBtnHighlight);
    canvas->DrawText(text, r, flags);
    OffsetRect(r, -1, -1);
    canvas->Font.SetColor(clBtnShadow);
    canvas->DrawText(text, r, flags);
}

void TCustomLabel::Paint() {
    TCanvas* canvas = Canvas();
    if (!m_transparent) {
        canvas->Brush.Color = Color();
        canvas->Brush.Style = bsSolid;
        canvas->FillRect(ClientRect());
    }
    canvas->Brush.Style = bsClear;
    TRect r = ClientRect();
    DoDrawText(r, DT_EXPANDTABS | (m_wordWrap ? DT_WORDBREAK : 0) | AlignmentFlag(m_alignment));
}
