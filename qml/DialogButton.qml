import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// A dialog's button: full width of its share of the row, accent when it is
// the one that goes ahead.
Button {
    id: button
    Layout.fillWidth: true
    Layout.bottomMargin: 14
    implicitHeight: 44
    focusPolicy: Qt.StrongFocus
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
    // A screen reader's press (Qt's controls leave it unanswered).
    Accessible.onPressAction: clicked()
    background: Rectangle {
        radius: 10
        color: button.highlighted ? Theme.accent : Theme.key
        border.color: button.visualFocus ? Theme.focusRing : "transparent"
        border.width: Theme.focusRingWidth
    }
    contentItem: Label {
        text: button.text
        color: Theme.text
        font.pixelSize: 16
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }
}
