pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Tidewell
import "../logic/action_list.mjs" as ActionList

// Walks the tree of a finished solve: at the left the way down, at the right what is played at the
// current node.
HandTools {
    id: page

    property Theme theme: Fallback.theme
    property Typography type: Fallback.type
    // The program's AppController; null for none.
    property var controller: null
    // Of the solve, before any card is dealt in the tree.
    property string boardText: ""
    property real rakePercent: 0
    // In chips, 0 for none.
    property real rakeCap: 0

    // The spot on the Setup page is another one by now.
    property bool setupChanged: false
    // Called with a solve that is to begin, and whether it keeps the locks; calls it when nothing is
    // lost by it, or may be.
    property var confirmSolve: (proceed, underLocks) => proceed()

    property alias treeLevels: treeWalk.levels
    property alias currentNodeIndex: treeWalk.currentNodeIndex
    property alias selectedPlayer: treeWalk.selectedPlayer
    property alias treeBoardText: treeWalk.boardWithDeals
    property alias chanceCardDisplayOverrideByNode: treeWalk.shownCards

    property alias chancePickerLevelIndex: chanceChoice.levelIndex
    property alias chancePickerTitle: chanceChoice.title
    property alias chancePickerActions: chanceChoice.actions
    property alias chancePickerIndexByCard: chanceChoice.indexByCard
    property alias chancePickerAvailableCardIndices: chanceChoice.availableIndices
    property alias chancePickerBoardText: chanceChoice.boardText

    property alias handWeights: strategyData.weights
    property alias handColors: strategyData.colors
    property alias handActionTypeList: strategyData.actionTypes
    property alias handActionProbs: strategyData.actionProbs

    // Locks that were set here: by node index a map of hand label to `{actionProbs}`.
    property var nodeLocksByNode: ({})
    // This page has just asked for a solve with its locks.
    property bool _startingSolveWithNodeLocks: false

    // Hands are being played instead of looked at.
    property bool playMode: false

    nodes: reader
    walk: treeWalk

    readonly property real uiScale: Math.max(0.75, Math.min(1, width / 1540))
    // Of the current node, arrays in the node's order. A hidden page asks nothing: it would hold up the
    // end of a solve.
    readonly property var currentActions: visible ? _actionsOf(currentNodeIndex) : []
    readonly property var actionFrequenciesActions: _normalizeActionEvsAroundFold(currentActions)

    // refreshHandMatrix() is due.
    property bool _matrixStale: false

    signal goToSolve

    function resetTreeToRoot(): void {
        treeWalk.reset();
    }

    function selectActionAtLevel(levelIndex: int, actionIndex: int): void {
        treeWalk.select(levelIndex, actionIndex);
    }

    function navigateToBreadcrumb(levelIndex: int): void {
        treeWalk.goTo(levelIndex);
    }

    function openChancePicker(levelIndex: int, nodeIndex: int): void {
        chanceChoice.open(levelIndex, nodeIndex);
    }

    function chooseChanceCard(actionIndex: int, displayCardText: string): void {
        chanceChoice.choose(actionIndex, displayCardText);
    }

    function refreshHandMatrix(): void {
        _matrixStale = !visible;
        if (visible) {
            strategyData.refresh(currentNodeIndex, selectedBucket,
                                 nodeLocksByNode[currentNodeIndex] ?? {});
        }
    }

    function _boardFromTreeSelections(): string {
        return treeWalk.boardBefore(treeLevels.count);
    }

    function _boardFromTreeSelectionsUpTo(level: int): string {
        return treeWalk.boardBefore(level);
    }

    function _chanceCardIndexForSelection(card: string): int {
        return chanceChoice.indexFor(card);
    }

    function _normalizeActionEvsAroundFold(actions: var): var {
        return ActionList.withEvsAgainstFold(ActionList.toArray(actions));
    }

    function _nodeHasLocks(nodeIndex: int): bool {
        return reader.hasLocks(nodeIndex);
    }

    function _actionsOf(node: int): var {
        const meta = reader.meta(node);
        if (meta.nodeType !== "chance") {
            return reader.knownActions(node);
        }
        const name = meta.chanceDeal === "river" ? qsTr("Random river card")
                                                 : qsTr("Random turn card");
        return [{name: name, actionType: "chance", frequency: 1, combos: NaN, equity: NaN, ev: NaN}];
    }

    function _clearNodeLockState(): void {
        nodeLocksByNode = {};
    }

    function _takeResults(): void {
        reader.forget();
        chanceChoice.close();
        resetTreeToRoot();
        refreshHandMatrix();
        _scheduleHandCombosLoad();
    }

    Keys.onPressed: event => {
        if (event.key === Qt.Key_PageDown || event.key === Qt.Key_PageUp) {
            strategyPanel.scrollBy(event.key === Qt.Key_PageDown ? 0.9 : -0.9);
            event.accepted = true;
        } else if (event.matches(StandardKey.Copy)) {
            strategyPanel.copyRange();
            event.accepted = true;
        } else if (event.key === Qt.Key_C
                   && event.modifiers === (Qt.ControlModifier | Qt.ShiftModifier)) {
            strategyPanel.copyMatrix();
            event.accepted = true;
        } else if (treePanel.handleKey(event.key)) {
            treePanel.forceActiveFocus(Qt.TabFocusReason);
            event.accepted = true;
        }
    }

    onCurrentNodeIndexChanged: {
        page.handList.clearFilters();
        refreshHandMatrix();
        _scheduleHandCombosLoad();
    }
    onSelectedBucketChanged: refreshHandMatrix()
    onVisibleChanged: {
        if (!visible) {
            chanceChoice.close();
        } else if (_matrixStale) {
            refreshHandMatrix();
        }
    }
    Component.onCompleted: _takeResults()

    Connections {
        target: page.controller

        function onRunningChanged(): void {
            if (!page.controller.running) {
                return;
            }
            page.playMode = false;
            if (!page._startingSolveWithNodeLocks) {
                page._clearNodeLockState();
            }
            page._startingSolveWithNodeLocks = false;
        }

        function onResultsChanged(): void {
            page._takeResults();
            if (page.controller.resultIterations <= 0 && !page._startingSolveWithNodeLocks) {
                page._clearNodeLockState();
            }
        }
    }
    // The colours of the hands are those of the moment.
    Connections {
        target: page.theme

        function onDarkChanged(): void {
            page.refreshHandMatrix();
        }

        function onDistinctActionsChanged(): void {
            page.refreshHandMatrix();
        }
    }

    NodeReader {
        id: reader

        controller: page.controller
        locksByNode: page.nodeLocksByNode
        onControllerChanged: page._takeResults()
    }
    TreeWalk {
        id: treeWalk

        nodes: reader
        boardText: page.boardText
    }
    ChanceChoice {
        id: chanceChoice

        nodes: reader
        walk: treeWalk
    }
    StrategyData {
        id: strategyData

        nodes: reader
        theme: page.theme
    }

    T.SplitView {
        anchors.fill: parent
        anchors.margins: page.theme.spaceMd
        orientation: Qt.Horizontal

        handle: SplitGrip {
            theme: page.theme
            onNudged: by => treePanel.T.SplitView.preferredWidth = treePanel.width + by
        }

        GameTreePanel {
            id: treePanel

            theme: page.theme
            nodes: reader
            walk: treeWalk
            frozen: page.playMode
            focus: true
            T.SplitView.preferredWidth: Math.max(220, Math.round(320 * page.uiScale))
            T.SplitView.minimumWidth: Math.max(200, Math.round(280 * page.uiScale))
            onDealRequested: (level, node) => chanceChoice.open(level, node)
        }
        StrategyPanel {
            id: strategyPanel

            theme: page.theme
            nodes: reader
            walk: treeWalk
            strategy: strategyData
            actions: page.currentActions
            barActions: page.actionFrequenciesActions
            rakePercent: page.rakePercent
            rakeCap: page.rakeCap
            uiScale: page.uiScale
            hands: page.handList
            buckets: page.currentHandBuckets
            actionsFor: page._handActionsForProbs
            selectedHand: page.selectedHandClass
            playMode: page.playMode
            playBoardText: page.playBoardText
            setupChanged: page.setupChanged
            T.SplitView.minimumWidth: Math.max(360, Math.round(500 * page.uiScale))
            T.SplitView.fillWidth: true
            onHandClicked: hand => page.toggleHandFilter(hand)
            onBucketClicked: name => page.toggleBucketFilter(name)
            onWhyRequested: (c1, c2, action) => page.whyRequested(c1, c2, action)
        }
    }

    OnDemand {
        wanted: chanceChoice.levelIndex >= 0

        ChancePicker {
            theme: page.theme
            choice: chanceChoice
            pageWidth: page.width
            pageHeight: page.height
        }
    }
}
