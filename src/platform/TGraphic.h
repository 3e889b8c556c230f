#pragma once

#include "QXExport.h"
#include "TCanvas.h"
#include "TPersistent.h"

#include <QByteArray>
#include <QIODevice>
#include <QImage>
#include <QString>
#include <QStringList>
#include <cstdint>
#include <functional>
#include <memory>

// Streams are Qt devices: files, buffers, sockets.
using TStream = QIODevice;
// A palette handle; 0 means none.
using HPALETTE = std::uint32_t;
// Clipboard format numbers.
constexpr std::uint16_t CF_BITMAP = 2;

// The stages of a long operation on a graphic (loading it).
enum TProgressStage { psStarting, psRunning, psEnding };
// Reports a long operation: how far it is, whether the part R is ready to be shown now, and a
// text for the user.
using TProgressEvent =
    std::function<void(TPersistent* Sender, TProgressStage Stage, int PercentDone, bool RedrawNow,
                       const TRect& R, const QString& Msg)>;

// An abstract picture: draws itself into a rectangle, loads and saves itself.
class QXT_EXPORT TGraphic : public TPersistent {
public:
    // An empty graphic, not modified, not transparent.
    TGraphic();
    ~TGraphic() override;
    TGraphic(const TGraphic&) = delete;
    TGraphic& operator=(const TGraphic&) = delete;

    // Draws the picture stretched into rect of canvas.
    virtual void Draw(TCanvas* canvas, const TRect& rect) = 0;
    // The picture's width in pixels.
    virtual int Width() const = 0;
    // The picture's height in pixels.
    virtual int Height() const = 0;
    // Gives the picture a new width, where the kind of graphic allows.
    virtual void SetWidth(int value) = 0;
    // Gives the picture a new height, where the kind of graphic allows.
    virtual void SetHeight(int value) = 0;
    // Whether the graphic holds no picture.
    virtual bool Empty() const = 0;
    // Whether the picture's background colour is left out when drawing.
    virtual bool Transparent() const { return m_transparent; }
    // Sets Transparent and reports the change.
    virtual void SetTransparent(bool value);
    // The palette handle; 0 for graphics without one.
    virtual HPALETTE Palette() const { return 0; }
    // Takes a new palette; ignored by graphics without one.
    virtual void SetPalette(HPALETTE) {}
    // True when both hold the same picture (by default: the same saved bytes).
    virtual bool Equals(TGraphic* graphic);

    // Reads the picture from the stream's position on.
    virtual void LoadFromStream(TStream& stream) = 0;
    // Writes the picture in its file format.
    virtual void SaveToStream(TStream& stream) = 0;
    // Opens the file and calls LoadFromStream; raises EInOutError when it cannot be opened.
    virtual void LoadFromFile(const QString& fileName);
    // Creates the file and calls SaveToStream; raises EInOutError when it cannot be created.
    virtual void SaveToFile(const QString& fileName);
    // Form-file persistence; by default the stream format itself.
    virtual void ReadData(TStream& stream);
    // Writes what ReadData reads.
    virtual void WriteData(TStream& stream);
    // Takes a picture handed over in a clipboard format.
    virtual void LoadFromClipboardFormat(std::uint16_t format, const QImage& data,
                                         HPALETTE palette);
    // Hands the picture over in a clipboard format.
    virtual void SaveToClipboardFormat(std::uint16_t& format, QImage& data, HPALETTE& palette);

    // Whether the picture changed since it was loaded or saved.
    bool Modified() const { return m_modified; }
    void SetModified(bool value) { m_modified = value; }
    // Set when the graphic's palette changed, so that a picture realises it again.
    bool PaletteModified() const { return m_paletteModified; }
    void SetPaletteModified(bool value) { m_paletteModified = value; }
    // Called by Changed; a picture uses it to repaint its control.
    std::function<void(TGraphic*)> OnChange;
    // Called while the graphic loads (see TReaderImage).
    TProgressEvent OnProgress;

protected:
    // Marks the graphic modified and calls OnChange.
    virtual void Changed(TGraphic* sender);
    // Calls OnProgress when assigned.
    void Progress(TProgressStage stage, int percentDone, bool redrawNow, const TRect& r,
                  const QString& msg);

private:
    bool m_transparent = false;
    bool m_modified = false;
    bool m_paletteModified = false;
};

// How many bits a pixel takes; pfDevice is the screen's own format.
enum TPixelFormat { pfDevice, pf1bit, pf4bit, pf8bit, pf15bit, pf16bit, pf24bit, pf32bit };

// A raster picture kept as a QImage; its Canvas draws into it. Streams are BMP files.
//
// Example, a red square saved as a BMP file:
//
//     TBitmap bitmap(16, 16);
//     bitmap.Canvas()->Brush.Color = clRed;
//     bitmap.Canvas()->FillRect(TRect{0, 0, 16, 16});
//     bitmap.SaveToFile(QStringLiteral("rot.bmp"));
class QXT_EXPORT TBitmap : public TGraphic {
public:
    // An empty bitmap.
    TBitmap();
    // A black bitmap of the size.
    TBitmap(int width, int height);
    ~TBitmap() override;
    QString ClassName() const override { return QStringLiteral("TBitmap"); }
    // The class name without an object, for registering file formats.
    static constexpr const char* StaticClassName = "TBitmap";

    void Draw(TCanvas* canvas, const TRect& rect) override;
    int Width() const override { return m_image.width(); }
    int Height() const override { return m_image.height(); }
    void SetWidth(int value) override;
    void SetHeight(int value) override;
    // Both sizes at once; the picture keeps its top-left part, new area is black.
    void SetSize(int width, int height);
    bool Empty() const override { return m_image.isNull(); }
    HPALETTE Palette() const override { return m_palette; }
    void SetPalette(HPALETTE value) override { m_palette = value; }
    // Copies another TBitmap, or takes any graphic's picture.
    void Assign(TPersistent* source) override;
    // Reads a BMP stream; raises EInvalidGraphic "Bitmap image is not valid" otherwise, also
    // when the pixel rows stop short of the height the header states.
    void LoadFromStream(TStream& stream) override;
    void SaveToStream(TStream& stream) override;
    void LoadFromClipboardFormat(std::uint16_t format, const QImage& data,
                                 HPALETTE palette) override;
    void SaveToClipboardFormat(std::uint16_t& format, QImage& data, HPALETTE& palette) override;

    // The canvas drawing into this bitmap (an indexed image becomes 32-bit on first use).
    TCanvas* Canvas();
    // The bits per pixel of the image; setting converts it.
    TPixelFormat PixelFormat() const;
    void SetPixelFormat(TPixelFormat value);
    // The colour treated as transparent when Transparent is on: by default the bottom-left pixel.
    TColor TransparentColor() const;
    void SetTransparentColor(TColor value);
    // The image as it is (indexed images keep their colour table).
    const QImage& Image() const { return m_image; }
    // Replaces the picture.
    void SetImage(const QImage& image);
    // The row y of the image for direct pixel access.
    uchar* ScanLine(int y);

private:
    void makePaintable();
    QImage m_image;
    std::unique_ptr<TCanvas> m_canvas;
    HPALETTE m_palette = 0;
    TColor m_transparentColor = clDefault;
};

// An icon: drawn at its own size, loaded from ICO streams through Qt's reader.
class QXT_EXPORT TIcon : public TGraphic {
public:
    // An empty icon (32 x 32 by the size reports).
    TIcon();
    ~TIcon() override;
    QString ClassName() const override { return QStringLiteral("TIcon"); }
    // The class name without an object, for registering file formats.
    static constexpr const char* StaticClassName = "TIcon";

    void Draw(TCanvas* canvas, const TRect& rect) override;
    int Width() const override { return m_image.isNull() ? 32 : m_image.width(); }
    int Height() const override { return m_image.isNull() ? 32 : m_image.height(); }
    // An icon's size comes from its data; raises EInvalidGraphic "Cannot change the size of an
    // icon".
    void SetWidth(int value) override;
    void SetHeight(int value) override;
    bool Empty() const override { return m_image.isNull(); }
    // Copies another TIcon; other graphics as TPersistent does.
    void Assign(TPersistent* source) override;
    void LoadFromStream(TStream& stream) override;
    void SaveToStream(TStream& stream) override;
    // The icon's picture.
    const QImage& Image() const { return m_image; }
    void SetImage(const QImage& image);

protected:
    void AssignTo(TPersistent* dest) override;

private:
    QImage m_image;
};

// Formats Qt reads besides BMP and ICO (JPEG, PNG and the rest), kept as a bitmap. Loading
// reports its start and end through OnProgress; a large picture whose reader can decode a part
// of it (JPEG) is read in horizontal bands, each reported ready to be shown as it arrives.
class QXT_EXPORT TReaderImage : public TBitmap {
public:
    QString ClassName() const override { return QStringLiteral("TReaderImage"); }
    // The class name without an object, for registering file formats.
    static constexpr const char* StaticClassName = "TReaderImage";
    void LoadFromStream(TStream& stream) override;
    void SaveToStream(TStream& stream) override;
};

// A graphic class as the picture registry knows it: its name and how to make one.
struct TGraphicClass {
    // The class name ("TBitmap").
    const char* Name = nullptr;
    // Makes an empty graphic of the class.
    TGraphic* (*Create)() = nullptr;
};

template <typename T> TGraphicClass GraphicClassOf() {
    return {T::StaticClassName, []() -> TGraphic* { return new T; }};
}
