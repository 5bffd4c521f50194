import QtQuick
import QtQuick.Templates as T
import Tovrel.AccountScreens

SignInButtonItem {
    id: view

    implicitWidth: Math.max(140, control.implicitContentWidth + 2 * control.sideMargin)
    implicitHeight: Theme.controlHeight

    T.Button {
        id: control

        readonly property bool isBlack: view.button ? view.button.isBlack : true
        readonly property color foreground: isBlack ? "#FFFFFF" : "#000000"
        readonly property real sideMargin: Math.max(8, height / 10)

        objectName: "signInButton"
        anchors.centerIn: parent
        width: Math.max(140, view.width)
        height: Math.max(30, view.height)
        activeFocusOnTab: true
        text: view.button ? view.button.caption : ""

        Accessible.role: Accessible.Button
        Accessible.name: text
        Accessible.focusable: enabled
        Accessible.ignored: !enabled
        Accessible.onPressAction: control.press()
        Keys.onReturnPressed: control.press()
        Keys.onEnterPressed: control.press()
        onClicked: view.button.tap()

        function press() {
            if (enabled) {
                clicked();
            }
        }

        contentItem: SignInCaption {
            text: control.text
            foreground: control.foreground
            artwork: view.artwork
            buttonHeight: control.height
            room: control.width - 2 * control.sideMargin
        }

        background: Rectangle {
            objectName: "signInSurface"
            radius: Math.min(view.button ? view.button.cornerRadius : 0, height / 2)
            color: control.isBlack ? "#000000" : "#FFFFFF"

            Rectangle {
                anchors.fill: parent
                radius: parent.radius
                visible: control.down
                color: control.isBlack ? "#33FFFFFF" : "#22000000"
            }

            FocusRing {
                control: control
                radius: parent.radius + gap
            }
        }
    }
}
