// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The table of settings, in the order in which the file is read, and what one row of it does.

#include "config/vsconfig_settings.h"

#include <QtCore/qjsonvalue.h>

using namespace Qt::StringLiterals;

namespace
{

constexpr QLatin1StringView topLevel;
constexpr auto geometryGroup = "Geometry"_L1;
constexpr auto themeGroup = "Theme"_L1;
constexpr auto opacityGroup = "OpacityGroup"_L1;
constexpr auto scaleFactorGroup = "ScaleFactorGroup"_L1;
constexpr QLatin1StringView notInFile;

bool valueOr(const QJsonValue &value, bool defaultValue) { return value.toBool(defaultValue); }

double valueOr(const QJsonValue &value, double defaultValue)
{
    return value.toDouble(defaultValue);
}

QString valueOr(const QJsonValue &value, const QString &defaultValue)
{
    const QString text = value.toString();
    return text.isEmpty() ? defaultValue : text;
}

} // namespace

std::span<const VsConfig::Setting> VsConfig::settings()
{
    // The keys "FacOpacity", "TweleveHours" and "KeepPositionWhenMonitorDetatched" are the format's
    // own spellings.
    static const Setting rows[] = {
        {topLevel, "AutoCheckUpdate"_L1, &VsConfig::m_autoCheckUpdate, true},
        {topLevel, "DisplayDate"_L1, &VsConfig::m_displayDate, true},
        {topLevel, "DisplayLogo"_L1, &VsConfig::m_displayLogo, true},
        {topLevel, "Fixed"_L1, &VsConfig::m_fixed, false},
        {topLevel, "IgnoreMouseEvent"_L1, &VsConfig::m_ignoreMouseEvent, false},
        {topLevel, "Topmost"_L1, &VsConfig::m_topmost, true},
        {topLevel, "RaisePriorityOfTopmost"_L1, &VsConfig::m_raisePriorityOfTopmost, false},
        {topLevel, "TweleveHours"_L1, &VsConfig::m_tweleveHours, false},
        {topLevel, "UseDefaultBackgroundImage"_L1, &VsConfig::m_useDefaultBackgroundImage, true},
        {topLevel, "UseEra"_L1, &VsConfig::m_useEra, false},
        {topLevel, "WithDigitalClock"_L1, &VsConfig::m_withDigitalClock, true},
        {topLevel, "Opacity"_L1, &VsConfig::m_opacity, defaultOverallOpacity()},
        {topLevel, "ResizeEnabled"_L1, &VsConfig::m_resizeEnabled, false},
        {topLevel, "SecondHand"_L1, &VsConfig::m_secondHand, true},
        {topLevel, "KeepPositionWhenMonitorDetatched"_L1,
            &VsConfig::m_keepPositionWhenMonitorDetatched, false},
        {geometryGroup, "Left"_L1, &VsConfig::m_left, 0.0},
        {geometryGroup, "Top"_L1, &VsConfig::m_top, 0.0},
        {geometryGroup, "Width"_L1, &VsConfig::m_width, 0.0},
        {geometryGroup, "Height"_L1, &VsConfig::m_height, 0.0},
        {geometryGroup, "DevicePixelRatio"_L1, &VsConfig::m_devicePixelRatio, 1.0},
        {themeGroup, "ThemeName"_L1, &VsConfig::m_themeName, u"Basic"_s},
        {themeGroup, "ColorToneName"_L1, &VsConfig::m_colorToneName, u"DarkBlue"_s},
        {opacityGroup, "BackgroundOpacity"_L1, &VsConfig::m_backgroundOpacity,
            defaultBackgroundOpacity()},
        {opacityGroup, "BackgroundImageOpacity"_L1, &VsConfig::m_backgroundImageOpacity,
            defaultBackgroundImageOpacity()},
        {opacityGroup, "FacOpacity"_L1, &VsConfig::m_faceOpacity, defaultFaceOpacity()},
        {opacityGroup, "HandsOpacity"_L1, &VsConfig::m_handsOpacity, defaultHandsOpacity()},
        {opacityGroup, "DigitalClockBackgroundOpacity"_L1,
            &VsConfig::m_digitalClockBackgroundOpacity, defaultDigitalClockBackgroundOpacity()},
        {opacityGroup, "DigitalClockForegroundOpacity"_L1,
            &VsConfig::m_digitalClockForegroundOpacity, defaultDigitalClockForegroundOpacity()},
        {opacityGroup, "DateBackgroundOpacity"_L1, &VsConfig::m_dateBackgroundOpacity, 0.3},
        {opacityGroup, "DateForegroundOpacity"_L1, &VsConfig::m_dateForegroundOpacity, 0.7},
        {opacityGroup, "LogoOpacity"_L1, &VsConfig::m_logoOpacity, 0.8},
        {scaleFactorGroup, "DigitalClockScaleFactor"_L1, &VsConfig::m_digitalClockScaleFactor,
            defaultDigitalClockScaleFactor()},
        {scaleFactorGroup, "DateScaleFactor"_L1, &VsConfig::m_dateScaleFactor,
            defaultDateScaleFactor()},
        {scaleFactorGroup, "LogoScaleFactor"_L1, &VsConfig::m_logoScaleFactor,
            defaultLogoScaleFactor()},
        // Every run starts without a taskbar button.
        {topLevel, notInFile, &VsConfig::m_showOnTaskbar, false},
    };
    return rows;
}

void VsConfig::Setting::reset(VsConfig &config) const
{
    std::visit([&](const auto &field) { config.*field.member = field.defaultValue; }, m_field);
}

void VsConfig::Setting::copy(const VsConfig &from, VsConfig &to) const
{
    std::visit([&](const auto &field) { to.*field.member = from.*field.member; }, m_field);
}

void VsConfig::Setting::read(VsConfig &config, const QJsonObject &file) const
{
    if (m_key == notInFile)
        return;
    const QJsonObject object = m_group == topLevel ? file : file.value(m_group).toObject();
    std::visit(
        [&](const auto &field) {
            config.*field.member = valueOr(object.value(m_key), field.defaultValue);
        },
        m_field);
}

void VsConfig::Setting::write(const VsConfig &config, QJsonObject &file) const
{
    if (m_key == notInFile)
        return;
    const QJsonValue value
        = std::visit([&](const auto &field) { return QJsonValue(config.*field.member); }, m_field);
    if (m_group == topLevel) {
        file.insert(m_key, value);
        return;
    }
    QJsonObject object = file.value(m_group).toObject();
    object.insert(m_key, value);
    file.insert(m_group, object);
}
