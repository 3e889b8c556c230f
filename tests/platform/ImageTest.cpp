#include "TImage.h"
#include "TestSupport.h"

#include <QImage>
#include <gtest/gtest.h>

using qxtest::pixelBGR;

namespace {

// A 20 x 10 bitmap: red with a blue bottom-left pixel.
void loadPicture(TImage& image) {
    TBitmap* b = image.Picture()->Bitmap();
    b->SetSize(20, 10);
    b->Canvas()->Brush.Color = clRed;
    b->Canvas()->FillRect(Rect(0, 0, 20, 10));
    b->Canvas()->SetPixel(0, 9, clBlue);
}

QImage render(TImage& image) {
    QImage out(image.size(), QImage::Format_RGB32);
    out.fill(Qt::white); // shows where the control draws nothing
    image.render(&out, QPoint(), QRegion(), QWidget::DrawChildren);
    return out;
}

} // namespace

TEST(Image, PlacesThePictureByStretchAndCenter) {
    TImage image;
    EXPECT_EQ(image.sizeHint(), QSize(105, 105));
    image.SetBounds(0, 0, 60, 30);
    loadPicture(image);
    QImage plain = render(image);
    EXPECT_EQ(pixelBGR(plain, 0, 0), clRed);
    EXPECT_EQ(pixelBGR(plain, 19, 8), clRed);
    EXPECT_EQ(pixelBGR(plain, 20, 0), clWhite);

    image.SetCenter(true);
    QImage centred = render(image);
    EXPECT_EQ(pixelBGR(centred, 19, 9), clWhite);
    EXPECT_EQ(pixelBGR(centred, 20, 10), clRed);
    EXPECT_EQ(pixelBGR(centred, 39, 19), clRed);
    EXPECT_EQ(pixelBGR(centred, 40, 20), clWhite);

    image.SetStretch(true);
    QImage stretched = render(image);
    EXPECT_EQ(pixelBGR(stretched, 59, 0), clRed);
    EXPECT_EQ(pixelBGR(stretched, 2, 29), clBlue);
}

TEST(Image, AutoSizeAndTransparent) {
    TImage image;
    image.SetAutoSize(true);
    loadPicture(image);
    EXPECT_EQ(image.size(), QSize(20, 10));
    image.SetTransparent(true);
    EXPECT_TRUE(image.Picture()->Graphic()->Transparent());
    // The bottom-left colour becomes a hole.
    QImage out = render(image);
    EXPECT_EQ(pixelBGR(out, 0, 9), clWhite);
    EXPECT_EQ(pixelBGR(out, 1, 9), clRed);
    // A new picture takes the setting too.
    TBitmap other(4, 4);
    image.Picture()->SetGraphic(&other);
    EXPECT_TRUE(image.Picture()->Graphic()->Transparent());
    EXPECT_EQ(image.size(), QSize(4, 4));
}
