// SPDX-License-Identifier: MIT
#include "sources/inflate.h"

#include <algorithm>
#include <limits>

#include <zlib.h>

std::optional<QByteArray> inflated(QByteArrayView bytes, Compression compression, qint64 most, bool mayCut)
{
    constexpr qint64 firstRoom = 1 << 16;
    constexpr qint64 growth = 4; // of what is compressed, at first
    constexpr int gzipHead = 16; // as the library wants to be told of it
    z_stream stream = {};
    if (bytes.size() > std::numeric_limits<int>::max() ||
        ::inflateInit2(&stream, MAX_WBITS + (compression == Compression::Gzip ? gzipHead : 0)) != Z_OK) {
        return std::nullopt;
    }
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
    stream.avail_in = uInt(bytes.size());
    const qint64 room = most + 1; // one more byte tells whether there is too much
    QByteArray result(std::min(room, std::max(firstRoom, bytes.size() * growth)), Qt::Uninitialized);
    int state = Z_OK;
    qint64 size = 0;
    while (state == Z_OK && size < room) {
        if (size == result.size()) {
            result.resize(std::min(room, 2 * result.size()));
        }
        stream.next_out = reinterpret_cast<Bytef*>(result.data() + size);
        stream.avail_out = uInt(result.size() - size);
        state = ::inflate(&stream, Z_NO_FLUSH);
        size = result.size() - stream.avail_out;
    }
    ::inflateEnd(&stream);
    result.truncate(std::min(size, most));
    const bool isWhole = state == Z_STREAM_END && size <= most;
    return isWhole || (size > most && mayCut) ? std::optional(result) : std::nullopt;
}
