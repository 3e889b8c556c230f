#include "TImage.h"

TImage::TImage(QWidget* parent) : TGraphicControl(parent) {
    m_picture.OnChange = [this](TPicture*) { PictureChanged(); };
    SetDefaultSize(105, 105);
}

TImage::~TImage() {
    m_picture.OnChange = nullptr;
}

void TImage::SetAutoSize(bool Value) {
    m_autoSize = Value;
    PictureChanged();
}

void TImage::SetCenter(bool Value) {
    if (Value == m_center)
        return;
    m_center = Value;
    PictureChanged();
}

void TImage::SetStretch(bool Value) {
    if (Value == m_stretch)
        return;
    m_stretch = Value;
    PictureChanged();
}

void TImage::SetTransparent(bool Value) {
    if (Value == m_transparent)
        return;
    m_transparent = Value;
    PictureChanged();
}

void TImage::PictureChanged() {
    if (m_autoSize && m_picture.Width() > 0 && m_picture.Height() > 0)
        SetBounds(Left(), Top(), m_picture.Width(), m_picture.Height());
    TGraphic* graphic = m_picture.Graphic();
    if (graphic && !dynamic_cast<TIcon*>(graphic) && graphic->Transparent() != m_transparent) {
        // Setting it reports a change, which comes back here; the value is already equal then.
        graphic->SetTransparent(m_transparent);
        return;
    }
    Invalidate();
}

TRect TImage::DestRect() const {
    if (m_stretch)
        return ClientRect();
    const int w = m_picture.Width(), h = m_picture.Height();
    if (m_center)
        return Bounds((Width() - w) / 2, (Height() - h) / 2, w, h);
    return Bounds(0, 0, w, h);
}

void TImage::Paint() {
    if (ComponentState().Contains(csDesigning)) {
        Canvas()->Pen.Style = psDash;
        Canvas()->Brush.Style = bsClear;
        Canvas()->Rectangle(0, 0, Width(), Height());
    }
    Canvas()->StretchDraw(DestRect(), m_picture.Graphic());
}
