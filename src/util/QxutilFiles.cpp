#include "QxutilFiles.h"

#include <QStandardPaths>

namespace {

bool isDotEntry(const TSearchRec& r) {
    return r.Name == QLatin1String(".") || r.Name == QLatin1String("..");
}

QString standardDir(QStandardPaths::StandardLocation location) {
    return qxtCheckPath(QStandardPaths::writableLocation(location));
}

} // namespace

bool qxtIsDirectory(const TSearchRec& SearchRec) {
    return !isDotEntry(SearchRec) && (SearchRec.Attr & faDirectory) && SearchRec.Attr != faVolumeID;
}

bool qxtIsFile(const TSearchRec& SearchRec) {
    return !isDotEntry(SearchRec) && !(SearchRec.Attr & faDirectory);
}

bool qxtIsCompressed(const TSearchRec& SearchRec) {
    return !isDotEntry(SearchRec) && (SearchRec.Attr & faCompressed);
}

bool qxtHasAttr(const QString& FileName, quint16 Attr) {
    return (FileGetAttr(FileName) & Attr) == Attr;
}

QDateTime qxtFileDateTime(const QString& FileName) {
    return FileDateToDateTime(FileAge(FileName));
}

QString qxtGetSpecialFolderDir(int Folder) {
    switch (Folder) {
    case 0:  // desktop
    case 16: // desktop directory
        return standardDir(QStandardPaths::DesktopLocation);
    case 2:  // programs
    case 11: // start menu
        return standardDir(QStandardPaths::ApplicationsLocation);
    case 5: // personal
        return standardDir(QStandardPaths::DocumentsLocation);
    case 7: // start-up
        return qxtCheckPath(
            QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
            QLatin1String("/autostart"));
    case 13:
        return standardDir(QStandardPaths::MusicLocation);
    case 14:
        return standardDir(QStandardPaths::MoviesLocation);
    case 20:
        return standardDir(QStandardPaths::FontsLocation);
    case 26: // application data
        return standardDir(QStandardPaths::GenericDataLocation);
    case 32: // internet cache
        return standardDir(QStandardPaths::GenericCacheLocation);
    case 39:
        return standardDir(QStandardPaths::PicturesLocation);
    case 40: // profile
        return standardDir(QStandardPaths::HomeLocation);
    default:
        return {};
    }
}

QString qxtDesktopDir() {
    return qxtGetSpecialFolderDir(0);
}

QString qxtProgrammsDir() {
    return qxtGetSpecialFolderDir(2);
}

QString qxtPersonalDir() {
    return qxtGetSpecialFolderDir(5);
}

QString qxtFavoritesDir() {
    return qxtGetSpecialFolderDir(6);
}

QString qxtStartUpDir() {
    return qxtGetSpecialFolderDir(7);
}

QString qxtRecentDir() {
    return qxtGetSpecialFolderDir(8);
}

QString qxtSendToDir() {
    return qxtGetSpecialFolderDir(9);
}

QString qxtStartMenuDir() {
    return qxtGetSpecialFolderDir(11);
}

QString qxtFontDir() {
    return qxtGetSpecialFolderDir(20);
}

QString qxtAppDataDir() {
    return qxtGetSpecialFolderDir(26);
}

QString qxtInternetCacheDir() {
    return qxtGetSpecialFolderDir(32);
}
