#pragma once

// The sound readers take file names: each input is written to a file of the given name in a
// directory of its own (in memory where /dev/shm exists) before it is read.

#include <QDir>
#include <QFile>
#include <QString>
#include <QTemporaryDir>
#include <cstddef>
#include <cstdint>

inline QString soundInputFile(const QString& name, const std::uint8_t* data, std::size_t size) {
    static QTemporaryDir dir(QDir(QStringLiteral("/dev/shm")).exists()
                                 ? QStringLiteral("/dev/shm/qxfuzz-XXXXXX")
                                 : QDir::tempPath() + QStringLiteral("/qxfuzz-XXXXXX"));
    const QString path = dir.filePath(name);
    QFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        file.write(reinterpret_cast<const char*>(data), qint64(size));
    return path;
}
