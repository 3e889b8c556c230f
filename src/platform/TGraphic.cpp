#include "TGraphic.h"

#include "SysUtils.h"

#include <QBuffer>
#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QImageReader>
#include <QImageWriter>
#include <QPainter>
#include <QtEndian>
#include <cstdlib>

TGraphic::TGraphic() = default;

TGraphic::~TGraphic() = default;

void TGraphic::SetTransparent(bool value) {
    if (value != m_transparent) {
        m_transparent = value;
        Changed(this);
    }
}

bool TGraphic::Equals(TGraphic* graphic) {
    if (!graphic || graphic->ClassName() != ClassName())
        return false;
    if (Empty() || graphic->Empty())
        return Empty() == graphic->Empty();
    QBuffer a, b;
    a.open(QIODevice::WriteOnly);
    b.open(QIODevice::WriteOnly);
    SaveToStream(a);
    graphic->SaveToStream(b);
    return a.data() == b.data();
}

void TGraphic::LoadFromFile(const QString& fileName) {
    QFile f(fileName);
    if (!f.open(QIODevice::ReadOnly))
        throw EInOutError(
            QStringLiteral("Cannot open file \"%1\". %2").arg(fileName, f.errorString()));
    LoadFromStream(f);
}

void TGraphic::SaveToFile(const QString& fileName) {
    QFile f(fileName);
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate))
        throw EInOutError(
            QStringLiteral("Cannot create file \"%1\". %2").arg(fileName, f.errorString()));
    SaveToStream(f);
}

void TGraphic::ReadData(TStream& stream) {
    LoadFromStream(stream);
}

void TGraphic::WriteData(TStream& stream) {
    SaveToStream(stream);
}

void TGraphic::LoadFromClipboardFormat(std::uint16_t, const QImage&, HPALETTE) {
    throw EInvalidGraphic(QStringLiteral("Unsupported clipboard format"));
}

void TGraphic::SaveToClipboardFormat(std::uint16_t&, QImage&, HPALETTE&) {
    throw EInvalidGraphic(QStringLiteral("Unsupported clipboard format"));
}

void TGraphic::Changed(TGraphic*) {
    m_modified = true;
    if (OnChange)
        OnChange(this);
}

void TGraphic::Progress(TProgressStage stage, int percentDone, bool redrawNow, const TRect& r,
                        const QString& msg) {
    if (OnProgress)
        OnProgress(this, stage, percentDone, redrawNow, r, msg);
}

// ---------------------------------------------------------------------------------------------

TBitmap::TBitmap() = default;

TBitmap::TBitmap(int width, int height) {
    SetSize(width, height);
}

TBitmap::~TBitmap() = default;

void TBitmap::SetSize(int width, int height) {
    width = std::max(0, width);
    height = std::max(0, height);
    if (width == m_image.width() && height == m_image.height())
        return;
    if (width == 0 || height == 0) {
        m_image = QImage();
    } else {
        // New area starts black, as a fresh device bitmap does; old content stays top-left.
        QImage next(width, height, QImage::Format_RGB32);
        next.fill(Qt::black);
        if (!m_image.isNull()) {
            QPainter p(&next);
            p.setCompositionMode(QPainter::CompositionMode_Source);
            p.drawImage(0, 0,
                        m_image.format() == QImage::Format_RGB32
                            ? m_image
                            : m_image.convertToFormat(QImage::Format_RGB32));
        }
        m_image = std::move(next);
    }
    if (m_canvas)
        m_canvas->SetImage(&m_image);
    Changed(this);
}

void TBitmap::SetWidth(int value) {
    SetSize(value, m_image.height() > 0 ? m_image.height() : (value > 0 ? 1 : 0));
}

void TBitmap::SetHeight(int value) {
    SetSize(m_image.width() > 0 ? m_image.width() : (value > 0 ? 1 : 0), value);
}

void TBitmap::makePaintable() {
    if (!m_image.isNull() && m_image.format() != QImage::Format_RGB32 &&
        m_image.format() != QImage::Format_ARGB32_Premultiplied &&
        m_image.format() != QImage::Format_ARGB32)
        m_image = m_image.convertToFormat(QImage::Format_RGB32);
}

TCanvas* TBitmap::Canvas() {
    makePaintable();
    if (!m_canvas)
        m_canvas = std::make_unique<TCanvas>(&m_image);
    else
        m_canvas->SetImage(&m_image);
    return m_canvas.get();
}

TPixelFormat TBitmap::PixelFormat() const {
    switch (m_image.format()) {
    case QImage::Format_Mono:
    case QImage::Format_MonoLSB:
        return pf1bit;
    case QImage::Format_Indexed8:
        return m_image.colorCount() <= 16 ? pf4bit : pf8bit;
    case QImage::Format_RGB555:
        return pf15bit;
    case QImage::Format_RGB16:
        return pf16bit;
    case QImage::Format_RGB888:
        return pf24bit;
    case QImage::Format_ARGB32:
    case QImage::Format_ARGB32_Premultiplied:
        return pf32bit;
    default:
        return pfDevice;
    }
}

void TBitmap::SetPixelFormat(TPixelFormat value) {
    if (m_image.isNull() || value == PixelFormat())
        return;
    switch (value) {
    case pf1bit:
        m_image = m_image.convertToFormat(QImage::Format_Mono);
        break;
    case pf4bit:
    case pf8bit:
        m_image = m_image.convertToFormat(QImage::Format_Indexed8);
        break;
    case pf15bit:
        m_image = m_image.convertToFormat(QImage::Format_RGB555);
        break;
    case pf16bit:
        m_image = m_image.convertToFormat(QImage::Format_RGB16);
        break;
    case pf24bit:
        m_image = m_image.convertToFormat(QImage::Format_RGB888);
        break;
    case pf32bit:
        m_image = m_image.convertToFormat(QImage::Format_ARGB32);
        break;
    case pfDevice:
        m_image = m_image.convertToFormat(QImage::Format_RGB32);
        break;
    }
    if (m_canvas)
        m_canvas->SetImage(&m_image);
    Changed(this);
}

TColor TBitmap::TransparentColor() const {
    if (m_transparentColor != clDefault)
        return m_transparentColor;
    if (m_image.isNull())
        return clDefault;
    return QColorToTColor(m_image.pixelColor(0, m_image.height() - 1));
}

void TBitmap::SetTransparentColor(TColor value) {
    m_transparentColor = value;
    Changed(this);
}

void TBitmap::SetImage(const QImage& image) {
    m_image = image;
    if (m_canvas)
        m_canvas->SetImage(&m_image);
    Changed(this);
}

uchar* TBitmap::ScanLine(int y) {
    if (y < 0 || y >= m_image.height())
        return nullptr;
    return m_image.scanLine(y);
}

void TBitmap::Draw(TCanvas* canvas, const TRect& rect) {
    if (m_image.isNull())
        return;
    if (!Transparent()) {
        canvas->DrawImage(rect, m_image);
        return;
    }
    // Transparent drawing: the transparent colour becomes an alpha hole.
    QImage masked = m_image.convertToFormat(QImage::Format_ARGB32);
    const QRgb key = TColorToQColor(TransparentColor()).rgb() & 0xFFFFFF;
    for (int y = 0; y < masked.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(masked.scanLine(y));
        for (int x = 0; x < masked.width(); ++x)
            if ((line[x] & 0xFFFFFF) == key)
                line[x] = 0;
    }
    canvas->DrawImage(rect, masked, ROP_BLEND);
}

void TBitmap::Assign(TPersistent* source) {
    if (auto* b = dynamic_cast<TBitmap*>(source)) {
        m_image = b->m_image;
        m_palette = b->m_palette;
        m_transparentColor = b->m_transparentColor;
        if (m_canvas)
            m_canvas->SetImage(&m_image);
        SetTransparent(b->Transparent());
        Changed(this);
        return;
    }
    if (!source) {
        SetImage(QImage());
        return;
    }
    TGraphic::Assign(source);
}

namespace {

// False for an uncompressed BMP whose pixel rows end before its stated height: Qt would leave
// the missing rows uninitialised.
bool pixelsComplete(const QByteArray& bmp) {
    constexpr qsizetype infoEnd = 14 + 40;
    if (bmp.size() < infoEnd)
        return true;
    const auto* b = reinterpret_cast<const uchar*>(bmp.constData());
    const quint32 infoSize = qFromLittleEndian<quint32>(b + 14);
    const quint32 compression = qFromLittleEndian<quint32>(b + 30);
    if (infoSize < 40 || (compression != 0 && compression != 3))
        return true;
    const qint64 width = qFromLittleEndian<qint32>(b + 18);
    const qint64 height = qFromLittleEndian<qint32>(b + 22);
    const qint64 bitCount = qFromLittleEndian<quint16>(b + 28);
    const qint64 stride = (std::abs(width) * bitCount + 31) / 32 * 4;
    const qint64 offset = qFromLittleEndian<quint32>(b + 10);
    return offset + stride * std::abs(height) <= bmp.size();
}

} // namespace

void TBitmap::LoadFromStream(TStream& stream) {
    const QByteArray bytes = stream.read(stream.size() - stream.pos());
    QImage img;
    if (bytes.size() < 2 || bytes[0] != 'B' || bytes[1] != 'M' || !pixelsComplete(bytes) ||
        !img.loadFromData(bytes, "BMP"))
        throw EInvalidGraphic(QStringLiteral("Bitmap image is not valid"));
    SetImage(img);
}

void TBitmap::SaveToStream(TStream& stream) {
    if (m_image.isNull())
        return;
    QImageWriter w(&stream, "BMP");
    w.write(m_image);
}

void TBitmap::LoadFromClipboardFormat(std::uint16_t format, const QImage& data, HPALETTE palette) {
    if (format != CF_BITMAP || data.isNull())
        throw EInvalidGraphic(QStringLiteral("Unsupported clipboard format"));
    m_palette = palette;
    SetImage(data);
}

void TBitmap::SaveToClipboardFormat(std::uint16_t& format, QImage& data, HPALETTE& palette) {
    format = CF_BITMAP;
    data = m_image;
    palette = m_palette;
}

// ---------------------------------------------------------------------------------------------

TIcon::TIcon() = default;

TIcon::~TIcon() = default;

void TIcon::Draw(TCanvas* canvas, const TRect& rect) {
    if (!m_image.isNull())
        canvas->DrawImage(Bounds(rect.Left, rect.Top, m_image.width(), m_image.height()), m_image,
                          ROP_BLEND);
}

void TIcon::SetWidth(int) {
    throw EInvalidGraphic(QStringLiteral("Cannot change the size of an icon"));
}

void TIcon::SetHeight(int) {
    throw EInvalidGraphic(QStringLiteral("Cannot change the size of an icon"));
}

void TIcon::Assign(TPersistent* source) {
    if (auto* i = dynamic_cast<TIcon*>(source)) {
        SetImage(i->m_image);
        return;
    }
    if (!source) {
        SetImage(QImage());
        return;
    }
    TGraphic::Assign(source);
}

void TIcon::AssignTo(TPersistent* dest) {
    if (auto* b = dynamic_cast<TBitmap*>(dest)) {
        b->SetImage(m_image.convertToFormat(QImage::Format_ARGB32));
        return;
    }
    TGraphic::AssignTo(dest);
}

void TIcon::LoadFromStream(TStream& stream) {
    QImageReader r(&stream, "ICO");
    const QImage img = r.read();
    if (img.isNull())
        throw EInvalidGraphic(QStringLiteral("Icon image is not valid"));
    SetImage(img);
}

void TIcon::SaveToStream(TStream& stream) {
    if (m_image.isNull())
        return;
    QImageWriter w(&stream, "ICO");
    w.write(m_image);
}

void TIcon::SetImage(const QImage& image) {
    m_image = image;
    Changed(this);
}

// ---------------------------------------------------------------------------------------------

namespace {

// Pictures from this many pixels on are read in bands when someone follows the progress.
constexpr qint64 bandedPixels = 2'000'000;
constexpr int bandCount = 4;

[[noreturn]] void invalidImage(const QImageReader& r) {
    throw EInvalidGraphic(
        QStringLiteral("%1 image is not valid").arg(QString::fromLatin1(r.format()).toUpper()));
}

} // namespace

void TReaderImage::LoadFromStream(TStream& stream) {
    QByteArray bytes = stream.read(stream.size() - stream.pos());
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader r(&buffer);
    const QSize size = r.size();
    const QString message = QStringLiteral("Lesen");
    Progress(psStarting, 0, false, {}, message);
    const bool banded = OnProgress && r.supportsOption(QImageIOHandler::ClipRect) &&
                        qint64(size.width()) * size.height() >= bandedPixels;
    if (!banded) {
        const QImage img = r.read();
        if (img.isNull())
            invalidImage(r);
        SetImage(img);
    } else {
        // Every band is decoded from the start of the stream, with the reader skipping the rows
        // above it; the picture fills from the top and is shown after every band.
        const QByteArray format = r.format();
        QImage image(size, QImage::Format_RGB32);
        image.fill(Qt::white);
        for (int band = 0; band < bandCount; ++band) {
            const int top = size.height() * band / bandCount;
            const int bottom = size.height() * (band + 1) / bandCount;
            buffer.seek(0);
            QImageReader part(&buffer, format);
            part.setClipRect(QRect(0, top, size.width(), bottom - top));
            const QImage rows = part.read();
            if (rows.isNull())
                invalidImage(part);
            QPainter p(&image);
            p.setCompositionMode(QPainter::CompositionMode_Source);
            p.drawImage(0, top, rows);
            p.end();
            SetImage(image);
            Progress(psRunning, 100 * (band + 1) / bandCount, true,
                     Rect(0, top, size.width(), bottom), message);
        }
    }
    Progress(psEnding, 100, false, {0, 0, Width(), Height()}, message);
}

void TReaderImage::SaveToStream(TStream& stream) {
    if (Image().isNull())
        return;
    QImageWriter w(&stream, "PNG");
    w.write(Image());
}
