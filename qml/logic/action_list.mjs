// The actions of a node, in the node's order: entries with `name` ("Bet 33%"), `actionType`
// ("bet 33%") and whatever else is known of them.

// A list of the controller is no array, but has a length and can be indexed.
export function toArray(list) {
    return Array.from({length: list ? list.length : 0}, (_, i) => list[i]);
}

// Without the size: "bet 33%" gives "bet".
export function kindOf(actionType) {
    return String(actionType ?? "").trim().split(/\s+/)[0].toLowerCase();
}

export function isAllIn(actionType) {
    return ["allin", "all-in", "all_in"].includes(kindOf(actionType));
}

// Of a bet or a raise, of whatever size.
export function isSized(actionType) {
    return ["bet", "raise"].includes(kindOf(actionType));
}

export function isFold(action) {
    return action.actionType === "fold" || String(action.name ?? "").toLowerCase().includes("fold");
}

// What a fold loses counts as nothing, so that every other action tells what it gains over folding.
// Without a fold of known value the list stays as it is.
export function withEvsAgainstFold(actions) {
    const fold = actions.find(isFold);
    if (!fold || !Number.isFinite(fold.ev)) {
        return actions;
    }
    return actions.map(action => Number.isFinite(action.ev)
        ? Object.assign({}, action, {ev: action.ev - fold.ev}) : action);
}

// Of an action that no hand takes there are no hands that could be worth anything behind it.
export function withoutUntaken(actions) {
    const isUntaken = action => known(action.combos) < 1e-6;
    return actions.map(action => isUntaken(action)
        ? Object.assign({}, action, {equity: null, ev: null}) : action);
}

// The actions of a list of probabilities in their order, as far as both go.
export function withFrequencies(actions, probs) {
    const count = Math.min(actions.length, probs ? probs.length : 0);
    return actions.slice(0, count).map((action, i) =>
        ({name: action.name, actionType: action.actionType, frequency: probs[i]}));
}

// NaN for what is not known; a project tells it as null.
export function known(figure) {
    return typeof figure === "number" ? figure : NaN;
}

// Whole numbers of combos are told without a decimal.
export function isWhole(combos) {
    return Math.abs(combos - Math.round(combos)) < 1e-6;
}
