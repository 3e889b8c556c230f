#include "QXGif.h"
#include "QXImage.h"
#include "SysUtils.h"
#include "TestSupport.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPainter>
#include <gtest/gtest.h>

namespace {

// Runs the control's paint as its paint event does and returns what it then shows.
class TPaintedImage : public TQXImage {
public:
    using TQXImage::DestRect;
    QImage paintImage() {
        QImage device(Width(), Height(), QImage::Format_RGB32);
        QPainter painter(&device);
        TGraphicControl::Canvas()->Attach(&painter, device.rect());
        Paint();
        TGraphicControl::Canvas()->Detach();
        painter.end();
        EXPECT_EQ(device, ScreenImage());
        return device;
    }
};

// Counts the paint events a widget gets.
class TPaintCounter : public QObject {
public:
    bool eventFilter(QObject*, QEvent* e) override {
        paints += e->type() == QEvent::Paint;
        return false;
    }
    int paints = 0;
};

void setBitmap(TQXImage& image, int w, int h, TColor colour) {
    TBitmap bitmap(w, h);
    bitmap.Canvas()->Brush.Color = colour;
    bitmap.Canvas()->FillRect(Rect(0, 0, w, h));
    image.Picture()->SetGraphic(&bitmap);
}

// A 1 x 1 GIF whose only pixel is red.
const QByteArray redGif("GIF89a\x01\x00\x01\x00\x80\x00\x00\xff\x00\x00\x00\x00\x00"
                        ",\x00\x00\x00\x00\x01\x00\x01\x00\x00\x02\x02\x44\x01\x00;",
                        35);

// A GIF without a colour table: it loads, and fails when it is first drawn.
const QByteArray tablelessGif("GIF89a\x01\x00\x01\x00\x00\x00\x00"
                              ",\x00\x00\x00\x00\x01\x00\x01\x00\x00\x02\x02\x44\x01\x00;",
                              29);

} // namespace

TEST(Image, StretchFitsProportionallyAndCentres) {
    TPaintedImage image;
    EXPECT_EQ(image.Width(), 105);
    EXPECT_EQ(image.Height(), 105);
    EXPECT_FALSE(image.Stretch() || image.Center() || image.AutoSize() || image.Transparent() ||
                 image.IncrementalDisplay());
    image.SetStretch(true);
    setBitmap(image, 200, 100, clRed);
    EXPECT_EQ(image.DestRect(), Bounds(0, 26, 105, 52));
    setBitmap(image, 100, 200, clRed);
    EXPECT_EQ(image.DestRect(), Bounds(26, 0, 52, 105));
    // Smaller pictures grow to fit as well.
    setBitmap(image, 10, 4, clRed);
    EXPECT_EQ(image.DestRect(), Bounds(0, 31, 105, 42));
    image.SetStretch(false);
    image.SetCenter(true);
    setBitmap(image, 45, 25, clRed);
    EXPECT_EQ(image.DestRect(), Bounds(30, 40, 45, 25));
    image.SetCenter(false);
    EXPECT_EQ(image.DestRect(), Bounds(0, 0, 45, 25));
    // An empty picture stretched counts as one pixel wide.
    image.Picture()->SetGraphic(nullptr);
    image.SetStretch(true);
    EXPECT_EQ(image.DestRect(), Bounds(0, 52, 105, 0));
}

TEST(Image, ANewTargetRefillsTheControlWithItsColour) {
    TPaintedImage image;
    image.SetColor(clBlue);
    image.SetStretch(true);
    setBitmap(image, 200, 100, clRed);
    ASSERT_TRUE(image.Opaque()) << "a stretched bitmap covers its target";
    QImage shot = image.paintImage();
    EXPECT_EQ(qxtest::pixelBGR(shot, 5, 50), int(clRed));
    EXPECT_EQ(qxtest::pixelBGR(shot, 50, 5), int(clBlue));
    // The same target again: an opaque control leaves what lies around the picture.
    image.SetColor(clYellow);
    shot = image.paintImage();
    EXPECT_EQ(qxtest::pixelBGR(shot, 50, 5), int(clBlue));
    // A tall picture: the new target clears what the wide one left.
    setBitmap(image, 100, 200, clRed);
    shot = image.paintImage();
    EXPECT_EQ(qxtest::pixelBGR(shot, 5, 50), int(clYellow));
    EXPECT_EQ(qxtest::pixelBGR(shot, 50, 5), int(clRed));

    // A GIF keeps the control opaque, so only the refill clears what the stretched picture
    // left when Stretch goes off.
    qxtest::TempDir dir;
    image.Picture()->LoadFromFile(dir.write(QStringLiteral("red.gif"), redGif));
    ASSERT_EQ(image.Picture()->Width(), 1);
    shot = image.paintImage();
    EXPECT_EQ(qxtest::pixelBGR(shot, 0, 0), int(clRed));
    EXPECT_EQ(qxtest::pixelBGR(shot, 104, 104), int(clRed));
    image.SetStretch(false);
    shot = image.paintImage();
    EXPECT_EQ(qxtest::pixelBGR(shot, 0, 0), int(clRed));
    EXPECT_EQ(qxtest::pixelBGR(shot, 1, 0), int(clYellow));
    EXPECT_EQ(qxtest::pixelBGR(shot, 50, 50), int(clYellow));
    image.SetColor(clBlue);
    shot = image.paintImage();
    EXPECT_EQ(qxtest::pixelBGR(shot, 50, 50), int(clYellow));
}

TEST(Image, OpacityFollowsCoverageTransparencyAndGifs) {
    qxtest::TempDir dir;
    TPaintedImage image;
    image.SetColor(clBlue);
    setBitmap(image, 50, 50, clRed);
    EXPECT_FALSE(image.Opaque()) << "a small bitmap leaves room around it";
    EXPECT_EQ(qxtest::pixelBGR(image.paintImage(), 80, 80), int(clBlue));
    // Not opaque: every paint fills with Color first, also without a new target.
    image.SetColor(clYellow);
    EXPECT_EQ(qxtest::pixelBGR(image.paintImage(), 80, 80), int(clYellow));
    setBitmap(image, 105, 105, clRed);
    EXPECT_TRUE(image.Opaque());
    image.SetTransparent(true);
    EXPECT_TRUE(image.Picture()->Graphic()->Transparent());
    EXPECT_FALSE(image.Opaque());
    image.SetTransparent(false);
    EXPECT_FALSE(image.Picture()->Graphic()->Transparent());
    EXPECT_TRUE(image.Opaque());

    image.Picture()->LoadFromFile(dir.write(QStringLiteral("red.gif"), redGif));
    ASSERT_NE(dynamic_cast<TGIFImage*>(image.Picture()->Graphic()), nullptr);
    EXPECT_TRUE(image.Opaque()) << "a GIF makes the control opaque whatever its size";
    image.SetTransparent(true);
    EXPECT_TRUE(image.Opaque());
    image.Picture()->SetGraphic(nullptr);
    EXPECT_FALSE(image.Opaque());

    image.SetAutoSize(true);
    setBitmap(image, 33, 44, clRed);
    EXPECT_EQ(image.Width(), 33);
    EXPECT_EQ(image.Height(), 44);
    image.Picture()->SetGraphic(nullptr);
    EXPECT_EQ(image.Width(), 33) << "an empty picture leaves the size";
}

TEST(Image, CanvasNeedsABitmap) {
    TPaintedImage image;
    TCanvas* canvas = image.Canvas();
    ASSERT_NE(canvas, nullptr);
    EXPECT_EQ(image.Picture()->Width(), 105) << "an empty picture gets a bitmap of the control";
    EXPECT_EQ(image.Picture()->Height(), 105);
    canvas->Brush.Color = clRed;
    canvas->FillRect(Rect(0, 0, 10, 10));
    EXPECT_EQ(dynamic_cast<TBitmap*>(image.Picture()->Graphic())->Canvas()->Pixels(5, 5), clRed);

    TIcon icon;
    QImage pixels(16, 16, QImage::Format_ARGB32);
    pixels.fill(Qt::red);
    icon.SetImage(pixels);
    image.Picture()->SetGraphic(&icon);
    try {
        image.Canvas();
        FAIL() << "no exception";
    } catch (const EInvalidOperation& e) {
        EXPECT_TRUE(e.Message().contains(QStringLiteral("Bitmap"))) << e.Message().toStdString();
    }
}

TEST(Image, ProgressIsPassedOnAndRepaintsOnlyWithIncrementalDisplay) {
    qxtest::TempDir dir;
    QImage big(1800, 1200, QImage::Format_RGB32);
    big.fill(Qt::yellow);
    const QString file = dir.file(QStringLiteral("big.jpg"));
    ASSERT_TRUE(big.save(file, "JPEG"));

    for (bool incremental : {false, true}) {
        SCOPED_TRACE(incremental);
        TQXImage image;
        image.show();
        QCoreApplication::processEvents();
        TPaintCounter counter;
        image.installEventFilter(&counter);
        QList<int> percents;
        int paintsWhileLoading = 0;
        image.OnProgress = [&](TPersistent*, TProgressStage stage, int percent, bool, const TRect&,
                               const QString&) {
            percents << percent;
            if (stage == psEnding)
                paintsWhileLoading = counter.paints;
        };
        image.SetIncrementalDisplay(incremental);
        image.Picture()->LoadFromFile(file);
        // A large JPEG arrives in four bands.
        EXPECT_EQ(percents, (QList<int>{0, 25, 50, 75, 100, 100}));
        EXPECT_EQ(paintsWhileLoading, incremental ? 4 : 0);
        EXPECT_EQ(image.Picture()->Width(), 1800);
    }
}

TEST(Image, APaletteChangeIsTakenNoteOfOnlyWhileShown) {
    TQXImage image;
    setBitmap(image, 10, 10, clRed);
    TGraphic* graphic = image.Picture()->Graphic();
    graphic->SetPalette(7);
    graphic->SetPaletteModified(true);
    image.SetAutoSize(false);
    EXPECT_TRUE(graphic->PaletteModified()) << "a hidden control leaves the palette alone";
    image.show();
    QCoreApplication::processEvents();
    image.SetAutoSize(false);
    EXPECT_FALSE(graphic->PaletteModified());
}

TEST(Image, APictureFailingToDecodeIsReportedOnceAfterThePaint) {
    qxtest::TempDir dir;
    qxtest::DialogRecorder dialogs;
    TQXImage image;
    image.SetColor(clBlue);
    image.Picture()->LoadFromFile(dir.write(QStringLiteral("tableless.gif"), tablelessGif));
    TPaintCounter counter;
    image.installEventFilter(&counter);
    image.show();
    QCoreApplication::processEvents();
    image.repaint();
    image.repaint();
    EXPECT_GE(counter.paints, 2);
    QCoreApplication::processEvents();
    ASSERT_EQ(dialogs.requests.size(), 1);
    EXPECT_TRUE(dialogs.texts()[0].contains(QStringLiteral("color table")))
        << dialogs.texts()[0].toStdString();

    // The control goes on: a new picture is painted, without a message.
    setBitmap(image, 105, 105, clRed);
    QCoreApplication::processEvents();
    EXPECT_EQ(qxtest::pixelBGR(image.ScreenImage(), 50, 50), int(clRed));
    EXPECT_EQ(dialogs.requests.size(), 1);
}
