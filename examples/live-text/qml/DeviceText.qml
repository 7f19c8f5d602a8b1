import QtQuick 2.15

// A label: the text at a URL in the current language, with a value in the place of its %1. Where the
// text is too long, its letters get smaller.
Text {
    property string url
    property string value
    readonly property QtObject source: texts.of(url)

    // The mark makes a text without a letter, such as a percentage, run from right to left, too.
    readonly property string mark: texts.isRightToLeft ? "\u200f" : ""

    text: mark + source.currentText.replace("%1", value)
    color: Theme.text
    font.pixelSize: 18
    fontSizeMode: Text.HorizontalFit
    minimumPixelSize: 12
    elide: Text.ElideRight
    textFormat: Text.PlainText
    verticalAlignment: Text.AlignVCenter
}
