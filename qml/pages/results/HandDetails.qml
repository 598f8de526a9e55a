pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tidewell
import "../../logic/hand_rows.mjs" as HandRows

// Every hand of the acting player with its values and its strategy, and what narrows the list down.
ListFrame {
    id: panel

    required property HandList hands
    // Gives the entries of an ActionBar for a list of probabilities.
    required property var actionsFor
    required property real uiScale
    // Why the values are not known; empty where they are.
    property string unknownEv: ""

    // Label of the hand that the pointer or else the keyboard is on, empty for none.
    readonly property alias litHand: list.litHand
    readonly property bool _listed: !hands.loading && hands.shown.length > 0

    signal whyRequested(c1: string, c2: string, actionIndex: int)

    // Puts the list on the clipboard as it is filtered and sorted.
    function copy(): void {
        const heads = {
            hand: qsTr("Hand"),
            weight: qsTr("Weight"),
            //: Head of a column: what an action is worth; %1 is the action
            ev: action => qsTr("EV %1").arg(action.name),
            frequency: action => action.name
        };
        clipboard.put(HandRows.asText(hands.rows, hands.definitions, heads, unknownEv === ""));
    }

    function _message(): string {
        if (hands.loading) {
            return qsTr("Loading hand combos…");
        }
        if (hands.loaded.length === 0) {
            return qsTr("No hand combos to display for this node.");
        }
        return hands.shown.length === 0 ? qsTr("No combos match the current filters.") : "";
    }

    title: qsTr("Hand Details")
    note: {
        const shown = hands.shown.length;
        const all = hands.loaded.length;
        if (hands.loading || all === 0) {
            return "";
        }
        //: How many hands of how many a list shows
        return shown < all ? qsTr("%1 of %2 shown").arg(shown).arg(all) : qsTr("%1 shown").arg(all);
    }

    Clipboard {
        id: clipboard
    }
    AppTextField {
        theme: panel.theme
        placeholderText: qsTr("Search (JJ, 56s, JcJd, ...)")
        text: panel.hands.searchText
        onTextEdited: panel.hands.searchText = text
        Keys.onEscapePressed: event => {
            event.accepted = text !== "";
            panel.hands.searchText = "";
        }
        Layout.fillWidth: true
        Layout.minimumWidth: 120
    }
    RowLayout {
        spacing: panel.theme.spaceSm
        visible: panel.hands.handClass !== ""

        AppLabel {
            theme: panel.theme
            //: %1 is a starting hand, such as "AKs"
            text: qsTr("Filter: %1").arg(panel.hands.handClass)
            font.pixelSize: Fallback.type.labelMd
            elide: Text.ElideRight
            Layout.fillWidth: true
        }
        SecondaryButton {
            theme: panel.theme
            compact: true
            text: qsTr("Clear")
            onClicked: panel.hands.handClass = ""
        }
    }
    // The message lies over the list, which keeps its rows from one node to the next: to take them away
    // and bring them back would cost a frame at each step of a walk.
    Item {
        Layout.fillWidth: true
        Layout.fillHeight: true

        AppLabel {
            width: parent.width
            theme: panel.theme
            text: panel._message()
            color: panel.theme.legible(panel.theme.textMuted, panel.color)
            font.pixelSize: Fallback.type.bodySm
            wrapMode: Text.Wrap
            visible: text !== ""
        }
        HandListHead {
            id: heads

            width: parent.width
            theme: panel.theme
            columns: list.columns
            hands: panel.hands
            opacity: panel._listed ? 1 : 0
            enabled: panel._listed
        }
        HandListView {
            id: list

            anchors.fill: parent
            anchors.topMargin: heads.height + panel.theme.spaceXs
            theme: panel.theme
            hands: panel.hands
            actionsFor: panel.actionsFor
            uiScale: panel.uiScale
            unknownEv: panel.unknownEv
            opacity: panel._listed ? 1 : 0
            enabled: panel._listed
            Accessible.name: panel.title
            onWhyRequested: (c1, c2, action) => panel.whyRequested(c1, c2, action)
            onCopyRequested: panel.copy()
        }
    }
}
