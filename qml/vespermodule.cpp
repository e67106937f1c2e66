// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "qml/vespermodule.h"

#include <QtCore/qdir.h>

// Declared by hand: the module has no plug-in, whose macro would do it.
extern void qml_register_types_vesper();

void registerVesperModule()
{
    // Named, or the linker would drop both from the static library. Without the first the engine
    // would compile the text of each document anew at every start.
    Q_INIT_RESOURCE(qmlcache_Vesper);
    qml_register_types_vesper();
}
