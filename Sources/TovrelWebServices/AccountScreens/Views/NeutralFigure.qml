import QtQuick

/// A head above shoulders: somebody, whoever it is.
Item {
    id: figure

    required property color color

    Rectangle {
        anchors.horizontalCenter: parent.horizontalCenter
        width: figure.width * 0.46
        height: width
        radius: width / 2
        color: figure.color
    }

    Item {
        anchors.bottom: parent.bottom
        width: parent.width
        height: figure.height * 0.44
        clip: true

        Rectangle {
            anchors.horizontalCenter: parent.horizontalCenter
            width: figure.width * 0.86
            height: width
            radius: width / 2
            color: figure.color
        }
    }
}
