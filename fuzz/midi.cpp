// Feeds arbitrary bytes to the MIDI length reader, as a Standard MIDI File and as an RMID
// RIFF file.
#include "Qxutil.h"
#include "SoundInput.h"

#include <QCoreApplication>

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    static QCoreApplication app(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    TWAVInfo info;
    qxtGetWavInfo(soundInputFile(QStringLiteral("input.mid"), data, size), info);
    qxtGetWavInfo(soundInputFile(QStringLiteral("input.rmi"), data, size), info);
    return 0;
}
