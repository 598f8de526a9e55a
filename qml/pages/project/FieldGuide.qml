import QtQuick
import Tidewell

// Between what keeps the spot from being solved and the fields of the page: it leads to the field that
// is meant, tells panels which of theirs it is, and tells of what fields refuse.
QtObject {
    id: guide

    required property SpotCheck spotCheck
    // The panels by the names that SpotCheck.place begins with. One that is a place by itself has a
    // `field`, one of several fields has them by object name and tells what one of them has refused.
    required property var panels

    property Binding _refused: Binding {
        target: guide.spotCheck
        property: "refused"
        value: guide._refusedBy("game") ?? guide._refusedBy("oopSizing")
            ?? guide._refusedBy("ipSizing")
    }

    function goTo(place: string): void {
        const [panel, field] = place.split("/");
        const item = field === undefined ? panels[panel].field : _within(panels[panel], field);
        item?.forceActiveFocus(Qt.TabFocusReason);
    }

    // The field of a panel that keeps the spot from being solved, "" for none.
    function markedIn(panel: string): string {
        const [place, field] = spotCheck.place.split("/");
        return place === panel ? field ?? panel : "";
    }

    function _refusedBy(name: string): var {
        const refused = panels[name].refused;
        return refused && {badge: qsTr("Check Numbers"), place: `${name}/${refused.field}`,
                           text: refused.text};
    }

    function _within(item: Item, name: string): Item {
        return item.objectName === name ? item
            : Array.from(item.children).reduce((found, child) => found ?? _within(child, name), null);
    }
}
