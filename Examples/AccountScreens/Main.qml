pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import AccountScreensDemo
import Tovrel.AccountScreens

/// An application that has an account: its settings at the left, the account's screens at the right.
Window {
    id: window

    required property AccountHost host
    readonly property color textColor: host.isDark ? "#FFFFFF" : "#000000"

    width: 900
    height: 680
    minimumWidth: 620
    minimumHeight: 320
    visible: true
    title: "Account screens"
    color: host.isDark ? "#242427" : "#E9E9EE"

    component Caption: Text {
        color: window.textColor
        font.pixelSize: 13
    }

    ColumnLayout {
        id: settings

        anchors.left: parent.left
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        anchors.margins: 16
        width: 220
        spacing: 6

        Caption {
            text: window.host.isLoggedIn ? "Somebody is logged in." : "Nobody is logged in."
            font.bold: true
        }

        Button {
            Layout.fillWidth: true
            text: account.visible ? "Leave the account" : "Show the account"
            onClicked: account.visible = !account.visible
        }

        Caption {
            text: "Appearance"
        }

        ComboBox {
            Layout.fillWidth: true
            model: ["system", "light", "dark"]
            onActivated: window.host.chooseAppearance(currentText)
        }

        Caption {
            text: "Language"
        }

        ComboBox {
            Layout.fillWidth: true
            model: window.host.languages
            onActivated: window.host.chooseLanguage(currentText)
        }

        Caption {
            text: "Text size"
        }

        ComboBox {
            Layout.fillWidth: true
            model: ["100 %", "150 %", "200 %"]
            onActivated: index => window.host.chooseTextSize([1, 1.5, 2][index])
        }

        Caption {
            text: "Styling, from the next time on"
        }

        ComboBox {
            Layout.fillWidth: true
            model: ["the library's", "branded"]
            onActivated: index => window.host.chooseStyling(index === 1)
        }

        Caption {
            Layout.fillWidth: true
            Layout.fillHeight: true
            text: window.host.journal
            wrapMode: Text.Wrap
            verticalAlignment: Text.AlignBottom
        }
    }

    Rectangle {
        anchors.left: settings.right
        anchors.leftMargin: 16
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        color: window.host.isDark ? "#000000" : "#FFFFFF"

        Caption {
            anchors.centerIn: parent
            text: "The application itself"
        }

        TovrelUserAccount {
            id: account

            anchors.fill: parent
            focus: true
            visible: false
            source: visible ? window.host.account : null
            onDismissed: visible = false
        }
    }
}
