#include "Qxfximg.h"

#include "Application.h"
#include "QXDesign.h"
#include "QXTools.h"
#include "QxutilText.h"
#include "SysUtils.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <algorithm>
#include <cstring>
#include <utility>

namespace {

const bool classKnown = RegisterClass(ComponentClassOf<TQXFxImage>());

// The block list may take this many bytes (8 a block).
constexpr qint64 pointBytesMax = 1000000;
// The dissolve pauses once per this fraction of its blocks.
constexpr int pausesPerTransition = 100;

// The transitions copy 32-bit pixels directly: a dissolve moves up to 125,000 blocks, too many
// for a painter per block.
constexpr QImage::Format screenFormat = QImage::Format_RGB32;

// Copies the w x h block at (sx, sy) of src to (dx, dy) of dst, both in screenFormat, leaving
// out what lies outside either image.
void copyBlock(QImage& dst, int dx, int dy, const QImage& src, int sx, int sy, int w, int h) {
    const int left = std::max({0, -sx, -dx}), top = std::max({0, -sy, -dy});
    sx += left;
    dx += left;
    sy += top;
    dy += top;
    w = std::min({w - left, src.width() - sx, dst.width() - dx});
    h = std::min({h - top, src.height() - sy, dst.height() - dy});
    if (w <= 0 || h <= 0)
        return;
    const auto bytes = std::size_t(w) * sizeof(QRgb);
    for (int r = 0; r < h; ++r)
        std::memcpy(reinterpret_cast<QRgb*>(dst.scanLine(dy + r)) + dx,
                    reinterpret_cast<const QRgb*>(src.constScanLine(sy + r)) + sx, bytes);
}

// Fills the w x h block at (x, y) of dst with colour, leaving out what lies outside.
void fillBlock(QImage& dst, int x, int y, int w, int h, QRgb colour) {
    const int x1 = std::max(x, 0), y1 = std::max(y, 0);
    const int x2 = std::min(x + w, dst.width()), y2 = std::min(y + h, dst.height());
    for (int r = y1; r < y2; ++r) {
        QRgb* line = reinterpret_cast<QRgb*>(dst.scanLine(r));
        std::fill(line + x1, line + std::max(x1, x2), colour);
    }
}

// Moves the whole image one pixel to the left; the rightmost column keeps its pixels.
void shiftLeft(QImage& image) {
    if (image.width() < 2)
        return;
    const auto bytes = std::size_t(image.width() - 1) * sizeof(QRgb);
    for (int r = 0; r < image.height(); ++r) {
        QRgb* line = reinterpret_cast<QRgb*>(image.scanLine(r));
        std::memmove(line, line + 1, bytes);
    }
}

} // namespace

TQXFxImage::TQXFxImage(QWidget* parent)
    : TGraphicControl(parent), TQXAboutCarrier(QXFxImageVersion),
      m_picture(std::make_unique<TBitmap>()), m_screenCanvas(std::make_unique<TCanvas>(&m_screen)) {
    SetDefaultSize(40, 40);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName(QStringLiteral("Effektbild"));
    setAccessibleDescription(
        QStringLiteral("Bild, das in zufälligen Blöcken oder von rechts herein erscheint"));
}

TQXFxImage::~TQXFxImage() = default;

void TQXFxImage::SetCaption(const QString& Value) {
    m_caption = Value;
    TCanvas* c = m_picture->Canvas();
    c->SetPalette(palette());
    c->Font.Assign(*Font());
    const int w = c->TextWidth(Value), h = c->TextHeight(Value);
    m_picture->SetSize(w, h);
    c = m_picture->Canvas();
    c->Brush = TBrush{};
    c->Brush.Color = Color();
    c->FillRect(Rect(0, 0, w, h));
    c->TextOut(0, 0, Value);
    m_shown = false;
    redrawScreen();
    update();
}

void TQXFxImage::SetCenter(bool Value) {
    m_center = Value;
}

void TQXFxImage::SetFadeStyle(TFadeStyle Value) {
    m_fadeStyle = Value;
    if (Value == qxfsNONE)
        m_shown = true;
}

void TQXFxImage::SetPicture(TBitmap* Value) {
    m_picture->Assign(Value);
    redrawScreen();
    update();
}

void TQXFxImage::SetColor(TColor Value) {
    TGraphicControl::SetColor(Value);
    redrawScreen();
    update();
}

void TQXFxImage::Stretch() {
    if (m_picture->Width() <= 0)
        return;
    TBitmap stretched(Width(), Height());
    stretched.Canvas()->StretchDraw(ClientRect(), m_picture.get());
    m_picture->Assign(&stretched);
    redrawScreen();
    update();
}

void TQXFxImage::Delay(int Milliseconds) {
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < Milliseconds) {
    }
}

void TQXFxImage::INITPoints(TCanvas* Canvas) {
    const TRect area = Canvas->ClipRect();
    const int w = area.Width(), h = area.Height();
    if (m_center) {
        m_x0 = (Width() - w) / 2;
        m_y0 = (Height() - h) / 2;
    } else {
        m_x0 = 0;
        m_y0 = 0;
    }
    const TCursor cursor = Screen()->Cursor();
    qxtSetScreenCursor(crHourGlass);
    const qint64 pixels = qint64(w) * h;
    m_blockSize = 1;
    m_count = int(pixels);
    while (qint64(m_count) * qint64(sizeof(TPoint)) > pointBytesMax) {
        ++m_blockSize;
        m_count = int(pixels / (qint64(m_blockSize) * m_blockSize));
    }
    m_points.assign(std::size_t(std::max(m_count, 0)), TPoint{});
    const int rows = std::max(h / m_blockSize, 1), cols = std::max(w / m_blockSize, 1);
    const int dx = w / cols, dy = h / rows;
    for (int i = 0; i < m_count; ++i) {
        const int row = i / cols;
        m_points[std::size_t(i)] = {dx * (i - row * cols), dy * row};
    }
    if (m_fadeStyle == qxfsRandom)
        ShufflePoints();
    if (m_fadeStyle != qxfsNONE)
        m_shown = false;
    qxtSetScreenCursor(cursor);
}

void TQXFxImage::ShufflePoints() {
    QRandomGenerator random{quint32(QDateTime::currentMSecsSinceEpoch())};
    for (int i = 0; i < m_count; ++i) {
        const int j = int(random.generateDouble() * m_count);
        std::swap(m_points[std::size_t(i)], m_points[std::size_t(j)]);
    }
}

void TQXFxImage::FadeIn() {
    TApplication::ProcessMessages();
    prepareScreen();
    INITPoints(m_picture->Canvas());
    m_step = m_count / pausesPerTransition;
    const QImage picture = m_picture->Image().convertToFormat(screenFormat);
    switch (m_fadeStyle) {
    case qxfsNONE:
        copyBlock(m_screen, m_x0, m_y0, picture, 0, 0, picture.width(), picture.height());
        flush();
        break;
    case qxfsRandom:
        for (int i = 0; i < m_count; ++i) {
            const TPoint p = m_points[std::size_t(i)];
            copyBlock(m_screen, m_x0 + p.X, m_y0 + p.Y, picture, p.X, p.Y, m_blockSize,
                      m_blockSize);
            if (IntMod(i, m_step) == 0)
                pause();
        }
        flush();
        break;
    case qxfsFadeLeft:
    case qxfsWipeLeft:
        for (int i = 0; i <= Width() - m_x0; ++i) {
            if (m_fadeStyle == qxfsWipeLeft)
                shiftLeft(m_screen);
            copyBlock(m_screen, Width() - i, m_y0, picture, 0, 0, picture.width(),
                      picture.height());
            flush();
        }
        break;
    }
    m_shown = true;
}

void TQXFxImage::FadeOut() {
    TApplication::ProcessMessages();
    prepareScreen();
    INITPoints(m_screenCanvas.get());
    const QRgb colour = TColorToQColor(Color(), &palette()).rgb();
    switch (m_fadeStyle) {
    case qxfsNONE:
        fillBlock(m_screen, m_x0, m_y0, m_picture->Width(), m_picture->Height(), colour);
        flush();
        break;
    case qxfsRandom:
        for (int i = 0; i < m_count; ++i) {
            const TPoint p = m_points[std::size_t(i)];
            fillBlock(m_screen, m_x0 + p.X, m_y0 + p.Y, m_blockSize, m_blockSize, colour);
            if (IntMod(i, m_step) == 0)
                pause();
        }
        flush();
        break;
    case qxfsFadeLeft:
    case qxfsWipeLeft:
        for (int i = 0; i < Width(); ++i) {
            shiftLeft(m_screen);
            flush();
        }
        break;
    }
    m_shown = false;
}

void TQXFxImage::Paint() {
    prepareScreen();
    Canvas()->DrawImage(ClientRect(), m_screen);
}

void TQXFxImage::resizeEvent(QResizeEvent* e) {
    TGraphicControl::resizeEvent(e);
    m_screenStale = true;
}

void TQXFxImage::redrawScreen() {
    m_screenStale = false;
    if (m_screen.size() != size())
        m_screen = QImage(size(), screenFormat);
    if (m_screen.isNull())
        return;
    TCanvas* c = m_screenCanvas.get();
    c->SetPalette(palette());
    c->Brush = TBrush{};
    c->Brush.Color = Color();
    c->FillRect(ClientRect());
    if (ComponentState().Contains(csDesigning)) {
        c->Pen = TPen{};
        c->Pen.Style = psDash;
        c->Brush.Style = bsClear;
        c->Rectangle(ClientRect());
        c->Draw(m_x0, m_y0, m_picture.get());
    } else if (m_shown && m_picture->Width() >= 1) {
        c->Draw(m_x0, m_y0, m_picture.get());
    }
}

void TQXFxImage::prepareScreen() {
    if (m_screenStale || m_screen.size() != size())
        redrawScreen();
}

void TQXFxImage::pause() {
    flush();
    Delay(1);
}

void TQXFxImage::flush() {
    repaint();
}

QPixmap TQXFxImage::pictureProperty() const {
    return QPixmap::fromImage(m_picture->Image());
}

void TQXFxImage::setPictureProperty(const QPixmap& value) {
    TBitmap bitmap;
    bitmap.SetImage(value.toImage());
    SetPicture(&bitmap);
}

void Qxfximg::Register() {
    Q_UNUSED(classKnown);
    QXRegisterOne(QLatin1String(QXPalettePage), "TQXFxImage");
}
