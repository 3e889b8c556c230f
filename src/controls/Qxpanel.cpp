#include "Qxpanel.h"

#include "QXDesign.h"
#include "QXTools.h"
#include "QxutilText.h"
#include "SysUtils.h"

#include <cmath>

namespace {

const bool classKnown = RegisterClass(ComponentClassOf<TQXPanel>());

constexpr int panelPoints = 80;
constexpr int tickInterval = 1000;

// Indexed by the framework's day of the week, 1 = Sunday.
const char* const weekdays[] = {"Sonntag",    "Montag",  "Dienstag", "Mittwoch",
                                "Donnerstag", "Freitag", "Samstag"};

QString weekday(const QDate& date) {
    // Qt counts from Monday = 1 to Sunday = 7.
    return QString::fromLatin1(weekdays[date.dayOfWeek() % 7]);
}

// Bytes as whole kilobytes with "." between thousands and " KB" after them; nothing stands
// before the unit for 0, as a format of optional digits gives.
QString kilobytes(quint64 bytes) {
    const QString digits = QString::number(std::llround(double(bytes) / 1024.0));
    QString grouped;
    for (qsizetype i = 0; i < digits.size(); ++i) {
        if (i > 0 && (digits.size() - i) % 3 == 0)
            grouped += u'.';
        grouped += digits[i];
    }
    if (grouped == QStringLiteral("0"))
        grouped.clear();
    return grouped + QStringLiteral(" KB");
}

} // namespace

// ---------------------------------------------------------------------------------------------

TQXPipe::TQXPipe() {
    SetPointAnz(10);
}

void TQXPipe::GraphAddRight(int Value) {
    if (m_values.isEmpty())
        return;
    m_values.removeFirst();
    m_values.append(Value);
}

void TQXPipe::GraphSetMax(int Max) {
    m_max = Max;
}

void TQXPipe::SetPointAnz(int Count) {
    Count = std::max(0, Count);
    m_values = QVector<int>(Count, 0);
    m_points = QVector<TPoint>(Count + 2);
}

QString TQXPipe::Label(TStyle Style, int Value) {
    switch (Style) {
    case sgCPU:
        return QStringLiteral("cpu %1%").arg(Value);
    case sgSYS:
        return QStringLiteral("sys %1%").arg(Value);
    case sgGDI:
        return QStringLiteral("gdi %1%").arg(Value);
    case sgUSR:
        return QStringLiteral("usr %1%").arg(Value);
    case sgMEM:
        // The memory load is a percentage; the unit is the one this chart has always shown.
        return QStringLiteral("mem %1 KB").arg(Value);
    case sString:
        break;
    }
    return {};
}

void TQXPipe::Draw(TStyle Style, TCanvas* Canvas, const TRect& Rect, TColor Color) {
    const int count = PointAnz();
    if (count == 0)
        return;
    const int labelHeight = Canvas->TextHeight(QStringLiteral("X"));
    const int step = Rect.Width() / count;
    const qint64 chartHeight = Rect.Bottom - Rect.Top - labelHeight;
    for (int i = 0; i < count; ++i) {
        const qint64 rise = m_max != 0 ? chartHeight * m_values[i] / m_max : 0;
        m_points[i] = {Rect.Left + i * step, Rect.Bottom - int(rise)};
    }
    m_points[count] = Rect.BottomRight();
    m_points[count + 1] = {Rect.Left, Rect.Bottom};
    Canvas->Brush.Color = Color;
    Canvas->Brush.Style = bsSolid;
    Canvas->Pen.Color = clBlack;
    Canvas->Pen.Style = psSolid;
    Canvas->Pen.Width = 1;
    MyPolygon(Canvas, m_points);
    Canvas->SetBkMode(TRANSPARENT);
    Canvas->Brush.Style = bsClear;
    Canvas->TextOut(Rect.Left, Rect.Top, Label(Style, m_values.last()));
}

void TQXPipe::MyPolygon(TCanvas* Canvas, const QVector<TPoint>& Points) {
    Canvas->Polygon(Points);
}

// ---------------------------------------------------------------------------------------------

TQXPanel::TQXPanel(QWidget* parent)
    : TCustomPanel(parent), TQXAboutCarrier(QXPanelVersion), m_reader(qxtSystemReader()),
      m_cpu(std::make_unique<TCPUUsage>(m_reader)) {
    SetDefaultSize(137, 25);
    setAccessibleName(QStringLiteral("Systemanzeige"));
    setAccessibleDescription(
        QStringLiteral("Zeigt jede Sekunde Prozessorlast, Speicher, Datum und Uhrzeit"));
    // Every paint covers the whole panel, so nothing is erased before it.
    setAutoFillBackground(false);
    setAttribute(Qt::WA_OpaquePaintEvent);
    m_timer = new TTimer(this);
    m_timer->SetInterval(tickInterval);
    m_timer->OnTimer = [this](QObject* sender) { QXOnTime(sender); };
    m_pipe.SetPointAnz(panelPoints);
}

TQXPanel::~TQXPanel() = default;

void TQXPanel::SetGraphColor(TColor Value) {
    m_graphColor = Value;
    Invalidate();
}

void TQXPanel::SetStyle(TStyle Value) {
    m_style = Value;
    Invalidate();
}

void TQXPanel::SetSystemReader(std::shared_ptr<TSystemReader> Reader) {
    m_reader = Reader ? std::move(Reader) : qxtSystemReader();
    m_cpu = std::make_unique<TCPUUsage>(m_reader);
}

QString TQXPanel::FormatCaption(const QString& Format, qint32 CPUUsage, const TMemoryStatus& Memory,
                                const QDateTime& Now) {
    const QString cpuText = QString::number(CPUUsage) + u'%';
    const QString memText = QStringLiteral("%1%").arg(Memory.MemoryLoad);
    const QString day = weekday(Now.date());
    QString s = Format;
    // "%DayLong" goes before "%Day", which begins it.
    qxtReplaceString(s, QStringLiteral("^M"), QStringLiteral("\n\r"));
    qxtReplaceString(s, QStringLiteral("%CPU"), cpuText);
    qxtReplaceString(s, QStringLiteral("%MemoryLoad"), memText);
    qxtReplaceString(s, QStringLiteral("%TotalPhys"), kilobytes(Memory.TotalPhys));
    qxtReplaceString(s, QStringLiteral("%AvailPhys"), kilobytes(Memory.AvailPhys));
    qxtReplaceString(s, QStringLiteral("%Time"), TimeToStr(Now.time()));
    qxtReplaceString(s, QStringLiteral("%Date"), DateToStr(Now.date()));
    qxtReplaceString(s, QStringLiteral("%DayLong"), day);
    qxtReplaceString(s, QStringLiteral("%Day"), day.left(3));
    return s;
}

void TQXPanel::QXOnTime(QObject*) {
    qint32 cpu = 0;
    TMemoryStatus memory;
    switch (m_style) {
    case sString:
        m_cpu->Read(cpu);
        m_reader->ReadMemoryStatus(memory);
        SetCaption(FormatCaption(m_captionFormat, cpu, memory, m_reader->Now()));
        break;
    case sgCPU:
        m_cpu->Read(cpu);
        m_pipe.GraphSetMax(100);
        m_pipe.GraphAddRight(cpu);
        break;
    case sgMEM:
        m_reader->ReadMemoryStatus(memory);
        m_pipe.GraphSetMax(100);
        m_pipe.GraphAddRight(int(memory.MemoryLoad));
        break;
    case sgSYS:
    case sgGDI:
    case sgUSR:
        break;
    }
    Invalidate();
}

void TQXPanel::Paint() {
    TCanvas* canvas = Canvas();
    TRect r = ClientRect();
    PaintFrame(canvas, r);
    canvas->Brush.Color = Color();
    canvas->Brush.Style = bsSolid;
    canvas->FillRect(r);
    canvas->Font.Assign(*Font());
    if (m_style != sString) {
        SetCaption(QString());
        m_pipe.Draw(m_style, canvas, r, m_graphColor);
        return;
    }
    canvas->SetBkMode(TRANSPARENT);
    canvas->Brush.Style = bsClear;
    const unsigned flags = DT_EXPANDTABS | AlignmentFlag(Alignment());
    // The lines as one block in the middle of the panel, as a one-line caption stands.
    TRect measured = r;
    canvas->DrawText(Caption(), measured, flags | DT_CALCRECT);
    TRect text = r;
    text.Top = std::max(r.Top, (r.Top + r.Bottom - measured.Height()) / 2);
    text.Bottom = std::min(r.Bottom, text.Top + measured.Height());
    canvas->DrawText(Caption(), text, flags);
}

void Qxpanel::Register() {
    Q_UNUSED(classKnown);
    QXRegisterOne(QLatin1String(QXPalettePage), "TQXPanel");
}
