import Qt.labs.settings

// Which hands the figures of the actions count, as it is kept from run to run.
Settings {
    id: store

    // Those that come to the node, or the whole starting range.
    property bool handsHere: true

    function choose(here: bool): void {
        handsHere = here;
        // Properties are written by and by, and sync() does not know of them before.
        setValue("handsHere", here);
        sync();
    }

    category: "results"
}
