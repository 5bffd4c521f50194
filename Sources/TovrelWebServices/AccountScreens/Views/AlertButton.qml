import QtQuick
import QtQuick.Templates as T
import Tovrel.AccountScreens

T.Button {
    id: control

    /// "default", "cancel" or "destructive"
    required property string style

    padding: 8
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Math.max(Theme.controlHeight, implicitContentHeight + topPadding + bottomPadding)
    font: style === "cancel" ? Theme.headlineFont : Theme.bodyFont

    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.focusable: true
    Accessible.onPressAction: control.press()
    Keys.onReturnPressed: control.press()
    Keys.onEnterPressed: control.press()

    function press() {
        if (enabled) {
            clicked();
        }
    }

    contentItem: Text {
        text: control.text
        textFormat: Text.PlainText
        font: control.font
        color: control.style === "destructive" ? Theme.destructive : Theme.accent
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }

    background: Item {
        // Stays within the round corners of the alert.
        Rectangle {
            anchors.fill: parent
            anchors.margins: 3
            radius: Theme.alertRadius - 3
            color: control.down ? Theme.alertPressed : "transparent"
        }

        // The button that Return presses shows itself even when the pointer brought the alert up.
        FocusRing {
            control: control
            visible: control.activeFocus
            gap: -3
            radius: Theme.alertRadius - 3
        }
    }
}
