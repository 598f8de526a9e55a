import QtQuick
import "../../logic/action_label.mjs" as ActionLabel
import "../../logic/action_list.mjs" as ActionList

// What the controller tells about nodes, each asked for once. Bindings that read here are evaluated
// anew after forget(). Without a controller or a result everything is empty.
QtObject {
    id: reader

    property var controller: null
    // Nodes with locks that were set in the interface, as keys.
    property var lockedNodes: ({})

    // Figures of actions count the hands that come to a node where they are known, not the whole range.
    property bool handsHere: true

    property var _answers: ({})
    // By node index what is known of the hands that come there; _hereRevision tells of more.
    property var _here: ({})
    property int _hereRevision: 0
    // The last strategy that was asked for; the controller keeps the others.
    property var _strategy: null

    readonly property Connections _ready: Connections {
        target: reader.controller

        function onNodeActionStatsHereReady(node: int): void {
            if (node in reader._here) {
                delete reader._here[node];
                ++reader._hereRevision;
            }
        }
    }

    // The result is another one.
    function forget(): void {
        _answers = {};
        _here = {};
        _strategy = null;
    }

    function nodeCount(): int {
        return controller ? _once("count", () => controller.treeNodeCount()) : 0;
    }

    // Map of `nodeType`, `chanceDeal`, `player`, `pot`, `effectiveStack`, `investedOop`, `investedIp`,
    // `hasChildren`; money in chips.
    function meta(node: int): var {
        return nodeCount() > 0 ? _once("meta" + node, () => controller.nodeMeta(node)) : {};
    }

    // Array of maps of `name`, `actionType`, `frequency`, `childIndex`, and `chips` as chipsOf() tells them.
    function actions(node: int): var {
        return nodeCount() > 0 ? _once("actions" + node, () => _actionsWithChips(node)) : [];
    }

    // Array of maps of `name`, `actionType`, `frequency`, `combos`, `equity`, `ev`, `chips`. Dear to the
    // controller near the root of a large tree.
    function actionStats(node: int): var {
        return nodeCount() > 0
            ? _once("stats" + node, () => _withChips(node, controller.nodeActionStats(node))) : [];
    }

    // The same of the hands that come to the node, and `reached`: whether the opponent comes, too. While
    // `pending` is set, equity and EV are on their way. Empty where nobody knows which hands come.
    function actionStatsHere(node: int): var {
        const more = _hereRevision;
        const known = _here;
        if (nodeCount() === 0) {
            return [];
        }
        // What another node has interrupted is asked for again.
        if (!known[node] || known[node].some(action => action.pending)) {
            known[node] = _withChips(node, controller.nodeActionStatsHere(node));
        }
        return known[node];
    }

    // The actions with as much as is known of them, by the chosen hands.
    function knownActions(node: int): var {
        const here = handsHere ? actionStatsHere(node) : [];
        const stats = here.length > 0 ? here : actionStats(node);
        return stats.length > 0 ? stats : actions(node);
    }

    // The actions with their frequencies by the chosen hands, at once at every node; -1 where nobody can
    // say.
    function frequencies(node: int): var {
        const here = handsHere ? _sharesHere(node) : [];
        return actions(node).map((action, index) => {
            const frequency = here[index]?.frequency ?? action.frequency;
            return Object.assign({}, action, {frequency: Number.isFinite(frequency) ? frequency : -1});
        });
    }

    // Whether it is known which hands come to the node. A project may not hold it.
    function knowsHandsHere(node: int): bool {
        return _sharesHere(node).length > 0;
    }

    // Whether the opponent of who acts at the node ever comes there; otherwise nobody can say what
    // anything is worth. True where that is not known.
    function opponentComes(node: int): bool {
        return nodeCount() === 0
            || _once("comes" + node, () => controller.nodeOpponentComes(node));
    }

    // Maps by hand label `weights`, `actionProbs` and `dominantActionTypes`, and the list `actionTypeList`,
    // of the hands that come to the node, or of those of a class.
    function handStrategy(node: int, bucket: string): var {
        if (nodeCount() === 0) {
            return {};
        }
        if (_strategy === null || _strategy.node !== node || _strategy.bucket !== bucket) {
            _strategy = {node: node, bucket: bucket,
                         answer: controller.nodeHandStrategyReach169(node, bucket)};
        }
        return _strategy.answer;
    }

    // Maps of `name`, `displayName`, `combos`, `actionProbs`: the classes of hands of the node's range.
    function handBuckets(node: int): var {
        return nodeCount() > 0 ? controller.nodeHandBuckets(node) : [];
    }

    // Maps of `c1`, `c2`, `weight`, `ev`, `actionEvs`, `actionProbs`, `buckets`, by falling EV: as many of
    // the list, from a place on, as there are. The controller must have prepared the list.
    function handCombosPart(node: int, first: int, count: int): var {
        return nodeCount() > 0
            ? ActionList.toArray(controller.nodeHandCombosPart(node, first, count)) : [];
    }

    // Locks of the solve, as in a project, count too.
    function hasLocks(node: int): bool {
        return node in lockedNodes || nodeCount() > 0 && controller.nodeLocks(node).length > 0;
    }

    function _sharesHere(node: int): var {
        return nodeCount() > 0
            ? _once("shares" + node,
                    () => ActionList.toArray(controller.nodeActionSharesHere(node))) : [];
    }

    function _withChips(node: int, list: var): var {
        const plain = actions(node);
        return ActionList.toArray(list).map((entry, index) =>
            Object.assign({}, entry, {chips: plain[index]?.chips ?? NaN}));
    }

    function _actionsWithChips(node: int): var {
        const list = ActionList.toArray(controller.nodeActions(node));
        const here = meta(node);
        if (here.nodeType !== "decision") {
            return list;
        }
        const evenAt = _evenAt(node);
        return list.map(action => {
            _answers["parent" + action.childIndex] = node;
            const chips = ActionLabel.chipsOf(action.actionType, here, meta(action.childIndex), evenAt);
            return Object.assign({}, action, {chips: chips});
        });
    }

    // The meta of the last node on the way to this one at which both players had paid alike; empty if
    // nobody came here by that way.
    function _evenAt(node: int): var {
        let at = node;
        while (at !== undefined && !ActionLabel.isEven(meta(at))) {
            at = _answers["parent" + at];
        }
        return at === undefined ? {} : meta(at);
    }

    function _once(question: string, ask: var): var {
        const answers = _answers;
        if (!(question in answers)) {
            answers[question] = ask();
        }
        return answers[question];
    }
}
