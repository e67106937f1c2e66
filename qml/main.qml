// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

pragma ComponentBehavior: Bound

import QtQml.Models
import QtQuick
import QtQuick.Window
import Qt.labs.platform

// The clock's window: square, frameless, see-through. It starts hidden; the manager shows it when its
// place is known. What is assigned to its geometry is cut toward zero, as the script language does.
Window {
    id: rootWindow

    // The objects that the program gives every document; a document must do without them, too.
    // qmllint disable unqualified
    property var cfg: typeof config === "undefined" ? null : config
    property var mgr: typeof manager === "undefined" ? null : manager
    property var tme: typeof theme === "undefined" ? null : theme
    // qmllint enable unqualified

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

    // Which kind of tray the system has is found out once, when an icon is made. When one of the
    // better kind comes up after the clock, another icon goes there.
    function renewTrayIcon() {
        trayIcon.visible = false;
        lateTrayIcon.active = true;
    }

    function place(left: real, top: real, width: real, height: real) {
        wheelTurn.stop();
        rootWindow.setGeometry(left, top, width, height);
    }

    function setSide(side: real) {
        rootWindow.place(rootWindow.x, rootWindow.y, side, side);
    }

    function windowRect(): rect {
        return Qt.rect(rootWindow.x, rootWindow.y, rootWindow.width, rootWindow.height);
    }

    function isSide(side: real): bool {
        return side >= rootWindow.limitMin && side <= rootWindow.limitMax;
    }

    // What others call by its name has no types: C++ passes and gets a QVariant. So has getAixis().
    function resize(size) {
        if (!rootWindow.mgr)
            return;
        rootWindow.setSide(size.width); // the width counts, whatever the height
        rootWindow.updateMask();
    }

    function autoResize(dpi) {
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

    onVisibleChanged: {
        if (!rootWindow.visible)
            return;
        for (const grip of [resizeHandleTopLeft, resizeHandleTopRight, resizeHandleBottomLeft, resizeHandleBottomRight])
            grip.grab();
    }

    // On Windows every click opens the manager's menu, elsewhere the system opens the icon's own.
    component TrayIcon: SystemTrayIcon {
        visible: true
        icon.source: Qt.platform.os === "osx" ? "qrc:/images/app_tray_icon_tmpl.svg" : "qrc:/images/app_icon.svg"
        icon.mask: Qt.platform.os === "osx"

        onActivated: {
            if (Qt.platform.os === "windows")
                rootWindow.mgr.openMenu();
        }
    }

    // The theme has one grip, for the top left; the others are its mirror images.
    component Grip: Image {
        id: grip

        property var img: null // what of it is opaque; nothing until it has been seen
        property real imgRatio: 1 // a picture is taken in the pixels of the screen

        // A hidden item gives no picture, so it is taken when both the window and the grip are shown.
        function grab() {
            if (!grip.visible || !rootWindow.visible)
                return;
            grip.grabToImage(result => {
                grip.imgRatio = Screen.devicePixelRatio;
                grip.img = result.image;
            });
        }

        // A picture that is not there yet counts as a miss: the manager's method takes no null.
        function covers(position: point): bool {
            const pixel = Qt.point(Math.floor(position.x * grip.imgRatio), Math.floor(position.y * grip.imgRatio));
            return grip.img && rootWindow.mgr.isMouseInnerImage(pixel, grip.img) !== false;
        }

        width: itemRoot.size
        height: itemRoot.size
        source: itemRoot.source
        opacity: 0.8

        onVisibleChanged: grip.grab()
    }

    // A corner that makes the clock larger when it is pulled outward; the opposite one stays.
    component ResizeCorner: MouseArea {
        id: corner

        required property Grip handle
        required property int growX // +1 where a move to the right makes the clock larger, else -1
        required property int growY // +1 where a move down makes it larger
        property point pressedMousePos
        property size pressedWinSize
        property point pressedWinPos
        property bool pressing: false
        property bool moving: false

        function follow(by: point) {
            const outX = by.x * corner.growX;
            const outY = by.y * corner.growY;
            // Outward or inward, but not along the edge.
            if ((outX >= 0) !== (outY >= 0))
                return;
            const diff = Math.abs(by.x) < Math.abs(by.y) ? outX : outY;
            const side = Qt.size(corner.pressedWinSize.width + diff, corner.pressedWinSize.height + diff);
            if (!rootWindow.isSide(side.width) || !rootWindow.isSide(side.height))
                return;
            const left = corner.growX < 0 ? corner.pressedWinPos.x - diff : rootWindow.x;
            const top = corner.growY < 0 ? corner.pressedWinPos.y - diff : rootWindow.y;
            rootWindow.place(left, top, side.width, side.height);
        }

        x: corner.handle.x
        y: corner.handle.y
        width: corner.handle.width
        height: corner.handle.height

        onPressed: mouse => {
            if (!rootWindow.mgr)
                return;
            if (!corner.handle.covers(Qt.point(mouse.x, mouse.y))) {
                mouse.accepted = false;
                return;
            }
            corner.pressedMousePos = corner.mapToGlobal(mouse.x, mouse.y);
            corner.pressedWinSize = Qt.size(rootWindow.width, rootWindow.height);
            corner.pressedWinPos = Qt.point(rootWindow.x, rootWindow.y);
            corner.pressing = true;
        }
        onReleased: {
            corner.pressing = false;
            rootWindow.lazySaveConfig();
            multiPointTouchArea.updateWindowStartRect();
        }
        onPositionChanged: mouse => {
            if (!corner.pressing || corner.moving)
                return;
            corner.moving = true;
            const position = corner.mapToGlobal(mouse.x, mouse.y);
            corner.follow(Qt.point(position.x - corner.pressedMousePos.x, position.y - corner.pressedMousePos.y));
            corner.moving = false;
        }
    }

    // The same by touch, without the quadrants: the mean of both directions counts.
    component ResizeTouch: TouchPoint {
        id: touch

        required property Grip handle // which has the place of the touch area
        required property int growX
        required property int growY
        property point place // on the screen; that in the area changes as the area moves
        property point startPoint
        property bool isChangeX: false
        property bool isChangeY: false

        // The place in the area also changes when the area moves, but then the finger has not.
        function hasMoved(): bool {
            const place = touch.handle.mapToGlobal(touch.x, touch.y);
            const isMoved = touch.place !== place;
            touch.place = place;
            return isMoved;
        }

        function resize() {
            if (!touch.isChangeX || !touch.isChangeY)
                return;
            touch.isChangeX = false;
            touch.isChangeY = false;
            if (!touch.pressed)
                return; // a new touch has its place before it counts as pressed
            const dx = parseInt(touch.place.x - touch.startPoint.x) * touch.growX;
            const dy = parseInt(touch.place.y - touch.startPoint.y) * touch.growY;
            const dd = (dx + dy) / 2;
            // From the present width at the bottom right, although the start stays: meant so.
            const isBottomRight = touch.growX > 0 && touch.growY > 0;
            const start = multiPointTouchArea.windowStartRect;
            const side = (isBottomRight ? rootWindow.width : start.width) + dd;
            if (!rootWindow.isSide(side))
                return;
            const left = touch.growX < 0 ? start.x - dd : rootWindow.x;
            const top = touch.growY < 0 ? start.y - dd : rootWindow.y;
            rootWindow.place(left, top, side, side);
        }

        onPressedChanged: {
            multiPointTouchArea.updateWindowStartRect();
            touch.hasMoved();
            if (touch.pressed)
                touch.startPoint = touch.place;
            else
                rootWindow.lazySaveConfig();
        }
        onXChanged: {
            if (touch.hasMoved())
                touch.isChangeX = true;
            touch.resize();
        }
        onYChanged: {
            if (touch.hasMoved() || touch.isChangeX)
                touch.isChangeY = true;
            touch.resize();
        }
    }

    // A finger on the face, by its place on the screen: that in the window changes as the window moves.
    component Finger: TouchPoint {
        id: finger

        property bool isMoved: false // in the window, in this event
        property point place
        property point startPlace // when it was pressed
        readonly property int travelX: finger.place.x - finger.startPlace.x
        readonly property int travelY: finger.place.y - finger.startPlace.y

        function locate() {
            finger.place = multiPointTouchArea.mapToGlobal(finger.x, finger.y);
            finger.isMoved = false;
        }

        function start() {
            finger.locate();
            finger.startPlace = finger.place;
        }

        onXChanged: finger.isMoved = true
        onYChanged: finger.isMoved = true
    }

    component CornerTouchArea: MultiPointTouchArea {
        id: cornerTouchArea

        required property Grip handle

        x: cornerTouchArea.handle.x
        y: cornerTouchArea.handle.y
        width: cornerTouchArea.handle.width
        height: cornerTouchArea.handle.height
        enabled: rootWindow.cfg ? rootWindow.cfg.resizeEnabled : false
        mouseEnabled: false
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

    Rectangle {
        id: itemRoot

        property string source: rootWindow.tme ? rootWindow.tme.resizeGrip : ""
        property real size: 32.0

        anchors.fill: parent
        color: "transparent"
        visible: rootWindow.cfg ? rootWindow.cfg.resizeEnabled : false

        Grip {
            id: resizeHandleTopLeft

            anchors.left: parent.left
            anchors.top: parent.top
        }

        Grip {
            id: resizeHandleTopRight

            anchors.top: parent.top
            anchors.right: parent.right
            mirror: true
        }

        Grip {
            id: resizeHandleBottomRight

            anchors.bottom: parent.bottom
            anchors.right: parent.right
            mirror: true
            mirrorVertically: true
        }

        Grip {
            id: resizeHandleBottomLeft

            anchors.bottom: parent.bottom
            anchors.left: parent.left
            mirrorVertically: true
        }
    }

    Loader {
        objectName: "clockFace" // by which screen readers get its text
        anchors.fill: parent
        source: "qrc:/qt/qml/vesper/qml/BasicClock.qml"
    }

    MouseArea {
        id: mouseArea

        // Of the last press of the left button: a drag with the right one goes on from there, meant so.
        property point pressedMousePoint
        property point pressedWindowPos
        property bool moving: false

        anchors.fill: parent
        acceptedButtons: Qt.LeftButton | Qt.RightButton

        onPressed: mouse => {
            if (!(mouse.buttons & Qt.LeftButton))
                return;
            mouseArea.pressedMousePoint = mouseArea.mapToGlobal(mouse.x, mouse.y);
            mouseArea.pressedWindowPos = Qt.point(rootWindow.x, rootWindow.y);
            rootWindow.clearMask();
        }
        onPositionChanged: mouse => {
            const isFixed = rootWindow.cfg ? rootWindow.cfg.fixed : false;
            if (isFixed || mouse.modifiers & Qt.ControlModifier || mouseArea.moving)
                return;
            mouseArea.moving = true;
            const position = mouseArea.mapToGlobal(mouse.x, mouse.y);
            const left = mouseArea.pressedWindowPos.x + (position.x - mouseArea.pressedMousePoint.x);
            const top = mouseArea.pressedWindowPos.y + (position.y - mouseArea.pressedMousePoint.y);
            rootWindow.place(left, top, rootWindow.width, rootWindow.height);
            mouseArea.moving = false;
        }
        onReleased: {
            rootWindow.lazySaveConfig();
            rootWindow.updateMask();
            multiPointTouchArea.updateWindowStartRect();
        }
        onDoubleClicked: rootWindow.correctAspectRatio()
        onWheel: wheel => {
            if (!(wheel.modifiers & Qt.ControlModifier))
                return;
            const delta = wheel.angleDelta.y / 10;
            const before = wheelTurn.present();
            const side = before.width + delta;
            if (!(side > rootWindow.limitMin && side < rootWindow.limitMax))
                return; // never reaches the limits themselves: meant so
            wheelTurn.apply(Qt.rect(before.x - delta / 2, before.y - delta / 2, side, side));
            rootWindow.updateMask();
            rootWindow.lazySaveConfig();
            multiPointTouchArea.updateWindowStartRect();
        }
    }

    // A wheel of high resolution turns by parts of a notch, which are fractions of a pixel. The
    // window's integers drop them, so the next step of the same turn goes on from here.
    Timer {
        id: wheelTurn

        property rect exact
        property rect given // to the window, where it must still be

        function present(): rect {
            return wheelTurn.running && wheelTurn.given === rootWindow.windowRect() ? wheelTurn.exact : rootWindow.windowRect();
        }

        function apply(exact: rect) {
            rootWindow.setGeometry(exact.x, exact.y, exact.width, exact.height);
            wheelTurn.exact = exact;
            wheelTurn.given = rootWindow.windowRect();
            wheelTurn.restart();
        }
    }

    ResizeCorner {
        handle: resizeHandleTopLeft
        growX: -1
        growY: -1
    }

    ResizeCorner {
        handle: resizeHandleTopRight
        growX: 1
        growY: -1
    }

    ResizeCorner {
        handle: resizeHandleBottomRight
        growX: 1
        growY: 1
    }

    ResizeCorner {
        handle: resizeHandleBottomLeft
        growX: -1
        growY: 1
    }

    MultiPointTouchArea {
        id: multiPointTouchArea

        property int currentAxis: 0 // distance of the two touch points
        property int startedAxis: 0
        property rect windowStartRect: rootWindow.windowRect()
        property point startedPoint: Qt.point(0, 0) // unused: intentional
        property bool isFixed: rootWindow.cfg ? rootWindow.cfg.fixed : false
        property bool isPinched: false // in this event
        property int startX: point1.startX // unused, like startY: newer Qt changes them as the clock moves
        property int startY: point1.startY

        function updateWindowStartRect() {
            multiPointTouchArea.windowStartRect = rootWindow.windowRect();
        }

        function getAixis() {
            return parseInt(Math.sqrt(Math.pow(point2.place.x - point1.place.x, 2) + Math.pow(point2.place.y - point1.place.y, 2)));
        }

        function calcAxis() {
            if (point1.pressed && point2.pressed)
                multiPointTouchArea.currentAxis = multiPointTouchArea.getAixis();
        }

        function pinchUnlessFixed() {
            if (!multiPointTouchArea.isFixed)
                multiPointTouchArea.isPinched = true;
        }

        function startAxis() {
            // In this order, or the clock would jump by the whole distance.
            multiPointTouchArea.startedAxis = multiPointTouchArea.getAixis();
            multiPointTouchArea.currentAxis = multiPointTouchArea.startedAxis;
        }

        anchors.fill: parent
        mouseEnabled: false
        touchPoints: [
            Finger {
                id: point1

                // Starts a drag at the clock's present place, whatever the finger has travelled so far.
                function startDragHere() {
                    const now = rootWindow.windowRect();
                    multiPointTouchArea.windowStartRect = Qt.rect(now.x - point1.travelX, now.y - point1.travelY, now.width, now.height);
                }

                function drag() {
                    const start = multiPointTouchArea.windowStartRect;
                    rootWindow.place(start.x + point1.travelX, start.y + point1.travelY, rootWindow.width, rootWindow.height);
                }

                onPressedChanged: {
                    multiPointTouchArea.updateWindowStartRect();
                    if (point1.pressed)
                        point1.start();
                    else
                        rootWindow.lazySaveConfig();
                    if (point1.pressed && point2.pressed)
                        multiPointTouchArea.startAxis();
                }
                onSceneXChanged: multiPointTouchArea.isPinched = true
                onSceneYChanged: multiPointTouchArea.pinchUnlessFixed() // unlike above: intentional
            },
            Finger {
                id: point2

                onPressedChanged: {
                    if (point2.pressed)
                        point2.start();
                    else
                        rootWindow.lazySaveConfig();
                    if (!point1.pressed)
                        return;
                    multiPointTouchArea.updateWindowStartRect();
                    if (point2.pressed)
                        multiPointTouchArea.startAxis();
                    else
                        point1.startDragHere();
                }
                onSceneXChanged: multiPointTouchArea.pinchUnlessFixed()
                onSceneYChanged: multiPointTouchArea.pinchUnlessFixed()
            }
        ]

        // Not while the places of the fingers come in: the window they are in must not move meanwhile.
        // A finger that the clock has kept up with stays where it was in the window.
        onUpdated: {
            const isAlone = point1.pressed && !point2.pressed;
            for (const finger of [point1, point2]) {
                if (finger.isMoved || (isAlone && finger === point1))
                    finger.locate();
            }
            if (isAlone && !multiPointTouchArea.isFixed)
                point1.drag();
            else if (multiPointTouchArea.isPinched)
                multiPointTouchArea.calcAxis();
            multiPointTouchArea.isPinched = false;
        }
        onCurrentAxisChanged: {
            const a = multiPointTouchArea.startedAxis - multiPointTouchArea.currentAxis;
            const start = multiPointTouchArea.windowStartRect;
            const side = start.width - a;
            const p = a / 2;
            if (!isFinite(a) || !isFinite(side) || !isFinite(p) || !rootWindow.isSide(side))
                return;
            rootWindow.place(start.x + p, start.y + p, side, side);
            rootWindow.updateMask();
            rootWindow.lazySaveConfig();
        }
    }

    Connections {
        function onWindowMovingAnimationFinished() {
            multiPointTouchArea.updateWindowStartRect();
        }

        target: rootWindow.mgr
    }

    CornerTouchArea {
        id: bottomRightTouchArea

        handle: resizeHandleBottomRight
        touchPoints: ResizeTouch {
            id: resizeTouchBottomRight

            handle: resizeHandleBottomRight
            growX: 1
            growY: 1
        }
    }

    CornerTouchArea {
        id: topRightTouchArea

        handle: resizeHandleTopRight
        touchPoints: ResizeTouch {
            id: resizeTouchTopRight

            handle: resizeHandleTopRight
            growX: 1
            growY: -1
        }
    }

    CornerTouchArea {
        id: bottomLeftTouchArea

        handle: resizeHandleBottomLeft
        touchPoints: ResizeTouch {
            id: resizeTouchBottomLeft

            handle: resizeHandleBottomLeft
            growX: -1
            growY: 1
        }
    }

    CornerTouchArea {
        id: topLeftTouchArea

        handle: resizeHandleTopLeft
        touchPoints: ResizeTouch {
            id: resizeTouchTopLeft

            handle: resizeHandleTopLeft
            growX: -1
            growY: -1
        }
    }

    Connections {
        // The signal has no parameter: intentional.
        function onQuitByQml(enabled: bool) {
            Qt.quit();
        }

        function onReqOpenMenu() {
        }

        target: rootWindow.mgr
    }

    // Never opened: meant so. The clock's menu is the manager's.
    ContextMenu {
        id: contextMenu
    }

    TrayIcon {
        id: trayIcon

        menu: ContextMenu {
            id: trayMenu
        }
    }

    Instantiator {
        id: lateTrayIcon

        active: false
        delegate: TrayIcon {
            menu: ContextMenu {}
        }
    }
}
