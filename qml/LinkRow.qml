import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// A settings row that leads to another screen, with its current value.
RowButton {
    id: row
    property string value
    Accessible.name: value.length > 0 ? text + ", " + value : text
    contentItem: RowLayout {
        spacing: 6
        Label {
            Layout.fillWidth: true
            text: row.text
            color: Theme.text
            font.pixelSize: 16
            elide: Text.ElideRight
        }
        Label {
            text: row.value
            color: Theme.dimText
            font.pixelSize: 16
        }
        Image {
            source: "icons/chevron.svg"
            sourceSize.width: 18
            sourceSize.height: 18
            opacity: 0.5
        }
    }
}
