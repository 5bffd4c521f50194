import QtQuick

/// The brand's emblem: an open book.
Item {
    width: 64
    height: 48

    Repeater {
        model: 2

        Rectangle {
            required property int index

            x: index * 32 + (index === 0 ? 1 : -1)
            width: 32
            height: 48
            radius: 4
            color: index === 0 ? "#FFD166" : "#FFE3A3"
        }
    }
}
