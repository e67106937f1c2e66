// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qstring.h>
#include <QtGui/qpalette.h>

/// The light and the dark style of the whole application, which exist for the context menu: a style
/// sheet and the palette that goes with it.
namespace ApplicationStyle
{

enum Mode { Light, Dark };

/// What is set for the whole application: the present palette but for the colours of a selection.
[[nodiscard]] QPalette palette(Mode mode);

[[nodiscard]] QString styleSheet(Mode mode);

/// What the colour \a text of a palette's text says about the desktop.
[[nodiscard]] Mode modeOfText(const QColor &text);

/// Brings what \a palette lacks on this system to be known as dark by its text.
void completeDarkPalette(QPalette &palette);

} // namespace ApplicationStyle
