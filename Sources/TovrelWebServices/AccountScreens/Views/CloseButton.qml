pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Tovrel.AccountScreens

/// A cross on a disc of 30 points, within a target that a finger hits.
T.Button {
    id: control

    required property color foreground
    required property color fill

    /// How far the target reaches beyond the disc.
    readonly property real reach: 7

    implicitWidth: 30 + 2 * reach
    implicitHeight: 30 + 2 * reach
    leftInset: reach
    rightInset: reach
    topInset: reach
    bottomInset: reach

    Accessible.role: Accessible.Button
    Accessible.name: ScreenEnvironment.closeText
    Accessible.focusable: enabled
    Accessible.ignored: !enabled
    Accessible.onPressAction: control.press()
    Keys.onReturnPressed: control.press()
    Keys.onEnterPressed: control.press()

    function press() {
        if (enabled) {
            clicked();
        }
    }

    contentItem: Item {
        Repeater {
            model: [45, -45]

            Rectangle {
                required property real modelData

                anchors.centerIn: parent
                width: 15
                height: 2.5
                radius: height / 2
                rotation: modelData
                antialiasing: true
                color: control.foreground
            }
        }
    }

    background: Rectangle {
        objectName: "disc"
        radius: width / 2
        color: control.fill
        opacity: control.down ? 0.7 : 1

        FocusRing {
            control: control
            radius: width / 2
        }
    }
}
