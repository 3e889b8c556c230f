// Feeds arbitrary bytes to the INI parser as a file, reads every section, then writes and
// erases a section and checks that the file still says what was written.
#include "TIniFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    // Every write flushes the file to the disk; in memory that costs nothing.
    static QTemporaryDir dir(QFileInfo(QStringLiteral("/dev/shm")).isWritable()
                                 ? QStringLiteral("/dev/shm/qxfuzz-XXXXXX")
                                 : QDir::tempPath() + QStringLiteral("/qxfuzz-XXXXXX"));
    const QString path = dir.filePath(QStringLiteral("fuzz.ini"));
    {
        QFile f(path);
        if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate))
            std::abort();
        f.write(reinterpret_cast<const char*>(data), qint64(size));
    }
    TIniFile ini(path);
    TStringList sections;
    ini.ReadSections(&sections);
    TStringList lines;
    for (int i = 0; i < sections.Count() && i < 64; ++i) {
        ini.ReadSectionValues(sections[i], &lines);
        ini.ReadSection(sections[i], &lines);
        if (lines.Count() > 0)
            ini.ReadInteger(sections[i], lines[0], 0);
    }
    const QString section = QStringLiteral("Fuzz");
    const QString key = QStringLiteral("Key");
    ini.WriteString(section, key, QStringLiteral(" new value "));
    if (ini.ReadString(section, key, QString()) != QStringLiteral("new value"))
        std::abort();
    ini.EraseSection(section);
    if (ini.SectionExists(section) || ini.ValueExists(section, key))
        std::abort();
    return 0;
}
