#pragma once

// giflib reading from and writing to memory, for the agreement test and the benchmark.

#include <QByteArray>
#include <algorithm>
#include <cstring>
#include <gif_lib.h>

namespace giflibmem {

// EGifOpen output function: appends to the QByteArray in UserData.
inline int writeToBuffer(GifFileType* gif, const GifByteType* bytes, int n) {
    static_cast<QByteArray*>(gif->UserData)->append(reinterpret_cast<const char*>(bytes), n);
    return n;
}

// DGifOpen input: the bytes and how far giflib has read them.
struct Reader {
    const QByteArray* bytes;
    qsizetype pos = 0;
};

inline int readFromBuffer(GifFileType* gif, GifByteType* out, int n) {
    auto* r = static_cast<Reader*>(gif->UserData);
    const int k = int(std::min<qsizetype>(n, r->bytes->size() - r->pos));
    std::memcpy(out, r->bytes->constData() + r->pos, std::size_t(k));
    r->pos += k;
    return k;
}

} // namespace giflibmem
