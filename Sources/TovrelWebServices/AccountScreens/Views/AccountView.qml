import QtQuick
import Tovrel.AccountScreens

AccountViewItem {
    id: screen

    focus: true

    Rectangle {
        anchors.fill: parent
        color: Theme.background
    }

    HostedView {
        id: place

        objectName: "content"
        anchors.fill: parent
        source: screen.content
        onContentChanged: screen.follow(place)
    }
}
