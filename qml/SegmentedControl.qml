pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// One choice out of a few, side by side. Arrow keys move the choice.
RowLayout {
    id: control
    property var segments: []
    property var accessibleNames: segments
    property int currentIndex: 0
    property real segmentWidth: 0
    signal selected(int index)
    spacing: 0

    function choose(index: int) {
        if (index < 0 || index >= segments.length || index === currentIndex)
            return
        currentIndex = index
        selected(index)
    }

    Repeater {
        model: control.segments
        // A radio button, so that screen readers hear one choice of several.
        delegate: RadioButton {
            id: segment
            required property int index
            required property string modelData
            text: modelData
            autoExclusive: false
            checked: index === control.currentIndex
            indicator: null
            Layout.fillWidth: control.segmentWidth === 0
            Layout.preferredWidth: control.segmentWidth > 0 ? control.segmentWidth : -1
            implicitHeight: Theme.touchTarget
            // A long name takes a second line rather than spilling over its
            // neighbours (a phone's width in French or Russian).
            topPadding: 2
            bottomPadding: 2
            leftPadding: 4
            rightPadding: 4
            focusPolicy: Qt.StrongFocus
            Accessible.name: control.accessibleNames[index]
            onClicked: control.choose(index)
            Keys.onReturnPressed: control.choose(index)
            Keys.onEnterPressed: control.choose(index)
            // A screen reader's press or toggle (Qt's controls leave them unanswered).
            Accessible.onPressAction: control.choose(index)
            Accessible.onToggleAction: control.choose(index)
            Keys.onLeftPressed: control.choose(control.currentIndex - 1)
            Keys.onRightPressed: control.choose(control.currentIndex + 1)
            background: Rectangle {
                radius: 8
                color: segment.checked ? Theme.accent : Theme.key
                border.color: segment.visualFocus ? Theme.focusRing : Theme.background
                border.width: segment.visualFocus ? Theme.focusRingWidth : 1
            }
            contentItem: Label {
                text: segment.text
                color: Theme.text
                font.pixelSize: 14
                wrapMode: Text.WordWrap
                lineHeight: 0.9
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
            }
        }
    }
}
