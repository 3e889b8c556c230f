#include "FileUtils.h"

#include <QDir>
#include <QFile>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

QByteArray native(const QString& name) {
    return QFile::encodeName(name);
}

// Closes a descriptor when it goes out of scope.
struct Fd {
    int fd = -1;
    explicit Fd(int f) : fd(f) {}
    Fd(const Fd&) = delete;
    Fd& operator=(const Fd&) = delete;
    ~Fd() {
        if (fd >= 0)
            ::close(fd);
    }
};

bool writeAll(int fd, const char* data, ssize_t size) {
    while (size > 0) {
        const ssize_t n = ::write(fd, data, std::size_t(size));
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return false;
        data += n;
        size -= n;
    }
    return true;
}

} // namespace

QString ExtractFilePath(const QString& FileName) {
    return FileName.left(FileName.lastIndexOf(PathDelim) + 1);
}

QString ExtractFileName(const QString& FileName) {
    return FileName.mid(FileName.lastIndexOf(PathDelim) + 1);
}

QString ExtractFileExt(const QString& FileName) {
    const QString name = ExtractFileName(FileName);
    const qsizetype dot = name.lastIndexOf(QLatin1Char('.'));
    return dot < 0 ? QString() : name.mid(dot);
}

QString ExpandFileName(const QString& FileName) {
    if (FileName.isEmpty())
        return QDir::currentPath();
    QString full = QDir::cleanPath(QDir::current().absoluteFilePath(FileName));
    if (FileName.endsWith(PathDelim) && !full.endsWith(PathDelim))
        full += PathDelim;
    return full;
}

bool FileExists(const QString& FileName) {
    struct stat st {};
    return !FileName.isEmpty() && ::lstat(native(FileName).constData(), &st) == 0 &&
           !S_ISDIR(st.st_mode);
}

bool DirectoryExists(const QString& Dir) {
    struct stat st {};
    return !Dir.isEmpty() && ::stat(native(Dir).constData(), &st) == 0 && S_ISDIR(st.st_mode);
}

bool ForceDirectories(const QString& Dir) {
    if (Dir.isEmpty())
        return false;
    return QDir().mkpath(Dir) && DirectoryExists(Dir);
}

bool RenameFile(const QString& OldName, const QString& NewName) {
    const QByteArray from = native(OldName), to = native(NewName);
    struct stat st {};
    // Renaming an entry to its own name changes nothing and succeeds.
    if (ExpandFileName(OldName) == ExpandFileName(NewName))
        return ::lstat(from.constData(), &st) == 0;
    if (::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0)
        return true;
    if (errno != EINVAL && errno != ENOSYS)
        return false;
    // A file system without the no-replace flag: check first, then rename.
    if (::lstat(to.constData(), &st) == 0)
        return false;
    return ::rename(from.constData(), to.constData()) == 0;
}

bool DeleteFile(const QString& FileName) {
    const QByteArray path = native(FileName);
    struct stat st {};
    if (::lstat(path.constData(), &st) != 0 || S_ISDIR(st.st_mode))
        return false;
    if (!S_ISLNK(st.st_mode) && !(st.st_mode & S_IWUSR))
        return false;
    return ::unlink(path.constData()) == 0;
}

bool CopyFile(const QString& ExistingFileName, const QString& NewFileName, bool FailIfExists) {
    Fd in(::open(native(ExistingFileName).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    struct stat st {};
    if (in.fd < 0 || ::fstat(in.fd, &st) != 0 || !S_ISREG(st.st_mode))
        return false;
    const QByteArray target = native(NewFileName);
    struct stat existing {};
    if (::stat(target.constData(), &existing) == 0) {
        if (FailIfExists || S_ISDIR(existing.st_mode) || !(existing.st_mode & S_IWUSR))
            return false;
        if (existing.st_dev == st.st_dev && existing.st_ino == st.st_ino)
            return false; // a file cannot be copied onto itself
    }
    Fd out(::open(target.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
    if (out.fd < 0)
        return false;
    char buffer[65536];
    for (;;) {
        const ssize_t n = ::read(in.fd, buffer, sizeof buffer);
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0 || !writeAll(out.fd, buffer, n))
            return false;
        if (n == 0)
            break;
    }
    const struct timespec times[2] = {st.st_atim, st.st_mtim};
    return ::fchmod(out.fd, st.st_mode & 07777) == 0 && ::futimens(out.fd, times) == 0;
}

bool RemoveDir(const QString& Dir) {
    return ::rmdir(native(Dir).constData()) == 0;
}
