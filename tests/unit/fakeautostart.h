// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/autostart.h"

#include <QtCore/qstringlist.h>

#include <functional>

/// Stands in for the user's start-up folder, which a test must not write to and cannot make fail at
/// will. Linked into a test it takes the place of the real functions.
namespace FakeAutoStart
{

struct State {
    bool found = false; ///< an entry of the program is there
    bool viaCmd = false; ///< and it goes through the command interpreter
    bool canCreate = true;
    bool canRemove = true;
    QStringList calls = {}; ///< every call, with the outputs that were asked for
    QString createdName = {};
    AutoStart::ShortcutSpec createdSpec = {};
    std::function<void()> duringRemoval = [] { }; ///< called before the entries go
};

State &state();

} // namespace FakeAutoStart
