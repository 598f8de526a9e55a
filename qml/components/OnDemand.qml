import QtQuick

// The place of a page, a dialog, a picture: of what is built when it is first wanted or asked for, and
// then kept. Qt 6.4 has no Loader for components that are bound to their document.
Item {
    id: place

    default property Component content
    property bool wanted: false
    // null until it is built.
    property QtObject item: null

    signal built(item: QtObject)

    function get(): QtObject {
        if (item === null) {
            item = content.createObject(place);
            built(item);
        }
        return item;
    }

    onWantedChanged: if (wanted) get()
    Component.onCompleted: if (wanted) get()
}
