pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import VeltraUi

// The sound input the tuner listens to: the system default, or one input
// by its name, ticked as the sounds are. The list is asked of the sound
// system each time the settings open.
SettingsSection {
    id: section
    readonly property var inputs: Screens.inputs
    footer: inputs.footer
    Component.onCompleted: inputs.load()

    Label {
        Layout.fillWidth: true
        Layout.leftMargin: 12
        Layout.rightMargin: 12
        Layout.topMargin: 12
        text: qsTr("Sound Input")
        color: Theme.text
        font.pixelSize: 16
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
    Repeater {
        model: section.inputs.rows
        delegate: CheckRow {
            id: row
            required property int index
            required property string modelData
            objectName: "input" + index
            text: modelData
            on: index === section.inputs.selectedRow
            onToggled: section.inputs.select(index)
            contentItem: RowLayout {
                Label {
                    Layout.fillWidth: true
                    text: row.text
                    color: Theme.text
                    font.pixelSize: 16
                    wrapMode: Text.Wrap
                }
                Image {
                    visible: row.on
                    source: "icons/check.svg"
                    sourceSize.width: 22
                    sourceSize.height: 22
                }
            }
        }
    }
}
