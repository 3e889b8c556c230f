#pragma once

#include "QXExport.h"

#include <QString>

// The path functions of the qxt library in a header of their own, for components that need them
// without the rest of Qxutil. Qxutil's file family includes this header; each function exists
// once. "/" is the separator, and a terminated path is one that ends in "/".

// The directory of the running program, terminated.
QXT_EXPORT QString qxtAppDir();
// Path with "/" appended unless it ends in one; "" stays "".
QXT_EXPORT QString qxtCheckPath(const QString& Path);
// The same as qxtCheckPath: "/" is the separator on both sides here.
QXT_EXPORT QString qxtCheckUnixPath(const QString& Path);
// The text before the last "/" that precedes the path's last character: "/a/b/" and "/a/b" both
// give "/a". A path without such a "/" gives "".
QXT_EXPORT QString qxtParentDir(const QString& Path);
// The name of the last directory, the text between the last two "/" ("/a/b/f.txt" and "/a/b/"
// both give "b"); "" when the path holds fewer than two.
QXT_EXPORT QString qxtDirName(const QString& Path);
// The name unchanged: Linux file systems have no short (8.3) names.
QXT_EXPORT QString qxtGetShortFileName(const QString& FileName);
// The canonical absolute name of an existing file (links, "." and ".." resolved); a name that
// does not exist is returned unchanged.
QXT_EXPORT QString qxtGetLongFileName(const QString& FileName);
// Path receives the directory part with its trailing "/"; of the file-name part, the text before
// its last "." goes to Name and the rest, dot included, to Ext. Without a "." in the file-name
// part, Name and Ext keep what they held.
QXT_EXPORT void qxtSplitFileName(const QString& FileName, QString& Path, QString& Name,
                                 QString& Ext);
