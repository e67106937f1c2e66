// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The settings file: from its bytes to the place of the clock on a desktop, and back into a file.

#include "fuzztarget.h"

#include "config/vsconfig.h"
#include "manager/storedplacement.h"
#include "platform/nearestscreen.h"
#include "tests/unit/confighome.h"

#include <QtCore/qcoreapplication.h>
#include <QtCore/qmetaobject.h>
#include <QtCore/qvariant.h>

#include <algorithm>
#include <cmath>

namespace
{

// A laptop, two monitors side by side, a wall with a gap in it, one of a size that none has.
const QList<QList<QRect>> desktops{
    {{0, 0, 1366, 768}},
    {{0, 0, 1920, 1080}, {1920, 200, 1280, 1024}},
    {{-3840, -2160, 3840, 2160}, {640, 480, 3840, 2160}, {-100, 5000, 1024, 600}},
    {{0, 0, 50, 30}},
};

struct World {
    World()
    {
        makeApplication<QCoreApplication>();
        defaults = std::make_unique<VsConfig>();
    }

    ConfigHome home;
    std::unique_ptr<VsConfig> defaults;
};

void checkEqual(const VsConfig &first, const VsConfig &second)
{
    const QMetaObject &type = VsConfig::staticMetaObject;
    for (int i = type.propertyOffset(); i < type.propertyCount(); ++i) {
        const char *name = type.property(i).name();
        mustHold(first.property(name) == second.property(name), name);
    }
}

void checkValues(const VsConfig &config)
{
    const QMetaObject &type = VsConfig::staticMetaObject;
    for (int i = type.propertyOffset(); i < type.propertyCount(); ++i) {
        const QVariant value = type.property(i).read(&config);
        if (value.typeId() == QMetaType::Double)
            mustHold(std::isfinite(value.toDouble()), "every number from a file is one");
    }
    mustHold(!config.themeName().isEmpty(), "a theme has a name");
    mustHold(!config.colorToneName().isEmpty(), "a tone has a name");
    mustHold(!config.showOnTaskbar(), "every run starts without a taskbar button");
}

void checkPlacement(const VsConfig &config)
{
    const QRect geometry = config.geometry();
    mustHold(geometry.x() == toIntSaturated(config.left()), "left edge");
    const auto stored = storedPlacement(config);
    if (!stored)
        return;
    mustHold(
        stored->side >= minimumClockSide && stored->side <= maximumClockSide, "side of a clock");
    const QSize size(stored->side, stored->side);
    for (const QList<QRect> &screens : desktops) {
        const QPoint moved = positionOnNearestScreen(stored->position, size, screens);
        mustHold(meetsAnyScreen(moved, size, screens), "a rescued clock is on a screen");
        mustHold(std::any_of(screens.begin(), screens.end(),
                     [&](const QRect &screen) {
                         const QRect wanted(moved, size.boundedTo(screen.size()));
                         return screen.contains(wanted);
                     }),
            "as much of it as there is room for");
        mustHold(positionOnNearestScreen(moved, size, screens) == moved, "it stays where it is");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const World world;
    const auto text
        = QByteArray::fromRawData(reinterpret_cast<const char *>(data), qsizetype(size));
    mustHold(world.home.writeFile(text), "a place for the file");
    VsConfig config(*world.defaults);
    config.load();
    checkValues(config);
    checkPlacement(config);

    config.save();
    const QByteArray saved = world.home.readFile();
    VsConfig again(*world.defaults);
    again.load();
    checkEqual(config, again);
    again.save();
    mustHold(world.home.readFile() == saved, "the same settings make the same file");
    return 0;
}
