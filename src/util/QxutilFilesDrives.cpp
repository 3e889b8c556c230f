#include "Drives.h"
#include "QxutilFiles.h"

#include <QFileInfo>
#include <QStringList>
#include <algorithm>
#include <sys/statvfs.h>

QString qxtFindDrive(const QString& Path) {
    return MountPointOf(Path).Root;
}

QString qxtFindCDROM(char First) {
    const QList<TMountPoint> drives = LogicalDrives(MountPoints(), false);
    const int start = std::max(0, int(QChar::toUpper(char32_t(First))) - 'A');
    for (qsizetype i = start; i < drives.size(); ++i)
        if (DriveTypeOf(drives[i]) == DRIVE_CDROM)
            return drives[i].Root;
    return {};
}

QString qxtGetLogicalDrivesString(bool All) {
    QStringList roots;
    for (const TMountPoint& m : LogicalDrives(MountPoints(), All))
        roots << m.Root;
    return roots.join(QLatin1Char(';'));
}

QString qxtVolumeName(const QString& Drive) {
    return VolumeLabel(MountPointOf(Drive));
}

QString qxtNetworkVolumeName(const QString& Drive) {
    const TMountPoint mount = MountPointOf(Drive);
    return !mount.Root.isEmpty() && DriveTypeOf(mount) == DRIVE_REMOTE ? mount.Source : QString();
}

quint32 qxtVolumeSerNum2(const QString& Drive) {
    if (Drive.isEmpty() || !QFileInfo::exists(Drive))
        return 0;
    QString hex;
    for (QChar c : VolumeUuid(MountPointOf(Drive)))
        if (c.isDigit() || (c.toLower() >= QLatin1Char('a') && c.toLower() <= QLatin1Char('f')))
            hex += c;
    if (hex.size() >= 8)
        return hex.right(8).toUInt(nullptr, 16);
    struct statvfs vfs {};
    if (::statvfs(QFile::encodeName(Drive).constData(), &vfs) != 0)
        return 0;
    return quint32(vfs.f_fsid);
}

QString qxtVolumeSerNum(const QString& Drive) {
    if (Drive.isEmpty() || !QFileInfo::exists(Drive))
        return {};
    const quint32 serial = qxtVolumeSerNum2(Drive);
    return QStringLiteral("%1-%2")
        .arg(serial >> 16, 4, 16, QLatin1Char('0'))
        .arg(serial & 0xFFFF, 4, 16, QLatin1Char('0'))
        .toUpper();
}
