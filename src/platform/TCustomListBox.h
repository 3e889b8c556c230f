#pragma once

#include "QXExport.h"
#include "TCanvas.h"
#include "TColor.h"
#include "TComponent.h"
#include "TFont.h"
#include "TSet.h"
#include "TStrings.h"

#include <QListWidget>
#include <functional>
#include <memory>

enum TListBoxStyle { lbStandard, lbOwnerDrawFixed, lbOwnerDrawVariable };
enum TOwnerDrawStateFlag { odSelected, odGrayed, odDisabled, odChecked, odFocused };
using TOwnerDrawState = TSet<TOwnerDrawStateFlag>;

class TCustomListBox;
// Draws one item of an owner-drawn list box.
using TDrawItemEvent = std::function<void(TCustomListBox* Control, int Index, const TRect& Rect,
                                          TOwnerDrawState State)>;

// The framework's list box: a list of strings (Items, each with an object pointer) shown in
// rows of ItemHeight pixels, optionally owner-drawn through DrawItem.
//
// - Columns 0 shows one column that scrolls vertically; Columns n > 0 shows n columns of
//   client width div n pixels, the items running down the first column, then down the next,
//   scrolling sideways by columns.
// - Items is the data: the list box shows as many rows as it holds and draws row i from
//   Items[i] when it is painted, so changes made through Items (also in bulk) cost no more than
//   the rows they add or remove. The selection is kept by row number.
// - For drawing, Canvas has the control's font and the brush of the item: clHighlight with
//   clHighlightText for selected items, else Color. A focused item gets a focus rectangle after
//   DrawItem.
class QXT_EXPORT TCustomListBox : public QListWidget, public TComponentBase {
    Q_OBJECT
public:
    // An empty list on parent, rows 16 pixels high, one column.
    explicit TCustomListBox(QWidget* parent = nullptr);
    ~TCustomListBox() override;
    // The list itself.
    QObject* AsObject() override { return this; }
    // The list's name (its objectName).
    QString Name() const { return objectName(); }
    void SetName(const QString& name) { setObjectName(name); }
    // The class name as user code spells it.
    QString ClassName() const { return QString::fromLatin1(metaObject()->className()); }

    // The strings shown and their objects.
    TStrings* Items() const { return m_items.get(); }
    // Copies the strings and objects of value.
    void SetItems(TStrings* value);
    // The selected (current) item, -1 when none.
    int ItemIndex() const { return currentRow(); }
    void SetItemIndex(int value);
    // Height of a row in pixels (at least 1).
    int ItemHeight() const { return m_itemHeight; }
    void SetItemHeight(int value);
    // Number of visible columns; 0 for a single vertically scrolling column.
    int Columns() const { return m_columns; }
    void SetColumns(int value);
    // Standard rows, or rows drawn by DrawItem (OnDrawItem).
    TListBoxStyle Style() const { return m_style; }
    void SetStyle(TListBoxStyle value);
    // Whether several items can be selected.
    bool MultiSelect() const { return selectionMode() == QAbstractItemView::ExtendedSelection; }
    void SetMultiSelect(bool value);
    // Keeps Items sorted (case-blind).
    bool Sorted() const;
    void SetSorted(bool value);
    // Background colour; system colours follow the palette.
    TColor Color() const { return m_color; }
    void SetColor(TColor value);
    // The font with its colour.
    TFont* Font() { return &m_font; }
    // The width in pixels.
    int Width() const { return width(); }
    // The height in pixels.
    int Height() const { return height(); }
    // The area the rows are drawn in (without the frame and scroll bars).
    int ClientWidth() const { return viewport()->width(); }
    // The height of the area the rows are drawn in (one pixel less with columns).
    int ClientHeight() const { return viewport()->height() - (m_columns > 0 ? 1 : 0); }
    // The area the rows are drawn in, from (0, 0).
    TRect ClientRect() const { return {0, 0, ClientWidth(), ClientHeight()}; }
    // The client rectangle of item index (empty when it is out of range).
    TRect ItemRect(int index) const;
    // The item at a client point; -1 when there is none.
    int ItemAtPos(TPoint pos) const;
    // Removes every item.
    void Clear() { m_items->Clear(); }
    // The canvas DrawItem draws on (valid while an item is drawn).
    TCanvas* Canvas() { return &m_canvas; }
    // Schedules a repaint of the rows.
    void Invalidate() { viewport()->update(); }

    // An item was clicked or chosen with the keyboard.
    TNotifyEvent OnClick;
    // An item was double-clicked.
    TNotifyEvent OnDblClick;
    // Draws owner-drawn items when assigned.
    TDrawItemEvent OnDrawItem;

protected:
    // Draws item Index into Rect on Canvas: OnDrawItem when assigned, else the item's text.
    virtual void DrawItem(int Index, const TRect& Rect, TOwnerDrawState State);
    // Ends loading at the first polish.
    bool event(QEvent* e) override;
    // Lays the columns out again for the new height.
    void resizeEvent(QResizeEvent* e) override;
    // Paints the rows, through DrawItem for owner-drawn ones.
    void paintEvent(QPaintEvent* e) override;
    // Repaints the rows when the palette changes.
    void changeEvent(QEvent* e) override;

private:
    class Delegate;
    friend class Delegate;
    void syncRows();
    void relayout();
    QSize cellSize() const;
    void drawText(int index, const TRect& rect);
    void paintItem(QPainter* painter, const QRect& rect, int row, bool selected, bool focused);

    std::unique_ptr<TStringList> m_items;
    TCanvas m_canvas;
    TFont m_font;
    TColor m_color = clWindow;
    TListBoxStyle m_style = lbStandard;
    int m_itemHeight = 16;
    int m_columns = 0;
    bool m_painting = false;
};
