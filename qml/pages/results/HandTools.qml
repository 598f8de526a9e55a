import QtQuick
import Tidewell
import "../../logic/action_list.mjs" as ActionList
import "../../logic/hand_filter.mjs" as HandFilter

// The hands of the current node and their classes, and what narrows them down, by the names that the page
// is known for.
FocusScope {
    id: tools

    required property NodeReader nodes
    required property TreeWalk walk
    // Hands are being played instead of looked at.
    property bool playMode: false

    readonly property alias handList: handList

    // A hand label, the name of a class, a search text; each empty for none.
    property alias selectedHandClass: handList.handClass
    property alias selectedBucket: handList.bucket
    property alias handSearchText: handList.searchText

    property alias _loadedHandCombos: handList.loaded
    property alias _handCombosLoading: handList.loading
    property alias visibleHandCombos: handList.shown
    readonly property var currentHandCombos: _known ? _loadedHandCombos : []
    readonly property var currentHandBuckets: looked && _known
        ? nodes.handBuckets(walk.currentNodeIndex) : []

    // Somebody looks at the hands. Where nobody does nothing is asked for: it would hold up the end of a
    // solve, or the table.
    readonly property bool looked: visible && !playMode
    readonly property bool _known: nodes.controller !== null && nodes.controller.resultIterations > 0

    // What one of a hand's actions is worth is to be explained.
    signal whyRequested(c1: string, c2: string, actionIndex: int)

    // The same hand again ends the filter.
    function toggleHandFilter(handClass: string): void {
        selectedHandClass = handClass === selectedHandClass ? "" : handClass;
    }

    function toggleBucketFilter(name: string): void {
        selectedBucket = name === selectedBucket ? "" : name;
    }

    function _scheduleHandCombosLoad(): void {
        handList.scheduleLoad();
    }

    function _handClassFromCards(c1: string, c2: string): string {
        return HandFilter.classOfCards(c1, c2);
    }

    function _matchSearchTokenToCombo(token: string, c1: string, c2: string): bool {
        return HandFilter.tokenMatches(token, c1, c2);
    }

    // As ActionBar takes them.
    function _handActionsForProbs(actionProbs: var): var {
        return ActionList.withFrequencies(nodes.actions(walk.currentNodeIndex), actionProbs);
    }

    HandList {
        id: handList

        nodes: tools.nodes
        nodeIndex: tools.walk.currentNodeIndex
        boardText: tools.walk.boardWithDeals
        suits: tools.walk.suits
        active: tools.looked
    }
}
