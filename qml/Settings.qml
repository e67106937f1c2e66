// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Controls.FluentWinUI3
import QtQuick.Layouts

// The settings window: every control edits one setting at once. It is made when it is opened, when
// all four objects are there.
Window {
    id: root

    // qmllint disable unqualified
    property var cfg: config
    property var mgr: manager
    property var tme: theme
    property var tModel: themeModel
    // qmllint enable unqualified

    objectName: "settingsWindow"
    color: palette.window
    flags: Qt.Dialog
    height: 728
    minimumHeight: 380
    minimumWidth: 400
    title: qsTr("Vesper Settings")
    width: 424

    Palette {
        id: palette
    }

    // Shows one setting and changes it.
    component SettingBox: CheckBox {
        id: settingBox

        required property string setting

        checked: root.cfg[settingBox.setting]

        onCheckedChanged: root.cfg[settingBox.setting] = settingBox.checked
    }

    // A slider with its name, for one setting.
    component SettingSlider: Column {
        id: settingSlider

        required property string setting
        required property string label
        property alias defaultValue: slider.defaultValue
        property alias minimumLabel: slider.minimumLabel
        property alias maximumLabel: slider.maximumLabel
        property alias minimumValue: slider.minimumValue
        property alias maximumValue: slider.maximumValue
        property alias slider: slider
        property bool ready: false // what it opens with is not written back, whatever its ends

        function follow() {
            slider.value = root.cfg[settingSlider.setting];
        }

        width: parent ? parent.width : 240

        // No binding: what the slider writes back while it follows would be a loop. The connection ends
        // with the one that it is told to.
        Component.onCompleted: {
            settingSlider.follow();
            settingSlider.ready = true;
            root.cfg[`${settingSlider.setting}Changed`].connect(settingSlider, settingSlider.follow);
        }

        Label {
            text: settingSlider.label
        }

        OpacitySlider {
            id: slider

            accessibleName: settingSlider.label
            width: settingSlider.width

            onValueChanged: {
                if (settingSlider.ready)
                    root.cfg[settingSlider.setting] = slider.value;
            }
        }
    }

    component Spacer: Item {
        height: 16
        width: 32
    }

    component IndividualOpacity: Column {
        id: individual

        required property string setting
        required property string label
        property alias defaultValue: individualSlider.defaultValue

        width: parent ? parent.width : 240

        SettingSlider {
            id: individualSlider

            label: individual.label
            maximumLabel: qsTr("100%")
            minimumLabel: qsTr("0%")
            setting: individual.setting
        }

        Spacer {}
    }

    component ScalingFactor: Column {
        id: scaling

        required property string setting
        required property string label
        property alias defaultValue: scalingSlider.defaultValue

        width: parent ? parent.width : 240

        SettingSlider {
            id: scalingSlider

            label: scaling.label
            maximumLabel: qsTr("300%")
            maximumValue: 3.0
            minimumLabel: qsTr("10%")
            minimumValue: 0.1
            setting: scaling.setting
        }

        Spacer {}
    }

    // Slides in from above, since its column hangs at its lower edge.
    component SliderArea: ExpandArea {
        id: sliderArea

        required property ExpandButton button
        default property alias content: column.data

        Layout.fillWidth: true
        expanded: sliderArea.button.expanded
        expandedHeight: column.height

        Column {
            id: column

            anchors.bottom: parent.bottom
            visible: sliderArea.height > 0 // or the keyboard would reach what nobody sees
            width: sliderArea.width - 16
            x: 16
        }
    }

    // The second button of an area, at its end: it only closes, and always looks expanded.
    component CollapseButton: ExpandButton {
        id: collapseButton

        required property ExpandButton opener

        directionDownward: false
        expanded: true

        onClicked: collapseButton.opener.expanded = false
        onExpandedChanged: collapseButton.expanded = true
    }

    Pane {
        anchors.fill: parent
        padding: 8

        ScrollView {
            id: scrollMain

            ScrollBar.horizontal.policy: ScrollBar.AlwaysOff
            ScrollBar.vertical.interactive: true
            anchors.bottom: footer.top
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.top: parent.top
            contentWidth: availableWidth

            ColumnLayout {
                anchors.fill: parent
                anchors.margins: 5
                spacing: 4

                GridLayout {
                    columns: 2
                    rows: 3

                    SettingBox {
                        setting: "withDigitalClock"
                        text: qsTr("Digital Clock")
                    }

                    SettingBox {
                        setting: "tweleveHours"
                        text: qsTr("12-Hour Format")
                    }

                    SettingBox {
                        setting: "displayDate"
                        text: qsTr("Date Display")
                    }

                    SettingBox {
                        setting: "useEra"
                        text: qsTr("Use Japanese Era")
                    }

                    SettingBox {
                        setting: "secondHand"
                        text: qsTr("Second Hand")
                    }

                    SettingBox {
                        setting: "raisePriorityOfTopmost"
                        text: qsTr("Topmost with Highest Priority")
                    }
                }

                Label {
                    Layout.topMargin: 8
                    text: qsTr("Color Tone")
                }

                VsComboBox {
                    id: toneChooser

                    property bool ready: false

                    Layout.leftMargin: 6
                    accessibleName: qsTr("Color Tone")
                    mgr: root.mgr
                    model: root.tModel
                    palette: palette

                    Component.onCompleted: toneChooser.ready = true
                    // While the window is made the value goes through rows that nobody has chosen.
                    onCurrentValueChanged: {
                        if (!toneChooser.ready || toneChooser.currentValue === undefined)
                            return;
                        const themeName = root.tme.currentTheme;
                        root.tme.changeColorTone(themeName, toneChooser.currentValue);
                        root.cfg.themeName = themeName;
                        root.cfg.colorToneName = toneChooser.currentValue;
                    }

                    // Goes on after the user has chosen.
                    Binding {
                        property: "currentIndex"
                        target: toneChooser
                        value: root.tModel.getIndexNumber(root.cfg.colorToneName)
                    }
                }

                SettingBox {
                    setting: "useDefaultBackgroundImage"
                    text: qsTr("Use Default Background Image")
                }

                Spacer {}

                SettingSlider {
                    Layout.fillWidth: true
                    defaultValue: root.cfg.defaultOverallOpacity
                    label: qsTr("Overall Opacity")
                    setting: "opacity"
                }

                ExpandButton {
                    id: buttonOpacityExpand

                    collapseToolTipText: qsTr("Collapse individual opacity settings")
                    expansionToolTipText: qsTr("Expand individual opacity settings")
                    label: qsTr("Individual Opacity")
                }

                SliderArea {
                    button: buttonOpacityExpand

                    IndividualOpacity {
                        defaultValue: root.cfg.defaultBackgroundOpacity
                        label: qsTr("Background")
                        setting: "backgroundOpacity"
                    }

                    IndividualOpacity {
                        defaultValue: root.cfg.defaultBackgroundImageOpacity
                        label: qsTr("Image")
                        setting: "backgroundImageOpacity"
                    }

                    IndividualOpacity {
                        defaultValue: root.cfg.defaultFaceOpacity
                        label: qsTr("Face")
                        setting: "faceOpacity"
                    }

                    IndividualOpacity {
                        defaultValue: root.cfg.defaultHandsOpacity
                        label: qsTr("Hands")
                        setting: "handsOpacity"
                    }

                    IndividualOpacity {
                        defaultValue: root.tme.textBackColor.a
                        label: qsTr("Digital Clock Background")
                        setting: "digitalClockBackgroundOpacity"
                    }

                    IndividualOpacity {
                        defaultValue: root.tme.textColor.a
                        label: qsTr("Digital Clock Foreground")
                        setting: "digitalClockForegroundOpacity"
                    }

                    IndividualOpacity {
                        defaultValue: root.tme.textBackColor.a
                        label: qsTr("Date Background")
                        setting: "dateBackgroundOpacity"
                    }

                    IndividualOpacity {
                        defaultValue: root.tme.textColor.a
                        label: qsTr("Date Foreground")
                        setting: "dateForegroundOpacity"
                    }

                    IndividualOpacity {
                        defaultValue: root.tme.logoColor.a
                        label: qsTr("Logo")
                        setting: "logoOpacity"
                    }

                    CollapseButton {
                        collapseToolTipText: qsTr("Collapse individual opacity settings")
                        expansionToolTipText: qsTr("Expand individual opacity settings")
                        label: qsTr("Collapse Individual Opacity")
                        opener: buttonOpacityExpand
                    }
                }

                ExpandButton {
                    id: buttonScalingExpand

                    collapseToolTipText: qsTr("Collapse individual Scaling factor")
                    expansionToolTipText: qsTr("Expand individual Scaling factor")
                    label: qsTr("Individual Scaling Factor")
                }

                SliderArea {
                    button: buttonScalingExpand

                    ScalingFactor {
                        defaultValue: root.cfg.defaultDigitalClockScaleFactor
                        label: qsTr("Digital Clock")
                        setting: "digitalClockScaleFactor"
                    }

                    ScalingFactor {
                        defaultValue: root.cfg.defaultDateScaleFactor
                        label: qsTr("Date")
                        setting: "dateScaleFactor"
                    }

                    ScalingFactor {
                        defaultValue: root.cfg.defaultLogoScaleFactor
                        label: qsTr("Logo")
                        setting: "logoScaleFactor"
                    }

                    CollapseButton {
                        collapseToolTipText: qsTr("Collapse individual scaling factor")
                        expansionToolTipText: qsTr("Expand individual scaling factor")
                        label: qsTr("Collapse Individual Scaling Factor")
                        opener: buttonScalingExpand
                    }
                }

                SettingBox {
                    id: ignoreMouseBox

                    Layout.bottomMargin: 8
                    Layout.fillWidth: true
                    Layout.preferredHeight: explanation.y + explanation.height
                    Layout.topMargin: 16
                    bottomPadding: explanation.height
                    setting: "ignoreMouseEvent"
                    text: qsTr("Ignore Mouse Events")

                    Label {
                        id: explanation

                        text: qsTr("Checking this box will disable mouse operations and prevent the context menu from being displayed.\nIn that case, use the menu from the task tray icon.")
                        width: scrollMain.width - 50
                        wrapMode: Text.Wrap
                        x: 36
                        y: 26
                    }
                }

                SettingBox {
                    setting: "autoCheckUpdate"
                    text: qsTr("Automatic Update Check")
                }

                SettingBox {
                    setting: "keepPositionWhenMonitorDetatched"
                    text: qsTr("Maintain Position even when the Monitor is Disconnected")
                }

                SettingBox {
                    setting: "displayLogo"
                    text: qsTr("Logo Display")
                }

                SettingBox {
                    setting: "autoStartAtSignIn"
                    text: qsTr("Automatically Start at Sign-In")
                }

                Item {
                    Layout.preferredHeight: 32
                    Layout.preferredWidth: 32
                }
            }
        }

        VsScrollButton {
            anchors.horizontalCenter: scrollMain.horizontalCenter
            anchors.top: scrollMain.top
            axis: 40
            height: 24
            iconSize: Qt.size(24, 18)
            palette: palette
            view: scrollMain
        }

        VsScrollButton {
            anchors.bottom: scrollMain.bottom
            anchors.horizontalCenter: scrollMain.horizontalCenter
            axis: 40
            height: 24
            iconSize: Qt.size(24, 18)
            palette: palette
            type: "bottom"
            view: scrollMain
        }

        RowLayout {
            id: footer

            anchors.bottom: parent.bottom
            anchors.left: parent.left
            anchors.right: parent.right

            Label {
                id: notice

                Accessible.role: Accessible.Link
                activeFocusOnTab: true
                color: noticeArea.pressed ? "OrangeRed" : noticeArea.containsMouse ? "Orange" : root.palette.text
                font.underline: notice.activeFocus
                text: "Copyright (C) %1 Marrowby Inc.".arg(new Date().getFullYear())

                Keys.onReturnPressed: root.mgr.openDefaultWeb()
                Keys.onEnterPressed: root.mgr.openDefaultWeb()

                Behavior on color {
                    ColorAnimation {
                        duration: 100
                    }
                }

                MouseArea {
                    id: noticeArea

                    anchors.fill: parent
                    cursorShape: Qt.PointingHandCursor
                    hoverEnabled: true

                    onClicked: root.mgr.openDefaultWeb()
                }
            }

            Item {
                Layout.fillWidth: true
            }

            Button {
                text: qsTr("Close")

                onClicked: root.close()
            }
        }
    }
}
