pragma Singleton
import QtQuick

QtObject {
    readonly property color background: "#111315"
    readonly property color bar: "#1b1e21"
    readonly property color panel: "#1f2326"
    readonly property color separator: "#2c3135"
    readonly property color text: "#f2f2f2"
    readonly property color dimText: "#9aa0a6"
    readonly property color accent: "#1fb08a"
    readonly property color warning: "#ff6b52"
    readonly property color key: Qt.rgba(0.23, 0.23, 0.24, 1)
    readonly property string font: "DejaVu Sans"
    // The keyboard's focus: a ring as bright as the text, on every dark
    // surface and over the graph's green wash alike.
    readonly property color focusRing: text
    readonly property real focusRingWidth: 2

    // Wider than this, a window lays the main screen out in two columns and
    // centres its lists.
    readonly property real wideWidth: 900
    readonly property real listWidth: 640
    // A page shorter than this (a phone turned sideways) cannot stack the
    // tuner's parts in one column.
    readonly property real shortHeight: 420
    // The smallest control a fingertip hits reliably: about 7 mm.
    readonly property real touchTarget: 44

    // The menu's symbol names, drawn by our own icons.
    function symbol(name: string): url {
        const files = {
            "star": "icons/star.svg",
            "ellipsis": "icons/ellipsis.svg",
            "square.and.arrow.up": "icons/share.svg",
            "envelope": "icons/envelope.svg"
        }
        return Qt.resolvedUrl(files[name] ?? "")
    }
}
