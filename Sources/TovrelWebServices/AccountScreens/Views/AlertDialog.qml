import QtQuick
import QtQuick.Templates as T
import Tovrel.AccountScreens

/// Shows an alert over the whole window for as long as there is one.
T.Dialog {
    id: popup

    /// Whether the screen that the alert belongs to can be seen.
    required property bool isScreenShown
    /// The identity of the alert; empty for none.
    required property string alertId
    required property string message
    /// Maps of "label" and "style", the primary one first.
    required property var buttons

    readonly property bool isPresented: isScreenShown && alertId !== ""
    property string shownId
    /// What has the keyboard's focus before the alert, and whether that shows.
    property Item focusedBefore
    property bool wasFocusVisible

    signal buttonPressed(string id, int index)
    signal closedByUser(string id)

    parent: T.Overlay.overlay
    x: parent ? Math.round((parent.width - width) / 2) : 0
    y: parent ? Math.round((parent.height - height) / 2) : 0
    width: parent ? Math.min(300 * Math.max(1, Math.min(Theme.textScale, 1.5)), parent.width - 32) : 0
    height: parent ? Math.min(implicitContentHeight, parent.height - 32) : 0
    modal: true
    focus: true
    closePolicy: T.Popup.CloseOnEscape

    onIsPresentedChanged: isPresented ? present() : close()
    onAlertIdChanged: if (isPresented) present()
    onClosed: {
        // A window without the parts of an application's window leaves the focus nowhere.
        if (focusedBefore) {
            focusedBefore.forceActiveFocus(wasFocusVisible ? Qt.TabFocusReason : Qt.PopupFocusReason);
        }
        focusedBefore = null;
        if (shownId !== "" && isScreenShown) {
            closedByUser(shownId);
        }
    }

    function present() {
        shownId = alertId;
        if (!visible) {
            focusedBefore = parent.Window.activeFocusItem;
            wasFocusVisible = (focusedBefore as T.Control)?.visualFocus ?? false;
        }
        open();
        // The buttons of an alert that replaces another one come a moment later.
        settled.restart();
    }

    function takeFocus() {
        if (opened) {
            (contentItem as AlertContent).focusSafeChoice();
            AlertAnnouncer.announce(contentItem);
        }
    }

    T.Overlay.modal: Rectangle {
        color: Theme.scrim
    }

    background: Rectangle {
        objectName: "alertSurface"
        radius: Theme.alertRadius
        color: Theme.alertBackground
        border.width: Theme.isDark ? 1 : 0
        border.color: Theme.separator
    }

    contentItem: AlertContent {
        title: popup.title
        message: popup.message
        buttons: popup.buttons
        onButtonPressed: index => popup.buttonPressed(popup.shownId, index)
    }

    Timer {
        id: settled

        interval: 0
        onTriggered: popup.takeFocus()
    }
}
