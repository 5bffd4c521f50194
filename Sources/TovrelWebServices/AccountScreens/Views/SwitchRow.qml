import QtQuick
import QtQuick.Templates as T
import Tovrel.AccountScreens

/// A switch at the trailing edge of its label. A T.Switch would leak a little for each one made while a screen reader
/// runs.
T.Button {
    id: control

    required property color toggleColor
    required property color textColor
    property real ringRadius: Theme.boxRadius

    readonly property real labelInset: indicator.width + spacing

    checkable: true
    padding: Theme.spacing
    spacing: 12
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Math.max(indicator.height, implicitContentHeight) + topPadding + bottomPadding

    Accessible.role: Accessible.CheckBox
    Accessible.name: text
    Accessible.checkable: true
    Accessible.checked: checked
    Accessible.focusable: enabled
    Accessible.ignored: !enabled
    Accessible.onPressAction: control.flip()
    Accessible.onToggleAction: control.flip()
    Keys.onReturnPressed: control.flip()
    Keys.onEnterPressed: control.flip()

    function flip() {
        if (enabled) {
            toggle();
            toggled();
        }
    }

    contentItem: ScreenText {
        leftPadding: Theme.isRightToLeft ? control.labelInset : 0
        rightPadding: Theme.isRightToLeft ? 0 : control.labelInset
        text: control.text
        wantedFont: control.font
        color: control.textColor
        horizontalAlignment: Text.AlignLeft
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }

    indicator: SwitchTrack {
        objectName: "track"
        x: Theme.isRightToLeft ? control.leftPadding : control.width - width - control.rightPadding
        y: (control.height - height) / 2
        isOn: control.checked
        color: isOn ? control.toggleColor : Theme.switchOff
    }

    background: Item {
        FocusRing {
            control: control
            gap: -2
            radius: Math.max(0, control.ringRadius - 2)
        }
    }
}
