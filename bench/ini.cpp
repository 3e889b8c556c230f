// Read-modify-write of one key in INI files of 10, 1,000 and 100,000 keys: TIniFile (which
// re-reads the file and replaces it atomically under a lock on every write) beside QSettings
// in INI format (which parses the file into a map and writes it back on sync).
#include "TIniFile.h"

#include <QCoreApplication>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace {

// A file of `keys` keys spread over sections of 100 keys ("[S0]" .. ), as both libraries
// write it.
QString makeFile(const QTemporaryDir& dir, const char* name, int keys) {
    const QString path = dir.filePath(QLatin1String(name));
    QByteArray text;
    for (int i = 0; i < keys; ++i) {
        if (i % 100 == 0)
            text += (i ? "\n[S" : "[S") + QByteArray::number(i / 100) + "]\n";
        text += "key" + QByteArray::number(i) + "=" + QByteArray::number(i) + "\n";
    }
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly) || f.write(text) != text.size())
        return QString();
    return path;
}

// The key in the middle of the file.
QString middleSection(int keys) {
    return QStringLiteral("S%1").arg(keys / 2 / 100);
}
QString middleKey(int keys) {
    return QStringLiteral("key%1").arg(keys / 2);
}

void BM_TIniFile(benchmark::State& state) {
    const int keys = int(state.range(0));
    QTemporaryDir dir;
    const QString path = makeFile(dir, "ours.ini", keys);
    const QString section = middleSection(keys);
    const QString key = middleKey(keys);
    for (auto _ : state) {
        TIniFile ini(path);
        const int v = ini.ReadInteger(section, key, 0);
        ini.WriteInteger(section, key, v + 1);
    }
    if (TIniFile(path).ReadInteger(section, key, 0) != keys / 2 + int(state.iterations()))
        state.SkipWithError("the value was not incremented every time");
}

void BM_QSettings(benchmark::State& state) {
    const int keys = int(state.range(0));
    QTemporaryDir dir;
    const QString path = makeFile(dir, "qt.ini", keys);
    const QString name = middleSection(keys) + QLatin1Char('/') + middleKey(keys);
    for (auto _ : state) {
        QSettings settings(path, QSettings::IniFormat);
        const int v = settings.value(name, 0).toInt();
        settings.setValue(name, v + 1);
        settings.sync();
    }
    if (QSettings(path, QSettings::IniFormat).value(name).toInt() !=
        keys / 2 + int(state.iterations()))
        state.SkipWithError("the value was not incremented every time");
}

BENCHMARK(BM_TIniFile)->Arg(10)->Arg(1000)->Arg(100000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_QSettings)->Arg(10)->Arg(1000)->Arg(100000)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
