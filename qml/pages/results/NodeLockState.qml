import QtQuick
import Tidewell
import "../../logic/action_list.mjs" as ActionList
import "../../logic/lock_mix.mjs" as Mix

// The play that a person fixes at the current node, before and during a solve under it, and what the
// last such solve has changed. The controller solves with the locks; `byNode` is the copy of those made
// here, so that they show at once.
QtObject {
    id: locks

    required property NodeReader nodes
    required property int node
    // What the node does where the controller knows no list of it.
    required property var knownActions

    // Hands of the matrix are locked by a click.
    property bool mode: false
    // The action that a click locks, -1 for none.
    property int selectedAction: -1
    // A click locks the mix in place of one action.
    property bool mixed: false
    // Frequencies of the mix with two decimals, aligned with `actions`.
    property var mixTexts: []
    property bool updatingTexts: false
    // This page is just asking for a solve under its locks.
    property bool startingSolve: false
    // By node index a map of hand label to `{actionProbs}`.
    property var byNode: ({})
    // Of `byNode`, the nodes with any lock, as keys. It changes with these alone, not with every hand.
    property var lockedNodes: ({})

    // Of the result before the last solve under locks, `evOop`, `evIp`, `exploitability`, chips, and
    // `startingPot`; null once there is a result of another kind.
    property var before: null

    readonly property bool lockable: nodes.meta(node).nodeType === "decision"
    // In the order of the tree, which is that of the solver.
    readonly property var actions: {
        const raw = nodes.actions(node);
        return raw.length > 0 ? raw : knownActions;
    }

    property string _selectedName: ""
    // The solve that runs is one under these locks; what it began from.
    property bool _keeping: false
    property var _solvedFrom: null

    // A lock of the node has come or gone.
    signal edited

    function select(action: int): void {
        mixed = false;
        selectedAction = action;
        _selectedName = actions[action]?.name ?? "";
    }

    // Frequencies that fit the node stay as they were typed.
    function toggleMixed(): void {
        mixed = !mixed;
        if (mixed) {
            selectedAction = -1;
            _fitMix();
        }
    }

    function initMix(count: int): void {
        _setTexts(Mix.evenTexts(count));
    }

    function editMix(count: int, index: int, text: string): void {
        if (!updatingTexts && mixTexts.length === count) {
            _setTexts(Mix.withEdit(mixTexts, index, text));
        }
    }

    function mixProbs(count: int): var {
        return Mix.probabilities(mixTexts, count);
    }

    function enterMode(): void {
        mode = true;
        selectedAction = -1;
    }

    // What was locked at the node is given up.
    function leaveMode(): void {
        mode = false;
        resetNode(node);
    }

    function apply(target: int, hand: string): void {
        const count = actions.length;
        if (!mode || target !== node || !lockable || count === 0) {
            return;
        }
        if (!mixed && (selectedAction < 0 || selectedAction >= count)) {
            return;
        }
        const probs = mixed ? mixProbs(count) : Mix.pure(selectedAction, count);
        const ofNode = Object.assign({}, byNode[target]);
        ofNode[hand] = {actionProbs: probs};
        byNode = _with(target, ofNode);
        nodes.controller?.setNodeLockProbs(target, hand, probs);
        edited();
    }

    function resetNode(target: int): void {
        byNode = _with(target, {});
        selectedAction = -1;
        mixed = false;
        mixTexts = [];
        nodes.controller?.clearNodeLocks(target);
        lockedNodes = _lockedNodes();  // a lock of a project may have gone
        edited();
    }

    // By hand label `{actionProbs}`: what a project brought with it, and what was set here.
    function ofNode(target: int): var {
        const found = {};
        if (nodes.nodeCount() > 0) {
            for (const lock of ActionList.toArray(nodes.controller.nodeLocks(target))) {
                found[lock.hand] = {actionProbs: lock.actionProbs ?? []};
            }
        }
        return Object.assign(found, byNode[target]);
    }

    function clear(): void {
        mode = false;
        selectedAction = -1;
        mixed = false;
        mixTexts = [];
        byNode = {};
    }

    function solveAgain(): void {
        const controller = nodes.controller;
        if (!controller || controller.running) {
            return;
        }
        _solvedFrom = {
            evOop: controller.resultEvOop,
            evIp: controller.resultEvIp,
            exploitability: controller.resultExploitability,
            startingPot: controller.resultStartingPot
        };
        startingSolve = true;
        controller.reSolveWithNodeLocks();
        startingSolve = false;  // where it could not even begin
    }

    // A solve has begun or ended.
    function noteRunning(running: bool): void {
        if (running) {
            _keeping = startingSolve;
            startingSolve = false;
        }
        const failed = !running && nodes.controller.resultIterations <= 0;
        if (running ? !_keeping : failed) {
            clear();
        }
        _keeping = _keeping && running;
    }

    // There are other results, or none any more.
    function noteResults(iterations: int): void {
        if (iterations <= 0 && !_keeping && !startingSolve) {
            clear();
        }
        before = iterations > 0 && _keeping ? _solvedFrom : null;
        lockedNodes = _lockedNodes();
    }

    function _setTexts(texts: var): void {
        updatingTexts = true;
        mixTexts = texts;
        updatingTexts = false;
    }

    function _fitMix(): void {
        if (mixTexts.length !== actions.length) {
            initMix(actions.length);
        }
    }

    function _with(target: int, ofNode: var): var {
        const changed = Object.assign({}, byNode);
        delete changed[target];
        return Object.keys(ofNode).length > 0 ? Object.assign(changed, {[target]: ofNode}) : changed;
    }

    function _lockedNodes(): var {
        const locked = {};
        for (const node of Object.keys(byNode)) {
            if (Object.keys(byNode[node]).length > 0) {
                locked[node] = true;
            }
        }
        return locked;
    }

    onByNodeChanged: {
        const locked = _lockedNodes();
        if (Object.keys(locked).join() !== Object.keys(lockedNodes).join()) {
            lockedNodes = locked;
        }
    }
    // What is selected stays so where the node has the same action at the same place.
    onActionsChanged: {
        if (selectedAction >= 0 && actions[selectedAction]?.name !== _selectedName) {
            selectedAction = -1;
        }
        if (mixed) {
            _fitMix();
        }
    }
}
