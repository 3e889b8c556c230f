#include "TCustomListBox.h"
#include "TTabSet.h"
#include "TestSupport.h"

#include <QCoreApplication>
#include <QImage>
#include <gtest/gtest.h>

namespace {

// A list box as the controls derive one.
class TListBox : public TCustomListBox {
public:
    using TCustomListBox::TCustomListBox;
};

} // namespace

TEST(ListBox, RowsFollowItemsAndRunDownTheColumns) {
    TListBox box;
    box.setFrameShape(QFrame::NoFrame);
    box.resize(200, 100);
    box.SetItemHeight(0);
    EXPECT_EQ(box.ItemHeight(), 1);
    box.SetItemHeight(20);
    box.SetColumns(-3);
    EXPECT_EQ(box.Columns(), 0);
    for (int i = 0; i < 8; ++i)
        box.Items()->Add(QStringLiteral("Bild %1").arg(i));
    EXPECT_EQ(box.count(), 8);
    box.show();
    EXPECT_EQ(box.ItemRect(1), Rect(0, 20, box.ClientWidth(), 40));

    box.SetColumns(2);
    // Two columns hold all eight: the rows of a column are what the client height holds.
    // The view lays out again, then drops the vertical bar.
    for (int round = 0; round < 10 && box.ClientWidth() != 200; ++round)
        QCoreApplication::processEvents();
    ASSERT_EQ(box.ClientWidth(), 200);
    const int cellWidth = box.ClientWidth() / 2;
    // The client height holds five rows; item 5 starts the second column.
    const int rows = box.ClientHeight() / 20;
    ASSERT_GE(rows, 2);
    EXPECT_EQ(box.ItemRect(rows - 1).Left, 0);
    EXPECT_EQ(box.ItemRect(rows - 1).Top, (rows - 1) * 20);
    EXPECT_EQ(box.ItemRect(rows).Left, cellWidth);
    EXPECT_EQ(box.ItemRect(rows).Top, 0);
    EXPECT_EQ(box.ItemRect(rows).Right - box.ItemRect(rows).Left, cellWidth);
    EXPECT_EQ(box.ItemAtPos(Point(cellWidth + 3, 25)), rows + 1);
    EXPECT_EQ(box.ItemRect(8), TRect{});

    box.SetItemIndex(3);
    box.Items()->Delete(0);
    EXPECT_EQ(box.count(), 7);
    box.SetItemIndex(99);
    EXPECT_EQ(box.ItemIndex(), -1);
    box.Clear();
    EXPECT_EQ(box.count(), 0);
}

TEST(ListBox, AClientHeightOfExactlyNRowsHoldsNRowsAColumn) {
    TListBox box;
    box.setFrameShape(QFrame::NoFrame);
    box.SetColumns(2);
    box.show();
    for (int i = 0; i < 6; ++i)
        box.Items()->Add(QStringLiteral("Bild %1").arg(i));
    // Sized so the client area is exactly three rows of 20 pixels high.
    box.resize(200, 60 + box.height() - box.ClientHeight());
    QCoreApplication::processEvents();
    ASSERT_EQ(box.ClientHeight(), 60);
    box.SetItemHeight(20);
    EXPECT_EQ(box.ItemRect(2), (TRect{0, 40, 100, 60}));
    EXPECT_EQ(box.ItemRect(3), (TRect{100, 0, 200, 20}));
}

TEST(ListBox, OwnerDrawingGetsEachVisibleItemWithItsState) {
    TListBox box;
    box.setFrameShape(QFrame::NoFrame);
    box.resize(120, 60);
    box.SetItemHeight(20);
    box.Items()->Add(QStringLiteral("a"));
    box.Items()->Add(QStringLiteral("b"));
    box.SetStyle(lbOwnerDrawFixed);
    box.SetItemIndex(1);
    QList<int> drawn;
    QList<bool> selected;
    box.OnDrawItem = [&](TCustomListBox* c, int index, const TRect& r, TOwnerDrawState state) {
        drawn << index;
        selected << state.Contains(odSelected);
        c->Canvas()->Brush.Color = index == 0 ? clRed : clBlue;
        c->Canvas()->FillRect(r);
        // The picture box caches thumbnails this way: it must not cost another paint.
        c->Items()->PutObject(index, c);
    };
    box.show();
    const QImage shot = box.grab().toImage();
    EXPECT_EQ(drawn, (QList<int>{0, 1}));
    EXPECT_EQ(selected, (QList<bool>{false, true}));
    EXPECT_EQ(qxtest::pixelBGR(shot, 60, 10), int(clRed));
    EXPECT_EQ(qxtest::pixelBGR(shot, 60, 30), int(clBlue));
    QCoreApplication::processEvents();
    drawn.clear();
    QCoreApplication::processEvents();
    EXPECT_TRUE(drawn.isEmpty());
}

TEST(TabSet, TabsFollowTheirTextsAndEveryChangeOfTheSelectionClicks) {
    TTabSet tabs;
    int clicks = 0;
    tabs.OnClick = [&](QObject*) { ++clicks; };
    tabs.Tabs()->Add(QStringLiteral("/"));
    tabs.Tabs()->Add(QStringLiteral("home"));
    tabs.Tabs()->Add(QStringLiteral("usb"));
    EXPECT_EQ(tabs.count(), 3);
    EXPECT_EQ(tabs.TabIndex(), 0);
    EXPECT_EQ(clicks, 0) << "filling the tabs is no click";
    tabs.SetTabIndex(2);
    EXPECT_EQ(clicks, 1);
    // A tab that does not exist cannot be selected: nothing changes.
    tabs.SetTabIndex(7);
    EXPECT_EQ(tabs.TabIndex(), 2);
    EXPECT_EQ(clicks, 1);
    tabs.Tabs()->Delete(2);
    EXPECT_EQ(tabs.count(), 2);
    EXPECT_EQ(tabs.TabIndex(), 1) << "the selection moves to the last tab left";
    tabs.Tabs()->Put(0, QStringLiteral("root"));
    EXPECT_EQ(tabs.tabText(0), QStringLiteral("root"));
    EXPECT_EQ(tabs.Tabs()->ToStringList(),
              (QStringList{QStringLiteral("root"), QStringLiteral("home")}));
}

TEST(TabSet, OwnerDrawnTabsAreAsWideAsMeasuredAndDrawnByTheHandler) {
    TTabSet tabs;
    tabs.Tabs()->Add(QStringLiteral("a"));
    tabs.Tabs()->Add(QStringLiteral("b"));
    const int plain = tabs.tabRect(0).width();
    tabs.OnMeasureTab = [](QObject*, int index, int& width) { width += index == 0 ? 40 : 0; };
    tabs.SetTabStyle(tsOwnerDraw);
    EXPECT_EQ(tabs.tabRect(0).width(), plain + 40);
    QList<int> drawn;
    QList<TRect> rects;
    tabs.OnDrawTab = [&](QObject*, TCanvas* canvas, const TRect& r, int index, bool selected) {
        drawn << index * 10 + (selected ? 1 : 0);
        rects << r;
        canvas->Brush.Color = clLime;
        canvas->FillRect(r);
    };
    tabs.resize(tabs.sizeHint());
    tabs.show();
    const QImage shot = tabs.grab().toImage();
    EXPECT_EQ(drawn, (QList<int>{1, 10}));
    ASSERT_EQ(rects.size(), 2);
    const TRect r = rects[0];
    EXPECT_EQ(qxtest::pixelBGR(shot, (r.Left + r.Right) / 2, (r.Top + r.Bottom) / 2), int(clLime));
    EXPECT_GE(r.Right - r.Left, 40);
    EXPECT_GT(tabs.tabRect(0).width(), tabs.tabRect(1).width());
}
