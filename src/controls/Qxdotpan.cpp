#include "Qxdotpan.h"

#include "QXDesign.h"
#include "QXTools.h"

#include <QFile>
#include <algorithm>

namespace {

const bool classKnown = RegisterClass(ComponentClassOf<TQXDOTPanel>());

constexpr int shortestInterval = 20;

// The built-in font as the resource holds it, read once.
const QImage& builtInFont() {
    static const QImage font = [] {
        QFile file(QStringLiteral(":/qxtools/QXDOTFNT.bmp"));
        if (!file.open(QIODevice::ReadOnly))
            return QImage();
        TBitmap bitmap;
        bitmap.LoadFromStream(file);
        return bitmap.Image().convertToFormat(QImage::Format_RGB32);
    }();
    return font;
}

// The default colours, with which the built-in font keeps its own.
constexpr TColor defaultColor = clBlack;
constexpr TColor defaultLoColor = 0x004000;
constexpr TColor defaultHiColor = clLime;

int indexOfUpper(const QString& set, QChar ch) {
    const QChar upper = ch.toUpper();
    for (qsizetype i = 0; i < set.size(); ++i)
        if (set[i].toUpper() == upper)
            return int(i);
    return -1;
}

} // namespace

TQXDOTPanel::TQXDOTPanel(QWidget* parent)
    : TCustomControl(parent), TQXAboutCarrier(QXDOTPanelVersion),
      m_charSet(QStringLiteral(" !\"#$%&'()*+,-./0123456789:;<=>?@abcdefghijklmnopqrstuvwxyz"
                               "[\\]^_")) {
    m_items.Add(QStringLiteral("QXDOTPanel"));
    m_items.OnChange = [this](TStrings*) { Invalidate(); };
    m_font.SetImage(builtInFont());
    m_timer = new TTimer(this);
    m_timer->SetEnabled(false);
    m_timer->OnTimer = [this](QObject* sender) { QXOnTime(sender); };
    SetColor(clBlack);
    // The first paint gives the control the size of its cells.
    SetDefaultSize(10, 10);
    setAccessibleName(QStringLiteral("Punktmatrix-Anzeige"));
    setAccessibleDescription(QStringLiteral("Lauftext- und Zeichenanzeige aus Leuchtpunkten"));
}

TQXDOTPanel::~TQXDOTPanel() = default;

void TQXDOTPanel::SetAdjustToParent(bool Value) {
    m_adjustToParent = Value;
    Invalidate();
}

void TQXDOTPanel::SetCaption(const QString& Value) {
    m_caption = Value;
    if (!Value.isEmpty()) {
        m_items.Clear();
        m_items.Add(Value);
    }
    m_scrollOffset = 0;
    m_scrollIndex = 1;
    Invalidate();
}

void TQXDOTPanel::SetColor(TColor Value) {
    TCustomControl::SetColor(Value);
    SetDOTColor();
}

void TQXDOTPanel::SetColumns(std::uint8_t Value) {
    m_columns = Value;
    Invalidate();
}

void TQXDOTPanel::SetDOTImage(TImage* Value) {
    m_dotImage = Value;
    if (Value) {
        FreeNotification(Value);
        if (auto* bitmap = dynamic_cast<TBitmap*>(Value->Picture()->Graphic()))
            SetDOTBitmap(bitmap);
    } else {
        SetDOTColor();
    }
    Invalidate();
}

void TQXDOTPanel::SetDOTHiColor(TColor Value) {
    m_hiColor = Value;
    SetDOTColor();
    Invalidate();
}

void TQXDOTPanel::SetDOTLoColor(TColor Value) {
    m_loColor = Value;
    SetDOTColor();
    Invalidate();
}

void TQXDOTPanel::SetDOTCharSet(const QString& Value) {
    m_charSet = Value;
    Invalidate();
}

void TQXDOTPanel::SetDOTColumns(int Value) {
    m_dotColumns = Value;
    Invalidate();
}

void TQXDOTPanel::SetDOTRows(int Value) {
    m_dotRows = Value;
    Invalidate();
}

void TQXDOTPanel::SetDOTSpace(int Value) {
    m_dotSpace = Value;
    Invalidate();
}

void TQXDOTPanel::SetDOTStretch(bool Value) {
    m_dotStretch = Value;
    Invalidate();
}

void TQXDOTPanel::SetItems(TStrings* Value) {
    m_items.Assign(Value);
    Invalidate();
}

void TQXDOTPanel::SetRows(std::uint8_t Value) {
    m_rows = std::clamp<std::uint8_t>(Value, 1, 50);
    Invalidate();
}

void TQXDOTPanel::SetScrollChar(bool Value) {
    m_scrollChar = Value;
    Invalidate();
}

void TQXDOTPanel::SetInterval(int Value) {
    if (Value < 0) {
        m_scrollOffset = 0;
        m_scrollIndex = 1;
        Value = 0;
    } else if (Value > 0 && Value < shortestInterval) {
        Value = shortestInterval;
    }
    m_interval = Value;
    m_timer->SetInterval(Value);
    m_timer->SetEnabled(Value > 0);
    Invalidate();
}

void TQXDOTPanel::SetDOTBitmap(TBitmap* Bitmap) {
    if (Bitmap)
        m_font.SetImage(Bitmap->Image().convertToFormat(QImage::Format_RGB32));
    Invalidate();
}

void TQXDOTPanel::SetDOTColor() {
    if (ComponentState().Contains(csLoading) || m_dotImage)
        return;
    QImage font = builtInFont();
    if (font.isNull() ||
        (Color() == defaultColor && m_hiColor == defaultHiColor && m_loColor == defaultLoColor)) {
        m_font.SetImage(font);
        return;
    }
    const QRgb background = font.pixel(0, 0), unlit = font.pixel(1, 1), lit = font.pixel(31, 4);
    const QRgb toBackground = TColorToQColor(Color(), &palette()).rgb();
    const QRgb toUnlit = TColorToQColor(m_loColor, &palette()).rgb();
    const QRgb toLit = TColorToQColor(m_hiColor, &palette()).rgb();
    for (int y = 0; y < font.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(font.scanLine(y));
        for (int x = 0; x < font.width(); ++x) {
            if (line[x] == background)
                line[x] = toBackground;
            else if (line[x] == unlit)
                line[x] = toUnlit;
            else if (line[x] == lit)
                line[x] = toLit;
        }
    }
    m_font.SetImage(font);
}

void TQXDOTPanel::DrawDOT(TCanvas* Canvas, const TRect& Rect, QChar Ch) {
    if (m_font.Empty() || m_dotColumns < 1 || m_dotRows < 1)
        return;
    int index = int(m_charSet.indexOf(Ch));
    if (index < 0)
        index = indexOfUpper(m_charSet, Ch);
    if (index < 0)
        index = int(m_charSet.indexOf(QLatin1Char(' ')));
    if (index < 0)
        return;
    const int cellWidth = m_font.Width() / m_dotColumns;
    const int cellHeight = m_font.Height() / m_dotRows;
    m_glyphSource = Bounds(index % m_dotColumns * cellWidth, index / m_dotColumns * cellHeight,
                           cellWidth, cellHeight);
    Canvas->CopyRect(Rect, m_font.Canvas(), m_glyphSource);
}

QString TQXDOTPanel::scrollText() const {
    QString text = m_items.Text();
    text.replace(QStringLiteral("\r\n"), QStringLiteral(" "));
    return text;
}

void TQXDOTPanel::QXOnTime(QObject*) {
    if (m_font.Empty())
        return;
    const int pitch = m_columns > 0 ? Width() / m_columns : 0;
    m_scrollOffset -= m_scrollChar ? pitch : 1;
    const QString text = scrollText();
    // A whole cell has left on the left: the next character comes in.
    if (m_scrollOffset < 1 - pitch) {
        m_scrollOffset = 0;
        ++m_scrollIndex;
        if (m_scrollIndex > text.size() + m_columns) {
            m_scrollIndex = 1;
            if (OnStartText)
                OnStartText(this);
        }
    }
    if (OnScroll)
        OnScroll(this);
    Invalidate();
}

void TQXDOTPanel::Paint() {
    if (!m_dotStretch && !m_font.Empty() && m_dotColumns > 0 && m_dotRows > 0 && m_columns > 0) {
        const int width = m_font.Width() * m_columns / m_dotColumns + (m_columns - 1) * m_dotSpace;
        const int height = m_font.Height() * m_rows / m_dotRows + (m_rows - 1) * m_dotSpace;
        // The resize paints again.
        if (Width() != width) {
            SetWidth(width);
            return;
        }
        if (Height() != height) {
            SetHeight(height);
            return;
        }
    }
    TCanvas* canvas = Canvas();
    canvas->Brush.Style = bsSolid;
    canvas->Brush.Color = Color();
    canvas->FillRect(ClientRect());
    PaintItems();
}

void TQXDOTPanel::PaintItems() {
    if (m_columns == 0 || Width() <= 0 || Height() <= 0)
        return;
    const int rowHeight = (Height() - (m_rows - 1) * m_dotSpace) / m_rows;
    if (m_interval > 0) {
        // One row, a cell wider than the control, moved left by the scroll offset.
        const int pitch = Width() / m_columns;
        if (pitch <= 0 || rowHeight <= 0)
            return;
        TBitmap row((m_columns + 1) * pitch, rowHeight);
        TCanvas* c = row.Canvas();
        c->SetPalette(palette());
        c->Brush.Color = Color();
        c->FillRect(Rect(0, 0, row.Width(), row.Height()));
        const QString shown = (QString(m_columns + 1, QLatin1Char(' ')) + scrollText())
                                  .mid(m_scrollIndex - 1, m_columns + 1);
        for (int i = 0; i <= m_columns; ++i)
            DrawDOT(c, Bounds(i * pitch, 0, pitch - m_dotSpace, rowHeight),
                    i < shown.size() ? shown[i] : QChar(u' '));
        Canvas()->Draw(m_scrollOffset, 0, &row);
        return;
    }
    const int spanX = Width() - (m_columns - 1) * m_dotSpace;
    const int spanY = Height() - (m_rows - 1) * m_dotSpace;
    if (spanX / m_columns <= 0 || rowHeight <= 0)
        return;
    TBitmap picture(Width(), Height());
    TCanvas* c = picture.Canvas();
    c->SetPalette(palette());
    c->Brush.Color = Color();
    c->FillRect(ClientRect());
    for (int r = 0; r < m_rows; ++r) {
        const QString line = r < m_items.Count() ? m_items[r] : QString();
        for (int col = 0; col < m_columns; ++col)
            DrawDOT(c,
                    Bounds(col * spanX / m_columns + col * m_dotSpace,
                           r * spanY / m_rows + r * m_dotSpace, spanX / m_columns, rowHeight),
                    col < line.size() ? line[col] : QChar(u' '));
    }
    Canvas()->Draw(0, 0, &picture);
}

void TQXDOTPanel::Loaded() {
    TCustomControl::Loaded();
    if (m_dotImage)
        SetDOTImage(m_dotImage);
    else
        SetDOTColor();
}

void TQXDOTPanel::Notification(QObject* Component, TOperation Operation) {
    TCustomControl::Notification(Component, Operation);
    if (Operation == opRemove && Component == m_dotImage)
        m_dotImage = nullptr;
}

void Qxdotpan::Register() {
    Q_UNUSED(classKnown);
    QXRegisterOne(QLatin1String(QXPalettePage), "TQXDOTPanel");
}
