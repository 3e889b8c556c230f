#include "TCustomComboBox.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <gtest/gtest.h>

namespace {

void press(QWidget* target, int key) {
    QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier);
    QApplication::sendEvent(target, &down);
}

// Remembers Loaded, which the box's own state cannot show.
class LoadingBox : public TCustomComboBox {
public:
    using TCustomComboBox::TCustomComboBox;
    int loaded = 0;

protected:
    void Loaded() override { ++loaded; }
};

} // namespace

TEST(ComboBox, SortedKeepsCaseBlindOrderOnlyWhileOn) {
    TCustomComboBox box;
    box.SetItems({QStringLiteral("beta"), QStringLiteral("Alpha"), QStringLiteral("gamma")});
    EXPECT_EQ(box.Items(), (QStringList{"beta", "Alpha", "gamma"}));
    box.SetItemIndex(0);
    box.SetSorted(true);
    EXPECT_EQ(box.Items(), (QStringList{"Alpha", "beta", "gamma"}));
    // The selected entry stays selected where sorting moved it.
    EXPECT_EQ(box.Text(), QStringLiteral("beta"));
    EXPECT_EQ(box.ItemIndex(), 1);
    EXPECT_EQ(box.AddItem(QStringLiteral("Delta")), 2);
    EXPECT_EQ(box.AddItem(QStringLiteral("ALPHA")), 1);
    box.SetSorted(false);
    EXPECT_EQ(box.AddItem(QStringLiteral("aaa")), 5);
    EXPECT_EQ(box.Items().last(), QStringLiteral("aaa"));

    // Typed text survives new entries; Clear empties both.
    box.SetItemIndex(-1);
    box.SetText(QStringLiteral("frei"));
    box.SetItems({QStringLiteral("x")});
    EXPECT_EQ(box.Text(), QStringLiteral("frei"));
    box.Clear();
    EXPECT_EQ(box.count(), 0);
    EXPECT_TRUE(box.Text().isEmpty());

    // Without an edit field the text can only name an entry.
    box.SetStyle(csDropDownList);
    box.SetItems({QStringLiteral("eins"), QStringLiteral("zwei")});
    box.SetText(QStringLiteral("zwei"));
    EXPECT_EQ(box.ItemIndex(), 1);
    box.SetText(QStringLiteral("drei"));
    EXPECT_EQ(box.ItemIndex(), -1);
}

TEST(ComboBox, ChangeRunsForTheUserOnly) {
    TCustomComboBox box;
    box.SetItems({QStringLiteral("eins"), QStringLiteral("zwei"), QStringLiteral("drei")});
    int changes = 0;
    box.OnChange = [&](QObject* sender) {
        EXPECT_EQ(sender, &box);
        ++changes;
    };
    box.SetItemIndex(0);
    box.SetText(QStringLiteral("vier"));
    EXPECT_EQ(changes, 0);
    box.SetItemIndex(0);
    press(&box, Qt::Key_Down);
    EXPECT_EQ(box.Text(), QStringLiteral("zwei"));
    EXPECT_EQ(changes, 1);
    box.lineEdit()->textEdited(QStringLiteral("getippt"));
    EXPECT_EQ(changes, 2);

    // A style change makes a new edit field, which is followed as well.
    box.SetStyle(csDropDownList);
    box.SetStyle(csDropDown);
    box.lineEdit()->textEdited(QStringLiteral("neu"));
    EXPECT_EQ(changes, 3);
    // So is one made by Qt's own setter, once it is polished.
    box.setEditable(false);
    box.setEditable(true);
    box.show();
    box.lineEdit()->textEdited(QStringLiteral("auch"));
    EXPECT_EQ(changes, 4);
}

TEST(ComboBox, KeyDownMaySwallowOrChangeTheKey) {
    TCustomComboBox box;
    box.SetItems({QStringLiteral("eins"), QStringLiteral("zwei"), QStringLiteral("drei")});
    box.SetItemIndex(1);
    int seen = 0;
    box.OnKeyDown = [&](QObject*, int& key, Qt::KeyboardModifiers) {
        seen = key;
        if (key == Qt::Key_Down)
            key = 0;
        else if (key == Qt::Key_A)
            key = Qt::Key_Up;
    };
    press(&box, Qt::Key_Down);
    EXPECT_EQ(seen, int(Qt::Key_Down));
    EXPECT_EQ(box.ItemIndex(), 1);
    // The box acts on the key the handler put in place.
    press(&box, Qt::Key_A);
    EXPECT_EQ(seen, int(Qt::Key_A));
    EXPECT_EQ(box.ItemIndex(), 0);
}

TEST(ComboBox, LoadingEndsWhenFirstShown) {
    QWidget form;
    auto* box = new LoadingBox(&form);
    box->ensurePolished();
    EXPECT_EQ(box->loaded, 0);
    EXPECT_TRUE(box->ComponentState().Contains(csLoading));
    form.show();
    EXPECT_EQ(box->loaded, 1);
    EXPECT_FALSE(box->ComponentState().Contains(csLoading));
    box->hide();
    box->show();
    EXPECT_EQ(box->loaded, 1);
}
