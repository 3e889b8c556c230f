#include "CopySupport.h"

#include <QDir>
#include <QFile>
#include <fcntl.h>
#include <sys/stat.h>

namespace copytest {

QByteArray bytes(qsizetype size, quint32 seed) {
    QByteArray out(size, Qt::Uninitialized);
    quint32 x = seed * 2654435761u + 1;
    for (qsizetype i = 0; i < size; ++i) {
        x ^= x << 13;
        x ^= x >> 17;
        x ^= x << 5;
        out[i] = char(x);
    }
    return out;
}

QByteArray readFile(const QString& name) {
    QFile f(name);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

QStringList entries(const QString& dir) {
    return QDir(dir).entryList(
        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
}

qint64 mtime(const QString& name) {
    struct stat st {};
    return ::stat(QFile::encodeName(name).constData(), &st) == 0 ? qint64(st.st_mtime) : -1;
}

void setMtime(const QString& name, qint64 seconds) {
    const struct timespec times[2] = {{time_t(seconds), 0}, {time_t(seconds), 0}};
    ASSERT_EQ(::utimensat(AT_FDCWD, QFile::encodeName(name).constData(), times, 0), 0);
}

int mode(const QString& name) {
    struct stat st {};
    return ::stat(QFile::encodeName(name).constData(), &st) == 0 ? int(st.st_mode & 07777) : -1;
}

CopyTest::CopyTest() {
    QDir(dir.path()).mkdir(QStringLiteral("src"));
    QDir(dir.path()).mkdir(QStringLiteral("dst"));
    TQXCopy::ClearCancel();
}

CopyTest::~CopyTest() {
    TQXCopy::ClearCancel();
}

QString CopyTest::src(const QString& name, const QByteArray& data) {
    return dir.write(name.contains(QLatin1Char('/')) ? name : QStringLiteral("src/") + name, data);
}

void CopyTest::watch(TQXCopy& copy) {
    const QString root = dir.path() + QLatin1Char('/');
    copy.OnStart = [this](QObject*) { log << QStringLiteral("start"); };
    copy.OnEnd = [this](QObject*) { log << QStringLiteral("end"); };
    copy.OnChange = [this, root](QObject*, int files, const QString& from, const QString& to) {
        log << QStringLiteral("change %1 %2 %3")
                   .arg(files)
                   .arg(QString(from).remove(root), QString(to).remove(root));
    };
}

} // namespace copytest
