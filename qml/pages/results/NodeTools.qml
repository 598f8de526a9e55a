import QtQuick
import Tidewell
import "../../logic/distribution_series.mjs" as Series

// What is done at a node beside looking at it, by the names that the page is known for: locks, and the
// distributions.
HandTools {
    id: tools

    // Of the current node, with as much as is known.
    required property var currentActions
    // Called with a solve that is to begin, and whether it keeps the locks; calls it when nothing is
    // lost by it, or may be.
    property var confirmSolve: (proceed, underLocks) => proceed()

    readonly property alias nodeLocks: nodeLocks
    readonly property alias distributions: distributions

    property alias nodeLockMode: nodeLocks.mode
    property alias nodeLockSelectedActionIndex: nodeLocks.selectedAction
    property alias nodeLockMixedMode: nodeLocks.mixed
    property alias nodeLockMixedFreqTexts: nodeLocks.mixTexts
    property alias _updatingMixedFreqTexts: nodeLocks.updatingTexts
    property alias _startingSolveWithNodeLocks: nodeLocks.startingSolve
    property alias nodeLocksByNode: nodeLocks.byNode
    readonly property alias nodeLockActionList: nodeLocks.actions

    property alias _distPayload: distributions.payload
    property alias _distMetricEquity: distributions.isEquity
    property alias _distHoverIndex: distributions.hoverIndex
    property alias _distHoverT: distributions.hoverT

    signal goToSolve
    // Locks of the current node have come or gone.
    signal locksEdited

    function applyNodeLockToHand(nodeIndex: int, handLabel: string): void {
        nodeLocks.apply(nodeIndex, handLabel);
    }

    function resetNodeLockEdits(nodeIndex: int): void {
        nodeLocks.resetNode(nodeIndex);
    }

    // The Solve page shows how far the solve is.
    function reSolve(): void {
        const confirm = confirmSolve;
        confirm(() => {
            goToSolve();
            nodeLocks.solveAgain();
        }, true);
    }

    function _applyMixedEdit(n: int, editedIndex: int, text: string): void {
        nodeLocks.editMix(n, editedIndex, text);
    }

    function _initMixedInputsForNode(n: int): void {
        nodeLocks.initMix(n);
    }

    function _mixedProbsFromInputs(n: int): var {
        return nodeLocks.mixProbs(n);
    }

    function _nodeActionNameTranslated(name: string): string {
        return ActionText.fromAnyCase(name);
    }

    function _nodeHasLocks(nodeIndex: int): bool {
        return nodes.hasLocks(nodeIndex);
    }

    // Of one seat.
    function _distSeriesSortedSeparate(hands: var, values: var): var {
        return Series.series(hands, values);
    }

    NodeLockState {
        id: nodeLocks

        nodes: tools.nodes
        node: tools.walk.currentNodeIndex
        knownActions: tools.currentActions
        onEdited: tools.locksEdited()
    }
    NodeDistributions {
        id: distributions

        controller: tools.nodes.controller
        node: tools.walk.currentNodeIndex
    }
}
