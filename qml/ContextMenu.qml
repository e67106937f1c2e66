// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

pragma ComponentBehavior: Bound

import QtQuick
import Qt.labs.platform

// The menu of the tray icon. The clock has a menu of its own, with more in it.
Menu {
    id: root

    // qmllint disable unqualified
    property var cfg: typeof config === "undefined" ? null : config
    property var mgr: typeof manager === "undefined" ? null : manager
    // qmllint enable unqualified

    // Before their menu, since they go in this order: an item tells its menu that it goes.
    readonly property list<MenuItem> moveItems: [
        MoveItem {
            method: "moveToTopRight"
            text: qsTr("Top-Right")
        },
        MoveItem {
            method: "moveToTopLeft"
            text: qsTr("Top-Left")
        },
        MoveItem {
            method: "moveToBottomRight"
            text: qsTr("Bottom-Right")
        },
        MoveItem {
            method: "moveToBottomLeft"
            text: qsTr("Bottom-Left")
        },
        MenuSeparator {},
        MoveItem {
            method: "moveToCenterAtCurrentScreen"
            text: qsTr("Center at This Monitor")
        }
    ]

    // Not declared in its place: a menu within a menu is complete before the outer one has a native
    // menu, takes one of another kind than the tray's, and the tray crashes on it.
    readonly property Menu moveMenu: Menu {
        title: qsTr("Move To")
    }

    Component.onCompleted: {
        root.insertMenu(4, root.moveMenu);
        for (const item of root.moveItems)
            root.moveMenu.addItem(item);
    }

    // An item that shows one setting and changes it.
    component SettingItem: MenuItem {
        id: settingItem

        required property string setting

        checkable: true
        checked: root.cfg ? root.cfg[settingItem.setting] : false

        onCheckedChanged: {
            if (root.cfg)
                root.cfg[settingItem.setting] = settingItem.checked;
        }
    }

    component MoveItem: MenuItem {
        id: moveItem

        required property string method // of the manager

        onTriggered: {
            if (root.mgr)
                root.mgr[moveItem.method]();
        }
    }

    SettingItem {
        id: itemResize

        setting: "resizeEnabled"
        text: qsTr("Resize")
    }

    SettingItem {
        id: itemFixed

        setting: "fixed"
        text: qsTr("Fixed")
    }

    SettingItem {
        id: itemTopmost

        setting: "topmost"
        text: qsTr("Topmost")
    }

    MenuSeparator {}

    MenuSeparator {}

    MenuItem {
        text: Qt.platform.os === "osx" ? qsTr("Preferences...") : qsTr("Settings...")

        onTriggered: root.mgr.openSettings()
    }

    MenuItem {
        text: qsTr("About Vesper...")

        onTriggered: root.mgr.showAboutVesper()
    }

    MenuSeparator {}

    MenuItem {
        text: qsTr("Quit")

        onTriggered: root.mgr.quitApp()
    }

    Connections {
        function onResizeEnabledChanged(enabled: bool) {
            itemResize.checked = enabled;
        }

        function onFixedChanged(enabled: bool) {
            itemFixed.checked = enabled;
        }

        function onTopmostChanged(enabled: bool) {
            itemTopmost.checked = enabled;
        }

        target: root.cfg
    }
}
