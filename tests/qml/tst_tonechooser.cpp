// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The settings window: the list of tones.

#include "tests/qml/settingstest.h"

#include <QtGui/qscreen.h>

using namespace Qt::StringLiterals;

class tst_ToneChooser : public SettingsTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnRealWarning();
        prepare();
        open();
    }
    void cleanup() { close(); }

    void listIsPlacedOverTheBox();
    void listIsCutAtTheScreen();
    void toneIsChosenWithTheMouse();
    void toneIsChosenWithTheKeyboard_data();
    void toneIsChosenWithTheKeyboard();
    void otherKeysDoNotChoose();
    void heldKeyChoosesOnce();
    void releaseBesideTheRowsDoesNotChoose();
    void escapeChoosesNothing();
    void listClosesWithoutTheFocus();
    void listStaysWhenItIsOpenedWhileItFades();
    void hoveredRowIsCurrent();
    void themeIsToldFirst();
    void themeIsToldOfEveryChange();
    void boxFollowsTheSettingAfterAChoice();

private:
    QQuickWindow *openList();
    QString tone() const { return m_documents->config.colorToneName(); }
};

QQuickWindow *tst_ToneChooser::openList()
{
    click(*toneChooser());
    if (!QTest::qWaitFor([this] { return m_documents->manager.popupWindow != nullptr; }))
        return nullptr;
    QTest::qWait(200); // it unfolds for 100 ms
    return m_documents->manager.popupWindow;
}

void tst_ToneChooser::listIsPlacedOverTheBox()
{
    m_documents->config.setColorToneName(u"DarkGreen"_s); // the third row
    QTRY_COMPARE(toneChooser()->property("currentIndex").toInt(), 2);
    m_window->setPosition(100, 300);
    const QQuickWindow *const list = openList();
    QVERIFY(list);
    const QPoint box = toneChooser()->mapToGlobal(QPointF(0, 0)).toPoint();
    QCOMPARE(list->position(), box - QPoint(4, 8 + 2 * 32));
    QCOMPARE(list->width(), int(toneChooser()->width()) + 16);
    QCOMPARE(list->height(), std::min(10 * 32 + 16, list->screen()->size().height() - list->y()));
    QVERIFY(list->flags().testFlag(Qt::FramelessWindowHint));
    QCOMPARE(list->transientParent(), m_window);
}

void tst_ToneChooser::listIsCutAtTheScreen()
{
    m_documents->config.setColorToneName(u"LightGray"_s); // the last row
    QTRY_COMPARE(toneChooser()->property("currentIndex").toInt(), 9);
    m_window->setPosition(100, 0);
    const QQuickWindow *const list = openList();
    QVERIFY(list);
    const int boxY = toneChooser()->mapToGlobal(QPointF(0, 0)).toPoint().y();
    const int cut = 8 + 9 * 32 - boxY;
    QCOMPARE_GT(cut, 0);
    QCOMPARE(list->y(), 0);
    QCOMPARE(list->height(), 10 * 32 + 16 - cut);
    const QQuickItem *view
        = itemsWith(list->contentItem(), {"keyPressed", "contentY"}).constFirst();
    QCOMPARE(view->property("contentY").toInt(), cut);
}

void tst_ToneChooser::toneIsChosenWithTheMouse()
{
    QQuickWindow *const list = openList();
    QVERIFY(list);
    QTest::mouseClick(list, Qt::LeftButton, {}, QPoint(60, 8 + 4 * 32 + 16));
    QCOMPARE(tone(), u"DarkGray"_s);
    QCOMPARE(m_documents->theme.base(), u"qrc:/themes/basic/dark_gray/clock_base.svg"_s);
    QCOMPARE(m_documents->config.themeName(), u"Basic"_s);
    QTRY_VERIFY(!list->isVisible());
    QCOMPARE(m_documents->manager.popupWindow, nullptr);
}

void tst_ToneChooser::toneIsChosenWithTheKeyboard_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Space") << Qt::Key_Space;
    QTest::newRow("Return") << Qt::Key_Return;
    QTest::newRow("Enter") << Qt::Key_Enter;
}

void tst_ToneChooser::toneIsChosenWithTheKeyboard()
{
    QFETCH(Qt::Key, key);
    QQuickWindow *const list = openList();
    QVERIFY(list);
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyPress(list, key);
    QCOMPARE(tone(), u"DarkBlue"_s);
    QTest::keyRelease(list, key);
    QCOMPARE(tone(), u"DarkGreen"_s);
    QTRY_VERIFY(!list->isVisible());
}

// While one of the choosing keys is held as well.
void tst_ToneChooser::otherKeysDoNotChoose()
{
    QQuickWindow *const list = openList();
    QVERIFY(list);
    QTest::keyPress(list, Qt::Key_Space);
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_A);
    QCOMPARE(tone(), u"DarkBlue"_s);
    QTest::keyRelease(list, Qt::Key_Space);
    QCOMPARE(tone(), u"DarkRed"_s);
}

// The keyboard tells of a release at every repetition.
void tst_ToneChooser::heldKeyChoosesOnce()
{
    QQuickWindow *const list = openList();
    QVERIFY(list);
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyPress(list, Qt::Key_Space);
    QKeyEvent repetition(QEvent::KeyRelease, Qt::Key_Space, Qt::NoModifier, u" "_s, true);
    QCoreApplication::sendEvent(list, &repetition);
    QCOMPARE(tone(), u"DarkBlue"_s);
    QTest::keyRelease(list, Qt::Key_Space);
    QCOMPARE(tone(), u"DarkRed"_s);
}

void tst_ToneChooser::releaseBesideTheRowsDoesNotChoose()
{
    QQuickWindow *const list = openList();
    QVERIFY(list);
    const QPoint fifthRow(60, 8 + 4 * 32 + 16);
    const QPoint margin(60, 3);
    QTest::mousePress(list, Qt::LeftButton, {}, fifthRow);
    QTest::mouseMove(list, margin);
    QTest::mouseRelease(list, Qt::LeftButton, {}, margin);
    QTest::qWait(200); // it would fade for 100 ms
    QVERIFY(list->isVisible());
    QCOMPARE(tone(), u"DarkBlue"_s);
}

void tst_ToneChooser::escapeChoosesNothing()
{
    QQuickWindow *const list = openList();
    QVERIFY(list);
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Escape);
    QTRY_VERIFY(!list->isVisible());
    QCOMPARE(tone(), u"DarkBlue"_s);
}

void tst_ToneChooser::listClosesWithoutTheFocus()
{
    QQuickWindow *const list = openList();
    QVERIFY(list);
    Q_EMIT m_documents->manager.popupWindowLostFocus(m_window); // another window's
    QTest::qWait(200);
    QVERIFY(list->isVisible());
    Q_EMIT m_documents->manager.popupWindowLostFocus(list);
    QTRY_VERIFY(!list->isVisible());
}

void tst_ToneChooser::listStaysWhenItIsOpenedWhileItFades()
{
    QQuickWindow *const list = openList();
    QVERIFY(list);
    QTest::keyClick(list, Qt::Key_Escape);
    QTRY_COMPARE_LT(list->opacity(), 1.0);
    QMetaObject::invokeMethod(toneChooser(), "openPopup");
    QTest::qWait(300); // it would have faded
    QVERIFY(list->isVisible());
    QCOMPARE(list->opacity(), 1.0);
    QCOMPARE(m_documents->manager.popupWindow, list);
}

void tst_ToneChooser::hoveredRowIsCurrent()
{
    QQuickWindow *const list = openList();
    QVERIFY(list);
    const QQuickItem *view
        = itemsWith(list->contentItem(), {"keyPressed", "contentY"}).constFirst();
    QCOMPARE(view->property("currentIndex").toInt(), 0);
    QTest::mouseMove(list, QPoint(60, 8 + 3 * 32 + 16));
    QTRY_COMPARE(view->property("currentIndex").toInt(), 3);
    QCOMPARE(tone(), u"DarkBlue"_s);
}

void tst_ToneChooser::themeIsToldFirst()
{
    auto &config = m_documents->config;
    auto &theme = m_documents->theme;
    config.setThemeName(u"Another"_s);
    QStringList changes;
    connect(&theme, &VsTheme::baseChanged, this, [&] { changes += u"theme"_s; });
    connect(&config, &VsConfig::themeNameChanged, this, [&] { changes += u"themeName"_s; });
    connect(&config, &VsConfig::colorToneNameChanged, this, [&] { changes += u"colorToneName"_s; });
    QQuickWindow *const list = openList();
    QVERIFY(list);
    QTest::mouseClick(list, Qt::LeftButton, {}, QPoint(60, 8 + 4 * 32 + 16));
    QCOMPARE(changes, (QStringList{u"theme"_s, u"themeName"_s, u"colorToneName"_s}));
}

// Also where it is the setting that has changed first.
void tst_ToneChooser::themeIsToldOfEveryChange()
{
    m_documents->config.setColorToneName(u"LightRed"_s);
    QCOMPARE(m_documents->theme.base(), u"qrc:/themes/basic/light_red/clock_base.svg"_s);
}

void tst_ToneChooser::boxFollowsTheSettingAfterAChoice()
{
    QQuickWindow *const list = openList();
    QVERIFY(list);
    QTest::mouseClick(list, Qt::LeftButton, {}, QPoint(60, 8 + 4 * 32 + 16));
    QCOMPARE(toneChooser()->property("currentIndex").toInt(), 4);
    m_documents->config.setColorToneName(u"LightRed"_s);
    QCOMPARE(toneChooser()->property("currentIndex").toInt(), 6);
}

int main(int argc, char **argv) { return runQmlTest<tst_ToneChooser>(argc, argv); }

#include "tst_tonechooser.moc"
