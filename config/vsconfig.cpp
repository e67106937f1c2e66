// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The object: construction, copying, setters. What is in the file and where that lies is
// vsconfig_file.cpp; the settings with their keys and defaults are the table in
// vsconfig_settings.cpp.

#include "config/vsconfig.h"

#include "config/saturate.h"
#include "config/vsconfig_settings.h"
#include "platform/autostart.h"

#include <type_traits>

using namespace Qt::StringLiterals;

namespace
{

bool isUnchanged(double stored, double value) { return qFuzzyCompare(stored, value); }

template <typename T> bool isUnchanged(const T &stored, const T &value) { return stored == value; }

template <typename T, typename Signal>
void assign(VsConfig *config, T &member, const std::type_identity_t<T> &value, Signal changed)
{
    if (isUnchanged(member, value))
        return;
    member = value;
    if constexpr (std::is_invocable_v<Signal, VsConfig *>)
        Q_EMIT(config->*changed)();
    else
        Q_EMIT(config->*changed)(value);
}

/// The inclusive far edge that QRect computes from a position and an extent, without its undefined
/// behaviour when the sum leaves the range of int.
int farEdge(int position, int extent)
{
    return static_cast<int>(static_cast<unsigned>(position) + static_cast<unsigned>(extent) - 1U);
}

bool createOwnAutoStartLink()
{
    AutoStart::ShortcutSpec spec = AutoStart::buildAutoStartSpec();
    spec.description = u"Vesper - by Marrowby Inc."_s;
    return AutoStart::createAutoStartLink(u"Vesper"_s, spec);
}

} // namespace

VsConfig *VsConfig::instance()
{
    static auto *const config = new VsConfig();
    return config;
}

VsConfig::VsConfig(QObject *parent)
    : QObject(parent)
{
    for (const Setting &setting : settings())
        setting.reset(*this);
    load();
    m_autoStartAtSignIn = checkAutoStart();
}

VsConfig::VsConfig(const VsConfig &other)
    : QObject()
{
    *this = other;
}

VsConfig &VsConfig::operator=(const VsConfig &other)
{
    for (const Setting &setting : settings())
        setting.copy(other, *this);
    return *this;
}

QRect VsConfig::geometry() const
{
    const int x = toIntSaturated(m_left);
    const int y = toIntSaturated(m_top);
    QRect rect;
    rect.setCoords(x, y, farEdge(x, toIntSaturated(m_width)), farEdge(y, toIntSaturated(m_height)));
    return rect;
}

bool VsConfig::checkAutoStart()
{
    const AutoStart::ShortcutSpec spec = AutoStart::buildAutoStartSpec();

    // The result is not used: a look at the start-up folder without effect, and meant to stay.
    QStringList foundPaths;
    AutoStart::findAutoStartLinks(spec.targetPath, spec.arguments, &foundPaths);

    if (!m_firstAutoStartCheck)
        return AutoStart::findAutoStartLinks(spec.targetPath, spec.arguments);

    m_firstAutoStartCheck = false;
    bool viaCmd = false;
    const bool found
        = AutoStart::findAutoStartLinks(spec.targetPath, spec.arguments, nullptr, &viaCmd);
    if (!viaCmd)
        return found;
    return AutoStart::removeAutoStartLinks() && createOwnAutoStartLink();
}

void VsConfig::setAutoStartAtSignIn(bool enabled)
{
    if (enabled == m_autoStartAtSignIn)
        return;
    // What was asked for holds while the system works on it; what came of it is stored and told.
    m_autoStartAtSignIn = enabled;
    m_autoStartAtSignIn = enabled ? createOwnAutoStartLink() : !AutoStart::removeAutoStartLinks();
    Q_EMIT autoStartAtSignInChanged(m_autoStartAtSignIn);
}

void VsConfig::setResizeEnabled(bool enabled)
{
    assign(this, m_resizeEnabled, enabled, &VsConfig::resizeEnabledChanged);
}

void VsConfig::setFixed(bool enabled) { assign(this, m_fixed, enabled, &VsConfig::fixedChanged); }

void VsConfig::setTopmost(bool enabled)
{
    assign(this, m_topmost, enabled, &VsConfig::topmostChanged);
}

void VsConfig::setWithDigitalClock(bool enabled)
{
    assign(this, m_withDigitalClock, enabled, &VsConfig::withDigitalClockChanged);
}

void VsConfig::setDisplayDate(bool enabled)
{
    assign(this, m_displayDate, enabled, &VsConfig::displayDateChanged);
}

void VsConfig::setDisplayLogo(bool enabled)
{
    assign(this, m_displayLogo, enabled, &VsConfig::displayLogoChanged);
}

void VsConfig::setUseDefaultBackgroundImage(bool enabled)
{
    assign(this, m_useDefaultBackgroundImage, enabled, &VsConfig::useDefaultBackgroundImageChanged);
}

void VsConfig::setOpacity(double opacity)
{
    assign(this, m_opacity, opacity, &VsConfig::opacityChanged);
}

void VsConfig::setIgnoreMouseEvent(bool ignore)
{
    assign(this, m_ignoreMouseEvent, ignore, &VsConfig::ignoreMouseEventChanged);
}

void VsConfig::setTweleveHours(bool enabled)
{
    assign(this, m_tweleveHours, enabled, &VsConfig::tweleveHoursChanged);
}

void VsConfig::setUseEra(bool enabled)
{
    assign(this, m_useEra, enabled, &VsConfig::useEraChanged);
}

void VsConfig::setAutoCheckUpdate(bool enabled)
{
    assign(this, m_autoCheckUpdate, enabled, &VsConfig::autoCheckUpdateChanged);
}

void VsConfig::setRaisePriorityOfTopmost(bool enabled)
{
    assign(this, m_raisePriorityOfTopmost, enabled, &VsConfig::raisePriorityOfTopmostChanged);
}

void VsConfig::setLeft(double left) { assign(this, m_left, left, &VsConfig::leftChanged); }

void VsConfig::setTop(double top) { assign(this, m_top, top, &VsConfig::topChanged); }

void VsConfig::setWidth(double width) { assign(this, m_width, width, &VsConfig::widthChanged); }

void VsConfig::setHeight(double height)
{
    assign(this, m_height, height, &VsConfig::heightChanged);
}

void VsConfig::setDevicePixelRatio(double ratio)
{
    assign(this, m_devicePixelRatio, ratio, &VsConfig::devicePixelRatioChanged);
}

void VsConfig::setSecondHand(bool enabled)
{
    assign(this, m_secondHand, enabled, &VsConfig::secondHandChanged);
}

void VsConfig::setKeepPositionWhenMonitorDetatched(bool enabled)
{
    assign(this, m_keepPositionWhenMonitorDetatched, enabled,
        &VsConfig::keepPositionWhenMonitorDetatchedChanged);
}

void VsConfig::setThemeName(const QString &name)
{
    assign(this, m_themeName, name, &VsConfig::themeNameChanged);
}

void VsConfig::setColorToneName(const QString &name)
{
    assign(this, m_colorToneName, name, &VsConfig::colorToneNameChanged);
}

void VsConfig::setBackgroundOpacity(double opacity)
{
    assign(this, m_backgroundOpacity, opacity, &VsConfig::backgroundOpacityChanged);
}

void VsConfig::setBackgroundImageOpacity(double opacity)
{
    assign(this, m_backgroundImageOpacity, opacity, &VsConfig::backgroundImageOpacityChanged);
}

void VsConfig::setFaceOpacity(double opacity)
{
    assign(this, m_faceOpacity, opacity, &VsConfig::faceOpacityChanged);
}

void VsConfig::setHandsOpacity(double opacity)
{
    assign(this, m_handsOpacity, opacity, &VsConfig::handsOpacityChanged);
}

void VsConfig::setDigitalClockBackgroundOpacity(double opacity)
{
    assign(this, m_digitalClockBackgroundOpacity, opacity,
        &VsConfig::digitalClockBackgroundOpacityChanged);
}

void VsConfig::setDigitalClockForegroundOpacity(double opacity)
{
    assign(this, m_digitalClockForegroundOpacity, opacity,
        &VsConfig::digitalClockForegroundOpacityChanged);
}

void VsConfig::setDateBackgroundOpacity(double opacity)
{
    assign(this, m_dateBackgroundOpacity, opacity, &VsConfig::dateBackgroundOpacityChanged);
}

void VsConfig::setDateForegroundOpacity(double opacity)
{
    assign(this, m_dateForegroundOpacity, opacity, &VsConfig::dateForegroundOpacityChanged);
}

void VsConfig::setLogoOpacity(double opacity)
{
    assign(this, m_logoOpacity, opacity, &VsConfig::logoOpacityChanged);
}

void VsConfig::setDigitalClockScaleFactor(double factor)
{
    assign(this, m_digitalClockScaleFactor, factor, &VsConfig::digitalClockScaleFactorChanged);
}

void VsConfig::setLogoScaleFactor(double factor)
{
    assign(this, m_logoScaleFactor, factor, &VsConfig::logoScaleFactorChanged);
}

void VsConfig::setDateScaleFactor(double factor)
{
    assign(this, m_dateScaleFactor, factor, &VsConfig::dateScaleFactorChanged);
}

void VsConfig::setShowOnTaskbar(bool enabled)
{
    assign(this, m_showOnTaskbar, enabled, &VsConfig::showOnTaskbarChanged);
}
