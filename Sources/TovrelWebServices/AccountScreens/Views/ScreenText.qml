import QtQuick

/// Text that wraps between words. Where a word is wider than the text may be, all of it is drawn smaller, down to half.
Text {
    id: view

    required property font wantedFont

    readonly property real widestWord: text.split(/\s+/).reduce((widest, word) => Math.max(widest, metrics.advanceWidth(word)), 1)
    readonly property real room: width - leftPadding - rightPadding

    textFormat: Text.PlainText
    font.family: wantedFont.family
    font.weight: wantedFont.weight
    font.pixelSize: Math.max(Math.ceil(wantedFont.pixelSize / 2), Math.floor(wantedFont.pixelSize * Math.min(1, room / widestWord)))
    wrapMode: Text.Wrap
    Accessible.name: text

    FontMetrics {
        id: metrics

        font: view.wantedFont
    }
}
