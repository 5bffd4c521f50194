import QtQuick
import Tovrel.AccountScreens

LoadingViewItem {
    id: view

    Accessible.role: Accessible.ProgressBar
    Accessible.name: ScreenEnvironment.loadingText

    Rectangle {
        anchors.fill: parent
        color: "#000000"
        opacity: 0.1
    }

    Rectangle {
        objectName: "loadingBox"
        anchors.centerIn: parent
        width: indicator.implicitWidth + 80
        height: indicator.implicitHeight + 80
        radius: Theme.loadingRadius
        color: view.backgroundColor

        BusyIndicator {
            id: indicator

            anchors.centerIn: parent
            scale: 1.5
            tint: view.tintColor
        }
    }
}
