import QtQuick
import QtQuick.Controls

// An icon button of the title bar.
ToolButton {
    id: button
    icon.color: Theme.text
    icon.width: 24
    icon.height: 24
    focusPolicy: Qt.StrongFocus
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
    // A screen reader's press (Qt's controls leave it unanswered).
    Accessible.onPressAction: clicked()
    background: Rectangle {
        implicitWidth: 44
        implicitHeight: 44
        radius: 10
        color: button.down ? Qt.rgba(1, 1, 1, 0.14) : (button.visualFocus || button.hovered ? Qt.rgba(1, 1, 1, 0.07) : "transparent")
        border.color: button.visualFocus ? Theme.focusRing : "transparent"
        border.width: Theme.focusRingWidth
    }
}
