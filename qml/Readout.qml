import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import VeltraUi

// Note, accidental and octave over the deviation and the frequency. A
// screen reader hears it as one sentence; Tab reaches it, and a ring shows
// that it has the focus.
Item {
    id: readout
    objectName: "readout"
    property real noteSize: 96
    implicitWidth: lines.implicitWidth
    implicitHeight: lines.implicitHeight

    Accessible.role: Accessible.StaticText
    Accessible.name: Tuner.readout || qsTr("No note yet")
    Accessible.focusable: true
    activeFocusOnTab: true

    Rectangle {
        anchors.fill: parent
        anchors.margins: -6
        radius: 12
        color: "transparent"
        visible: readout.activeFocus
        border.width: Theme.focusRingWidth
        border.color: Theme.focusRing
    }

    ColumnLayout {
        id: lines
        anchors.fill: parent
        spacing: 2

        RowLayout {
            Layout.alignment: Qt.AlignHCenter
            Layout.fillWidth: false
            spacing: 4
            Label {
                objectName: "noteName"
                text: Tuner.noteName
                color: Theme.text
                font.pixelSize: readout.noteSize
                font.weight: Font.Light
                Accessible.ignored: true
            }
            ColumnLayout {
                Layout.fillWidth: false
                spacing: 0
                Label {
                    objectName: "sharpFlat"
                    text: Tuner.sharpFlat === "#" ? "\u266F" : (Tuner.sharpFlat === "b" ? "\u266D" : " ")
                    color: Theme.text
                    font.pixelSize: readout.noteSize * 0.42
                    Accessible.ignored: true
                }
                Label {
                    objectName: "octaveNumber"
                    text: Tuner.octaveNumber.length > 0 ? Tuner.octaveNumber : " "
                    color: Theme.dimText
                    font.pixelSize: readout.noteSize * 0.33
                    Accessible.ignored: true
                }
            }
        }
        RowLayout {
            Layout.alignment: Qt.AlignHCenter
            Layout.fillWidth: false
            spacing: 24
            Label {
                objectName: "deviation"
                text: Tuner.deviation
                color: Theme.text
                font.pixelSize: Math.max(18, readout.noteSize * 0.25)
                font.family: "monospace"
                Accessible.ignored: true
            }
            Label {
                objectName: "frequency"
                //: The frequency heard, as "440.5 Hz".
                text: Tuner.frequency.length > 0 ? qsTr("%1 Hz").arg(Tuner.frequency) : ""
                color: Theme.dimText
                font.pixelSize: Math.max(18, readout.noteSize * 0.25)
                font.family: "monospace"
                Accessible.ignored: true
            }
        }
        // A transposing instrument's concert note, on a line of its own that
        // is kept while no note is shown, so that nothing moves when one comes.
        Label {
            objectName: "concertNote"
            Layout.alignment: Qt.AlignHCenter
            visible: Tuner.transposed
            //: Under a transposing instrument's written note, the concert note that sounds, as "concert C4".
            text: Tuner.concertNote.length > 0 ? qsTr("concert %1").arg(Tuner.concertNote) : " "
            color: Theme.dimText
            font.pixelSize: Math.max(16, readout.noteSize * 0.2)
            Accessible.ignored: true
        }
    }
}
