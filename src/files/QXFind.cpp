#include "QXFind.h"

#include "Application.h"
#include "FileUtils.h"
#include "QXDesign.h"
#include "QXTools.h"
#include "QXU_File.h"
#include "QxutilFiles.h"

#include <QMetaMethod>

namespace {

const bool classKnown = RegisterClass(ComponentClassOf<TQXFind>());

bool isDotEntry(const TSearchRec& r) {
    return r.Name == QLatin1String(".") || r.Name == QLatin1String("..");
}

} // namespace

TQXFind::TQXFind(QObject* owner) : TComponent(owner), TQXAboutCarrier(QXFindVersion) {
    SetStartPath(QStringLiteral("/"));
    SetFilePattern(QStringLiteral("*.*"));
}

TQXFind::~TQXFind() = default;

void TQXFind::SetFilePattern(const QString& value) {
    m_pattern = value.toUpper();
}

void TQXFind::SetStartPath(const QString& value) {
    m_startPath = qxtCheckPath(value);
}

void TQXFind::Execute() {
    m_dirCount = 0;
    m_fileCount = 0;
    m_volumeName = qxtVolumeName(m_startPath);
    if (OnExecute)
        OnExecute(this);
    emit started();
    m_stop = false;
    m_events.Reset();
    ReadDisk(m_startPath);
    m_stop = false;
    if (OnFinished)
        OnFinished(this);
    emit finished();
}

bool TQXFind::reportFile(const TSearchRec& rec, const QString& path) {
    ++m_fileCount;
    change(path);
    // A stop asked for in the change event, or the end of the application, skips the file.
    if (m_stop || Application()->Terminated())
        return false;
    findFile(rec, path);
    return true;
}

void TQXFind::ReadDisk(const QString& Path) {
    if (m_stop || Application()->Terminated())
        return;
    // The directory is read once: its subdirectories and its files are searched in that
    // listing, and only the entries the file search looks at have their status read.
    auto listing = std::make_shared<const TDirListing>(Path);
    if (m_subdirs) {
        for (int i = 0; i < listing->Count() && !m_stop; ++i) {
            m_events.Spend();
            // ".", ".." and hidden directories are not entered.
            if (listing->Name(i).startsWith(QLatin1Char('.')))
                continue;
            if (listing->IsDirectory(i)) {
                ReadDisk(Path + listing->Name(i) + PathDelim);
                ++m_dirCount;
                change(Path);
            }
            if (m_stop)
                break;
            if (Application()->Terminated())
                return;
        }
    }

    TSearchRec sr;
    if (!m_pattern.contains(QLatin1Char(';'))) {
        for (int rc = FindFirst(listing, m_pattern, faAnyFile, sr); rc == 0 && !m_stop;
             rc = FindNext(sr)) {
            m_events.Spend();
            if (isDotEntry(sr) || sr.Attr == faDirectory) {
                notFindFile(sr, Path);
                continue;
            }
            if (!reportFile(sr, Path))
                break;
        }
    } else {
        for (int rc = FindFirst(listing, QStringLiteral("*.*"), faAnyFile, sr); rc == 0 && !m_stop;
             rc = FindNext(sr)) {
            if (isDotEntry(sr) || sr.Attr == faDirectory)
                continue;
            m_events.Spend();
            if (!qxtIsMatch(sr.Name.toUpper(), m_pattern)) {
                notFindFile(sr, Path);
                continue;
            }
            if (!reportFile(sr, Path))
                break;
        }
    }
    FindClose(sr);
}

void TQXFind::change(const QString& path) {
    if (OnChange)
        OnChange(this, path, m_dirCount, m_fileCount);
    emit changed(path, m_dirCount, m_fileCount);
}

void TQXFind::findFile(const TSearchRec& rec, const QString& path) {
    if (OnFindFile)
        OnFindFile(this, rec, path, m_volumeName);
    // The full name is put together only for a listener.
    static const QMetaMethod fileFoundSignal = QMetaMethod::fromSignal(&TQXFind::fileFound);
    if (isSignalConnected(fileFoundSignal))
        emit fileFound(path + rec.Name);
}

void TQXFind::notFindFile(const TSearchRec& rec, const QString& path) {
    if (OnNotFindFile)
        OnNotFindFile(this, rec, path, m_volumeName);
}

void QXFind::Register() {
    Q_UNUSED(classKnown);
    QXRegisterOne(QLatin1String(QXPalettePage), "TQXFind");
}
