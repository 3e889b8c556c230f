#pragma once

#include "QXExport.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QtGlobal>

// Drives on Linux are mount points: "/" and every other place a file system is mounted.

// One mounted file system.
struct TMountPoint {
    QString Root;   // where it is mounted, ending in "/"
    QString Source; // what is mounted: "/dev/sda1", "server:/export", "tmpfs"
    QString FsType; // "ext4", "nfs4", "tmpfs", "fuse.sshfs"
    // The major device number.
    unsigned Major = 0;
    unsigned Minor = 0; // the minor device number
};

// The mount points of a mountinfo text (the format of /proc/self/mountinfo), in its order.
QXT_EXPORT QList<TMountPoint> ParseMountInfo(const QByteArray& text);
// The mount points of this process.
QXT_EXPORT QList<TMountPoint> MountPoints();
// The mount point holding a path (relative paths start at the current directory; existing paths
// are followed through their links); an empty Root when none does.
QXT_EXPORT TMountPoint MountPointOf(const QString& path);
// The same among the given mount points.
QXT_EXPORT TMountPoint MountPointOf(const QString& path, const QList<TMountPoint>& mounts);
// Whether a path names "/" or another mount point: the Linux twin of a drive root.
QXT_EXPORT bool IsDriveRoot(const QString& path);
// Whether a file system only shows kernel state (proc, sysfs, cgroup, …) and is no drive.
QXT_EXPORT bool IsPseudoFileSystem(const QString& fsType);

// The drives of a mount table, one per mount point in the order the points first appear: with
// all false only real file systems outside /proc, /sys, /dev and /run. Each entry is the mount
// visible at its point (the last one listed there).
QXT_EXPORT QList<TMountPoint> LogicalDrives(const QList<TMountPoint>& mounts, bool all);
// The label of a mounted block device (its name in /dev/disk/by-label); "" when it has none.
QXT_EXPORT QString VolumeLabel(const TMountPoint& mount);
// The file-system UUID of a mounted block device (its name in /dev/disk/by-uuid); "" when it
// has none.
QXT_EXPORT QString VolumeUuid(const TMountPoint& mount);

// Drive types, numbered as GetDriveType numbers them.
constexpr int DRIVE_UNKNOWN = 0;
constexpr int DRIVE_NO_ROOT_DIR = 1;
constexpr int DRIVE_REMOVABLE = 2;
constexpr int DRIVE_FIXED = 3;
constexpr int DRIVE_REMOTE = 4;
constexpr int DRIVE_CDROM = 5;
constexpr int DRIVE_RAMDISK = 6;

// The type of a mounted file system: remote (nfs, cifs, sshfs, …), CD-ROM (iso9660, udf or a
// /dev/sr* device), RAM disk (tmpfs, ramfs), unknown (pseudo file systems), removable (the
// block device's removable flag) or fixed.
QXT_EXPORT int DriveTypeOf(const TMountPoint& mount);
// The type of the drive whose root is Root; DRIVE_NO_ROOT_DIR when Root is no mount point.
QXT_EXPORT int GetDriveType(const QString& Root);

// The bytes the caller may still write on the file system holding Path, from statvfs: the
// Linux twin of DiskFree. A path that does not exist yet counts as part of its nearest existing
// parent directory. -1 ("not ready") when that cannot be reached: the path runs through a file,
// a directory on the way may not be searched, or the file system does not answer.
QXT_EXPORT qint64 DiskFree(const QString& Path);
// Whether two paths (taken as DiskFree takes them) lie on the same mounted file system; false
// when either cannot be reached.
QXT_EXPORT bool IsSameDrive(const QString& A, const QString& B);
