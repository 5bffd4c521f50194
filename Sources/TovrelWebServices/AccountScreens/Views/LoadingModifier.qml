import QtQuick
import Tovrel.AccountScreens

/// Content that stands still, and is not there for screen readers, while something is in front of it: a loading view
/// while something runs, or an alert.
Item {
    id: modifier

    required property bool isLoading
    required property viewSource loadingView
    required property bool hasAlert
    default property alias content: place.data

    Item {
        id: place

        anchors.fill: parent
        enabled: !modifier.isLoading && !modifier.hasAlert
    }

    // What is disabled lets the pointer through to whatever is behind the screen.
    MouseArea {
        anchors.fill: parent
        visible: modifier.isLoading
        hoverEnabled: true
        acceptedButtons: Qt.AllButtons
        onWheel: wheel => wheel.accepted = true
    }

    HostedView {
        objectName: "loading"
        anchors.fill: parent
        visible: modifier.isLoading
        isActive: modifier.isLoading
        source: modifier.loadingView
    }
}
