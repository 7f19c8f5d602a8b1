import QtQuick 2.15
import QtQuick.Layouts 1.15
import QtQuick.Window 2.15
import TextManager 1.0

Window {
    id: window

    property bool isAcknowledged: false
    property int mode: 0

    width: 1024
    height: 600
    visible: true
    color: Theme.background
    title: Texts.text("Settings/Ventilation")

    ColumnLayout {
        anchors { fill: parent; margins: 20 }
        spacing: Theme.gap
        LayoutMirroring.enabled: Texts.isRightToLeft
        LayoutMirroring.childrenInherit: true

        RowLayout {
            spacing: 14

            ScreenText {
                url: "Settings/Ventilation"
                font.pixelSize: 28
                font.weight: Font.Bold
            }
            Rectangle {
                implicitWidth: state.implicitWidth + 26
                implicitHeight: 32
                radius: 16
                color: "#16331f"

                Row {
                    id: state
                    anchors.centerIn: parent
                    spacing: 8

                    Rectangle {
                        anchors.verticalCenter: parent.verticalCenter
                        width: 9
                        height: 9
                        radius: 4.5
                        color: Theme.good
                    }
                    ScreenText {
                        url: "Status/Running"
                        color: Theme.good
                        font.pixelSize: 15
                        font.weight: Font.DemiBold
                    }
                }
            }
            Item { Layout.fillWidth: true }
            LanguageBox {}
        }

        Rectangle {
            readonly property color accent: window.isAcknowledged ? Theme.good : Theme.warning
            Layout.fillWidth: true
            implicitHeight: 68
            radius: Theme.radius
            color: window.isAcknowledged ? "#14261c" : "#33270d"
            border.color: accent

            RowLayout {
                anchors { fill: parent; leftMargin: 18; rightMargin: 6 }
                spacing: 14

                Rectangle {
                    implicitWidth: 32
                    implicitHeight: 32
                    radius: 16
                    color: parent.parent.accent

                    Text {
                        anchors.centerIn: parent
                        text: window.isAcknowledged ? "✓" : "!"
                        color: Theme.contrast
                        font.pixelSize: 20
                        font.weight: Font.Bold
                    }
                }
                ScreenText {
                    url: window.isAcknowledged ? "Alarms/None" : "Alarms/Filter/ChangeDue"
                    args: ({ "days": 12 })
                    Layout.fillWidth: true
                    horizontalAlignment: Text.AlignLeft
                    font.pixelSize: 20
                    font.weight: Font.DemiBold
                }
                PushButton {
                    visible: !window.isAcknowledged
                    url: "Alarms/Acknowledge"
                    isActive: true
                    activeColor: Theme.warning
                    onClicked: window.isAcknowledged = true
                }
            }
        }

        GridLayout {
            columns: 3
            rowSpacing: Theme.gap
            columnSpacing: Theme.gap

            Tile {
                name: "Data/Process/Temperature/SupplyAir"
                unit: "Units/Celsius"
                value: 21.5
                digits: 1
                to: 40
            }
            Tile {
                name: "Data/Process/AirFlow"
                unit: "Units/CubicMetersPerHour"
                value: 1850
                to: 3000
            }
            Tile {
                name: "Data/Process/CarbonDioxide"
                unit: "Units/PartsPerMillion"
                value: 642
                from: 400
                to: 1400
                accent: Theme.good
            }
            Tile {
                name: "Data/Process/Humidity"
                unit: "Units/Percent"
                value: 43
                accent: Theme.good
            }
            Tile {
                name: "Data/Process/HeatRecovery"
                unit: "Units/Percent"
                value: 86
                accent: Theme.good
            }
            Tile {
                name: "Data/Process/FilterPressure"
                unit: "Units/Pascal"
                value: 187
                to: 220
                accent: Theme.warning
            }
        }

        RowLayout {
            spacing: 10

            Repeater {
                model: ["Data/Values/Auto", "Status/Boost", "Status/NightCooling"]
                PushButton {
                    required property string modelData
                    required property int index
                    url: modelData
                    isActive: index === window.mode
                    onClicked: window.mode = index
                }
            }
            Item { Layout.fillWidth: true }
            Repeater {
                model: ["Menu/Schedule", "Menu/Alarms", "Menu/Settings"]
                PushButton {
                    required property string modelData
                    url: modelData
                }
            }
        }
    }
}
