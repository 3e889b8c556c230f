#pragma once

// The about property editor and the about dialog.

#include "QXAboutString.h"
#include "QXDesign.h"
#include "QXExport.h"

#include <QDialog>
#include <QImage>
#include <memory>

class QLabel;
class QPushButton;
class QFrame;

// The about dialog: version, class name and revision date on a white card.
class QXT_EXPORT TfrmQXTVersion : public QDialog {
    Q_OBJECT
public:
    // Builds the dialog, 330 x 274 pixels, with its design texts.
    explicit TfrmQXTVersion(QWidget* parent = nullptr);
    ~TfrmQXTVersion() override;
    // The frame filling the dialog.
    QFrame* Panel1 = nullptr;
    // The white card holding the rest.
    QFrame* Panel = nullptr;
    // The package's picture.
    QLabel* imgProgramIcon = nullptr;
    // "QXTools V 3.0d".
    QLabel* lblQXTVersion = nullptr;
    // The class of the component edited.
    QLabel* lblClassName = nullptr;
    // "Stand : " and the version text.
    QLabel* lblStand = nullptr;
    // Closes the dialog.
    QPushButton* btnOKButton = nullptr;
};

// The package's own picture, drawn at the given size.
QXT_EXPORT QImage QXProgramPicture(int size);

// The editor of every TQXAboutString property: an ellipsis button that opens the about dialog.
class QXT_EXPORT TQXAboutProperty : public TStringProperty {
public:
    using TStringProperty::TStringProperty;
    // Exactly { paDialog }.
    TPropertyAttributes GetAttributes() const override;
    // Always "Klick me..", never the date.
    QString GetValue() const override;
    // Shows the about dialog modally for the selection's first component.
    void Edit() override;
    // The dialog Edit shows, filled in and not yet shown.
    std::unique_ptr<TfrmQXTVersion> CreateDialog() const;
};
