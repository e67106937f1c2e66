// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qobject.h>
#include <QtCore/qpoint.h>
#include <QtCore/qrect.h>
#include <QtCore/qsize.h>
#include <QtCore/qstring.h>

#include <span>

/// Every setting of the clock and the last window geometry. Created from the configuration file;
/// saves itself only when told to. No value is checked or clamped: whatever a caller or the file
/// supplies is stored, and whoever uses a value has to cope with it.
///
/// A setter does nothing when the value is unchanged (doubles: within 12 digits), otherwise it
/// assigns and emits at once. GUI thread only.
///
/// The order of the properties and that of the signals are part of the interface, and so are the
/// spellings tweleveHours and keepPositionWhenMonitorDetatched.
class VsConfig : public QObject
{
    Q_OBJECT

    Q_PROPERTY(
        bool resizeEnabled READ resizeEnabled WRITE setResizeEnabled NOTIFY resizeEnabledChanged)
    Q_PROPERTY(bool fixed READ fixed WRITE setFixed NOTIFY fixedChanged)
    Q_PROPERTY(bool topmost READ topmost WRITE setTopmost NOTIFY topmostChanged)
    Q_PROPERTY(bool withDigitalClock READ withDigitalClock WRITE setWithDigitalClock NOTIFY
            withDigitalClockChanged)
    Q_PROPERTY(bool displayDate READ displayDate WRITE setDisplayDate NOTIFY displayDateChanged)
    Q_PROPERTY(bool displayLogo READ displayLogo WRITE setDisplayLogo NOTIFY displayLogoChanged)
    Q_PROPERTY(bool useDefaultBackgroundImage READ useDefaultBackgroundImage WRITE
            setUseDefaultBackgroundImage NOTIFY useDefaultBackgroundImageChanged)
    Q_PROPERTY(double opacity READ opacity WRITE setOpacity NOTIFY opacityChanged)
    Q_PROPERTY(bool ignoreMouseEvent READ ignoreMouseEvent WRITE setIgnoreMouseEvent NOTIFY
            ignoreMouseEventChanged)
    Q_PROPERTY(bool tweleveHours READ tweleveHours WRITE setTweleveHours NOTIFY tweleveHoursChanged)
    Q_PROPERTY(bool useEra READ useEra WRITE setUseEra NOTIFY useEraChanged)
    Q_PROPERTY(bool autoCheckUpdate READ autoCheckUpdate WRITE setAutoCheckUpdate NOTIFY
            autoCheckUpdateChanged)
    Q_PROPERTY(bool raisePriorityOfTopmost READ raisePriorityOfTopmost WRITE
            setRaisePriorityOfTopmost NOTIFY raisePriorityOfTopmostChanged)
    Q_PROPERTY(double left READ left WRITE setLeft NOTIFY leftChanged)
    Q_PROPERTY(double top READ top WRITE setTop NOTIFY topChanged)
    Q_PROPERTY(double width READ width WRITE setWidth NOTIFY widthChanged)
    Q_PROPERTY(double height READ height WRITE setHeight NOTIFY heightChanged)
    Q_PROPERTY(double devicePixelRatio READ devicePixelRatio WRITE setDevicePixelRatio NOTIFY
            devicePixelRatioChanged FINAL)
    Q_PROPERTY(bool secondHand READ secondHand WRITE setSecondHand NOTIFY secondHandChanged FINAL)
    Q_PROPERTY(bool keepPositionWhenMonitorDetatched READ keepPositionWhenMonitorDetatched WRITE
            setKeepPositionWhenMonitorDetatched NOTIFY keepPositionWhenMonitorDetatchedChanged
                FINAL)
    Q_PROPERTY(bool autoStartAtSignIn READ autoStartAtSignIn WRITE setAutoStartAtSignIn NOTIFY
            autoStartAtSignInChanged)
    Q_PROPERTY(QString themeName READ themeName WRITE setThemeName NOTIFY themeNameChanged)
    Q_PROPERTY(
        QString colorToneName READ colorToneName WRITE setColorToneName NOTIFY colorToneNameChanged)
    Q_PROPERTY(double defaultOverallOpacity READ defaultOverallOpacity CONSTANT)
    Q_PROPERTY(double defaultBackgroundOpacity READ defaultBackgroundOpacity CONSTANT)
    Q_PROPERTY(double defaultBackgroundImageOpacity READ defaultBackgroundImageOpacity CONSTANT)
    Q_PROPERTY(double defaultFaceOpacity READ defaultFaceOpacity CONSTANT)
    Q_PROPERTY(double defaultHandsOpacity READ defaultHandsOpacity CONSTANT)
    Q_PROPERTY(double defaultDigitalClockBackgroundOpacity READ defaultDigitalClockBackgroundOpacity
            CONSTANT)
    Q_PROPERTY(double defaultDigitalClockForegroundOpacity READ defaultDigitalClockForegroundOpacity
            CONSTANT)
    Q_PROPERTY(double defaultDigitalClockScaleFactor READ defaultDigitalClockScaleFactor CONSTANT)
    Q_PROPERTY(double defaultDateScaleFactor READ defaultDateScaleFactor CONSTANT)
    Q_PROPERTY(double defaultLogoScaleFactor READ defaultLogoScaleFactor CONSTANT)
    Q_PROPERTY(double backgroundOpacity READ backgroundOpacity WRITE setBackgroundOpacity NOTIFY
            backgroundOpacityChanged FINAL)
    Q_PROPERTY(double backgroundImageOpacity READ backgroundImageOpacity WRITE
            setBackgroundImageOpacity NOTIFY backgroundImageOpacityChanged FINAL)
    Q_PROPERTY(
        double faceOpacity READ faceOpacity WRITE setFaceOpacity NOTIFY faceOpacityChanged FINAL)
    Q_PROPERTY(double handsOpacity READ handsOpacity WRITE setHandsOpacity NOTIFY
            handsOpacityChanged FINAL)
    Q_PROPERTY(double digitalClockBackgroundOpacity READ digitalClockBackgroundOpacity WRITE
            setDigitalClockBackgroundOpacity NOTIFY digitalClockBackgroundOpacityChanged FINAL)
    Q_PROPERTY(double digitalClockForegroundOpacity READ digitalClockForegroundOpacity WRITE
            setDigitalClockForegroundOpacity NOTIFY digitalClockForegroundOpacityChanged FINAL)
    Q_PROPERTY(double dateBackgroundOpacity READ dateBackgroundOpacity WRITE
            setDateBackgroundOpacity NOTIFY dateBackgroundOpacityChanged FINAL)
    Q_PROPERTY(double dateForegroundOpacity READ dateForegroundOpacity WRITE
            setDateForegroundOpacity NOTIFY dateForegroundOpacityChanged FINAL)
    Q_PROPERTY(
        double logoOpacity READ logoOpacity WRITE setLogoOpacity NOTIFY logoOpacityChanged FINAL)
    Q_PROPERTY(double digitalClockScaleFactor READ digitalClockScaleFactor WRITE
            setDigitalClockScaleFactor NOTIFY digitalClockScaleFactorChanged FINAL)
    Q_PROPERTY(double logoScaleFactor READ logoScaleFactor WRITE setLogoScaleFactor NOTIFY
            logoScaleFactorChanged FINAL)
    Q_PROPERTY(double dateScaleFactor READ dateScaleFactor WRITE setDateScaleFactor NOTIFY
            dateScaleFactorChanged FINAL)
    Q_PROPERTY(bool showOnTaskbar READ showOnTaskbar WRITE setShowOnTaskbar NOTIFY
            showOnTaskbarChanged FINAL)

public:
    /// The process-wide instance, made and loaded on the first call and never deleted.
    static VsConfig *instance();

    /// Loads the file and asks the system whether the program starts at sign-in.
    explicit VsConfig(QObject *parent = nullptr);

    /// A copy has no parent and takes every setting but autoStartAtSignIn, which is a fact of the
    /// system and not a stored value. Copying reads no file and emits nothing.
    VsConfig(const VsConfig &other);
    VsConfig &operator=(const VsConfig &other);

    /// Full path of the file. Creates the folder that holds it.
    static QString configFilePath();

    /// Takes the settings from the file without emitting anything. A file that is missing,
    /// unreadable or no JSON changes nothing; a missing value or one of another type becomes its
    /// default.
    void load();

    /// Writes the file in place. Fails silently.
    void save() const;

    /// The stored geometry in whole pixels, each value truncated toward zero and bounded to what an
    /// int holds. Where even the sum of position and size is out of range the far edge wraps
    /// around, so read x() and y() of such a rectangle only.
    QRect geometry() const;
    QPointF position() const { return {m_left, m_top}; }
    QSizeF size() const { return {m_width, m_height}; }

    bool resizeEnabled() const { return m_resizeEnabled; }
    bool fixed() const { return m_fixed; }
    bool topmost() const { return m_topmost; }
    bool withDigitalClock() const { return m_withDigitalClock; }
    bool displayDate() const { return m_displayDate; }
    bool displayLogo() const { return m_displayLogo; }
    bool useDefaultBackgroundImage() const { return m_useDefaultBackgroundImage; }
    double opacity() const { return m_opacity; }
    bool ignoreMouseEvent() const { return m_ignoreMouseEvent; }
    bool tweleveHours() const { return m_tweleveHours; }
    bool useEra() const { return m_useEra; }
    bool autoCheckUpdate() const { return m_autoCheckUpdate; }
    bool raisePriorityOfTopmost() const { return m_raisePriorityOfTopmost; }
    double left() const { return m_left; }
    double top() const { return m_top; }
    double width() const { return m_width; }
    double height() const { return m_height; }
    double devicePixelRatio() const { return m_devicePixelRatio; }
    bool secondHand() const { return m_secondHand; }
    bool keepPositionWhenMonitorDetatched() const { return m_keepPositionWhenMonitorDetatched; }
    bool autoStartAtSignIn() const { return m_autoStartAtSignIn; }
    QString themeName() const { return m_themeName; }
    QString colorToneName() const { return m_colorToneName; }
    static constexpr double defaultOverallOpacity() { return 1.0; }
    static constexpr double defaultBackgroundOpacity() { return 1.0; }
    static constexpr double defaultBackgroundImageOpacity() { return 1.0; }
    static constexpr double defaultFaceOpacity() { return 1.0; }
    static constexpr double defaultHandsOpacity() { return 1.0; }
    static constexpr double defaultDigitalClockBackgroundOpacity() { return 0.3; }
    static constexpr double defaultDigitalClockForegroundOpacity() { return 0.7; }
    static constexpr double defaultDigitalClockScaleFactor() { return 1.0; }
    static constexpr double defaultDateScaleFactor() { return 1.0; }
    static constexpr double defaultLogoScaleFactor() { return 1.0; }
    double backgroundOpacity() const { return m_backgroundOpacity; }
    double backgroundImageOpacity() const { return m_backgroundImageOpacity; }
    double faceOpacity() const { return m_faceOpacity; }
    double handsOpacity() const { return m_handsOpacity; }
    double digitalClockBackgroundOpacity() const { return m_digitalClockBackgroundOpacity; }
    double digitalClockForegroundOpacity() const { return m_digitalClockForegroundOpacity; }
    double dateBackgroundOpacity() const { return m_dateBackgroundOpacity; }
    double dateForegroundOpacity() const { return m_dateForegroundOpacity; }
    double logoOpacity() const { return m_logoOpacity; }
    double digitalClockScaleFactor() const { return m_digitalClockScaleFactor; }
    double logoScaleFactor() const { return m_logoScaleFactor; }
    double dateScaleFactor() const { return m_dateScaleFactor; }
    bool showOnTaskbar() const { return m_showOnTaskbar; }

    void setResizeEnabled(bool enabled);
    void setFixed(bool enabled);
    void setTopmost(bool enabled);
    void setWithDigitalClock(bool enabled);
    void setDisplayDate(bool enabled);
    void setDisplayLogo(bool enabled);
    void setUseDefaultBackgroundImage(bool enabled);
    void setOpacity(double opacity);
    void setIgnoreMouseEvent(bool ignore);
    void setTweleveHours(bool enabled);
    void setUseEra(bool enabled);
    void setAutoCheckUpdate(bool enabled);
    void setRaisePriorityOfTopmost(bool enabled);
    void setLeft(double left);
    void setTop(double top);
    void setWidth(double width);
    void setHeight(double height);
    void setDevicePixelRatio(double ratio);
    void setSecondHand(bool enabled);
    void setKeepPositionWhenMonitorDetatched(bool enabled);
    void setAutoStartAtSignIn(bool enabled);
    void setThemeName(const QString &name);
    void setColorToneName(const QString &name);
    void setBackgroundOpacity(double opacity);
    void setBackgroundImageOpacity(double opacity);
    void setFaceOpacity(double opacity);
    void setHandsOpacity(double opacity);
    void setDigitalClockBackgroundOpacity(double opacity);
    void setDigitalClockForegroundOpacity(double opacity);
    void setDateBackgroundOpacity(double opacity);
    void setDateForegroundOpacity(double opacity);
    void setLogoOpacity(double opacity);
    void setDigitalClockScaleFactor(double factor);
    void setLogoScaleFactor(double factor);
    void setDateScaleFactor(double factor);
    void setShowOnTaskbar(bool enabled);

Q_SIGNALS:
    void resizeEnabledChanged(bool enabled);
    void fixedChanged(bool enabled);
    void topmostChanged(bool enabled);
    void withDigitalClockChanged(bool enabled);
    void displayDateChanged(bool enabled);
    void displayLogoChanged(bool enabled);
    void useDefaultBackgroundImageChanged(bool enabled);
    void opacityChanged(double opacity);
    void ignoreMouseEventChanged(bool ignore);
    void tweleveHoursChanged(bool enabled);
    void useEraChanged(bool enabled);
    void autoCheckUpdateChanged(bool enabled);
    void raisePriorityOfTopmostChanged(bool enabled);
    void autoStartAtSignInChanged(bool enabled);
    void themeNameChanged(const QString &name);
    void colorToneNameChanged(const QString &name);
    void leftChanged(double left);
    void topChanged(double top);
    void widthChanged(double width);
    void heightChanged(double height);
    void devicePixelRatioChanged();
    void secondHandChanged();
    void keepPositionWhenMonitorDetatchedChanged();
    void backgroundOpacityChanged();
    void backgroundImageOpacityChanged();
    void faceOpacityChanged();
    void handsOpacityChanged();
    void digitalClockBackgroundOpacityChanged();
    void digitalClockForegroundOpacityChanged();
    void dateBackgroundOpacityChanged();
    void dateForegroundOpacityChanged();
    void logoOpacityChanged();
    void digitalClockScaleFactorChanged();
    void logoScaleFactorChanged();
    void dateScaleFactorChanged();
    void errorOccurred(const QString &msg);
    void showOnTaskbarChanged(bool enabled);

private:
    class Setting;
    static std::span<const Setting> settings();

    bool checkAutoStart();

    bool m_firstAutoStartCheck = true;
    bool m_resizeEnabled{};
    bool m_fixed{};
    bool m_topmost{};
    bool m_raisePriorityOfTopmost{};
    bool m_withDigitalClock{};
    bool m_displayDate{};
    bool m_useEra{};
    bool m_secondHand{};
    bool m_displayLogo{};
    bool m_useDefaultBackgroundImage{};
    bool m_showOnTaskbar{};
    double m_opacity{};
    double m_backgroundOpacity{};
    double m_backgroundImageOpacity{};
    double m_faceOpacity{};
    double m_handsOpacity{};
    double m_digitalClockBackgroundOpacity{};
    double m_digitalClockForegroundOpacity{};
    double m_dateBackgroundOpacity{};
    double m_dateForegroundOpacity{};
    double m_logoOpacity{};
    double m_digitalClockScaleFactor{};
    double m_dateScaleFactor{};
    double m_logoScaleFactor{};
    bool m_ignoreMouseEvent{};
    bool m_tweleveHours{};
    bool m_autoCheckUpdate{};
    bool m_keepPositionWhenMonitorDetatched{};
    bool m_autoStartAtSignIn = false;
    double m_left{};
    double m_top{};
    double m_width{};
    double m_height{};
    double m_devicePixelRatio{};
    QString m_themeName;
    QString m_colorToneName;
};
