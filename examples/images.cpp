// examples/images.cpp: a GIF file loads like any other picture, and a fill image paints colour
// bands behind other controls.
#include <qxtools/QXGif.h>
#include <qxtools/Qxfimage.h>
#include <qxtools/TPicture.h>

#include <QApplication>
#include <cstdio>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    if (argc < 3) {
        std::fprintf(stderr, "images GIF-DATEI PNG-DATEI\n");
        return 2;
    }
    // TGIFImage is registered for ".gif", so TPicture picks it by the file's extension.
    TPicture picture;
    picture.LoadFromFile(QString::fromLocal8Bit(argv[1]));
    std::printf("%s %d x %d\n", qPrintable(picture.Graphic()->ClassName()), picture.Width(),
                picture.Height());

    // Sixteen bands from navy at the top to aqua at the bottom.
    TQXFillImage fill;
    fill.SetRBFromColor(clNavy);
    fill.SetRBToColor(clAqua);
    fill.SetRBSteps(16);
    fill.SetFillStyle(vRAINBOW);
    fill.resize(240, 120);
    return fill.grab().save(QString::fromLocal8Bit(argv[2])) ? 0 : 1;
}
