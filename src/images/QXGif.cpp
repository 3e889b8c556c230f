#include "QXGif.h"

#include "QXGif_p.h"
#include "TPicture.h"
#include "TTimer.h"

#include <QBuffer>
#include <QtEndian>
#include <algorithm>

namespace {

[[noreturn]] void readError() {
    throw EInOutError(QStringLiteral("Stream read error"));
}

// Reads exactly size bytes of stream, without reserving more than the stream can give.
QByteArray readExactly(TStream& stream, qint64 size) {
    if (size < 0 || (!stream.isSequential() && size > stream.size() - stream.pos()))
        readError();
    // All of a buffer's bytes are shared rather than copied (whichever side changes them later
    // gets its own copy then); part of them is copied once.
    if (auto* buffer = qobject_cast<QBuffer*>(&stream)) {
        QByteArray bytes = buffer->data().mid(buffer->pos(), size);
        buffer->seek(buffer->pos() + size);
        return bytes;
    }
    QByteArray bytes;
    if (!stream.isSequential()) {
        // One allocation of the known size, filled by as many reads as the device needs.
        bytes.resize(size);
        for (qint64 at = 0; at < size;) {
            const qint64 n = stream.read(bytes.data() + at, size - at);
            if (n <= 0)
                readError();
            at += n;
        }
        return bytes;
    }
    while (bytes.size() < size) {
        const QByteArray chunk = stream.read(std::min<qint64>(size - bytes.size(), 1 << 20));
        if (chunk.isEmpty())
            readError();
        bytes += chunk;
    }
    return bytes;
}

// Registers the graphic with the picture registry for as long as the library is loaded.
struct GifFormatRegistration {
    GifFormatRegistration() {
        TPicture::RegisterFileFormat(QStringLiteral("gif"), QStringLiteral("GIF Image File"),
                                     GraphicClassOf<TGIFImage>());
    }
    ~GifFormatRegistration() { TPicture::UnregisterGraphicClass(GraphicClassOf<TGIFImage>()); }
    GifFormatRegistration(const GifFormatRegistration&) = delete;
    GifFormatRegistration& operator=(const GifFormatRegistration&) = delete;
};

const GifFormatRegistration registration;

} // namespace

TGIFImage::TGIFImage()
    : m_timer(std::make_unique<TTimer>()), m_decoder(std::make_unique<GifDecoder>()) {
    NewImage();
    SetInterval(0);
    m_timer->OnTimer = [this](QObject*) { QXOnTime(); };
}

TGIFImage::~TGIFImage() = default;

void TGIFImage::Draw(TCanvas* canvas, const TRect& rect) {
    canvas->StretchDraw(rect, GetBitmap());
}

int TGIFImage::Width() const {
    if (m_bitmap)
        return m_bitmap->Width();
    return m_scale != jsFullSize ? 0 : m_data->Width;
}

int TGIFImage::Height() const {
    if (m_bitmap)
        return m_bitmap->Height();
    return m_scale != jsFullSize ? 0 : m_data->Height;
}

void TGIFImage::SetWidth(int) {
    throw EAbstractError();
}

void TGIFImage::SetHeight(int) {
    throw EAbstractError();
}

bool TGIFImage::Empty() const {
    if (m_data->Stream)
        return false;
    return !m_bitmap || m_bitmap->Empty();
}

HPALETTE TGIFImage::Palette() const {
    return m_bitmap ? m_bitmap->Palette() : 0;
}

void TGIFImage::SetPalette(HPALETTE value) {
    if (value == m_palette)
        return;
    const bool changing = m_bitmap && value != m_bitmap->Palette();
    if (changing)
        FreeBitmap();
    m_palette = value;
    if (changing) {
        SetPaletteModified(true);
        Changed(this);
    }
}

bool TGIFImage::Equals(TGraphic* graphic) {
    const auto* other = dynamic_cast<TGIFImage*>(graphic);
    return other && other->m_data == m_data;
}

void TGIFImage::Assign(TPersistent* source) {
    if (auto* gif = dynamic_cast<TGIFImage*>(source)) {
        if (gif == this)
            return;
        m_data = gif->m_data;
        if (gif->m_bitmap) {
            NewBitmap();
            m_bitmap->Assign(gif->m_bitmap.get());
        }
        return;
    }
    if (auto* bitmap = dynamic_cast<TBitmap*>(source)) {
        NewImage();
        NewBitmap();
        m_bitmap->Assign(bitmap);
        return;
    }
    TGraphic::Assign(source);
}

void TGIFImage::AssignTo(TPersistent* dest) {
    if (auto* bitmap = dynamic_cast<TBitmap*>(dest)) {
        bitmap->Assign(GetBitmap());
        return;
    }
    TGraphic::AssignTo(dest);
}

void TGIFImage::Changed(TGraphic* sender) {
    TGraphic::Changed(sender);
}

void TGIFImage::LoadFromStream(TStream& stream) {
    ReadStream(stream.size() - stream.pos(), stream);
}

void TGIFImage::SaveToStream(TStream&) {
    throw EAbstractError();
}

void TGIFImage::ReadData(TStream& stream) {
    std::int32_t length = 0;
    if (stream.read(reinterpret_cast<char*>(&length), sizeof length) != sizeof length)
        readError();
    ReadStream(qFromLittleEndian(length), stream);
}

void TGIFImage::WriteData(TStream& stream) {
    const std::int32_t length = m_data->Stream ? std::int32_t(m_data->Stream->size()) : 0;
    const std::int32_t stored = qToLittleEndian(length);
    stream.write(reinterpret_cast<const char*>(&stored), sizeof stored);
    if (length >= 1)
        stream.write(*m_data->Stream);
}

void TGIFImage::LoadFromClipboardFormat(std::uint16_t format, const QImage& data,
                                        HPALETTE palette) {
    if (!m_bitmap)
        NewBitmap();
    m_bitmap->LoadFromClipboardFormat(format, data, palette);
}

void TGIFImage::SaveToClipboardFormat(std::uint16_t& format, QImage& data, HPALETTE& palette) {
    GetBitmap()->SaveToClipboardFormat(format, data, palette);
}

TBitmap* TGIFImage::GetBitmap() {
    TBitmap* shown =
        FrameList.empty() ? m_bitmap.get() : FrameList.at(std::size_t(FrameIndex - 1)).get();
    if (shown)
        return shown;
    if (!m_bitmap)
        NewBitmap();
    ParseMem();
    return m_bitmap.get();
}

void TGIFImage::DIBNeeded() {
    GetBitmap();
}

void TGIFImage::SetInterval(std::int32_t value) {
    m_interval = value;
    m_timer->SetInterval(value);
    m_timer->SetEnabled(value != 0);
}

void TGIFImage::QXOnTime() {
    m_timer->SetEnabled(false);
    ++FrameIndex;
    if (FrameIndex > FrameCount())
        FrameIndex = 1;
    Changed(this);
    if (std::int32_t(DelayList.size()) >= FrameIndex)
        SetInterval(DelayList[std::size_t(FrameIndex - 1)].Delay);
    else
        SetInterval(100);
}

QString TGIFImage::Comment() const {
    return m_decoder->Comment;
}

const QByteArray& TGIFImage::BitmapStream() const {
    return m_decoder->Stream();
}

void TGIFImage::ReadStream(qint64 size, TStream& stream) {
    NewImage();
    m_data->Stream.emplace();
    *m_data->Stream = readExactly(stream, size);
    if (size > 0)
        m_decoder->ReadScreen(*m_data->Stream, m_data->Width, m_data->Height);
    SetPaletteModified(true);
    Changed(this);
}

void TGIFImage::ParseMem() {
    SetInterval(0);
    ClearBitmapList();
    FrameIndex = 0;
    if (!m_data->Stream)
        GifDecoder::Error(1);
    if (m_decoder->ParseMem(*m_data->Stream, DelayList))
        TakeFrame();
    // Several frames start the animation; the single block pass decodes only the first.
    if (FrameList.size() > 1 && m_interval == 0)
        SetInterval(100);
}

void TGIFImage::TakeFrame() {
    ++FrameIndex;
    // An image without pixels makes no bitmap, as its BMP file would not load.
    if (m_decoder->Bitmap().isNull())
        throw EInvalidGraphic(QStringLiteral("Bitmap image is not valid"));
    auto frame = std::make_unique<TBitmap>();
    frame->SetImage(m_decoder->Bitmap());
    FrameList.push_back(std::move(frame));
    if (FrameIndex == 1) {
        if (!m_bitmap)
            NewBitmap();
        m_bitmap->Assign(FrameList.back().get());
        m_data->Width = m_bitmap->Width();
        m_data->Height = m_bitmap->Height();
    }
}

void TGIFImage::ClearBitmapList() {
    FrameList.clear();
    DelayList.clear();
}

void TGIFImage::NewImage() {
    m_data = std::make_shared<TGIFData>();
}

void TGIFImage::NewBitmap() {
    m_bitmap = std::make_unique<TBitmap>();
}

void TGIFImage::FreeBitmap() {
    m_bitmap.reset();
}
