#include "Qxhint.h"

#include "Qxhint_p.h"

#include "Application.h"
#include "QXDesign.h"
#include "QXTools.h"
#include "QxutilText.h"

#include <QCursor>
#include <QEvent>
#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <algorithm>
#include <memory>
#include <vector>

TBitmap* QXH_BakBitmap = nullptr;
TPoint QXH_Crs;
int QXH_DefaultWidth = 150;
THintPosition QXH_HintPosition = hpAboveRight;
int QXH_ShadowDepth = 10;
TColor QXH_Color = clYellow;
TFont* QXH_Font = nullptr;

namespace {

const bool classKnown = RegisterClass(ComponentClassOf<TQXHint>());

// The balloon's margin around the text, and the height the trailing circles take.
constexpr int balloonMargin = 40;
constexpr int tailHeight = 20;
constexpr int cornerEllipse = 30;
// Strength of the alpha shadow of a translucent hint.
constexpr int shadowAlpha = 110;

// Lives as long as the program: the hint window may outlive every TQXHint.
void moduleObjectsNeeded() {
    if (!QXH_BakBitmap)
        QXH_BakBitmap = new TBitmap;
    if (!QXH_Font)
        QXH_Font = new TFont;
}

bool isLeft(THintPosition p) {
    return p == hpAboveLeft || p == hpBelowLeft;
}

bool isBelow(THintPosition p) {
    return p == hpBelowLeft || p == hpBelowRight;
}

THintPosition positionOf(bool left, bool below) {
    if (below)
        return left ? hpBelowLeft : hpBelowRight;
    return left ? hpAboveLeft : hpAboveRight;
}

// The bubble with its tail at the bottom left, as it stands above and right of the pointer.
void drawShape(TCanvas* c, int w, int h) {
    c->RoundRect(0, 0, w, h - tailHeight, cornerEllipse, cornerEllipse);
    c->Ellipse(0, h, 5, h - 5);
    c->Ellipse(7, h - 5, 14, h - 12);
    c->Ellipse(12, h - 12, 20, h - 20);
}

// The shape in the given colours, mirrored for the other positions (corners exchanged).
std::unique_ptr<TBitmap> shapePicture(int w, int h, TColor pen, TColor brush,
                                      THintPosition position) {
    auto base = std::make_unique<TBitmap>(w, h);
    TCanvas* c = base->Canvas();
    c->Brush.Color = clWhite;
    c->Brush.Style = bsSolid;
    c->FillRect(Rect(0, 0, w, h));
    c->Pen.Color = pen;
    c->Brush.Color = brush;
    drawShape(c, w, h);
    if (position == hpAboveRight)
        return base;
    auto mirrored = std::make_unique<TBitmap>(w, h);
    TRect target = Rect(0, 0, w, h);
    if (isLeft(position))
        std::swap(target.Left, target.Right);
    if (isBelow(position))
        std::swap(target.Top, target.Bottom);
    mirrored->Canvas()->StretchDraw(target, base.get());
    return mirrored;
}

// Two box-blur passes over an alpha plane.
void blur(std::vector<int>& a, int w, int h, int radius) {
    std::vector<int> tmp(a.size());
    const int span = 2 * radius + 1;
    for (int pass = 0; pass < 2; ++pass) {
        for (int y = 0; y < h; ++y) {
            int sum = 0;
            for (int x = -radius; x <= radius; ++x)
                sum += a[y * w + std::clamp(x, 0, w - 1)];
            for (int x = 0; x < w; ++x) {
                tmp[y * w + x] = sum / span;
                sum +=
                    a[y * w + std::min(x + radius + 1, w - 1)] - a[y * w + std::max(x - radius, 0)];
            }
        }
        for (int x = 0; x < w; ++x) {
            int sum = 0;
            for (int y = -radius; y <= radius; ++y)
                sum += tmp[std::clamp(y, 0, h - 1) * w + x];
            for (int y = 0; y < h; ++y) {
                a[y * w + x] = sum / span;
                sum += tmp[std::min(y + radius + 1, h - 1) * w + x] -
                       tmp[std::max(y - radius, 0) * w + x];
            }
        }
    }
}

// A soft shadow of the shape (every pixel that is not white), offset by depth.
void softShadow(QImage& target, const QImage& shape, int depth) {
    const int radius = std::max(1, depth / 3);
    const int w = shape.width() + 2 * radius, h = shape.height() + 2 * radius;
    std::vector<int> alpha(size_t(w) * size_t(h), 0);
    for (int y = 0; y < shape.height(); ++y)
        for (int x = 0; x < shape.width(); ++x)
            if ((shape.pixel(x, y) & 0xFFFFFF) != 0xFFFFFF)
                alpha[size_t(y + radius) * size_t(w) + size_t(x + radius)] = shadowAlpha;
    blur(alpha, w, h, radius);
    QImage shadow(w, h, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < h; ++y) {
        auto* line = reinterpret_cast<QRgb*>(shadow.scanLine(y));
        for (int x = 0; x < w; ++x)
            line[x] = qRgba(0, 0, 0, alpha[size_t(y) * size_t(w) + size_t(x)]);
    }
    QPainter p(&target);
    p.drawImage(depth - radius, depth - radius, shadow);
}

// X11 lets a program read the screen; elsewhere the window keeps its own alpha instead.
bool screenReadable() {
    return QGuiApplication::platformName() == QLatin1String("xcb");
}

} // namespace

void CopyTransparent(TCanvas* dest, TCanvas* source, int width, int height) {
    QImage* d = dest ? dest->Image() : nullptr;
    const QImage* s = source ? source->Image() : nullptr;
    if (!d || !s)
        return;
    const int w = std::min({width, d->width(), s->width()});
    const int h = std::min({height, d->height(), s->height()});
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            const QRgb p = s->pixel(x, y);
            if ((p & 0xFFFFFF) != 0xFFFFFF)
                d->setPixel(x, y, p | 0xFF000000u);
        }
}

QString ReplaceString(const QString& text, const QString& from, const QString& to) {
    QString result = text;
    qxtReplaceString(result, from, to);
    return result;
}

QString QXHHintText(const QString& hint) {
    // "^M" becomes LF CR; Qt would lay the CR out as a blank, so only the LF is kept.
    return ReplaceString(hint, QStringLiteral("^M"), QStringLiteral("\n\r"))
        .remove(QLatin1Char('\r'));
}

TRect QXHMeasure(const QString& text) {
    moduleObjectsNeeded();
    TCanvas* c = QXH_BakBitmap->Canvas();
    c->Font.Assign(*QXH_Font);
    TRect r{0, 0, QXH_DefaultWidth, 0};
    c->DrawText(text, r, DT_CALCRECT | DT_WORDBREAK);
    return r;
}

TQXHintLayout QXHLayoutHint(TPoint cursor, int textWidth, int textHeight, const TRect& screen) {
    const int depth = std::max(0, QXH_ShadowDepth);
    const int w = textWidth + balloonMargin, h = textHeight + balloonMargin;
    // The tail's tip sits just beside the pointer, clear of the arrow that hangs below and
    // right of the hot spot; above and left, the shadow must not reach under the pointer.
    const auto place = [&](bool left, bool below) {
        const int tipX = cursor.X + (left ? (below ? -2 : -2 - depth) : below ? 12 : 2);
        const int tipY = cursor.Y + (below ? (left ? 2 : 12) : -2);
        return Bounds(tipX - (left ? w : 0), tipY - (below ? 0 : h), w + depth, h + depth);
    };
    bool left = isLeft(QXH_HintPosition);
    bool below = isBelow(QXH_HintPosition);
    TRect r = place(left, below);
    // Turn to the other side where this one runs off the screen and that one has more room.
    const int roomRight = screen.Right - cursor.X, roomLeft = cursor.X - screen.Left;
    const int roomBelow = screen.Bottom - cursor.Y, roomAbove = cursor.Y - screen.Top;
    if (!left && r.Right > screen.Right && roomLeft > roomRight)
        left = true;
    else if (left && r.Left < screen.Left && roomRight > roomLeft)
        left = false;
    if (!below && r.Top < screen.Top && roomBelow > roomAbove)
        below = true;
    else if (below && r.Bottom > screen.Bottom && roomAbove > roomBelow)
        below = false;
    r = place(left, below);
    // A bubble larger than the room on either side is pushed back onto the screen.
    OffsetRect(r, std::min(0, screen.Right - r.Right), std::min(0, screen.Bottom - r.Bottom));
    OffsetRect(r, std::max(0, screen.Left - r.Left), std::max(0, screen.Top - r.Top));

    TQXHintLayout layout;
    layout.Window = r;
    layout.Position = positionOf(left, below);
    const int top = (below ? tailHeight : 0) + (balloonMargin - tailHeight) / 2;
    layout.Text = Bounds(balloonMargin / 2, top, textWidth, textHeight);
    return layout;
}

void QXHCompose(TBitmap* bak, const TQXHintLayout& layout, const QString& text, bool alphaShadow) {
    moduleObjectsNeeded();
    const int depth = std::max(0, QXH_ShadowDepth);
    const int w = layout.Window.Width() - depth, h = layout.Window.Height() - depth;
    if (w <= 0 || h <= 0)
        return;
    TCanvas* canvas = bak->Canvas();
    // The shadow: the background darkened through the grey shape, unchanged through white.
    const std::unique_ptr<TBitmap> shadow = shapePicture(w, h, clGray, clGray, layout.Position);
    if (alphaShadow) {
        QImage picture = bak->Image();
        softShadow(picture, shadow->Image(), depth);
        bak->SetImage(picture);
        canvas = bak->Canvas();
    } else {
        BitBlt(canvas, depth, depth, w, h, shadow->Canvas(), 0, 0, SRCAND);
    }
    // The balloon: black outline, hint colour inside; white stays transparent.
    const std::unique_ptr<TBitmap> balloon =
        shapePicture(w, h, clBlack, QXH_Color, layout.Position);
    CopyTransparent(canvas, balloon->Canvas(), w, h);

    canvas->Brush.Color = QXH_Color;
    canvas->Brush.Style = bsSolid;
    canvas->Font.Assign(*QXH_Font);
    TRect r = layout.Text;
    canvas->DrawText(text, r, DT_CENTER | DT_WORDBREAK);
}

// ---------------------------------------------------------------------------------------------

TQXHint::TQXHint(QObject* owner) : TComponent(owner), TQXAboutCarrier(QXHintVersion) {
    moduleObjectsNeeded();
    m_font.OnChange = [this]() { QXH_Font->Assign(m_font); };
    QXH_Font->Assign(m_font);
    SetColor(clYellow);
    SetDefaultWidth(150);
    SetHintPause(800);
    SetHintHidePause(2500);
    SetHintPosition(hpAboveRight);
    SetShadowDepth(10);
    SetActive(true);
}

TQXHint::~TQXHint() = default;

void TQXHint::SetActive(bool Value) {
    m_active = Value;
    if (!ComponentState().Contains(csLoading))
        applyActive();
}

void TQXHint::Loaded() {
    applyActive();
}

void TQXHint::applyActive() {
    if (ComponentState().Contains(csDesigning))
        return;
    // Switching hints off and on makes the application build its hint window anew, now of
    // our class.
    Application()->SetShowHint(false);
    if (m_active) {
        Application()->SetHintWindowClass(HintWindowClassOf<TQXHintWindow>());
        Application()->SetShowHint(true);
    }
}

void TQXHint::SetColor(TColor Value) {
    m_color = Value;
    QXH_Color = Value;
}

void TQXHint::SetDefaultWidth(int Value) {
    m_defaultWidth = Value;
    QXH_DefaultWidth = Value;
}

void TQXHint::SetHintPause(int Value) {
    m_hintPause = Value;
    Application()->SetHintPause(Value);
}

void TQXHint::SetHintHidePause(int Value) {
    m_hintHidePause = Value;
    Application()->SetHintHidePause(Value);
}

void TQXHint::SetHintPosition(THintPosition Value) {
    m_hintPosition = Value;
    QXH_HintPosition = Value;
}

void TQXHint::SetShadowDepth(int Value) {
    m_shadowDepth = Value;
    QXH_ShadowDepth = Value;
}

// ---------------------------------------------------------------------------------------------

TQXHintWindow::TQXHintWindow() {
    moduleObjectsNeeded();
    setAccessibleName(QStringLiteral("Sprechblasen-Hinweis"));
}

TQXHintWindow::~TQXHintWindow() = default;

void TQXHintWindow::CreateParams(TCreateParams& params) {
    THintWindow::CreateParams(params);
    params.Border = false;
    params.Translucent = !screenReadable();
}

QImage TQXHintWindow::background(const QRect& area) {
    QImage picture;
    if (QScreen* screen = QGuiApplication::screenAt(area.center()))
        picture = screen->grabWindow(0, area.x(), area.y(), area.width(), area.height())
                      .toImage()
                      .convertToFormat(QImage::Format_RGB32);
    if (picture.size() != area.size()) {
        picture = QImage(area.size(), QImage::Format_RGB32);
        picture.fill(TColorToQColor(clBtnFace));
    }
    // The hint that is up is on the screen now; what lies behind it was kept.
    if (isVisible() && !m_behind.isNull()) {
        const QRect overlap = area & m_behindArea;
        if (!overlap.isEmpty()) {
            QPainter p(&picture);
            p.drawImage(overlap.topLeft() - area.topLeft(), m_behind,
                        overlap.translated(-m_behindArea.topLeft()));
        }
    }
    m_behind = picture;
    m_behindArea = area;
    return picture;
}

void TQXHintWindow::ActivateHint(const TRect& rect, const QString& hint) {
    Q_UNUSED(rect);
    HandleNeeded();
    const QPoint pointer = QCursor::pos();
    QXH_Crs = {pointer.x(), pointer.y()};
    const QString text = QXHHintText(hint);
    const TRect size = QXHMeasure(text);
    const QScreen* screen = QGuiApplication::screenAt(pointer);
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    const TRect area = screen ? TRect::FromQRect(screen->geometry()) : Rect(0, 0, 640, 480);
    const TQXHintLayout layout = QXHLayoutHint(QXH_Crs, size.Width(), size.Height(), area);
    m_position = layout.Position;
    if (Params().Translucent) {
        QImage clear(layout.Window.Width(), layout.Window.Height(),
                     QImage::Format_ARGB32_Premultiplied);
        clear.fill(Qt::transparent);
        QXH_BakBitmap->SetImage(clear);
    } else {
        QXH_BakBitmap->SetImage(background(layout.Window.ToQRect()));
    }
    SetColor(clBtnFace);
    QXHCompose(QXH_BakBitmap, layout, text, Params().Translucent);
    THintWindow::ActivateHint(layout.Window, hint);
}

bool TQXHintWindow::IsHintMsg(QObject* watched, QEvent* e) {
    if (THintWindow::IsHintMsg(watched, e))
        return true;
    if (e->type() != QEvent::Move && e->type() != QEvent::Resize)
        return false;
    auto* w = qobject_cast<QWidget*>(watched);
    return w && w != this && w->isWindow() && w->isVisible();
}

void TQXHintWindow::Paint() {
    Canvas()->Draw(0, 0, QXH_BakBitmap);
}

void Qxhint::Register() {
    Q_UNUSED(classKnown);
    QXRegisterOne(QLatin1String(QXPalettePage), "TQXHint");
}
