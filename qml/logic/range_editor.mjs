// The text of the range editor: plain lists of hands. It knows fewer forms than range_text.mjs, and
// what it writes has neither runs nor weights.

import { allHands, percentOf, tokensOf, uniformWeights } from "range_text.mjs";

const RANKS = "AKQJT98765432";

// Labels to weights as they are written, within [0, 1] or not.
export function parseWeights(text) {
    const percent = percentOf(text);
    if (!isNaN(percent)) {
        return uniformWeights(percent / 100);
    }
    const weights = {};
    for (const token of tokensOf(text)) {
        const [base, suffix] = token.split(":");
        for (const hand of expand(base)) {
            weights[hand] = suffix === undefined ? 1 : parseFloat(suffix);
        }
    }
    return weights;
}

// The text after a hand was painted, in the order of the grid. All other hands stay on or off, at
// full weight.
export function paintedText(text, hand, on) {
    const weights = parseWeights(text);
    weights[hand] = on ? 1 : 0;
    const order = allHands();
    const place = key => order.includes(key) ? order.indexOf(key) : order.length;
    return Object.keys(weights).filter(key => weights[key] > 0)
        .sort((a, b) => place(a) - place(b)).join(", ");
}

export function countHands(weights) {
    return allHands().filter(hand => weights[hand] > 0).length;
}

// "JJ+", "AK" and "AKs"; nothing for other forms.
function expand(token) {
    const ranks = token.slice(0, 2).toUpperCase();
    const pair = ranks[0] === ranks[1];
    if (token.length === 2) {
        return pair ? [ranks] : [ranks + "s", ranks + "o"];
    }
    if (token.length !== 3) {
        return [];
    }
    if (token[2] === "+" && pair) {
        const lowest = RANKS.indexOf(ranks[0]);
        return [...RANKS.slice(0, lowest + 1)].map(rank => rank + rank);
    }
    return [ranks + token[2].toLowerCase()];
}
