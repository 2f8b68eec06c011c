import QtQuick
import QtQuick.Controls

// A label on a tinted background whose text keeps 8 points clear of its
// left and right edges.
Label {
    id: label
    property color tint: Theme.text
    leftPadding: 8
    rightPadding: 8
    topPadding: 3
    bottomPadding: 3
    font.pixelSize: 15
    background: Rectangle {
        radius: height / 2
        color: Qt.rgba(label.tint.r, label.tint.g, label.tint.b, 0.14)
    }
}
