pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tidewell
import "../logic/action_list.mjs" as ActionList

// Walks the tree of a finished solve: at the left the way down, at the right what is played at the
// current node.
PlayScope {
    id: page

    property Theme theme: Fallback.theme
    property Typography type: Fallback.type
    // The spot on the Setup page is another one by now.
    property bool setupChanged: false

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

    // Figures count the hands that come to the node, not the whole range.
    property alias handsHere: figuresStore.handsHere

    property alias handWeights: strategyData.weights
    property alias handColors: strategyData.colors
    property alias handActionTypeList: strategyData.actionTypes
    property alias handActionProbs: strategyData.actionProbs

    nodes: reader
    walk: treeWalk
    choice: chanceChoice

    // Of the current node, arrays in the node's order.
    currentActions: looked ? _actionsOf(currentNodeIndex) : []
    readonly property var actionFrequenciesActions: _normalizeActionEvsAroundFold(currentActions)

    // refreshHandMatrix() is due.
    property bool _matrixStale: false

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
        _matrixStale = !looked;
        if (looked) {
            strategyData.refresh(currentNodeIndex, selectedBucket,
                                 nodeLocks.ofNode(currentNodeIndex));
        }
    }

    function _takeHand(hand: string): void {
        if (nodeLockMode) {
            applyNodeLockToHand(currentNodeIndex, hand);
        } else {
            toggleHandFilter(hand);
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

    function _actionsOf(node: int): var {
        const meta = reader.meta(node);
        if (meta.nodeType !== "chance") {
            return reader.knownActions(node);
        }
        const name = meta.chanceDeal === "river" ? qsTr("Random river card")
                                                 : qsTr("Random turn card");
        return [{name: name, actionType: "chance", frequency: 1, combos: NaN, equity: NaN, ev: NaN}];
    }

    function _takeResults(): void {
        reader.forget();
        chanceChoice.close();
        distributions.close();
        resetTreeToRoot();
        refreshHandMatrix();
        _scheduleHandCombosLoad();
    }

    Keys.onPressed: event => {
        if (playMode) {
            event.accepted = handlePlayKey(event);
        } else if (event.key === Qt.Key_PageDown || event.key === Qt.Key_PageUp) {
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
    onLocksEdited: refreshHandMatrix()
    onVisibleChanged: {
        if (!visible) {
            chanceChoice.close();
            distributions.close();
        }
    }
    onLookedChanged: {
        if (looked && _matrixStale) {
            refreshHandMatrix();
        }
    }
    onPlayModeChanged: if (!playMode) treePanel.forceActiveFocus()
    Component.onCompleted: _takeResults()

    Connections {
        target: page.controller

        function onRunningChanged(): void {
            page.nodeLocks.noteRunning(page.controller.running);
            if (page.controller.running) {
                page.playMode = false;
            }
        }

        function onResultsChanged(): void {
            page.nodeLocks.noteResults(page.controller.resultIterations);
            page._takeResults();
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

    FiguresStore {
        id: figuresStore
    }
    NodeReader {
        id: reader

        controller: page.controller
        lockedNodes: page.nodeLocks.lockedNodes
        handsHere: page.handsHere
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
        replacing: page.playMode
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
            locks: page.nodeLocks
            onHandClicked: hand => page._takeHand(hand)
            onBucketClicked: name => page.toggleBucketFilter(name)
            onWhyRequested: (c1, c2, action) => page.whyRequested(c1, c2, action)
            onHandsHereChosen: handsHere => figuresStore.choose(handsHere)
            onHandDragged: hand => page.applyNodeLockToHand(page.currentNodeIndex, hand)
            headerActions: [
                SecondaryButton {
                    objectName: "distributions"
                    theme: page.theme
                    text: qsTr("Distributions")
                    tip: qsTr("Each player's equity or EV by hand, as two curves.")
                    horizontalPadding: page.theme.spaceSm
                    onClicked: page.distributions.open()
                    Layout.fillWidth: true
                    Layout.preferredWidth: Math.max(110, Math.round(140 * page.uiScale))
                },
                SecondaryButton {
                    objectName: "play"
                    theme: page.theme
                    text: page.playMode ? qsTr("Range view") : qsTr("Play vs solution")
                    horizontalPadding: page.theme.spaceSm
                    onClicked: page.playMode = !page.playMode
                    Layout.fillWidth: true
                    Layout.preferredWidth: Math.max(110, Math.round(140 * page.uiScale))
                    Layout.minimumWidth: implicitWidth
                }
            ]
            nodeButtons: LockButtons {
                theme: page.theme
                locks: page.nodeLocks
            }
            nodeTools: LockPanel {
                theme: page.theme
                locks: page.nodeLocks
                visible: page.nodeLockMode
                onSolveRequested: page.reSolve()
                Layout.fillWidth: true
            }

            PlayPanel {
                anchors.fill: parent
                page: page
                theme: page.theme
                onVisibleChanged: if (visible) forceActiveFocus()
            }
        }
    }
    OnDemand {
        wanted: page.distributions.shown

        DistributionsDialog {
            theme: page.theme
            distributions: page.distributions
            pageWidth: page.width
            pageHeight: page.height
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
