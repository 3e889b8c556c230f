#include "QXImage.h"

#include "QXDesign.h"
#include "QXGif.h"
#include "QXTools.h"
#include "SysUtils.h"

#include <QScopeGuard>
#include <utility>

namespace {

const bool classKnown = RegisterClass(ComponentClassOf<TQXImage>());

} // namespace

TQXImage::TQXImage(QWidget* parent) : TGraphicControl(parent) {
    m_picture.OnChange = [this](TPicture*) { PictureChanged(); };
    m_picture.OnProgress = [this](TPersistent* sender, TProgressStage stage, int percent,
                                  bool redrawNow, const TRect& r, const QString& msg) {
        Progress(sender, stage, percent, redrawNow, r, msg);
    };
    SetDefaultSize(105, 105);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName(QStringLiteral("Bild"));
    setAccessibleDescription(
        QStringLiteral("Bild, auf Wunsch im Seitenverhältnis eingepasst und zentriert"));
}

TQXImage::~TQXImage() {
    m_picture.OnChange = nullptr;
    m_picture.OnProgress = nullptr;
}

void TQXImage::SetAutoSize(bool Value) {
    m_autoSize = Value;
    PictureChanged();
}

void TQXImage::SetCenter(bool Value) {
    if (Value == m_center)
        return;
    m_center = Value;
    PictureChanged();
}

void TQXImage::SetStretch(bool Value) {
    if (Value == m_stretch)
        return;
    m_stretch = Value;
    PictureChanged();
}

void TQXImage::SetTransparent(bool Value) {
    if (Value == m_transparent)
        return;
    m_transparent = Value;
    PictureChanged();
}

TCanvas* TQXImage::Canvas() {
    if (!m_picture.Graphic()) {
        TBitmap bitmap(Width(), Height());
        m_picture.SetGraphic(&bitmap);
    }
    auto* bitmap = dynamic_cast<TBitmap*>(m_picture.Graphic());
    if (!bitmap)
        throw EInvalidOperation(
            QStringLiteral("Ein Bild kann nur verändert werden, wenn es eine Bitmap enthält."));
    return bitmap->Canvas();
}

TRect TQXImage::DestRect() {
    TRect target;
    if (m_stretch) {
        int pw = m_picture.Width();
        const int ph = m_picture.Height();
        if (pw == 0 || ph == 0)
            pw = 1;
        int w = Width();
        int h = ph * Width() / pw;
        if (h > Height()) {
            h = Height();
            w = pw * Height() / ph;
        }
        target = Bounds((Width() - w) / 2, (Height() - h) / 2, w, h);
    } else if (m_center) {
        target = Bounds((Width() - m_picture.Width()) / 2, (Height() - m_picture.Height()) / 2,
                        m_picture.Width(), m_picture.Height());
    } else {
        target = Bounds(0, 0, m_picture.Width(), m_picture.Height());
    }
    if (target != m_lastTarget)
        m_screenCanvas.FillRect(ClientRect());
    m_lastTarget = target;
    return target;
}

void TQXImage::Paint() {
    const bool wasDrawing = std::exchange(m_drawing, true);
    // A picture can fail to decode while it is drawn.
    const auto restore = qScopeGuard([&]() { m_drawing = wasDrawing; });
    if (m_screen.size() != size()) {
        m_screen = QImage(size(), QImage::Format_RGB32);
        m_screen.fill(TColorToQColor(Color(), &palette()));
    }
    TCanvas* c = &m_screenCanvas;
    c->SetPalette(palette());
    c->Brush = TBrush{};
    c->Brush.Color = Color();
    if (!m_opaque)
        c->FillRect(ClientRect());
    c->StretchDraw(DestRect(), m_picture.Graphic());
    if (ComponentState().Contains(csDesigning)) {
        c->Pen = TPen{};
        c->Pen.Style = psDash;
        c->Brush.Style = bsClear;
        c->Rectangle(0, 0, Width(), Height());
    }
    TGraphicControl::Canvas()->DrawImage(ClientRect(), m_screen);
}

void TQXImage::PictureChanged() {
    if (m_autoSize && m_picture.Width() > 0 && m_picture.Height() > 0)
        SetBounds(Left(), Top(), m_picture.Width(), m_picture.Height());
    TGraphic* graphic = m_picture.Graphic();
    if (graphic) {
        if (!dynamic_cast<TIcon*>(graphic) && graphic->Transparent() != m_transparent) {
            // The graphic reports the change, which runs this again with the value in place.
            graphic->SetTransparent(m_transparent);
            return;
        }
        const bool covers =
            m_stretch || (graphic->Width() >= Width() && graphic->Height() >= Height());
        m_opaque = dynamic_cast<TGIFImage*>(graphic) || (!graphic->Transparent() && covers);
        if (DoPaletteChange() && m_drawing)
            update();
    } else {
        m_opaque = false;
    }
    if (!m_drawing)
        Invalidate();
}

bool TQXImage::DoPaletteChange() {
    TGraphic* graphic = m_picture.Graphic();
    if (!Visible() || ComponentState().Contains(csLoading) || !graphic ||
        !graphic->PaletteModified())
        return false;
    graphic->SetPaletteModified(false);
    // Qt realises colours itself; a graphic with a palette of its own only needs showing anew.
    return graphic->Palette() != 0;
}

void TQXImage::Progress(TPersistent* Sender, TProgressStage Stage, int PercentDone, bool RedrawNow,
                        const TRect& R, const QString& Msg) {
    if (m_incrementalDisplay && RedrawNow) {
        DoPaletteChange();
        repaint();
    }
    if (OnProgress)
        OnProgress(Sender, Stage, PercentDone, RedrawNow, R, Msg);
}

void QXImage::Register() {
    Q_UNUSED(classKnown);
    QXRegisterOne(QLatin1String(QXPalettePage), "TQXImage");
}
