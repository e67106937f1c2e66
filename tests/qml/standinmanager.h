// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qobject.h>
#include <QtCore/qrect.h>
#include <QtCore/qstringlist.h>
#include <QtGui/qimage.h>
#include <QtGui/qwindow.h>
#include <QtQuick/qquickwindow.h>

#include <optional>

/// Stands in for the manager: the texts, signals and methods that the documents know of it, with a
/// list of the calls instead of their effects. The real one acts on native windows.
class StandInManager : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString timeText MEMBER timeText NOTIFY timeTextChanged)
    Q_PROPERTY(QString dateText MEMBER dateText NOTIFY dateTextChanged)
    Q_PROPERTY(QString amPmText MEMBER amPmText NOTIFY amPmTextChanged)
    Q_PROPERTY(QQuickWindow *popupWindow MEMBER popupWindow NOTIFY popupWindowChanged)

public:
    QString timeText, dateText, amPmText;
    QQuickWindow *popupWindow = nullptr;
    QStringList calls; ///< names of the methods called, the oldest first
    std::optional<QVariant> pixelAnswer; ///< to every question about a picture

    /// Forgets and tells how often \a name was called.
    int takeCalls(const QString &name)
    {
        const auto count = calls.count(name);
        calls.removeAll(name);
        return int(count);
    }

    Q_INVOKABLE void lazySaveConfig() { calls += QStringLiteral("lazySaveConfig"); }
    Q_INVOKABLE void updateMask() { calls += QStringLiteral("updateMask"); }
    Q_INVOKABLE void clearMask() { calls += QStringLiteral("clearMask"); }
    Q_INVOKABLE void moveToTopLeft() { calls += QStringLiteral("moveToTopLeft"); }
    Q_INVOKABLE void moveToTopRight() { calls += QStringLiteral("moveToTopRight"); }
    Q_INVOKABLE void moveToBottomLeft() { calls += QStringLiteral("moveToBottomLeft"); }
    Q_INVOKABLE void moveToBottomRight() { calls += QStringLiteral("moveToBottomRight"); }
    Q_INVOKABLE void moveToCenterAtCurrentScreen()
    {
        calls += QStringLiteral("moveToCenterAtCurrentScreen");
    }
    Q_INVOKABLE void openSettings() { calls += QStringLiteral("openSettings"); }
    Q_INVOKABLE void showAboutVesper() { calls += QStringLiteral("showAboutVesper"); }
    Q_INVOKABLE void quitApp() { calls += QStringLiteral("quitApp"); }
    Q_INVOKABLE void openDefaultWeb() { calls += QStringLiteral("openDefaultWeb"); }
    Q_INVOKABLE bool isAvailableScreen(QPoint) { return true; }
    Q_INVOKABLE QRect getCurrentScreenGeometory() { return {}; }
    /// Like the real one, unless a test has another answer.
    Q_INVOKABLE QVariant isMouseInnerImage(QPoint mousePos, const QImage &image)
    {
        calls += QStringLiteral("isMouseInnerImage");
        return pixelAnswer.value_or(image.valid(mousePos) && qAlpha(image.pixel(mousePos)) != 0);
    }

Q_SIGNALS:
    void secondHandAngleChanged(double angle);
    void minuteHandAngleChanged(double angle);
    void hourHandAngleChanged(double angle);
    void timeTextChanged(QString timeText);
    void quitByQml();
    void reqOpenMenu();
    void dateTextChanged(QString dateText);
    void amPmTextChanged(QString ampm);
    void callJavaScriptGC();
    void callJavaScriptUpdateMask();
    void callJavaScriptResize(QSize size);
    void callJavaScriptAutoResize(double dpi);
    void windowMovingAnimationFinished(QWindow *window);
    void popupWindowChanged();
    void popupWindowLostFocus(QQuickWindow *win);
};
