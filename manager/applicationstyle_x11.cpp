// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "manager/applicationstyle.h"

#include <QtGui/qguiapplication.h>
#include <QtGui/qstylehints.h>

// The text of a dark desktop's palette is nearly white, #fcfcfc for example, but never quite: so
// the colour scheme counts where the desktop tells it, and the dark palette's text is made white.

ApplicationStyle::Mode ApplicationStyle::modeOfText(const QColor &text)
{
    const Qt::ColorScheme scheme = QGuiApplication::styleHints()->colorScheme();
    if (scheme != Qt::ColorScheme::Unknown)
        return scheme == Qt::ColorScheme::Dark ? Dark : Light;
    return text == Qt::white ? Dark : Light;
}

void ApplicationStyle::completeDarkPalette(QPalette &palette)
{
    for (const QPalette::ColorRole role :
        {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        palette.setColor(role, Qt::white);
}
