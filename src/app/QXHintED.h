#pragma once

#include "QXDesign.h"
#include "QXExport.h"

#include <QDialog>

class QFrame;
class QLabel;
class QPlainTextEdit;
class QPushButton;

// The multi-line hint editor: Memo holds the hint, ShowPanel previews it as it is typed and
// LineCounter tells how many lines it has.
class QXT_EXPORT THintStringEditDialog : public QDialog {
    Q_OBJECT
public:
    // Builds the dialog with an empty memo.
    explicit THintStringEditDialog(QWidget* parent = nullptr);
    ~THintStringEditDialog() override;
    // The frame around the memo.
    QFrame* Bevel1 = nullptr;
    // The hint being edited, one line a line of the hint.
    QPlainTextEdit* Memo = nullptr;
    // "n Lines" under the memo.
    QLabel* LineCounter = nullptr;
    // The hint as it will show.
    QLabel* ShowPanel = nullptr;
    // Accepts the edited hint.
    QPushButton* OkButton = nullptr;
    // Leaves the hint as it was.
    QPushButton* CancelButton = nullptr;

public slots:
    // Copies the memo into the preview and shows "n Lines".
    void MemoChange();
};

// The editor of every control's Hint (a widget's tooltip): an ellipsis button that opens
// THintStringEditDialog and writes the text back only when the dialog ends with OK.
class QXT_EXPORT THintProperty : public TStringProperty {
public:
    using TStringProperty::TStringProperty;
    // The string editor's attributes plus paDialog.
    TPropertyAttributes GetAttributes() const override;
    // The hint of the selection's first component.
    QString GetValue() const override;
    // Sets the hint of every selected component.
    void SetValue(const QString& value) override;
    // Shows the editor (through the dialog service) with the current hint.
    void Edit() override;
};

// The number of lines a memo holding text shows as its Lines (a final line break opens none).
QXT_EXPORT int QXHintLineCount(const QString& text);

namespace QXHintED {
// Registers THintProperty for the Hint of every control.
QXT_EXPORT void Register();
} // namespace QXHintED
