#include "Drives.h"
#include "QxutilFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <algorithm>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/sysmacros.h>

namespace {

// Undoes udev's "\x20" escapes in the names under /dev/disk.
QString unescapeUdev(const QString& name) {
    QByteArray out;
    const QByteArray in = QFile::encodeName(name);
    for (qsizetype i = 0; i < in.size(); ++i) {
        if (in[i] == '\\' && i + 3 < in.size() && in[i + 1] == 'x') {
            bool ok = false;
            const int v = in.mid(i + 2, 2).toInt(&ok, 16);
            if (ok) {
                out.append(char(v));
                i += 3;
                continue;
            }
        }
        out.append(in[i]);
    }
    return QString::fromUtf8(out);
}

// The name of the link in /dev/disk/<kind> that leads to the mount's block device.
QString diskLinkName(const char* kind, const TMountPoint& mount) {
    if (mount.Root.isEmpty() || mount.Major == 0)
        return {};
    const QDir dir(QStringLiteral("/dev/disk/") + QLatin1String(kind));
    for (const QString& name : dir.entryList(QDir::System | QDir::Files | QDir::NoDotAndDotDot)) {
        struct stat st {};
        if (::stat(QFile::encodeName(dir.filePath(name)).constData(), &st) == 0 &&
            S_ISBLK(st.st_mode) && st.st_rdev == makedev(mount.Major, mount.Minor))
            return unescapeUdev(name);
    }
    return {};
}

QStringList driveRoots(bool all) {
    static const QStringList systemDirs = {QStringLiteral("/proc/"), QStringLiteral("/sys/"),
                                           QStringLiteral("/dev/"), QStringLiteral("/run/")};
    QStringList roots;
    for (const TMountPoint& m : MountPoints()) {
        if (!all) {
            if (IsPseudoFileSystem(m.FsType))
                continue;
            bool system = false;
            for (const QString& d : systemDirs)
                system = system || m.Root.startsWith(d);
            if (system)
                continue;
        }
        if (!roots.contains(m.Root))
            roots << m.Root;
    }
    return roots;
}

} // namespace

QString qxtFindDrive(const QString& Path) {
    return MountPointOf(Path).Root;
}

QString qxtFindCDROM(char First) {
    const QList<TMountPoint> mounts = MountPoints();
    const QStringList roots = driveRoots(false);
    const int start = std::max(0, int(QChar::toUpper(char32_t(First))) - 'A');
    for (int i = start; i < roots.size(); ++i) {
        // The visible mount at a root is the last one listed there.
        for (auto it = mounts.crbegin(); it != mounts.crend(); ++it)
            if (it->Root == roots[i]) {
                if (DriveTypeOf(*it) == DRIVE_CDROM)
                    return roots[i];
                break;
            }
    }
    return {};
}

QString qxtGetLogicalDrivesString(bool All) {
    return driveRoots(All).join(QLatin1Char(';'));
}

QString qxtVolumeName(const QString& Drive) {
    return diskLinkName("by-label", MountPointOf(Drive));
}

QString qxtNetworkVolumeName(const QString& Drive) {
    const TMountPoint mount = MountPointOf(Drive);
    return !mount.Root.isEmpty() && DriveTypeOf(mount) == DRIVE_REMOTE ? mount.Source : QString();
}

quint32 qxtVolumeSerNum2(const QString& Drive) {
    if (Drive.isEmpty() || !QFileInfo::exists(Drive))
        return 0;
    QString hex;
    for (QChar c : diskLinkName("by-uuid", MountPointOf(Drive)))
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
