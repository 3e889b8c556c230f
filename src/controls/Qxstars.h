#pragma once

#include "QXAboutString.h"
#include "QXExport.h"
#include "TComponent.h"
#include "TTimer.h"

#include <QColor>
#include <QImage>
#include <QObject>
#include <QRandomGenerator>
#include <array>
#include <optional>

// One star: where it stands in a space centred on the control, and its depth Z from 1
// (nearest) to 30.
struct TQXStar {
    // Across, from the centre.
    int X = 0;
    // Down, from the centre.
    int Y = 0;
    // Depth, 1 (nearest) to 30.
    int Z = 1;
};

// A flight through a star field. Every frame each of the first MaxStars stars comes one step
// nearer; it is drawn as one pixel at Zoom * X div (Z + 1) and Zoom * Y div (Z + 1) from the
// centre, in a grey of (15 - Z div 2) * 17, black at depth 30 and white at depth 1. A star
// that arrives is born again at depth 30 at a random place. Every resize seeds the whole
// table anew; that first seeding spreads Y over the height but shifts it by the width, so on
// a wide control the stars start mostly above the centre, and only stars born later are
// spread evenly.
//
// Example:
//
//     auto* stars = new TQXStars(window);
//     stars->SetMaxStars(300);
//     stars->SetInterval(40);
class QXT_EXPORT TQXStars : public TCustomControl, public TQXAboutCarrier {
    Q_OBJECT
    Q_PROPERTY(QString About_QXTools READ About_QXTools WRITE SetAbout_QXTools DESIGNABLE false)
    Q_PROPERTY(QColor Color READ colorProperty WRITE setColorProperty)
    Q_PROPERTY(int Interval READ Interval WRITE SetInterval)
    Q_PROPERTY(int MaxStars READ MaxStars WRITE SetMaxStars)
    Q_PROPERTY(int Zoom READ Zoom WRITE SetZoom)
    Q_PROPERTY(int Tag READ Tag WRITE SetTag)

public:
    // The size of the star table.
    static constexpr int StarCount = 500;

    // A black field of stars, still until the timer runs.
    explicit TQXStars(QWidget* parent = nullptr);
    ~TQXStars() override;

    // Milliseconds per frame (at least 20); 0 or less keeps the field still.
    int Interval() const { return m_interval; }
    void SetInterval(int Value);
    // How many stars fly, 1 to 500; the others keep their places meanwhile.
    int MaxStars() const { return m_maxStars; }
    void SetMaxStars(int Value);
    // The projection factor, 1 to 100.
    int Zoom() const { return m_zoom; }
    void SetZoom(int Value);
    // The field's background; the stars keep their greys.
    void SetColor(TColor Value) override;

    // Star Index, 1 to 500.
    TQXStar& Star(int Index) { return m_stars[std::size_t(Index - 1)]; }
    // Seeds the generator with Seed from now on instead of the clock, and the stars anew.
    void SetRandomSeed(quint32 Seed);
    // Seeds the generator and every star of the table.
    void INITStars();
    // The animation's timer.
    TTimer* Timer() const { return m_timer; }

public slots:
    // One frame, with the timer resting while it is drawn.
    void QXOnTime(QObject* Sender = nullptr);

protected:
    // Draws the stars at their current depth.
    void Paint() override;
    // A new size scatters the stars again over the new field.
    void resizeEvent(QResizeEvent* e) override;
    // Moves every flying star one step and draws the frame into the backing image.
    void PaintBMP();
    // Projects one star and sets its pixel in Bitmap.
    void DPunkt(QImage& Bitmap, int X, int Brightness, int Z, int Y) const;

private:
    int random(int n);
    void repaintFrame();
    QColor colorProperty() const { return TColorToQColor(Color()); }
    void setColorProperty(const QColor& c) { SetColor(QColorToTColor(c)); }

    std::array<TQXStar, StarCount> m_stars{};
    int m_interval = 0;
    int m_maxStars = StarCount;
    TTimer* m_timer = nullptr;
    int m_zoom = 2;
    int m_fieldWidth = 0;
    int m_fieldHeight = 0;
    int m_centreX = 0;
    int m_centreY = 0;
    QRandomGenerator m_random;
    std::optional<quint32> m_seed;
    QImage m_frame;
    bool m_frameStale = true;
};

namespace Qxstars {
// Puts TQXStars on the "QX Tools" palette page.
QXT_EXPORT void Register();
} // namespace Qxstars
