#pragma once

#include "QXAboutString.h"
#include "QXExport.h"
#include "QxutilSettings.h"
#include "TComponent.h"
#include "TFont.h"
#include "TForm.h"
#include "TStrings.h"

#include <QString>
#include <QTreeView>

// Keeps an application's settings in one INI file: typed values, lists, the owner form's
// window state and placement, fonts, the columns of a list view and view styles. Every
// operation opens the file, does its work and closes it again, so each call sees the file as
// it is on disk.
//
// A bare file name (no "/") lies beside the running program; any other name is used as given.
// The owner form is the window of the owner widget given to the constructor (none for an
// owner that is not a widget, and then the placement operations do nothing). A stored window
// state outside 0 to 2 restores the form to normal. A list view is a QTreeView whose header
// sections are the columns.
//
// Example:
//
//     TQXINI ini;
//     ini.SetINIFileName(QStringLiteral("Editor.INI"));
//     ini.INIWriteInteger(QStringLiteral("Editor"), QStringLiteral("Tabweite"), 4);
//     const int tab = ini.INIReadInteger(QStringLiteral("Editor"), QStringLiteral("Tabweite"), 8);
class QXT_EXPORT TQXINI : public TComponent, public TQXAboutCarrier {
    Q_OBJECT
    Q_PROPERTY(QString About_QXTools READ About_QXTools WRITE SetAbout_QXTools DESIGNABLE false)
    Q_PROPERTY(QString Caption READ Caption WRITE SetCaption)
    Q_PROPERTY(QString INIFileName READ INIFileName WRITE SetINIFileName)
    Q_PROPERTY(QxutilEnums::TWinPosStyle SaveWinPos READ SaveWinPos WRITE SetSaveWinPos)
    Q_PROPERTY(bool SaveLastRes READ SaveLastRes WRITE SetSaveLastRes)

public:
    // Uses "Default.INI" beside the program; the owner's window is the form (if it is a widget).
    explicit TQXINI(QObject* owner = nullptr);
    ~TQXINI() override;

    // The key prefix of the form's placement in section "WinPos"; empty means the Name.
    QString Caption() const { return m_caption; }
    void SetCaption(const QString& Value);
    // The file name as given ("Default.INI" for an empty name).
    QString INIFileName() const { return m_iniFileName; }
    void SetINIFileName(const QString& Value);
    // The full path every operation uses.
    QString GetINIFileName() const { return m_fullPath; }
    // How much of the form's placement ReadINI and WriteINI handle.
    TWinPosStyle SaveWinPos() const { return m_saveWinPos; }
    void SetSaveWinPos(TWinPosStyle Value) { m_saveWinPos = Value; }
    // Kept for the application; the component does nothing with it.
    bool SaveLastRes() const { return m_saveLastRes; }
    void SetSaveLastRes(bool Value) { m_saveLastRes = Value; }
    // The form whose placement ReadINI and WriteINI handle.
    TForm* Form() const { return m_form; }

    // Restores the form's placement, then fires OnReadINI.
    void ReadINI();
    // Saves the form's placement, then fires OnWriteINI.
    void WriteINI();

    // Writes Value as "1" or "0".
    void INIWriteBool(const QString& Section, const QString& Key, bool Value);
    // The value of Key in Section, or Default when it is missing.
    bool INIReadBool(const QString& Section, const QString& Key, bool Default);
    // Writes Value in decimal.
    void INIWriteInteger(const QString& Section, const QString& Key, int Value);
    // The value of Key in Section, or Default when it is missing or no number.
    int INIReadInteger(const QString& Section, const QString& Key, int Default);
    // Writes Value as it is.
    void INIWriteString(const QString& Section, const QString& Key, const QString& Value);
    // The value of Key in Section, or Default when it is missing.
    QString INIReadString(const QString& Section, const QString& Key, const QString& Default);
    // Fills Items with the values of keys "0" to "n" where n is "Anzahl" (missing: "Leer").
    void INIReadItems(const QString& Section, TStrings* Items);
    // The key names of a section.
    void INIReadSection(const QString& Section, TStrings* Items);
    // The "key=value" lines of a section.
    void INIReadSectionValues(const QString& Section, TStrings* Items);
    // Writes Prefix_WindowState, and the bounds only while the form is in its normal state.
    void INISaveWinPos(const QString& Prefix, TForm* Form, TWinPosStyle Style);
    // Sets the bounds, then the stored window state.
    void INILoadWinPos(const QString& Prefix, TForm* Form, TWinPosStyle Style);
    // Writes the font's name, size, colour and style under Prefix_Name, _Size, _Color and _Style.
    void INISaveFont(const QString& Section, const QString& Prefix, TFont* Font);
    // Reads what INISaveFont wrote; missing keys keep the font's values.
    void INILoadFont(const QString& Section, const QString& Prefix, TFont* Font);
    // Writes Prefix + "Colum_" + i = "caption|width" for every column.
    void INISaveColumns(const QString& Section, const QString& Prefix, QTreeView* View);
    // Sets the widths (and with Captions the captions) of the existing columns; a width that
    // is not a number raises EConvertError, the columns before it already set.
    void INILoadColumns(const QString& Section, const QString& Prefix, QTreeView* View,
                        bool Captions);
    // A list view's style stored under Key, or Default.
    TViewStyle INIReadViewStyle(const QString& Section, const QString& Key, TViewStyle Default);
    // Stores a list view's style under Key by name.
    void INIWriteViewStyle(const QString& Section, const QString& Key, TViewStyle Value);
    // Erases the section with all its keys.
    void KillSection(const QString& Section);

    // Fired at the end of ReadINI and WriteINI.
    TNotifyEvent OnReadINI;
    // Fired at the end of WriteINI.
    TNotifyEvent OnWriteINI;

signals:
    // Emitted together with OnReadINI and OnWriteINI.
    void iniRead();
    // Emitted with OnWriteINI.
    void iniWritten();

private:
    QString m_fullPath;
    TForm* m_form = nullptr;
    QString m_caption;
    TWinPosStyle m_saveWinPos = swpNone;
    bool m_saveLastRes = false;
    QString m_iniFileName;
};

namespace Qxini {
// Puts TQXINI on the "QX Tools" palette page.
QXT_EXPORT void Register();
} // namespace Qxini
