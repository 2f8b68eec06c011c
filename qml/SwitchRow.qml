import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// A settings row with a title and a switch; the whole row toggles it.
ItemDelegate {
    id: row
    property bool on
    signal toggled(bool on)
    Layout.fillWidth: true
    implicitHeight: 52
    focusPolicy: Qt.StrongFocus
    Accessible.role: Accessible.CheckBox
    Accessible.name: text
    Accessible.checkable: true
    Accessible.checked: on
    onClicked: row.toggled(!row.on)
    background: Rectangle {
        radius: 12
        color: row.visualFocus ? Qt.rgba(1, 1, 1, 0.06) : "transparent"
    }
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
            onToggled: row.toggled(checked)
        }
    }
}
