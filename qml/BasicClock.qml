// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Window

// The clock face: the layers of the current tone from the base up, with the three texts among them.
Rectangle {
    id: root

    // The objects that the program gives every document; a document must do without them, too.
    // qmllint disable unqualified
    property var cfg: typeof config === "undefined" ? null : config
    property var mgr: typeof manager === "undefined" ? null : manager
    property var tme: typeof theme === "undefined" ? null : theme
    // qmllint enable unqualified

    property bool imageCache: false
    property bool imageMipmap: true
    property real pixelRatio: Screen.devicePixelRatio
    // About three physical pixels for a logical one: turned hands stay sharp.
    property real imageSourceRatio: Math.max(1, 3 / root.pixelRatio)
    readonly property int screenPixels: Math.round(root.width * root.pixelRatio)

    readonly property bool onMac: Qt.platform.os === "osx"
    readonly property string textFamily: root.onMac ? "Hiragino Sans" : "Yu Gothic UI"
    readonly property int textWeight: root.onMac ? Font.DemiBold : Font.Normal
    readonly property color textColor: root.tme ? root.tme.textColor : Qt.rgba(0.8, 0.8, 0.8, 0.7)
    readonly property color textBackColor: root.tme ? root.tme.textBackColor : Qt.rgba(0, 0, 0, 0.3)

    // Whether the engine sends layers to an image provider, which draws them for the screen's pixels.
    readonly property bool hasProvider: Qt.resolvedUrl("qrc:/themes/").toString().startsWith("image:")

    // Without a provider Qt loads no image above 256 MiB, and multiplies the source size by the pixel
    // ratio. Only there the size is held back: a layer that is a little soft is better than none.
    function boundedSide(side: real): real {
        return root.hasProvider ? side : Math.min(side, Math.floor(8192 / root.pixelRatio));
    }

    function withAlpha(c: color, alpha: real): color {
        return Qt.rgba(c.r, c.g, c.b, alpha);
    }

    function pointSize(factor: real, scaleFactor: real): real {
        const size = root.width * factor * scaleFactor;
        return size > 0 ? size : 12;
    }

    width: parent ? parent.width : 0
    height: width
    color: Qt.rgba(0, 0, 0, 0)

    // Each tick repaints the whole window, by a movement that no pixel shows: where only parts of a
    // see-through window change, some compositors show holes in it (picom 12 with XRender).
    Connections {
        function onSecondHandAngleChanged() {
            root.x = root.x === 0 ? 1e-9 : 0;
        }

        target: root.mgr
    }

    component Layer: ClockImage {
        property real sourceRatio: root.imageSourceRatio
        readonly property real sourceSide: root.boundedSide(root.width * sourceRatio)

        // A picture of the screen's own pixels is shown as it is. It must not be stretched to a layer that
        // is larger or smaller by a fraction of a pixel.
        readonly property bool fitsScreen: status === Image.Ready && Math.round(implicitWidth * root.pixelRatio) === root.screenPixels

        width: root.width
        height: root.height
        horizontalAlignment: Image.AlignLeft
        verticalAlignment: Image.AlignTop
        fillMode: fitsScreen ? Image.Pad : Image.Stretch
        cache: root.imageCache
        mipmap: root.imageMipmap
        sourceSize: Qt.size(sourceSide, sourceSide)
        retainWhileLoading: true

        // The first picture is there before the first frame. Every later one is drawn aside, while the
        // one before it stays: a change of size waits for nothing.
        onStatusChanged: {
            if (status === Image.Ready)
                asynchronous = true;
        }
    }

    // Stands at three o'clock until the manager tells its first angle.
    component Hand: Layer {
        readonly property int textureSide: Math.min(2 * root.screenPixels, 8192)

        // Rotates about the centre of the dial, which is drawn in whole pixels.
        x: (root.screenPixels / root.pixelRatio - root.width) / 2
        y: x
        horizontalAlignment: Image.AlignHCenter
        verticalAlignment: Image.AlignVCenter
        fillMode: Image.PreserveAspectFit // the picture may be a strip of the layer
        // On a GPU Qt would sample a smaller, blurred mipmap; a layer has none.
        layer.enabled: GraphicsInfo.api > GraphicsInfo.Software
        layer.smooth: true
        layer.textureSize: Qt.size(textureSide, textureSide)

        opacity: root.cfg ? root.cfg.handsOpacity : 1
    }

    Layer {
        source: root.tme ? root.tme.base : ""
        opacity: root.cfg ? root.cfg.backgroundOpacity : 1
    }

    Layer {
        source: root.tme ? root.tme.background : ""
        opacity: root.cfg ? root.cfg.backgroundImageOpacity : 1
        visible: root.cfg ? root.cfg.useDefaultBackgroundImage : true
    }

    Layer {
        source: root.tme ? root.tme.dial : ""
        opacity: root.cfg ? root.cfg.faceOpacity : 1
    }

    Text {
        id: logoTextItem

        readonly property color themeColor: root.tme ? root.tme.logoColor : Qt.rgba(0.9, 0.9, 0.9, 0.8)

        anchors.centerIn: parent
        anchors.verticalCenterOffset: -0.287 * root.height
        visible: root.cfg ? root.cfg.displayLogo : false
        color: root.cfg ? root.withAlpha(themeColor, root.cfg.logoOpacity) : themeColor
        font.family: root.textFamily
        font.weight: root.textWeight
        font.pointSize: root.pointSize(root.onMac ? 0.047 : 0.040, root.cfg ? root.cfg.logoScaleFactor : 1.0)
        text: "MARROWBY"

        // Read by nobody, like the font metrics of the digital time: meant so.
        TextMetrics {
            font: logoTextItem.font
            text: logoTextItem.text
        }
    }

    Hand {
        id: handHour

        source: root.tme ? root.tme.handHour : ""

        Connections {
            function onHourHandAngleChanged(angle: real) {
                handHour.setAngle(angle);
            }

            target: root.mgr
        }
    }

    // The two longer hands keep three times the side at every pixel ratio, unlike the hour hand: meant so.
    Hand {
        id: handMinute

        source: root.tme ? root.tme.handMinute : ""
        sourceRatio: 3

        Connections {
            function onMinuteHandAngleChanged(angle: real) {
                handMinute.setAngle(angle);
            }

            target: root.mgr
        }
    }

    Hand {
        id: handSecond

        source: root.tme ? root.tme.handSecond : ""
        sourceRatio: 3
        visible: root.cfg ? root.cfg.secondHand : true

        Connections {
            function onSecondHandAngleChanged(angle: real) {
                handSecond.setAngle(angle);
            }

            target: root.mgr
        }
    }

    Item {
        id: clockNumberItem

        anchors.centerIn: parent
        anchors.horizontalCenterOffset: -0.01 * root.width
        anchors.verticalCenterOffset: 0.18 * root.height
        // The box of a fixed text: it does not jitter as the digits change.
        width: clockNumberMetrics.width
        height: clockNumberMetrics.height
        visible: root.cfg ? root.cfg.withDigitalClock : false

        TextMetrics {
            id: clockNumberMetrics

            font: clockNumberTextItem.font
            text: "00:00:00"
        }

        FontMetrics {
            font: clockNumberTextItem.font
        }

        Rectangle {
            id: clockNumberRectItem

            anchors.horizontalCenter: parent.horizontalCenter
            y: root.onMac ? 0 : 0.8 * 0.15 * clockNumberItem.height
            width: clockNumberItem.width * (root.onMac ? 1.06 : 1.09)
            height: clockNumberItem.height * (root.onMac ? 1 : 0.81)
            color: root.cfg ? root.withAlpha(root.textBackColor, root.cfg.digitalClockBackgroundOpacity) : root.textBackColor
        }

        Text {
            id: clockNumberTextItem

            anchors.centerIn: clockNumberRectItem
            anchors.verticalCenterOffset: -0.01 * height
            color: root.cfg ? root.withAlpha(root.textColor, root.cfg.digitalClockForegroundOpacity) : root.textColor
            font.family: root.textFamily
            font.weight: root.textWeight
            font.pointSize: root.pointSize(root.onMac ? 0.1 : 0.07, root.cfg ? root.cfg.digitalClockScaleFactor : 1.0)
            text: root.mgr ? root.mgr.timeText : "00:00:00"
        }
    }

    Item {
        id: clockNumberAmPmItem

        anchors.left: clockNumberItem.right
        anchors.leftMargin: (clockNumberRectItem.width - clockNumberMetrics.width) * 0.8
        anchors.verticalCenter: clockNumberItem.verticalCenter
        anchors.verticalCenterOffset: -0.22 * clockNumberRectItem.height
        width: 1.3 * clockNumberAmPmMetrics.advanceWidth
        height: clockNumberAmPmMetrics.height
        visible: root.cfg ? root.cfg.tweleveHours && root.cfg.withDigitalClock : false

        TextMetrics {
            id: clockNumberAmPmMetrics

            font: clockNumberAmPmTextItem.font
            text: "AM"
        }

        Rectangle {
            anchors.fill: parent
            color: clockNumberRectItem.color
        }

        Text {
            id: clockNumberAmPmTextItem

            anchors.centerIn: parent
            anchors.verticalCenterOffset: -0.01 * height
            color: clockNumberTextItem.color
            font.family: clockNumberTextItem.font.family
            font.weight: clockNumberTextItem.font.weight
            // The time's size is given in points. Qt computes the pixel size from it, so the tag comes
            // out at two thirds of the time; where Qt gives -1 it keeps the default size. Both are meant.
            font.pixelSize: clockNumberTextItem.font.pixelSize * 2 / 3
            text: root.mgr ? root.mgr.amPmText : "AM"
        }
    }

    Item {
        id: dateItem

        anchors.centerIn: parent
        anchors.horizontalCenterOffset: 0.015 * root.width
        anchors.verticalCenterOffset: -0.13 * root.height
        width: 1.05 * dateMetrics.advanceWidth
        height: dateMetrics.height
        visible: root.cfg ? root.cfg.displayDate : false

        TextMetrics {
            id: dateMetrics

            font: dateTextItem.font
            text: dateTextItem.text
        }

        Rectangle {
            anchors.fill: parent
            color: root.cfg ? root.withAlpha(root.textBackColor, root.cfg.dateBackgroundOpacity) : root.textBackColor
        }

        Text {
            id: dateTextItem

            anchors.centerIn: parent
            color: root.cfg ? root.withAlpha(root.textColor, root.cfg.dateForegroundOpacity) : root.textColor
            font.family: root.textFamily
            font.weight: root.textWeight
            font.pointSize: root.pointSize(root.onMac ? 0.08 : 0.06, root.cfg ? root.cfg.dateScaleFactor : 1.0)
            text: root.mgr ? root.mgr.dateText : ""
        }
    }
}
