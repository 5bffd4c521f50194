pragma Singleton

import QtQuick
import Tovrel.AccountScreens

/// What all account screens look like: their own colours, measures and fonts. What a host configures is not here.
QtObject {
    readonly property bool isDark: ScreenEnvironment.isDark
    readonly property bool isRightToLeft: ScreenEnvironment.isRightToLeft
    readonly property real textScale: ScreenEnvironment.textScale

    readonly property color background: isDark ? "#000000" : "#FFFFFF"
    readonly property color groupedBackground: isDark ? "#000000" : "#F2F2F7"
    readonly property color row: isDark ? "#1C1C1E" : "#FFFFFF"
    readonly property color rowPressed: isDark ? "#2C2C2E" : "#E9E9EE"
    readonly property color separator: isDark ? "#48484A" : "#C6C6C8"
    readonly property color text: isDark ? "#FFFFFF" : "#000000"
    readonly property color secondaryText: isDark ? "#A1A1A8" : "#5F5F66"
    readonly property color accent: ScreenEnvironment.accentColor
    readonly property color destructive: ScreenEnvironment.destructiveColor
    readonly property color focusRing: accent
    readonly property color switchOff: isDark ? "#77777D" : "#85858B"
    readonly property color switchThumb: "#FFFFFF"
    readonly property color alertBackground: isDark ? "#242427" : "#FFFFFF"
    readonly property color alertPressed: isDark ? "#313134" : "#E4E4EA"
    readonly property color scrim: isDark ? "#99000000" : "#66000000"
    readonly property color scrollMark: isDark ? "#8E8E93" : "#77777C"

    readonly property font largeTitleFont: ScreenEnvironment.largeTitleFont
    readonly property font headlineFont: ScreenEnvironment.headlineFont
    readonly property font bodyFont: ScreenEnvironment.bodyFont
    readonly property font footnoteFont: ScreenEnvironment.footnoteFont

    readonly property real spacing: 16
    readonly property real margin: 32
    readonly property real controlHeight: 44
    readonly property real boxRadius: 12
    readonly property real loadingRadius: 18
    readonly property real alertRadius: 14

    /// From this width on the horizontal size class is regular, and from this height on the vertical one.
    readonly property real regularWidth: 600
    readonly property real regularHeight: 500
}
