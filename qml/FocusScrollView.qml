import QtQuick
import QtQuick.Controls

// A scrolling page whose keyboard focus stays in sight: the control that Tab
// moves to is scrolled into view, Page Up and Page Down scroll a page and
// take the focus along when it would leave, and Home and End go to the
// first and the last control.
ScrollView {
    id: view
    contentWidth: availableWidth

    readonly property Flickable list: contentItem as Flickable
    // Room kept between the focused control and the edge it is scrolled to.
    readonly property real margin: 12

    function inList(item: Item): bool {
        for (let up = item; up; up = up.parent)
            if (up === list.contentItem)
                return true
        return false
    }
    function topOf(item: Item): real { return item.mapToItem(list.contentItem, 0, 0).y }
    function inSight(item: Item): bool {
        const y = topOf(item)
        return y >= list.contentY && y + item.height <= list.contentY + list.height
    }
    function scrollTo(y: real) {
        list.contentY = Math.max(0, Math.min(y, list.contentHeight - list.height))
    }
    function reveal(item: Item) {
        if (!item || !inList(item) || inSight(item))
            return
        const y = topOf(item)
        if (y < list.contentY)
            scrollTo(y - margin)
        else
            scrollTo(y + item.height + margin - list.height)
    }
    // Scrolls to y, then, unless the focus is still in sight (or always, for
    // Home and End), moves it to the first control in sight from the top
    // (fromTop) or from the bottom.
    function scrollWithFocus(y: real, fromTop: bool, always: bool) {
        scrollTo(y)
        const start = Window.activeFocusItem
        if (!start || !inList(start) || (inSight(start) && !always))
            return
        let chosen = null
        let next = start
        for (let step = 0; step < 500; ++step) {
            if (inList(next) && inSight(next) && (!chosen || (topOf(next) < topOf(chosen)) === fromTop))
                chosen = next
            next = next.nextItemInFocusChain(true)
            if (!next || next === start)
                break
        }
        if (chosen)
            chosen.forceActiveFocus(fromTop ? Qt.TabFocusReason : Qt.BacktabFocusReason)
        else
            reveal(start)
    }

    Connections {
        target: view.Window.window
        function onActiveFocusItemChanged() { view.reveal(view.Window.activeFocusItem) }
    }
    Keys.onPressed: (event) => {
        const step = list.height - 2 * margin
        switch (event.key) {
        case Qt.Key_PageDown: scrollWithFocus(list.contentY + step, true, false); break
        case Qt.Key_PageUp: scrollWithFocus(list.contentY - step, false, false); break
        case Qt.Key_Home: scrollWithFocus(0, true, true); break
        case Qt.Key_End: scrollWithFocus(list.contentHeight, false, true); break
        default: return
        }
        event.accepted = true
    }
}
