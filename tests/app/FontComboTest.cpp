#include "AppSupport.h"
#include "QXDesign.h"
#include "Qxfntcbo.h"
#include "TComponent.h"

#include <QAbstractItemView>
#include <QFontDatabase>
#include <QLabel>
#include <QTest>
#include <gtest/gtest.h>
#include <memory>

namespace {

// A bitmap font of one glyph: the one non-scalable family the tests can count on.
const char bitmapFont[] = "STARTFONT 2.1\n"
                          "FONT -qx-Kastenschrift-medium-r-normal--8-80-75-75-c-8-iso10646-1\n"
                          "SIZE 8 75 75\n"
                          "FONTBOUNDINGBOX 8 8 0 0\n"
                          "STARTPROPERTIES 4\n"
                          "FAMILY_NAME \"Kastenschrift\"\n"
                          "SPACING \"C\"\n"
                          "FONT_ASCENT 8\n"
                          "FONT_DESCENT 0\n"
                          "ENDPROPERTIES\n"
                          "CHARS 1\n"
                          "STARTCHAR A\n"
                          "ENCODING 65\n"
                          "SWIDTH 1000 0\n"
                          "DWIDTH 8 0\n"
                          "BBX 8 8 0 0\n"
                          "BITMAP\nFF\n81\n81\n81\n81\n81\n81\nFF\n"
                          "ENDCHAR\n"
                          "ENDFONT\n";

const QString sans = QStringLiteral("DejaVu Sans");
const QString sansMono = QStringLiteral("DejaVu Sans Mono");
const QString liberationMono = QStringLiteral("Liberation Mono");
const QString symbol = QStringLiteral("OpenSymbol");
const QString bitmap = QStringLiteral("Kastenschrift");

// The fonts the test setup installs (fonts-dejavu-core, fonts-liberation2, fonts-opensymbol)
// plus the bitmap font above.
class FontCombo : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        static const int id = QFontDatabase::addApplicationFontFromData(QByteArray(bitmapFont));
        ASSERT_GE(id, 0) << "the bitmap test font did not load";
    }
    void SetUp() override {
        for (const QString& family : {sans, sansMono, liberationMono, symbol, bitmap})
            ASSERT_TRUE(QFontDatabase::families().contains(family))
                << qPrintable(family) << " is not installed";
    }
    // A combo that has finished loading, under a form so that keys reach it.
    TQXFontCombo* loadedCombo() {
        auto* combo = new TQXFontCombo(&form);
        combo->EndLoading();
        return combo;
    }
    QWidget form;
};

QStringList fontsOf(TQXFontCombo& combo) {
    return combo.Fonts()->ToStringList();
}

} // namespace

TEST_F(FontCombo, TheListShowsEveryFamilyWhateverTheFilter) {
    TQXFontCombo combo(&form);
    EXPECT_EQ(combo.count(), 0);
    combo.SetCharSet(SYMBOL);
    combo.SetPitch(piFIXED);
    combo.SetTrueTypeOnly(true);
    combo.EndLoading();
    EXPECT_EQ(combo.count(), QFontDatabase::families().size());
    const QStringList items = combo.Items();
    for (const QString& family : {sans, sansMono, liberationMono, symbol, bitmap})
        EXPECT_TRUE(items.contains(family)) << qPrintable(family);
    for (int i = 1; i < items.size(); ++i)
        EXPECT_LE(items[i - 1].compare(items[i], Qt::CaseInsensitive), 0) << i;
    // Sorted only once: a later addition goes to the end.
    EXPECT_FALSE(combo.Sorted());
    EXPECT_EQ(combo.AddItem(QStringLiteral("AAA")), items.size());
    // No fixed-pitch symbol font exists, so the filtered list is empty.
    EXPECT_TRUE(fontsOf(combo).isEmpty());
}

TEST_F(FontCombo, FiltersFollowTheFontDatabase) {
    TQXFontCombo combo(&form);
    const QStringList all = fontsOf(combo);
    EXPECT_EQ(all.size(), QFontDatabase::families().size());

    combo.SetCharSet(ANSI);
    QStringList fonts = fontsOf(combo);
    EXPECT_TRUE(fonts.contains(sans));
    EXPECT_TRUE(fonts.contains(liberationMono));
    EXPECT_FALSE(fonts.contains(symbol));

    combo.SetCharSet(SYMBOL);
    fonts = fontsOf(combo);
    EXPECT_TRUE(fonts.contains(symbol));
    EXPECT_FALSE(fonts.contains(sans));
    EXPECT_FALSE(fonts.contains(sansMono));

    combo.SetCharSet(OEM);
    EXPECT_TRUE(fontsOf(combo).isEmpty());

    combo.SetCharSet(ALL);
    combo.SetPitch(piFIXED);
    fonts = fontsOf(combo);
    EXPECT_TRUE(fonts.contains(sansMono));
    EXPECT_TRUE(fonts.contains(liberationMono));
    EXPECT_TRUE(fonts.contains(bitmap));
    EXPECT_FALSE(fonts.contains(sans));
    EXPECT_FALSE(fonts.contains(symbol));

    combo.SetPitch(piVARIABLE);
    fonts = fontsOf(combo);
    EXPECT_TRUE(fonts.contains(sans));
    EXPECT_TRUE(fonts.contains(symbol));
    EXPECT_FALSE(fonts.contains(sansMono));
    EXPECT_FALSE(fonts.contains(bitmap));
    // Every family is one or the other; a second read rebuilds rather than appends.
    EXPECT_EQ(fonts, fontsOf(combo));
    combo.SetPitch(piFIXED);
    EXPECT_EQ(fonts.size() + fontsOf(combo).size(), all.size());

    combo.SetPitch(piALL);
    combo.SetTrueTypeOnly(true);
    fonts = fontsOf(combo);
    EXPECT_FALSE(fonts.contains(bitmap));
    EXPECT_TRUE(fonts.contains(sans));
    EXPECT_TRUE(fonts.contains(symbol));
    EXPECT_EQ(fonts.size(), all.size() - 1);

    // The three together: fixed-pitch Latin outline fonts.
    combo.SetCharSet(ANSI);
    combo.SetPitch(piFIXED);
    fonts = fontsOf(combo);
    EXPECT_TRUE(fonts.contains(sansMono));
    EXPECT_TRUE(fonts.contains(liberationMono));
    EXPECT_FALSE(fonts.contains(bitmap));
    EXPECT_FALSE(fonts.contains(sans));
}

TEST_F(FontCombo, WhichSettersEmptyTheFilteredList) {
    TQXFontCombo combo(&form);
    TStrings* fonts = combo.Fonts();
    const int all = fonts->Count();
    ASSERT_GT(all, 0);
    combo.SetPitch(piFIXED);
    EXPECT_EQ(fonts->Count(), all);
    // The next read rebuilds it with the new pitch all the same.
    EXPECT_LT(combo.Fonts()->Count(), all);
    EXPECT_EQ(combo.Fonts(), fonts);
    combo.SetCharSet(ANSI);
    EXPECT_EQ(fonts->Count(), 0);
    combo.Fonts();
    EXPECT_GT(fonts->Count(), 0);
    combo.SetTrueTypeOnly(true);
    EXPECT_EQ(fonts->Count(), 0);
}

TEST_F(FontCombo, EveryComboSharesTheLatestFilter) {
    TQXFontCombo first(&form);
    first.SetCharSet(SYMBOL);
    EXPECT_FALSE(fontsOf(first).contains(sans));
    // A new combo sets the defaults for all of them.
    TQXFontCombo second(&form);
    EXPECT_EQ(first.CharSet(), SYMBOL);
    EXPECT_TRUE(fontsOf(first).contains(sans));
    second.SetPitch(piFIXED);
    const QStringList fonts = fontsOf(first);
    EXPECT_TRUE(fonts.contains(sansMono));
    EXPECT_FALSE(fonts.contains(sans));
    EXPECT_EQ(first.Pitch(), piALL);
}

TEST_F(FontCombo, SelFontIsMatchedRegardlessOfCase) {
    TQXFontCombo combo(&form);
    combo.SetSelFont(QStringLiteral("dejavu sans"));
    EXPECT_EQ(combo.ItemIndex(), -1);
    // The list is only filled when loading ends, and SelFont is then selected.
    combo.EndLoading();
    EXPECT_EQ(combo.Text(), sans);
    EXPECT_EQ(combo.SelFont(), QStringLiteral("dejavu sans"));
    combo.SetSelFont(QStringLiteral("LIBERATION MONO"));
    EXPECT_EQ(combo.Text(), liberationMono);
    // Equal names only: a prefix matches nothing and the selection stays.
    combo.SetSelFont(QStringLiteral("dejavu"));
    EXPECT_EQ(combo.Text(), liberationMono);
    combo.SetItemIndex(QStringLiteral("dejavu sans mono"));
    EXPECT_EQ(combo.Text(), sansMono);
    combo.SetItemIndex(QStringLiteral("Nirgendwo"));
    EXPECT_EQ(combo.Text(), sansMono);
}

TEST_F(FontCombo, EscapeReturnsToSelFont) {
    TQXFontCombo* combo = loadedCombo();
    combo->SetSelFont(sans);
    const int start = combo->ItemIndex();
    ASSERT_GE(start, 0);
    QTest::keyClick(combo, Qt::Key_Down);
    QTest::keyClick(combo, Qt::Key_Down);
    EXPECT_EQ(combo->ItemIndex(), start + 2);
    QTest::keyClick(combo, Qt::Key_Escape);
    EXPECT_EQ(combo->Text(), sans);

    // A handler that swallows Escape keeps the choice.
    combo->OnKeyDown = [](QObject*, int& key, Qt::KeyboardModifiers) {
        if (key == Qt::Key_Escape)
            key = 0;
    };
    QTest::keyClick(combo, Qt::Key_Down);
    QTest::keyClick(combo, Qt::Key_Escape);
    EXPECT_EQ(combo->ItemIndex(), start + 1);
}

TEST_F(FontCombo, ControlFollowsTheUsersChoice) {
    auto* label = new QLabel(QStringLiteral("Beispiel"), &form);
    QFont font = label->font();
    font.setFamily(liberationMono);
    label->setFont(font);
    TQXFontCombo* combo = loadedCombo();
    int changes = 0;
    QString familyInHandler;
    combo->OnChange = [&](QObject* sender) {
        EXPECT_EQ(sender, combo);
        familyInHandler = combo->Control() ? combo->Control()->font().family() : QString();
        ++changes;
    };
    combo->SetControl(label);
    EXPECT_EQ(combo->SelFont(), liberationMono);
    EXPECT_EQ(combo->Text(), liberationMono);

    QTest::keyClick(combo, Qt::Key_Down);
    EXPECT_EQ(changes, 1);
    EXPECT_NE(combo->Text(), liberationMono);
    EXPECT_EQ(label->font().family(), combo->Text());
    // The control has the new family before the handler runs.
    EXPECT_EQ(familyInHandler, combo->Text());
    EXPECT_EQ(label->font().pointSize(), font.pointSize());
    // Escape only goes back in the combo; the control keeps the choice.
    const QString chosen = combo->Text();
    QTest::keyClick(combo, Qt::Key_Escape);
    EXPECT_EQ(combo->Text(), liberationMono);
    EXPECT_EQ(label->font().family(), chosen);
    // What the program selects is not a user's choice.
    combo->SetSelFont(sans);
    EXPECT_EQ(label->font().family(), chosen);
    EXPECT_EQ(changes, 1);

    // A framework control follows through its own font, which keeps it in step.
    TControl control(&form);
    control.Font()->SetName(symbol);
    combo->SetControl(&control);
    EXPECT_EQ(combo->Text(), symbol);
    combo->SetSelFont(sans);
    QTest::keyClick(combo, Qt::Key_Up);
    EXPECT_EQ(control.Font()->Name(), combo->Text());
    EXPECT_EQ(control.font().family(), combo->Text());
    EXPECT_EQ(familyInHandler, combo->Text());

    // The control going away clears the reference; a later choice touches nothing.
    delete label;
    EXPECT_EQ(combo->Control(), &control);
    combo->SetControl(nullptr);
    auto* gone = new QLabel(&form);
    combo->SetControl(gone);
    delete gone;
    EXPECT_EQ(combo->Control(), nullptr);
    QTest::keyClick(combo, Qt::Key_Down);
    EXPECT_EQ(changes, 3);
    EXPECT_TRUE(familyInHandler.isEmpty());
}

TEST_F(FontCombo, ItemsInTheirOwnFaceOnlyWhenAskedFor) {
    TQXFontCombo* combo = loadedCombo();
    const int index = combo->findText(symbol);
    ASSERT_GE(index, 0);
    EXPECT_FALSE(combo->ShowFontFaces());
    EXPECT_FALSE(combo->itemData(index, Qt::FontRole).isValid());
    combo->SetShowFontFaces(true);
    for (int i = 0; i < combo->count(); ++i) {
        const QFont face = combo->itemData(i, Qt::FontRole).value<QFont>();
        EXPECT_EQ(face.family(), combo->itemText(i));
        EXPECT_EQ(face.pointSizeF(), combo->font().pointSizeF());
    }
    combo->SetShowFontFaces(false);
    EXPECT_FALSE(combo->itemData(index, Qt::FontRole).isValid());

    // Faces asked for before loading are given once the list is filled.
    TQXFontCombo early(&form);
    early.SetShowFontFaces(true);
    early.EndLoading();
    EXPECT_EQ(early.itemData(early.findText(sans), Qt::FontRole).value<QFont>().family(), sans);

    combo->SetShowFontFaces(true);
    combo->SetSelFont(sans);
    form.resize(300, 400);
    form.show();
    combo->showPopup();
    QAbstractItemView* view = combo->view();
    ASSERT_TRUE(view->isVisible());
    EXPECT_TRUE(view->window()->grab().save(apptest::artefact(QStringLiteral("font-combo.png"))));
    combo->hidePopup();
}

TEST_F(FontCombo, PublishedDefaultsAndRegistration) {
    TQXFontCombo combo;
    EXPECT_EQ(combo.About_QXTools(), QStringLiteral("15.11.96"));
    EXPECT_EQ(combo.CharSet(), ALL);
    EXPECT_EQ(combo.Pitch(), piALL);
    EXPECT_FALSE(combo.TrueTypeOnly());
    EXPECT_TRUE(combo.SelFont().isEmpty());
    EXPECT_EQ(combo.Control(), nullptr);
    EXPECT_EQ(combo.sizeHint().width(), 145);
    EXPECT_FALSE(combo.accessibleName().isEmpty());
    EXPECT_TRUE(combo.setProperty("CharSet", QStringLiteral("SYMBOL")));
    EXPECT_EQ(combo.CharSet(), SYMBOL);
    const QStringList fonts = combo.property("Fonts").toStringList();
    EXPECT_TRUE(fonts.contains(symbol));
    EXPECT_FALSE(fonts.contains(sans));

    TPaletteRegistry::Instance().Clear();
    Qxfntcbo::Register();
    const auto classes = TPaletteRegistry::Instance().ClassesOnPage(QStringLiteral("QX Tools"));
    ASSERT_EQ(classes.size(), 1);
    EXPECT_EQ(classes[0].Name, QStringLiteral("TQXFontCombo"));
    std::unique_ptr<QObject> made(classes[0].Create(nullptr));
    EXPECT_NE(qobject_cast<TQXFontCombo*>(made.get()), nullptr);
}
