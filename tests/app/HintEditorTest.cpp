#include "AppSupport.h"
#include "Dialogs.h"
#include "QXHintED.h"
#include "QXTools.h"
#include "TComponent.h"
#include "TestSupport.h"

#include <QApplication>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>
#include <gtest/gtest.h>

namespace {

// Answers the editor's form: checks what it was given, types newText and ends with result.
class FormAnswer {
public:
    FormAnswer(QString newText, int result) {
        m_previous = SetDialogHandler([this, newText, result](TDialogRequest& r) {
            ++calls;
            auto* dialog = qobject_cast<THintStringEditDialog*>(r.Form);
            if (r.Kind != dkForm || !dialog)
                return mrCancel;
            shownText = dialog->Memo->toPlainText();
            dialog->Memo->setPlainText(newText);
            counter = dialog->LineCounter->text();
            return result;
        });
    }
    ~FormAnswer() { SetDialogHandler(m_previous); }
    FormAnswer(const FormAnswer&) = delete;
    FormAnswer& operator=(const FormAnswer&) = delete;
    int calls = 0;
    QString shownText;
    QString counter;

private:
    TDialogHandler m_previous;
};

} // namespace

TEST(HintEditor, PreviewAndLineCountFollowTheMemo) {
    THintStringEditDialog dialog;
    EXPECT_EQ(dialog.LineCounter->text(), QStringLiteral("0 Lines"));
    dialog.Memo->setPlainText(QStringLiteral("Erste Zeile\nZweite Zeile\nDritte"));
    EXPECT_EQ(dialog.ShowPanel->text(), QStringLiteral("Erste Zeile\nZweite Zeile\nDritte"));
    EXPECT_EQ(dialog.LineCounter->text(), QStringLiteral("3 Lines"));
    dialog.Memo->setPlainText(QStringLiteral("Eine"));
    EXPECT_EQ(dialog.LineCounter->text(), QStringLiteral("1 Lines"));
    EXPECT_EQ(QXHintLineCount(QStringLiteral("a\n")), 1);
    EXPECT_EQ(QXHintLineCount(QStringLiteral("a\n\n")), 2);
    EXPECT_EQ(QXHintLineCount(QStringLiteral("\n")), 1);
    EXPECT_EQ(dialog.OkButton->text(), QStringLiteral("OK"));
    EXPECT_EQ(dialog.CancelButton->text(), QStringLiteral("Abbrechen"));

    dialog.Memo->setPlainText(QStringLiteral("Speichert die Datei.\nStrg+S"));
    dialog.show();
    EXPECT_TRUE(dialog.grab().save(apptest::artefact(QStringLiteral("hint-editor.png"))));
}

TEST(HintEditor, WritesBackOnlyOnOk) {
    QPushButton button;
    button.setToolTip(QStringLiteral("Alt"));
    THintProperty editor({&button}, "Hint");
    EXPECT_TRUE(editor.GetAttributes().Contains(paDialog));
    EXPECT_EQ(editor.GetValue(), QStringLiteral("Alt"));
    {
        FormAnswer answer(QStringLiteral("Neu\nzweite Zeile"), mrCancel);
        editor.Edit();
        EXPECT_EQ(answer.calls, 1);
        EXPECT_EQ(answer.shownText, QStringLiteral("Alt"));
        EXPECT_EQ(answer.counter, QStringLiteral("2 Lines"));
        EXPECT_EQ(button.toolTip(), QStringLiteral("Alt"));
    }
    {
        FormAnswer answer(QStringLiteral("Neu\nzweite Zeile"), mrOk);
        editor.Edit();
        EXPECT_EQ(button.toolTip(), QStringLiteral("Neu\nzweite Zeile"));
    }
    // The real modal run: the OK button ends it and the memo's text is taken.
    QTimer::singleShot(0, &button, []() {
        for (QWidget* w : QApplication::topLevelWidgets())
            if (auto* d = qobject_cast<THintStringEditDialog*>(w); d && d->isVisible()) {
                d->Memo->setPlainText(QStringLiteral("Vom Knopf"));
                d->OkButton->click();
            }
    });
    editor.Edit();
    EXPECT_EQ(button.toolTip(), QStringLiteral("Vom Knopf"));
    QTimer::singleShot(0, &button, []() {
        for (QWidget* w : QApplication::topLevelWidgets())
            if (auto* d = qobject_cast<THintStringEditDialog*>(w); d && d->isVisible()) {
                d->Memo->setPlainText(QStringLiteral("Verworfen"));
                d->CancelButton->click();
            }
    });
    editor.Edit();
    EXPECT_EQ(button.toolTip(), QStringLiteral("Vom Knopf"));
}

TEST(HintEditor, EveryControlsHintAndNonVisualComponents) {
    QPushButton first, second;
    THintProperty both({&first, &second}, "Hint");
    both.SetValue(QStringLiteral("Für beide"));
    EXPECT_EQ(first.toolTip(), QStringLiteral("Für beide"));
    EXPECT_EQ(second.toolTip(), QStringLiteral("Für beide"));
    TComponent plain;
    THintProperty component({&plain}, "Hint");
    component.SetValue(QStringLiteral("Ohne Fenster"));
    EXPECT_EQ(plain.property("Hint").toString(), QStringLiteral("Ohne Fenster"));
    EXPECT_EQ(component.GetValue(), QStringLiteral("Ohne Fenster"));
}

TEST(HintEditor, RegisteredForTheHintOfEveryControl) {
    TPaletteRegistry::Instance().Clear();
    QXHintED::Register();
    TControl control;
    const TEditorRegistration* reg =
        TPaletteRegistry::Instance().EditorFor(&control, QStringLiteral("Hint"));
    ASSERT_NE(reg, nullptr);
    EXPECT_EQ(reg->Editor.Name, QStringLiteral("THintProperty"));
    EXPECT_EQ(reg->ComponentClass, QStringLiteral("TControl"));
    // The central registration ends with the same row.
    TPaletteRegistry::Instance().Clear();
    QXTools::Register();
    const auto& rows = TPaletteRegistry::Instance().EditorCalls();
    ASSERT_FALSE(rows.isEmpty());
    EXPECT_EQ(rows.last().Editor.Name, QStringLiteral("THintProperty"));
    EXPECT_EQ(rows.last().PropertyName, QStringLiteral("Hint"));
}
