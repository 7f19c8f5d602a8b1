pragma Singleton
import QtQuick 2.15

QtObject {
    readonly property color background: "#0f1720"
    readonly property color surface: "#1a2531"
    readonly property color raised: "#243242"
    readonly property color line: "#2f4154"
    readonly property color text: "#f2f6fa"
    readonly property color faint: "#93a5b8"
    readonly property color accent: "#38bdf8"
    readonly property color good: "#4ade80"
    readonly property color warning: "#fbbf24"
    readonly property color contrast: "#08131d"

    readonly property int gap: 16
    readonly property int radius: 14
}
