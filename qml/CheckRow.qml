import QtQuick
import QtQuick.Controls

// A row that is on or off (a switch, a ticked choice). Screen readers are
// told the button's own role and checked state, so the button is checkable
// and its checked state is the row's: a click toggles it by itself, and the
// choice may be refused (the last ticked sound stays ticked), so after each
// click it is bound to `on` again.
RowButton {
    id: row
    property bool on
    signal toggled(bool on)
    checkable: true
    checked: on
    onClicked: {
        row.toggled(!row.on)
        row.checked = Qt.binding(() => row.on)
    }
}
