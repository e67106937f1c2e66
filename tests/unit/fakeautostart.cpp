// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "fakeautostart.h"

using namespace Qt::StringLiterals;

namespace FakeAutoStart
{

State &state()
{
    static State state;
    return state;
}

} // namespace FakeAutoStart

namespace AutoStart
{

using FakeAutoStart::state;

ShortcutSpec buildAutoStartSpec()
{
    ShortcutSpec spec;
    spec.targetPath = u"the target"_s;
    spec.arguments = u"the arguments"_s;
    spec.workingDirectory = u"the folder"_s;
    spec.iconPath = u"the icon"_s;
    spec.iconIndex = 3;
    spec.showCommand = 7;
    return spec;
}

bool createAutoStartLink(const QString &name, const ShortcutSpec &spec)
{
    state().calls.append(u"create"_s);
    state().createdName = name;
    state().createdSpec = spec;
    return state().canCreate;
}

bool findAutoStartLinks(const QString &expectedTarget, const QString &expectedArguments,
    QStringList *foundPaths, bool *viaCmd)
{
    QString call = u"find %1, %2"_s.arg(expectedTarget, expectedArguments);
    if (foundPaths)
        call += u", paths"_s;
    if (viaCmd) {
        call += u", viaCmd"_s;
        *viaCmd = state().viaCmd;
    }
    state().calls.append(call);
    return state().found;
}

bool removeAutoStartLinks()
{
    state().calls.append(u"remove"_s);
    state().duringRemoval();
    return state().canRemove;
}

} // namespace AutoStart
