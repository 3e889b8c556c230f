#include "QXU_File.h"
#include "QxutilFiles.h"

#include <QDir>
#include <QStandardPaths>

QString qxtWinDir() {
    return qxtCheckPath(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation));
}

QString qxtSysDir() {
    return QStringLiteral("/usr/lib/");
}

QString qxtTMPDir() {
    return qxtCheckPath(QDir::tempPath());
}
