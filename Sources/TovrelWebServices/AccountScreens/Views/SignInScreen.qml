pragma ComponentBehavior: Bound

import QtQuick
import Tovrel.AccountScreens

SignInScreenItem {
    id: screen

    readonly property bool isHorizontalRegular: width >= Theme.regularWidth
    readonly property bool isVerticalRegular: height >= Theme.regularHeight
    /// One below the other over the whole height: upright phones.
    readonly property bool isVerticalRegularMode: isVerticalRegular && !isHorizontalRegular
    /// A column in the middle: tablets and desktops. What is neither is compact: phones on their side.
    readonly property bool isHorizontalRegularMode: isVerticalRegular && isHorizontalRegular
    readonly property bool isCompactMode: !isVerticalRegular
    readonly property int textAlignment: isCompactMode ? Text.AlignLeft : Text.AlignHCenter

    focus: true
    LayoutMirroring.enabled: Theme.isRightToLeft
    LayoutMirroring.childrenInherit: true
    Keys.onEscapePressed: event => {
        event.accepted = hasCloseButton && !model.isLoading;
        if (event.accepted) {
            model.onCloseButtonTap();
        }
    }
    Keys.onPressed: event => event.accepted = !model.isLoading && area.scrollBy(event.key)

    LoadingModifier {
        anchors.fill: parent
        isLoading: screen.model.isLoading
        loadingView: screen.loadingView
        hasAlert: alert.visible

        Rectangle {
            anchors.fill: parent
            color: Theme.background
        }

        HostedView {
            objectName: "background"
            anchors.fill: parent
            source: screen.backgroundView
            fills: true
        }

        Item {
            id: closeRow

            // Where the height is short, the row goes with what is scrolled, beside the title.
            y: screen.isCompactMode ? -area.contentY : 0
            z: 1
            width: parent.width
            height: screen.hasCloseButton ? 54 : 0
            visible: screen.hasCloseButton

            CloseButton {
                objectName: "closeButton"
                anchors.right: parent.right
                anchors.rightMargin: Theme.margin - reach
                y: Theme.spacing - reach
                foreground: screen.closeForegroundColor
                fill: screen.closeBackgroundColor
                onClicked: screen.model.onCloseButtonTap()
                onActiveFocusChanged: {
                    if (activeFocus && screen.isCompactMode) {
                        area.scrollTo(0);
                    }
                }
            }
        }

        ScrollArea {
            id: area

            objectName: "scrollArea"
            y: screen.isCompactMode ? 0 : closeRow.height
            width: parent.width
            height: parent.height - y
            contentHeight: content.height

            Item {
                id: content

                readonly property real topPadding: screen.isCompactMode ? 16 : 24
                readonly property real bottomPadding: screen.isVerticalRegularMode ? 80 : topPadding
                readonly property real gap: screen.isHorizontalRegularMode ? 64 : 16
                readonly property real wanted: texts.height + gap + controls.height
                readonly property real columnWidth: {
                    const room = area.width - 2 * Theme.margin;
                    if (screen.isHorizontalRegularMode) {
                        return Math.min(400, room);
                    }
                    return screen.isCompactMode ? Math.max(280, room) : room;
                }

                width: area.width
                height: Math.max(area.height, topPadding + wanted + bottomPadding)

                Column {
                    id: texts

                    objectName: "texts"
                    x: Math.round((content.width - width) / 2)
                    y: screen.isHorizontalRegularMode ? Math.round((content.height - content.wanted) / 2) : content.topPadding
                    width: content.columnWidth
                    spacing: 16

                    Item {
                        objectName: "icon"
                        width: parent.width
                        height: hasImage ? iconImage.height : iconView.implicitHeight
                        visible: hasImage || !iconView.isEmpty && iconView.implicitHeight > 0

                        readonly property bool hasImage: iconImage.status === Image.Ready

                        Image {
                            id: iconImage

                            objectName: "iconImage"
                            x: iconView.placed(width)
                            width: Math.max(40, Math.min(80, Math.max(implicitWidth, implicitHeight)))
                            height: width
                            source: screen.iconImage
                            fillMode: Image.PreserveAspectFit
                            smooth: true
                            mipmap: true
                        }

                        HostedView {
                            id: iconView

                            objectName: "iconView"
                            x: iconView.placed(width)
                            width: implicitWidth
                            height: implicitHeight
                            source: screen.iconView

                            /// Where something of this width goes: in the middle, or to the leading edge.
                            function placed(itemWidth: real): real {
                                if (!screen.isCompactMode) {
                                    return Math.round((texts.width - itemWidth) / 2);
                                }
                                return Theme.isRightToLeft ? texts.width - itemWidth : 0;
                            }
                        }
                    }

                    ScreenText {
                        objectName: "title"
                        x: Theme.isRightToLeft ? parent.width - width : 0
                        width: parent.width - (screen.isCompactMode && screen.hasCloseButton ? 46 : 0)
                        text: screen.model.titleText
                        wantedFont: screen.titleFont
                        color: screen.titleColor
                        horizontalAlignment: screen.textAlignment
                        Accessible.role: Accessible.Heading
                    }

                    ScreenText {
                        objectName: "description"
                        width: parent.width
                        text: screen.model.descriptionText
                        wantedFont: screen.bodyFont
                        color: screen.bodyColor
                        horizontalAlignment: screen.textAlignment
                        Accessible.role: Accessible.StaticText
                    }
                }

                Column {
                    id: controls

                    objectName: "controls"
                    x: texts.x
                    y: {
                        if (screen.isVerticalRegularMode) {
                            return content.height - content.bottomPadding - height;
                        }
                        return texts.y + texts.height + content.gap;
                    }
                    width: content.columnWidth
                    spacing: 16

                    Rectangle {
                        objectName: "consentBox"
                        width: parent.width
                        height: consentSwitch.implicitHeight
                        visible: screen.isSignUp
                        radius: Theme.boxRadius
                        color: screen.consentBackgroundColor
                        border.width: 1
                        border.color: screen.consentBorderColor

                        SwitchRow {
                            id: consentSwitch

                            objectName: "consentSwitch"
                            width: parent.width
                            text: screen.model.consentText
                            font: screen.consentTextFont
                            textColor: screen.consentTextColor
                            toggleColor: screen.toggleColor
                            checked: screen.model.userConsentedToEmailUsage
                            onToggled: screen.model.userConsentedToEmailUsage = checked
                        }
                    }

                    HostedView {
                        objectName: "signInPlace"
                        width: parent.width
                        height: screen.buttonHeight
                        source: screen.buttonView
                        fills: true
                    }
                }
            }
        }
    }

    AlertDialog {
        id: alert

        isScreenShown: screen.isShown
        alertId: screen.model.alertId
        title: screen.model.alertTitle
        message: screen.model.alertMessage
        buttons: screen.model.alertButtons
        onButtonPressed: (id, index) => screen.model.pressAlertButton(id, index)
        onClosedByUser: id => screen.model.closeAlert(id)
    }
}
