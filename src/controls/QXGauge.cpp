#include "QXGauge.h"

#include "QXDesign.h"
#include "QXTools.h"
#include "TGraphic.h"

#include <QEvent>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace {

const bool classKnown = RegisterClass(ComponentClassOf<TQXGauge>());

// Shared by every gauge; the gauges only ever raise it.
int processMaxProgress = 0;

constexpr int peakInterval = 50;
constexpr int peakHoldTicks = 21;
constexpr int levelMeterDecay = 5;

// The dark version of a lit colour for unlit boxes, channel by channel.
TColor dimmed(TColor rgb) {
    auto channel = [](int c) { return (c - 0x20) / 5 + 0x20 + 2; };
    return RGB(channel(GetRValue(rgb)), channel(GetGValue(rgb)), channel(GetBValue(rgb)));
}

} // namespace

TQXGauge::TQXGauge(QWidget* parent) : TCustomControl(parent), TQXAboutCarrier(QXGaugeVersion) {
    SetColor(clSilver);
    SetDefaultSize(100, 20);
    setAccessibleName(QStringLiteral("Pegelanzeige"));
    setAccessibleDescription(
        QStringLiteral("Segmentierte Anzeige eines Fortschritts oder Pegels mit Spitzenwert"));
    m_timer = new TTimer(this);
    m_timer->SetInterval(0);
    m_timer->OnTimer = [this](QObject* sender) { QXOnTime(sender); };
    SetShowPeak(true);
}

TQXGauge::~TQXGauge() = default;

void TQXGauge::SetBorderStyle(TBevelCut Value) {
    m_borderStyle = Value;
    Invalidate();
}

void TQXGauge::SetBorderWidth(int Value) {
    m_borderWidth = Value;
    Invalidate();
}

void TQXGauge::SetBoxes(std::uint8_t Value) {
    if (Value == m_boxes)
        return;
    if (m_boxColor == clGreen && Value < 5)
        Value = 5;
    m_boxes = Value;
    Invalidate();
}

void TQXGauge::SetBoxColor(TColor Value) {
    m_boxColor = Value;
    Invalidate();
}

void TQXGauge::SetMaxValue(int Value) {
    if (Value < 0 || Value <= m_minValue || Value == m_maxValue)
        return;
    m_maxValue = Value;
    Invalidate();
}

void TQXGauge::SetMinValue(int Value) {
    if (Value < 0 || Value >= m_maxValue || Value == m_minValue)
        return;
    m_minValue = Value;
    Invalidate();
}

void TQXGauge::SetProgress(int Value) {
    if (Value == m_progress)
        return;
    m_progress = std::clamp(Value, m_minValue, m_maxValue);
    if (SolveForX(GetPercentDone(), m_boxes) != m_litDrawn)
        Refresh();
}

void TQXGauge::SetBoxPreview(bool Value) {
    m_boxPreview = Value;
    Invalidate();
}

void TQXGauge::SetShowPeak(bool Value) {
    m_showPeak = Value;
    m_timer->SetTag(Value ? 0 : -1);
    m_timer->SetInterval(Value ? peakInterval : 0);
    m_peak = 0;
    Invalidate();
}

void TQXGauge::AddProgress(int Delta) {
    SetProgress(m_progress + Delta);
}

int TQXGauge::GetPercentDone() const {
    return SolveForY(m_progress - m_minValue, m_maxValue - m_minValue);
}

int TQXGauge::SolveForX(int Percent, int Boxes) {
    return Boxes * Percent / 100;
}

int TQXGauge::SolveForY(int Value, int Range) {
    if (Range == 0)
        return 0;
    // Small ranges multiply first for the exact percentage; large ones divide first so the
    // product cannot overflow.
    if (double(Range) <= double(std::numeric_limits<int>::max()) / 100)
        return int(std::trunc(double(std::int64_t(Value) * 100) / Range));
    return int(std::trunc(double(Value) / Range * 100));
}

int TQXGauge::ProcessMaxProgress() {
    return processMaxProgress;
}

void TQXGauge::QXOnTime(QObject*) {
    if (m_timer->Tag() != -1) {
        m_timer->SetTag(m_timer->Tag() + 1);
        if (m_timer->Tag() < peakHoldTicks) {
            m_peak = std::max(m_peak, m_progress);
        } else {
            m_timer->SetTag(0);
            m_peak = 0;
            if (m_progress == 0)
                Refresh();
        }
        processMaxProgress = std::max(processMaxProgress, m_progress);
    }
    // A level meter falls back by itself.
    if (m_boxColor == clGreen)
        SetProgress(m_progress - levelMeterDecay);
}

TColor TQXGauge::zoneColor(int box, TColor base) const {
    if (m_boxColor != clGreen)
        return base;
    const int fifth = m_boxes / 5;
    const int red = m_boxes - fifth;
    const int yellow = m_boxes - fifth * 2;
    const int lime = m_boxPreview ? 0 : m_boxes - fifth * 3;
    if (box > red)
        return clRed;
    if (box > yellow)
        return clYellow;
    if (box > lime)
        return clLime;
    return base;
}

void TQXGauge::Paint() {
    const bool vertical = m_kind != qxgHorizontal;
    const int length = vertical ? Height() : Width();
    const int pitch = m_boxes > 0 ? (length - 2 - m_borderWidth) / m_boxes : 0;
    // Boxes below 3 pixels are unreadable: give one up and try again at the next paint.
    if (pitch < 3 && m_boxes >= 2)
        --m_boxes;

    TCanvas* canvas = Canvas();
    TRect r = ClientRect();
    if (m_borderStyle == bvRaised)
        Frame3D(canvas, r, clWhite, clGray, 1);
    else if (m_borderStyle == bvLowered)
        Frame3D(canvas, r, clGray, clWhite, 1);
    else
        InflateRect(r, -1, -1);
    const int border = std::abs(m_borderWidth);
    InflateRect(r, -border, -border);
    if (r.Width() < 1) {
        SetWidth(Width() + 1);
        return;
    }
    if (r.Height() < 1)
        return;

    TBitmap bitmap(r.Width(), r.Height());
    TCanvas* target = bitmap.Canvas();
    target->SetPalette(palette());
    target->Brush.Style = bsSolid;
    target->Brush.Color = Color();
    target->FillRect(Rect(0, 0, r.Width(), r.Height()));

    const int inner = vertical ? r.Height() : r.Width();
    const int margin = (inner - m_boxes * pitch) / 2;
    auto box = [&](int k) {
        if (vertical)
            return Bounds(0, inner - k * pitch - margin, r.Width(), pitch - 1);
        return Bounds((k - 1) * pitch + margin + 1, 0, pitch - 1, r.Height());
    };
    auto fill = [&](int k, TColor c) {
        target->Brush.Color = c;
        target->FillRect(box(k));
    };

    const TColor lit = ColorToRGB(isEnabled() ? m_boxColor : clGray, &palette());
    const int litBoxes = std::min(SolveForX(GetPercentDone(), m_boxes), int(m_boxes));
    m_litDrawn = litBoxes;
    for (int k = 1; k <= litBoxes; ++k)
        fill(k, zoneColor(k, lit));
    if (m_boxPreview)
        for (int k = litBoxes + 1; k <= m_boxes; ++k)
            fill(k, dimmed(zoneColor(k, lit)));
    if (m_showPeak) {
        const int peakBox =
            SolveForX(SolveForY(m_peak - m_minValue, m_maxValue - m_minValue), m_boxes);
        if (peakBox > 0)
            fill(peakBox, zoneColor(peakBox, m_boxColor));
    }
    canvas->Draw(r.Left, r.Top, &bitmap);
}

void TQXGauge::changeEvent(QEvent* e) {
    // The lit colour depends on the enabled state.
    if (e->type() == QEvent::EnabledChange)
        Invalidate();
    TCustomControl::changeEvent(e);
}

void QXGauge::Register() {
    Q_UNUSED(classKnown);
    QXRegisterOne(QLatin1String(QXPalettePage), "TQXGauge");
}
