#include "Application.h"
#include "Dialogs.h"
#include "Drives.h"
#include "FileUtils.h"
#include "QxutilFiles.h"
#include "SysUtils.h"

#include <QFile>
#include <QFileInfo>
#include <mspack.h>

namespace {

QString withoutTrailingDelim(QString path) {
    if (path.endsWith(PathDelim))
        path.chop(1);
    return path;
}

QString cannotDelete(const QString& name) {
    return QStringLiteral("qxtKillPath - Fehler : ") + name +
           QStringLiteral(" kann nicht gelöscht werden");
}

// Shows the hourglass while alive and then the cursor that was shown before.
class HourGlass {
public:
    HourGlass() : m_previous(Screen()->Cursor()) { Screen()->SetCursor(crHourGlass); }
    ~HourGlass() { Screen()->SetCursor(m_previous); }
    HourGlass(const HourGlass&) = delete;
    HourGlass& operator=(const HourGlass&) = delete;

private:
    TCursor m_previous;
};

// Copies a file as it is; its size, or -1.
qint64 plainCopy(const QString& source, const QString& dest) {
    QFile in(source), out(dest);
    if (!in.open(QIODevice::ReadOnly) || !out.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return -1;
    qint64 total = 0;
    while (!in.atEnd()) {
        const QByteArray chunk = in.read(65536);
        if (chunk.isEmpty() || out.write(chunk) != chunk.size())
            return -1;
        total += chunk.size();
    }
    return out.flush() ? total : -1;
}

// What LZCopy does: expands an SZDD file, copies any other as it is. The size of Dest, or -1.
qint64 lzCopy(const QString& source, const QString& dest) {
    msszdd_decompressor* szdd = mspack_create_szdd_decompressor(nullptr);
    if (!szdd)
        return -1;
    const QByteArray in = QFile::encodeName(source), out = QFile::encodeName(dest);
    qint64 result = -1;
    if (msszddd_header* header = szdd->open(szdd, in.constData())) {
        if (szdd->extract(szdd, header, out.constData()) == MSPACK_ERR_OK)
            result = QFileInfo(dest).size();
        szdd->close(szdd, header);
    } else if (szdd->last_error(szdd) == MSPACK_ERR_SIGNATURE) {
        result = plainCopy(source, dest);
    }
    mspack_destroy_szdd_decompressor(szdd);
    return result;
}

bool killPath(const QString& Path, TEventBudget& events) {
    bool result = true;
    const QString P = qxtCheckPath(Path);
    const bool driveRoot = IsDriveRoot(P);
    // A warning only: the work goes on.
    if (P.size() < 5 || driveRoot)
        ShowMessage(cannotDelete(P));

    // A link given as the path is removed itself; what it points to stays.
    if (!driveRoot && QFileInfo(withoutTrailingDelim(P)).isSymLink()) {
        if (DeleteFile(withoutTrailingDelim(P)))
            return true;
        ShowMessage(cannotDelete(withoutTrailingDelim(P)));
        return false;
    }

    // Subdirectories first, then the files. The directory is read once for both passes and
    // again only when the first has changed it (a subdirectory removed, or an event's work).
    auto listing = std::make_shared<const TDirListing>(P);
    for (int i = 0; i < listing->Count(); ++i) {
        events.Spend();
        const QString& name = listing->Name(i);
        if (name != QLatin1String(".") && name != QLatin1String("..") && listing->IsDirectory(i))
            result = killPath(P + name, events);
    }
    if (listing->Changed())
        listing = std::make_shared<const TDirListing>(P);

    TSearchRec sr;
    for (int rc = FindFirst(listing, QStringLiteral("*.*"), faAnyFile, sr); rc == 0;
         rc = FindNext(sr)) {
        // The entry's attributes were read when the search reached it, a moment ago unless
        // events have run since.
        const bool eventsRan = events.Spend();
        if (!qxtIsFile(sr))
            continue;
        const QString name = P + sr.Name;
        if (eventsRan ? qxtHasAttr(name, faReadOnly) : (sr.Attr & faReadOnly) != 0)
            FileSetAttr(name, 0);
        if (!DeleteFile(name)) {
            ShowMessage(cannotDelete(name));
            result = false;
        }
    }
    FindClose(sr);

    if (!driveRoot && !RemoveDir(withoutTrailingDelim(P))) {
        MessageDlg(QStringLiteral("qxtKillPath - Verzeichnis ") + P +
                       QStringLiteral(" läßt sich nicht löschen"),
                   mtWarning, {mbOK});
        result = false;
    }
    return result;
}

} // namespace

bool qxtMoveFile(const QString& Source, const QString& Dest) {
    const QString dest = ExpandFileName(Dest);
    if (RenameFile(Source, dest))
        return true;
    if (qxtHasAttr(Source, faReadOnly))
        return false;
    const QString destDir = ExtractFilePath(dest);
    ForceDirectories(destDir);
    if (!DirectoryExists(destDir))
        return false;
    if (CopyFile(Source, dest, false))
        return DeleteFile(Source);
    // A copy that failed after all bytes arrived (the write time could not be set) is complete.
    if (FileExists(dest) && qxtGetFileSize(dest, false) == qxtGetFileSize(Source, false))
        return DeleteFile(Source);
    return false;
}

bool qxtMoveDir(QString Source, QString Dest) {
    Source = withoutTrailingDelim(Source);
    Dest = withoutTrailingDelim(Dest);
    if (RenameFile(Source, Dest))
        return true;
    TSearchRec sr;
    for (int rc = FindFirst(Source + QLatin1String("/*.*"), faAnyFile, sr); rc == 0;
         rc = FindNext(sr))
        if (qxtIsFile(sr))
            qxtMoveFile(Source + PathDelim + sr.Name, Dest + PathDelim + sr.Name);
    FindClose(sr);
    return RemoveDir(Source);
}

bool qxtCopyDir(QString Source, QString Dest) {
    if (!DirectoryExists(Source))
        return false;
    if (!DirectoryExists(Dest))
        ForceDirectories(Dest);
    Source = withoutTrailingDelim(Source);
    Dest = withoutTrailingDelim(Dest);
    if (CopyFile(Source, Dest, false))
        return true;
    bool result = true;
    TSearchRec sr;
    for (int rc = FindFirst(Source + QLatin1String("/*.*"), faAnyFile, sr); rc == 0;
         rc = FindNext(sr))
        if (qxtIsFile(sr) &&
            !CopyFile(Source + PathDelim + sr.Name, Dest + PathDelim + sr.Name, false))
            result = false;
    return result;
}

bool qxtKillPath(const QString& Path) {
    TEventBudget events;
    return killPath(Path, events);
}

qint64 qxtLZCopyFile(const QString& Source, const QString& Dest) {
    const HourGlass hourGlass;
    const qint64 size = lzCopy(Source, Dest);
    if (size < 0)
        throw Exception(QStringLiteral("Error using LZCopy"));
    return size;
}
