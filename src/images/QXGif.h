#pragma once

#include "QXExport.h"
#include "SysUtils.h"
#include "TGraphic.h"

#include <QByteArray>
#include <QString>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

class TTimer;
class GifDecoder;

// Block introducers of the GIF format.
inline constexpr std::uint8_t Trailer = 0x3B;
inline constexpr std::uint8_t ExtensionIntroducer = 0x21;
inline constexpr std::uint8_t ImageSeparator = 0x2C;
// CodeMask[n] keeps the low n bits of an n-bit LZW code.
inline constexpr std::uint32_t CodeMask[13] = {0,    1,    3,     7,     0xF,   0x1F, 0x3F,
                                               0x7F, 0xFF, 0x1FF, 0x3FF, 0x7FF, 0xFFF};
// The decoder's messages by error number (1 to 10); entry 0 is unused.
inline constexpr const char* ErrName[11] = {"",
                                            "GIF file not found",
                                            "Not a GIF file",
                                            "Missing color table",
                                            "Bad data",
                                            "No data",
                                            "Unexpected EOF",
                                            "Bad code size",
                                            "Bad code",
                                            "Bad bit size",
                                            "Bad bitmap"};

// Raised by the GIF decoder; carries only the message.
class QXT_EXPORT EGifException : public Exception {
public:
    // Carries message, in English.
    using Exception::Exception;
};

// The file bytes of a GIF graphic, shared by every TGIFImage assigned from the same image.
class QXT_EXPORT TGIFData {
public:
    // An exact copy of the file bytes; empty when nothing was loaded.
    std::optional<QByteArray> Stream;
    // The logical screen size from the file header, later the size of the first bitmap.
    std::int32_t Height = 0;
    // The width, as Height.
    std::int32_t Width = 0;
};

// The display time of one frame in milliseconds.
struct TDelay {
    // Milliseconds, from the extension's hundredths of a second.
    std::int32_t Delay = 0;
};

// How far a graphic is scaled down when it reports its size.
enum TGIFScale : std::uint8_t { jsFullSize, jsHalf, jsQuarter, jsEighth };

// A GIF picture: keeps the file bytes, decodes the first image into an 8-bit bitmap when it is
// first needed, and can cycle through its frames with a timer. Registered with TPicture for
// the extension "gif", so pictures load GIF files by name.
//
// The decoder is strict and simple on purpose: it needs a global colour table, takes LZW
// code sizes 2 to 9, wants a clear code as soon as the code table is full, and walks the
// blocks once, so only the first image of a file is decoded.
//
// Extensions other than graphic control and comment are skipped by taking their bytes as
// sizes up to the first 0 byte. An animation's looping block (application extension
// "NETSCAPE2.0", in nearly every animated GIF) has a 0 byte in its loop count (0 means "for
// ever"), so the walk ends there and the file yields no image: GetBitmap() returns an empty
// bitmap and raises no error. Animated GIFs are shown with Qt's own reader, QImageReader (or
// QMovie), which reads every frame.
//
// Reads past the end of a cut file leave what an earlier read put there, and decoding goes on
// with those bytes. Where following that literally would never end or would write outside a
// table, the decoder stops instead:
// - image data that runs on past the end of the file (the last sub-block read again and
//   again) raises "Unexpected EOF" once a clear code comes round at a place it was read
//   before, or after 8192 codes without a clear code;
// - an extension chain cut by the end of the file ends the walk: no image and no error;
// - no code table entry is written past 4095 (a decode that starts without a clear code on
//   the full table an earlier, failed decode left adds no entries);
// - a code whose string is longer than the 4096-entry decode stack raises "Bad code";
// - an image wider than 2049 pixels raises "Image wider than 2049 pixels", and the pixels of
//   an image of width 0 go nowhere.
// An image whose data ends before its last row is still shown: the bitmap has the full height,
// the decoded rows in their places and the rows never completed at palette entry 0.
// BitmapStream() holds only the completed rows, as the decoder writes them.
//
// Every decode starts from the state the one before left in the object (colour tables, code
// table, the last data sub-block), which matters only when a failed decode is repeated.
//
// Example:
//
//     TPicture picture;
//     picture.LoadFromFile(QStringLiteral("logo.gif")); // a TGIFImage by the extension
//     TBitmap* first = static_cast<TGIFImage*>(picture.Graphic())->GetBitmap();
class QXT_EXPORT TGIFImage : public TGraphic {
public:
    TGIFImage();
    ~TGIFImage() override;
    QString ClassName() const override { return QStringLiteral("TGIFImage"); }
    // The class name without an object, for registering the file format.
    static constexpr const char* StaticClassName = "TGIFImage";

    // Stretches the current frame into rect (decodes first when needed).
    void Draw(TCanvas* canvas, const TRect& rect) override;
    // The decoded bitmap's size, or the logical screen size before decoding.
    int Width() const override;
    // The height, as Width.
    int Height() const override;
    // A GIF's size comes from its data: both raise EAbstractError.
    void SetWidth(int value) override;
    // Raises EAbstractError, as SetWidth.
    void SetHeight(int value) override;
    // False while file bytes are held; otherwise whether the bitmap is empty.
    bool Empty() const override;
    // The bitmap's palette (0 without a bitmap); a new palette drops the bitmap.
    HPALETTE Palette() const override;
    void SetPalette(HPALETTE value) override;
    // True when graphic is a TGIFImage sharing this image's file bytes.
    bool Equals(TGraphic* graphic) override;
    // Shares a TGIFImage's bytes, or takes a TBitmap's picture.
    void Assign(TPersistent* source) override;

    // Takes the rest of the stream as the GIF file; decoding waits until a bitmap is needed.
    void LoadFromStream(TStream& stream) override;
    // A GIF cannot be written: raises EAbstractError.
    void SaveToStream(TStream& stream) override;
    // Form-file persistence: a 32-bit length, then the file bytes.
    void ReadData(TStream& stream) override;
    // Writes what ReadData reads.
    void WriteData(TStream& stream) override;
    // Loads into the bitmap (no decoding); saving hands out the decoded bitmap.
    void LoadFromClipboardFormat(std::uint16_t format, const QImage& data,
                                 HPALETTE palette) override;
    // Hands out the decoded bitmap with its palette.
    void SaveToClipboardFormat(std::uint16_t& format, QImage& data, HPALETTE& palette) override;

    // The bitmap shown now; decodes the file on first use (raises EGifException on bad data).
    TBitmap* GetBitmap();
    // Decodes when nothing was decoded yet.
    void DIBNeeded();
    // Sets the animation period in milliseconds; 0 stops the timer.
    void SetInterval(std::int32_t value);
    // The animation step: shows the next frame and waits for its delay.
    void QXOnTime();

    // The period last set with SetInterval (0 = stopped).
    std::int32_t Interval() const { return m_interval; }
    // The timer driving the animation.
    const TTimer* AnimationTimer() const { return m_timer.get(); }
    // The 1-based number of the frame shown (0 before decoding).
    std::int32_t CurrentFrame() const { return FrameIndex; }
    // The number of decoded frames.
    int FrameCount() const { return static_cast<int>(FrameList.size()); }
    // The decoded frame i, or nullptr outside 0 <= i < FrameCount().
    TBitmap* Frame(int i) const {
        return i >= 0 && i < FrameCount() ? FrameList[static_cast<std::size_t>(i)].get() : nullptr;
    }
    // The delays of the graphic-control extensions read, in file order.
    const std::vector<TDelay>& Delays() const { return DelayList; }
    // The text of the last comment sub-block read.
    QString Comment() const;
    // The BMP file the decoder built from the first image.
    const QByteArray& BitmapStream() const;
    // The shared file data.
    const TGIFData& Data() const { return *m_data; }
    // The reduction the size reports assume; always jsFullSize.
    TGIFScale Scale() const { return m_scale; }

protected:
    // Gives a TBitmap the decoded bitmap; other targets as TGraphic does.
    void AssignTo(TPersistent* dest) override;
    // Tells the owner (a TPicture) of the change.
    void Changed(TGraphic* sender) override;
    // Replaces the file data with size bytes of stream and reads the screen size.
    void ReadStream(qint64 size, TStream& stream);
    // Decodes the memory copy: header, global colour table, extensions and the first image.
    void ParseMem();
    // Frees every frame and delay.
    void ClearBitmapList();
    // Starts file data of its own, no longer shared.
    void NewImage();
    // Starts an empty bitmap of its own.
    void NewBitmap();
    // Drops the bitmap; the next use decodes again.
    void FreeBitmap();

    // One bitmap per decoded image.
    std::vector<std::unique_ptr<TBitmap>> FrameList;
    // One delay per graphic-control extension read; entry i belongs to frame i + 1.
    std::vector<TDelay> DelayList;
    // Images decoded so far; later the 1-based frame shown.
    std::int32_t FrameIndex = 0;

private:
    // Makes the decoded image the next frame; the first frame becomes the bitmap.
    void TakeFrame();

    std::unique_ptr<TTimer> m_timer;
    std::int32_t m_interval = 0;
    std::unique_ptr<GifDecoder> m_decoder;
    std::shared_ptr<TGIFData> m_data;
    std::unique_ptr<TBitmap> m_bitmap;
    HPALETTE m_palette = 0;
    TGIFScale m_scale = jsFullSize;
};
