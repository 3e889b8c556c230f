#include "Dialogs.h"

#include <QApplication>
#include <QDialog>
#include <QFileDialog>
#include <QMessageBox>

namespace {

TDialogHandler& installed() {
    static TDialogHandler handler;
    return handler;
}

struct ButtonMap {
    TMsgDlgBtn button;
    QMessageBox::StandardButton qt;
    int result;
};

constexpr ButtonMap buttonMap[] = {
    {mbYes, QMessageBox::Yes, mrYes},
    {mbNo, QMessageBox::No, mrNo},
    {mbOK, QMessageBox::Ok, mrOk},
    {mbCancel, QMessageBox::Cancel, mrCancel},
    {mbAbort, QMessageBox::Abort, mrAbort},
    {mbRetry, QMessageBox::Retry, mrRetry},
    {mbIgnore, QMessageBox::Ignore, mrIgnore},
    {mbAll, QMessageBox::YesToAll, mrAll},
    {mbNoToAll, QMessageBox::NoToAll, mrNoToAll},
    {mbYesToAll, QMessageBox::YesToAll, mrYesToAll},
    {mbHelp, QMessageBox::Help, mrNone},
};

int qtDialog(TDialogRequest& r) {
    switch (r.Kind) {
    case dkSelectDirectory: {
        const QString dir = QFileDialog::getExistingDirectory(nullptr, r.Text, r.Path);
        if (dir.isEmpty())
            return mrCancel;
        r.Path = dir;
        return mrOk;
    }
    case dkOpenFile: {
        const QString file =
            QFileDialog::getOpenFileName(nullptr, r.Text, r.Path, QtFileFilter(r.Filter));
        if (file.isEmpty())
            return mrCancel;
        r.Path = file;
        return mrOk;
    }
    case dkForm: {
        const int result = r.Form ? r.Form->exec() : mrCancel;
        return result == QDialog::Rejected ? mrCancel : result;
    }
    case dkMessage:
    case dkQuestion:
        break;
    }
    QMessageBox box;
    box.setWindowTitle(r.Caption.isEmpty() ? QApplication::applicationDisplayName() : r.Caption);
    box.setText(r.Text);
    switch (r.Type) {
    case mtWarning:
        box.setIcon(QMessageBox::Warning);
        break;
    case mtError:
        box.setIcon(QMessageBox::Critical);
        break;
    case mtInformation:
        box.setIcon(QMessageBox::Information);
        break;
    case mtConfirmation:
        box.setIcon(QMessageBox::Question);
        break;
    case mtCustom:
        break;
    }
    QMessageBox::StandardButtons buttons;
    for (const ButtonMap& m : buttonMap)
        if (r.Buttons.Contains(m.button))
            buttons |= m.qt;
    box.setStandardButtons(buttons ? buttons : QMessageBox::Ok);
    const int clicked = box.exec();
    for (const ButtonMap& m : buttonMap)
        if (clicked == m.qt && r.Buttons.Contains(m.button))
            return m.result;
    return r.Kind == dkMessage ? mrOk : mrCancel;
}

int dispatch(TDialogRequest& r) {
    const TDialogHandler& h = installed();
    return h ? h(r) : qtDialog(r);
}

} // namespace

TDialogHandler SetDialogHandler(TDialogHandler handler) {
    TDialogHandler previous = std::move(installed());
    installed() = std::move(handler);
    return previous;
}

void ShowMessage(const QString& text) {
    TDialogRequest r;
    r.Kind = dkMessage;
    r.Text = text;
    r.Buttons = {mbOK};
    dispatch(r);
}

void MessageBox(const QString& text, const QString& caption, TMsgDlgType type) {
    TDialogRequest r;
    r.Kind = dkMessage;
    r.Text = text;
    r.Caption = caption;
    r.Type = type;
    r.Buttons = {mbOK};
    dispatch(r);
}

int MessageDlg(const QString& text, TMsgDlgType type, TMsgDlgButtons buttons, int) {
    TDialogRequest r;
    r.Kind = dkQuestion;
    r.Text = text;
    r.Type = type;
    r.Buttons = buttons;
    return dispatch(r);
}

bool SelectDirectory(const QString& caption, QString& directory) {
    TDialogRequest r;
    r.Kind = dkSelectDirectory;
    r.Text = caption;
    r.Path = directory;
    if (dispatch(r) != mrOk)
        return false;
    directory = r.Path;
    return true;
}

bool OpenFileDialog(const QString& caption, const QString& filter, QString& fileName) {
    TDialogRequest r;
    r.Kind = dkOpenFile;
    r.Text = caption;
    r.Filter = filter;
    r.Path = fileName;
    if (dispatch(r) != mrOk)
        return false;
    fileName = r.Path;
    return true;
}

int ShowModalForm(QDialog* form) {
    TDialogRequest r;
    r.Kind = dkForm;
    r.Text = form ? form->windowTitle() : QString();
    r.Form = form;
    return dispatch(r);
}

QString QtFileFilter(const QString& filter) {
    if (!filter.contains(QLatin1Char('|')))
        return filter;
    const QStringList parts = filter.split(QLatin1Char('|'));
    QStringList out;
    for (int i = 0; i + 1 < parts.size(); i += 2) {
        QString text = parts[i].trimmed();
        const int open = int(text.lastIndexOf(QLatin1String(" (")));
        if (open >= 0 && text.endsWith(QLatin1Char(')')))
            text.truncate(open);
        QStringList masks = parts[i + 1].split(QLatin1Char(';'), Qt::SkipEmptyParts);
        for (QString& mask : masks)
            if (mask == QLatin1String("*.*"))
                mask = QStringLiteral("*");
        out << text + QStringLiteral(" (") + masks.join(QLatin1Char(' ')) + QLatin1Char(')');
    }
    return out.join(QStringLiteral(";;"));
}
