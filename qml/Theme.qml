pragma Singleton
import QtQuick

QtObject {
    readonly property color background: "#111315"
    readonly property color bar: "#1b1e21"
    readonly property color panel: "#1f2326"
    readonly property color text: "#f2f2f2"
    readonly property color dimText: "#9aa0a6"
    readonly property color accent: "#1fb08a"
    readonly property color warning: "#ff6b52"
    readonly property color key: Qt.rgba(0.23, 0.23, 0.24, 1)
}
