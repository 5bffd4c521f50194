import QtQuick
import QtQuick.Templates as T
import Tovrel.AccountScreens

/// Goes around a control that the keyboard has reached.
Rectangle {
    required property T.Control control
    property real gap: 5

    anchors.fill: parent
    anchors.margins: -gap
    visible: control.visualFocus
    color: "transparent"
    border.width: 3
    border.color: Theme.focusRing
}
