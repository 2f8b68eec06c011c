pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import VeltraUi

// The tuning system with its tonic and a Scala import, then the
// instrument's key: two sections of the settings list.
ColumnLayout {
    id: sections
    readonly property var tuning: Screens.tuning
    function text(index: int): string { return sections.tuning.texts[index] ?? "" }
    Layout.fillWidth: true
    spacing: 4

    Component.onCompleted: tuning.load()

    component ChoiceRow: ColumnLayout {
        id: choice
        property alias title: label.text
        property alias model: box.model
        property alias currentIndex: box.currentIndex
        signal activated(int index)
        Layout.fillWidth: true
        Layout.leftMargin: 14
        Layout.rightMargin: 14
        Layout.topMargin: 6
        Layout.bottomMargin: 6
        Label {
            id: label
            Layout.fillWidth: true
            color: Theme.text
            font.pixelSize: 16
            wrapMode: Text.WordWrap
            Accessible.ignored: true
        }
        ComboBox {
            id: box
            Layout.fillWidth: true
            implicitHeight: Theme.touchTarget
            focusPolicy: Qt.StrongFocus
            Accessible.name: label.text
            // Enter opens the list as Space does; in the open list it chooses.
            Keys.onReturnPressed: (event) => box.openOrPass(event)
            Keys.onEnterPressed: (event) => box.openOrPass(event)
            function openOrPass(event: KeyEvent) {
                if (popup.visible)
                    event.accepted = false
                else
                    popup.open()
            }
            onActivated: (index) => choice.activated(index)
        }
    }

    SettingsSection {
        objectName: "tuningSection"
        footer: sections.text(6)
        ChoiceRow {
            objectName: "temperament"
            title: sections.text(0)
            model: sections.tuning.temperamentNames.slice(0, sections.tuning.temperamentCount)
            currentIndex: sections.tuning.temperament
            onActivated: (index) => sections.tuning.setTemperament(index)
        }
        ChoiceRow {
            objectName: "tonic"
            title: sections.text(1)
            model: sections.tuning.tonicNames
            currentIndex: sections.tuning.tonic
            onActivated: (index) => sections.tuning.setTonic(index)
        }
        Loader {
            id: chooser
            visible: status !== Loader.Error
            Layout.fillWidth: true
            Layout.margins: 14
            source: "ScalaImportButton.qml"
        }
        // Without Qt Quick Dialogs, the file's path is typed.
        RowLayout {
            visible: chooser.status === Loader.Error
            Layout.fillWidth: true
            Layout.margins: 14
            TextField {
                id: scalaPath
                objectName: "scalaPath"
                Layout.fillWidth: true
                implicitHeight: Theme.touchTarget
                placeholderText: sections.text(3)
                Accessible.name: sections.text(3)
                onAccepted: importButton.clicked()
            }
            Button {
                id: importButton
                objectName: "importScalaPath"
                text: sections.text(2)
                implicitHeight: Theme.touchTarget
                enabled: scalaPath.text.length > 0
                focusPolicy: Qt.StrongFocus
                Accessible.name: text
                Keys.onReturnPressed: clicked()
                Keys.onEnterPressed: clicked()
                Accessible.onPressAction: clicked()
                onClicked: sections.tuning.importScala(scalaPath.text)
            }
        }
        Label {
            objectName: "importProblem"
            Layout.fillWidth: true
            Layout.leftMargin: 14
            Layout.rightMargin: 14
            Layout.bottomMargin: 10
            visible: text.length > 0
            text: sections.tuning.importProblem
            color: Theme.text
            wrapMode: Text.WordWrap
        }
    }
    SettingsSection {
        footer: sections.text(7)
        ColumnLayout {
            Layout.fillWidth: true
            Layout.margins: 14
            spacing: 8
            Label {
                text: sections.text(4)
                color: Theme.text
                font.pixelSize: 16
            }
            SegmentedControl {
                objectName: "instrumentKey"
                Layout.fillWidth: true
                segments: sections.tuning.keyNames
                accessibleNames: sections.tuning.spokenKeyNames
                currentIndex: sections.tuning.keySegment
                onSelected: (index) => sections.tuning.setKeySegment(index)
            }
        }
        RowLayout {
            Layout.fillWidth: true
            Layout.leftMargin: 14
            Layout.rightMargin: 14
            Layout.bottomMargin: 10
            Label {
                Layout.fillWidth: true
                text: sections.text(5)
                color: Theme.text
                font.pixelSize: 16
                Accessible.ignored: true
            }
            SpinBox {
                objectName: "transpose"
                from: -12
                to: 12
                value: sections.tuning.transpose
                editable: true
                implicitHeight: Theme.touchTarget
                focusPolicy: Qt.StrongFocus
                Accessible.name: sections.text(5)
                textFromValue: (value, locale) => value > 0 ? "+" + Number(value).toLocaleString(locale, "f", 0)
                                                            : Number(value).toLocaleString(locale, "f", 0)
                onValueModified: sections.tuning.setTranspose(value)
            }
        }
    }
}
