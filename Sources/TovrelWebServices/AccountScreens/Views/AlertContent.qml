import QtQuick
import Tovrel.AccountScreens

/// What an alert says and the buttons to answer it.
FocusScope {
    id: content

    required property string title
    required property string message
    /// Maps of "label" and "style", the primary one first.
    required property var buttons

    signal buttonPressed(int index)

    objectName: "alert"
    implicitHeight: words.implicitHeight + 36 + choices.implicitHeight
    LayoutMirroring.enabled: Theme.isRightToLeft
    LayoutMirroring.childrenInherit: true
    Accessible.role: Accessible.AlertMessage
    Accessible.name: content.title
    Accessible.description: content.message
    Keys.onPressed: event => event.accepted = area.scrollBy(event.key)

    function focusSafeChoice() {
        const safe = choices.second !== null && primary.style !== "cancel" ? secondary : primary;
        safe.forceActiveFocus(Qt.PopupFocusReason);
    }

    ScrollArea {
        id: area

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.bottom: choices.top
        contentHeight: words.implicitHeight + 36

        Column {
            id: words

            x: Theme.spacing
            y: 20
            width: area.width - 2 * Theme.spacing
            spacing: 6

            ScreenText {
                objectName: "alertTitle"
                width: parent.width
                text: content.title
                wantedFont: Theme.headlineFont
                color: Theme.text
                horizontalAlignment: Text.AlignHCenter
                Accessible.role: Accessible.Heading
            }

            ScreenText {
                objectName: "alertMessage"
                width: parent.width
                text: content.message
                wantedFont: Theme.footnoteFont
                color: Theme.text
                horizontalAlignment: Text.AlignHCenter
                Accessible.role: Accessible.StaticText
            }
        }
    }

    Item {
        id: choices

        readonly property var first: content.buttons.length > 0 ? content.buttons[0] : null
        readonly property var second: content.buttons.length > 1 ? content.buttons[1] : null

        /// Side by side where the words fit, the safe choice leading; else below each other, the safe choice last.
        readonly property bool isRow: second !== null && Math.max(primary.implicitWidth, secondary.implicitWidth) <= width / 2

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        implicitHeight: {
            if (isRow) {
                return Math.max(primary.implicitHeight, secondary.implicitHeight);
            }
            return primary.implicitHeight + (second !== null ? secondary.implicitHeight : 0);
        }

        Rectangle {
            width: parent.width
            height: 1
            color: Theme.separator
        }

        Rectangle {
            x: choices.isRow ? Math.round(parent.width / 2) : 0
            y: choices.isRow ? 0 : primary.height
            width: choices.isRow ? 1 : parent.width
            height: choices.isRow ? parent.height : 1
            visible: choices.second !== null
            color: Theme.separator
        }

        // Readers and the Tab key go by the order of these two, which is therefore that of the eye.
        Item {
            id: firstPlace

            anchors.fill: parent
        }

        Item {
            id: lastPlace

            anchors.fill: parent
        }

        AlertButton {
            id: primary

            objectName: "primaryButton"
            parent: choices.isRow ? lastPlace : firstPlace
            x: choices.isRow && !Theme.isRightToLeft ? parent.width / 2 : 0
            width: choices.isRow ? parent.width / 2 : parent.width
            height: choices.isRow ? parent.height : implicitHeight
            text: choices.first ? choices.first.label : ""
            style: choices.first ? choices.first.style : "default"
            KeyNavigation.left: secondary.visible ? secondary : null
            KeyNavigation.right: secondary.visible ? secondary : null
            onClicked: content.buttonPressed(0)
        }

        AlertButton {
            id: secondary

            objectName: "secondaryButton"
            parent: choices.isRow ? firstPlace : lastPlace
            x: choices.isRow && Theme.isRightToLeft ? parent.width / 2 : 0
            y: choices.isRow ? 0 : primary.height
            width: choices.isRow ? parent.width / 2 : parent.width
            height: choices.isRow ? parent.height : implicitHeight
            visible: choices.second !== null
            text: choices.second ? choices.second.label : ""
            style: choices.second ? choices.second.style : "cancel"
            KeyNavigation.left: primary
            KeyNavigation.right: primary
            onClicked: content.buttonPressed(1)
        }
    }
}
