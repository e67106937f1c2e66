// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

import QtQuick
import QtQuick.Controls
import QtQuick.Controls.FluentWinUI3

// Scrolls a view while the pointer rests on it; seen only where there is more to see.
Rectangle {
    id: root

    required property var palette
    required property var view
    property real axis: 32 // pixels of one step
    property int speed: 150 // milliseconds of one step
    property alias mouseArea: hoverArea
    property string type: "top" // any other text means the lower edge
    property size iconSize: Qt.size(16, 8)
    property var flickable: {
        if (!root.view)
            return null;
        return root.view.contentY !== undefined ? root.view : (root.view.contentItem ?? null);
    }

    readonly property bool isTop: root.type.toLowerCase() === "top"
    readonly property bool canScroll: {
        if (!root.flickable)
            return false;
        if (root.isTop)
            return root.flickable.contentY > 0;
        return root.flickable.contentHeight - root.flickable.contentY > root.flickable.height;
    }

    // This one moves toward the top, and the next one toward the bottom: the names are meant so.
    function scrollToLower() {
        animation.to = Math.max(0, root.flickable.contentY - root.axis);
        animation.start();
    }

    function scrollToUpper() {
        animation.to = Math.min(root.flickable.contentHeight - root.flickable.height, root.flickable.contentY + root.axis);
        animation.start();
    }

    function scroll() {
        if (animation.running || !root.canScroll)
            return;
        if (root.isTop)
            root.scrollToLower();
        else
            root.scrollToUpper();
    }

    color: Qt.rgba(root.palette.base.r, root.palette.base.g, root.palette.base.b, 0.5)
    height: 12
    opacity: root.canScroll ? 1.0 : 0
    radius: 3
    width: 32

    Behavior on opacity {
        NumberAnimation {
            duration: 100
        }
    }

    NumberAnimation {
        id: animation

        duration: root.speed
        easing.type: Easing.InOutQuad
        property: "contentY"
        target: root.flickable

        onFinished: {
            if (hoverArea.containsMouse)
                root.scroll();
        }
    }

    Image {
        readonly property color textColour: root.palette.text
        readonly property bool isLight: (textColour.r + textColour.g + textColour.b) / 3 > 0.5

        anchors.centerIn: parent
        height: root.iconSize.height
        opacity: 0.7
        source: "qrc:/images/%1%2.svg".arg(root.isTop ? "toupper" : "tolower").arg(isLight ? "_white" : "_black")
        sourceSize: Qt.size(2 * root.iconSize.width, 2 * root.iconSize.height)
        width: root.iconSize.width
    }

    MouseArea {
        id: hoverArea

        anchors.fill: parent
        enabled: root.opacity > 0
        hoverEnabled: true

        onEntered: root.scroll()
    }
}
