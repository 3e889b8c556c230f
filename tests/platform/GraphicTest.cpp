#include "SysUtils.h"
#include "TGraphic.h"
#include "TPicture.h"
#include "TStrings.h"
#include "TestSupport.h"

#include <QBuffer>
#include <gtest/gtest.h>

namespace {

QByteArray bmpBytes(TBitmap& b) {
    QBuffer buf;
    buf.open(QIODevice::WriteOnly);
    b.SaveToStream(buf);
    return buf.data();
}

// A graphic class that only counts how it was made, for the registry tests.
class TCountingGraphic : public TBitmap {
public:
    static constexpr const char* StaticClassName = "TCountingGraphic";
    QString ClassName() const override { return QStringLiteral("TCountingGraphic"); }
};

} // namespace

TEST(Bitmap, BmpStreamRoundTripKeepsPixels) {
    TBitmap a(3, 2);
    a.Canvas()->SetPixel(2, 1, clTeal);
    const QByteArray bytes = bmpBytes(a);
    ASSERT_TRUE(bytes.startsWith("BM"));
    QBuffer in;
    in.setData(bytes);
    in.open(QIODevice::ReadOnly);
    TBitmap b;
    b.LoadFromStream(in);
    EXPECT_EQ(b.Width(), 3);
    EXPECT_EQ(b.Height(), 2);
    EXPECT_EQ(b.Canvas()->Pixels(2, 1), clTeal);
}

TEST(Bitmap, RejectsWhatIsNotABmp) {
    QBuffer in;
    in.setData(QByteArray("GIF89a-not-a-bitmap"));
    in.open(QIODevice::ReadOnly);
    TBitmap b;
    try {
        b.LoadFromStream(in);
        FAIL() << "no exception";
    } catch (const EInvalidGraphic& e) {
        EXPECT_EQ(e.Message(), QStringLiteral("Bitmap image is not valid"));
    }
}

TEST(Bitmap, ResizingKeepsTheTopLeftAndAssignCopies) {
    TBitmap a(2, 2);
    a.Canvas()->SetPixel(1, 1, clRed);
    a.SetSize(4, 3);
    EXPECT_EQ(a.Canvas()->Pixels(1, 1), clRed);
    EXPECT_EQ(a.Canvas()->Pixels(3, 2), clBlack);
    TBitmap b;
    b.Assign(&a);
    a.Canvas()->SetPixel(1, 1, clBlue);
    EXPECT_EQ(b.Canvas()->Pixels(1, 1), clRed);
    TStringList list;
    try {
        b.Assign(&list);
        FAIL() << "no exception";
    } catch (const EConvertError& e) {
        EXPECT_EQ(e.Message(), QStringLiteral("Cannot assign a TStringList to a TBitmap"));
    }
}

TEST(Picture, LoadsByExtensionCaseBlindAndRejectsUnknownOnes) {
    qxtest::TempDir dir;
    TBitmap src(5, 4);
    const QString file = dir.write(QStringLiteral("pic.BMP"), bmpBytes(src));
    TPicture pic;
    int changes = 0;
    pic.OnChange = [&](TPicture*) { ++changes; };
    pic.LoadFromFile(file);
    ASSERT_NE(pic.Graphic(), nullptr);
    EXPECT_EQ(pic.Graphic()->ClassName(), QStringLiteral("TBitmap"));
    EXPECT_EQ(pic.Width(), 5);
    EXPECT_GE(changes, 1);
    const QString odd = dir.write(QStringLiteral("pic.xyz"), QByteArray("x"));
    try {
        pic.LoadFromFile(odd);
        FAIL() << "no exception";
    } catch (const EInvalidGraphic& e) {
        EXPECT_EQ(e.Message(), QStringLiteral("Unknown picture file extension (.xyz)"));
    }
}

TEST(Picture, RegistryPrefersTheNewestAndForgetsUnregisteredClasses) {
    TPicture::RegisterFileFormat(QStringLiteral("Bmp"), QStringLiteral("Counting"),
                                 GraphicClassOf<TCountingGraphic>());
    EXPECT_STREQ(TPicture::GraphicClassForExtension(QStringLiteral("bmp")).Name,
                 "TCountingGraphic");
    EXPECT_TRUE(TPicture::FileDialogFilter().contains(QStringLiteral("Counting (*.bmp)")));
    TPicture::UnregisterGraphicClass(GraphicClassOf<TCountingGraphic>());
    EXPECT_STREQ(TPicture::GraphicClassForExtension(QStringLiteral(".BMP")).Name, "TBitmap");
    EXPECT_EQ(TPicture::GraphicClassForExtension(QStringLiteral("none")).Create, nullptr);
}

TEST(Picture, SetGraphicCopiesAndBitmapReplacesOtherClasses) {
    TBitmap src(2, 2);
    TPicture pic;
    pic.SetGraphic(&src);
    ASSERT_NE(pic.Graphic(), nullptr);
    EXPECT_NE(pic.Graphic(), &src);
    EXPECT_EQ(pic.Width(), 2);
    pic.Icon();
    EXPECT_EQ(pic.Graphic()->ClassName(), QStringLiteral("TIcon"));
    EXPECT_EQ(pic.Bitmap()->Width(), 0);
    EXPECT_EQ(pic.Graphic()->ClassName(), QStringLiteral("TBitmap"));
}

TEST(Picture, LargeJpegLoadsInBandsShownAsTheyArriveAndAFailureKeepsTheOldPicture) {
    qxtest::TempDir dir;
    QImage big(2000, 1200, QImage::Format_RGB32);
    big.fill(Qt::white);
    for (int y = 0; y < big.height(); ++y)
        for (int x = 0; x < 100; ++x)
            big.setPixel(x, y, y < 600 ? qRgb(255, 0, 0) : qRgb(0, 0, 255));
    const QString file = dir.file(QStringLiteral("big.jpg"));
    ASSERT_TRUE(big.save(file, "JPEG", 95));

    TPicture pic;
    QList<int> stages;
    QList<int> percents;
    QList<TRect> ready;
    QList<QRgb> shownAtTop;
    pic.OnProgress = [&](TPersistent*, TProgressStage stage, int percent, bool redraw,
                         const TRect& r, const QString& msg) {
        EXPECT_EQ(msg, QStringLiteral("Lesen"));
        stages << stage;
        percents << percent;
        if (redraw) {
            ready << r;
            // While loading, the picture's graphic is the one arriving, drawable as it is.
            auto* bitmap = dynamic_cast<TBitmap*>(pic.Graphic());
            shownAtTop << (bitmap ? bitmap->Image().pixel(50, r.Top) : 0);
        }
    };
    pic.LoadFromFile(file);
    EXPECT_EQ(stages,
              (QList<int>{psStarting, psRunning, psRunning, psRunning, psRunning, psEnding}));
    EXPECT_EQ(percents, (QList<int>{0, 25, 50, 75, 100, 100}));
    ASSERT_EQ(ready.size(), 4);
    EXPECT_EQ(ready[0], Rect(0, 0, 2000, 300));
    EXPECT_EQ(ready[3], Rect(0, 900, 2000, 1200));
    EXPECT_GT(qRed(shownAtTop[0]), 200);
    EXPECT_GT(qBlue(shownAtTop[3]), 200);
    EXPECT_EQ(pic.Width(), 2000);

    const QString broken = dir.write(QStringLiteral("broken.jpg"), QByteArray("not a jpeg"));
    EXPECT_THROW(pic.LoadFromFile(broken), EInvalidGraphic);
    EXPECT_EQ(pic.Width(), 2000);
}
