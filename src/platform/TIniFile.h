#pragma once

#include "QXExport.h"
#include "SysUtils.h"
#include "TStrings.h"

#include <QString>

// Raised when a write cannot replace the file ("Unable to write to FILE").
class QXT_EXPORT EIniFileException : public Exception {
public:
    // Carries message.
    using Exception::Exception;
};

// An INI file with the profile-file rules of the framework:
// - "[section]" lines open sections, "key=value" lines hold values; section and key names are
//   compared case-blind; names and values are trimmed of blanks and control characters;
// - the first of duplicate sections and the first of duplicate keys in it win;
// - lines starting with ";" are comments; comments, blank lines, lines before the first
//   section and lines without "=" are never values, and every write keeps them in place;
// - a missing or unreadable file reads as empty, so every read returns its default;
// - a name without "/" names a file in the configuration directory (qxtWinDir);
// - files are UTF-8 (a byte-order mark is skipped and kept); a file that uses "\r\n" keeps it.
//
// Nothing is cached: every read looks at the file as it is on disk, and every write reads the
// file, changes it and replaces it atomically (a temporary file in the same directory renamed
// over it) while holding an exclusive advisory lock on the file itself. A writer killed half-way
// thus leaves the old or the new file, writers in different processes never lose each other's
// keys, and no lock file is left behind. Missing directories of the file are created on the
// first write.
// Line breaks inside names and values would split the line, so they are written as blanks.
//
// Example, a window size kept between runs:
//
//     TIniFile ini(QStringLiteral("Editor.INI"));
//     const int width = ini.ReadInteger(QStringLiteral("Fenster"), QStringLiteral("Breite"), 640);
//     ini.WriteInteger(QStringLiteral("Fenster"), QStringLiteral("Breite"), window->width());
class QXT_EXPORT TIniFile {
public:
    // Works on fileName (a bare name lies in the configuration directory); opens nothing yet.
    explicit TIniFile(const QString& fileName);
    // The full path the object works on.
    QString FileName() const { return m_fileName; }

    // The trimmed value of Ident in Section, Default when the key is absent.
    QString ReadString(const QString& Section, const QString& Ident, const QString& Default) const;
    // Sets Ident in Section to Value, adding the section and key where missing.
    void WriteString(const QString& Section, const QString& Ident, const QString& Value);
    // Decimal, or hexadecimal with "0x" or "$"; Default for an absent, empty or bad value.
    int ReadInteger(const QString& Section, const QString& Ident, int Default) const;
    // Writes Value in decimal.
    void WriteInteger(const QString& Section, const QString& Ident, int Value);
    // An integer that is not 0; written as "1" or "0".
    bool ReadBool(const QString& Section, const QString& Ident, bool Default) const;
    // Writes "1" or "0".
    void WriteBool(const QString& Section, const QString& Ident, bool Value);
    // True when the key is present (even with an empty value).
    bool ValueExists(const QString& Section, const QString& Ident) const;

    // Replaces Strings with the key names of Section, each once, in file order.
    void ReadSection(const QString& Section, TStrings* Strings) const;
    // Replaces Strings with the section names, each once, in file order.
    void ReadSections(TStrings* Strings) const;
    // Replaces Strings with "key=value" for every key of Section.
    void ReadSectionValues(const QString& Section, TStrings* Strings) const;
    // True when the file has the section.
    bool SectionExists(const QString& Section) const;
    // Removes every section of that name with all its lines.
    void EraseSection(const QString& Section);
    // Removes the key (and its duplicates) from the section.
    void DeleteKey(const QString& Section, const QString& Ident);
    // Writes reach the file at once; this makes them durable (flushes the file to the disk).
    void UpdateFile();

private:
    QString m_fileName;
};
