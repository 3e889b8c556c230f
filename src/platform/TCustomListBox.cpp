#include "TCustomListBox.h"

#include <QAbstractItemDelegate>
#include <QEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>
#include <algorithm>

namespace {

// A row holds nothing of its own: its text is the list box's item of the same number.
class RowItem : public QListWidgetItem {
public:
    explicit RowItem(const TCustomListBox* box) : m_box(box) {}
    QVariant data(int role) const override {
        if (role != Qt::DisplayRole && role != Qt::AccessibleTextRole)
            return QListWidgetItem::data(role);
        const int row = listWidget() ? listWidget()->row(this) : -1;
        if (row < 0 || row >= m_box->Items()->Count())
            return {};
        return (*m_box->Items())[row];
    }

private:
    const TCustomListBox* m_box;
};

} // namespace

class TCustomListBox::Delegate : public QAbstractItemDelegate {
public:
    explicit Delegate(TCustomListBox* box) : QAbstractItemDelegate(box), m_box(box) {}
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        m_box->paintItem(painter, option.rect, index.row(),
                         option.state.testFlag(QStyle::State_Selected),
                         option.state.testFlag(QStyle::State_HasFocus));
    }
    QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override {
        return m_box->cellSize();
    }

private:
    TCustomListBox* m_box;
};

TCustomListBox::TCustomListBox(QWidget* parent)
    : QListWidget(parent), m_items(std::make_unique<TStringList>()) {
    m_items->OnChange = [this](TStrings*) { syncRows(); };
    m_font.OnChange = [this]() {
        setFont(m_font.ToQFont());
        viewport()->update();
    };
    setItemDelegate(new Delegate(this));
    setViewMode(QListView::ListMode);
    setFlow(QListView::TopToBottom);
    setMovement(QListView::Static);
    setResizeMode(QListView::Adjust);
    setUniformItemSizes(true);
    setSpacing(0);
    setSelectionMode(QAbstractItemView::SingleSelection);
    SetColor(clWindow);
    connect(this, &QListWidget::itemClicked, this, [this]() {
        if (OnClick)
            OnClick(this);
    });
    connect(this, &QListWidget::itemDoubleClicked, this, [this]() {
        if (OnDblClick)
            OnDblClick(this);
    });
    relayout();
}

TCustomListBox::~TCustomListBox() {
    // The rows ask Items for their text; nothing may ask once Items is gone.
    m_items->OnChange = nullptr;
    QListWidget::clear();
}

void TCustomListBox::SetItems(TStrings* value) {
    m_items->Assign(value);
}

void TCustomListBox::SetItemIndex(int value) {
    setCurrentRow(value >= 0 && value < count() ? value : -1);
}

void TCustomListBox::SetItemHeight(int value) {
    value = std::max(1, value);
    if (value == m_itemHeight)
        return;
    m_itemHeight = value;
    relayout();
}

void TCustomListBox::SetColumns(int value) {
    value = std::max(0, value);
    if (value == m_columns)
        return;
    m_columns = value;
    relayout();
}

void TCustomListBox::SetStyle(TListBoxStyle value) {
    m_style = value;
    viewport()->update();
}

void TCustomListBox::SetMultiSelect(bool value) {
    setSelectionMode(value ? QAbstractItemView::ExtendedSelection
                           : QAbstractItemView::SingleSelection);
}

bool TCustomListBox::Sorted() const {
    return m_items->Sorted();
}

void TCustomListBox::SetSorted(bool value) {
    m_items->SetSorted(value);
    viewport()->update();
}

void TCustomListBox::SetColor(TColor value) {
    m_color = value;
    QPalette p = palette();
    p.setColor(QPalette::Base, TColorToQColor(value, &p));
    setPalette(p);
    viewport()->update();
}

TRect TCustomListBox::ItemRect(int index) const {
    if (index < 0 || index >= count())
        return {};
    return TRect::FromQRect(visualRect(model()->index(index, 0)));
}

int TCustomListBox::ItemAtPos(TPoint pos) const {
    const QModelIndex index = indexAt(pos.ToQPoint());
    return index.isValid() ? index.row() : -1;
}

void TCustomListBox::DrawItem(int Index, const TRect& Rect, TOwnerDrawState State) {
    if (OnDrawItem) {
        OnDrawItem(this, Index, Rect, State);
        return;
    }
    drawText(Index, Rect);
}

void TCustomListBox::drawText(int index, const TRect& rect) {
    m_canvas.FillRect(rect);
    if (index >= 0 && index < m_items->Count())
        m_canvas.TextOut(rect.Left + 2, rect.Top, (*m_items)[index]);
}

bool TCustomListBox::event(QEvent* e) {
    if (e->type() == QEvent::Polish)
        EndLoading();
    return QListWidget::event(e);
}

void TCustomListBox::resizeEvent(QResizeEvent* e) {
    QListWidget::resizeEvent(e);
    relayout();
}

void TCustomListBox::paintEvent(QPaintEvent* e) {
    m_painting = true;
    QListWidget::paintEvent(e);
    m_painting = false;
}

void TCustomListBox::changeEvent(QEvent* e) {
    if (e->type() == QEvent::PaletteChange)
        viewport()->update();
    QListWidget::changeEvent(e);
}

void TCustomListBox::syncRows() {
    const int want = m_items->Count();
    if (want == 0) {
        if (count() > 0)
            QListWidget::clear();
    } else {
        while (count() < want)
            addItem(new RowItem(this));
        while (count() > want)
            delete takeItem(count() - 1);
    }
    // Objects a paint attaches to its items change nothing on screen.
    if (!m_painting)
        viewport()->update();
}

QSize TCustomListBox::cellSize() const {
    const int w = viewport()->width();
    return {std::max(1, m_columns > 0 ? w / m_columns : w), m_itemHeight};
}

void TCustomListBox::relayout() {
    setWrapping(m_columns > 0);
    // Columns scroll sideways. The view keeps room for a sideways bar that comes and goes, so
    // a column would hold a row less than the client height; a bar that always shows keeps
    // the rows of a column at ClientHeight div ItemHeight.
    setHorizontalScrollBarPolicy(m_columns > 0 ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAsNeeded);
    // Qt's list view starts a new column once a row would reach the viewport's last pixel row,
    // so a client height of exactly n rows would hold only n - 1. The viewport reaches one pixel
    // under the sideways bar (not counted in ClientHeight) to hold the nth.
    setViewportMargins(0, 0, 0, m_columns > 0 ? -1 : 0);
    setGridSize(cellSize());
    viewport()->update();
}

void TCustomListBox::paintItem(QPainter* painter, const QRect& rect, int row, bool selected,
                               bool focused) {
    painter->save();
    painter->setClipRect(rect);
    m_canvas.SetPalette(palette());
    m_canvas.Pen = TPen{};
    m_canvas.Brush = TBrush{};
    m_canvas.Font.Assign(m_font);
    m_canvas.Brush.Color = selected ? clHighlight : m_color;
    if (selected)
        m_canvas.Font.SetColor(clHighlightText);
    m_canvas.Attach(painter, viewport()->rect());
    TOwnerDrawState state;
    if (selected)
        state.Include(odSelected);
    if (focused)
        state.Include(odFocused);
    if (!isEnabled())
        state.Include(odDisabled);
    const TRect r = TRect::FromQRect(rect);
    if (m_style == lbStandard)
        drawText(row, r);
    else
        DrawItem(row, r, state);
    m_canvas.Detach();
    if (focused) {
        QStyleOptionFocusRect o;
        o.initFrom(this);
        o.rect = rect;
        o.backgroundColor = m_canvas.ToQColor(m_canvas.Brush.Color);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &o, painter, this);
    }
    painter->restore();
}
