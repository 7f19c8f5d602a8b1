import QtQuick 2.15

// A label: the text at a URL in the current language, with a value in the place of its %1.
Text {
    property string url
    property string value
    readonly property QtObject source: texts.of(url)

    // The mark makes a text without a letter, such as a percentage, run from right to left, too.
    readonly property string mark: texts.isRightToLeft ? "\u200f" : ""

    text: mark + (value === "" ? source.currentText : source.currentText.arg(value))
    color: Theme.text
    font.pixelSize: 18
    elide: Text.ElideRight
    textFormat: Text.PlainText
    verticalAlignment: Text.AlignVCenter
}
