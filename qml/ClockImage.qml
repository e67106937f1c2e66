// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

import QtQuick

// One layer of the clock: an image that can be turned about its centre.
Image {
    id: itemRoot

    property real angleValue: 0 // degrees, clockwise

    function setAngle(angle: real) {
        itemRoot.angleValue = angle;
    }

    function setVisible(v: bool) {
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
