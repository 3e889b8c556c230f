#include "TTabSet.h"

#include <QEvent>
#include <QFontMetrics>
#include <QStyleOptionTab>
#include <QStylePainter>
#include <algorithm>

namespace {

// The room the outline of an owner-drawn tab needs above its contents.
constexpr int ownerDrawHeight = 24;

} // namespace

TTabSet::TTabSet(QWidget* parent) : QTabBar(parent), m_tabs(std::make_unique<TStringList>()) {
    setShape(QTabBar::RoundedSouth);
    setDrawBase(true);
    setExpanding(false);
    setUsesScrollButtons(true);
    m_tabs->OnChange = [this](TStrings*) { syncTabs(); };
    m_font.OnChange = [this]() {
        setFont(m_font.ToQFont());
        update();
    };
    connect(this, &QTabBar::currentChanged, this, [this]() {
        if (!m_syncing)
            Click();
    });
}

TTabSet::~TTabSet() {
    m_tabs->OnChange = nullptr;
}

void TTabSet::SetTabs(TStrings* value) {
    m_tabs->Assign(value);
}

void TTabSet::SetTabIndex(int value) {
    setCurrentIndex(value >= 0 && value < count() ? value : -1);
}

void TTabSet::SetTabStyle(TTabStyle value) {
    m_tabStyle = value;
    // The tab sizes depend on the style; setting the icon size makes QTabBar measure again.
    setIconSize(iconSize());
}

void TTabSet::MeasureTab(int Index, int& TabWidth) {
    if (OnMeasureTab)
        OnMeasureTab(this, Index, TabWidth);
}

void TTabSet::DrawTab(TCanvas* TabCanvas, const TRect& R, int Index, bool Selected) {
    if (OnDrawTab)
        OnDrawTab(this, TabCanvas, R, Index, Selected);
}

void TTabSet::Click() {
    if (OnClick)
        OnClick(this);
}

int TTabSet::contentWidth(int index) const {
    int width = QFontMetrics(font()).horizontalAdvance(tabText(index));
    // QTabBar measures a tab while it adds it, before Tabs knows it.
    if (index < m_tabs->Count())
        const_cast<TTabSet*>(this)->MeasureTab(index, width);
    return width;
}

QSize TTabSet::tabSizeHint(int index) const {
    const QSize base = QTabBar::tabSizeHint(index);
    if (m_tabStyle != tsOwnerDraw)
        return base;
    const int textWidth = QFontMetrics(font()).horizontalAdvance(tabText(index));
    return {base.width() - textWidth + contentWidth(index),
            std::max(base.height(), ownerDrawHeight)};
}

void TTabSet::paintEvent(QPaintEvent* e) {
    if (m_tabStyle != tsOwnerDraw) {
        QTabBar::paintEvent(e);
        return;
    }
    QStylePainter painter(this);
    m_canvas.SetPalette(palette());
    m_canvas.Font.Assign(m_font);
    m_canvas.Brush.Color = clBtnFace;
    m_canvas.SetBkMode(TRANSPARENT);
    for (int i = 0; i < count(); ++i) {
        QStyleOptionTab option;
        initStyleOption(&option, i);
        option.text.clear();
        option.icon = QIcon();
        painter.drawControl(QStyle::CE_TabBarTabShape, option);
        const QRect tab = tabRect(i);
        const int width = contentWidth(i);
        const int left = tab.left() + (tab.width() - width) / 2;
        const int top = tab.top() + std::max(0, (tab.height() - ownerDrawHeight) / 2);
        m_canvas.Attach(&painter, rect());
        DrawTab(&m_canvas, Rect(left, top, left + width, tab.bottom() + 1), i, i == currentIndex());
        m_canvas.Detach();
    }
}

bool TTabSet::event(QEvent* e) {
    if (e->type() == QEvent::Polish)
        EndLoading();
    return QTabBar::event(e);
}

void TTabSet::syncTabs() {
    m_syncing = true;
    const int current = currentIndex();
    while (count() > m_tabs->Count())
        removeTab(count() - 1);
    while (count() < m_tabs->Count())
        addTab(QString());
    for (int i = 0; i < count(); ++i)
        setTabText(i, (*m_tabs)[i]);
    setCurrentIndex(current < count() ? current : count() - 1);
    m_syncing = false;
    // The objects (and with them the tab widths) may have changed with the same texts.
    setIconSize(iconSize());
}
