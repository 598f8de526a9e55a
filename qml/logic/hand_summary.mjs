// What the combos of a node are to one starting hand, and to one action. Combos are as in hand_rows.mjs.

import { classOfCards } from "./hand_filter.mjs";
import { evLines } from "./hand_rows.mjs";
import { shownCard } from "./suit_map.mjs";

// Of a hand ("AKs"): `combos`, how many of them come; `evs` of its lines, means over those, NaN where
// none comes or not all are known.
export function summaryOf(hand, combos, definitions) {
    let total = 0;
    const sums = definitions.map(() => 0);
    for (let i = 0; i < combos.length; ++i) {
        const combo = combos[i];
        if (combo.weight > 0 && classOfCards(combo.c1, combo.c2) === hand) {
            total += combo.weight;
            const lines = evLines(combo, definitions);
            sums.forEach((sum, action) => sums[action] = sum + combo.weight * (lines[action]?.ev ?? NaN));
        }
    }
    return {combos: total, evs: sums.map(sum => sum / total)};
}

// By combo as it is shown ("AhKh"), how much of it comes and takes an action, of all actions for -1. `map`
// turns suits as they are kept into those that are shown.
export function comboWeights(combos, action, map) {
    const weights = {};
    for (let i = 0; i < combos.length; ++i) {
        const combo = combos[i];
        const share = action < 0 ? 1 : combo.actionProbs[action] ?? 0;
        weights[shownCard(combo.c1, map) + shownCard(combo.c2, map)] = combo.weight * share;
    }
    return weights;
}

// The same by starting hand, where the combos are not known.
export function handWeights(weights, actionProbs, action) {
    const result = {};
    for (const hand of Object.keys(weights)) {
        result[hand] = weights[hand] * (action < 0 ? 1 : actionProbs[hand]?.[action] ?? 0);
    }
    return result;
}
