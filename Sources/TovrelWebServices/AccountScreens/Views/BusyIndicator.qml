pragma ComponentBehavior: Bound

import QtQuick

/// A wheel of eight spokes. It turns while it can be seen.
Item {
    id: indicator

    required property color tint

    implicitWidth: 20
    implicitHeight: 20

    Item {
        id: wheel

        objectName: "wheel"
        anchors.fill: parent

        Repeater {
            model: 8

            Rectangle {
                id: spoke

                required property int index

                x: (wheel.width - width) / 2
                width: 2.5
                height: wheel.height * 0.28
                radius: width / 2
                antialiasing: true
                color: indicator.tint
                opacity: 1 - (7 - spoke.index) * 0.11
                transform: Rotation {
                    origin.x: 1.25
                    origin.y: wheel.height / 2
                    angle: spoke.index * 45
                }
            }
        }

        NumberAnimation on rotation {
            from: 0
            to: 360
            duration: 1000
            loops: Animation.Infinite
            running: indicator.visible
        }
    }
}
