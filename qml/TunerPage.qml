pragma ComponentBehavior: Bound
import QtQml
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import VeltraUi

// The tuner: the readout, the pitch graph, the keyboard and the reference
// tones. A phone-sized window stacks them in one column; a wide window puts
// the readout and the tones beside a tall graph.
Page {
    id: page
    objectName: "tunerPage"
    title: Tuner.title
    background: Rectangle { color: Theme.background }

    // A phone turned sideways is too short for one column too; its tone
    // panel then runs in one row under both columns.
    readonly property bool shortPage: height < Theme.shortHeight
    readonly property bool wide: width > height && (width >= Theme.wideWidth || shortPage)
    readonly property bool tonesUnder: wide && shortPage
    // Small phones get a smaller note so that the graph keeps its room.
    readonly property real noteSize: Math.max(64, Math.min(112, (wide ? height : width) / 4.4))

    GridLayout {
        id: grid
        anchors.fill: parent
        anchors.margins: 12
        columns: page.wide ? 2 : 1
        columnSpacing: 20
        rowSpacing: 10

        ColumnLayout {
            id: side
            Layout.fillWidth: !page.wide
            Layout.fillHeight: page.wide
            Layout.preferredWidth: page.wide ? Math.min(440, page.width * 0.38) : -1
            Layout.maximumWidth: page.wide ? 440 : Infinity
            spacing: 10

            // One calm line while there is no input; the tuner reconnects
            // by itself, so there is nothing for the user to do. Its room
            // is kept while it is away, so that nothing moves when it comes
            // and goes.
            Label {
                id: audioProblem
                objectName: "audioProblem"
                opacity: text.length > 0 ? 1 : 0
                Layout.fillWidth: true
                Layout.preferredHeight: room.implicitHeight
                text: Tuner.audioProblem
                color: Theme.dimText
                wrapMode: Text.WordWrap
                horizontalAlignment: Text.AlignHCenter
                Text {
                    id: room
                    visible: false
                    width: parent.width
                    text: Tuner.noInputLine
                    font: audioProblem.font
                    wrapMode: audioProblem.wrapMode
                    Accessible.ignored: true
                }
            }

            Item { Layout.fillHeight: page.wide; visible: page.wide }

            Readout {
                Layout.alignment: Qt.AlignHCenter
                noteSize: page.noteSize
            }

            PaddingLabel {
                objectName: "status"
                visible: Tuner.statusVisible
                Layout.alignment: Qt.AlignHCenter
                text: Tuner.statusText
                color: Tuner.statusColour
                tint: Tuner.statusColour
            }

            Item { Layout.fillHeight: page.wide; visible: page.wide }
        }

        ColumnLayout {
            id: main
            Layout.fillWidth: true
            Layout.fillHeight: true
            spacing: 10

            Rectangle {
                id: graphPanel
                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.minimumHeight: 120
                radius: 8
                color: Theme.panel
                clip: true
                LiveGraph {
                    objectName: "graph"
                    anchors.fill: parent
                    tuner: Tuner
                    // The panel and the page around its corners, painted by
                    // the graph itself where that spares the renderer work.
                    backdrop: graphPanel.color
                    backdropRadius: graphPanel.radius
                    surround: Theme.background
                    Accessible.role: Accessible.Graphic
                    Accessible.name: qsTr("Pitch graph")
                }
                // The graph's full-height layers (the in-tune wash) reach
                // into the corners; a ring of the page's colour whose inner
                // edge is the panel's outline rounds them again. The panel
                // clips the ring to its corners.
                Rectangle {
                    readonly property real ring: graphPanel.radius
                    anchors.fill: parent
                    anchors.margins: -ring
                    radius: graphPanel.radius + ring
                    color: "transparent"
                    border.width: ring
                    border.color: Theme.background
                }
            }

            PianoKeyboard {
                objectName: "piano"
                visible: Tuner.pianoVisible
                tuner: Tuner
                Layout.fillWidth: true
                Layout.preferredHeight: Tuner.pianoHeight
                Accessible.role: Accessible.Graphic
                Accessible.name: qsTr("Piano keyboard")
            }

        }
    }

    // One panel, moved to the readout's column when the window is wide, or
    // under both columns when it is also short.
    ToneGenerator {
        parent: page.tonesUnder ? grid : (page.wide ? side : main)
        Layout.fillWidth: true
        Layout.columnSpan: page.tonesUnder ? 2 : 1
        columns: page.tonesUnder ? 12 : (page.wide ? 4 : 6)
    }
}
