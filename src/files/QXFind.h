#pragma once

#include "Application.h"
#include "FindFile.h"
#include "QXAboutString.h"
#include "QXExport.h"
#include "TComponent.h"

#include <QString>
#include <functional>

// Progress of a search: the directory being searched and the running counts.
using ChangeEvent =
    std::function<void(QObject* Sender, const QString& Path, int DirCount, int FileCount)>;
// An entry of a searched directory, the directory it is in (terminated) and the label of the
// file system searched ("" when it has none).
using FindFileEvent = std::function<void(QObject* Sender, const TSearchRec& FileRec,
                                         const QString& Path, const QString& VolumeName)>;
using NotFindFileEvent = FindFileEvent;

// Walks a directory tree from StartPath and reports every file matching FilePattern through
// OnFindFile, with running counts of directories and files; BreakScan stops it. Subdirectories
// are searched first, depth first, before the files of their parent, and the directory count
// grows after a subdirectory has been searched. Hidden directories (names starting with ".") are
// not entered, and links are never followed. The search runs on the calling thread and lets
// pending events run every few milliseconds.
//
// Example, every text file below a directory:
//
//     TQXFind find;
//     find.SetStartPath(QStringLiteral("/home/me/Briefe"));
//     find.SetFilePattern(QStringLiteral("*.txt"));
//     find.SetSubdirs(true);
//     find.OnFindFile = [&files](QObject*, const TSearchRec& file, const QString& dir,
//                                const QString&) { files << dir + file.Name; };
//     find.Execute();
class QXT_EXPORT TQXFind : public TComponent, public TQXAboutCarrier {
    Q_OBJECT
    Q_PROPERTY(QString About_QXTools READ About_QXTools WRITE SetAbout_QXTools DESIGNABLE false)
    Q_PROPERTY(QString FilePattern READ FilePattern WRITE SetFilePattern)
    Q_PROPERTY(bool Subdirs READ Subdirs WRITE SetSubdirs)
    Q_PROPERTY(QString StartPath READ StartPath WRITE SetStartPath)
public:
    // A search for "*.*" in "/", without the subdirectories.
    explicit TQXFind(QObject* owner = nullptr);
    ~TQXFind() override;

    // One mask, or several joined by ";" (then matched with qxtIsMatch); kept upper-cased.
    // Default "*.*".
    QString FilePattern() const { return m_pattern; }
    void SetFilePattern(const QString& value);
    // Also search the subdirectories. Default false.
    bool Subdirs() const { return m_subdirs; }
    void SetSubdirs(bool value) { m_subdirs = value; }
    // The directory to search, kept with a trailing "/". Default "/".
    QString StartPath() const { return m_startPath; }
    void SetStartPath(const QString& value);

    // Runs a search: counts to 0, OnExecute, the walk, OnFinished.
    void Execute();
    // Ends the running search at its next check.
    void BreakScan() { m_stop = true; }
    // Searches one directory (Path ends in "/") and, with Subdirs, its subdirectories.
    void ReadDisk(const QString& Path);
    // The counts of the running or last search.
    int DirCount() const { return m_dirCount; }
    int FileCount() const { return m_fileCount; }

    // Called with the running counts for every matching file and after every subdirectory.
    ChangeEvent OnChange;
    // Called when Execute starts and when it ends.
    TNotifyEvent OnExecute;
    TNotifyEvent OnFinished;
    // Called for every matching file.
    FindFileEvent OnFindFile;
    // Called for the entries passed over: with one mask the directories it matches ("." and ".."
    // among them), with several masks the files matching none of them.
    NotFindFileEvent OnNotFindFile;

signals:
    // Emitted with OnExecute, OnChange, OnFindFile and OnFinished.
    void started();
    void changed(const QString& path, int dirCount, int fileCount);
    void fileFound(const QString& fileName);
    void finished();

private:
    void change(const QString& path);
    void findFile(const TSearchRec& rec, const QString& path);
    // Counts a matching file and reports it; false when the search must end instead.
    bool reportFile(const TSearchRec& rec, const QString& path);
    void notFindFile(const TSearchRec& rec, const QString& path);

    bool m_stop = false;
    int m_dirCount = 0;
    int m_fileCount = 0;
    QString m_pattern;
    QString m_startPath;
    bool m_subdirs = false;
    QString m_volumeName;
    // Pending events run on a time budget, not for every entry.
    TEventBudget m_events;
};

namespace QXFind {
// Puts TQXFind on the "QX Tools" palette page.
QXT_EXPORT void Register();
} // namespace QXFind
