// The bar that shows how often each action is taken: shares of its width, in pixels.

import { toArray } from "./action_list.mjs";

const LEAST_VISIBLE = 1;  // pixels

// Of each action, 0 to 1, whatever the frequencies add up to. What is negative or no number counts 0.
export function shares(actions) {
    return sharesOf(actions.map(action => action.frequency));
}

export function sharesOf(frequencies) {
    const raw = toArray(frequencies).map(frequency =>
        frequency > 0 && Number.isFinite(frequency) ? frequency : 0);
    const total = raw.reduce((sum, frequency) => sum + frequency, 0);
    return raw.map(frequency => total > 0 ? Math.min(1, frequency / total) : 0);
}

// Per share `x` and `width`, and the corner radii at its ends. The round ends of the bar belong to the
// first and last segment that can be seen: a sliver must not take them from a bar that reads as whole.
export function segments(fractions, width, height, radius) {
    let x = 0;
    const list = fractions.map(fraction => {
        const segment = {x: x, width: fraction * width, leftRadius: 0, rightRadius: 0};
        x += segment.width;
        return segment;
    });
    let shown = list.filter(segment => segment.width >= LEAST_VISIBLE);
    if (shown.length === 0) {
        shown = list.filter(segment => segment.width > 0);
    }
    if (shown.length > 0) {
        const first = shown[0];
        const last = shown[shown.length - 1];
        first.leftRadius = Math.min(radius, height / 2, first.width / 2);
        last.rightRadius = Math.min(radius, height / 2, last.width / 2);
    }
    return list;
}

// Index of the share at a place from 0 to 1; the last one beyond the end, -1 where there is none.
export function indexAt(fractions, place) {
    let end = 0;
    for (let i = 0; i < fractions.length; ++i) {
        end += fractions[i];
        if (place < end) {
            return i;
        }
    }
    return fractions.length - 1;
}

// Whether a segment and the one before it that is not empty are two sizes, between which a line stands.
// `sized` tells of each action whether it is one.
export function isParted(fractions, sized, index) {
    let before = index - 1;
    while (before >= 0 && !(fractions[before] > 0)) {
        --before;
    }
    return before >= 0 && sized[index] && sized[before];
}
