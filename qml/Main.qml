import QtQml
import QtQuick
import QtQuick.Controls
import QtQuick.Window
import VeltraUi

ApplicationWindow {
    id: window
    width: 420
    height: 860
    minimumWidth: 320
    minimumHeight: 320 // a phone turned sideways
    visible: true
    title: "Veltra"
    color: Theme.background

    // One dark palette for every control and popup; the accent fills the
    // switches that are on and the sliders' tracks.
    palette.window: Theme.panel
    palette.windowText: Theme.text
    palette.base: Theme.panel
    palette.text: Theme.text
    palette.button: Theme.key
    palette.buttonText: Theme.text
    palette.highlight: Theme.accent
    palette.highlightedText: Theme.text
    palette.dark: Theme.accent
    palette.midlight: "#3a4045"
    palette.mid: "#4a5157"
    palette.light: "#e8eaed"

    readonly property bool onRoot: Screens.navigation.depth === 1

    header: ToolBar {
        id: bar
        implicitHeight: 52
        background: Rectangle { color: Theme.bar }

        // Left: back on the pushed screens, the settings (or microphone)
        // button on the main one.
        BarButton {
            id: leftButton
            objectName: window.onRoot ? "accessory" : "back"
            anchors.left: parent.left
            anchors.leftMargin: 4
            anchors.verticalCenter: parent.verticalCenter
            readonly property bool micDenied: Tuner.accessoryImage === "mic.slash.fill"
            icon.source: !window.onRoot ? "icons/back.svg" : (micDenied ? "icons/mic-slash.svg" : "icons/gear.svg")
            icon.color: micDenied && window.onRoot ? Theme.warning : Theme.text
            Accessible.name: !window.onRoot ? qsTr("Back") : (micDenied ? qsTr("Microphone access") : qsTr("Settings"))
            // A tip belongs to the page it was asked on: a change of page
            // (this button, Escape) closes it until the pointer comes back.
            property bool tipDismissed: false
            readonly property int depth: Screens.navigation.depth
            onDepthChanged: tipDismissed = true
            onHoveredChanged: tipDismissed = false
            ToolTip.visible: hovered && !tipDismissed
            ToolTip.delay: 600
            ToolTip.text: !window.onRoot ? qsTr("Back (Esc)") : qsTr("Settings (Ctrl+,)")
            onClicked: window.onRoot ? Tuner.accessoryTapped() : Screens.navigation.pop()
        }

        Label {
            id: titleLabel
            objectName: "title"
            anchors.centerIn: parent
            width: parent.width - 2 * 56
            text: (stack.currentItem as Page)?.title ?? ""
            readonly property real white: window.onRoot ? Tuner.titleWhite : 0.95
            color: Qt.rgba(white, white, white, 1)
            font.family: Theme.font
            font.pixelSize: window.onRoot ? Tuner.titleFontSize : 19
            // Bold on the pushed screens: DejaVu Sans draws its one bold face
            // for either weight, and a Chinese or Japanese face without a
            // bold one is emboldened only from bold up.
            font.weight: window.onRoot && !Tuner.titleBold ? Font.DemiBold : Font.Bold
            horizontalAlignment: Text.AlignHCenter
            elide: Text.ElideRight
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }

        BarButton {
            id: moreOptions
            objectName: "moreOptions"
            visible: window.onRoot
            anchors.right: parent.right
            anchors.rightMargin: 4
            anchors.verticalCenter: parent.verticalCenter
            icon.source: "icons/more.svg"
            Accessible.name: qsTr("More options")
            onClicked: optionsMenu.open()

            Menu {
                id: optionsMenu
                objectName: "optionsMenu"
                y: moreOptions.height
                x: moreOptions.width - width
                // As wide as its longest entry (some languages' run long),
                // within the window.
                width: {
                    let widest = 200
                    for (let i = 0; i < count; ++i)
                        widest = Math.max(widest, itemAt(i).implicitWidth + leftPadding + rightPadding)
                    return Math.min(window.width - 16, widest)
                }
                Repeater {
                    model: Screens.moreOptions.entries
                    delegate: MenuItem {
                        required property var modelData
                        required property int index
                        objectName: "menuItem" + index
                        // A finger's height on a phone, as every other control.
                        implicitHeight: Theme.touchTarget
                        text: modelData.title
                        icon.source: Theme.symbol(modelData.icon)
                        icon.color: Theme.text
                        onTriggered: Screens.moreOptions.trigger(index)
                        Keys.onReturnPressed: clicked()
                        Keys.onEnterPressed: clicked()
                        // A screen reader's press (Qt's controls leave it unanswered).
                        Accessible.onPressAction: clicked()
                    }
                }
            }
        }
    }

    StackView {
        id: stack
        objectName: "stack"
        anchors.fill: parent
        focus: true
        initialItem: TunerPage {}
    }

    Component { id: settingsPage; SettingsPage {} }
    Component { id: pickerPage; FrequencyPage {} }
    Component { id: soundsPage; SelectSoundsPage {} }

    Connections {
        target: Screens.navigation
        function onPushed(screen: string) {
            const pages = { "Settings": settingsPage, "FrequencyPicker": pickerPage, "SelectSounds": soundsPage }
            stack.push(pages[screen])
        }
        function onPopped() {
            stack.pop()
        }
    }

    Shortcut {
        sequence: "Escape"
        enabled: !window.onRoot
        onActivated: Screens.navigation.pop()
    }
    Shortcut {
        sequence: "Ctrl+,"
        enabled: window.onRoot
        onActivated: Tuner.accessoryTapped()
    }
    Shortcut {
        sequence: "Ctrl+Q"
        context: Qt.ApplicationShortcut
        onActivated: Qt.quit()
    }

    MessageDialog {
        id: alertDialog
        objectName: "alert"
    }

    ShareDialog {
        id: shareDialog
        objectName: "share"
        onCopy: (text) => Screens.moreOptions.copy(text)
    }

    MessageDialog {
        id: reviewDialog
        objectName: "review"
        title: qsTr("Enjoying Veltra?")
        message: qsTr("If Veltra helps you play in tune, a rating in your software centre helps other musicians find it.")
        acceptText: qsTr("Rate Veltra")
        dismissText: qsTr("Not Now")
        onAccepted: Screens.moreOptions.rate()
    }

    Connections {
        target: Tuner
        function onAlert(title: string, message: string, dismissTitle: string) {
            alertDialog.show(title, message, dismissTitle)
        }
    }
    Connections {
        target: Screens.moreOptions
        function onAlert(title: string, message: string, dismissTitle: string) {
            alertDialog.show(title, message, dismissTitle)
        }
        function onShareSheet(text: string, link: string) {
            shareDialog.show(text, link)
        }
        function onReviewRequested() {
            reviewDialog.open()
        }
    }

    onWidthChanged: Tuner.layout(width, Math.min(Screen.width, Screen.height))
    Component.onCompleted: Tuner.layout(width, Math.min(Screen.width, Screen.height))
}
