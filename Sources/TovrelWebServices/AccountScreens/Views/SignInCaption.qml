import QtQuick
import Tovrel.AccountScreens

/// The logo and the words on a sign-in button. Words that do not fit are drawn smaller.
Item {
    id: view

    required property string text
    required property color foreground
    required property viewSource artwork
    required property real buttonHeight
    /// How wide the logo and the words may be together.
    required property real room

    readonly property int titleSize: Math.round(buttonHeight * 0.43)
    readonly property real gap: Math.round(buttonHeight * 0.14)

    implicitWidth: Math.ceil(natural.advanceWidth) + titleSize + gap + 2
    implicitHeight: titleSize

    TextMetrics {
        id: natural

        text: view.text
        font.pixelSize: view.titleSize
        font.weight: Font.Medium
    }

    Row {
        objectName: "signInCaption"
        anchors.centerIn: parent
        spacing: view.gap

        Item {
            objectName: "artworkSlot"
            anchors.verticalCenter: parent.verticalCenter
            width: caption.font.pixelSize
            height: width

            HostedView {
                id: chosen

                anchors.fill: parent
                source: view.artwork
                fills: true
            }

            NeutralFigure {
                anchors.fill: parent
                visible: chosen.isEmpty
                color: view.foreground
            }
        }

        Text {
            id: caption

            objectName: "caption"
            anchors.verticalCenter: parent.verticalCenter
            text: view.text
            textFormat: Text.PlainText
            color: view.foreground
            font.pixelSize: Math.max(9, Math.floor(view.titleSize * Math.min(1, view.room / view.implicitWidth)))
            font.weight: Font.Medium
            Accessible.ignored: true
        }
    }
}
