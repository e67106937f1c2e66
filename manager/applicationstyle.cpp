// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "manager/applicationstyle.h"

using namespace Qt::StringLiterals;

namespace
{

// The two sheets differ in more than their colours, in radius and tool tip for example: meant so.

QString lightStyleSheet()
{
    const QString menuColour = QColor(240, 240, 240).name();
    const QString selectionColour = QColor(225, 225, 225).name();
    return u"QToolTip { color: #000000; background-color: %1; border: 1px solid #bbbbbb; }"_s.arg(
               menuColour)
        + u"QMenu {background-color: %1;  border: 1px solid #bbbbbb; min-width: 180px; border-radius: 8px;}"_s
              .arg(menuColour)
        + u"QMenu::item {margin: 3px; padding: 3px; padding-left: 8px; padding-right: 32px; background-color: transparent;}"_s
        + u"QMenu::item::selected {background: %1}"_s.arg(selectionColour)
        + u"QMenu::separator {height: 1px; background: #bbbbbb; margin-left: 3px; margin-right: 3px;}"_s
        + u"QMenu::indicator:checked {image: url(:/images/check_black.svg); width: 16px;}"_s;
}

QString darkStyleSheet()
{
    const QString menuColour = QColor(45, 45, 45).name();
    return u"QToolTip { color: #ffffff; background-color: #2a82da; border: 1px solid white;}"_s
        + u"QMenu {background-color: %1;  border: 1px solid gray; min-width: 180px; border-radius: 10px;}"_s
              .arg(menuColour)
        + u"QMenu::item {margin: 3px; padding: 3px; padding-left: 8px; padding-right: 32px; background-color: transparent;}"_s
        + u"QMenu::item::selected {background: #404040}"_s
        + u"QMenu::separator {height: 1px; background: #666666; margin-left: 3px; margin-right: 3px;}"_s
        + u"QMenu::indicator:checked {image: url(:/images/check_white.svg); width: 16px;}"_s
        + u"QComboBox QAbstractItemView { border: 1px solid gray; }"_s;
}

QPalette lightPalette()
{
    QPalette palette;
    palette.setBrush(QPalette::All, QPalette::HighlightedText, Qt::black);
    palette.setBrush(QPalette::All, QPalette::Highlight, QColor(225, 225, 225));
    return palette;
}

QPalette darkPalette()
{
    QPalette palette;
    palette.setBrush(QPalette::All, QPalette::Highlight, QColor(64, 64, 64));
    palette.setBrush(QPalette::Disabled, QPalette::HighlightedText, QColor(127, 127, 127));
    ApplicationStyle::completeDarkPalette(palette);
    return palette;
}

} // namespace

QPalette ApplicationStyle::palette(Mode mode)
{
    return mode == Dark ? darkPalette() : lightPalette();
}

QString ApplicationStyle::styleSheet(Mode mode)
{
    return mode == Dark ? darkStyleSheet() : lightStyleSheet();
}
