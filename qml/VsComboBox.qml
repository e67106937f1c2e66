// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Controls.FluentWinUI3

// A combo box whose list is a window of its own, so that it may reach beyond the window it is in.
Item {
    id: root

    property var mgr: null
    property string textRole: "displayName"
    property string valueRole: "name"
    property alias currentIndex: comboBox.currentIndex
    property alias currentValue: comboBox.currentValue
    required property var palette
    property var model: placeholders
    property string accessibleName: ""

    function openPopup() {
        listView.keyPressed = false;
        fading.stop();
        popupWindow.caller = comboBox;
        popupWindow.opacity = 1;
        popupWindow.show();
        popupWindow.requestActivate();
    }

    function closePopup() {
        listView.keyPressed = false;
        comboBox.popup.close();
        fading.start();
    }

    function choose(index: int) {
        comboBox.currentIndex = index;
        root.closePopup();
    }

    implicitHeight: comboBox.implicitHeight
    implicitWidth: comboBox.implicitWidth

    // Shown only where no model is given.
    ListModel {
        id: placeholders

        Component.onCompleted: {
            for (let i = 1; i < 20; ++i)
                placeholders.append({
                    displayName: "%1 item".arg(i),
                    name: "%1".arg(i)
                });
        }

        ListElement {
            displayName: "0 item"
            name: "0"
        }
    }

    ComboBox {
        id: comboBox

        Accessible.name: root.accessibleName
        anchors.fill: parent
        model: root.model
        textRole: root.textRole
        valueRole: root.valueRole

        popup: Popup {
            height: 0
            padding: 0
            width: 0

            background: Item {}

            onAboutToShow: root.openPopup()
            onOpened: comboBox.popup.close()
        }
    }

    Connections {
        function onPopupWindowLostFocus(win: var) {
            if (win === popupWindow)
                root.closePopup();
        }

        ignoreUnknownSignals: true
        target: root.mgr
    }

    Window {
        id: popupWindow

        readonly property real itemHeight: 32
        readonly property real popupOffsetY: 4
        readonly property real topPadding: 8
        readonly property real bottomPadding: 8
        readonly property real leftPadding: 8
        readonly property real rightPadding: 8
        readonly property real currentTop: popupWindow.topPadding + popupWindow.itemHeight * comboBox.currentIndex
        property Item caller: null

        // The current row lies over the combo box; what does not fit on the screen is cut and scrolled.
        function place() {
            const origin = popupWindow.caller.mapToGlobal(0, 0);
            const left = origin.x - popupWindow.popupOffsetY; // from x: meant so
            let top = origin.y - popupWindow.topPadding - popupWindow.itemHeight * comboBox.currentIndex;
            let height = comboBox.count * popupWindow.itemHeight + popupWindow.topPadding + popupWindow.bottomPadding;
            let scrolled = 0;
            const screenTop = root.Screen.virtualY;
            const screenBottom = root.Screen.virtualY + root.Screen.height;
            if (top < screenTop) {
                scrolled = screenTop - top;
                height -= scrolled;
                top = screenTop;
            }
            if (top + height > screenBottom)
                height = screenBottom - top;
            popupWindow.x = left;
            popupWindow.y = top;
            popupWindow.width = popupWindow.caller.width + popupWindow.leftPadding + popupWindow.rightPadding;
            popupWindow.height = height;
            listView.contentY = scrolled;
        }

        function unfold() {
            unfolding.stop();
            opening.y = popupWindow.currentTop - listView.contentY;
            opening.height = popupWindow.itemHeight;
            unfolding.start();
        }

        color: "transparent"
        flags: Qt.FramelessWindowHint | Qt.Tool // a plain window has no owner to stay above
        title: "Popup Window in ListView"
        transientParent: root.Window.window
        visible: false

        onVisibleChanged: {
            if (root.mgr)
                root.mgr.popupWindow = popupWindow.visible ? popupWindow : null;
            if (!popupWindow.visible)
                return;
            listView.currentIndex = comboBox.currentIndex;
            popupWindow.place();
            popupWindow.unfold();
            listView.forceActiveFocus();
        }

        NumberAnimation {
            id: fading

            duration: 100
            from: 1
            property: "opacity"
            target: popupWindow
            to: 0

            onFinished: popupWindow.close()
        }

        ParallelAnimation {
            id: unfolding

            NumberAnimation {
                duration: 100
                property: "y"
                target: opening
                to: 0
            }

            NumberAnimation {
                duration: 100
                property: "height"
                target: opening
                to: popupWindow.height
            }
        }

        Item {
            id: opening

            clip: true
            height: popupWindow.height
            width: popupWindow.width

            Rectangle {
                id: frame

                border.color: Qt.rgba(root.palette.shadow.r, root.palette.shadow.g, root.palette.shadow.b, 0.2)
                border.width: 1
                color: Qt.rgba(root.palette.base.r, root.palette.base.g, root.palette.base.b, 1)
                height: popupWindow.height
                radius: 6
                width: popupWindow.width
                y: -opening.y

                ListView {
                    id: listView

                    property bool keyPressed: false

                    function isChoosing(key: int): bool {
                        return key === Qt.Key_Space || key === Qt.Key_Enter || key === Qt.Key_Return;
                    }

                    anchors.bottomMargin: popupWindow.bottomPadding
                    anchors.fill: parent
                    anchors.leftMargin: popupWindow.leftPadding
                    anchors.rightMargin: popupWindow.rightPadding
                    anchors.topMargin: popupWindow.topPadding
                    boundsBehavior: Flickable.StopAtBounds
                    clip: true
                    delegate: row
                    focus: true
                    keyNavigationEnabled: true
                    model: root.model

                    ScrollBar.vertical: ScrollBar {
                        policy: ScrollBar.AsNeeded
                    }

                    Keys.onPressed: event => {
                        if (listView.isChoosing(event.key)) {
                            listView.keyPressed = true;
                            event.accepted = true;
                        }
                    }
                    Keys.onReleased: event => {
                        if (event.key === Qt.Key_Escape) {
                            event.accepted = true;
                            root.closePopup();
                        } else if (listView.keyPressed && listView.isChoosing(event.key) && !event.isAutoRepeat) {
                            event.accepted = true;
                            root.choose(listView.currentIndex);
                        }
                    }
                }

                VsScrollButton {
                    anchors.left: parent.left
                    anchors.leftMargin: 8
                    anchors.right: parent.right
                    anchors.rightMargin: 8
                    anchors.top: parent.top
                    palette: root.palette
                    view: listView
                }

                VsScrollButton {
                    anchors.bottom: parent.bottom
                    anchors.left: parent.left
                    anchors.leftMargin: 8
                    anchors.right: parent.right
                    anchors.rightMargin: 8
                    palette: root.palette
                    type: "bottom"
                    view: listView
                }
            }
        }
    }

    Component {
        id: row

        Rectangle {
            id: rowItem

            required property int index
            required property var model
            readonly property string text: rowItem.model[root.textRole]
            readonly property bool isCurrent: listView.currentIndex === rowItem.index
            readonly property bool isChosen: comboBox.currentIndex === rowItem.index
            readonly property bool isPressed: rowItem.isCurrent && (rowArea.pressed || listView.keyPressed)
            readonly property color highlight: root.palette.highlight
            readonly property color faintHighlight: Qt.rgba(rowItem.highlight.r, rowItem.highlight.g, rowItem.highlight.b, 0.6)

            Accessible.name: rowItem.text
            Accessible.role: Accessible.ListItem
            color: "transparent"
            height: popupWindow.itemHeight
            radius: 3
            width: listView.width

            states: [
                State {
                    name: "pressed"
                    when: rowItem.isPressed

                    PropertyChanges {
                        marker.height: 0.3 * rowItem.height
                        marker.visible: rowItem.isChosen
                        rowItem.color: rowItem.faintHighlight
                        rowText.opacity: 0.7
                    }
                },
                State {
                    name: "hovered"
                    when: rowItem.isCurrent && !rowItem.isPressed

                    PropertyChanges {
                        marker.height: 0.5 * rowItem.height
                        marker.visible: rowItem.isChosen
                        rowItem.color: rowItem.highlight
                    }
                },
                State {
                    name: "selected"
                    when: rowItem.isChosen && !rowItem.isCurrent

                    PropertyChanges {
                        marker.height: 0.5 * rowItem.height
                        marker.visible: true
                        rowItem.color: rowItem.faintHighlight
                    }
                }
            ]

            Behavior on color {
                ColorAnimation {
                    duration: 100
                }
            }

            Rectangle {
                id: marker

                anchors.left: parent.left
                anchors.verticalCenter: parent.verticalCenter
                color: root.palette.accent
                height: 0
                radius: 3
                visible: false
                width: 3

                Behavior on height {
                    NumberAnimation {
                        duration: 150
                    }
                }
            }

            Label {
                id: rowText

                anchors.fill: parent
                anchors.leftMargin: 8
                color: root.palette.text
                text: rowItem.text
                verticalAlignment: Text.AlignVCenter

                Behavior on opacity {
                    OpacityAnimator {
                        duration: 100
                    }
                }
            }

            MouseArea {
                id: rowArea

                anchors.fill: parent
                hoverEnabled: true

                onEntered: listView.currentIndex = rowItem.index
                onReleased: mouse => {
                    if (rowArea.contains(Qt.point(mouse.x, mouse.y)))
                        root.choose(rowItem.index);
                }
            }
        }
    }
}
