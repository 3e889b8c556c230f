#pragma once

#include "QXExport.h"
#include "TSet.h"

#include <QString>
#include <functional>

enum TMsgDlgType { mtWarning, mtError, mtInformation, mtConfirmation, mtCustom };
enum TMsgDlgBtn {
    mbYes,
    mbNo,
    mbOK,
    mbCancel,
    mbAbort,
    mbRetry,
    mbIgnore,
    mbAll,
    mbNoToAll,
    mbYesToAll,
    mbHelp
};
using TMsgDlgButtons = TSet<TMsgDlgBtn>;

// Modal results.
constexpr int mrNone = 0;
constexpr int mrOk = 1;
constexpr int mrCancel = 2;
constexpr int mrAbort = 3;
constexpr int mrRetry = 4;
constexpr int mrIgnore = 5;
constexpr int mrYes = 6;
constexpr int mrNo = 7;
constexpr int mrAll = 8;
constexpr int mrNoToAll = 9;
constexpr int mrYesToAll = 10;

enum TDialogKind { dkMessage, dkQuestion, dkSelectDirectory, dkOpenFile, dkForm };

class QDialog;

// One request to the dialog service. Path is in/out for the directory and file choosers.
//
// Example, a program without a screen that answers every question with No and logs messages:
//
//     SetDialogHandler([](TDialogRequest& request) {
//         if (request.Kind == dkQuestion)
//             return mrNo;
//         qWarning() << request.Text;
//         return mrOk;
//     });
struct TDialogRequest {
    // What is asked for: a message, a question, a chooser or a form.
    TDialogKind Kind = dkMessage;
    QString Text;    // message, or the chooser's caption
    QString Caption; // a message box's title; empty for the application's name
    // The message box's icon.
    TMsgDlgType Type = mtInformation;
    // The question's buttons.
    TMsgDlgButtons Buttons;
    QString Filter;          // file chooser: "Images (*.gif *.bmp)", or "Images|*.gif;*.bmp"
    QString Path;            // chooser: start directory in, the choice out
    QDialog* Form = nullptr; // dkForm: the form to show modally (a handler may fill it in)
};

// Answers a request with a modal result (mrOk/mrCancel for the choosers).
using TDialogHandler = std::function<int(TDialogRequest&)>;

// Replaces the dialog service (tests and programs without a screen); an empty handler
// restores the Qt dialogs. Returns the handler that was installed.
QXT_EXPORT TDialogHandler SetDialogHandler(TDialogHandler handler);

// Shows text with an OK button.
QXT_EXPORT void ShowMessage(const QString& text);
// Shows text in a message box titled Caption, with an OK button.
QXT_EXPORT void MessageBox(const QString& text, const QString& caption,
                           TMsgDlgType type = mtInformation);
// Asks a question; returns the modal result of the button chosen.
QXT_EXPORT int MessageDlg(const QString& text, TMsgDlgType type, TMsgDlgButtons buttons,
                          int helpContext = 0);
// Lets the user choose a directory; true and the choice in directory when one was chosen.
QXT_EXPORT bool SelectDirectory(const QString& caption, QString& directory);
// Shows a form of the program modally; returns its modal result (mrOk when accepted, mrCancel
// when rejected, or the result the form ended with).
QXT_EXPORT int ShowModalForm(QDialog* form);
// Lets the user choose an existing file; true and the choice in fileName when one was chosen.
QXT_EXPORT bool OpenFileDialog(const QString& caption, const QString& filter, QString& fileName);
// The framework's filter "Text|*.a;*.b|Text|*.*" as Qt writes it, "Text (*.a *.b);;Text (*)":
// a text that names its masks in parentheses shows the real ones instead, and "*.*" means
// every file, as it does there. A filter without "|" is taken as Qt's already.
QXT_EXPORT QString QtFileFilter(const QString& filter);
