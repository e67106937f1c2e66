// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "theme/vstheme.h"

#include "theme/themetable.h"

using namespace Qt::StringLiterals;

namespace
{

template <typename T>
void assign(VsTheme *theme, T &member, const T &value, void (VsTheme::*changed)(const T &))
{
    if (member == value)
        return;
    member = value;
    Q_EMIT(theme->*changed)(member);
}

/// Index of the first entry of that name, -1 when there is none.
qsizetype indexOfName(const QList<VsTheme> &entries, const QString &name)
{
    for (qsizetype i = 0; i < entries.size(); ++i) {
        if (entries.at(i).name() == name)
            return i;
    }
    return -1;
}

bool isIndexOf(const QList<VsTheme> &entries, qsizetype index)
{
    return index >= 0 && index < entries.size();
}

QString imageUrl(QLatin1StringView folder, QLatin1StringView image)
{
    return "qrc:/themes/basic/"_L1 + folder + "/clock_"_L1 + image + ".svg"_L1;
}

void fillTone(VsTheme &tone, const ToneRow &row)
{
    tone.setName(row.name);
    tone.setDisplayName(VsTheme::tr(row.displayName));
    tone.setBase(imageUrl(row.ownFolder, "base"_L1));
    tone.setBackground(imageUrl(row.ownFolder, "background"_L1));
    tone.setDial(imageUrl(row.sharedFolder, "dial"_L1));
    tone.setHandHour(imageUrl(row.sharedFolder, "hand_hour"_L1));
    tone.setHandMinute(imageUrl(row.sharedFolder, "hand_minute"_L1));
    tone.setHandSecond(imageUrl(row.sharedFolder, "hand_second"_L1));
    tone.setResizeGrip(imageUrl(row.ownFolder, "resize_grip"_L1));
    tone.setTextColor(QColor::fromRgba(row.textColor));
    tone.setTextBackColor(QColor::fromRgba(row.textBackColor));
    tone.setLogoColor(QColor::fromRgba(row.logoColor));
}

} // namespace

VsTheme::VsTheme(QObject *parent)
    : QObject(parent)
{
}

VsTheme::VsTheme(const VsTheme &other)
    : QObject()
{
    *this = other;
}

VsTheme &VsTheme::operator=(const VsTheme &other)
{
    if (this == &other)
        return *this;
    m_currentTheme = other.m_currentTheme;
    m_currentColorTone = other.m_currentColorTone;
    m_parentName = other.m_parentName;
    m_name = other.m_name;
    m_displayName = other.m_displayName;
    m_base = other.m_base;
    m_background = other.m_background;
    m_dial = other.m_dial;
    m_handHour = other.m_handHour;
    m_handMinute = other.m_handMinute;
    m_handSecond = other.m_handSecond;
    m_reserved = other.m_reserved;
    m_resizeGrip = other.m_resizeGrip;
    m_textColor = other.m_textColor;
    m_textBackColor = other.m_textBackColor;
    m_logoColor = other.m_logoColor;
    m_itemKind = other.m_itemKind;
    m_themes = other.m_themes;
    m_colorTones = other.m_colorTones;
    return *this;
}

VsTheme::~VsTheme() = default;

void VsTheme::buildThemeTable()
{
    VsTheme basic;
    basic.m_itemKind = Theme;
    basic.setName(u"Basic"_s);
    basic.setDisplayName(tr("Basic"));
    for (const ToneRow &row : basicTones()) {
        VsTheme tone;
        tone.m_itemKind = ColorTone;
        tone.setParentName(basic.m_name);
        fillTone(tone, row);
        basic.m_colorTones.append(tone);
    }
    m_themes.append(basic);
}

VsTheme VsTheme::themeAt(qsizetype index) const
{
    return m_itemKind == Root && isIndexOf(m_themes, index) ? m_themes.at(index) : VsTheme();
}

VsTheme VsTheme::findTheme(const QString &name, bool *found) const
{
    const qsizetype index = themeIndexOf(name);
    if (found)
        *found = index >= 0;
    return themeAt(index);
}

qsizetype VsTheme::themeIndexOf(const QString &name) const
{
    return m_itemKind == Root ? indexOfName(m_themes, name) : -1;
}

VsTheme VsTheme::colorToneAt(qsizetype index) const
{
    return m_itemKind == Theme && isIndexOf(m_colorTones, index) ? m_colorTones.at(index)
                                                                 : VsTheme();
}

qsizetype VsTheme::colorToneIndexOf(const QString &name) const
{
    return m_itemKind == Theme ? indexOfName(m_colorTones, name) : -1;
}

bool VsTheme::changeColorTone(const QString &themeName, const QString &colorToneName)
{
    const VsTheme theme = findTheme(themeName);
    const qsizetype index = theme.colorToneIndexOf(colorToneName);
    if (index < 0)
        return false;
    const VsTheme tone = theme.m_colorTones.at(index);
    setCurrentTheme(theme.m_name);
    setCurrentColorTone(tone.m_name);
    setBase(tone.m_base);
    setBackground(tone.m_background);
    setDial(tone.m_dial);
    setHandHour(tone.m_handHour);
    setHandMinute(tone.m_handMinute);
    setHandSecond(tone.m_handSecond);
    setResizeGrip(tone.m_resizeGrip);
    setTextColor(tone.m_textColor);
    setTextBackColor(tone.m_textBackColor);
    setLogoColor(tone.m_logoColor);
    return false; // Meant: the result says nothing, see the header.
}

void VsTheme::setName(const QString &name) { assign(this, m_name, name, &VsTheme::nameChanged); }

void VsTheme::setBase(const QString &base) { assign(this, m_base, base, &VsTheme::baseChanged); }

void VsTheme::setBackground(const QString &background)
{
    assign(this, m_background, background, &VsTheme::backgroundChanged);
}

void VsTheme::setDial(const QString &dial) { assign(this, m_dial, dial, &VsTheme::dialChanged); }

void VsTheme::setHandHour(const QString &hand)
{
    assign(this, m_handHour, hand, &VsTheme::handHourChanged);
}

void VsTheme::setHandMinute(const QString &hand)
{
    assign(this, m_handMinute, hand, &VsTheme::handMinuteChanged);
}

void VsTheme::setHandSecond(const QString &hand)
{
    assign(this, m_handSecond, hand, &VsTheme::handSecondChanged);
}

void VsTheme::setResizeGrip(const QString &grip)
{
    assign(this, m_resizeGrip, grip, &VsTheme::resizeGripChanged);
}

void VsTheme::setDisplayName(const QString &displayName)
{
    assign(this, m_displayName, displayName, &VsTheme::displayNameChanged);
}

void VsTheme::setCurrentTheme(const QString &currentTheme)
{
    assign(this, m_currentTheme, currentTheme, &VsTheme::currentThemeChanged);
}

void VsTheme::setParentName(const QString &parentName)
{
    assign(this, m_parentName, parentName, &VsTheme::parentNameChanged);
}

void VsTheme::setCurrentColorTone(const QString &currentColorTone)
{
    assign(this, m_currentColorTone, currentColorTone, &VsTheme::currentColorToneChanged);
}

void VsTheme::setTextColor(const QColor &color)
{
    assign(this, m_textColor, color, &VsTheme::textColorChanged);
}

void VsTheme::setTextBackColor(const QColor &color)
{
    assign(this, m_textBackColor, color, &VsTheme::textBackColorChanged);
}

void VsTheme::setLogoColor(const QColor &color)
{
    assign(this, m_logoColor, color, &VsTheme::logoColorChanged);
}
