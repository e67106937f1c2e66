// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qlist.h>
#include <QtCore/qobject.h>
#include <QtCore/qstring.h>
#include <QtGui/qcolor.h>

/// The catalogue of themes and colour tones, and the tone that is current. One class serves for the
/// root, whose image URLs and colours are those of the current tone, for a theme and for a tone;
/// themes and tones are held by value inside their parent. Names compare case-sensitively.
///
/// A setter does nothing when the value is unchanged, otherwise it stores and emits. GUI thread
/// only.
class VsTheme : public QObject
{
    Q_OBJECT

    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    Q_PROPERTY(QString base READ base WRITE setBase NOTIFY baseChanged)
    Q_PROPERTY(QString background READ background WRITE setBackground NOTIFY backgroundChanged)
    Q_PROPERTY(QString dial READ dial WRITE setDial NOTIFY dialChanged)
    Q_PROPERTY(QString handHour READ handHour WRITE setHandHour NOTIFY handHourChanged)
    Q_PROPERTY(QString handMinute READ handMinute WRITE setHandMinute NOTIFY handMinuteChanged)
    Q_PROPERTY(QString handSecond READ handSecond WRITE setHandSecond NOTIFY handSecondChanged)
    Q_PROPERTY(QString resizeGrip READ resizeGrip WRITE setResizeGrip NOTIFY resizeGripChanged)
    Q_PROPERTY(QString displayName READ displayName WRITE setDisplayName NOTIFY displayNameChanged)
    Q_PROPERTY(
        QString currentTheme READ currentTheme WRITE setCurrentTheme NOTIFY currentThemeChanged)
    Q_PROPERTY(QString parentName READ parentName WRITE setParentName NOTIFY parentNameChanged)
    Q_PROPERTY(QString currentColorTone READ currentColorTone WRITE setCurrentColorTone NOTIFY
            currentColorToneChanged)
    Q_PROPERTY(QColor textColor READ textColor WRITE setTextColor NOTIFY textColorChanged)
    Q_PROPERTY(
        QColor textBackColor READ textBackColor WRITE setTextBackColor NOTIFY textBackColorChanged)
    Q_PROPERTY(QColor logoColor READ logoColor WRITE setLogoColor NOTIFY logoColorChanged)

public:
    enum ItemKind : qint32 {
        Root = 0,
        Theme = 1,
        ColorTone = 2,
    };

    explicit VsTheme(QObject *parent = nullptr);

    /// A copy has no parent and owns copies of the whole tree below. Copying emits nothing.
    VsTheme(const VsTheme &other);
    VsTheme &operator=(const VsTheme &other);
    ~VsTheme() override;

    /// Appends the built-in themes to this root. To be called once; changes nothing else of the
    /// root.
    void buildThemeTable();

    /// One of ItemKind.
    qint32 itemKind() const { return m_itemKind; }

    // On the root:
    qsizetype themeCount() const { return m_themes.size(); }
    VsTheme themeAt(qsizetype index) const; ///< a default-constructed entry when out of range
    VsTheme findTheme(const QString &name, bool *found = nullptr) const;
    qsizetype themeIndexOf(const QString &name) const; ///< -1 when there is none

    // On a theme:
    qsizetype colorToneCount() const { return m_colorTones.size(); }
    VsTheme colorToneAt(qsizetype index) const; ///< a default-constructed entry when out of range
    qsizetype colorToneIndexOf(const QString &name) const; ///< -1 when there is none

    QString name() const { return m_name; }
    QString base() const { return m_base; }
    QString background() const { return m_background; }
    QString dial() const { return m_dial; }
    QString handHour() const { return m_handHour; }
    QString handMinute() const { return m_handMinute; }
    QString handSecond() const { return m_handSecond; }
    QString resizeGrip() const { return m_resizeGrip; }
    QString displayName() const { return m_displayName; }
    QString currentTheme() const { return m_currentTheme; }
    QString parentName() const { return m_parentName; }
    QString currentColorTone() const { return m_currentColorTone; }
    QColor textColor() const { return m_textColor; }
    QColor textBackColor() const { return m_textBackColor; }
    QColor logoColor() const { return m_logoColor; }

    void setName(const QString &name);
    void setBase(const QString &base);
    void setBackground(const QString &background);
    void setDial(const QString &dial);
    void setHandHour(const QString &hand);
    void setHandMinute(const QString &hand);
    void setHandSecond(const QString &hand);
    void setResizeGrip(const QString &grip);
    void setDisplayName(const QString &displayName);
    void setCurrentTheme(const QString &currentTheme);
    void setParentName(const QString &parentName);
    void setCurrentColorTone(const QString &currentColorTone);
    void setTextColor(const QColor &color);
    void setTextBackColor(const QColor &color);
    void setLogoColor(const QColor &color);

Q_SIGNALS:
    void nameChanged(const QString &name);
    void baseChanged(const QString &base);
    void backgroundChanged(const QString &background);
    void dialChanged(const QString &dial);
    void handHourChanged(const QString &hand);
    void handMinuteChanged(const QString &hand);
    void handSecondChanged(const QString &hand);
    void resizeGripChanged(const QString &grip);
    void displayNameChanged(const QString &displayName);
    void currentThemeChanged(const QString &currentTheme);
    void parentNameChanged(const QString &parentName);
    void currentColorToneChanged(const QString &currentColorTone);
    void textColorChanged(const QColor &color);
    void textBackColorChanged(const QColor &color);
    void logoColorChanged(const QColor &color);

public Q_SLOTS:
    /// Makes a tone current on the root; unknown names change nothing. The result is false in every
    /// case, success included, and that is meant: compare currentColorTone instead.
    bool changeColorTone(const QString &themeName, const QString &colorToneName);

private:
    QString m_currentTheme;
    QString m_currentColorTone;
    QString m_parentName;
    QString m_name;
    QString m_displayName;
    QString m_base;
    QString m_background;
    QString m_dial;
    QString m_handHour;
    QString m_handMinute;
    QString m_handSecond;
    QString m_reserved; ///< no property, copied but never set or read; meant
    QString m_resizeGrip;
    QColor m_textColor;
    QColor m_textBackColor;
    QColor m_logoColor;
    qint32 m_itemKind = Root;
    QList<VsTheme> m_themes;
    QList<VsTheme> m_colorTones;
};
