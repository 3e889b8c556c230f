#pragma once

#include "QXAboutString.h"
#include "QXExport.h"
#include "QxutilSysStat.h"
#include "TCustomPanel.h"
#include "TTimer.h"

#include <QColor>
#include <QObject>
#include <QString>
#include <QVector>
#include <memory>

// Known to Qt's meta-object system so Designer offers the values.
namespace QXPanelEnums {
Q_NAMESPACE_EXPORT(QXT_EXPORT)

// What a status panel shows: its caption template filled in, or a chart of one figure.
enum TStyle { sString, sgCPU, sgSYS, sgGDI, sgUSR, sgMEM };
Q_ENUM_NS(TStyle)

} // namespace QXPanelEnums

using TStyle = QXPanelEnums::TStyle;
using enum QXPanelEnums::TStyle;

// A scrolling area chart: the newest sample at the right, each sample a point of a polygon
// closed along the bottom edge, and a label with the newest sample at the top left.
//
// Example:
//
//     TQXPipe chart;
//     chart.SetPointAnz(60);
//     chart.GraphAddRight(load);
class QXT_EXPORT TQXPipe {
public:
    TQXPipe();
    // Shifts every sample one place to the left and stores Value as the newest.
    void GraphAddRight(int Value);
    // The sample value drawn at the full height of the chart (100 at the start).
    void GraphSetMax(int Max);
    // The sample value drawn at the full height of the chart.
    int GraphMax() const { return m_max; }
    // Makes room for Count samples (10 at the start), all 0 again.
    void SetPointAnz(int Count);
    // How many samples the chart holds.
    int PointAnz() const { return int(m_values.size()); }
    // Sample Index (0 = oldest).
    int Value(int Index) const { return m_values.value(Index); }
    // Draws the chart into Rect: sample i at x = left + i * (width div count) and
    // y = bottom - (height - label height) * value div full scale, the two bottom corners
    // closing the polygon, filled with Color under a black pen.
    void Draw(TStyle Style, TCanvas* Canvas, const TRect& Rect, TColor Color);
    // The polygon of the last Draw: one point per sample, then the bottom-right and the
    // bottom-left corner.
    const QVector<TPoint>& Points() const { return m_points; }
    // The label Draw writes for a style: "cpu 50%", and "mem 50 KB" for the memory load.
    static QString Label(TStyle Style, int Value);

private:
    // Fills the polygon through the canvas.
    void MyPolygon(TCanvas* Canvas, const QVector<TPoint>& Points);

    QVector<int> m_values;
    QVector<TPoint> m_points;
    int m_max = 100;
};

// A bevelled panel that refreshes itself once a second with figures of the running system.
//
// In style sString it shows CaptionFormat with these placeholders filled in, in this order:
// "^M" (a line feed and a carriage return, which break the line), "%CPU" (the processors'
// busy share since the previous second, "12%"), "%MemoryLoad" (the share of physical memory
// in use, "40%"), "%TotalPhys" and "%AvailPhys" (physical memory in KB with thousands
// separators, "16.384.000 KB"), "%Time" ("hh:nn:ss"), "%Date" ("dd.mm.yyyy"), "%DayLong"
// (the German weekday, "Mittwoch") and "%Day" (its first three letters, "Mit"). Replacement
// rescans the text from its start, so text a figure brings in can itself match a later
// placeholder. In style sgCPU and sgMEM it charts the CPU usage or the memory load of the
// last 80 seconds; sgSYS, sgGDI and sgUSR label the chart and leave it as it stands. The
// chart's history stays when the style changes. The panel erases nothing before it paints
// (its paint covers every pixel), and the timer runs in the designer too.
//
// Example:
//
//     auto* status = new TQXPanel(window);
//     status->SetCaptionFormat(QStringLiteral("Speicher belegt %MemoryLoad"));
class QXT_EXPORT TQXPanel : public TCustomPanel, public TQXAboutCarrier {
    Q_OBJECT
    Q_PROPERTY(QString About_QXTools READ About_QXTools WRITE SetAbout_QXTools DESIGNABLE false)
    Q_PROPERTY(QString CaptionFormat READ CaptionFormat WRITE SetCaptionFormat)
    Q_PROPERTY(QColor GraphColor READ graphColorProperty WRITE setGraphColorProperty)
    Q_PROPERTY(QXPanelEnums::TStyle Style READ Style WRITE SetStyle)
    Q_PROPERTY(int Tag READ Tag WRITE SetTag)

public:
    // A status panel showing the caption template, refreshed every second.
    explicit TQXPanel(QWidget* parent = nullptr);
    ~TQXPanel() override;

    // The caption template of style sString.
    QString CaptionFormat() const { return m_captionFormat; }
    void SetCaptionFormat(const QString& Value) { m_captionFormat = Value; }
    // Fill colour of the chart (red by default).
    TColor GraphColor() const { return m_graphColor; }
    void SetGraphColor(TColor Value);
    // What the panel shows; setting it repaints.
    TStyle Style() const { return m_style; }
    void SetStyle(TStyle Value);

    // The chart with its history.
    TQXPipe* Pipe() { return &m_pipe; }
    // The once-a-second timer.
    TTimer* Timer() const { return m_timer; }
    // Takes the figures from Reader from now on (the running system when null).
    void SetSystemReader(std::shared_ptr<TSystemReader> Reader);
    // Fills the placeholders of Format with the figures given.
    static QString FormatCaption(const QString& Format, qint32 CPUUsage,
                                 const TMemoryStatus& Memory, const QDateTime& Now);

public slots:
    // The once-a-second update: a new caption or a new chart sample, then a repaint.
    void QXOnTime(QObject* Sender = nullptr);

protected:
    // Draws the panel and its caption, or the chart in a chart style.
    void Paint() override;

private:
    QColor graphColorProperty() const { return TColorToQColor(m_graphColor); }
    void setGraphColorProperty(const QColor& c) { SetGraphColor(QColorToTColor(c)); }

    QString m_captionFormat;
    TColor m_graphColor = clRed;
    TStyle m_style = sString;
    TQXPipe m_pipe;
    TTimer* m_timer = nullptr;
    std::shared_ptr<TSystemReader> m_reader;
    std::unique_ptr<TCPUUsage> m_cpu;
};

namespace Qxpanel {
// Puts TQXPanel on the "QX Tools" palette page.
QXT_EXPORT void Register();
} // namespace Qxpanel
