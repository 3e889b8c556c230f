#pragma once

#include "QXAboutString.h"
#include "QXExport.h"
#include "TColor.h"
#include "TComponent.h"
#include "TGraphic.h"
#include "TStrings.h"

#include <QColor>
#include <QHash>
#include <QImage>
#include <QStringList>
#include <cstdint>

// A liquid-crystal character display: Rows x Columns cells, each a 15-segment figure of filled
// hexagons (outer frame, split middle bar, two centre verticals, four diagonals). Lit segments
// take LCDHiColor, unlit ones LCDLoColor, the background Color. Each line of Items is one row,
// shown in upper case; text beyond Columns is cut, lines beyond Rows are not shown. Characters
// from "*" to "Z" have segment patterns; "," "." and ":" draw marks; anything else is blank.
//
// Painting grows the control to at least 13 pixels per cell (and then drops Align), and keeps
// SegmentSize at most an eighth of the cell pitch.
//
// Example, a clock:
//
//     auto* lcd = new TQXLCDPanel(window);
//     lcd->SetColumns(8);
//     lcd->SetCaption(QTime::currentTime().toString(QStringLiteral("hh:mm:ss")));
class QXT_EXPORT TQXLCDPanel : public TGraphicControl, public TQXAboutCarrier {
    Q_OBJECT
    Q_PROPERTY(QString About_QXTools READ About_QXTools WRITE SetAbout_QXTools DESIGNABLE false)
    Q_PROPERTY(QString Caption READ Caption WRITE SetCaption)
    Q_PROPERTY(int Columns READ Columns WRITE SetColumns)
    Q_PROPERTY(QStringList Items READ itemsProperty WRITE setItemsProperty)
    Q_PROPERTY(QColor LCDHiColor READ hiColorProperty WRITE setHiColorProperty)
    Q_PROPERTY(QColor LCDLoColor READ loColorProperty WRITE setLoColorProperty)
    Q_PROPERTY(int Rows READ Rows WRITE SetRows)
    Q_PROPERTY(int SegmentSize READ SegmentSize WRITE SetSegmentSize)
    Q_PROPERTY(QColor Color READ colorProperty WRITE setColorProperty)

public:
    // A black panel of one row of 10 characters in green segments.
    explicit TQXLCDPanel(QWidget* parent = nullptr);
    ~TQXLCDPanel() override;

    // The last text given; a non-empty text replaces Items by this one line.
    QString Caption() const { return m_caption; }
    void SetCaption(const QString& Value);
    // Character cells per row, at least 1 (no upper limit).
    std::uint8_t Columns() const { return m_columns; }
    void SetColumns(std::uint8_t Value);
    // One line per row; changing the list repaints.
    TStringList* Items() { return &m_items; }
    void SetItems(TStrings* Value);
    // Fill colour of lit segments.
    TColor LCDHiColor() const { return m_hiColor; }
    void SetLCDHiColor(TColor Value);
    // Fill colour of unlit segments; equal to Color hides them.
    TColor LCDLoColor() const { return m_loColor; }
    void SetLCDLoColor(TColor Value);
    // Rows of cells, 1 to 50.
    std::uint8_t Rows() const { return m_rows; }
    void SetRows(std::uint8_t Value);
    // Thickness unit of the segments in pixels, at least 1.
    std::uint8_t SegmentSize() const { return m_segmentSize; }
    void SetSegmentSize(std::uint8_t Value);

    // Draws one character into Rect with segment unit SegmentSize, in this panel's colours.
    void DrawLCD(TCanvas* Canvas, const TRect& Rect, std::uint8_t SegmentSize, QChar Ch);

protected:
    // Draws every cell's segments, lit for the characters of the text.
    void Paint() override;
    // Draws the characters of every cell.
    void PaintItems();

private:
    void drawSegments(TCanvas* canvas, const TRect& rect, int s, std::uint16_t mask,
                      bool unlit) const;
    const QImage& cellPicture(QChar ch, int width, int height);
    QStringList itemsProperty() const { return m_items.ToStringList(); }
    void setItemsProperty(const QStringList& value) { m_items.SetStringList(value); }
    QColor hiColorProperty() const { return TColorToQColor(m_hiColor); }
    void setHiColorProperty(const QColor& c) { SetLCDHiColor(QColorToTColor(c)); }
    QColor loColorProperty() const { return TColorToQColor(m_loColor); }
    void setLoColorProperty(const QColor& c) { SetLCDLoColor(QColorToTColor(c)); }
    QColor colorProperty() const { return TColorToQColor(Color()); }
    void setColorProperty(const QColor& c) { SetColor(QColorToTColor(c)); }

    QString m_caption;
    std::uint8_t m_columns = 10;
    TStringList m_items;
    TColor m_hiColor = clLime;
    TColor m_loColor = 0x004000;
    TRect m_rect;
    std::uint8_t m_rows = 1;
    std::uint8_t m_segmentSize = 2;

    // The picture of each character shown, kept while the cell size and the colours stay.
    QHash<char16_t, QImage> m_cells;
    struct CellKey {
        int width = -1, height = -1, segmentSize = -1;
        TColor color = 0, loColor = 0, hiColor = 0;
        bool operator==(const CellKey&) const = default;
    } m_cellKey;
};

namespace Qxlcdpan {
// Puts TQXLCDPanel on the "QX Tools" palette page.
QXT_EXPORT void Register();
} // namespace Qxlcdpan
