#include "Drives.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/sysmacros.h>

namespace {

// Undoes the octal escapes (\040 for a blank) that mountinfo writes for special characters.
QString unescapeOctal(const QByteArray& field) {
    QByteArray out;
    out.reserve(field.size());
    for (qsizetype i = 0; i < field.size(); ++i) {
        if (field[i] == '\\' && i + 3 < field.size() && field[i + 1] >= '0' &&
            field[i + 1] <= '3') {
            bool ok = false;
            const int v = field.mid(i + 1, 3).toInt(&ok, 8);
            if (ok) {
                out.append(char(v));
                i += 3;
                continue;
            }
        }
        out.append(field[i]);
    }
    return QFile::decodeName(out);
}

QString terminated(QString path) {
    if (!path.endsWith(QLatin1Char('/')))
        path += QLatin1Char('/');
    return path;
}

QString readSmallFile(const QString& name) {
    QFile f(name);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    return QString::fromLatin1(f.read(64)).trimmed();
}

bool isRemovableDevice(unsigned major, unsigned minor) {
    const QString dev = QStringLiteral("/sys/dev/block/%1:%2/").arg(major).arg(minor);
    // A partition inherits the flag of the disk it belongs to.
    const QString disk =
        QFileInfo::exists(dev + QLatin1String("partition")) ? dev + QLatin1String("../") : dev;
    return readSmallFile(disk + QLatin1String("removable")) == QLatin1String("1");
}

// The entry standing for path: path itself when it exists, else its nearest existing parent,
// which must be a directory. Its name goes to found; false when there is none to be had.
bool nearestExisting(const QString& path, QByteArray& found, struct stat& st) {
    QString p = QDir::cleanPath(QDir::current().absoluteFilePath(path));
    for (bool first = true;; first = false) {
        found = QFile::encodeName(p);
        if (::stat(found.constData(), &st) == 0)
            return first || S_ISDIR(st.st_mode);
        if (errno != ENOENT || p == QLatin1String("/"))
            return false;
        p = QFileInfo(p).path();
    }
}

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

} // namespace

QList<TMountPoint> ParseMountInfo(const QByteArray& text) {
    QList<TMountPoint> mounts;
    for (const QByteArray& line : text.split('\n')) {
        const QList<QByteArray> f = line.simplified().split(' ');
        const qsizetype dash = f.indexOf(QByteArray("-"));
        if (f.size() < 5 || dash < 6 || dash + 2 >= f.size())
            continue;
        TMountPoint m;
        m.Root = terminated(unescapeOctal(f[4]));
        m.FsType = unescapeOctal(f[dash + 1]);
        m.Source = unescapeOctal(f[dash + 2]);
        const QList<QByteArray> dev = f[2].split(':');
        if (dev.size() == 2) {
            m.Major = dev[0].toUInt();
            m.Minor = dev[1].toUInt();
        }
        mounts.append(m);
    }
    return mounts;
}

QList<TMountPoint> MountPoints() {
    QFile f(QStringLiteral("/proc/self/mountinfo"));
    if (!f.open(QIODevice::ReadOnly))
        return {};
    return ParseMountInfo(f.readAll());
}

TMountPoint MountPointOf(const QString& path) {
    return MountPointOf(path, MountPoints());
}

TMountPoint MountPointOf(const QString& path, const QList<TMountPoint>& mounts) {
    const QFileInfo info(path.isEmpty() ? QStringLiteral(".") : path);
    const QString canonical = info.canonicalFilePath();
    const QString full =
        terminated(canonical.isEmpty() ? QDir::cleanPath(info.absoluteFilePath()) : canonical);
    TMountPoint best;
    // Later lines mount over earlier ones, so the last longest match is the visible one.
    for (const TMountPoint& m : mounts)
        if (full.startsWith(m.Root) && m.Root.size() >= best.Root.size())
            best = m;
    return best;
}

bool IsDriveRoot(const QString& path) {
    const QString full = terminated(QDir::cleanPath(QDir::current().absoluteFilePath(path)));
    if (full == QLatin1String("/"))
        return true;
    for (const TMountPoint& m : MountPoints())
        if (m.Root == full)
            return true;
    return false;
}

bool IsPseudoFileSystem(const QString& fsType) {
    static const QStringList pseudo = {
        QStringLiteral("proc"),           QStringLiteral("sysfs"),
        QStringLiteral("devtmpfs"),       QStringLiteral("devpts"),
        QStringLiteral("cgroup"),         QStringLiteral("cgroup2"),
        QStringLiteral("mqueue"),         QStringLiteral("debugfs"),
        QStringLiteral("tracefs"),        QStringLiteral("securityfs"),
        QStringLiteral("pstore"),         QStringLiteral("bpf"),
        QStringLiteral("configfs"),       QStringLiteral("fusectl"),
        QStringLiteral("hugetlbfs"),      QStringLiteral("autofs"),
        QStringLiteral("binfmt_misc"),    QStringLiteral("efivarfs"),
        QStringLiteral("selinuxfs"),      QStringLiteral("nsfs"),
        QStringLiteral("rpc_pipefs"),     QStringLiteral("fuse.portal"),
        QStringLiteral("fuse.gvfsd-fuse")};
    return pseudo.contains(fsType);
}

QList<TMountPoint> LogicalDrives(const QList<TMountPoint>& mounts, bool all) {
    static const QStringList systemDirs = {QStringLiteral("/proc/"), QStringLiteral("/sys/"),
                                           QStringLiteral("/dev/"), QStringLiteral("/run/")};
    QStringList roots;
    for (const TMountPoint& m : mounts) {
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
    QList<TMountPoint> drives;
    for (const QString& root : roots)
        for (auto it = mounts.crbegin(); it != mounts.crend(); ++it)
            if (it->Root == root) {
                drives << *it;
                break;
            }
    return drives;
}

QString VolumeLabel(const TMountPoint& mount) {
    return diskLinkName("by-label", mount);
}

QString VolumeUuid(const TMountPoint& mount) {
    return diskLinkName("by-uuid", mount);
}

int DriveTypeOf(const TMountPoint& mount) {
    static const QStringList remote = {QStringLiteral("nfs"),
                                       QStringLiteral("nfs4"),
                                       QStringLiteral("cifs"),
                                       QStringLiteral("smb3"),
                                       QStringLiteral("smbfs"),
                                       QStringLiteral("ncpfs"),
                                       QStringLiteral("afs"),
                                       QStringLiteral("9p"),
                                       QStringLiteral("ceph"),
                                       QStringLiteral("glusterfs"),
                                       QStringLiteral("fuse.glusterfs"),
                                       QStringLiteral("fuse.sshfs"),
                                       QStringLiteral("sshfs"),
                                       QStringLiteral("davfs"),
                                       QStringLiteral("fuse.davfs2")};
    const QString& t = mount.FsType;
    if (remote.contains(t))
        return DRIVE_REMOTE;
    if (t == QLatin1String("iso9660") || t == QLatin1String("udf") ||
        mount.Source.startsWith(QLatin1String("/dev/sr")))
        return DRIVE_CDROM;
    if (t == QLatin1String("tmpfs") || t == QLatin1String("ramfs"))
        return DRIVE_RAMDISK;
    if (IsPseudoFileSystem(t))
        return DRIVE_UNKNOWN;
    if (mount.Major != 0 && isRemovableDevice(mount.Major, mount.Minor))
        return DRIVE_REMOVABLE;
    return DRIVE_FIXED;
}

int GetDriveType(const QString& Root) {
    const QString full = terminated(QDir::cleanPath(QDir::current().absoluteFilePath(Root)));
    int type = DRIVE_NO_ROOT_DIR;
    for (const TMountPoint& m : MountPoints())
        if (m.Root == full)
            type = DriveTypeOf(m);
    return type;
}

qint64 DiskFree(const QString& Path) {
    QByteArray name;
    struct stat st {};
    struct statvfs vfs {};
    if (!nearestExisting(Path, name, st) || ::statvfs(name.constData(), &vfs) != 0)
        return -1;
    return qint64(vfs.f_bavail) * qint64(vfs.f_frsize);
}

bool IsSameDrive(const QString& A, const QString& B) {
    QByteArray nameA, nameB;
    struct stat a {
    }, b{};
    return nearestExisting(A, nameA, a) && nearestExisting(B, nameB, b) && a.st_dev == b.st_dev;
}
