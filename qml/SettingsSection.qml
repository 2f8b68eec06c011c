import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// One group of the settings list: its rows on a rounded panel, and the
// footer that explains them below.
ColumnLayout {
    id: section
    property string footer
    default property alias rows: panel.data
    Layout.fillWidth: true
    spacing: 6

    Rectangle {
        Layout.fillWidth: true
        implicitHeight: panel.implicitHeight
        radius: 12
        color: Theme.panel
        ColumnLayout {
            id: panel
            anchors.left: parent.left
            anchors.right: parent.right
            spacing: 0
        }
    }
    Label {
        Layout.fillWidth: true
        Layout.leftMargin: 14
        Layout.rightMargin: 14
        Layout.bottomMargin: 14
        visible: text.length > 0
        text: section.footer
        color: Theme.dimText
        font.pixelSize: 13
        wrapMode: Text.WordWrap
    }
}
