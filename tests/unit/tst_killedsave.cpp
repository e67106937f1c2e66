// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// Programs that are killed while they save. The file is written in place, so the settings can be
// lost, which is counted and printed; but a file never holds a mixture that passes for settings,
// and the next start finds either settings that were saved or the defaults. VESPER_KILLED_SAVES is
// how many are killed.

#include "confighome.h"

#include "config/vsconfig.h"

#include <QtCore/qelapsedtimer.h>
#include <QtCore/qjsondocument.h>
#include <QtCore/qjsonobject.h>
#include <QtCore/qprocess.h>
#include <QtCore/qrandom.h>
#include <QtTest/qtest.h>

#include <algorithm>
#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

namespace
{

constexpr quint32 seed = 20261122;
constexpr int groups = 19; // and single values, at the top of a file
const QString once = u"once"_s;
const QString forever = u"forever"_s;

// A savingprogram; the destructor kills it.
class SavingProgram
{
public:
    explicit SavingProgram(const QString &kind)
    {
        m_process.start(QStringLiteral(VESPER_SAVING_PROGRAM), {kind});
    }
    ~SavingProgram() { kill(); }
    Q_DISABLE_COPY_MOVE(SavingProgram)

    // False if it does not come that far.
    bool waitForSaves(int count)
    {
        while (m_output.count('\n') <= count) {
            if (m_process.bytesAvailable() == 0 && !m_process.waitForReadyRead())
                return false;
            m_output += m_process.readAllStandardOutput();
        }
        return true;
    }
    void save()
    {
        m_process.write("\n");
        m_process.waitForBytesWritten();
    }
    void kill()
    {
        m_process.kill(); // SIGKILL
        m_process.waitForFinished();
    }
    // How many saves were over.
    int saves()
    {
        m_output += m_process.readAllStandardOutput();
        const qsizetype end = m_output.lastIndexOf('\n');
        const qsizetype begin = m_output.lastIndexOf('\n', end - 1) + 1;
        return m_output.mid(begin, end - begin).toInt();
    }

private:
    QProcess m_process;
    QByteArray m_output;
};

// Not by sleeping, which takes longer by what the system pleases.
void spinFor(int microseconds)
{
    QElapsedTimer timer;
    timer.start();
    while (timer.nsecsElapsed() < microseconds * 1000LL) { }
}

// Whether \a file is what a savingprogram saves as number \a number; 0 is what was there before.
bool isSave(const QJsonObject &file, int number)
{
    constexpr int lengths = 200;
    const QJsonObject geometry = file.value("Geometry"_L1).toObject();
    const auto isNumber
        = [&](QLatin1StringView key) { return geometry.value(key).toInt(-1) == number; };
    const QString name = file.value("Theme"_L1)["ColorToneName"_L1].toString();
    return file.size() == groups && isNumber("Left"_L1) && isNumber("Top"_L1)
        && isNumber("Width"_L1) && isNumber("Height"_L1)
        && (number == 0 ? name == "DarkBlue"_L1 : name == QString(1 + number % lengths, u'x'));
}

struct Count {
    int kills = 0;
    int before = 0; // of them the save
    int after = 0;
    int empty = 0;
    int cut = 0;
};

} // namespace

class TestKilledSave : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(); }
    void losesAllOrNothing_data();
    void losesAllOrNothing();

private:
    void killOnce(const QString &kind, int programs, int delayUs, Count &count);
};

void TestKilledSave::losesAllOrNothing_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<int>("programs");
    QTest::addColumn<int>("longestDelayUs");

    QTest::newRow("one save") << once << 1 << 2500;
    QTest::newRow("save upon save") << forever << 1 << 3000;
    QTest::newRow("save upon save of two programs") << forever << 2 << 3000;
}

void TestKilledSave::losesAllOrNothing()
{
    QFETCH(QString, kind);
    QFETCH(int, programs);
    QFETCH(int, longestDelayUs);

    const int kills = std::max(25, qEnvironmentVariableIntValue("VESPER_KILLED_SAVES"));
    QRandomGenerator random(seed);
    Count count;
    for (int i = 0; i < kills && !QTest::currentTestFailed(); ++i)
        killOnce(kind, programs, random.bounded(longestDelayUs), count);
    qInfo(
        "killed %d times: before the save %d, after it %d, in it %d, which left an empty file %d, "
        "a part %d",
        count.kills, count.before, count.after, count.empty + count.cut, count.empty, count.cut);
    QCOMPARE_LT(count.before, kills); // or none has ever saved
    // Of a few the share says nothing. A disk that is still busy with the save before keeps the
    // file empty for long.
    constexpr int enough = 500;
    if (kind == once && kills >= enough)
        QCOMPARE_LE((count.empty + count.cut) * 10, kills);
}

void TestKilledSave::killOnce(const QString &kind, int programs, int delayUs, Count &count)
{
    const ConfigHome home;
    VsConfig().save();
    const QByteArray defaults = home.readFile();
    std::vector<std::unique_ptr<SavingProgram>> running;
    running.reserve(size_t(programs));
    for (int i = 0; i < programs; ++i)
        running.push_back(std::make_unique<SavingProgram>(kind));
    for (const auto &program : running)
        QVERIFY(program->waitForSaves(kind == once ? 0 : 1));
    if (kind == once)
        running.front()->save();
    spinFor(delayUs);
    for (const auto &program : running)
        program->kill();
    ++count.kills;

    const QByteArray text = home.readFile();
    const QJsonDocument document = QJsonDocument::fromJson(text);
    const QJsonObject file = document.object();
    VsConfig next;
    if (document.isNull()) {
        ++(text.isEmpty() ? count.empty : count.cut);
        next.save();
        QCOMPARE(home.readFile(), defaults);
        return;
    }
    ++(isSave(file, 0) ? count.before : count.after);
    // The last one that was over, or one that was over but for telling so.
    QVERIFY(std::ranges::any_of(running, [&file](const auto &program) {
        return isSave(file, program->saves()) || isSave(file, program->saves() + 1);
    }));
    next.save(); // two programs may have left the end of a line more
    QCOMPARE(QJsonDocument::fromJson(home.readFile()).object(), file);
}

QTEST_GUILESS_MAIN(TestKilledSave)
#include "tst_killedsave.moc"
