// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The manager and the settings window: opening, closing, the popup and quitting.

#include "config/vsconfig.h"
#include "manager/vsmanager.h"
#include "tests/qml/documents.h"

#include <QtCore/qregularexpression.h>
#include <QtCore/qtemporarydir.h>
#include <QtGui/qevent.h>
#include <QtGui/qscreen.h>
#include <QtQml/qqmlabstracturlinterceptor.h>
#include <QtTest/qsignalspy.h>

#include <memory>

using namespace Qt::StringLiterals;

namespace
{

// Puts another text in the place of the document.
class OtherDocument : public QQmlAbstractUrlInterceptor
{
public:
    explicit OtherDocument(const QByteArray &text)
    {
        QFile file(m_folder.filePath(u"Other.qml"_s));
        if (file.open(QIODevice::WriteOnly) && file.write(text) == text.size())
            m_url = QUrl::fromLocalFile(file.fileName());
    }

    QUrl intercept(const QUrl &url, [[maybe_unused]] DataType type) override
    {
        return url.path().endsWith("/Settings.qml"_L1) ? m_url : url;
    }

private:
    const QTemporaryDir m_folder;
    QUrl m_url;
};

QWindowList visibleWindows()
{
    QWindowList windows = QGuiApplication::topLevelWindows();
    windows.removeIf([](const QWindow *window) { return !window->isVisible(); });
    return windows;
}

} // namespace

class tst_SettingsWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void opensOneWindow();
    void secondCallCentresItAgain();
    void isNoLargerThanTheScreen();
    void opensNothingWithoutEngine();
    void opensNoOtherDocument_data();
    void opensNoOtherDocument();
    void closingSavesAndForgets();
    void closesWithoutEngine();
    void tellsOfMouseButtons();
    void quitsAtOnceWithoutIt();
    void quitsAfterItIsGone();
    void followsThePopup();

private:
    QQuickWindow *settingsWindow() const;
    static bool isSaved() { return QFile::exists(VsConfig::configFilePath()); }

    std::unique_ptr<QQmlApplicationEngine> m_engine;
    std::unique_ptr<VsManager> m_manager;
    std::unique_ptr<QWindow> m_clock;
};

void tst_SettingsWindow::init()
{
    QTest::failOnWarning(
        QRegularExpression(u"^(?!This plugin does not support|Member palette of the object Vs)"_s));
    QFile::remove(VsConfig::configFilePath());
    m_engine = std::make_unique<QQmlApplicationEngine>();
    m_engine->setImportPathList(
        m_engine->importPathList() + QStringList{QStringLiteral(VESPER_IMPORTS)});
    m_manager = std::make_unique<VsManager>();
    m_manager->setEngine(m_engine.get());
    m_clock = std::make_unique<QWindow>();
    m_clock->setGeometry(50, 50, 200, 200);
    m_manager->setMainWindow(m_clock.get());
    QCursor::setPos(10, 10);
}

void tst_SettingsWindow::cleanup()
{
    m_manager.reset();
    m_engine.reset();
    m_clock.reset();
}

QQuickWindow *tst_SettingsWindow::settingsWindow() const
{
    const QWindowList windows = QGuiApplication::topLevelWindows();
    QList<QQuickWindow *> found;
    for (QWindow *const window : windows) {
        if (window->objectName() == "settingsWindow"_L1)
            found += qobject_cast<QQuickWindow *>(window);
    }
    return found.size() == 1 ? found.first() : nullptr;
}

void tst_SettingsWindow::opensOneWindow()
{
    m_manager->openSettings();
    const QQuickWindow *const window = settingsWindow();
    QVERIFY(window);
    QVERIFY(window->isVisible());
    QCOMPARE(window->transientParent(), m_clock.get());
    QVERIFY(!window->icon().isNull());
    m_manager->openSettingsByQml();
    QCOMPARE(settingsWindow(), window);
}

void tst_SettingsWindow::secondCallCentresItAgain()
{
    m_manager->openSettings();
    QQuickWindow *const window = settingsWindow();
    window->setGeometry(3, 5, 420, 400);
    m_manager->openSettings();
    QCOMPARE(window->size(), QSize(420, 400));
    QCOMPARE(window->geometry().center(), window->screen()->availableGeometry().center());
}

void tst_SettingsWindow::isNoLargerThanTheScreen()
{
    m_manager->openSettings();
    QQuickWindow *const window = settingsWindow();
    window->resize(9000, 9000);
    m_manager->openSettings();
    QCOMPARE(window->size(), window->screen()->availableGeometry().size());
}

void tst_SettingsWindow::opensNothingWithoutEngine()
{
    m_manager->setEngine(nullptr);
    m_manager->openSettings();
    QVERIFY(!settingsWindow());
}

void tst_SettingsWindow::opensNoOtherDocument_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<qsizetype>("windows");
    QTest::newRow("a window, to see that it is read")
        << "import QtQuick\nWindow { objectName: 'settingsWindow' }"_ba << qsizetype(2);
    QTest::newRow("no window") << "import QtQuick\nItem { }"_ba << qsizetype(1);
    QTest::newRow("not ready") << "import QtQuick\nWindow { visible: true; x: }"_ba << qsizetype(1);
}

void tst_SettingsWindow::opensNoOtherDocument()
{
    QFETCH(const QByteArray, text);
    QFETCH(const qsizetype, windows);
    OtherDocument document(text);
    m_engine->addUrlInterceptor(&document);
    m_manager->openSettings();
    QCOMPARE(visibleWindows().size(), windows); // with the clock
    QCOMPARE(settingsWindow() != nullptr, windows == 2);
    m_engine->removeUrlInterceptor(&document);
}

void tst_SettingsWindow::closingSavesAndForgets()
{
    m_manager->openSettings();
    QVERIFY(!isSaved());
    QTest::ignoreMessage(QtDebugMsg, "Settings Window Destroyed");
    settingsWindow()->close();
    QTRY_VERIFY(!settingsWindow());
    QVERIFY(isSaved());
    m_manager->openSettings();
    QVERIFY(settingsWindow());
}

void tst_SettingsWindow::closesWithoutEngine()
{
    m_manager->openSettings();
    m_manager->setEngine(nullptr);
    QTest::ignoreMessage(QtDebugMsg, "Settings Window Destroyed");
    settingsWindow()->close();
    QTRY_VERIFY(!settingsWindow());
    QTest::qWait(1200); // a second later the memory is given back
    QVERIFY(isSaved());
}

void tst_SettingsWindow::tellsOfMouseButtons()
{
    QSignalSpy keys(m_manager.get(), &VsManager::keyPressedOnSettingsWindow);
    QSignalSpy buttons(m_manager.get(), &VsManager::mouseButtonPressedOnSettingsWindow);
    m_manager->openSettings();
    QTest::mouseClick(settingsWindow(), Qt::RightButton, {}, QPoint(300, 650));
    QTest::keyClick(settingsWindow(), Qt::Key_A);
    QCOMPARE(buttons.size(), 1);
    QCOMPARE(buttons.first().first().toInt(), int(Qt::RightButton));
    QVERIFY(keys.isEmpty());
}

void tst_SettingsWindow::quitsAtOnceWithoutIt()
{
    QSignalSpy quit(m_manager.get(), &VsManager::quitByQml);
    m_manager->quitApp();
    QCOMPARE(quit.size(), 1);
    QVERIFY(isSaved());
}

void tst_SettingsWindow::quitsAfterItIsGone()
{
    m_manager->openSettings();
    bool wasThere = true;
    connect(m_manager.get(), &VsManager::quitByQml, this,
        [&wasThere, this] { wasThere = settingsWindow() != nullptr; });
    QSignalSpy quit(m_manager.get(), &VsManager::quitByQml);
    QTest::ignoreMessage(QtDebugMsg, "Settings Window Destroyed");
    m_manager->quitApp();
    QVERIFY(quit.isEmpty());
    QTRY_COMPARE(quit.size(), 1);
    QVERIFY(!settingsWindow());
}

void tst_SettingsWindow::followsThePopup()
{
    QSignalSpy changes(m_manager.get(), &VsManager::popupWindowChanged);
    QSignalSpy pressed(m_manager.get(), &VsManager::keyPressedOnPopupWindow);
    QSignalSpy released(m_manager.get(), &VsManager::keyReleasedOnPopupWindow);
    QSignalSpy lost(m_manager.get(), &VsManager::popupWindowLostFocus);
    auto first = std::make_unique<QQuickWindow>();
    QQuickWindow second;
    m_manager->setPopupWindow(first.get());
    m_manager->setPopupWindow(first.get());
    QCOMPARE(changes.size(), 1);

    QTest::keyClick(first.get(), Qt::Key_Down);
    QCOMPARE(pressed.size(), 1);
    QCOMPARE(pressed.first(), (QVariantList{QVariant::fromValue(first.get()), int(Qt::Key_Down)}));
    QCOMPARE(released.size(), 1);
    QFocusEvent focusOut(QEvent::FocusOut);
    QCoreApplication::sendEvent(first.get(), &focusOut);
    QCOMPARE(lost.size(), 1);

    m_manager->setPopupWindow(&second);
    QTest::keyClick(first.get(), Qt::Key_Down); // no longer followed
    QCOMPARE(pressed.size(), 1);
    m_manager->setPopupWindow(first.get());
    QCOMPARE(changes.size(), 3);
    first.reset();
    QCOMPARE(m_manager->popupWindow(), nullptr);
    QCOMPARE(changes.size(), 4);
}

int main(int argc, char **argv) { return runQmlTest<tst_SettingsWindow>(argc, argv); }

#include "tst_settingswindow.moc"
