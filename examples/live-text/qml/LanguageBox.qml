import QtQuick 2.15
import TextManager 1.0

// The languages by their own names; a dot marks the device's. A touch chooses one, whatever the device
// says, and a second touch gives the choice back to the device.
Rectangle {
    implicitWidth: row.implicitWidth + 8
    implicitHeight: 48
    radius: height / 2
    color: Theme.surface
    border.color: Theme.line

    Row {
        id: row
        anchors.centerIn: parent

        Repeater {
            model: Texts.languages

            Rectangle {
                id: button

                required property string modelData
                readonly property bool isShown: modelData === Texts.language
                readonly property bool isDevice: modelData === Texts.deviceLanguage

                width: name.implicitWidth + 30
                height: 40
                radius: height / 2
                color: isShown ? Theme.accent : "transparent"

                Text {
                    id: name
                    anchors.centerIn: parent
                    text: Texts.nameOf(button.modelData)
                    color: parent.isShown ? Theme.contrast : Theme.faint
                    font.pixelSize: 15
                    font.weight: parent.isShown ? Font.DemiBold : Font.Normal
                }
                Rectangle {
                    visible: parent.isDevice
                    anchors { horizontalCenter: parent.horizontalCenter; bottom: parent.bottom; bottomMargin: 3 }
                    width: 5
                    height: 5
                    radius: 2.5
                    color: name.color
                }
                MouseArea {
                    anchors.fill: parent
                    onClicked: Texts.chosenLanguage =
                               button.modelData === Texts.chosenLanguage ? "" : button.modelData
                }
            }
        }
    }
}
