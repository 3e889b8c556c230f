#include "QxutilFiles.h"

#include <QDir>
#include <QStandardPaths>

namespace {
QString terminated(const QString& path) {
    return path.endsWith(QLatin1Char('/')) ? path : path + QLatin1Char('/');
}
} // namespace

QString qxtWinDir() {
    return terminated(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation));
}

QString qxtSysDir() {
    return QStringLiteral("/usr/lib/");
}

QString qxtTMPDir() {
    return terminated(QDir::tempPath());
}
