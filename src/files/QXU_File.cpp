#include "QXU_File.h"

#include "FileUtils.h"

#include <QCoreApplication>
#include <QFileInfo>

QString qxtAppDir() {
    return qxtCheckPath(QCoreApplication::applicationDirPath());
}

QString qxtCheckPath(const QString& Path) {
    if (Path.isEmpty() || Path.endsWith(PathDelim))
        return Path;
    return Path + PathDelim;
}

QString qxtCheckUnixPath(const QString& Path) {
    if (Path.isEmpty() || Path.endsWith(QLatin1Char('/')))
        return Path;
    return Path + QLatin1Char('/');
}

QString qxtParentDir(const QString& Path) {
    qsizetype i = Path.size() - 2;
    while (i >= 0 && Path[i] != PathDelim)
        --i;
    return i > 0 ? Path.left(i) : QString();
}

QString qxtDirName(const QString& Path) {
    const qsizetype last = Path.lastIndexOf(PathDelim);
    if (last <= 0)
        return {};
    const qsizetype before = Path.lastIndexOf(PathDelim, last - 1);
    if (before < 0)
        return {};
    return Path.mid(before + 1, last - before - 1);
}

QString qxtGetShortFileName(const QString& FileName) {
    return FileName;
}

QString qxtGetLongFileName(const QString& FileName) {
    const QString canonical = QFileInfo(FileName).canonicalFilePath();
    return canonical.isEmpty() ? FileName : canonical;
}

void qxtSplitFileName(const QString& FileName, QString& Path, QString& Name, QString& Ext) {
    Path = ExtractFilePath(FileName);
    const QString file = ExtractFileName(FileName);
    const qsizetype dot = file.lastIndexOf(QLatin1Char('.'));
    if (dot < 0)
        return;
    Name = file.left(dot);
    Ext = file.mid(dot);
}
