// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// Links that somebody has damaged. VESPER_DAMAGED_LINKS says how many; each follows from its number
// alone. Only what has been read without a crash comes into the real Startup folder: Wine reads
// what lies there as well, when it starts.

#include "platform/autostart.h"
#include "platform/commanager.h"
#include "platform/shelllink.h"
#include "platform/shortcutrules.h"

#include <QtCore/qdir.h>
#include <QtCore/qendian.h>
#include <QtCore/qrandom.h>
#include <QtCore/qstandardpaths.h>
#include <QtCore/qtemporarydir.h>
#include <QtTest/qtest.h>

#include <array>

#include <windows.h>

#include <objbase.h>

using namespace Qt::StringLiterals;

namespace
{

constexpr int linksOfRow = 100;

// Damages bytes in the way that follows from a number.
class Damage
{
public:
    explicit Damage(quint32 seed)
        : m_random(seed)
    {
    }

    QByteArray applied(QByteArray bytes)
    {
        for (int times = below(4); times >= 0; --times)
            applyOnce(bytes);
        return bytes;
    }

private:
    int below(qsizetype limit) { return m_random.bounded(int(limit)); }
    int place(const QByteArray &bytes) { return below(bytes.size() + 1); }

    void applyOnce(QByteArray &bytes)
    {
        const int at = place(bytes);
        switch (below(8)) {
        case 0:
            bytes.truncate(at);
            break;
        case 1:
            bytes.remove(at, below(20));
            break;
        case 2:
            bytes.insert(at, bytes.mid(place(bytes), below(20)));
            break;
        case 3:
            bytes.replace(at, 1, QByteArray(1, char(below(256))));
            break;
        case 4:
            changeNumber<quint16>(bytes, at);
            break;
        default: // most of what a link says of itself are numbers of this size
            changeNumber<quint32>(bytes, at & ~3);
        }
    }

    template <typename Number> void changeNumber(QByteArray &bytes, int at)
    {
        if (at + qsizetype(sizeof(Number)) > bytes.size())
            return;
        const auto old = qFromLittleEndian<Number>(bytes.constData() + at);
        const std::array<Number, 8> others{0, 1, Number(old - 1), Number(old + 1), Number(old * 2),
            Number(bytes.size()), Number(-1), Number(m_random.generate())};
        qToLittleEndian(others[std::size_t(below(others.size()))], bytes.data() + at);
    }

    QRandomGenerator m_random;
};

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

} // namespace

class TestDamagedLinks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init() { QTest::failOnWarning(); }
    void isReadOrNone_data();
    void isReadOrNone();
    void someOfEachKind();

private:
    static QString startupFolder();
    void look(const QByteArray &bytes);

    QTemporaryDir m_folder;
    const QString m_path = m_folder.filePath(u"a.lnk"_s);
    const QString m_startupPath = startupFolder() + u"/a.lnk"_s;
    QList<QByteArray> m_wholeLinks;
    AutoStart::ShortcutSpec m_own;
    int m_count = 0;
    int m_countWhole = 0;
    int m_countRead = 0;
    int m_countOwn = 0;
};

QString TestDamagedLinks::startupFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::ApplicationsLocation) + u"/Startup"_s;
}

// As the program writes it, with less in it, and with more.
void TestDamagedLinks::initTestCase()
{
    // As in the program, where Qt does it. To begin anew for each link would take ten times as
    // long.
    QVERIFY(SUCCEEDED(CoInitialize(nullptr)));
    QVERIFY(QDir().mkpath(startupFolder()));
    m_own = AutoStart::buildAutoStartSpec();
    m_own.linkPath = m_path;
    m_own.description = u"Vesper - by Marrowby Inc."_s;
    AutoStart::ShortcutSpec bare;
    bare.linkPath = m_path;
    bare.targetPath = u"C:\\windows\\notepad.exe"_s;
    AutoStart::ShortcutSpec rich = m_own;
    rich.arguments = u"/x \"時計\""_s;
    rich.iconIndex = 2;
    rich.showCommand = 7;
    for (const AutoStart::ShortcutSpec &spec : {m_own, bare, rich}) {
        QVERIFY(ComManager().createShortcut(spec));
        QFile file(m_path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        m_wholeLinks += file.readAll();
        QVERIFY(isWholeShellLink(m_wholeLinks.last()));
    }
}

void TestDamagedLinks::cleanupTestCase()
{
    CoUninitialize();
    qInfo("%d links: %d whole, %d read, %d the program's own", m_count, m_countWhole, m_countRead,
        m_countOwn);
}

void TestDamagedLinks::isReadOrNone_data()
{
    QTest::addColumn<int>("first");
    bool isNumber = false;
    const int wanted = qEnvironmentVariableIntValue("VESPER_DAMAGED_LINKS", &isNumber);
    for (int first = 0; first < (isNumber ? wanted : 1000); first += linksOfRow)
        QTest::addRow("from %d", first) << first;
}

void TestDamagedLinks::isReadOrNone()
{
    QFETCH(int, first);
    for (int number = first; number < first + linksOfRow && !QTest::currentTestFailed(); ++number) {
        const QByteArray &whole = m_wholeLinks.at(number % m_wholeLinks.size());
        look(Damage(quint32(number)).applied(whole));
        if (QTest::currentTestFailed())
            qInfo("link %d", number);
    }
}

void TestDamagedLinks::look(const QByteArray &bytes)
{
    QVERIFY(writeFile(m_path, bytes));
    AutoStart::ShortcutSpec link;
    link.linkPath = m_path;
    const bool isWhole = isWholeShellLink(bytes);
    const bool isRead = ComManager().readShortcut(link);
    const bool isOwn
        = isRead && ShortcutRules::isOwn(link, {}, {}) && QFileInfo(link.targetPath).isFile();
    ++m_count;
    m_countWhole += isWhole;
    m_countRead += isRead;
    m_countOwn += isOwn;
    QVERIFY(isWhole || !isRead);

    QVERIFY(writeFile(m_startupPath, bytes));
    const bool isFound = AutoStart::findAutoStartLinks({}, {});
    const bool isCreated = AutoStart::createAutoStartLink(u"a"_s, m_own);
    const bool isNameTaken = QFile::remove(startupFolder() + u"/a_1.lnk"_s);
    QVERIFY(QFile::remove(m_startupPath));
    QCOMPARE(isFound, isOwn);
    QVERIFY(isCreated && isNameTaken);
}

// Otherwise the above has shown little.
void TestDamagedLinks::someOfEachKind()
{
    QCOMPARE_GT(m_count - m_countRead, m_count / 10);
    QCOMPARE_GT(m_countRead - m_countOwn, m_count / 10);
    QCOMPARE_GT(m_countOwn, m_count / 10);
}

QTEST_GUILESS_MAIN(TestDamagedLinks)
#include "tst_damagedlinks.moc"
