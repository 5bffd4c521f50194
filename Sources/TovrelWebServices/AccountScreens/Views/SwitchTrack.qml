import QtQuick
import Tovrel.AccountScreens

/// What of a switch shows whether it is on.
Rectangle {
    id: track

    required property bool isOn

    width: 51
    height: 31
    radius: height / 2

    Rectangle {
        x: track.isOn !== Theme.isRightToLeft ? track.width - width - 2 : 2
        y: 2
        width: 27
        height: 27
        radius: height / 2
        color: Theme.switchThumb
    }
}
