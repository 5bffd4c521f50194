import QtQuick

/// Text that wraps between words. Where a word is wider than the text may be, all of it is drawn smaller, down to half.
Text {
    id: view

    required property font wantedFont

    // The average is a property of the font's metrics: through it the words are measured again when the font changes.
    readonly property real widestWord: text.split(/\s+/).reduce((widest, word) => Math.max(widest, metrics.advanceWidth(word)), metrics.averageCharacterWidth)
    readonly property real room: width - leftPadding - rightPadding

    textFormat: Text.PlainText
    font.family: wantedFont.family
    font.weight: wantedFont.weight
    font.pixelSize: Math.max(Math.ceil(wantedFont.pixelSize / 2), Math.floor(wantedFont.pixelSize * Math.min(1, room / Math.ceil(widestWord + 1))))
    wrapMode: Text.Wrap
    Accessible.name: text
    Accessible.ignored: !enabled

    FontMetrics {
        id: metrics

        font: view.wantedFont
    }
}
