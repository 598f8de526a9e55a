// The list of a node's hands, row by row: combos with `c1`, `c2`, `weight`, `ev`, and by action
// `actionEvs` and `actionProbs`; `definitions` are the node's actions.

import { isFold, toArray } from "./action_list.mjs";

function foldOf(definitions, evCount) {
    return definitions.findIndex((action, index) => index < evCount && isFold(action));
}

// What each line of a hand's row says: `action`, the index of it (-1 for the whole hand), and `ev`, what
// it gains over folding where there is a fold of known value; NaN where it is not known.
export function evLines(combo, definitions) {
    const evs = combo.actionEvs ?? [];
    if (evs.length === 0) {
        return [{action: -1, ev: known(combo.ev)}];
    }
    const fold = foldOf(definitions, evs.length);
    const least = fold >= 0 && Number.isFinite(evs[fold]) ? evs[fold] : 0;
    return toArray(evs).map((ev, action) =>
        ({action: action, ev: action === fold ? 0 : known(ev) - least}));
}

function known(figure) {
    return Number.isFinite(figure) ? figure : NaN;
}

// What a row is sorted by: "weight", "ev", or the index of an action for its frequency.
function figureOf(combo, key) {
    const figure = key === "weight" || key === "ev" ? combo[key] : combo.actionProbs?.[key];
    return Number.isFinite(figure) ? figure : -Infinity;
}

// The list itself for the key "", which stands for the order in which it came.
export function sorted(combos, key, rising) {
    if (key === "") {
        return combos;
    }
    const sign = rising ? 1 : -1;
    return combos.map((combo, place) => ({combo, place, figure: figureOf(combo, key)}))
                 .sort((a, b) => a.figure === b.figure ? a.place - b.place
                                                       : a.figure > b.figure ? sign : -sign)
                 .map(entry => entry.combo);
}

// The next order when a head is pressed: falling, rising, as it came.
export function nextOrder(order, key) {
    if (order.key !== key) {
        return {key: key, rising: false};
    }
    return order.rising ? {key: "", rising: false} : {key: key, rising: true};
}

function figure(value, digits) {
    return Number.isFinite(value) ? String(Number(value.toFixed(digits))) : "";
}

// Lines with tabs for a spreadsheet: the cards, the weight, and of each action the value as evLines has
// it (empty where `valued` is false) and how often it is taken. `heads` are the names of columns: `hand`,
// `weight`, and by function of an action `ev` and `frequency`.
export function asText(combos, definitions, heads, valued) {
    const lines = [[heads.hand, heads.weight, ...definitions.map(heads.ev), ...definitions.map(heads.frequency)]];
    for (const combo of combos) {
        const evs = evLines(combo, definitions);
        lines.push([combo.c1 + combo.c2, figure(combo.weight, 6),
                    ...definitions.map((_, i) => valued ? figure(evs[i]?.ev ?? NaN, 4) : ""),
                    ...definitions.map((_, i) => figure(combo.actionProbs?.[i], 6))]);
    }
    return lines.map(line => line.join("\t") + "\n").join("");
}
