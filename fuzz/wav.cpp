// Feeds arbitrary bytes to the WAVE readers: TQXWAV's format reading and waveform, and
// qxtGetWavInfo.
#include "QXWAV.h"
#include "Qxutil.h"
#include "SoundInput.h"

#include <QApplication>

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QApplication app(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QString file = soundInputFile(QStringLiteral("input.wav"), data, size);
    // Made after the application and so destroyed before it.
    static TQXWAV wav;
    wav.resize(16, 16);
    try {
        wav.SetFileName(file);
    } catch (const Exception&) {
        // The reader's messages are the expected outcome of bad input.
    }
    // The waveform reads the file's bytes at every step.
    wav.grab();
    TWAVInfo info;
    qxtGetWavInfo(file, info);
    return 0;
}
