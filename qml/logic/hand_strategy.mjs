// What the matrix of a node shows: maps by hand label ("AKs"), lists by action in the node's order.

import { toArray } from "./action_list.mjs";

// Non-positive entries count nothing; where nothing is left, all actions are alike.
function normalized(probs) {
    const clean = probs.map(prob => prob > 0 && Number.isFinite(prob) ? prob : 0);
    const total = clean.reduce((sum, prob) => sum + prob, 0);
    return clean.map(prob => total > 0 ? prob / total : 1 / clean.length);
}

// How many actions a list of probabilities must have to be shown.
export function actionCount(definitions, actionProbs, actionTypeList) {
    if (definitions.length > 0) {
        return definitions.length;
    }
    const hands = Object.keys(actionProbs);
    return (hands.length > 0 && actionProbs[hands[0]].length) || actionTypeList.length;
}

// Locks are laid over the probabilities as they will be solved for. `locks` holds `{actionProbs}` by
// hand; a list of another length leaves the hand as it was.
export function withLocks(actionProbs, locks, count) {
    const result = Object.assign({}, actionProbs);
    for (const hand of Object.keys(locks)) {
        const locked = toArray(locks[hand].actionProbs);
        if (count > 0 && locked.length === count) {
            result[hand] = normalized(locked);
        }
    }
    return result;
}

// What each action's colour follows from, `count` entries.
export function colorKeys(definitions, actionTypeList, count) {
    return Array.from({length: count}, (_, i) => {
        if (i < definitions.length) {
            return definitions[i].actionType || definitions[i].name;
        }
        return actionTypeList[i] ?? "none";
    });
}

function likeliest(probs, count) {
    let best = 0;
    for (let i = 1; i < count; ++i) {
        if (probs[i] > probs[best]) {
            best = i;
        }
    }
    return best;
}

// By hand of `weights`, the colour of what it does most. `colorOf` gives the colour of an action's name
// or type, `otherwise` stands for a hand of which nothing is known.
export function handColors(weights, actionProbs, definitions, dominantTypes, colorOf, otherwise) {
    const colors = {};
    for (const hand of Object.keys(weights)) {
        const probs = actionProbs[hand];
        const shared = Math.min(probs ? probs.length : 0, definitions.length);
        if (shared > 0) {
            const action = definitions[likeliest(probs, shared)];
            colors[hand] = colorOf(action.name || action.actionType);
        } else {
            colors[hand] = dominantTypes[hand] ? colorOf(dominantTypes[hand]) : otherwise;
        }
    }
    return colors;
}
