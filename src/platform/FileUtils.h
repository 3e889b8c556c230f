#pragma once

#include "QXExport.h"

#include <QChar>
#include <QString>

// The framework's file-name and file functions on Linux paths. Where Windows and POSIX differ,
// the Windows behaviour is kept: renaming never replaces an existing target, and read-only files
// (no owner write permission, see FileGetAttr) are neither deleted nor overwritten, even when
// the process could.

// The path separator.
constexpr QChar PathDelim{u'/'};

// The directory part of a file name with its trailing "/" ("" when there is none).
QXT_EXPORT QString ExtractFilePath(const QString& FileName);
// The name after the last "/".
QXT_EXPORT QString ExtractFileName(const QString& FileName);
// The extension of the name part with its dot ("" when there is none).
QXT_EXPORT QString ExtractFileExt(const QString& FileName);
// The absolute form of a name, "." and ".." resolved against the current directory (links are
// not followed).
QXT_EXPORT QString ExpandFileName(const QString& FileName);

// Whether the name exists and is not a directory.
QXT_EXPORT bool FileExists(const QString& FileName);
// Whether the name is a directory (following links).
QXT_EXPORT bool DirectoryExists(const QString& Dir);
// Creates the directory and all missing parents; true when it exists afterwards.
QXT_EXPORT bool ForceDirectories(const QString& Dir);
// Renames or moves a file or directory within one file system; fails when NewName exists.
QXT_EXPORT bool RenameFile(const QString& OldName, const QString& NewName);
// Deletes a file or link (never a link's target); fails for directories and read-only files.
QXT_EXPORT bool DeleteFile(const QString& FileName);
// Copies a file's contents, permissions and write time. Fails for a source that is not a
// regular file (after following links), when FailIfExists and the target exists, and when the
// target is read-only.
QXT_EXPORT bool CopyFile(const QString& ExistingFileName, const QString& NewFileName,
                         bool FailIfExists);
// Removes an empty directory.
QXT_EXPORT bool RemoveDir(const QString& Dir);
