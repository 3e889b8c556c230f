#pragma once

#include "QXExport.h"
#include "TForm.h"

class QFrame;
class QLabel;
class QPushButton;
class TQXGauge;

// The progress window of TQXCopy. From the top: the source and destination of the file being
// copied (names too long for their panel are shortened in the middle; the whole name is the
// panel's text and tooltip), the progress over the whole run (dfgCopy in Panel1), the progress
// within the current file (dfgFile in panFile, hidden when a run copies one file) and the
// cancel button. It is shown without blocking while a run lasts; the copy lets its events run
// after every block, so the button answers at once. The Escape key, the button and the close
// box ask "Kopiervorgang abbrechen ?", and a Yes sets the copy's cancel flag.
class QXT_EXPORT TfrmQXCopy : public TForm {
    Q_OBJECT
public:
    // The window with both gauges, titled "Kopiere Dateien...", modal to its parent if it has one.
    explicit TfrmQXCopy(QWidget* parent = nullptr);
    ~TfrmQXCopy() override;

    QLabel* Label1 = nullptr;       // "Quelle:"
    QLabel* Label2 = nullptr;       // "Ziel:"
    QLabel* panSource = nullptr;    // the source file
    QLabel* panDest = nullptr;      // the destination file
    QPushButton* Button1 = nullptr; // "Abbrechen"
    QFrame* Panel1 = nullptr;       // holds dfgCopy
    TQXGauge* dfgCopy = nullptr;    // progress over the run
    QFrame* panFile = nullptr;      // holds dfgFile
    TQXGauge* dfgFile = nullptr;    // progress within the file

    // Shows or hides the per-file gauge, fitting the window's height to what is shown.
    void ShowFileProgress(bool Value);
    // Escape (27) asks whether to cancel the copy.
    void FormKeyPress(QObject* Sender, char& Key);
    // The cancel button asks whether to cancel the copy.
    void Button1Click(QObject* Sender);

protected:
    // Escape goes to FormKeyPress; other keys as a form takes them.
    void keyPressEvent(QKeyEvent* e) override;
    // The close box asks as the cancel button does; the window stays until the run ends.
    void closeEvent(QCloseEvent* e) override;

private:
    void askCancel();
};
