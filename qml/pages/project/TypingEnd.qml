import QtQuick

// Takes the keyboard from a field of the page as soon as anything else in the window is pressed, be
// it a button that is off or nothing at all: the field then takes over what was typed, as it does
// when the keyboard goes to another control. It lies over the window, so that it learns of presses
// first, and lets them through.
Item {
    id: cover

    // Gets the keyboard instead.
    required property Item page

    function _isOnPage(item: Item): bool {
        for (let outer = item; outer; outer = outer.parent) {
            if (outer === page) {
                return true;
            }
        }
        return false;
    }

    function _endTyping(place: point): void {
        const field = page.Window.activeFocusItem as TextInput;
        if (field && _isOnPage(field) && !field.contains(mapToItem(field, place))) {
            page.forceActiveFocus(Qt.MouseFocusReason);
        }
    }

    parent: page.Window.contentItem
    anchors.fill: parent
    z: 1
    visible: page.visible

    PointHandler {
        acceptedButtons: Qt.AllButtons
        onActiveChanged: if (active) cover._endTyping(point.position)
    }
}
