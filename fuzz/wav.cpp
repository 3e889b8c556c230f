// Feeds arbitrary bytes to the WAVE readers: TQXWAV's format reading and waveform, and
// qxtGetWavInfo.
#include "QXWAV.h"
#include "Qxutil.h"
#include "SoundInput.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <cstdlib>

namespace {
QApplication* app = nullptr;
TQXWAV* wav = nullptr;
} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    app = new QApplication(*argc, *argv);
    // Qt keeps its font cache in a global made at the first text drawn, and frees the cache
    // when the application goes. libFuzzer ends with exit(), so the application must be
    // deleted by an exit handler registered after that global exists, or the cache is gone
    // before the application and leaks. One text is drawn here to make it now.
    QImage probe(8, 8, QImage::Format_RGB32);
    QPainter(&probe).drawText(0, 8, QStringLiteral("x"));
    wav = new TQXWAV;
    wav->resize(16, 16);
    std::atexit([]() {
        delete wav;
        delete app;
    });
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QString file = soundInputFile(QStringLiteral("input.wav"), data, size);
    try {
        wav->SetFileName(file);
    } catch (const Exception&) {
        // The reader's messages are the expected outcome of bad input.
    }
    // The waveform reads the file's bytes at every step.
    wav->grab();
    TWAVInfo info;
    qxtGetWavInfo(file, info);
    return 0;
}
