// Feeds arbitrary bytes to the GIF graphic: load, then decode the first image.
#include "QXGif.h"

#include <QBuffer>
#include <QGuiApplication>
#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QGuiApplication app(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    QBuffer buffer;
    buffer.setData(reinterpret_cast<const char*>(data), qsizetype(size));
    buffer.open(QIODevice::ReadOnly);
    TGIFImage gif;
    try {
        gif.LoadFromStream(buffer);
        gif.GetBitmap();
    } catch (const Exception&) {
        // Decoder and bitmap errors are the expected outcome of bad input.
    }
    return 0;
}
