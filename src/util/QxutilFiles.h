#pragma once

// File, directory, path, drive and volume functions.
//
// Paths use "/" and a terminated path ends in "/". Attributes, drives and folders have the Linux
// meanings of FindFile.h and Drives.h: a drive is a mount point, and its root is the mount point
// itself ("/" for the root file system).

#include "FindFile.h"
#include "QXExport.h"
#include "QXU_File.h"
#include "TStrings.h"

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QtGlobal>

// ---- Search entries and files --------------------------------------------------------------

// A directory entry other than "." and "..", with the directory bit set and attributes not
// exactly faVolumeID.
QXT_EXPORT bool qxtIsDirectory(const TSearchRec& SearchRec);
// An entry other than "." and ".." without the directory bit: files, links, devices.
QXT_EXPORT bool qxtIsFile(const TSearchRec& SearchRec);
// An entry other than "." and ".." that the file system keeps compressed.
QXT_EXPORT bool qxtIsCompressed(const TSearchRec& SearchRec);
// Whether all bits of Attr are set in FileGetAttr(FileName). A missing file reads as -1, which
// carries every bit.
QXT_EXPORT bool qxtHasAttr(const QString& FileName, quint16 Attr);
// The file's last write time in two-second steps (FileAge); invalid when the file is missing.
QXT_EXPORT QDateTime qxtFileDateTime(const QString& FileName);

// ---- Well-known folders --------------------------------------------------------------------

// The configuration directory ($XDG_CONFIG_HOME, else ~/.config/), where bare INI file names
// live; ends in "/".
QXT_EXPORT QString qxtWinDir();
// The system library directory "/usr/lib/".
QXT_EXPORT QString qxtSysDir();
// The directory for temporary files, ending in "/".
QXT_EXPORT QString qxtTMPDir();

// The folder of a shell folder number (CSIDL) as a terminated path, through its XDG twin:
// 0 and 16 desktop, 2 and 11 the applications menu, 5 documents, 7 autostart, 13 music,
// 14 videos, 20 fonts, 26 data (~/.local/share), 32 cache, 39 pictures, 40 home. A number
// without an XDG twin (favourites 6, recent 8, send-to 9, …) gives "".
QXT_EXPORT QString qxtGetSpecialFolderDir(int Folder);
// The folders of qxtGetSpecialFolderDir by name.
QXT_EXPORT QString qxtDesktopDir();
QXT_EXPORT QString qxtProgrammsDir();
QXT_EXPORT QString qxtPersonalDir();
QXT_EXPORT QString qxtFavoritesDir();
QXT_EXPORT QString qxtStartUpDir();
QXT_EXPORT QString qxtRecentDir();
QXT_EXPORT QString qxtSendToDir();
QXT_EXPORT QString qxtStartMenuDir();
QXT_EXPORT QString qxtFontDir();
QXT_EXPORT QString qxtAppDataDir();
QXT_EXPORT QString qxtInternetCacheDir();

// ---- Moving, copying and deleting ----------------------------------------------------------

// Renames Source to Dest; when that fails (Dest exists, another file system, missing
// directory) and Source is not read-only, creates Dest's directory, copies over Dest and
// deletes Source.
QXT_EXPORT bool qxtMoveFile(const QString& Source, const QString& Dest);
// Renames the directory; when that fails, moves its files (not its subdirectories) into Dest
// one by one and removes Source, false when Source cannot be removed.
QXT_EXPORT bool qxtMoveDir(QString Source, QString Dest);
// Copies the files of Source (not its subdirectories) into Dest, created with its parents when
// missing; false when Source is no directory or any copy fails.
QXT_EXPORT bool qxtCopyDir(QString Source, QString Dest);
// Deletes a directory tree, read-only files included; links inside are deleted, never what they
// point to. A path shorter than 5 characters or naming a drive root is warned about but
// processed all the same; a drive root is emptied and kept. Failures are shown and make the
// result false; the work goes on after them.
QXT_EXPORT bool qxtKillPath(const QString& Path);
// Replaces DestDir/FileName at the next login: copies SourceDir/FileName to DestDir/NAME.NEW
// (NAME being FileName's name without directory and extension) and records the rename in
// section "rename" of WININIT.INI in qxtWinDir() (key: the file to replace, value: the .NEW
// file). A run-once autostart entry calls "qxtool winstart" at the next login, which carries
// the renames out through qxtProcessPendingRenames. False when the copy fails.
QXT_EXPORT bool qxtInstallFileOnWinStart(const QString& SourceDir, const QString& DestDir,
                                         const QString& FileName);
// Carries out the renames qxtInstallFileOnWinStart recorded: each value replaces its key's file
// (a key "NUL" deletes the value's file). Done entries leave the section, failed ones stay for
// the next run; the names of the failed keys come back in Failed. Returns how many were done.
QXT_EXPORT int qxtProcessPendingRenames(QStringList* Failed = nullptr);
// Copies Source to Dest, expanding a file compressed with the SZDD method of COMPRESS.EXE and
// copying any other file as it is, under the hourglass cursor. Returns the size of Dest; raises
// Exception "Error using LZCopy" when reading, expanding or writing fails.
QXT_EXPORT qint64 qxtLZCopyFile(const QString& Source, const QString& Dest);

// ---- Searching and counting ----------------------------------------------------------------

// Whether Name matches one of the ";"-separated Patterns, compared case-sensitively. Two stars
// test whether the text between them occurs in Name ("*.*" matches every name with a dot); a
// single star only works first or last in a pattern ("*" and "*x" match every name); "?"
// matches any character, and a pattern longer than Name matches when Name is a matching prefix
// of it.
QXT_EXPORT bool qxtIsMatch(const QString& Name, const QString& Patterns);
// The next free name of a numbered series: Pattern is a full file name whose name part holds
// one run of at most 10 "#" ("/scans/SCAN###.BMP"). Gives the highest existing number plus one
// ("SCAN013.BMP" after "SCAN012.BMP"), the highest name itself when the next number would not
// fit, and zeros ("SCAN000.BMP") when there is none. Files whose counter characters are not all
// digits are not part of the series and are passed over. A pattern without "#" (or with more
// than 10) shows "Fehler in Filepattern" and gives "".
QXT_EXPORT QString qxtGetNextFileName(const QString& Pattern);
// The size of one file (0 when it is missing); with "*" or "?" in FileName the total of the
// matching files, and with Recursive also of the matching files in all subdirectories.
QXT_EXPORT qint64 qxtGetFileSize(const QString& FileName, bool Recursive);

// The counters walk Dir (and with Recursive every subdirectory, hidden ones included; links are
// never followed) and count the files whose names match Mask under FindFirst's rules. A "file" is
// every entry that is not a directory, links included.

// The number of matching files.
QXT_EXPORT int qxtFileCount(const QString& Dir, const QString& Mask, bool Recursive);
// The number of matching files that carry all the attribute bits Attr (faReadOnly, faHidden,
// …; 0 counts every file).
QXT_EXPORT int qxtFileCount2(const QString& Dir, const QString& Mask, bool Recursive, int Attr);
// As qxtFileCount2, but stops once MaxCount files have been counted (0 or less: no limit), so a
// question like "at least ten?" does not walk a whole tree.
QXT_EXPORT int qxtFileCount3(const QString& Dir, const QString& Mask, bool Recursive, int Attr,
                             int MaxCount);
// Whether at least one file matches; stops at the first.
QXT_EXPORT bool qxtFilesExists(const QString& Dir, const QString& Mask, bool Recursive);
// Appends the full names of the matching files to List, a directory's own files (in FindFirst's
// order) before those of its subdirectories; returns how many were added.
QXT_EXPORT int qxtGetFiles(TStringList* List, const QString& Dir, const QString& Mask,
                           bool Recursive);

// ---- Drives and volumes --------------------------------------------------------------------

// The drive holding Path: its mount point, terminated ("" when none is found).
QXT_EXPORT QString qxtFindDrive(const QString& Path);
// The first CD-ROM drive at or after the drive First, where 'A' is the first drive of
// qxtGetLogicalDrivesString(false), 'B' the second and so on; its root, or "" when there is
// none.
QXT_EXPORT QString qxtFindCDROM(char First);
// The drive roots, separated by ";", in mount order. Without All only drives are listed: no
// pseudo file systems and nothing below /proc, /sys, /dev or /run; with All every mount point.
QXT_EXPORT QString qxtGetLogicalDrivesString(bool All);
// The label of the file system holding Drive (any path on it), from /dev/disk/by-label; "" when
// it has none.
QXT_EXPORT QString qxtVolumeName(const QString& Drive);
// For a network file system, what is mounted ("//server/share", "server:/export"); "" for
// local ones.
QXT_EXPORT QString qxtNetworkVolumeName(const QString& Drive);
// The serial number of qxtVolumeSerNum2 written as Windows shows it, "1A2B-3C4D"; "" when Drive
// does not exist.
QXT_EXPORT QString qxtVolumeSerNum(const QString& Drive);
// The 32-bit serial number of the file system holding Drive: the last eight hex digits of its
// UUID (for FAT and NTFS the serial Windows shows), or the kernel's file-system id when it has no
// UUID; 0 when Drive does not exist.
QXT_EXPORT quint32 qxtVolumeSerNum2(const QString& Drive);
