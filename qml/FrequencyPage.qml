pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import VeltraUi

// The reference A on a wheel of whole hertz; every turn stores at once.
Page {
    id: page
    objectName: "frequencyPage"
    title: Screens.picker.title
    background: Rectangle { color: Theme.background }

    readonly property var picker: Screens.picker
    readonly property var heard: Screens.heardReference
    Connections {
        target: page.heard
        function onChanged() {
            if (!page.heard.listening) {
                page.picker.load()
                page.land()
            }
        }
    }
    Component.onDestruction: heard.cancel()
    // The wheel would glide from its first row at a leisurely pace; jumps
    // (opening, reset) land at once, single steps glide.
    function land() {
        rows.positionViewAtIndex(picker.selectedRow, Tumbler.Center)
    }
    Component.onCompleted: {
        picker.load()
        land()
        wheel.forceActiveFocus()
    }

    ColumnLayout {
        anchors.centerIn: parent
        width: Math.min(parent.width - 24, 360)
        spacing: 20

        Rectangle {
            Layout.fillWidth: true
            Layout.preferredHeight: rows.implicitHeight + 20
            radius: 12
            color: Theme.panel
            border.width: Theme.focusRingWidth
            border.color: wheel.activeFocus ? Theme.focusRing : "transparent"

            // The wheel as the keyboard and screen readers know it: a value
            // in hertz that Up raises and Down lowers, as their arrows point
            // (the higher rows lie below). It is a plain item, not the
            // Tumbler control, because a control tells screen readers the
            // role of its own type, which for a Tumbler is none.
            Item {
                id: wheel
                objectName: "wheel"
                anchors.fill: parent
                readonly property alias currentIndex: rows.currentIndex
                readonly property int value: Number(page.picker.titleForRow(currentIndex))
                readonly property int minimumValue: Number(page.picker.titleForRow(0))
                readonly property int maximumValue: Number(page.picker.titleForRow(page.picker.rowCount - 1))
                readonly property int stepSize: 1
                function step(by: int) {
                    page.picker.select(Math.max(0, Math.min(page.picker.rowCount - 1, currentIndex + by)))
                }
                activeFocusOnTab: true
                Accessible.role: Accessible.SpinBox
                Accessible.name: qsTr("Reference A4 in hertz")
                Accessible.description: page.picker.titleForRow(currentIndex)
                Accessible.focusable: true
                Accessible.onIncreaseAction: step(1)
                Accessible.onDecreaseAction: step(-1)
                Keys.onUpPressed: step(1)
                Keys.onDownPressed: step(-1)
                Keys.onPressed: (event) => {
                    if (event.key === Qt.Key_PageUp)
                        step(10)
                    else if (event.key === Qt.Key_PageDown)
                        step(-10)
                    else
                        return
                    event.accepted = true
                }
            }

            // The band the chosen row sits in.
            Rectangle {
                anchors.verticalCenter: parent.verticalCenter
                anchors.left: parent.left
                anchors.right: parent.right
                anchors.margins: 10
                height: 48
                radius: 8
                color: Qt.rgba(1, 1, 1, 0.07)
            }

            RowLayout {
                anchors.centerIn: parent
                spacing: 12
                Tumbler {
                    id: rows
                    objectName: "wheelRows"
                    implicitWidth: 120
                    // Three rows on a page too short for five (a phone turned sideways).
                    visibleItemCount: page.height < 2 * 260 ? 3 : 5
                    implicitHeight: 48 * visibleItemCount
                    wrap: false
                    model: page.picker.rowCount
                    currentIndex: page.picker.selectedRow
                    focusPolicy: Qt.NoFocus
                    Accessible.ignored: true
                    // A turn by hand stores where the wheel comes to rest.
                    onMovingChanged: if (!moving) page.picker.select(currentIndex)
                    delegate: Label {
                        required property int index
                        text: page.picker.titleForRow(index)
                        color: Theme.text
                        font.pixelSize: 30
                        font.weight: Font.Light
                        horizontalAlignment: Text.AlignHCenter
                        verticalAlignment: Text.AlignVCenter
                        opacity: 1.0 - Math.abs(Tumbler.displacement) / (rows.visibleItemCount / 2)
                        Accessible.ignored: true
                    }
                }
                Label {
                    text: qsTr("Hz")
                    color: Theme.dimText
                    font.pixelSize: 24
                }
            }
        }

        DialogButton {
            objectName: "reset"
            Layout.fillWidth: true
            text: qsTr("Reset to 440 Hz")
            onClicked: {
                page.picker.reset()
                page.land()
            }
        }

        // The reference from an A that is played: the wheel moves to it.
        DialogButton {
            objectName: "listenForA"
            Layout.fillWidth: true
            text: page.heard.listening ? qsTr("Stop Listening") : qsTr("Listen for an A")
            onClicked: page.heard.listening ? page.heard.cancel() : page.heard.start()
        }
        Label {
            objectName: "heardMessage"
            Layout.fillWidth: true
            visible: text.length > 0
            text: page.heard.message
            color: Theme.dimText
            font.pixelSize: 13
            wrapMode: Text.WordWrap
            horizontalAlignment: Text.AlignHCenter
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
}
