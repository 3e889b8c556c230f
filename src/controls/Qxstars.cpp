#include "Qxstars.h"

#include "QXDesign.h"
#include "QXTools.h"
#include "QxutilText.h"

#include <chrono>

namespace {

const bool classKnown = RegisterClass(ComponentClassOf<TQXStars>());

constexpr int shortestTick = 20;
constexpr int farthest = 30;

} // namespace

TQXStars::TQXStars(QWidget* parent) : TCustomControl(parent), TQXAboutCarrier(QXStarsVersion) {
    setFocusPolicy(Qt::NoFocus);
    // The frame covers every pixel.
    setAutoFillBackground(false);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName(QStringLiteral("Sternenfeld"));
    setAccessibleDescription(QStringLiteral("Flug durch ein Sternenfeld"));
    SetDefaultSize(75, 50);
    SetColor(clBlack);
    INITStars();
    m_timer = new TTimer(this);
    m_timer->OnTimer = [this](QObject* sender) { QXOnTime(sender); };
    SetInterval(0);
    m_maxStars = StarCount;
    SetZoom(2);
}

TQXStars::~TQXStars() = default;

void TQXStars::SetInterval(int Value) {
    if (Value > 0 && Value < shortestTick)
        Value = shortestTick;
    m_interval = Value;
    m_timer->SetInterval(Value);
    m_timer->SetEnabled(Value >= 1);
    repaintFrame();
}

void TQXStars::SetMaxStars(int Value) {
    qxtMinMaxInteger(Value, 1, StarCount);
    m_maxStars = Value;
}

void TQXStars::SetZoom(int Value) {
    qxtMinMaxInteger(Value, 1, 100);
    m_zoom = Value;
}

void TQXStars::SetColor(TColor Value) {
    TCustomControl::SetColor(Value);
    repaintFrame();
}

void TQXStars::SetRandomSeed(quint32 Seed) {
    m_seed = Seed;
    INITStars();
}

int TQXStars::random(int n) {
    return n > 0 ? int(m_random.bounded(quint32(n))) : 0;
}

void TQXStars::INITStars() {
    m_random.seed(m_seed ? *m_seed
                         : quint32(std::chrono::steady_clock::now().time_since_epoch().count()));
    m_fieldWidth = Width();
    m_fieldHeight = Height();
    for (TQXStar& s : m_stars) {
        s.X = random(2 * m_fieldWidth) - m_fieldWidth;
        // The first seeding shifts by the width, not the height (see the class comment).
        s.Y = random(2 * m_fieldHeight) - m_fieldWidth;
        s.Z = random(farthest) + 1;
    }
}

void TQXStars::resizeEvent(QResizeEvent* e) {
    TCustomControl::resizeEvent(e);
    INITStars();
    repaintFrame();
}

void TQXStars::repaintFrame() {
    m_frameStale = true;
    update();
}

void TQXStars::DPunkt(QImage& Bitmap, int X, int Brightness, int Z, int Y) const {
    const int grey = Brightness * 17;
    const int d = Z + 1;
    const int x = m_zoom * X / d + m_centreX;
    const int y = m_zoom * Y / d + m_centreY;
    if (Bitmap.valid(x, y))
        reinterpret_cast<QRgb*>(Bitmap.scanLine(y))[x] = qRgb(grey, grey, grey);
}

void TQXStars::PaintBMP() {
    if (!Visible() && !ComponentState().Contains(csDesigning))
        return;
    if (m_frame.size() != size())
        m_frame = QImage(size(), QImage::Format_RGB32);
    m_frame.fill(TColorToQColor(Color(), &palette()));
    m_frameStale = false;
    m_fieldWidth = Width();
    m_centreX = Width() / 2;
    m_fieldHeight = Height();
    m_centreY = Height() / 2;
    for (int i = 0; i < m_maxStars; ++i) {
        TQXStar& s = m_stars[std::size_t(i)];
        --s.Z;
        if (s.Z == 0) {
            s.X = random(2 * m_fieldWidth) - m_fieldWidth;
            s.Y = random(2 * m_fieldHeight) - m_fieldHeight;
            s.Z = farthest;
        }
        DPunkt(m_frame, s.X, 15 - s.Z / 2, s.Z, s.Y);
    }
    // Inside a paint the frame is shown next; a tick asks for a paint.
    if (!Canvas()->IsDrawable())
        update();
}

void TQXStars::QXOnTime(QObject*) {
    // The timer rests while the frame is drawn, so a slow frame cannot pile up ticks.
    const bool running = m_timer->Enabled();
    m_timer->SetEnabled(false);
    PaintBMP();
    m_timer->SetEnabled(running);
}

void TQXStars::Paint() {
    // A frame the control asked for moves the stars; a plain repaint shows the last one.
    if (m_frameStale || m_frame.size() != size())
        PaintBMP();
    Canvas()->DrawImage(ClientRect(), m_frame);
}

void Qxstars::Register() {
    Q_UNUSED(classKnown);
    QXRegisterOne(QLatin1String(QXPalettePage), "TQXStars");
}
