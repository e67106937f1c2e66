// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

import QtQuick
import QtQuick.Window
import Qt.labs.platform

// The clock's window: square, frameless, see-through. It starts hidden; the manager shows it when its
// place is known.
Window {
    id: rootWindow

    property var cfg: typeof config === "undefined" ? null : config
    property var mgr: typeof manager === "undefined" ? null : manager
    property var tme: typeof theme === "undefined" ? null : theme

    property real limitMin: 72 // of the side, in pixels
    property real limitMax: 7680

    // Called by nobody, and the manager has no method of this name: meant so. Saving goes through
    // lazySaveConfig() everywhere.
    function saveConfig() {
        if (rootWindow.mgr)
            rootWindow.mgr.seveConfig();
    }

    function lazySaveConfig() {
        if (rootWindow.mgr)
            rootWindow.mgr.lazySaveConfig();
    }

    function updateMask() {
        if (rootWindow.mgr)
            rootWindow.mgr.updateMask();
    }

    function clearMask() {
        if (rootWindow.mgr)
            rootWindow.mgr.clearMask();
    }

    function setSide(side: real) {
        rootWindow.width = side;
        rootWindow.height = side;
    }

    function resize(newSize: size) {
        if (!rootWindow.mgr)
            return;
        rootWindow.setSide(newSize.width); // the width counts, whatever the height
        rootWindow.updateMask();
    }

    function autoResize(dpi: real) {
        if (!rootWindow.mgr)
            return;
        const ratio = dpi / 96.0;
        rootWindow.clearMask();
        const side = rootWindow.width * ratio;
        // The step through one pixel more makes it a real change of size in every case.
        rootWindow.setSide(side + 1);
        rootWindow.setSide(side);
        rootWindow.updateMask();
    }

    function correctAspectRatio() {
        if (!rootWindow.mgr || rootWindow.width === rootWindow.height)
            return;
        // The limits stand here as numbers: meant so.
        const clamp = side => Math.min(Math.max(side, 72), 7680);
        rootWindow.setSide((clamp(rootWindow.width) + clamp(rootWindow.height)) / 2);
        rootWindow.updateMask();
    }

    width: 320
    height: 320
    visible: false
    flags: Qt.FramelessWindowHint | Qt.CustomizeWindowHint
    opacity: rootWindow.cfg ? rootWindow.cfg.opacity : 1.0
    title: qsTr("Vesper")
    // A veil that shows the window's square while it can be resized.
    color: rootWindow.cfg && rootWindow.cfg.resizeEnabled ? Qt.rgba(0, 0, 0, 0.3) : "transparent"

    onYChanged: {
        if (Qt.platform.os !== "osx" || !rootWindow.mgr)
            return;
        if (!rootWindow.mgr.isAvailableScreen(Qt.point(rootWindow.x, rootWindow.y)))
            rootWindow.y = Math.max(rootWindow.y, rootWindow.mgr.getCurrentScreenGeometory().top);
    }

    Connections {
        function onCallJavaScriptGC() {
            gc();
        }

        target: rootWindow.mgr
    }

    Connections {
        function onCallJavaScriptUpdateMask() {
            rootWindow.updateMask();
        }

        target: rootWindow.mgr
    }

    Connections {
        function onCallJavaScriptResize(newSize: size) {
            rootWindow.resize(newSize);
        }

        target: rootWindow.mgr
    }

    Connections {
        function onCallJavaScriptAutoResize(dpi: real) {
            rootWindow.autoResize(dpi);
        }

        target: rootWindow.mgr
    }

    Loader {
        anchors.fill: parent
        source: "qrc:/qt/qml/vesper/qml/BasicClock.qml"
    }

    Connections {
        function onQuitByQml() {
            Qt.quit();
        }

        target: rootWindow.mgr
    }
}
