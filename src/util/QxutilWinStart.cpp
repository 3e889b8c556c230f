#include "FileUtils.h"
#include "QXU_File.h"
#include "QxutilFiles.h"
#include "QxutilSettings.h"
#include "QxutilSystem.h"
#include "TIniFile.h"
#include "TStrings.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QStandardPaths>

namespace {

const QString renameSection = QStringLiteral("rename");

QString wininit() {
    return qxtWinDir() + QStringLiteral("WININIT.INI");
}

QString shellQuoted(const QString& s) {
    QString q = s;
    q.replace(QLatin1Char('\''), QLatin1String("'\\''"));
    return QLatin1Char('\'') + q + QLatin1Char('\'');
}

// The qxtool that carries the renames out: beside the running program, on the PATH, or where
// the library was installed.
QString qxtoolPath() {
    const QString beside = QCoreApplication::applicationDirPath() + QStringLiteral("/qxtool");
    if (QCoreApplication::instance() && QFileInfo(beside).isExecutable())
        return beside;
    const QString onPath = QStandardPaths::findExecutable(QStringLiteral("qxtool"));
    return onPath.isEmpty() ? QStringLiteral(QXT_INSTALL_BINDIR "/qxtool") : onPath;
}

bool replaceFile(const QString& target, const QString& replacement) {
    if (target.compare(QLatin1String("NUL"), Qt::CaseInsensitive) == 0)
        return DeleteFile(replacement);
    if (!QFileInfo::exists(replacement))
        return false;
    if (QFileInfo::exists(target) && !DeleteFile(target))
        return false;
    if (RenameFile(replacement, target))
        return true;
    // Across file systems a rename cannot work: copy, then drop the .NEW file.
    return CopyFile(replacement, target, true) && DeleteFile(replacement);
}

} // namespace

bool qxtInstallFileOnWinStart(const QString& SourceDir, const QString& DestDir,
                              const QString& FileName) {
    // Without Windows NT's delayed MoveFileEx the WININIT.INI route is the only one.
    const QString dest = qxtCheckPath(DestDir);
    const QString name = QFileInfo(FileName).completeBaseName();
    const QString newFile = dest + name + QStringLiteral(".NEW");
    if (!CopyFile(qxtCheckPath(SourceDir) + FileName, newFile, false))
        return false;
    qxtINIWriteString(wininit(), renameSection, dest + FileName, newFile);
    qxtRunOnce(QStringLiteral("qxtools-winstart"),
               shellQuoted(qxtoolPath()) + QStringLiteral(" winstart"));
    return true;
}

int qxtProcessPendingRenames(QStringList* Failed) {
    TIniFile ini(wininit());
    TStringList entries;
    ini.ReadSectionValues(renameSection, &entries);
    QStringList failedEntries;
    int done = 0;
    for (int i = 0; i < entries.Count(); ++i) {
        const QString key = entries.Names(i);
        const QString value = entries[i].mid(key.size() + 1);
        if (replaceFile(key, value))
            ++done;
        else
            failedEntries << key << value;
    }
    if (entries.Count() > 0) {
        ini.EraseSection(renameSection);
        for (qsizetype i = 0; i + 1 < failedEntries.size(); i += 2)
            ini.WriteString(renameSection, failedEntries[i], failedEntries[i + 1]);
    }
    if (Failed) {
        Failed->clear();
        for (qsizetype i = 0; i < failedEntries.size(); i += 2)
            Failed->append(failedEntries[i]);
    }
    return done;
}
