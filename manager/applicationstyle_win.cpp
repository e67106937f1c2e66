// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "manager/applicationstyle.h"

ApplicationStyle::Mode ApplicationStyle::modeOfText(const QColor &text)
{
    return text == Qt::white ? Dark : Light;
}

// The text of the dark palette is white as it is.
void ApplicationStyle::completeDarkPalette([[maybe_unused]] QPalette &palette) { }
