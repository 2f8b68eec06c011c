import QtQml
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import QtQuick.Window
import VeltraUi

ApplicationWindow {
    id: window
    width: 420
    height: 860
    visible: true
    title: "Veltra"
    color: Theme.background

    header: ToolBar {
        background: Rectangle { color: Theme.bar }
        RowLayout {
            anchors.fill: parent
            anchors.leftMargin: 12
            anchors.rightMargin: 4
            ToolButton {
                visible: stack.depth > 1
                text: "\u2039"
                font.pixelSize: 28
                onClicked: stack.pop()
            }
            Label {
                Layout.fillWidth: true
                text: Tuner.title
                color: Qt.rgba(0.95, 0.95, 0.95, 1)
                font.family: Tuner.titleFont.length > 0 ? Tuner.titleFont : font.family
                font.pixelSize: Tuner.titleFontSize > 0 ? Tuner.titleFontSize : 19
                font.bold: Tuner.titleFontSize > 30
                horizontalAlignment: Text.AlignHCenter
            }
            ToolButton {
                objectName: "accessory"
                text: Tuner.accessoryImage === "mic.slash.fill" ? "\u{1F507}" : "\u2699"
                font.pixelSize: 22
                palette.buttonText: Tuner.accessoryImage === "mic.slash.fill" ? Theme.warning : Theme.text
                onClicked: Tuner.accessoryTapped()
            }
        }
    }

    StackView {
        id: stack
        anchors.fill: parent
        initialItem: TunerPage {}
    }

    Dialog {
        id: alertDialog
        property string message
        anchors.centerIn: parent
        width: Math.min(parent.width - 48, 360)
        modal: true
        standardButtons: Dialog.NoButton
        contentItem: Label {
            text: alertDialog.message
            wrapMode: Text.WordWrap
            color: Theme.text
        }
        footer: DialogButtonBox {
            Button {
                id: dismissButton
                onClicked: alertDialog.close()
            }
        }
    }

    Connections {
        target: Tuner
        function onAlert(title, message, dismissTitle) {
            alertDialog.title = title
            alertDialog.message = message
            dismissButton.text = dismissTitle
            alertDialog.open()
        }
    }

    onWidthChanged: Tuner.layout(width, Math.min(Screen.width, Screen.height))
    Component.onCompleted: Tuner.layout(width, Math.min(Screen.width, Screen.height))
}
