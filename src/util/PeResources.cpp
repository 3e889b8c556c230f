#include "PeResources_p.h"

#include <QImage>
#include <QStringDecoder>
#include <algorithm>
#include <cstdlib>

namespace qxpe {

namespace {

// Resource type numbers.
constexpr quint32 RT_ICON = 3;
constexpr quint32 RT_GROUP_ICON = 14;
constexpr quint32 RT_VERSION = 16;

// Index of the resource table in the optional header's data directories.
constexpr int ResourceDirectory = 2;

// Little-endian reads at offsets into a byte range. A read outside the range returns 0 and
// marks the reader bad, so a parser can read a whole structure and check once.
class Reader {
public:
    explicit Reader(QByteArrayView data) : m_data(data) {}

    qint64 size() const { return m_data.size(); }
    bool bad() const { return m_bad; }
    bool has(qint64 offset, qint64 length) const {
        return offset >= 0 && length >= 0 && offset <= size() && length <= size() - offset;
    }
    quint8 u8(qint64 offset) {
        if (!has(offset, 1))
            return fail();
        return quint8(m_data[offset]);
    }
    quint16 u16(qint64 offset) {
        if (!has(offset, 2))
            return fail();
        return quint16(quint8(m_data[offset]) | quint8(m_data[offset + 1]) << 8);
    }
    quint32 u32(qint64 offset) {
        if (!has(offset, 4))
            return fail();
        return quint32(u16(offset)) | quint32(u16(offset + 2)) << 16;
    }
    QByteArrayView slice(qint64 offset, qint64 length) const {
        return has(offset, length) ? m_data.sliced(offset, length) : QByteArrayView();
    }

private:
    quint8 fail() {
        m_bad = true;
        return 0;
    }
    QByteArrayView m_data;
    bool m_bad = false;
};

struct Section {
    quint32 virtualAddress = 0;
    quint32 rawSize = 0;
    quint32 rawPointer = 0;
};

// One entry of a resource directory: a numbered or named item that is either a further
// directory or a data entry, at an offset from the start of the resource table.
struct DirEntry {
    bool named = false;
    quint32 id = 0;
    bool isDirectory = false;
    quint32 offset = 0;
};

// The headers, section table and resource table of a PE image.
class PeImage {
public:
    explicit PeImage(QByteArrayView data) : m_file(data) { parseHeaders(); }

    // The bytes of the first resource of type (numbered) and, when id is given, that number;
    // the first language is taken. Empty when there is none.
    QByteArrayView resource(quint32 type, std::optional<quint32> id) const {
        const auto names = namesOf(type);
        for (const DirEntry& name : names)
            if (!id || (!name.named && name.id == *id))
                return firstLanguage(name);
        return {};
    }

    // The entries of the type's directory (named ones first, as the directory keeps them).
    QList<DirEntry> namesOf(quint32 type) const {
        if (!m_hasResources)
            return {};
        for (const DirEntry& entry : entries(0))
            if (!entry.named && entry.id == type && entry.isDirectory)
                return entries(entry.offset);
        return {};
    }

    // The data of the first language under a name entry.
    QByteArrayView firstLanguage(const DirEntry& name) const {
        if (!name.isDirectory)
            return {};
        const auto languages = entries(name.offset);
        if (languages.isEmpty() || languages.first().isDirectory)
            return {};
        return dataEntry(languages.first().offset);
    }

private:
    void parseHeaders() {
        Reader r(m_file);
        if (r.u16(0) != 0x5A4D) // "MZ"
            return;
        const qint64 pe = r.u32(0x3C);
        if (r.u32(pe) != 0x00004550) // "PE\0\0"
            return;
        const qint64 coff = pe + 4;
        const int sectionCount = r.u16(coff + 2);
        const qint64 optionalSize = r.u16(coff + 16);
        const qint64 optional = coff + 20;
        qint64 directories = 0;
        qint64 directoryCount = 0;
        switch (r.u16(optional)) {
        case 0x10B: // PE32
            directoryCount = r.u32(optional + 92);
            directories = optional + 96;
            break;
        case 0x20B: // PE32+
            directoryCount = r.u32(optional + 108);
            directories = optional + 112;
            break;
        default:
            return;
        }
        const qint64 resourceEntry = directories + 8 * ResourceDirectory;
        if (r.bad() || directoryCount <= ResourceDirectory ||
            resourceEntry + 8 > optional + optionalSize)
            return;
        m_resourceRva = r.u32(resourceEntry);
        const quint32 resourceSize = r.u32(resourceEntry + 4);
        const qint64 sections = optional + optionalSize;
        for (int i = 0; i < sectionCount; ++i) {
            const qint64 at = sections + 40 * qint64(i);
            Section s{r.u32(at + 12), r.u32(at + 16), r.u32(at + 20)};
            if (r.bad())
                break;
            m_sections.append(s);
        }
        m_hasResources = !r.bad() && m_resourceRva != 0 && resourceSize != 0;
    }

    // The file bytes that hold length bytes at the relative virtual address rva; empty
    // unless all of them lie inside one section's data in the file.
    QByteArrayView atRva(quint64 rva, quint64 length) const {
        for (const Section& s : m_sections) {
            if (rva < s.virtualAddress)
                continue;
            const quint64 delta = rva - s.virtualAddress;
            if (delta > s.rawSize || length > s.rawSize - delta)
                continue;
            return Reader(m_file).slice(qint64(s.rawPointer) + qint64(delta), qint64(length));
        }
        return {};
    }

    // The entries of the resource directory at offset from the start of the resource table.
    QList<DirEntry> entries(quint32 offset) const {
        Reader header(atRva(quint64(m_resourceRva) + offset, 16));
        const int count = header.u16(12) + header.u16(14);
        if (header.bad())
            return {};
        Reader r(atRva(quint64(m_resourceRva) + offset + 16, 8 * quint64(count)));
        QList<DirEntry> list;
        for (int i = 0; i < count; ++i) {
            const quint32 name = r.u32(8 * i);
            const quint32 target = r.u32(8 * i + 4);
            if (r.bad())
                break;
            list.append({(name & 0x80000000u) != 0, name & 0x7FFFFFFFu, (target & 0x80000000u) != 0,
                         target & 0x7FFFFFFFu});
        }
        return list;
    }

    // The bytes a data entry (at offset from the start of the resource table) points at.
    QByteArrayView dataEntry(quint32 offset) const {
        Reader r(atRva(quint64(m_resourceRva) + offset, 16));
        const quint32 rva = r.u32(0);
        const quint32 size = r.u32(4);
        return r.bad() ? QByteArrayView() : atRva(rva, size);
    }

    QByteArrayView m_file;
    QList<Section> m_sections;
    quint32 m_resourceRva = 0;
    bool m_hasResources = false;
};

constexpr qint64 align4(qint64 offset) {
    return (offset + 3) & ~qint64(3);
}

// One entry of a version block: wLength, wValueLength, wType, the zero-terminated UTF-16
// key, padding to 32 bits, the value, padding, then the children, each aligned to 32 bits.
struct VersionNode {
    QString key;
    qint64 valueStart = 0;
    qint64 valueEnd = 0;
    qint64 childrenStart = 0;
    qint64 end = 0;
};

// Reads the entry at start, which must end by limit. The block itself starts 32-bit aligned,
// so offsets into it align as the resource compiler aligned them.
std::optional<VersionNode> readNode(QByteArrayView block, qint64 start, qint64 limit) {
    Reader r(block);
    const qint64 length = r.u16(start);
    const qint64 valueLength = r.u16(start + 2);
    const bool text = r.u16(start + 4) == 1;
    if (r.bad() || length < 6)
        return std::nullopt;
    VersionNode node;
    node.end = std::min(start + length, limit);
    qint64 keyEnd = start + 6;
    while (keyEnd + 2 <= node.end && r.u16(keyEnd) != 0)
        keyEnd += 2;
    if (keyEnd + 2 > node.end)
        return std::nullopt;
    QStringDecoder utf16(QStringDecoder::Utf16LE);
    node.key = utf16(r.slice(start + 6, keyEnd - (start + 6)));
    // Text values count their length in characters, binary values in bytes.
    const qint64 valueBytes = text ? 2 * valueLength : valueLength;
    node.valueStart = std::min(align4(keyEnd + 2), node.end);
    node.valueEnd = std::min(node.valueStart + valueBytes, node.end);
    node.childrenStart = std::min(align4(node.valueStart + valueBytes), node.end);
    return node;
}

// The entry at the end of path, or nothing.
std::optional<VersionNode> findNode(QByteArrayView block, QStringView path) {
    auto node = readNode(block, 0, block.size());
    for (QStringView key : path.split(u'\\', Qt::SkipEmptyParts)) {
        if (!node)
            break;
        std::optional<VersionNode> found;
        // Every sibling lies at least 8 bytes further on, so the walk ends.
        for (qint64 at = node->childrenStart; at < node->end && !found;) {
            const auto child = readNode(block, at, node->end);
            if (!child)
                break;
            if (child->key.compare(key, Qt::CaseInsensitive) == 0)
                found = child;
            at = align4(at + Reader(block).u16(at));
        }
        node = found;
    }
    return node;
}

} // namespace

QByteArray versionInfo(QByteArrayView image) {
    return PeImage(image).resource(RT_VERSION, std::nullopt).toByteArray();
}

std::optional<QByteArray> queryValue(QByteArrayView block, QStringView path) {
    const auto node = findNode(block, path);
    if (!node)
        return std::nullopt;
    return block.sliced(node->valueStart, node->valueEnd - node->valueStart).toByteArray();
}

std::optional<QString> queryText(QByteArrayView block, QStringView path) {
    const auto node = findNode(block, path);
    if (!node)
        return std::nullopt;
    // Some resource compilers count text lengths in bytes, so the text is read up to its
    // zero, bounded by its entry, not by wValueLength.
    Reader r(block);
    qint64 end = node->valueStart;
    while (end + 2 <= node->end && r.u16(end) != 0)
        end += 2;
    QStringDecoder utf16(QStringDecoder::Utf16LE);
    return QString(utf16(r.slice(node->valueStart, end - node->valueStart)));
}

std::optional<QString> firstTranslation(QByteArrayView block) {
    const auto value = queryValue(block, u"\\VarFileInfo\\Translation");
    if (!value)
        return std::nullopt;
    Reader r(*value);
    const quint16 language = r.u16(0);
    const quint16 codePage = r.u16(2);
    if (r.bad())
        return std::nullopt;
    return QStringLiteral("%1%2")
        .arg(language, 4, 16, QLatin1Char('0'))
        .arg(codePage, 4, 16, QLatin1Char('0'))
        .toUpper();
}

int iconGroupCount(QByteArrayView image) {
    return int(PeImage(image).namesOf(RT_GROUP_ICON).size());
}

QList<IconImage> iconGroup(QByteArrayView image, int index) {
    const PeImage pe(image);
    const auto groups = pe.namesOf(RT_GROUP_ICON);
    if (index < 0 || index >= groups.size())
        return {};
    // GRPICONDIR: reserved, type 1, count; then 14-byte entries naming RT_ICON resources.
    Reader r(pe.firstLanguage(groups[index]));
    const int count = r.u16(4);
    if (r.bad() || r.u16(2) != 1)
        return {};
    QList<IconImage> images;
    for (int i = 0; i < count; ++i) {
        const qint64 at = 6 + 14 * qint64(i);
        IconImage icon;
        icon.width = r.u8(at) ? r.u8(at) : 256;
        icon.height = r.u8(at + 1) ? r.u8(at + 1) : 256;
        icon.colorCount = r.u8(at + 2);
        icon.planes = r.u16(at + 4);
        icon.bitCount = r.u16(at + 6);
        const quint16 id = r.u16(at + 12);
        if (r.bad())
            break;
        icon.data = pe.resource(RT_ICON, id).toByteArray();
        if (!icon.data.isEmpty())
            images.append(icon);
    }
    return images;
}

QByteArray icoFile(const QList<IconImage>& images) {
    QByteArray out;
    const auto put16 = [&out](quint16 v) {
        out.append(char(v & 0xFF));
        out.append(char(v >> 8));
    };
    const auto put32 = [&](quint32 v) {
        put16(quint16(v & 0xFFFF));
        put16(quint16(v >> 16));
    };
    put16(0);
    put16(1);
    put16(quint16(images.size()));
    quint32 offset = 6 + 16 * quint32(images.size());
    for (const IconImage& icon : images) {
        out.append(char(icon.width & 0xFF)); // 256 is written as 0
        out.append(char(icon.height & 0xFF));
        out.append(char(icon.colorCount));
        out.append('\0');
        put16(quint16(icon.planes));
        put16(quint16(icon.bitCount));
        put32(quint32(icon.data.size()));
        put32(offset);
        offset += quint32(icon.data.size());
    }
    for (const IconImage& icon : images)
        out.append(icon.data);
    return out;
}

QImage iconGroupImage(QByteArrayView image, int index, int size) {
    const QList<IconImage> group = iconGroup(image, index);
    if (group.isEmpty())
        return {};
    const auto best =
        std::min_element(group.begin(), group.end(), [size](const auto& a, const auto& b) {
            const int da = std::abs(a.width - size);
            const int db = std::abs(b.width - size);
            return da != db ? da < db : a.bitCount > b.bitCount;
        });
    if (best->data.startsWith("\x89PNG\r\n\x1a\n"))
        return QImage::fromData(best->data, "PNG");
    return QImage::fromData(icoFile({*best}), "ICO");
}

} // namespace qxpe
