// qxtool gif2bmp: the first image of a GIF file as the 8-bit BMP file the decoder builds.
#include "Command.h"
#include "QXGif.h"

#include <QFile>

namespace {

int gif2bmp(const QStringList& args);

const qxtool::Command command{QStringLiteral("gif2bmp"), QStringLiteral("gif2bmp IN.gif OUT.bmp"),
                              QStringLiteral("Decode the first image of a GIF file into a BMP"),
                              gif2bmp};

int gif2bmp(const QStringList& args) {
    if (args.size() != 2)
        return qxtool::usageError(command);
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

} // namespace

QXTOOL_COMMAND(command)
