import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// A short message with a dismiss button and, when acceptText is set, a
// second button that accepts.
Dialog {
    id: dialog
    property string message
    property string acceptText
    property string dismissText: qsTr("OK")

    function show(title: string, message: string, dismissText: string) {
        dialog.title = title
        dialog.message = message
        dialog.dismissText = dismissText
        open()
    }

    parent: Overlay.overlay
    anchors.centerIn: parent
    width: Math.min(parent.width - 48, 380)
    modal: true
    focus: true
    closePolicy: Popup.CloseOnEscape

    background: Rectangle { color: Theme.panel; radius: 14 }
    header: Label {
        text: dialog.title
        visible: text.length > 0
        color: Theme.text
        font.pixelSize: 18
        font.weight: Font.Bold
        // Titles run long in some languages: a second line, never a cut.
        wrapMode: Text.WordWrap
        horizontalAlignment: Text.AlignHCenter
        topPadding: 20
        leftPadding: 20
        rightPadding: 20
    }
    contentItem: ColumnLayout {
        Label {
            Layout.fillWidth: true
            text: dialog.message
            color: Theme.dimText
            font.pixelSize: 15
            wrapMode: Text.WordWrap
            horizontalAlignment: Text.AlignHCenter
        }
    }
    footer: RowLayout {
        spacing: 8
        Item { Layout.preferredWidth: 12 }
        DialogButton {
            objectName: "dismiss"
            text: dialog.dismissText
            focus: true
            onClicked: dialog.reject()
        }
        DialogButton {
            objectName: "accept"
            visible: dialog.acceptText.length > 0
            text: dialog.acceptText
            highlighted: true
            onClicked: dialog.accept()
        }
        Item { Layout.preferredWidth: 12 }
    }
}
