// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qlist.h>
#include <QtCore/qrect.h>
#include <QtGui/qimage.h>

/// An entry of a menu of the clock.
struct MenuRow {
    QRect place; // in the picture
    bool isChecked;
};

/// The entries that a picture of a menu in its light style shows, from the top.
QList<MenuRow> menuRows(const QImage &picture);
