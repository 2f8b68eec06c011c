import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// What to tell others about the app, with a button that copies it.
Dialog {
    id: dialog
    property string text
    property string link
    readonly property string shared: link.length > 0 ? text + "\n" + link : text
    signal copy(string text)

    function show(text: string, link: string) {
        dialog.text = text
        dialog.link = link
        copied = false
        open()
    }
    property bool copied: false

    parent: Overlay.overlay
    anchors.centerIn: parent
    width: Math.min(parent.width - 48, 420)
    modal: true
    focus: true
    title: qsTr("Share this App")
    closePolicy: Popup.CloseOnEscape

    background: Rectangle { color: Theme.panel; radius: 14 }
    header: Label {
        text: dialog.title
        color: Theme.text
        font.pixelSize: 18
        font.weight: Font.Bold
        wrapMode: Text.WordWrap
        horizontalAlignment: Text.AlignHCenter
        topPadding: 20
        leftPadding: 20
        rightPadding: 20
    }
    contentItem: ColumnLayout {
        spacing: 10
        Label {
            Layout.fillWidth: true
            text: dialog.text
            color: Theme.text
            font.pixelSize: 15
            wrapMode: Text.WordWrap
        }
        Label {
            Layout.fillWidth: true
            visible: dialog.link.length > 0
            text: dialog.link
            color: Theme.accent
            font.pixelSize: 15
            elide: Text.ElideMiddle
        }
    }
    footer: RowLayout {
        spacing: 8
        Item { Layout.preferredWidth: 12 }
        DialogButton {
            objectName: "close"
            text: qsTr("Close")
            onClicked: dialog.close()
        }
        DialogButton {
            objectName: "copy"
            text: dialog.copied ? qsTr("Copied") : qsTr("Copy")
            highlighted: true
            focus: true
            onClicked: {
                dialog.copy(dialog.shared)
                dialog.copied = true
            }
        }
        Item { Layout.preferredWidth: 12 }
    }
}
