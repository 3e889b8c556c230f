// Feeds arbitrary text to the name matchers, the path functions and the mount table reader:
// "NAME\nMASK\nMOUNTINFO…". Checks that "*" and a pattern equal to the name always match.
#include "Drives.h"
#include "FindFile.h"
#include "QxutilFiles.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    const QList<QByteArray> parts = bytes.split('\n');
    const QString name = QString::fromUtf8(parts.value(0));
    const QString mask = QString::fromUtf8(parts.value(1));

    MatchesMask(name, mask);
    qxtIsMatch(name, mask);
    if (!MatchesMask(name, QStringLiteral("*")) || !qxtIsMatch(name, QStringLiteral("*")))
        std::abort();
    const bool literal = !name.contains(QLatin1Char('*')) && !name.contains(QLatin1Char('?'));
    if (literal && !MatchesMask(name, name))
        std::abort();
    if (literal && !name.contains(QLatin1Char(';')) && !qxtIsMatch(name, name))
        std::abort();

    qxtParentDir(name);
    qxtDirName(name);
    QString path, base, ext;
    qxtSplitFileName(name, path, base, ext);
    if (!name.isEmpty() && !qxtCheckPath(name).endsWith(QLatin1Char('/')))
        std::abort();

    for (const TMountPoint& m : ParseMountInfo(bytes)) {
        if (!m.Root.endsWith(QLatin1Char('/')))
            std::abort();
        DriveTypeOf(m);
    }
    return 0;
}
