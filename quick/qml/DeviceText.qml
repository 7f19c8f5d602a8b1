import QtQuick 2.15
import TextManager 1.0

// A label: the text at a URL in the language that is shown, or the short one where the full one does not fit.
// Its property "text" is not to be set.
Text {
    id: label

    // The text URL.
    property alias url: content.url
    // The arguments of the text: { "days": 12 } for a message, { "1": 12 } for "%1".
    property alias args: content.args
    // Whether the short text is shown.
    readonly property alias isShort: content.isShort
    // How wide the label wants to be with the full text, also while the short one is shown: what a layout should
    // prefer, so that the full text comes back when there is room.
    readonly property alias fullWidth: content.fullWidth

    Component.onCompleted: content.start()

    DeviceTextContent {
        id: content
        label: label
    }
}
