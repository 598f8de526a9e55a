import QtQuick

// The place of a page or a dialog that is built when it is first asked for, and kept. Qt 6.4 has no
// Loader for components that are bound to their document.
Item {
    id: place

    default property Component content
    // null until it is asked for.
    property QtObject item: null

    signal built(item: QtObject)

    function get(): QtObject {
        if (item === null) {
            item = content.createObject(place);
            built(item);
        }
        return item;
    }
}
