// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

import QtQuick
import QtQuick.Controls
import QtQuick.Controls.FluentWinUI3

// A button with an arrow that turns while something is expanded.
ToolButton {
    id: root

    property string label: qsTr("Expand")
    property bool expanded: false
    property string expansionToolTipText: qsTr("Expand")
    property string collapseToolTipText: qsTr("Collapse")
    property bool directionDownward: true
    property real spacerWidth: 6
    property real imageWidth: 16

    Accessible.name: root.label
    ToolTip.delay: 1000
    ToolTip.text: root.expanded ? root.collapseToolTipText : root.expansionToolTipText
    ToolTip.timeout: 5000
    ToolTip.visible: root.hovered
    implicitWidth: labelMetrics.advanceWidth + root.imageWidth + 3 * root.spacerWidth

    contentItem: Row {
        Item {
            height: 1
            width: root.spacerWidth
        }

        Image {
            anchors.verticalCenter: parent.verticalCenter
            height: root.imageWidth
            rotation: root.expanded ? (root.directionDownward ? 90 : -90) : 0
            source: "qrc:/images/toright_%1.svg".arg(root.palette.text.r > 0.5 ? "white" : "black")
            sourceSize: Qt.size(2 * root.imageWidth, 2 * root.imageWidth)
            width: root.imageWidth

            Behavior on rotation {
                NumberAnimation {
                    duration: 100
                }
            }
        }

        Item {
            height: 1
            width: root.spacerWidth
        }

        Label {
            anchors.verticalCenter: parent.verticalCenter
            text: root.label
        }

        Item {
            height: 1
            width: root.spacerWidth
        }
    }

    onClicked: {
        root.ToolTip.hide();
        root.expanded = !root.expanded;
    }

    TextMetrics {
        id: labelMetrics

        font: root.font
        text: root.label
    }
}
