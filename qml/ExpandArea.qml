// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

import QtQuick
import QtQuick.Controls
import QtQuick.Controls.FluentWinUI3

// Shows its children while it is expanded, and nothing else.
Rectangle {
    id: root

    property bool expanded: false
    property real expandedHeight: root.childrenRect.height

    clip: true
    color: "transparent"
    implicitHeight: 0
    implicitWidth: 240

    states: State {
        name: "expanded"
        when: root.expanded

        PropertyChanges {
            root.implicitHeight: root.expandedHeight
        }
    }

    Behavior on implicitHeight {
        NumberAnimation {
            duration: 200
        }
    }
}
