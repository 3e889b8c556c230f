#pragma once

// The directory walks as they were when every directory was read twice (once for its
// subdirectories, once for its files) through FindFirst on paths, with events let run as often
// as they did then. The tests hold today's walks to what these find, report and delete; the
// benchmarks time them side by side.

#include "Application.h"
#include "Dialogs.h"
#include "Drives.h"
#include "FileUtils.h"
#include "QxutilFiles.h"

#include <QFileInfo>
#include <functional>

namespace tworeadings {

using Visit = std::function<bool(const QString& dir, const TSearchRec&)>;

// The files of Dir matching Mask, then (Recursive) those of each subdirectory, to visit.
inline bool walk(const QString& Dir, const QString& Mask, bool Recursive, const Visit& visit) {
    const QString dir = qxtCheckPath(Dir);
    TApplication::ProcessMessages();
    TSearchRec sr;
    for (int rc = FindFirst(dir + Mask, faAnyFile, sr); rc == 0; rc = FindNext(sr))
        if (qxtIsFile(sr) && !visit(dir, sr))
            return false;
    if (!Recursive)
        return true;
    for (int rc = FindFirst(dir + QLatin1String("*.*"), faAnyFile, sr); rc == 0; rc = FindNext(sr))
        if (qxtIsDirectory(sr) && !walk(dir + sr.Name, Mask, true, visit))
            return false;
    return true;
}

// qxtGetFileSize of a mask.
inline qint64 size(const QString& FileName, bool Recursive) {
    const QString dir = ExtractFilePath(FileName);
    const QString mask = ExtractFileName(FileName);
    qint64 total = 0;
    TSearchRec sr;
    for (int rc = FindFirst(FileName, faAnyFile, sr); rc == 0; rc = FindNext(sr))
        if (qxtIsFile(sr))
            total += sr.Size;
    if (Recursive)
        for (int rc = FindFirst(dir + QLatin1String("*.*"), faAnyFile, sr); rc == 0;
             rc = FindNext(sr))
            if (qxtIsDirectory(sr))
                total += size(dir + sr.Name + '/' + mask, true);
    return total;
}

// qxtKillPath.
inline bool kill(const QString& Path) {
    bool result = true;
    const QString P = qxtCheckPath(Path);
    const QString bare = P.left(P.size() - 1);
    const bool driveRoot = IsDriveRoot(P);
    if (P.size() < 5 || driveRoot)
        ShowMessage("qxtKillPath - Fehler : " + P + " kann nicht gelöscht werden");
    if (!driveRoot && QFileInfo(bare).isSymLink()) {
        if (DeleteFile(bare))
            return true;
        ShowMessage("qxtKillPath - Fehler : " + bare + " kann nicht gelöscht werden");
        return false;
    }
    TSearchRec sr;
    for (int rc = FindFirst(P + "*.*", faAnyFile, sr); rc == 0; rc = FindNext(sr)) {
        TApplication::ProcessMessages();
        if (qxtIsDirectory(sr))
            result = kill(P + sr.Name);
    }
    for (int rc = FindFirst(P + "*.*", faAnyFile, sr); rc == 0; rc = FindNext(sr)) {
        TApplication::ProcessMessages();
        if (!qxtIsFile(sr))
            continue;
        const QString name = P + sr.Name;
        if (qxtHasAttr(name, faReadOnly))
            FileSetAttr(name, 0);
        if (!DeleteFile(name)) {
            ShowMessage("qxtKillPath - Fehler : " + name + " kann nicht gelöscht werden");
            result = false;
        }
    }
    if (!driveRoot && !RemoveDir(bare)) {
        MessageDlg("qxtKillPath - Verzeichnis " + P + " läßt sich nicht löschen", mtWarning,
                   {mbOK});
        result = false;
    }
    return result;
}

} // namespace tworeadings
