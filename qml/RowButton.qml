import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// A row of a settings list, the whole row one button: a finger's height,
// worked with Space or Enter alike, and ringed while the keyboard's focus
// is on it. Its padding is an item delegate's, as the rows always had.
AbstractButton {
    id: row
    Layout.fillWidth: true
    implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset,
                            implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: 52
    padding: 12
    verticalPadding: 8
    spacing: 8
    focusPolicy: Qt.StrongFocus
    Accessible.name: text
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
    // A screen reader's press or toggle (Qt's controls leave them unanswered).
    Accessible.onPressAction: clicked()
    Accessible.onToggleAction: clicked()
    background: Rectangle {
        radius: 12
        color: row.down ? Qt.rgba(1, 1, 1, 0.06) : "transparent"
        border.width: Theme.focusRingWidth
        border.color: row.visualFocus ? Theme.focusRing : "transparent"
    }
}
