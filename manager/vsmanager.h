// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include "manager/applicationstyle.h"
#include "update/vsupdatechecker.h"

#include <QtCore/qdatetime.h>
#include <QtCore/qobject.h>
#include <QtCore/qpointer.h>
#include <QtCore/qrect.h>
#include <QtCore/qtimer.h>
#include <QtGui/qcolor.h>
#include <QtGui/qimage.h>
#include <QtGui/qwindow.h>
#include <QtQuick/qquickwindow.h>

#include <chrono>
#include <memory>

class QMenu;
class QQmlApplicationEngine;
class QThread;
class VsConfig;
class VsListModel;
class VsNativeEventFilter;
class VsTheme;
class WindowPlacement;

/// The central object of the program: the tick, the clock window and all that the documents call.
/// The order of its signals, slots and methods is the order of its meta-object and is fixed, and so
/// are the spellings of syncWindowGeometory, getCurrentScreenGeometory and onVersionRecieved.
class VsManager : public QObject
{
    Q_OBJECT
    Q_PROPERTY(double secondHandAngle READ secondHandAngle WRITE setSecondHandAngle NOTIFY
            secondHandAngleChanged)
    Q_PROPERTY(double minuteHandAngle READ minuteHandAngle WRITE setMinuteHandAngle NOTIFY
            minuteHandAngleChanged)
    Q_PROPERTY(
        double hourHandAngle READ hourHandAngle WRITE setHourHandAngle NOTIFY hourHandAngleChanged)
    Q_PROPERTY(QString timeText READ timeText WRITE setTimeText NOTIFY timeTextChanged)
    Q_PROPERTY(QString dateText READ dateText WRITE setDateText NOTIFY dateTextChanged)
    Q_PROPERTY(QString amPmText READ amPmText WRITE setAmPmText NOTIFY amPmTextChanged)
    Q_PROPERTY(QQuickWindow *popupWindow READ popupWindow WRITE setPopupWindow NOTIFY
            popupWindowChanged FINAL)

public:
    /// Reads the present in milliseconds since the epoch, UTC.
    using WallClock = qint64 (*)();

    explicit VsManager(QObject *parent = nullptr);
    ~VsManager() override;

    /// Publishes manager, config, theme and themeModel to the documents of \a engine, which keeps
    /// its owner and must outlive its use here. The same engine again, or null, publishes nothing.
    void setEngine(QQmlApplicationEngine *engine);

    /// Takes charge of the clock window and shows it. Called once; \a window keeps its owner.
    void setMainWindow(QWindow *window);

    /// Nobody sees the clock while the session is locked: it rests until this is told false, then
    /// it is right at once.
    void setSessionLocked(bool locked);

    /// Brings the clock onto a screen if it lies on none and is not told to keep its place. The
    /// stored geometry stays.
    void keepOnScreen();

    /// Puts a clock for which no geometry is stored at the top right of the primary screen, beside
    /// where the settings window opens.
    void placeFirstClock();

    /// The language code that decides about the date text, for example "ja".
    static void setLanguageName(const QString &name);

    /// What the clock shows of \a time; on the twelve-hour clock the marker follows it at once.
    [[nodiscard]] QString makeTimeText(QTime time);
    [[nodiscard]] QString makeDateText(QDate date) const;

    /// What Windows and the clock take for a scale of 1.
    static constexpr double referenceDpi = 96.0;

    /// Replaces the clock that is read, QDateTime::currentMSecsSinceEpoch() from the start.
    void setWallClock(WallClock wallClock) { m_wallClock = wallClock; }

    /// Time between two automatic update checks; an hour from the start.
    void setUpdateCheckInterval(std::chrono::milliseconds interval)
    {
        m_updateCheckTimer.setInterval(interval);
    }

    /// Degrees, clockwise, -90 at twelve o'clock; 0 until the first tick.
    [[nodiscard]] double secondHandAngle() const { return m_secondHandAngle; }
    [[nodiscard]] double minuteHandAngle() const { return m_minuteHandAngle; }
    [[nodiscard]] double hourHandAngle() const { return m_hourHandAngle; }
    void setSecondHandAngle(double angle);
    void setMinuteHandAngle(double angle);
    void setHourHandAngle(double angle);

    [[nodiscard]] QString timeText() const { return m_timeText; }
    [[nodiscard]] QString dateText() const { return m_dateText; }
    [[nodiscard]] QString amPmText() const { return m_amPmText; }
    void setTimeText(const QString &timeText);
    void setDateText(const QString &dateText);
    void setAmPmText(const QString &amPmText);

    [[nodiscard]] QQuickWindow *popupWindow() const { return m_popupWindow; }
    void setPopupWindow(QQuickWindow *window);

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    void secondHandAngleChanged(double angle);
    void minuteHandAngleChanged(double angle);
    void hourHandAngleChanged(double angle);
    void timeTextChanged(QString timeText);
    void quitByQml();
    void reqOpenMenu();
    void dateTextChanged(QString dateText);
    void paletteTextColorChanged(QColor color);
    void amPmTextChanged(QString ampm);
    // The five that the manager never emits itself: callJavaScript... and doTest(). Any caller may.
    void callJavaScriptGC();
    void mainWindowIdChanged(WId wid);
    void mainWindowChanged(QWindow *window);
    void callJavaScriptUpdateMask();
    void callJavaScriptResize(QSize size);
    void callJavaScriptAutoResize(double dpi);
    void windowMovingAnimationFinished(QWindow *window);
    void popupWindowChanged();
    void keyPressedOnPopupWindow(QQuickWindow *win, int key);
    void keyReleasedOnPopupWindow(QQuickWindow *win, int key);
    void popupWindowLostFocus(QQuickWindow *win);
    void keyPressedOnSettingsWindow(int key);
    void mouseButtonPressedOnSettingsWindow(int button);
    void mainWindowStateChanged(Qt::WindowStates states);
    void doTest();

public Q_SLOTS:
    void start();
    void showContextMenu(QPoint pos);
    void hideContextMenu();
    void quitApp();
    void openMenu();
    void openSettings();
    void openSettingsByQml();
    void changeDarkMode();
    void changeLightMode();
    void setTopmost(bool enabled);
    void setShowOnTaskbar(bool enabled, bool storeGeometry = true);
    void updateTimeTextImmediately();
    void updateDateTextImmediately();
    void updateMask();
    void clearMask();
    void checkUpdate();
    void setIgnoreMouseEvent(bool ignore);
    void setResizeEnabled(bool enabled);
    void saveConfig();
    void lazySaveConfig();
    void syncWindowGeometory();
    void moveAndReturnMainWindow();

private Q_SLOTS:
    void mainLoop();
    void onVersionRecieved(const VsUpdateChecker::VersionInfo &info);
    void onPaletteTextColorChanged(QColor color);
    void setTopmostTimerEnabled(bool enabled);
    void setTopmostForce();
    void onDpiChanged(WId wid, uint xDpi, uint yDpi, QRect rect);
    void checkMainWindowDpi();
    void moveWindowWithAnimation(QWindow *window, QPoint toPos);
    void onAboutToMinimize();

public:
    Q_INVOKABLE void showAboutVesper();
    /// True when the pixel of \a image at \a mousePos is not fully transparent; outside it false.
    Q_INVOKABLE bool isMouseInnerImage(QPoint mousePos, const QImage &image);
    Q_INVOKABLE void moveToTopLeft();
    Q_INVOKABLE void moveToTopRight();
    Q_INVOKABLE void moveToBottomRight();
    Q_INVOKABLE void moveToBottomLeft();
    Q_INVOKABLE void moveToCenterAtCurrentScreen();
    /// True when some screen contains \a pos; where none does, whether the clock is topmost.
    Q_INVOKABLE bool isAvailableScreen(QPoint pos);
    /// The whole screen under the mouse; the null rectangle where there is none.
    Q_INVOKABLE QRect getCurrentScreenGeometory();
    Q_INVOKABLE void openDefaultWeb();

private:
    void connectConfig();
    void connectNativeEventFilter();
    void publish(const QDateTime &tick);
    [[nodiscard]] QDateTime now() const;
    void buildMenu();
    template <typename Set, typename Changed>
    void addSetting(const QString &text, bool initial, Set set, Changed changed);
    void addMinimizeAction();
    void addMoveMenu();
    void minimizeOrRestore();
    void openMenuByKeyboard();
    void filterMenuEvent(QEvent *event);
    void connectStyle();
    void changeStyle(ApplicationStyle::Mode mode);
    template <typename Step> void styleStep(Step step);
    void createSettingsWindow();
    void onSettingsWindowDestroyed();
    void filterSettingsWindowEvent(QEvent *event);
    void filterPopupWindowEvent(QEvent *event);
    void scheduleUpdateChecks();
    void endUpdateChecks();
    void filterMainWindowEvent(QEvent *event);
    WindowPlacement &placement();
    void applyStoredGeometry();
    void applyWindowStyle();
    void onMainWindowStateChange();
    void completeTaskbarChange();
    void updateMaskAfterShow();
    QRect restorableGeometry() const;
    void moveToCorner(Qt::Corner corner);
    void saveIfMoved();

    VsConfig *m_config = nullptr; // not owned
    QWindow *m_mainWindow = nullptr; // not owned
    QQuickWindow *m_settingsWindow = nullptr; // deletes itself when it is closed
    bool m_settingsFrameFits = true; // false until it is seen after it was opened
    QQuickWindow *m_popupWindow = nullptr; // not owned
    QQmlApplicationEngine *m_engine = nullptr; // not owned
    WallClock m_wallClock = &QDateTime::currentMSecsSinceEpoch;
    double m_secondHandAngle = 0.0;
    double m_minuteHandAngle = 0.0;
    double m_hourHandAngle = 0.0;
    QString m_timeText;
    QString m_amPmText;
    QString m_dateText;
    QTimer m_tickTimer;
    QDateTime m_lastTick; // the whole second that was published last
    bool m_ticking = false;
    bool m_inMainLoop = false;
    std::unique_ptr<QMenu> m_menu;
    QColor m_paletteTextColor; // of the menu, as last told
    bool m_inStyleStep = false;
    bool m_isPackaged;
    QTimer m_updateCheckTimer;
    bool m_askingForUpdate = false;
    QList<QPointer<QThread>> m_updateThreads; // each goes by itself after its check
    VsTheme *m_theme = nullptr; // owned as a child
    VsListModel *m_themeModel = nullptr; // owned as a child
    std::unique_ptr<VsNativeEventFilter> m_nativeEventFilter;
    QTimer m_topmostTimer;
    QPoint m_pendingPosition; // the configuration's, at the first call of a delayed save
    QSize m_pendingSize;
    bool m_lazySavePending = false;
    QTimer m_lazySaveTimer;
    double m_dpi = referenceDpi; // of the clock window's screen
    double m_devicePixelRatio; // of that screen; noted, and read by nobody: meant so
    bool m_mousePressed = false;
    QTimer m_dpiCheckTimer;
    Qt::WindowStates m_windowStates; // as last told
    bool m_isTaskbarChangeDue = false; // put off while the clock waits for its monitor
    bool m_isOnTaskbar = false; // as last told, whatever the configuration says
    QRect m_normalGeometry; // before the clock was minimised or its taskbar entry changed
};
