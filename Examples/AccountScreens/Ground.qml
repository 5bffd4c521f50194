import QtQuick

/// The ground of the branded sign-in screen.
Rectangle {
    gradient: Gradient {
        GradientStop {
            position: 0
            color: "#6B3FA0"
        }
        GradientStop {
            position: 1
            color: "#2A1245"
        }
    }
}
