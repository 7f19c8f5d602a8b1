import QtQuick 2.15
import QtQuick.Layouts 1.15

// A button with a text, as wide as the text in the current language, or less where the row is full.
Rectangle {
    id: button

    property alias url: label.url
    property bool isActive: false
    property color activeColor: Theme.accent
    signal clicked()

    Layout.fillWidth: true
    Layout.minimumWidth: 100
    Layout.maximumWidth: implicitWidth
    implicitWidth: Math.max(120, label.implicitWidth + 36)
    implicitHeight: 56
    radius: Theme.radius
    color: isActive ? activeColor : touch.pressed ? Theme.line : Theme.raised
    border.color: isActive ? activeColor : Theme.line

    ScreenText {
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
