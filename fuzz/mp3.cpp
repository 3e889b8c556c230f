// Feeds arbitrary bytes to the MP3 header and tag reader.
#include "Dialogs.h"
#include "QXMp3Info.h"
#include "SoundInput.h"

#include <QCoreApplication>

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    static QCoreApplication app(*argc, *argv);
    // The tag search's message is expected for short files; no dialog can be shown here.
    SetDialogHandler([](TDialogRequest&) { return int(mrOk); });
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    TMP3Format format;
    Tmp3TAG tag;
    GetMp3Info(soundInputFile(QStringLiteral("input.mp3"), data, size), format, tag);
    return 0;
}
