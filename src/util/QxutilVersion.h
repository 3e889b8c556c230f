#pragma once

// Version information and resources of files.
//
// Version information is read from the version resource of Windows executables and DLLs
// (PE32 and PE32+), on any platform; other files, ELF programs included, have none. Icons come
// from the icon groups of the same files.

#include "QXExport.h"

#include <QImage>
#include <QString>
#include <QStringList>

class QPlainTextEdit;
class QTextEdit;

// The ten texts of a version resource, in the order of its keys: "\CompanyName",
// "\FileDescription", "\FileVersion", "\InternalName", "\LegalCopyright", "\LegalTradeMarks",
// "\OriginalFileName", "\ProductName", "\ProductVersion", "\Comments". A text the file does
// not hold stays empty.
struct QXT_EXPORT TVersionType {
    // "\CompanyName".
    QString CompanyName;
    // "\FileDescription".
    QString FileDescription;
    // "\FileVersion".
    QString FileVersion;
    // "\InternalName".
    QString InternalName;
    // "\LegalCopyright".
    QString LegalCopyright;
    // "\LegalTradeMarks".
    QString LegalTradeMarks;
    // "\OriginalFileName".
    QString OriginalFileName;
    // "\ProductName".
    QString ProductName;
    // "\ProductVersion".
    QString ProductVersion;
    // "\Comments".
    QString Comments;
    // Equal when all ten texts are.
    bool operator==(const TVersionType&) const = default;
};

// The version texts of the string table of the file's first translation; all empty when the
// file has no version resource or no translation table.
QXT_EXPORT TVersionType qxtGetFileVersionsInfo(const QString& FileName);

// The German listing of the file's version information, one entry a line with its label
// right-aligned to 20 characters: the file name, the non-empty texts, size and date (or
// "Fehler : Datei nicht gefunden"). These are the lines qxtFileVersionsInfoToMemo appends.
QXT_EXPORT QStringList qxtFileVersionsInfoLines(const QString& FileName);

// Appends the listing to a memo, one paragraph a line.
QXT_EXPORT void qxtFileVersionsInfoToMemo(const QString& FileName, QPlainTextEdit* Memo);
QXT_EXPORT void qxtFileVersionsInfoToMemo(const QString& FileName, QTextEdit* Memo);

// The file's product version (deliberately not its file version).
QXT_EXPORT QString qxtGetFileVersion(const QString& FileName);

// The running program's product version up to its last "." (3.0 gives 3; a version without a
// dot gives ""). The running program's record comes from QCoreApplication: organisation as
// company, application name as description, internal and product name, application version
// as file and product version, the executable's name as original file name. Without a
// QCoreApplication the record cannot be read and the result is "Version-ERROR".
QXT_EXPORT QString qxtGetAppVersion();

// A version text as sixteen hexadecimal digits, four per part, parts in order and no
// separators: of the text only digits and dots count; a text with exactly one dot is read
// as a number, formatted "00.00" and put behind "01.00."; up to four dot-separated parts
// follow, a missing or empty part counting as 0 ("1.2.0.7" gives 0001000200000007). A part
// above 65535 takes more digits. Raises EConvertError for a part beyond the integer range and
// for a lone dot, as the conversions it uses do.
QXT_EXPORT QString qxtGetHexFileVersion(const QString& Version);

// Library resources are the Qt resources under ":/qxtools/": a resource of type Type and name
// Name is the file ":/qxtools/Type/Name" (an empty type: ":/qxtools/Name"); both names are
// compared case-blind, as resource names are.

// True when the library holds the resource.
QXT_EXPORT bool qxtResExists(const QString& ResName, const QString& ResType);

// Writes the resource to FileName, replacing the file. A missing resource shows "Ressource
// nicht gefunden", a target that exists and cannot be deleted shows "Datei " + FileName +
// " ist in Benutzung und kann nicht aktualisiert werden"; both return false, as does a
// target that cannot be written (without a message).
QXT_EXPORT bool qxtExtractRes(const QString& ResName, const QString& ResType,
                              const QString& FileName);

// An image of the file's first icon group: the one closest to 32 pixels wide when LargeIcon
// is true, to 16 when false (the deeper colour wins a tie). A null image when the file has no
// icon.
QXT_EXPORT QImage qxtGetFileIcon(const QString& FileName, bool LargeIcon);

// The number of icons (icon groups) of the file; 0 for a file without icons or a missing file.
QXT_EXPORT int qxtGetIconCount(const QString& FileName);
