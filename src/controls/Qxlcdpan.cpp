#include "Qxlcdpan.h"

#include "QXDesign.h"
#include "QXTools.h"

#include <QPainter>
#include <QVector>
#include <algorithm>
#include <array>

namespace {

const bool classKnown = RegisterClass(ComponentClassOf<TQXLCDPanel>());

// The smallest cell pitch in pixels.
constexpr int minPitch = 13;

// Segment bits: 0 top, 1 upper left, 2 upper right, 3 middle, 4 lower left, 5 lower right,
// 6 bottom, 7 upper centre, 8 lower centre, 9 left half middle, 10 right half middle,
// 11 upper left diagonal, 12 upper right diagonal, 13 lower right diagonal, 14 lower left
// diagonal.
constexpr int unlitOrder[] = {7, 8, 11, 12, 13, 14, 0, 1, 2, 3, 4, 5, 6};
constexpr int litOrder[] = {7, 8, 9, 10, 11, 12, 13, 14, 0, 1, 2, 3, 4, 5, 6};

// The lit segments of the characters "*" (42) to "Z" (90); 0 for the blank ones.
constexpr std::array<std::uint16_t, 49> masks = {
    0x79FF, 0x0780, 0x0000, 0x0008, 0x0000, 0x0000,                         // * + , - . /
    0x0077, 0x0024, 0x005D, 0x006D, 0x002E, 0x006B, 0x007B, 0x0025, 0x007F, // 0-8
    0x002F, 0x0000, 0x0000, 0x0000, 0x0000, 0x0000, 0x0000, 0x0000,         // 9 : ; < = > ? @
    0x003F, 0x05E5, 0x0053, 0x01E5, 0x0253, 0x0213, 0x0473, 0x003E, 0x0180, // A-I
    0x0074, 0x3212, 0x0052, 0x00B7, 0x2836, 0x0077, 0x001F, 0x2077, 0x201F, // J-R
    0x006B, 0x0181, 0x0076, 0x5012, 0x0176, 0x7800, 0x1900, 0x5041,         // S-Z
};

std::uint16_t maskOf(QChar ch) {
    const char16_t u = ch.unicode();
    return (u >= u'*' && u <= u'Z') ? masks[u - u'*'] : 0;
}

// Upper case for the letters a to z only; other characters stay as they are.
QChar upperAscii(QChar ch) {
    const char16_t u = ch.unicode();
    return (u >= u'a' && u <= u'z') ? QChar(char16_t(u - u'a' + u'A')) : ch;
}

// The six corners of a segment in a cell with left x0, top y0, right r, bottom b.
QVector<TPoint> hexagon(int segment, const TRect& cell, int s) {
    const int x0 = cell.Left, y0 = cell.Top, r = cell.Right, b = cell.Bottom;
    const int xc = x0 + (r - x0) / 2, yc = y0 + (b - y0) / 2;
    switch (segment) {
    case 0:
        return {{x0 + s, y0 + s}, {x0 + 2 * s, y0},        {r - 2 * s, y0},
                {r - s, y0 + s},  {r - 2 * s, y0 + 2 * s}, {x0 + 2 * s, y0 + 2 * s}};
    case 1:
        return {{x0 + s, y0 + s}, {x0 + 2 * s, y0 + 2 * s}, {x0 + 2 * s, yc - s}, {x0 + s, yc},
                {x0, yc - s},     {x0, y0 + 2 * s}};
    case 2:
        return {{r - s, y0 + s}, {r, y0 + 2 * s},     {r, yc - s},
                {r - s, yc},     {r - 2 * s, yc - s}, {r - 2 * s, y0 + 2 * s}};
    case 3:
        return {{x0 + s, yc}, {x0 + 2 * s, yc - s}, {r - 2 * s, yc - s},
                {r - s, yc},  {r - 2 * s, yc + s},  {x0 + 2 * s, yc + s}};
    case 4:
        return {{x0 + s, yc},    {x0 + 2 * s, yc + s}, {x0 + 2 * s, b - 2 * s},
                {x0 + s, b - s}, {x0, b - 2 * s},      {x0, yc + s}};
    case 5:
        return {
            {r - s, yc},        {r, yc + s}, {r, b - 2 * s}, {r - s, b - s}, {r - 2 * s, b - 2 * s},
            {r - 2 * s, yc + s}};
    case 6:
        return {{x0 + s, b - s}, {x0 + 2 * s, b - 2 * s}, {r - 2 * s, b - 2 * s},
                {r - s, b - s},  {r - 2 * s, b},          {x0 + 2 * s, b}};
    case 7:
        return {{xc, y0 + s}, {xc + s, y0 + 2 * s}, {xc + s, yc - s},
                {xc, yc},     {xc - s, yc - s},     {xc - s, y0 + 2 * s}};
    case 8:
        return {{xc, yc},    {xc + s, yc + s},    {xc + s, b - 2 * s},
                {xc, b - s}, {xc - s, b - 2 * s}, {xc - s, yc + s}};
    case 9:
        return {{x0 + s, yc}, {x0 + 2 * s, yc - s}, {xc - s, yc - s},
                {xc, yc},     {xc - s, yc + s},     {x0 + 2 * s, yc + s}};
    case 10:
        return {{xc, yc},    {xc + s, yc - s},    {r - 2 * s, yc - s},
                {r - s, yc}, {r - 2 * s, yc + s}, {xc + s, yc + s}};
    case 11:
        return {{x0 + s, y0 + s}, {x0 + 2 * s, y0 + 2 * s}, {xc, yc - s}, {xc, yc},
                {xc - s, yc},     {x0, y0 + 2 * s}};
    case 12:
        return {{r - s, y0 + s}, {r, y0 + 2 * s}, {xc + s, yc},
                {xc, yc},        {xc, yc - s},    {r - 2 * s, y0 + 2 * s}};
    case 13:
        return {{xc, yc},       {xc + s, yc},           {r, b - 2 * s},
                {r - s, b - s}, {r - 2 * s, b - 2 * s}, {xc, yc + s}};
    default: // 14
        return {{xc, yc},        {xc, yc + s},    {x0 + 2 * s, b - 2 * s},
                {x0 + s, b - s}, {x0, b - 2 * s}, {xc - s, yc}};
    }
}

} // namespace

TQXLCDPanel::TQXLCDPanel(QWidget* parent)
    : TGraphicControl(parent), TQXAboutCarrier(QXLCDPanelVersion) {
    m_items.Add(QStringLiteral("QXLCDPanel"));
    m_items.OnChange = [this](TStrings*) { Invalidate(); };
    SetColor(clBlack);
    SetDefaultSize(300, 40);
    setAccessibleName(QStringLiteral("LCD-Anzeige"));
    setAccessibleDescription(QStringLiteral("Zeichenanzeige aus Flüssigkristall-Segmenten"));
}

TQXLCDPanel::~TQXLCDPanel() = default;

void TQXLCDPanel::SetCaption(const QString& Value) {
    m_caption = Value;
    if (!Value.isEmpty()) {
        m_items.Clear();
        m_items.Add(Value);
    }
    Invalidate();
}

void TQXLCDPanel::SetColumns(std::uint8_t Value) {
    // Unlike Rows, Columns has no upper limit: wide panels of up to 255 cells are allowed.
    m_columns = std::max<std::uint8_t>(Value, 1);
    Invalidate();
}

void TQXLCDPanel::SetItems(TStrings* Value) {
    m_items.Assign(Value);
    Invalidate();
}

void TQXLCDPanel::SetLCDHiColor(TColor Value) {
    m_hiColor = Value;
    Invalidate();
}

void TQXLCDPanel::SetLCDLoColor(TColor Value) {
    m_loColor = Value;
    Invalidate();
}

void TQXLCDPanel::SetRows(std::uint8_t Value) {
    m_rows = std::clamp<std::uint8_t>(Value, 1, 50);
    Invalidate();
}

void TQXLCDPanel::SetSegmentSize(std::uint8_t Value) {
    m_segmentSize = std::max<std::uint8_t>(Value, 1);
    Invalidate();
}

void TQXLCDPanel::drawSegments(TCanvas* canvas, const TRect& rect, int s, std::uint16_t mask,
                               bool unlit) const {
    if (unlit) {
        for (int segment : unlitOrder)
            if (!(mask & (1u << segment)))
                canvas->Polygon(hexagon(segment, rect, s));
        return;
    }
    for (int segment : litOrder)
        if (mask & (1u << segment))
            canvas->Polygon(hexagon(segment, rect, s));
}

void TQXLCDPanel::DrawLCD(TCanvas* Canvas, const TRect& Rect, std::uint8_t SegmentSize, QChar Ch) {
    const int s = SegmentSize;
    const std::uint16_t mask = maskOf(Ch);
    Canvas->Brush.Style = bsSolid;
    Canvas->Pen.Style = psSolid;
    Canvas->Pen.Width = 1;
    Canvas->Brush.Color = m_loColor;
    if (m_loColor == Color()) {
        Canvas->Pen.Color = m_loColor;
    } else {
        Canvas->Pen.Color = clBlack;
        drawSegments(Canvas, Rect, s, mask, true);
    }
    Canvas->Brush.Color = m_hiColor;
    Canvas->Pen.Color = clBlack;
    drawSegments(Canvas, Rect, s, mask, false);

    const int x0 = Rect.Left, y0 = Rect.Top, b = Rect.Bottom;
    const int xc = x0 + (Rect.Right - x0) / 2, yc = y0 + (b - y0) / 2;
    if (Ch == u',')
        Canvas->Polygon({{xc + s, b - 2 * s},
                         {xc + s, b - s},
                         {xc, b},
                         {xc - s, b},
                         {xc - s, b - s},
                         {xc, b - 2 * s}});
    else if (Ch == u'.')
        Canvas->Ellipse(xc - s, b - 2 * s, xc + s, b);
    else if (Ch == u':') {
        Canvas->Ellipse(xc - s, yc + s, xc + s, yc + 3 * s);
        Canvas->Ellipse(xc - s, yc - 3 * s, xc + s, yc - s);
    }
}

const QImage& TQXLCDPanel::cellPicture(QChar ch, int width, int height) {
    const CellKey key{width,
                      height,
                      m_segmentSize,
                      ColorToRGB(Color(), &palette()),
                      ColorToRGB(m_loColor, &palette()),
                      ColorToRGB(m_hiColor, &palette())};
    if (!(key == m_cellKey)) {
        m_cells.clear();
        m_cellKey = key;
    }
    // Every character without segments or a mark looks like a space.
    const bool marked = ch == u',' || ch == u'.' || ch == u':';
    const char16_t id = (maskOf(ch) != 0 || marked) ? ch.unicode() : u' ';
    auto found = m_cells.constFind(id);
    if (found != m_cells.constEnd())
        return *found;
    // Segments reach the rectangle's right and bottom edges, one pixel past its size. One
    // painter serves all the segments of the cell.
    QImage cell(width + 1, height + 1, QImage::Format_RGB32);
    QPainter painter(&cell);
    TCanvas canvas;
    canvas.SetPalette(palette());
    canvas.Attach(&painter, cell.rect());
    canvas.Brush.Style = bsSolid;
    canvas.Brush.Color = Color();
    canvas.FillRect(Rect(0, 0, width + 1, height + 1));
    DrawLCD(&canvas, Rect(0, 0, width, height), m_segmentSize, QChar(id));
    canvas.Detach();
    painter.end();
    return *m_cells.insert(id, cell);
}

void TQXLCDPanel::Paint() {
    if (m_columns * minPitch > Width()) {
        SetWidth(m_columns * minPitch);
        SetAlign(alNone);
    }
    if (m_rows * minPitch > Height()) {
        SetHeight(m_rows * minPitch);
        SetAlign(alNone);
    }
    if (Width() / m_columns / m_segmentSize < 8)
        SetSegmentSize(std::uint8_t(Width() / m_columns / 8));
    if (Height() / m_rows / m_segmentSize < 8)
        SetSegmentSize(std::uint8_t(Height() / m_rows / 8));

    TCanvas* canvas = Canvas();
    canvas->Brush.Style = bsSolid;
    canvas->Brush.Color = Color();
    canvas->FillRect(ClientRect());
    PaintItems();
}

// Every cell shows the picture DrawLCD makes of its character: the unlit segments (the cell
// every character starts from) with the lit ones over them. Drawing is the same at every
// place, so each character is drawn once and its picture copied into the cells.
void TQXLCDPanel::PaintItems() {
    TCanvas* canvas = Canvas();
    const int width = Width() / m_columns - 8, height = Height() / m_rows - 4;
    if (width <= 0 || height <= 0)
        return;
    for (int r = 0; r < m_rows; ++r) {
        const QString line = r < m_items.Count() ? m_items[r] : QString();
        for (int c = 0; c < m_columns; ++c) {
            m_rect = Bounds(c * Width() / m_columns + 4, r * Height() / m_rows + 2, width, height);
            const QChar ch = c < line.size() ? upperAscii(line[c]) : QChar(u' ');
            canvas->DrawImage(Bounds(m_rect.Left, m_rect.Top, width + 1, height + 1),
                              cellPicture(ch, width, height));
        }
    }
}

void Qxlcdpan::Register() {
    Q_UNUSED(classKnown);
    QXRegisterOne(QLatin1String(QXPalettePage), "TQXLCDPanel");
}
