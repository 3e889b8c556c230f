#pragma once

#include "QXAboutString.h"
#include "QXExport.h"
#include "TBevelCut.h"
#include "TColor.h"
#include "TComponent.h"
#include "TTimer.h"

#include <QColor>
#include <QObject>

// Known to Qt's meta-object system so Designer offers the values.
namespace QXGaugeEnums {
Q_NAMESPACE_EXPORT(QXT_EXPORT)

// Which way the boxes of a gauge are stacked.
enum TQXGaugeKind { qxgHorizontal, qxgVertical };
Q_ENUM_NS(TQXGaugeKind)

} // namespace QXGaugeEnums

using TQXGaugeKind = QXGaugeEnums::TQXGaugeKind;
using enum QXGaugeEnums::TQXGaugeKind;

// A segmented level meter: a bevelled frame holding Boxes equal boxes that light up from the
// left (horizontal kind) or the bottom (vertical kind) in proportion to Progress between
// MinValue and MaxValue.
//
// - Unlit boxes show a dimmed version of their lit colour while BoxPreview is on.
// - With ShowPeak a 50 ms timer holds the highest Progress for about a second and marks its box.
// - A gauge whose BoxColor is exactly clGreen (0x008000) is an audio level meter: its upper
//   boxes turn bright green, yellow and red, and every timer tick lowers Progress by 5.
// - A Progress change that leaves the number of lit boxes as it is paints nothing.
// - When the boxes do not fit (pitch below 3 pixels), every paint drops one box.
// - The horizontal kind mirrors the vertical one: box 1 is at the left, the margin split as
//   the vertical kind splits it from the bottom.
//
// Example, a level meter fed by the program:
//
//     auto* meter = new TQXGauge(window);
//     meter->SetKind(qxgVertical);
//     meter->SetBoxColor(clGreen);
//     meter->SetProgress(level);
class QXT_EXPORT TQXGauge : public TCustomControl, public TQXAboutCarrier {
    Q_OBJECT
    Q_PROPERTY(QString About_QXTools READ About_QXTools WRITE SetAbout_QXTools DESIGNABLE false)
    Q_PROPERTY(TBevelEnums::TBevelCut BorderStyle READ BorderStyle WRITE SetBorderStyle)
    Q_PROPERTY(int BorderWidth READ BorderWidth WRITE SetBorderWidth)
    Q_PROPERTY(int Boxes READ Boxes WRITE SetBoxes)
    Q_PROPERTY(QColor BoxColor READ boxColorProperty WRITE setBoxColorProperty)
    Q_PROPERTY(QColor Color READ colorProperty WRITE setColorProperty)
    Q_PROPERTY(QXGaugeEnums::TQXGaugeKind Kind READ Kind WRITE SetKind)
    Q_PROPERTY(int MaxValue READ MaxValue WRITE SetMaxValue)
    Q_PROPERTY(int MinValue READ MinValue WRITE SetMinValue)
    Q_PROPERTY(int Progress READ Progress WRITE SetProgress)
    Q_PROPERTY(bool BoxPreview READ BoxPreview WRITE SetBoxPreview)
    Q_PROPERTY(bool ShowPeak READ ShowPeak WRITE SetShowPeak)
    Q_PROPERTY(int Tag READ Tag WRITE SetTag)

public:
    // A horizontal gauge of 10 navy boxes from 0 to 100 at 0, 150 x 20 pixels.
    explicit TQXGauge(QWidget* parent = nullptr);
    ~TQXGauge() override;

    // bvRaised or bvLowered draw a one-pixel 3D frame; any other cut leaves a plain pixel.
    TBevelCut BorderStyle() const { return m_borderStyle; }
    void SetBorderStyle(TBevelCut Value);
    // Pixels between the frame and the boxes.
    int BorderWidth() const { return m_borderWidth; }
    void SetBorderWidth(int Value);
    // Number of boxes; a green gauge keeps at least 5.
    std::uint8_t Boxes() const { return m_boxes; }
    void SetBoxes(std::uint8_t Value);
    // Colour of the lit boxes; exactly clGreen makes a level meter.
    TColor BoxColor() const { return m_boxColor; }
    void SetBoxColor(TColor Value);
    // Takes effect at the next paint (setting it does not repaint).
    TQXGaugeKind Kind() const { return m_kind; }
    void SetKind(TQXGaugeKind Value) { m_kind = Value; }
    // Accepted only when >= 0, above MinValue and different.
    int MaxValue() const { return m_maxValue; }
    void SetMaxValue(int Value);
    // Accepted only when >= 0, below MaxValue and different.
    int MinValue() const { return m_minValue; }
    void SetMinValue(int Value);
    // Clamped to MinValue..MaxValue; repaints at once only when the lit box count changes.
    int Progress() const { return m_progress; }
    void SetProgress(int Value);
    // Shows unlit boxes in a dimmed version of their lit colour.
    bool BoxPreview() const { return m_boxPreview; }
    void SetBoxPreview(bool Value);
    // Holds and marks the peak of Progress (runs the 50 ms peak timer).
    bool ShowPeak() const { return m_showPeak; }
    void SetShowPeak(bool Value);

    // Progress := Progress + Delta through SetProgress.
    void AddProgress(int Delta);
    // Progress as a percentage of MinValue..MaxValue.
    int GetPercentDone() const;
    // The boxes lit at Percent of Boxes: Boxes * Percent div 100.
    static int SolveForX(int Percent, int Boxes);
    // Value as a percentage of Range (0 for an empty range); large ranges divide first.
    static int SolveForY(int Value, int Range);

    // The value the peak box shows.
    int Peak() const { return m_peak; }
    // The peak-hold timer; its Tag counts the ticks of the hold (-1 while ShowPeak is off).
    TTimer* PeakTimer() const { return m_timer; }
    // The highest Progress any gauge's timer has seen in this process.
    static int ProcessMaxProgress();

public slots:
    // One peak-hold tick: hold or drop the peak, and let a green gauge fall back by 5.
    void QXOnTime(QObject* Sender = nullptr);

protected:
    // Draws the frame and the boxes.
    void Paint() override;
    // Disabling greys the lit boxes; enabling repaints them in colour.
    void changeEvent(QEvent* e) override;

private:
    TColor zoneColor(int box, TColor base) const;
    QColor boxColorProperty() const { return TColorToQColor(m_boxColor); }
    void setBoxColorProperty(const QColor& c) { SetBoxColor(QColorToTColor(c)); }
    QColor colorProperty() const { return TColorToQColor(Color()); }
    void setColorProperty(const QColor& c) { SetColor(QColorToTColor(c)); }

    TBevelCut m_borderStyle = bvLowered;
    int m_borderWidth = 2;
    std::uint8_t m_boxes = 10;
    TColor m_boxColor = clNavy;
    TQXGaugeKind m_kind = qxgHorizontal;
    int m_maxValue = 100;
    int m_minValue = 0;
    int m_progress = 0;
    bool m_boxPreview = true;
    bool m_showPeak = true;
    int m_litDrawn = -1;
    int m_peak = 0;
    TTimer* m_timer = nullptr;
};

namespace QXGauge {
// Puts TQXGauge on the "QX Tools" palette page.
QXT_EXPORT void Register();
} // namespace QXGauge
