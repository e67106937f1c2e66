// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/events/dice.h"
#include "tests/events/drivenclock.h"
#include "tests/events/hands.h"

#include <QtCore/qobject.h>
#include <QtCore/qstringlist.h>
#include <QtTest/qtest.h>

#include <memory>

/// The clock among random mouse, wheel, key and menu events. After each of them it is what the
/// events so far have made of it: this test keeps a place and check marks of its own.
class TestRandomEvents : public QObject
{
    Q_OBJECT

public:
    // From the top; "Minimize" is there only for a clock on the taskbar.
    enum Row {
        Resize,
        Fixed,
        Topmost,
        ShowOnTaskbar,
        Minimize,
        MoveTo,
        Settings,
        About,
        Quit,
        rowCount
    };
    Q_ENUM(Row)
    enum MoveRow { TopRight, TopLeft, BottomRight, BottomLeft, Center, moveRowCount };
    Q_ENUM(MoveRow)

private Q_SLOTS:
    void initTestCase() { QVERIFY(DrivenClock::setUpMonitors()); }
    void init();
    void cleanup();
    void isWhatTheEventsHaveMadeOfIt_data();
    void isWhatTheEventsHaveMadeOfIt();

private:
    static constexpr int smallestSide = 72;
    // What the menu shows with a check mark.
    struct Checks {
        bool resize = false;
        bool fixed = false;
        bool topmost = true;
        bool taskbar = false; // never stored
    };
    struct Kind;
    static const QList<Kind> &kinds();
    void happen();
    void note(const QString &what);
    void look();
    QString difference() const;

    // What happens. Each leaves in m_place and m_checks what has to become of the clock.
    void drag();
    void dragWithControl();
    void turnWheel();
    void turnWheelAlone();
    void pullCorner();
    void clickTwice();
    void typeKey();
    void clickElsewhere();
    void chooseInMenu();
    void leaveMenu();
    void minimizeAndRestore();
    void changeMonitors();
    void switchKeepPosition();

    // The hand.
    static QString textOf(const QList<QPoint> &points);
    bool mayRepeat();
    void pull(const QList<QPoint> &points);
    void clickForKeyboard(QPoint at);

    static QRect screen(); // all monitors
    static QRect monitorAt(QPoint point);
    void placeByUser(QRect place);
    QPoint pointOnClock();
    QPoint pointElsewhere();
    bool canStandAt(QRect place) const;
    static bool canStandOn(QRect room, QRect place);
    QByteArray complaints() const;

    // Parts of what happens in the menu.
    void openMenu();
    void readMenu();
    bool takeRow(int index, const QString &name, Hands::Key key);
    void choose(Row row);
    void chooseInMoveMenu();
    QList<QRect> placesAfterMove(MoveRow row) const;
    void giveTimeForTheTaskbar() const;
    void allowForFrame();
    void closeDialog(bool byKey);
    void quitAndStart();
    void readSettings();

    // Parts of what happens when monitors do.
    void plugMonitor(bool on);
    void plugAtRandom();
    void dragToRightMonitor();
    bool canDoWithoutMonitor() const;
    bool belongsOnScreen() const;
    bool isHiddenByMonitor() const;
    void followMonitors();
    void changeMonitorsUnseen();
    void bringBack();
    void centerFromTray();
    void pressKeepPosition();

    std::unique_ptr<DrivenClock> m_clock;
    std::unique_ptr<Dice> m_dice;
    QStringList m_notes; // what has been done
    int m_events = 0;
    int m_monitorChanges = 0;
    int m_lost = 0; // inputs
    QRect m_place; // where it has to be seen
    QRect m_wanted; // where the user has put it: elsewhere only while a monitor is away
    bool m_keepsPosition = false; // without its monitor
    Checks m_checks;
    QDateTime m_settingsTime; // before the latest choice in the menu
    bool m_firstRowActive = false; // in a menu that was opened by a key
};
