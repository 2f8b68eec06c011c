import QtQuick
import QtQuick.Controls
import QtQuick.Dialogs
import VeltraUi

// The button that imports a Scala scale, with its file chooser. It has a
// file of its own because Qt Quick Dialogs may be missing: the settings
// load it, and where it cannot load they offer a field for the file's path.
Button {
    id: button
    objectName: "importScala"
    text: Screens.tuning.texts[2] ?? ""
    implicitHeight: Theme.touchTarget
    focusPolicy: Qt.StrongFocus
    Accessible.name: text
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
    // A screen reader's press (Qt's controls leave it unanswered).
    Accessible.onPressAction: clicked()
    onClicked: chooser.open()

    // Where the desktop lends no file chooser, Qt draws one in the window,
    // its title and button bars in the palette's light shade. Ours is light
    // (pressed handles, highlights), and the chooser's white texts would
    // vanish on it, so the drawn chooser takes the title bar's shade.
    function shadeDrawnChooser() {
        const drawn = Overlay.overlay.children
        for (let i = 0; i < drawn.length; ++i) {
            const palette = drawn[i]["palette"]
            if (drawn[i].visible && palette)
                palette.light = Theme.bar
        }
    }

    FileDialog {
        id: chooser
        objectName: "scalaFileDialog"
        //: The title of the file chooser that imports a scale.
        title: qsTr("Choose a Scala File")
        //: The file chooser's filters: Scala's scale files, then every file.
        nameFilters: [qsTr("Scala scales (*.scl)"), qsTr("All files (*)")]
        onVisibleChanged: if (visible) button.shadeDrawnChooser()
        // A file that cannot be used keeps the tuning, and the settings say why.
        onAccepted: Screens.tuning.importScala(selectedFile)
    }
}
