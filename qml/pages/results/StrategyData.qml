import QtQuick
import Tidewell
import "../../logic/hand_strategy.mjs" as HandStrategy

// What the matrix shows of a node. Filled by refresh() alone, as whole maps.
QtObject {
    id: strategy

    required property NodeReader nodes
    required property Theme theme
    // By hand label.
    property var weights: ({})
    property var colors: ({})
    property var actionProbs: ({})
    // What the actions' colours follow from, aligned with the lists of probabilities.
    property var actionTypes: []
    // Labels.
    property var lockedHands: []

    // `bucket` restricts the hands to one class, unless it is empty. `locks` is a map of hand label to
    // `{actionProbs}`.
    function refresh(node: int, bucket: string, locks: var): void {
        if (!nodes.controller) {
            weights = {};
            colors = {};
            actionTypes = [];
            actionProbs = {};
            lockedHands = [];
            return;
        }
        const answer = nodes.handStrategy(node, bucket);
        const typeList = answer.actionTypeList ?? [];
        const definitions = nodes.actions(node);
        theme.actionsAtNode = definitions.map(definition => definition.actionType);
        const stored = answer.actionProbs ?? {};
        const count = HandStrategy.actionCount(definitions, stored, typeList);
        const probs = HandStrategy.withLocks(stored, locks, count);
        const shown = answer.weights ?? {};
        colors = HandStrategy.handColors(shown, probs, definitions, answer.dominantActionTypes ?? {},
                                         key => theme.actionColor(key), theme.textMuted);
        actionTypes = HandStrategy.colorKeys(definitions, typeList, count);
        actionProbs = probs;
        weights = shown;
        lockedHands = Object.keys(locks);
    }
}
