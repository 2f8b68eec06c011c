import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// A settings row with a title and a switch; the whole row toggles it.
CheckRow {
    id: row
    contentItem: RowLayout {
        Label {
            Layout.fillWidth: true
            text: row.text
            color: Theme.text
            font.pixelSize: 16
            elide: Text.ElideRight
        }
        Switch {
            checked: row.on
            focusPolicy: Qt.NoFocus
            Accessible.ignored: true
            onToggled: {
                row.clicked()
                checked = Qt.binding(() => row.on)
            }
        }
    }
}
