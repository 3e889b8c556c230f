#pragma once

// INI settings helpers: values, window placement, fonts, view styles.
//
// Every function opens the file named first, does one thing and closes it again; nothing is
// kept between calls. A file name without "/" names a file in the configuration directory
// (qxtWinDir). The rules of the file itself are those of TIniFile.
//
// Choices made where the behaviour was open:
// - qxtINIReadBool with a ";" in the value converts the text before the comment like
//   StrToBool: an integer (0 is false, any other is true) or "True"/"False" in any case; an
//   empty text gives Default (as the path without a comment does); anything else raises
//   EConvertError.
// - qxtINILoadFont keeps the font's current name, size and colour for missing keys; a missing
//   "_Style" key gives a plain font. Only the upper-case letters B, I, U and S count.
// - qxtStrToViewStyle compares exactly (case-sensitive); any other text, also "report",
//   gives vsSmallIcon. qxtINIReadViewStyle passes the default's text as the default value.
// - Window placement uses the form's frame position (x, y) and its client size (width,
//   height), which is what move() and resize() set again on loading. Moving the form marks
//   its position as chosen by the program, so the window system does not place it anew.

#include "QXExport.h"
#include "TFont.h"
#include "TForm.h"
#include "TStrings.h"

#include <QObject>
#include <QString>

// The enumerations are known to Qt's meta-object system so Designer offers their values.
namespace QxutilEnums {
Q_NAMESPACE_EXPORT(QXT_EXPORT)

// How much of a form's placement is saved.
enum TWinPosStyle { swpNone, swpPosition, swpSizePosition };
Q_ENUM_NS(TWinPosStyle)

// The list-view styles.
enum TViewStyle { vsIcon, vsSmallIcon, vsList, vsReport };
Q_ENUM_NS(TViewStyle)

} // namespace QxutilEnums

using TWinPosStyle = QxutilEnums::TWinPosStyle;
using enum QxutilEnums::TWinPosStyle;
using TViewStyle = QxutilEnums::TViewStyle;
using enum QxutilEnums::TViewStyle;

// Makes pending writes to the file durable.
QXT_EXPORT void qxtINIFlush(const QString& FileName);
// Whether the file holds the section.
QXT_EXPORT bool qxtINISectionExists(const QString& FileName, const QString& Section);
// Removes the section with all its keys.
QXT_EXPORT void qxtINIEraseSection(const QString& FileName, const QString& Section);
// The section names into List.
QXT_EXPORT void qxtINIReadSections(const QString& FileName, TStrings* List);
// The "key=value" lines of a section into List.
QXT_EXPORT void qxtINIReadSectionValues(const QString& FileName, const QString& Section,
                                        TStrings* List);
// The key names of a section into List.
QXT_EXPORT void qxtINIReadSection(const QString& FileName, const QString& Section, TStrings* List);
// Writes "1" or "0".
QXT_EXPORT void qxtINIWriteBool(const QString& FileName, const QString& Section, const QString& Key,
                                bool Value);
// A value holding ";" is read through the comment stripper, any other as an integer.
QXT_EXPORT bool qxtINIReadBool(const QString& FileName, const QString& Section, const QString& Key,
                               bool Default);
// Writes the number in decimal.
QXT_EXPORT void qxtINIWriteInteger(const QString& FileName, const QString& Section,
                                   const QString& Key, int Value);
// Strips a ";" comment; an empty value reads as 0; raises EConvertError for other text.
QXT_EXPORT int qxtINIReadInteger(const QString& FileName, const QString& Section,
                                 const QString& Key, int Default);
// Writes and reads a text as it stands; a missing key reads as Default.
QXT_EXPORT void qxtINIWriteString(const QString& FileName, const QString& Section,
                                  const QString& Key, const QString& Value);
QXT_EXPORT QString qxtINIReadString(const QString& FileName, const QString& Section,
                                    const QString& Key, const QString& Default);
// Restores the form to its normal state, then writes Key_Top and Key_Left (and Key_Height and
// Key_Width for swpSizePosition) in section "WinPos".
QXT_EXPORT void qxtINISaveWinPos(const QString& FileName, const QString& Key, TForm* Form,
                                 TWinPosStyle Style);
// Reads the keys qxtINISaveWinPos writes, the form's current values as defaults.
QXT_EXPORT void qxtINILoadWinPos(const QString& FileName, const QString& Key, TForm* Form,
                                 TWinPosStyle Style);
// Writes Key_Name, Key_Size (points), Key_Color and Key_Style ("B", "I", "U", "S" in that order).
QXT_EXPORT void qxtINISaveFont(const QString& FileName, const QString& Section, const QString& Key,
                               TFont* Font);
// Reads the keys qxtINISaveFont writes into Font.
QXT_EXPORT void qxtINILoadFont(const QString& FileName, const QString& Section, const QString& Key,
                               TFont* Font);
// Writes and reads a view style by its name (qxtViewStyleToStr).
QXT_EXPORT void qxtINIWriteViewStyle(const QString& FileName, const QString& Section,
                                     const QString& Key, TViewStyle Style);
QXT_EXPORT TViewStyle qxtINIReadViewStyle(const QString& FileName, const QString& Section,
                                          const QString& Key, TViewStyle Default);
// "Icon", "SmallIcon", "List" or "Report".
QXT_EXPORT QString qxtViewStyleToStr(TViewStyle Style);
QXT_EXPORT TViewStyle qxtStrToViewStyle(const QString& S);
