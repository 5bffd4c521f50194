import QtQuick
import QtQuick.Templates as T
import Tovrel.AccountScreens

/// Content that stands still, and is not there for screen readers, while something is in front of it: a loading view
/// while something runs, or an alert.
Item {
    id: modifier

    required property bool isLoading
    required property viewSource loadingView
    required property bool hasAlert
    default property alias content: place.data

    readonly property bool isCovered: isLoading || hasAlert
    /// The control that had the focus visibly when the content was covered.
    property T.Control ringed

    // Disabling takes the focus away and enabling gives it back, but not how it came: a ring would be gone.
    onIsCoveredChanged: {
        if (isCovered) {
            const focused = Window.activeFocusItem as T.Control;
            ringed = focused?.visualFocus ? focused : null;
        }
        place.enabled = !isCovered;
        if (!isCovered && ringed?.activeFocus) {
            ringed.focusReason = Qt.TabFocusReason;
        }
    }

    Item {
        id: place

        anchors.fill: parent
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
