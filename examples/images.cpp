// examples/images.cpp: a GIF file loads like any other picture; a proportional image shows it
// on a fill image that paints colour bands over the whole window.
#include <qxtools/QXGif.h>
#include <qxtools/QXImage.h>
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

    QWidget window;
    window.resize(240, 120);
    // Sixteen bands from navy at the top to aqua at the bottom, covering the window.
    auto* fill = new TQXFillImage(&window);
    fill->SetRBFromColor(clNavy);
    fill->SetRBToColor(clAqua);
    fill->SetRBSteps(16);
    fill->SetFillStyle(vRAINBOW);
    fill->SetAlign(alClient);
    // The picture as large as it fits into a black box of 80 x 80 pixels, in its proportions.
    auto* image = new TQXImage(&window);
    image->SetBounds(80, 20, 80, 80);
    image->SetColor(clBlack);
    image->SetStretch(true);
    image->SetPicture(&picture);
    return window.grab().save(QString::fromLocal8Bit(argv[2])) ? 0 : 1;
}
