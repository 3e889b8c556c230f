#pragma once

#include "QXExport.h"
#include "TComponent.h"
#include "TStrings.h"

#include <QString>
#include <QStringList>

// One directory of a TQXDirList: its path and the names of its files.
class QXT_EXPORT TDirInfo {
public:
    TDirInfo();
    ~TDirInfo();
    TDirInfo(const TDirInfo&) = delete;
    TDirInfo& operator=(const TDirInfo&) = delete;
    // The directory part of the file names, with its trailing "/".
    QString Path;
    // The file names without directory.
    TStringList Files;
};

// Turns a flat list of full file names into a sorted list of directories, each line the name
// of a directory's last component with its TDirInfo as the line's object. As the list has always
// been built, the walk stops one file short of the end: a single file yields no directory, and
// a last file that is alone in its directory (after sorting) is left out.
//
// Example, the files a search found counted per directory:
//
//     TQXDirList dirs;
//     dirs.SetFileListStrings(found);
//     dirs.Update();
//     for (int i = 0; i < dirs.DirList()->Count(); ++i)
//         qDebug() << dirs.DirList()->Strings(i) << dirs.GetFiles(i)->Count();
class QXT_EXPORT TQXDirList : public TComponent {
    Q_OBJECT
    Q_PROPERTY(QStringList FileList READ FileListStrings WRITE SetFileListStrings)
    Q_PROPERTY(QStringList DirList READ DirListStrings)
public:
    // Empty lists.
    explicit TQXDirList(QObject* owner = nullptr);
    // Frees the TDirInfo objects DirList still holds.
    ~TQXDirList() override;

    // The full file names (sorted in place by Update).
    TStringList* FileList() { return &m_fileList; }
    // Copies the lines of value into FileList.
    void SetFileList(TStringList* value);
    // The directories: sorted names, a TDirInfo owned by the list on each line. Names of
    // directories in different places may repeat.
    TStringList* DirList() { return &m_dirList; }
    // Frees every TDirInfo of DirList and clears it.
    void ClearDirList();
    // Rebuilds DirList from FileList; failures show "Fehler beim Updaten".
    void Update();
    // The file names of the directory on line Index of DirList.
    TStringList* GetFiles(int Index);

    // FileList and DirList as plain text lists, for forms and Designer.
    QStringList FileListStrings() const { return m_fileList.ToStringList(); }
    void SetFileListStrings(const QStringList& value) { m_fileList.SetStringList(value); }
    QStringList DirListStrings() const { return m_dirList.ToStringList(); }

private:
    TStringList m_fileList;
    TStringList m_dirList;
};

namespace QXDirList {
// Puts TQXDirList on the "QX Tools" palette page.
QXT_EXPORT void Register();
} // namespace QXDirList
