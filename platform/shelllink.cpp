// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "platform/shelllink.h"

#include <QtCore/qendian.h>

namespace
{

constexpr quint32 headerSize = 0x4c;
constexpr qsizetype placeOfFlags = 20;

// Named as in the format's description.
enum LinkFlag : quint32 {
    HasLinkTargetIDList = 0x01,
    HasLinkInfo = 0x02,
    HasName = 0x04,
    HasRelativePath = 0x08,
    HasWorkingDir = 0x10,
    HasArguments = 0x20,
    HasIconLocation = 0x40,
    IsUnicode = 0x80,
};

/// Takes bytes away from the front. Once there are fewer than wanted, there are none any more.
class Reader
{
public:
    explicit Reader(QByteArrayView bytes)
        : m_rest(bytes)
    {
    }

    bool isWhole() const { return m_isWhole; }
    qsizetype left() const { return m_rest.size(); }

    QByteArrayView take(qint64 size)
    {
        m_isWhole = m_isWhole && size >= 0 && size <= m_rest.size();
        const QByteArrayView taken = m_isWhole ? m_rest.first(size) : QByteArrayView();
        m_rest = m_isWhole ? m_rest.sliced(size) : QByteArrayView();
        return taken;
    }

    /// 0 where there is none.
    template <typename Number> Number number()
    {
        const QByteArrayView bytes = take(sizeof(Number));
        return m_isWhole ? qFromLittleEndian<Number>(bytes.data()) : Number(0);
    }

    /// A block that begins with its size, which counts itself.
    QByteArrayView block()
    {
        const QByteArrayView all = m_rest;
        const auto size = number<quint32>();
        take(qint64(size) - qint64(sizeof(size)));
        return m_isWhole ? all.first(size) : QByteArrayView();
    }

private:
    QByteArrayView m_rest;
    bool m_isWhole = true;
};

bool isHeader(QByteArrayView header)
{
    constexpr char classId[] = "\x01\x14\x02\0\0\0\0\0\xc0\0\0\0\0\0\0\x46";
    const QByteArrayView id(classId, sizeof(classId) - 1);
    Reader reader(header);
    return reader.number<quint32>() == headerSize && reader.take(id.size()) == id;
}

// Items begin with their size, which counts itself. One of no size is the end.
bool isItemList(QByteArrayView list)
{
    Reader reader(list);
    while (const auto size = reader.number<quint16>())
        reader.take(qint64(size) - qint64(sizeof(size)));
    return reader.isWhole();
}

// Of the parts of a block that it names by offsets, 0 names none.

bool hasText(QByteArrayView block, quint32 offset)
{
    return offset == 0 || (offset < block.size() && block.sliced(offset).contains('\0'));
}

bool hasWideText(QByteArrayView block, quint32 offset)
{
    if (offset == 0)
        return true;
    Reader reader(block);
    reader.take(offset);
    while (reader.number<char16_t>() != 0) { }
    return reader.isWhole();
}

template <typename IsInner> bool hasBlock(QByteArrayView block, quint32 offset, IsInner isInner)
{
    if (offset == 0)
        return true;
    Reader reader(block);
    reader.take(offset);
    const QByteArrayView inner = reader.block();
    return reader.isWhole() && isInner(inner);
}

bool isVolume(QByteArrayView volume)
{
    constexpr quint32 thereIsAWideLabel = 0x14;
    Reader reader(volume);
    reader.take(12); // size, kind of drive, serial number
    const auto label = reader.number<quint32>();
    const bool isWide = label == thereIsAWideLabel;
    const auto wideLabel = isWide ? reader.number<quint32>() : 0;
    return reader.isWhole() && (isWide ? hasWideText(volume, wideLabel) : hasText(volume, label));
}

bool isShare(QByteArrayView share)
{
    constexpr quint32 withoutWideTexts = 0x14;
    Reader reader(share);
    reader.take(8); // size, flags
    const auto name = reader.number<quint32>();
    const auto device = reader.number<quint32>();
    reader.take(4); // kind of network
    const bool hasWide = name > withoutWideTexts;
    const auto wideName = hasWide ? reader.number<quint32>() : 0;
    const auto wideDevice = hasWide ? reader.number<quint32>() : 0;
    return reader.isWhole() && hasText(share, name) && hasText(share, device)
        && hasWideText(share, wideName) && hasWideText(share, wideDevice);
}

bool isLinkInfo(QByteArrayView info)
{
    constexpr quint32 headerWithWideTexts = 0x24;
    Reader reader(info);
    reader.take(4); // size
    const auto headerSize = reader.number<quint32>();
    reader.take(4); // flags: a part that is not there has the offset 0 as well
    const auto volume = reader.number<quint32>();
    const auto path = reader.number<quint32>();
    const auto share = reader.number<quint32>();
    const auto suffix = reader.number<quint32>();
    const bool hasWide = headerSize >= headerWithWideTexts;
    const auto widePath = hasWide ? reader.number<quint32>() : 0;
    const auto wideSuffix = hasWide ? reader.number<quint32>() : 0;
    return reader.isWhole() && hasBlock(info, volume, isVolume) && hasText(info, path)
        && hasBlock(info, share, isShare) && hasText(info, suffix) && hasWideText(info, widePath)
        && hasWideText(info, wideSuffix);
}

// Each begins with the number of its characters.
void takeTexts(Reader &reader, quint32 flags)
{
    const int bytesOfCharacter = flags & IsUnicode ? 2 : 1;
    for (const auto flag :
        {HasName, HasRelativePath, HasWorkingDir, HasArguments, HasIconLocation}) {
        if (flags & flag)
            reader.take(qint64(reader.number<quint16>()) * bytesOfCharacter);
    }
}

// A size that does not hold itself ends them, and so does the end of the file.
void takeExtraBlocks(Reader &reader)
{
    while (reader.left() >= qsizetype(sizeof(quint32))) {
        const auto size = reader.number<quint32>();
        if (size < sizeof(size))
            return;
        reader.take(qint64(size) - qint64(sizeof(size)));
    }
}

} // namespace

bool isWholeShellLink(QByteArrayView file)
{
    Reader reader(file);
    const QByteArrayView header = reader.take(headerSize);
    if (!isHeader(header))
        return false;
    const auto flags = qFromLittleEndian<quint32>(header.sliced(placeOfFlags).data());
    if (flags & HasLinkTargetIDList && !isItemList(reader.take(reader.number<quint16>())))
        return false;
    if (flags & HasLinkInfo && !isLinkInfo(reader.block()))
        return false;
    takeTexts(reader, flags);
    takeExtraBlocks(reader);
    return reader.isWhole();
}
