import QtQuick 2.15
import TextManager 1.0

// A label as this screen has them. Where a text is too long, its letters get smaller; then the short text is taken.
DeviceText {
    color: Theme.text
    font.pixelSize: 18
    fontSizeMode: Text.HorizontalFit
    minimumPixelSize: 12
    elide: Text.ElideRight
    textFormat: Text.PlainText
    verticalAlignment: Text.AlignVCenter
}
