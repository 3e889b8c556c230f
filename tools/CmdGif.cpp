// qxtool gif2bmp: the first image of a GIF file as the 8-bit BMP file the decoder builds.
#include "Command.h"
#include "QXGif.h"

#include <QFile>

namespace {

int gif2bmp(const qxtool::Call& call) {
    const QStringList& args = call.args;
    try {
        TGIFImage gif;
        gif.LoadFromFile(args[0]);
        const TBitmap* bitmap = gif.GetBitmap();
        QFile out(args[1]);
        if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate) ||
            out.write(gif.BitmapStream()) != gif.BitmapStream().size()) {
            qxtool::err() << "qxtool: cannot write " << args[1] << ": " << out.errorString()
                          << Qt::endl;
            return 1;
        }
        qxtool::out() << "Width: " << bitmap->Width() << '\n'
                      << "Height: " << bitmap->Height() << '\n'
                      << "Delays: " << gif.Delays().size() << '\n'
                      << "Bytes: " << gif.BitmapStream().size() << '\n';
        return 0;
    } catch (const Exception& e) {
        qxtool::err() << e.Message() << Qt::endl;
        return 1;
    }
}

const qxtool::Command command{
    .name = "gif2bmp",
    .summary = "decode the first image of a GIF file into a BMP file",
    .arguments = {{"IN.gif", "the GIF file to read"},
                  {"OUT.bmp", "the 8-bit BMP file to write (replaced if it exists)"}},
    .details = "Prints the image's Width, Height, the number of frame Delays and the BMP's Bytes.",
    .exitCodes = {{"0", "the BMP file was written"},
                  {"1", "the GIF could not be decoded (the decoder's message on standard error) "
                        "or OUT.bmp could not be written"}},
    .examples = {"qxtool gif2bmp logo.gif logo.bmp"},
    .run = gif2bmp};

} // namespace

QXTOOL_COMMAND(command)
