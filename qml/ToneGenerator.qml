pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import VeltraUi

// Twelve reference-tone buttons (tags 1 to 12, C to B) that sound while held,
// and the octave they play in.
ColumnLayout {
    id: panel
    property int columns: 6
    spacing: 8
    visible: Tuner.toneGeneratorVisible || Tuner.segmentOctaveVisible

    // Button texts for the images the screen names; the three whose names
    // follow the sharps-or-flats choice are tags 4, 9 and 11.
    readonly property var glyphs: ({
        "FG_D_SHARP": "D\u266F", "FG_G_SHARP": "G\u266F", "FG_A_SHARP": "A\u266F",
        "FG_E_FLAT": "E\u266D", "FG_A_FLAT": "A\u266D", "FG_B_FLAT": "B\u266D"
    })
    function toneLabel(tag: int): string {
        const names = ["C", "C\u266F", "D", "", "E", "F", "F\u266F", "G", "", "A", "", "B"]
        const images = Tuner.sharpFlatButtonImages
        if (tag === 4) return panel.glyphs[images[0]]
        if (tag === 9) return panel.glyphs[images[1]]
        if (tag === 11) return panel.glyphs[images[2]]
        return names[tag - 1]
    }
    // The button's note as a screen reader says it: "C sharp", "B flat".
    function spoken(label: string): string {
        if (label.endsWith("\u266F"))
            //: A note's name said aloud, as in "C sharp"; %1 is its letter.
            return qsTr("%1 sharp").arg(label.charAt(0))
        if (label.endsWith("\u266D"))
            //: A note's name said aloud, as in "B flat"; %1 is its letter.
            return qsTr("%1 flat").arg(label.charAt(0))
        return label
    }

    GridLayout {
        visible: Tuner.toneGeneratorVisible
        Layout.fillWidth: true
        columns: panel.columns
        rowSpacing: 8
        columnSpacing: 8
        Repeater {
            model: 12
            delegate: Button {
                id: noteButton
                required property int index
                readonly property int tag: index + 1
                objectName: "tone" + tag
                // Every column the same width, whatever its label: the
                // layout shares out what is left after the preferred widths.
                Layout.fillWidth: true
                Layout.preferredWidth: 1
                Layout.preferredHeight: 44
                text: panel.toneLabel(tag)
                font.pixelSize: 18
                focusPolicy: Qt.StrongFocus
                //: A reference-tone button as a screen reader names it; %1 is the note, as "C sharp".
                Accessible.name: qsTr("Play %1").arg(panel.spoken(text))
                background: Rectangle {
                    radius: 16
                    color: noteButton.down ? Theme.accent : Theme.key
                    border.color: noteButton.visualFocus ? Theme.focusRing : "transparent"
                    border.width: Theme.focusRingWidth
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
                // Enter, like Space, sounds the tone while it is held.
                Keys.onPressed: (event) => {
                    if ((event.key === Qt.Key_Return || event.key === Qt.Key_Enter) && !event.isAutoRepeat) {
                        Tuner.btnToneDown(tag)
                        event.accepted = true
                    }
                }
                Keys.onReleased: (event) => {
                    if ((event.key === Qt.Key_Return || event.key === Qt.Key_Enter) && !event.isAutoRepeat) {
                        Tuner.btnToneCancel()
                        event.accepted = true
                    }
                }
            }
        }
    }

    // The octave of the tone buttons: the first segment is middle C's.
    SegmentedControl {
        objectName: "octave"
        visible: Tuner.segmentOctaveVisible
        Layout.alignment: Qt.AlignHCenter
        segments: ["4", "5", "6", "7"]
        accessibleNames: [qsTr("Octave %1").arg(4), qsTr("Octave %1").arg(5), qsTr("Octave %1").arg(6),
                          qsTr("Octave %1").arg(7)]
        segmentWidth: 64
        onSelected: (index) => Tuner.setOctaveSegment(index)
    }
}
