// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "platform/shelllink.h"

#include <QtCore/qendian.h>
#include <QtTest/qtest.h>

using namespace Qt::StringLiterals;

namespace
{

// Flags of the header.
constexpr quint32 hasItems = 0x01;
constexpr quint32 hasInfo = 0x02;
constexpr quint32 hasName = 0x04;
constexpr quint32 hasRelativePath = 0x08;
constexpr quint32 hasFolder = 0x10;
constexpr quint32 isUnicode = 0x80;

QByteArray number16(quint16 number)
{
    QByteArray bytes(sizeof(number), '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

QByteArray number32(quint32 number)
{
    QByteArray bytes(sizeof(number), '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

QByteArray numbers(std::initializer_list<quint32> all)
{
    QByteArray bytes;
    for (const quint32 number : all)
        bytes += number32(number);
    return bytes;
}

QByteArray header(quint32 flags, quint32 size = 0x4c)
{
    return number32(size) + QByteArray::fromHex("0114020000000000c000000000000046")
        + number32(flags) + QByteArray(52, '\0');
}

QByteArray wide(QStringView text)
{
    return QByteArray(reinterpret_cast<const char *>(text.utf16()), text.size() * 2);
}

QByteArray wideText(QStringView text) { return number16(quint16(text.size())) + wide(text); }

// With as much in each item as its size leaves room for.
QByteArray items(std::initializer_list<quint16> sizes)
{
    QByteArray list;
    for (const quint16 size : sizes)
        list += number16(size) + QByteArray(qMax(0, size - 2), 'x');
    list += number16(0);
    return number16(quint16(list.size())) + list;
}

QByteArray block(const QByteArray &content)
{
    return number32(quint32(content.size()) + 4) + content;
}

const QByteArray volume = block(numbers({3, 0x307a8a81, 0x10}) + '\0');
// Where things are in linkInfo().
constexpr quint32 volumePlace = 0x1c;
constexpr quint32 pathPlace = 0x2d;
constexpr quint32 suffixPlace = 0x3b;

QByteArray linkInfo(quint32 atVolume = volumePlace, quint32 atPath = pathPlace, quint32 atShare = 0,
    quint32 atSuffix = suffixPlace, const QByteArray &itsVolume = volume)
{
    return block(numbers({0x1c, 1, atVolume, atPath, atShare, atSuffix}) + itsVolume
        + "C:\\test\\a.txt"_ba + '\0' + '\0');
}

QByteArray infoOfShare(const QByteArray &share)
{
    return block(numbers({0x1c, 2, 0, 0, 0x1c, quint32(0x1c + share.size())}) + share + '\0');
}

QByteArray wideInfo(quint32 atWidePath, quint32 atWideSuffix)
{
    return block(numbers({0x24, 1, 0, 0, 0, 0x24, atWidePath, atWideSuffix}) + '\0' + "x" // 0x26
        + wide(u"C:\\あ") + QByteArray(2, '\0') + QByteArray(2, '\0')); // 0x30 and 0x32
}

QByteArray linkWith(const QByteArray &info) { return header(hasInfo) + info + number32(0); }

// The example that the description of the format ends with.
QByteArray example()
{
    return header(hasItems | hasInfo | hasRelativePath | hasFolder | isUnicode)
        + items({0x14, 0x19, 0x46, 0x48}) + linkInfo() + wideText(u".\\a.txt")
        + wideText(u"C:\\test") + number32(0x60) + number32(0xa0000003) + QByteArray(0x58, 'x')
        + number32(0);
}

QByteArray withSize(QByteArray bytes, qsizetype place, quint32 size)
{
    return bytes.replace(place, 4, number32(size));
}

} // namespace

class TestShellLink : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whole_data();
    void whole();
    void damaged_data();
    void damaged();
    void endsEarly();
};

void TestShellLink::whole_data()
{
    QTest::addColumn<QByteArray>("file");

    QTest::newRow("the example") << example();
    QTest::newRow("nothing but a header") << header(0) + number32(0);
    QTest::newRow("no end of the blocks") << header(0);
    QTest::newRow("something behind its end") << header(0) + number32(0) + "more than a size";
    QTest::newRow("items") << header(hasItems) + items({2, 20}) + number32(0);
    QTest::newRow("no items") << header(hasItems) + items({}) + number32(0);
    QTest::newRow("text") << header(hasName) + number16(4) + "Name" + number32(0);
    QTest::newRow("empty text") << header(hasName | isUnicode) + number16(0) + number32(0);
    QTest::newRow("wide text") << header(hasName | isUnicode) + wideText(u"時計") + number32(0);
    QTest::newRow("blocks") << header(0) + block("sign") + block("signed") + number32(3);
    QTest::newRow("no volume, no path") << linkWith(linkInfo(0, 0));
    QTest::newRow("wide label") << linkWith(linkInfo(
        volumePlace, 0, 0, 0, block(numbers({3, 0, 0x14, 0x14}) + wide(u"a") + "\0\0"_ba)));
    QTest::newRow("share") << linkWith(
        infoOfShare(block(numbers({2, 0x14, 0, 0x20000}) + "\\\\a\\b"_ba + '\0')));
    QTest::newRow("share with a device")
        << linkWith(infoOfShare(block(numbers({3, 0x14, 0x16, 0x20000}) + "a\0Z:\0"_ba)));
    QTest::newRow("share, wide") << linkWith(
        infoOfShare(block(numbers({2, 0x1c, 0, 0x20000, 0x1e, 0}) + "a\0b\0\0\0"_ba)));
    QTest::newRow("wide path") << linkWith(wideInfo(0x26, 0x30));
}

void TestShellLink::whole()
{
    QFETCH(QByteArray, file);
    QVERIFY(isWholeShellLink(file));
}

void TestShellLink::damaged_data()
{
    QTest::addColumn<QByteArray>("file");

    constexpr quint32 huge = 0xffffffff;
    const qsizetype infoPlace = header(0).size();
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("text file") << "no link"_ba;
    QTest::newRow("header of another size") << header(0, 0x4d) + number32(0);
    QTest::newRow("another class") << header(0).replace(4, 1, "\2") + number32(0);
    QTest::newRow("items that go on") << header(hasItems) + number16(4) + number16(20) + "ab";
    QTest::newRow("items without an end") << header(hasItems) + number16(4) + number16(4) + "ab";
    QTest::newRow("item smaller than its size")
        << header(hasItems) + number16(4) + number16(1) + number16(0);
    QTest::newRow("items past the file") << header(hasItems) + number16(99) + number16(0);
    QTest::newRow("text past the file") << header(hasName) + number16(5) + "Name";
    QTest::newRow("wide text past the file") << header(hasName | isUnicode) + number16(3) + "Name";
    QTest::newRow("block past the file") << header(0) + number32(99) + "sign";
    QTest::newRow("huge block") << header(0) + number32(huge) + "sign";
    QTest::newRow("link info smaller than its size") << linkWith(withSize(linkInfo(), 0, 3));
    QTest::newRow("link info smaller than its header") << linkWith(block(numbers({0x1c, 1})));
    QTest::newRow("link info past the file") << linkWith(withSize(linkInfo(), 0, 999));
    QTest::newRow("huge link info") << withSize(linkWith(linkInfo()), infoPlace, huge);
    QTest::newRow("volume past the link info") << linkWith(linkInfo(0x3a));
    QTest::newRow("volume at a huge place") << linkWith(linkInfo(huge));
    QTest::newRow("huge volume") << linkWith(
        linkInfo(volumePlace, 0, 0, 0, withSize(volume, 0, huge)));
    QTest::newRow("volume smaller than its fields")
        << linkWith(linkInfo(volumePlace, 0, 0, 0, block(numbers({3, 0}))));
    QTest::newRow("label past the volume")
        << linkWith(linkInfo(volumePlace, 0, 0, 0, block(numbers({3, 0, 0x11}) + '\0')));
    QTest::newRow("label without an end")
        << linkWith(linkInfo(volumePlace, 0, 0, 0, block(numbers({3, 0, 0x10}) + 'x')));
    QTest::newRow("wide label without an end")
        << linkWith(linkInfo(volumePlace, 0, 0, 0, block(numbers({3, 0, 0x14, 0x14}) + "ab\0"_ba)));
    QTest::newRow("path past the link info") << linkWith(linkInfo(volumePlace, 0x3c));
    QTest::newRow("path at a huge place") << linkWith(linkInfo(volumePlace, huge));
    QTest::newRow("suffix past the link info")
        << linkWith(linkInfo(volumePlace, pathPlace, 0, 0x3c));
    QTest::newRow("suffix without an end")
        << linkWith(block(numbers({0x1c, 1, 0, 0, 0, 0x1c}) + "x"));
    QTest::newRow("share past the link info") << linkWith(linkInfo(volumePlace, pathPlace, 0x3a));
    QTest::newRow("name past the share")
        << linkWith(infoOfShare(block(numbers({2, 0x30, 0, 0x20000, 0, 0}) + "a\0"_ba)));
    QTest::newRow("device past the share")
        << linkWith(infoOfShare(block(numbers({3, 0x14, 0x16, 0x20000}) + "a\0"_ba)));
    QTest::newRow("wide name without an end")
        << linkWith(infoOfShare(block(numbers({2, 0x1c, 0, 0x20000, 0x1e, 0}) + "a\0bbb\0"_ba)));
    QTest::newRow("wide device past the share")
        << linkWith(infoOfShare(block(numbers({2, 0x1c, 0, 0x20000, 0, huge}) + "a\0b\0\0\0"_ba)));
    QTest::newRow("wide path past the link info") << linkWith(wideInfo(0x40, 0x30));
    QTest::newRow("wide suffix without an end") << linkWith(wideInfo(0x26, 0x33));
}

void TestShellLink::damaged()
{
    QFETCH(QByteArray, file);
    QVERIFY(!isWholeShellLink(file));
}

// Wherever a file is cut, something is missing; but for the end of its blocks, which may be.
void TestShellLink::endsEarly()
{
    const QByteArray file = example();
    const qsizetype endOfTexts = file.size() - 4 - 0x60;
    const qsizetype endOfBlocks = file.size() - 4;
    for (qsizetype size = 0; size < file.size(); ++size) {
        const bool isLeftOut = (size >= endOfTexts && size < endOfTexts + 4) || size >= endOfBlocks;
        QCOMPARE(isWholeShellLink(file.first(size)), isLeftOut);
    }
}

QTEST_APPLESS_MAIN(TestShellLink)
#include "tst_shelllink.moc"
