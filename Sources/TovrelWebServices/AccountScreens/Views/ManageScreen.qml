pragma ComponentBehavior: Bound

import QtQuick
import Tovrel.AccountScreens

ManageScreenItem {
    id: screen

    readonly property bool isVerticalRegular: height >= Theme.regularHeight
    readonly property bool hasLargeTitle: titleMode === ManageScreenItem.Large || titleMode === ManageScreenItem.Automatic && isVerticalRegular

    focus: true
    LayoutMirroring.enabled: Theme.isRightToLeft
    LayoutMirroring.childrenInherit: true
    Keys.onPressed: event => event.accepted = !model.isLoading && area.scrollBy(event.key)

    LoadingModifier {
        anchors.fill: parent
        isLoading: screen.model.isLoading
        loadingView: screen.loadingView
        hasAlert: alert.visible

        Rectangle {
            anchors.fill: parent
            color: Theme.groupedBackground
        }

        Rectangle {
            id: bar

            objectName: "navigationBar"
            width: parent.width
            height: screen.hasLargeTitle ? 0 : Math.max(Theme.controlHeight, barTitle.implicitHeight + 16)
            visible: !screen.hasLargeTitle
            color: Theme.row

            ScreenText {
                id: barTitle

                objectName: "inlineTitle"
                anchors.centerIn: parent
                width: parent.width - 2 * Theme.spacing
                text: ScreenEnvironment.manageTitle
                wantedFont: Theme.headlineFont
                color: Theme.text
                horizontalAlignment: Text.AlignHCenter
                Accessible.role: Accessible.Heading
            }

            Rectangle {
                anchors.bottom: parent.bottom
                width: parent.width
                height: 1
                color: Theme.separator
            }
        }

        ScrollArea {
            id: area

            objectName: "scrollArea"
            anchors.top: bar.bottom
            anchors.bottom: parent.bottom
            width: parent.width
            contentHeight: list.height + 2 * 24

            Column {
                id: list

                objectName: "list"
                x: Math.round((area.width - width) / 2)
                y: 24
                width: Math.min(640, area.width - 2 * Theme.spacing)
                spacing: 24

                ScreenText {
                    objectName: "largeTitle"
                    width: parent.width
                    leftPadding: Theme.spacing
                    rightPadding: Theme.spacing
                    visible: screen.hasLargeTitle
                    text: ScreenEnvironment.manageTitle
                    wantedFont: Theme.largeTitleFont
                    color: Theme.text
                    horizontalAlignment: Text.AlignLeft
                    Accessible.role: Accessible.Heading
                }

                Repeater {
                    // A count, so that a section stays, and keeps the focus, when its texts change.
                    model: screen.model.sectionList.length

                    Column {
                        id: section

                        required property int index
                        readonly property var content: screen.model.sectionList[index]
                        readonly property bool isConsent: content.kind === "consent"

                        width: list.width
                        spacing: 8

                        ScreenText {
                            objectName: "sectionTitle"
                            width: parent.width
                            leftPadding: Theme.spacing
                            rightPadding: Theme.spacing
                            text: section.content.title
                            wantedFont: Theme.footnoteFont
                            color: Theme.secondaryText
                            horizontalAlignment: Text.AlignLeft
                            Accessible.role: Accessible.Heading
                        }

                        Rectangle {
                            width: parent.width
                            height: rows.height
                            radius: Theme.boxRadius
                            color: Theme.row

                            Column {
                                id: rows

                                width: parent.width

                                Repeater {
                                    model: section.content.items.length

                                    Column {
                                        id: row

                                        required property int index
                                        readonly property var item: section.content.items[index]

                                        width: rows.width

                                        Rectangle {
                                            x: Theme.isRightToLeft ? 0 : Theme.spacing
                                            width: parent.width - Theme.spacing
                                            height: 1
                                            visible: row.index > 0
                                            color: Theme.separator
                                        }

                                        SwitchRow {
                                            objectName: "consentSwitch"
                                            width: parent.width
                                            visible: section.isConsent
                                            topPadding: 8
                                            bottomPadding: 8
                                            text: row.item.title
                                            font: screen.marketingConsentFont
                                            textColor: Theme.text
                                            toggleColor: screen.toggleColor
                                            checked: screen.model.userConsentedToEmailUsage
                                            onToggled: screen.model.userConsentedToEmailUsage = checked
                                        }

                                        ActionRow {
                                            objectName: "logoutRow"
                                            width: parent.width
                                            visible: !section.isConsent && row.item.index === 0
                                            text: row.item.title
                                            font: screen.logoutFont
                                            textColor: screen.logoutColor
                                            onClicked: screen.model.onLogoutRowTap()
                                        }

                                        ActionRow {
                                            objectName: "deleteAccountRow"
                                            width: parent.width
                                            visible: !section.isConsent && row.item.index === 1
                                            text: row.item.title
                                            font: screen.deleteAccountFont
                                            textColor: screen.deleteAccountColor
                                            onClicked: screen.model.onDeleteAccountRowTap()
                                        }
                                    }
                                }
                            }
                        }
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
