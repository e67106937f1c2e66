// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

import QtQuick
import QtQuick.Controls
import QtQuick.Controls.FluentWinUI3

// A slider with the names of its ends, its value in per cent and a button that resets it.
Item {
    id: root

    property real value: 0
    property real defaultValue: 1
    // These two and the tool tip are spelled so: meant so.
    property string minimumLabel: qsTr("0%...Complity Transparent")
    property string maximumLabel: qsTr("100%...Complity Opaque")
    property string currentValuePrefix: ""
    property string currentValueSuffix: "%"
    property real minimumValue: 0
    property real maximumValue: 1
    property string accessibleName: ""

    implicitWidth: 240
    implicitHeight: root.childrenRect.height

    Component.onCompleted: {
        slider.value = root.value;
        slider.made = true;
    }
    // A value beyond the ends comes back at once as the end, but not the one it is made with: to be
    // seen changes nothing.
    onValueChanged: {
        if (!slider.made)
            return;
        slider.value = root.value;
        root.value = slider.value;
    }

    Slider {
        id: slider

        property bool made: false // before, it does not know its ends

        Accessible.name: root.accessibleName
        from: root.minimumValue
        to: root.maximumValue
        width: root.width

        onValueChanged: {
            if (slider.made)
                root.value = slider.value;
        }
    }

    Label {
        id: minimumText

        anchors.left: parent.left
        anchors.leftMargin: 16
        anchors.right: valueBox.left
        anchors.top: slider.bottom
        elide: Text.ElideRight
        font.pointSize: 0.8 * valueText.font.pointSize // both fit beside the box at the usual width
        text: root.minimumLabel
    }

    Label {
        id: maximumText

        anchors.left: valueBox.right
        anchors.right: parent.right
        anchors.rightMargin: 16
        anchors.top: slider.bottom
        elide: Text.ElideRight
        font.pointSize: 0.8 * valueText.font.pointSize // both fit beside the box at the usual width
        horizontalAlignment: Text.AlignRight
        text: root.maximumLabel
    }

    Rectangle {
        id: valueBox

        anchors.horizontalCenter: parent.horizontalCenter
        anchors.top: slider.bottom
        color: Qt.rgba(root.palette.text.r, root.palette.text.g, root.palette.text.b, 0.1)
        height: 18
        radius: 3
        width: 72

        Label {
            id: valueText

            anchors.centerIn: parent
            font.bold: true
            text: "%1%2%3".arg(root.currentValuePrefix).arg(Math.round(slider.value * 100)).arg(root.currentValueSuffix)
        }

        Item {
            anchors.right: parent.right
            anchors.rightMargin: 3
            anchors.verticalCenter: parent.verticalCenter
            clip: true
            height: 16
            width: 16

            ToolButton {
                id: resetButton

                Accessible.name: "%1: %2".arg(root.accessibleName).arg(resetButton.ToolTip.text)
                ToolTip.delay: 1000
                ToolTip.text: qsTr("Reset to Defualt Value")
                ToolTip.timeout: 5000
                ToolTip.visible: resetButton.hovered
                anchors.fill: parent
                icon.color: root.palette.text
                icon.height: 12
                icon.source: "qrc:/images/reset_to_default.svg"
                icon.width: 12
                // Each by itself, as some styles set them: they would leave no room for the picture.
                bottomPadding: 0
                leftPadding: 0
                rightPadding: 0
                topPadding: 0

                onClicked: {
                    resetButton.ToolTip.hide();
                    root.value = root.defaultValue;
                }
            }
        }
    }
}
