// TGIFImage as a graphic: sharing, sizes, persistence, palette, animation and registration.
#include "GifBuilder.h"
#include "QXGif.h"
#include "TPicture.h"
#include "TTimer.h"
#include "TestSupport.h"

#include <QBuffer>
#include <QtEndian>
#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>

using namespace gifbuild;

namespace {

// A 4 x 3 image on a 20 x 15 logical screen, pixel value = x + 4 * y.
QByteArray smallGif() {
    std::vector<std::uint32_t> colours;
    for (std::uint32_t i = 0; i < 16; ++i)
        colours.push_back(0x100000 * i + 0x000010 * (15 - i));
    std::vector<std::uint8_t> pixels;
    for (std::uint8_t i = 0; i < 12; ++i)
        pixels.push_back(i);
    return header(20, 15, 4, colours) + graphicControl(5) + graphicControl(0) +
           imageDescriptor(4, 3) + imageData(4, pixels) + ';';
}

void loadInto(TGraphic& graphic, const QByteArray& bytes) {
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    graphic.LoadFromStream(buffer);
}

// Serves bytes a few at a time, as a slow file or a pipe does.
class TrickleDevice : public QIODevice {
public:
    TrickleDevice(QByteArray bytes, bool sequential)
        : m_bytes(std::move(bytes)), m_sequential(sequential) {
        open(QIODevice::ReadOnly);
    }
    bool isSequential() const override { return m_sequential; }
    qint64 size() const override { return m_sequential ? 0 : m_bytes.size(); }

protected:
    qint64 readData(char* data, qint64 maxSize) override {
        const qint64 n = std::min<qint64>({maxSize, 5, m_bytes.size() - m_at});
        std::memcpy(data, m_bytes.constData() + m_at, std::size_t(n));
        m_at += n;
        return n;
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    QByteArray m_bytes;
    qint64 m_at = 0;
    bool m_sequential;
};

// Lets a test put a second frame in place, as an animation would have one.
class TwoFrameGif : public TGIFImage {
public:
    void AddFrame(TBitmap* frame) { FrameList.emplace_back(frame); }
};

} // namespace

TEST(GifImage, SizeBeforeAndAfterDecoding) {
    TGIFImage gif;
    EXPECT_TRUE(gif.Empty());
    EXPECT_EQ(gif.Width(), 0);
    int changes = 0;
    gif.OnChange = [&](TGraphic*) { ++changes; };
    loadInto(gif, smallGif());
    EXPECT_EQ(changes, 1);
    EXPECT_TRUE(gif.PaletteModified());
    EXPECT_FALSE(gif.Empty());
    EXPECT_EQ(gif.Width(), 20);
    EXPECT_EQ(gif.Height(), 15);
    EXPECT_EQ(gif.Data().Width, 20);
    gif.DIBNeeded();
    EXPECT_EQ(gif.Width(), 4);
    EXPECT_EQ(gif.Height(), 3);
    EXPECT_EQ(gif.Data().Width, 4);
    EXPECT_EQ(gif.Data().Height, 3);
    EXPECT_EQ(gif.CurrentFrame(), 1);
    EXPECT_EQ(gif.Scale(), jsFullSize);
}

TEST(GifImage, AssignSharesDataAndEqualsComparesIt) {
    TGIFImage a, b, c;
    loadInto(a, smallGif());
    loadInto(c, smallGif());
    EXPECT_FALSE(a.Equals(&c)); // same bytes, separate loads
    b.Assign(&a);
    EXPECT_TRUE(b.Equals(&a));
    EXPECT_TRUE(a.Equals(&b));
    EXPECT_EQ(&a.Data(), &b.Data());
    EXPECT_EQ(b.Width(), 20); // a has no bitmap yet, so b has none either

    TBitmap* decoded = a.GetBitmap();
    TGIFImage d;
    d.Assign(&a);
    EXPECT_EQ(d.Width(), 4); // the bitmap came along
    EXPECT_EQ(d.FrameCount(), 0);
    EXPECT_EQ(d.GetBitmap()->Image(), decoded->Image());
    TBitmap other;
    EXPECT_FALSE(a.Equals(&other));
}

TEST(GifImage, AssignFromBitmapAndToBitmap) {
    TBitmap source(3, 2);
    TGIFImage gif;
    loadInto(gif, smallGif());
    gif.Assign(&source);
    EXPECT_FALSE(gif.Data().Stream.has_value());
    EXPECT_EQ(gif.Width(), 3);
    EXPECT_FALSE(gif.Empty());

    TGIFImage loaded;
    loadInto(loaded, smallGif());
    TBitmap target;
    target.Assign(&loaded); // decodes through AssignTo
    ASSERT_EQ(target.Width(), 4);
    EXPECT_EQ(target.Image().pixelIndex(3, 2), 11);

    TIcon icon;
    try {
        gif.Assign(&icon);
        FAIL() << "icon assigned";
    } catch (const EConvertError& e) {
        EXPECT_EQ(e.Message(), "Cannot assign a TIcon to a TGIFImage");
    }
}

TEST(GifImage, AbstractOperations) {
    TGIFImage gif;
    loadInto(gif, smallGif());
    QBuffer out;
    out.open(QIODevice::WriteOnly);
    for (const auto& call : std::initializer_list<std::function<void()>>{
             [&] { gif.SaveToStream(out); }, [&] { gif.SetWidth(5); }, [&] { gif.SetHeight(5); }}) {
        try {
            call();
            ADD_FAILURE() << "no error";
        } catch (const EAbstractError& e) {
            EXPECT_EQ(e.Message(), "Abstract Error");
        }
    }
    qxtest::TempDir dir;
    EXPECT_THROW(gif.SaveToFile(dir.file("x.gif")), EAbstractError);
}

TEST(GifImage, FormDataPersistence) {
    TGIFImage empty;
    QBuffer buffer;
    buffer.open(QIODevice::ReadWrite);
    empty.WriteData(buffer);
    EXPECT_EQ(buffer.data(), QByteArray(4, '\0'));

    TGIFImage restored;
    buffer.seek(0);
    restored.ReadData(buffer);
    ASSERT_TRUE(restored.Data().Stream.has_value());
    EXPECT_TRUE(restored.Data().Stream->isEmpty());
    EXPECT_FALSE(restored.Empty());
    TBitmap canvasOwner(8, 8);
    try {
        restored.Draw(canvasOwner.Canvas(), Rect(0, 0, 8, 8));
        FAIL() << "drew an empty file copy";
    } catch (const EGifException& e) {
        EXPECT_EQ(e.Message(), "Not a GIF file");
    }

    const QByteArray bytes = smallGif();
    TGIFImage gif;
    loadInto(gif, bytes);
    QBuffer stored;
    stored.open(QIODevice::ReadWrite);
    stored.write("xy"); // data need not start the stream
    gif.WriteData(stored);
    const quint32 length = qToLittleEndian(quint32(bytes.size()));
    EXPECT_EQ(stored.data().mid(2, 4), QByteArray(reinterpret_cast<const char*>(&length), 4));
    EXPECT_EQ(stored.data().mid(6), bytes);
    stored.write("tail");
    stored.seek(2);
    TGIFImage copy;
    copy.ReadData(stored);
    EXPECT_EQ(*copy.Data().Stream, bytes);
    EXPECT_EQ(stored.pos(), 6 + bytes.size());
    EXPECT_EQ(copy.GetBitmap()->Image().pixelIndex(1, 1), 5);

    // A length beyond the data is a read error.
    QBuffer bad;
    bad.setData(QByteArray("\x10\0\0\0GIF", 7));
    bad.open(QIODevice::ReadOnly);
    EXPECT_THROW(copy.ReadData(bad), EInOutError);
}

TEST(GifImage, FormDataFromDevicesThatDeliverInPieces) {
    const QByteArray bytes = smallGif();
    const quint32 length = qToLittleEndian(quint32(bytes.size()));
    const QByteArray stored = QByteArray(reinterpret_cast<const char*>(&length), 4) + bytes;
    for (bool sequential : {false, true}) {
        SCOPED_TRACE(sequential ? "sequential" : "random access");
        TrickleDevice device(stored + "next", sequential);
        TGIFImage gif;
        gif.ReadData(device);
        EXPECT_EQ(*gif.Data().Stream, bytes);
        EXPECT_EQ(device.read(4), "next");
        EXPECT_EQ(gif.GetBitmap()->Image().pixelIndex(3, 2), 11);

        // Data that ends before its stated length is a read error, however it is delivered.
        TrickleDevice cut(stored.left(stored.size() - 1), sequential);
        EXPECT_THROW(gif.ReadData(cut), EInOutError);
    }
}

TEST(GifImage, DrawStretchesTheBitmap) {
    std::vector<std::uint32_t> colours{0xFF0000, 0x00FF00, 0x0000FF, 0xFFFFFF};
    const QByteArray bytes = header(2, 2, 2, colours) + imageDescriptor(2, 2) +
                             imageData(2, std::vector<std::uint8_t>{0, 1, 2, 3}) + ';';
    TGIFImage gif;
    loadInto(gif, bytes);
    TBitmap target(6, 6);
    target.Canvas()->StretchDraw(Rect(1, 1, 5, 5), &gif);
    const QImage image = target.Image();
    EXPECT_EQ(qxtest::pixelBGR(image, 0, 0), 0x000000);
    EXPECT_EQ(qxtest::pixelBGR(image, 1, 1), 0x0000FF);
    EXPECT_EQ(qxtest::pixelBGR(image, 2, 2), 0x0000FF);
    EXPECT_EQ(qxtest::pixelBGR(image, 3, 1), 0x00FF00);
    EXPECT_EQ(qxtest::pixelBGR(image, 4, 2), 0x00FF00);
    EXPECT_EQ(qxtest::pixelBGR(image, 1, 4), 0xFF0000);
    EXPECT_EQ(qxtest::pixelBGR(image, 4, 4), 0xFFFFFF);
    EXPECT_EQ(qxtest::pixelBGR(image, 5, 5), 0x000000);
}

TEST(GifImage, PaletteChangeFreesTheBitmap) {
    TGIFImage gif;
    EXPECT_EQ(gif.Palette(), 0u);
    loadInto(gif, smallGif());
    gif.DIBNeeded();
    gif.SetPaletteModified(false);
    int changes = 0;
    gif.OnChange = [&](TGraphic*) { ++changes; };
    gif.SetPalette(0x1234);
    EXPECT_EQ(changes, 1);
    EXPECT_TRUE(gif.PaletteModified());
    EXPECT_EQ(gif.Palette(), 0u); // no bitmap now
    gif.SetPalette(0x1234);       // the same handle: nothing happens
    EXPECT_EQ(changes, 1);
    // The decoded frame is still shown; the size falls back to the data.
    EXPECT_EQ(gif.GetBitmap()->Width(), 4);
    EXPECT_EQ(gif.Width(), 4);
}

TEST(GifImage, ClipboardGoesThroughTheBitmap) {
    TGIFImage gif;
    QImage image(3, 3, QImage::Format_RGB32);
    image.fill(Qt::red);
    gif.LoadFromClipboardFormat(CF_BITMAP, image, 7);
    EXPECT_EQ(gif.Width(), 3);
    EXPECT_EQ(gif.Palette(), 7u);

    TGIFImage loaded;
    loadInto(loaded, smallGif());
    std::uint16_t format = 0;
    QImage data;
    HPALETTE palette = 1;
    loaded.SaveToClipboardFormat(format, data, palette);
    EXPECT_EQ(format, CF_BITMAP);
    EXPECT_EQ(data.size(), QSize(4, 3));
    EXPECT_EQ(palette, 0u);
}

TEST(GifImage, NewDataDoesNotReplaceDecodedFrames) {
    TGIFImage gif;
    loadInto(gif, smallGif());
    gif.DIBNeeded();
    loadInto(gif, simpleGif(9, 9, std::vector<std::uint8_t>(81, 1)));
    EXPECT_EQ(gif.Width(), 4);
    EXPECT_EQ(gif.GetBitmap()->Width(), 4);
}

TEST(GifImage, AnimationTimer) {
    TwoFrameGif gif;
    EXPECT_FALSE(gif.AnimationTimer()->Enabled());
    gif.SetInterval(250);
    EXPECT_TRUE(gif.AnimationTimer()->Enabled());
    EXPECT_EQ(gif.AnimationTimer()->Interval(), 250);
    EXPECT_EQ(gif.Interval(), 250);
    gif.SetInterval(0);
    EXPECT_FALSE(gif.AnimationTimer()->Enabled());

    // Delays of 50 ms and 0 ms (stored as 100 ms), two frames.
    loadInto(gif, smallGif());
    TBitmap* first = gif.GetBitmap();
    EXPECT_FALSE(gif.AnimationTimer()->Enabled()); // one decoded frame: no animation
    auto* second = new TBitmap(7, 7);
    gif.AddFrame(second);
    int changes = 0;
    gif.OnChange = [&](TGraphic*) { ++changes; };
    gif.QXOnTime();
    EXPECT_EQ(gif.CurrentFrame(), 2);
    EXPECT_EQ(gif.GetBitmap(), second);
    EXPECT_EQ(gif.Interval(), 100);
    EXPECT_TRUE(gif.AnimationTimer()->Enabled());
    gif.QXOnTime();
    EXPECT_EQ(gif.CurrentFrame(), 1);
    EXPECT_EQ(gif.GetBitmap(), gif.Frame(0));
    EXPECT_EQ(gif.Frame(0)->Image(), first->Image());
    EXPECT_EQ(gif.Frame(2), nullptr);
    EXPECT_EQ(gif.Frame(-1), nullptr);
    EXPECT_EQ(gif.Interval(), 50);
    EXPECT_EQ(gif.AnimationTimer()->Interval(), 50);
    EXPECT_EQ(changes, 2);

    // Without delays every step waits 100 ms; one frame keeps being reselected.
    TGIFImage plain;
    loadInto(plain, simpleGif(1, 1, {3}));
    plain.DIBNeeded();
    plain.QXOnTime();
    EXPECT_EQ(plain.CurrentFrame(), 1);
    EXPECT_EQ(plain.Interval(), 100);
}

TEST(GifImage, RegisteredWithPictures) {
    EXPECT_STREQ(TPicture::GraphicClassForExtension("gif").Name, "TGIFImage");
    EXPECT_STREQ(TPicture::GraphicClassForExtension(".GIF").Name, "TGIFImage");
    EXPECT_TRUE(TPicture::FileDialogFilter().contains("GIF Image File (*.gif)"));
    qxtest::TempDir dir;
    for (const char* name : {"picture.gif", "SHOUT.GIF"}) {
        TPicture picture;
        picture.LoadFromFile(dir.write(name, smallGif()));
        auto* gif = dynamic_cast<TGIFImage*>(picture.Graphic());
        ASSERT_NE(gif, nullptr) << name;
        EXPECT_EQ(picture.Width(), 20);
        EXPECT_EQ(gif->GetBitmap()->Image().pixelIndex(2, 1), 6);
    }
    // A picture copies a GIF by sharing its data.
    TGIFImage gif;
    loadInto(gif, smallGif());
    TPicture picture;
    picture.SetGraphic(&gif);
    EXPECT_TRUE(picture.Graphic()->Equals(&gif));
}
