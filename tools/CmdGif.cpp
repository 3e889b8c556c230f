// qxtool gif2bmp: the first image of a GIF file as the 8-bit BMP file the decoder builds.
#include "Command.h"
#include "QXGif.h"

#include <QFile>

namespace {

// The decoder's BMP file. When the image data ended early that file holds only the completed
// rows, which readers reject; the bitmap's rows are written instead (the missing ones at
// palette entry 0), and the number of rows decoded is said.
QByteArray bmpFile(const TGIFImage& gif, const QImage& image) {
    constexpr qsizetype kPixelOffset = 1078;
    const QByteArray& stream = gif.BitmapStream();
    const qsizetype stride = image.bytesPerLine();
    if (stream.size() >= kPixelOffset + stride * image.height())
        return stream;
    qxtool::err() << "qxtool: the image data ends early: "
                  << (stream.size() - kPixelOffset) / stride << " of " << image.height()
                  << " rows decoded" << Qt::endl;
    QByteArray file = stream.left(kPixelOffset);
    for (int y = image.height() - 1; y >= 0; --y) {
        file.append(reinterpret_cast<const char*>(image.constScanLine(y)), image.width());
        file.append(stride - image.width(), '\0');
    }
    return file;
}

int gif2bmp(const qxtool::Call& call) {
    const QStringList& args = call.args;
    try {
        TGIFImage gif;
        gif.LoadFromFile(args[0]);
        const TBitmap* bitmap = gif.GetBitmap();
        if (bitmap->Empty()) {
            // The walk ends before an image, as at an animation's NETSCAPE looping block.
            qxtool::err() << "qxtool: no image found in " << args[0] << Qt::endl;
            return 1;
        }
        const QByteArray bmp = bmpFile(gif, bitmap->Image());
        QFile out(args[1]);
        if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate) || out.write(bmp) != bmp.size()) {
            qxtool::err() << "qxtool: cannot write " << args[1] << ": " << out.errorString()
                          << Qt::endl;
            return 1;
        }
        qxtool::out() << "Width: " << bitmap->Width() << '\n'
                      << "Height: " << bitmap->Height() << '\n'
                      << "Delays: " << gif.Delays().size() << '\n'
                      << "Bytes: " << bmp.size() << '\n';
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
    .exitCodes = {{"0", "the BMP file was written (an image whose data ends early at full "
                        "height, with a note on standard error)"},
                  {"1", "the GIF could not be decoded (the decoder's message on standard error), "
                        "holds no image (\"no image found\", as animated GIFs with a looping "
                        "block) or OUT.bmp could not be written"}},
    .examples = {"qxtool gif2bmp logo.gif logo.bmp"},
    .run = gif2bmp};

} // namespace

QXTOOL_COMMAND(command)
