pragma ComponentBehavior: Bound
import QtQml
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import VeltraUi

Page {
    id: page
    background: Rectangle { color: Theme.background }

    // Button texts for the images the screen names; the three whose names
    // follow the sharps-or-flats choice are tags 4, 9 and 11.
    readonly property var glyphs: ({
        "FG_D_SHARP": "D\u266F", "FG_G_SHARP": "G\u266F", "FG_A_SHARP": "A\u266F",
        "FG_E_FLAT": "E\u266D", "FG_A_FLAT": "A\u266D", "FG_B_FLAT": "B\u266D"
    })
    function toneLabel(tag) {
        const names = ["C", "C\u266F", "D", "", "E", "F", "F\u266F", "G", "", "A", "", "B"]
        const images = Tuner.sharpFlatButtonImages
        if (tag === 4) return page.glyphs[images[0]]
        if (tag === 9) return page.glyphs[images[1]]
        if (tag === 11) return page.glyphs[images[2]]
        return names[tag - 1]
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: 12
        spacing: 10

        Label {
            visible: Tuner.audioProblem.length > 0
            Layout.fillWidth: true
            text: Tuner.audioProblem
            color: Theme.warning
            wrapMode: Text.WordWrap
            horizontalAlignment: Text.AlignHCenter
        }

        // The readout: note, accidental, octave; deviation and frequency.
        RowLayout {
            Layout.alignment: Qt.AlignHCenter
            spacing: 4
            Label {
                objectName: "noteName"
                text: Tuner.noteName
                color: Theme.text
                font.pixelSize: 96
                font.weight: Font.Light
            }
            ColumnLayout {
                spacing: 0
                Label {
                    objectName: "sharpFlat"
                    text: Tuner.sharpFlat === "#" ? "\u266F" : (Tuner.sharpFlat === "b" ? "\u266D" : " ")
                    color: Theme.text
                    font.pixelSize: 40
                }
                Label {
                    objectName: "octaveNumber"
                    text: Tuner.octaveNumber.length > 0 ? Tuner.octaveNumber : " "
                    color: Theme.dimText
                    font.pixelSize: 32
                }
            }
        }
        RowLayout {
            Layout.alignment: Qt.AlignHCenter
            spacing: 24
            Label {
                objectName: "deviation"
                text: Tuner.deviation
                color: Theme.text
                font.pixelSize: 24
                font.family: "monospace"
            }
            Label {
                objectName: "frequency"
                text: Tuner.frequency.length > 0 ? Tuner.frequency + " Hz" : ""
                color: Theme.dimText
                font.pixelSize: 24
                font.family: "monospace"
            }
        }

        Rectangle {
            Layout.fillWidth: true
            Layout.fillHeight: true
            radius: 8
            color: Theme.panel
            clip: true
            LiveGraph {
                anchors.fill: parent
                tuner: Tuner
            }
        }

        Label {
            visible: Tuner.statusVisible
            text: Tuner.statusText
            color: Tuner.statusColour
            Layout.alignment: Qt.AlignHCenter
            font.pixelSize: 16
        }

        PianoKeyboard {
            visible: Tuner.pianoVisible
            tuner: Tuner
            Layout.fillWidth: true
            Layout.preferredHeight: Tuner.pianoHeight
        }

        GridLayout {
            visible: Tuner.toneGeneratorVisible
            Layout.fillWidth: true
            columns: 6
            rowSpacing: 8
            columnSpacing: 8
            Repeater {
                model: 12
                delegate: Button {
                    id: noteButton
                    required property int index
                    readonly property int tag: index + 1
                    Layout.fillWidth: true
                    Layout.preferredHeight: 44
                    text: page.toneLabel(tag)
                    font.pixelSize: 18
                    background: Rectangle {
                        radius: 16
                        color: noteButton.down ? Theme.accent : Theme.key
                    }
                    contentItem: Label {
                        text: noteButton.text
                        font: noteButton.font
                        color: Theme.text
                        horizontalAlignment: Text.AlignHCenter
                        verticalAlignment: Text.AlignVCenter
                    }
                    onPressed: Tuner.btnToneDown(tag)
                    onReleased: Tuner.btnToneCancel()
                    onCanceled: Tuner.btnToneCancel()
                }
            }
        }

        // The octave of the tone buttons: the first segment is middle C's.
        RowLayout {
            visible: Tuner.segmentOctaveVisible
            Layout.alignment: Qt.AlignHCenter
            spacing: 0
            ButtonGroup { id: octaves }
            Repeater {
                model: ["4", "5", "6", "7"]
                delegate: Button {
                    id: octaveButton
                    required property int index
                    required property string modelData
                    text: modelData
                    checkable: true
                    checked: index === 0
                    ButtonGroup.group: octaves
                    onClicked: Tuner.setOctaveSegment(index)
                    background: Rectangle {
                        implicitWidth: 64
                        implicitHeight: 32
                        color: octaveButton.checked ? Theme.accent : Theme.key
                        border.color: Theme.background
                    }
                    contentItem: Label {
                        text: octaveButton.text
                        color: Theme.text
                        horizontalAlignment: Text.AlignHCenter
                        verticalAlignment: Text.AlignVCenter
                    }
                }
            }
        }
    }
}
