// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

import QtQuick

// One layer of the clock: an image that can be turned about its centre.
Image {
    id: itemRoot

    property real angleValue: 0 // degrees, clockwise

    // Without types: C++ calls both by their names and passes a QVariant.
    function setAngle(angle) {
        itemRoot.angleValue = angle;
    }

    function setVisible(v) {
        itemRoot.visible = v;
    }

    mipmap: true
    source: ""
    transform: Rotation {
        origin.x: itemRoot.width / 2
        origin.y: itemRoot.height / 2
        angle: itemRoot.angleValue
    }
}
