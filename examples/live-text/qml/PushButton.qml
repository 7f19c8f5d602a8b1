import QtQuick 2.15

// A button with a text; its width is that of the text in the current language.
Rectangle {
    id: button

    property alias url: label.url
    property bool isActive: false
    property color activeColor: Theme.accent
    signal clicked()

    implicitWidth: Math.max(120, label.implicitWidth + 36)
    implicitHeight: 56
    radius: Theme.radius
    color: isActive ? activeColor : touch.pressed ? Theme.line : Theme.raised
    border.color: isActive ? activeColor : Theme.line

    DeviceText {
        id: label
        anchors.centerIn: parent
        width: Math.min(implicitWidth, parent.width - 16)
        color: button.isActive ? Theme.contrast : Theme.text
        font.weight: Font.DemiBold
    }
    MouseArea {
        id: touch
        anchors.fill: parent
        onClicked: button.clicked()
    }
}
