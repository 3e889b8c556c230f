#pragma once

#include "QXExport.h"

#include <QDateTime>
#include <QString>
#include <QtGlobal>
#include <memory>
#include <utility>
#include <vector>

// File attribute bits as the framework reports them, with their Linux meaning:
// read-only = the owner has no write permission; hidden = the name starts with "."; system =
// neither a regular file nor a directory (symbolic links, devices, pipes, sockets); directory =
// a real directory, never a link to one; archive = a regular file; compressed = the file
// system's compression flag. Volume labels do not occur as entries.
constexpr int faReadOnly = 0x01;
constexpr int faHidden = 0x02;
constexpr int faSysFile = 0x04;
constexpr int faVolumeID = 0x08;
constexpr int faDirectory = 0x10;
constexpr int faArchive = 0x20;
constexpr int faAnyFile = 0x3F;
constexpr int faCompressed = 0x800;

// FindFirst/FindNext results beside 0 (found), numbered as the Windows error codes.
constexpr int ERROR_FILE_NOT_FOUND = 2;
constexpr int ERROR_PATH_NOT_FOUND = 3;
constexpr int ERROR_NO_MORE_FILES = 18;

struct TFindState;

// One directory entry found by FindFirst/FindNext.
struct TSearchRec {
    int Time = 0;    // last write time as a DOS date-time (FileDateToDateTime converts it)
    qint64 Size = 0; // bytes of a regular file; 0 for everything else
    int Attr = 0;    // fa… bits
    QString Name;    // the name without directory
    // The fa… bits the search leaves out.
    int ExcludeAttr = 0;
    std::shared_ptr<TFindState>
        FindHandle; // the open search; released by FindClose or with the record
};

// A directory read once, its entries in the order FindFirst reports them. A walk that looks at a
// directory twice (for its subdirectories, then for its files) searches this one listing with
// FindFirst instead of reading the directory again.
//
// Example, the text files of a directory from one reading:
//
//     auto listing = std::make_shared<const TDirListing>(QStringLiteral("/home/me/Briefe"));
//     TSearchRec found;
//     for (int rc = FindFirst(listing, QStringLiteral("*.txt"), faAnyFile, found); rc == 0;
//          rc = FindNext(found))
//         qDebug() << found.Name << found.Size;
class QXT_EXPORT TDirListing {
public:
    // Reads the directory Dir; IsOpen() is false when it cannot be read.
    explicit TDirListing(const QString& Dir);
    ~TDirListing();
    TDirListing(const TDirListing&) = delete;
    TDirListing& operator=(const TDirListing&) = delete;

    // Whether the directory could be read.
    bool IsOpen() const { return m_dirFd >= 0; }
    // The number of entries.
    int Count() const { return int(m_entries.size()); }
    // The name of entry i, without directory.
    const QString& Name(int i) const { return m_entries[std::size_t(i)].name; }
    // Whether entry i is a directory now (never a link to one). Only entries that the listing
    // marks as directories, or leaves untyped, have their status read.
    bool IsDirectory(int i) const;
    // Whether the directory may have changed since it was read (an entry added, removed or
    // renamed, its permissions changed), so that a walk that wants what is there now must read
    // it again. One that changed within the clock tick of its reading (within two seconds on a
    // file system that keeps whole seconds) counts as changed: its time stamp could not show a
    // second change so close to the first. True for a listing that could not be read.
    bool Changed() const;

private:
    friend struct TFindState;
    struct Entry {
        QByteArray bytes;   // the name as the file system has it
        QString name;       // decoded
        unsigned char type; // DT_… of the listing
    };
    // The directory, kept open so that entries are looked at relative to it.
    int m_dirFd = -1;
    std::vector<Entry> m_entries;
    // The directory's change time when it was read, and whether that lay far enough before the
    // reading for any later change to show as a different time.
    qint64 m_ctimeSec = 0;
    quint32 m_ctimeNsec = 0;
    bool m_settled = false;
};

// Starts a search for Path = directory + mask and fills F with the first entry. The mask follows
// the Windows rules: case-blind, "*" any run, "?" one character (a run of "?" before a "." or at
// the end also matches fewer), "*.*" every name, "name.*" also "name" without extension.
// Entries carrying hidden, system or directory bits not asked for in Attr are passed over. The
// entries come in the order of their upper-cased names ("." and ".." first), as NTFS lists them,
// so walks are repeatable. Returns 0, ERROR_FILE_NOT_FOUND or ERROR_PATH_NOT_FOUND.
QXT_EXPORT int FindFirst(const QString& Path, int Attr, TSearchRec& F);
// The same search over a directory listed before: Mask (no directory) picks the entries, and
// ERROR_PATH_NOT_FOUND stands for a listing that could not be read.
QXT_EXPORT int FindFirst(std::shared_ptr<const TDirListing> Listing, const QString& Mask, int Attr,
                         TSearchRec& F);
// The directory that a search of Path (directory + mask) reads, "." for a bare mask, and the
// mask; FindFirst(Path, …) is FindFirst on a listing of that directory with that mask.
QXT_EXPORT std::pair<QString, QString> SplitSearchPath(const QString& Path);
// The next entry; ERROR_NO_MORE_FILES at the end.
QXT_EXPORT int FindNext(TSearchRec& F);
// Ends the search (also done when the record goes away).
QXT_EXPORT void FindClose(TSearchRec& F);
// Whether Name matches one mask under the rules FindFirst uses.
QXT_EXPORT bool MatchesMask(const QString& Name, const QString& Mask);

// The attributes of a file (a link is described itself, not its target); -1 when it is missing.
QXT_EXPORT int FileGetAttr(const QString& FileName);
// Sets the attributes that Linux can carry: faReadOnly removes the owner's write permission and
// its absence gives it back. Returns 0, or the system's error number.
QXT_EXPORT int FileSetAttr(const QString& FileName, int Attr);
// The last write time of a file as a DOS date-time (two-second steps, local time); -1 when the
// file is missing.
QXT_EXPORT int FileAge(const QString& FileName);
// The date and time of a DOS date-time; invalid for -1.
QXT_EXPORT QDateTime FileDateToDateTime(int FileDate);
