// A palette in which the actions of a node are told apart by all eyes. Sizes run from light to dark, and
// through the hues, in equal steps over those that the node has; what is no size keeps its colour.
//
// The figures were found by a search for the largest least difference (CIEDE2000) between two actions of
// a node, to the common eye and to those of protanopia, deuteranopia and tritanopia, over nodes of a check, an
// all-in and up to MOST_BETS bets, and of a fold, a call, an all-in and up to MOST_RAISES raises. With more
// sizes than that one may come close to another action.

import { kindOf } from "./action_list.mjs";
import { fromOklch } from "./color_difference.mjs";

export const MOST_BETS = 5;
export const MOST_RAISES = 4;

// OKLCh: lightness, chroma, hue in degrees. `sizes` are stations of the way from the smallest to the
// largest.
const DARK = {
    check: [0.776, 0.135, 155.7],
    fold: [0.659, 0.003, 280.0],
    call: [0.819, 0.083, 264.8],
    allin: [0.731, 0.273, 61.1],
    sizes: [[0.970, 0.211, -23.8], [0.518, 0.280, -71.3], [0.365, 0.153, 29.1]]
};
const LIGHT = {
    check: [0.570, 0.086, 158.1],
    fold: [0.749, 0.005, 234.4],
    call: [0.726, 0.238, 261.4],
    allin: [0.574, 0.278, 31.7],
    sizes: [[0.820, 0.107, 49.5], [0.454, 0.020, -111.6], [0.231, 0.280, -1.1]]
};

// "Bet 33%" as "bet 33", "All-In" as "allin".
function keyOf(action) {
    const word = String(action ?? "").trim().toLowerCase();
    const sized = word.match(/^(bet|raise)\s+(\d+(?:\.\d+)?)\s*%/);
    return sized ? sized[1] + " " + Number(sized[2]) : word.replace(/[-_]/, "");
}

// In percent of the pot; NaN for an action without a size.
function sizeOf(key) {
    return Number(key.split(" ")[1]);
}

// At a place from 0 to 1 on the way through the stations.
function between(stations, place) {
    const along = place * (stations.length - 1);
    const from = Math.min(Math.floor(along), stations.length - 2);
    return stations[from].map((part, i) => part + (along - from) * (stations[from + 1][i] - part));
}

// The colour `{r, g, b}`, 0 to 1, of an action by its type word or name, at a node with `actions`; null for
// what is no action. Sizes of the same percent look alike.
export function distinctColor(action, actions, dark) {
    const palette = dark ? DARK : LIGHT;
    const key = keyOf(action);
    const kind = kindOf(key);
    if (kind !== "bet" && kind !== "raise") {
        return palette[kind] && kind !== "sizes" ? fromOklch(...palette[kind]) : null;
    }
    const sizes = new Set([...actions, action].map(keyOf)
        .filter(other => kindOf(other) === kind).map(sizeOf).filter(Number.isFinite));
    const below = [...sizes].filter(size => size < sizeOf(key)).length;
    const place = sizes.size > 1 && Number.isFinite(sizeOf(key)) ? below / (sizes.size - 1) : 0.5;
    return fromOklch(...between(palette.sizes, place));
}
