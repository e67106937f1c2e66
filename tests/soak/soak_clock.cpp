// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The manager and the face, with a time of their own that passes as fast as the machine can. Reads
// commands, one to a line, and tells what it did and what the face showed at every tick, in fields
// with a tab between: soak.py gives the commands and compares.
//
//   zone NAME, language NAME, era 0|1, twelve 0|1    what decides about the texts
//   delays MS...     how late timers fire, in turn
//   work MS          how long reading the clock takes
//   clock MS         sets the clock, in ms since the epoch, UTC
//   step MS          sets the clock by that much between two readings of one tick
//   run MS           lets that time pass

#include "tests/qml/documents.h"
#include "tests/soak/quicktime.h"

#include "config/vsconfig.h"
#include "manager/vsmanager.h"

#include <QtCore/qtextstream.h>
#include <QtWidgets/qapplication.h>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace
{

class SoakClock
{
public:
    explicit SoakClock(QuickTime *time);

    /// False when the face does not load.
    [[nodiscard]] bool isWhole() const { return m_face != nullptr; }
    /// False for a command that is none.
    [[nodiscard]] bool obey(const QStringList &words);

private:
    void run(qint64 ms);
    void tellDone(const QString &what);
    void tellTicks();

    QuickTime *m_time;
    QTextStream m_out{stdout};
    VsManager m_manager;
    QQmlApplicationEngine m_engine;
    std::unique_ptr<QObject> m_face;
    QList<qint64> m_ticks; // published and not told yet; what the clock showed to the manager
};

SoakClock::SoakClock(QuickTime *time)
    : m_time(time)
{
    m_out.setRealNumberPrecision(17);
    m_manager.setWallClock(&QuickTime::readWallClock);
    m_engine.setImportPathList(
        m_engine.importPathList() + QStringList{QStringLiteral(VESPER_IMPORTS)});
    m_manager.setEngine(&m_engine);
    QQmlComponent component(&m_engine, QUrl(u"qrc:/qt/qml/vesper/qml/BasicClock.qml"_s));
    m_face.reset(component.create());
    QObject::connect(&m_manager, &VsManager::timeTextChanged, &m_manager,
        [this] { m_ticks.append(m_time->lastReading()); });
}

bool SoakClock::obey(const QStringList &words)
{
    const QString &command = words.constFirst();
    const QString value = words.value(1);
    auto *config = VsConfig::instance();
    if (command == "zone"_L1) {
        qputenv("TZ", value.toUtf8());
    } else if (command == "language"_L1) {
        VsManager::setLanguageName(value);
    } else if (command == "era"_L1) {
        config->setUseEra(value == "1"_L1);
    } else if (command == "twelve"_L1) {
        config->setTweleveHours(value == "1"_L1);
    } else if (command == "delays"_L1) {
        QList<qint64> delays;
        const QStringList values = words.sliced(1);
        for (const QString &delay : values)
            delays.append(delay.toLongLong());
        m_time->setDelays(delays);
    } else if (command == "work"_L1) {
        m_time->setWork(value.toLongLong());
    } else if (command == "clock"_L1) {
        m_time->setWallClock(value.toLongLong());
    } else if (command == "step"_L1) {
        m_time->setWallClockAfterReading(value.toLongLong());
    } else if (command == "run"_L1) {
        run(value.toLongLong());
    } else {
        return false;
    }
    tellDone(words.join(u' '));
    return true;
}

void SoakClock::tellDone(const QString &what)
{
    m_out << what << '\t' << m_time->nowMs() << '\t' << m_time->wallClock() << '\n';
}

void SoakClock::run(qint64 ms)
{
    const qint64 end = m_time->nowMs() + ms;
    if (m_manager.timeText().isEmpty()) {
        m_manager.start();
        tellTicks();
    }
    while (m_time->fireNextUntil(end))
        tellTicks();
}

void SoakClock::tellTicks()
{
    const QList<qint64> ticks = std::exchange(m_ticks, {});
    for (const qint64 tick : ticks) {
        m_out << "tick\t" << m_time->nowMs() << '\t' << tick;
        for (const auto &hand : {u"handSecond"_s, u"handMinute"_s, u"handHour"_s})
            m_out << '\t' << byId(m_face.get(), hand)->property("angleValue").toDouble();
        for (const auto &text :
            {u"clockNumberTextItem"_s, u"clockNumberAmPmTextItem"_s, u"dateTextItem"_s})
            m_out << '\t' << byId(m_face.get(), text)->property("text").toString();
        m_out << '\n';
    }
    if (m_time->takeStepped())
        tellDone(u"stepped"_s);
}

} // namespace

int main(int argc, char **argv)
{
    useTemporaryHome();
    auto *time = new QuickTime; // the application's
    QCoreApplication::setEventDispatcher(time);
    const QApplication application(argc, argv);
    chooseRenderer();
    VsConfig::instance()->setAutoCheckUpdate(false);
    VsConfig::instance()->setTopmost(false);
    SoakClock clock(time);
    if (!clock.isWhole())
        return 1;
    QTextStream in(stdin);
    QString line;
    while (in.readLineInto(&line)) {
        if (!clock.obey(line.split(u' '))) {
            qWarning().noquote() << "no such command:" << line;
            return 1;
        }
    }
    return 0;
}
