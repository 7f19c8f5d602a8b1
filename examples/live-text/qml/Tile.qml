import QtQuick 2.15
import QtQuick.Layouts 1.15
import TextManager 1.0

// A process value: its name, the value with its unit, and where it stands in its range.
Rectangle {
    id: tile

    property alias name: nameLabel.url
    property alias unit: valueLabel.url
    property real value
    property int digits: 0
    property real from: 0
    property real to: 100
    property color accent: Theme.accent

    Layout.fillWidth: true
    Layout.fillHeight: true
    Layout.preferredWidth: 1 // all columns alike, whatever their texts
    radius: Theme.radius
    color: Theme.surface
    border.color: Theme.line

    ColumnLayout {
        anchors { fill: parent; margins: 18 }
        spacing: 4

        ScreenText {
            id: nameLabel
            Layout.fillWidth: true
            color: Theme.faint
            font.pixelSize: 16
            horizontalAlignment: Text.AlignLeft
        }
        ScreenText {
            id: valueLabel
            // The mark makes a text without a letter, such as a percentage, run from right to left, too.
            readonly property string mark: Texts.isRightToLeft ? "\u200f" : ""
            args: { "1": mark + Number(tile.value).toLocaleString(Qt.locale(Texts.language), "f", tile.digits) }
            Layout.fillWidth: true
            Layout.fillHeight: true
            font.pixelSize: 38
            font.weight: Font.DemiBold
            horizontalAlignment: Text.AlignLeft
        }
        Rectangle {
            id: scale
            readonly property real share: (tile.value - tile.from) / (tile.to - tile.from)
            Layout.fillWidth: true
            height: 6
            radius: 3
            color: Theme.raised

            Rectangle {
                anchors { left: parent.left; top: parent.top; bottom: parent.bottom }
                width: parent.width * Math.max(0.02, Math.min(1, scale.share))
                radius: 3
                color: tile.accent
            }
        }
    }
}
