import QtQuick
import QtQuick.Templates as T
import Tovrel.AccountScreens

/// A row of a list that does something.
T.Button {
    id: control

    required property color textColor
    property real ringRadius: Theme.boxRadius

    leftPadding: Theme.spacing
    rightPadding: Theme.spacing
    topPadding: 12
    bottomPadding: 12
    implicitHeight: Math.max(Theme.controlHeight, implicitContentHeight + topPadding + bottomPadding)

    Accessible.role: Accessible.Button
    Accessible.name: text
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

    contentItem: ScreenText {
        text: control.text
        wantedFont: control.font
        color: control.textColor
        horizontalAlignment: Text.AlignLeft
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }

    background: Rectangle {
        color: control.down ? Theme.rowPressed : "transparent"
        radius: control.ringRadius

        FocusRing {
            control: control
            gap: -2
            radius: Math.max(0, control.ringRadius - 2)
        }
    }
}
