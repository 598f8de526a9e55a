import QtQuick

// Lies over a view, so that it learns of presses first, and scrolls it to the control that has the
// keyboard, with some of what is around that control.
Item {
    id: follower

    property Flickable view: null
    property real context: 24

    readonly property Item _focused: Window.activeFocusItem

    // An item that does not fit moves only when nothing of it is seen: where the keyboard is
    // within it is for the item to show.
    function _revealed(position: real, extent: real, start: real, length: real): real {
        if (length > extent && start < position + extent && start + length > position) {
            return position;
        }
        const fromEnd = Math.max(position, start + length + context - extent);
        return Math.min(fromEnd, Math.max(0, start - context));
    }

    function _reveal(item: Item): void {
        const area = item.mapToItem(view.contentItem, 0, 0, item.width, item.height);
        const left = _revealed(view.contentX, view.width, area.x, area.width);
        const top = _revealed(view.contentY, view.height, area.y, area.height);
        view.contentX = Math.max(0, Math.min(left, view.contentWidth - view.width));
        view.contentY = Math.max(0, Math.min(top, view.contentHeight - view.height));
    }

    function _holds(item: Item): bool {
        for (let outer = item; outer; outer = outer.parent) {
            if (outer === view?.contentItem) {
                return true;
            }
        }
        return false;
    }

    anchors.fill: parent

    // What has just been pressed must not move away under the pointer.
    on_FocusedChanged: {
        if (!pointer.active && _holds(_focused)) {
            _reveal(_focused);
        }
    }

    PointHandler {
        id: pointer
    }
}
