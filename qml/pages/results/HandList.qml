import QtQuick
import Tidewell
import "../../logic/hand_filter.mjs" as HandFilter
import "../../logic/hand_rows.mjs" as HandRows
import "../../logic/suit_map.mjs" as Suits

// The hands of a node as a list, and what narrows it down: a hand label, the name of a class, a search
// text, each empty for none.
QtObject {
    id: list

    required property NodeReader nodes
    required property int nodeIndex
    // Of the node, with the cards dealt on the way.
    required property string boardText
    // Of the cards on the way there, as TreeWalk has them.
    required property var suits
    // Whether anybody looks; otherwise nothing is asked for.
    required property bool active

    property string handClass: ""
    property string bucket: ""
    property string searchText: ""

    // Maps of `c1`, `c2`, cards as the tree keeps them, `weight`, `ev`, and by action `actionEvs` and `actionProbs`, as they came.
    property var loaded: []
    property bool loading: false
    // Nobody is walking on: what costs time may be shown.
    readonly property bool settled: !_debounce.running
    // The actions of the node that `loaded` is of.
    property var definitions: []
    // With cards as they are shown.
    readonly property var shown: HandFilter.filtered(Suits.shownHands(loaded, suits), handClass, bucket, searchText,
                                                     _boardCards)

    // Of the rows: `key` as HandRows.sorted() takes it.
    property var order: ({key: "", rising: false})
    readonly property var rows: HandRows.sorted(shown, order.key, order.rising)

    // On the board of `loaded`.
    property int _boardCards: 0
    // A list is due as soon as somebody looks.
    property bool _stale: false

    // Of `loaded` to be, so far.
    property var _arrived: []
    readonly property int _partLength: 128

    // Whoever walks on quickly asks for the list of the last node alone.
    readonly property Timer _debounce: Timer {
        interval: 60
        onTriggered: list._load()
    }

    readonly property Connections _answers: Connections {
        target: list.nodes.controller

        function onNodeHandCombosReady(node: int): void {
            if (list.loading && node === list.nodeIndex && !list._debounce.running) {
                list._fetch();
            }
        }
    }

    function scheduleLoad(): void {
        loading = true;
        _stale = !active;
        if (active) {
            _debounce.restart();
        }
    }

    // Falling, rising, as they came.
    function sortBy(key: var): void {
        order = HandRows.nextOrder(order, key);
    }

    function clearFilters(): void {
        handClass = "";
        bucket = "";
        searchText = "";
    }

    function _load(): void {
        const controller = nodes.controller;
        _arrived = [];
        if (!active) {
            _stale = true;
        } else if (nodes.meta(nodeIndex).nodeType !== "decision") {
            _take([]);
        } else if (controller.prepareNodeHandCombos(nodeIndex)) {
            _fetch();
        }
    }

    // A part of the list at a time: a whole one holds up the event loop for some frames.
    function _fetch(): void {
        if (!loading || _debounce.running) {
            return;  // walked on
        }
        const part = nodes.handCombosPart(nodeIndex, _arrived.length, _partLength);
        _arrived = _arrived.concat(part);
        if (part.length < _partLength) {
            _take(_arrived);
            _arrived = [];
        } else {
            Qt.callLater(_fetch);
        }
    }

    function _take(combos: var): void {
        const actions = nodes.actions(nodeIndex);
        if (order.key >= actions.length) {
            order = {key: "", rising: false};
        }
        definitions = actions;
        _boardCards = Math.floor(boardText.length / 2);
        loaded = combos;
        loading = false;
    }

    onActiveChanged: {
        if (active && _stale) {
            scheduleLoad();
        }
    }
}
