pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import VeltraUi

// Which kinds of sound let the readout follow the pitch. At least one stays
// checked.
Page {
    id: page
    objectName: "selectSoundsPage"
    title: Screens.sounds.title
    background: Rectangle { color: Theme.background }

    readonly property var sounds: Screens.sounds
    Component.onCompleted: sounds.load()

    ColumnLayout {
        width: Math.min(parent.width - 24, Theme.listWidth)
        x: (parent.width - width) / 2
        y: 12
        spacing: 6

        Rectangle {
            Layout.fillWidth: true
            implicitHeight: rows.implicitHeight
            radius: 12
            color: Theme.panel
            ColumnLayout {
                id: rows
                anchors.left: parent.left
                anchors.right: parent.right
                spacing: 0
                Repeater {
                    model: page.sounds.rows
                    delegate: CheckRow {
                        id: row
                        required property int index
                        required property string modelData
                        objectName: "sound" + index
                        text: modelData
                        on: page.sounds.checked[index] ?? false
                        onToggled: page.sounds.tap(index)
                        contentItem: RowLayout {
                            Label {
                                Layout.fillWidth: true
                                text: row.text
                                color: Theme.text
                                font.pixelSize: 16
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
        }
        Label {
            Layout.fillWidth: true
            Layout.leftMargin: 14
            Layout.rightMargin: 14
            text: qsTr("The readout follows the pitch only while one of the checked sounds is heard.")
            color: Theme.dimText
            font.pixelSize: 13
            wrapMode: Text.WordWrap
        }
    }
}
