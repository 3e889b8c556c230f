#pragma once

#include "QXAboutString.h"
#include "QXExport.h"
#include "TColor.h"
#include "TComponent.h"
#include "TGraphic.h"
#include "TImage.h"
#include "TStrings.h"
#include "TTimer.h"

#include <QColor>
#include <QStringList>
#include <cstdint>

// A dot-matrix character display. Each character is copied as a ready-made glyph cell out of
// a font bitmap: the built-in font QXDOTFNT (32 x 2 cells of 21 x 27 pixels for the characters
// of DOTCharSet), or the bitmap of a linked image control (DOTImage).
//
// - Without DOTStretch the control sizes itself to the font's cells: 10 columns and 1 row of
//   the built-in font make 210 x 27 pixels.
// - With Interval 0 it shows Rows x Columns cells of Items. With an Interval (20 ms or more)
//   it runs the text of Items through one row from right to left, by whole cells (ScrollChar)
//   or pixel by pixel; OnScroll fires on every tick and OnStartText when the text starts over.
// - A character missing from DOTCharSet shows as its upper-case form if that is there, else as
//   a space: the built-in font has capitals in the cells of "a" to "z".
// - The built-in font takes the colours Color, DOTLoColor and DOTHiColor; with the defaults it
//   keeps its own (unlit dots 0x008000).
//
// Example, a marquee of 30 characters:
//
//     auto* marquee = new TQXDOTPanel(window);
//     marquee->SetColumns(30);
//     marquee->SetCaption(QStringLiteral("Willkommen bei QXTools"));
//     marquee->SetInterval(30);
class QXT_EXPORT TQXDOTPanel : public TCustomControl, public TQXAboutCarrier {
    Q_OBJECT
    Q_PROPERTY(QString About_QXTools READ About_QXTools WRITE SetAbout_QXTools DESIGNABLE false)
    Q_PROPERTY(bool AdjustToParent READ AdjustToParent WRITE SetAdjustToParent)
    Q_PROPERTY(QString Caption READ Caption WRITE SetCaption)
    Q_PROPERTY(QColor Color READ colorProperty WRITE setColorProperty)
    Q_PROPERTY(int Columns READ Columns WRITE SetColumns)
    Q_PROPERTY(TImage* DOTImage READ DOTImage WRITE SetDOTImage)
    Q_PROPERTY(QColor DOTHiColor READ hiColorProperty WRITE setHiColorProperty)
    Q_PROPERTY(QColor DOTLoColor READ loColorProperty WRITE setLoColorProperty)
    Q_PROPERTY(QString DOTCharSet READ DOTCharSet WRITE SetDOTCharSet)
    Q_PROPERTY(int DOTColumns READ DOTColumns WRITE SetDOTColumns)
    Q_PROPERTY(int DOTRows READ DOTRows WRITE SetDOTRows)
    Q_PROPERTY(int DOTSpace READ DOTSpace WRITE SetDOTSpace)
    Q_PROPERTY(bool DOTStretch READ DOTStretch WRITE SetDOTStretch)
    Q_PROPERTY(QStringList Items READ itemsProperty WRITE setItemsProperty)
    Q_PROPERTY(int Rows READ Rows WRITE SetRows)
    Q_PROPERTY(bool ScrollChar READ ScrollChar WRITE SetScrollChar)
    Q_PROPERTY(int Interval READ Interval WRITE SetInterval)

public:
    // A 10 x 10 pixel panel that takes its font cells' size at the first paint.
    explicit TQXDOTPanel(QWidget* parent = nullptr);
    ~TQXDOTPanel() override;

    // Kept for the application; the panel only repaints.
    bool AdjustToParent() const { return m_adjustToParent; }
    void SetAdjustToParent(bool Value);
    // A non-empty text replaces Items by this one line; any text restarts the scrolling.
    QString Caption() const { return m_caption; }
    void SetCaption(const QString& Value);
    // The background; re-colours the built-in font.
    void SetColor(TColor Value) override;
    // Character cells per row.
    std::uint8_t Columns() const { return m_columns; }
    void SetColumns(std::uint8_t Value);
    // An image control whose bitmap is the font; nullptr for the built-in font.
    TImage* DOTImage() const { return m_dotImage; }
    void SetDOTImage(TImage* Value);
    // Colour of the lit dots; re-colours the built-in font.
    TColor DOTHiColor() const { return m_hiColor; }
    void SetDOTHiColor(TColor Value);
    // Colour of the unlit dots; re-colours the built-in font.
    TColor DOTLoColor() const { return m_loColor; }
    void SetDOTLoColor(TColor Value);
    // The characters of the font's cells, row by row.
    QString DOTCharSet() const { return m_charSet; }
    void SetDOTCharSet(const QString& Value);
    // Glyph cells per row of the font bitmap.
    int DOTColumns() const { return m_dotColumns; }
    void SetDOTColumns(int Value);
    // Rows of glyph cells in the font bitmap.
    int DOTRows() const { return m_dotRows; }
    void SetDOTRows(int Value);
    // Pixels between adjacent cells.
    int DOTSpace() const { return m_dotSpace; }
    void SetDOTSpace(int Value);
    // Stretches the glyphs over the control instead of sizing the control to them.
    bool DOTStretch() const { return m_dotStretch; }
    void SetDOTStretch(bool Value);
    // The text, one line per row; scrolling runs all lines as one.
    TStringList* Items() { return &m_items; }
    void SetItems(TStrings* Value);
    // Rows of cells, 1 to 50.
    std::uint8_t Rows() const { return m_rows; }
    void SetRows(std::uint8_t Value);
    // Scrolls by whole cells (true) or by pixels (false).
    bool ScrollChar() const { return m_scrollChar; }
    void SetScrollChar(bool Value);
    // Milliseconds between scroll steps: 0 shows the text standing, 1 to 19 become 20, a
    // negative value stops and rewinds the scrolling.
    int Interval() const { return m_interval; }
    void SetInterval(int Value);

    // Fires after every scroll step.
    TNotifyEvent OnScroll;
    // Fires when the scrolling text starts over from the right.
    TNotifyEvent OnStartText;

    // Copies the glyph of Ch out of the font into Rect (stretched when the sizes differ).
    void DrawDOT(TCanvas* Canvas, const TRect& Rect, QChar Ch);
    // Reloads the built-in font in the panel's colours (not while loading or with DOTImage).
    void SetDOTColor();
    // Makes a copy of Bitmap the font.
    void SetDOTBitmap(TBitmap* Bitmap);
    // The font in use.
    const TBitmap* DOTBitmap() const { return &m_font; }
    // Where the scrolling row is drawn: 0 or less, in pixels.
    int ScrollOffset() const { return m_scrollOffset; }
    // The 1-based position of the first shown character in the blank-led scroll text.
    int ScrollIndex() const { return m_scrollIndex; }
    // The scroll timer.
    TTimer* Timer() const { return m_timer; }

public slots:
    // One scroll step: moves the row left, advances the text by a character once a whole cell
    // has left, fires the events and repaints.
    void QXOnTime(QObject* Sender = nullptr);

protected:
    // Draws the rows of dots from the font bitmap.
    void Paint() override;
    // Draws the cells (standing or scrolling) into an off-screen bitmap and shows it.
    void PaintItems();
    // Colours the font once the properties are set.
    void Loaded() override;
    void Notification(QObject* Component, TOperation Operation) override;

private:
    QString scrollText() const;
    QStringList itemsProperty() const { return m_items.ToStringList(); }
    void setItemsProperty(const QStringList& value) { m_items.SetStringList(value); }
    QColor colorProperty() const { return TColorToQColor(Color()); }
    void setColorProperty(const QColor& c) { SetColor(QColorToTColor(c)); }
    QColor hiColorProperty() const { return TColorToQColor(m_hiColor); }
    void setHiColorProperty(const QColor& c) { SetDOTHiColor(QColorToTColor(c)); }
    QColor loColorProperty() const { return TColorToQColor(m_loColor); }
    void setLoColorProperty(const QColor& c) { SetDOTLoColor(QColorToTColor(c)); }

    bool m_adjustToParent = false;
    QString m_caption;
    std::uint8_t m_columns = 10;
    TImage* m_dotImage = nullptr;
    TColor m_hiColor = clLime;
    TColor m_loColor = 0x004000;
    QString m_charSet;
    int m_dotColumns = 32;
    int m_dotRows = 2;
    int m_dotSpace = 0;
    bool m_dotStretch = false;
    TStringList m_items;
    std::uint8_t m_rows = 1;
    bool m_scrollChar = true;
    int m_interval = 0;
    TBitmap m_font;
    TTimer* m_timer = nullptr;
    int m_scrollOffset = 0;
    int m_scrollIndex = 1;
    TRect m_glyphSource;
};

namespace Qxdotpan {
// Puts TQXDOTPanel on the "QX Tools" palette page.
QXT_EXPORT void Register();
} // namespace Qxdotpan
