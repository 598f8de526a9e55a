// Range text and the weights it gives the 169 starting hands of the grid, for looking at and painting
// a range. A map of weights goes from hand labels ("AA", "AKs", "AKo") to numbers. This reads less
// than the solver does, shows nothing where it knows no better, and fails on no text. What painting
// adds to a text, the solver reads alike.

const RANKS = "AKQJT98765432";
const PERCENT = /^\s*(\d+(?:\.\d+)?)\s*%\s*$/;
const FULL = 0.999;  // From here on a weight is not written.
const HANDS = new Set();
for (let row = 0; row < RANKS.length; ++row) {
    for (let column = 0; column < RANKS.length; ++column) {
        HANDS.add(handAt(row, column));
    }
}

// The label at a place of the grid: pairs on the diagonal, suited hands above it, offsuit below.
export function handAt(row, column) {
    if (row === column) {
        return RANKS[row] + RANKS[row];
    }
    return row < column ? RANKS[row] + RANKS[column] + "s" : RANKS[column] + RANKS[row] + "o";
}

// All labels, row by row.
export function allHands() {
    return [...HANDS];
}

// The percentage of a text such as "50%", which stands for every hand; NaN for any other text.
export function percentOf(text) {
    const match = PERCENT.exec(text);
    return match ? Number(match[1]) : NaN;
}

export function tokensOf(text) {
    return text.split(/[\s,]+/).filter(token => token !== "");
}

// Every hand at the same weight.
export function uniformWeights(weight) {
    const weights = {};
    for (const hand of HANDS) {
        weights[hand] = weight;
    }
    return weights;
}

export function parseRangeWeights(text) {
    const percent = percentOf(text);
    if (!isNaN(percent)) {
        return uniformWeights(percent / 100);
    }
    const weights = {};
    for (const token of tokensOf(text)) {
        if (token.length < 2) {
            continue;
        }
        const [base, suffix] = token.split(":");
        const parsed = parseFloat(suffix);
        const weight = isNaN(parsed) ? 1 : Math.max(0, Math.min(1, parsed));
        for (const hand of expandHand(base)) {
            if (HANDS.has(hand)) {
                weights[hand] = weight;
            }
        }
    }
    return weights;
}

// The labels that a token without its weight stands for. A token of no known form is its own label.
export function expandHand(hand) {
    const ends = hand.split("-");
    const run = ends.length === 2 ? expandRun(inCase(ends[0]), inCase(ends[1])) : null;
    if (run) {
        return run;
    }
    const climb = hand.endsWith("+") ? expandClimb(inCase(hand.slice(0, -1))) : null;
    if (climb) {
        return climb;
    }
    const label = inCase(hand);
    if (label.length === 2) {
        return isPair(label) ? [label] : [label + "s", label + "o"];
    }
    return [label];
}

// Three decimals at most, without zeros at the end. What is no number counts as full weight.
export function formatWeight(weight) {
    return clampWeight(weight).toFixed(3).replace(/\.?0+$/, "");
}

// The text after the hand was switched on, with the weight given, or off where its current weight
// is above 0. A token goes as a whole: one hand of a run takes the others with it. A text in percent
// has no tokens, so it goes altogether.
export function toggleHand(rangeText, hand, currentWeight, addWeight) {
    const tokens = isNaN(percentOf(rangeText)) ? tokensOf(rangeText) : [];
    if (currentWeight > 0) {
        const left = tokens.filter(token => !expandHand(token.split(":")[0]).includes(hand));
        // A percentage is none beside other tokens; alone it would bring the hand back.
        return left.length === 1 && !isNaN(percentOf(left[0])) ? "" : left.join(", ");
    }
    const full = clampWeight(addWeight) >= FULL;
    return [...tokens, full ? hand : hand + ":" + formatWeight(addWeight)].join(", ");
}

function clampWeight(weight) {
    return Number.isFinite(weight) ? Math.max(0, Math.min(1, weight)) : 1;
}

// Ranks in capitals and the suffix small, for tokens as long as a label.
function inCase(token) {
    if (token.length > 3) {
        return token;
    }
    return token.slice(0, 2).toUpperCase() + token.slice(2).toLowerCase();
}

function isPair(token) {
    return token.length === 2 && token[0] === token[1];
}

// The ranks from one to another, in either direction; null where one is none.
function ranksBetween(from, to) {
    const first = RANKS.indexOf(from);
    const last = RANKS.indexOf(to);
    if (first < 0 || last < 0) {
        return null;
    }
    const step = first <= last ? 1 : -1;
    const ranks = [];
    for (let rank = first; rank !== last + step; rank += step) {
        ranks.push(RANKS[rank]);
    }
    return ranks;
}

// "99-22" and "A5s-A2s"; null for another form.
function expandRun(from, to) {
    if (isPair(from) && isPair(to)) {
        const ranks = ranksBetween(from[0], to[0]);
        return ranks && ranks.map(rank => rank + rank);
    }
    if (from.length !== 3 || to.length !== 3) {
        return null;
    }
    if (from[0] !== to[0] || from[2] !== to[2]) {
        return [from];
    }
    const ranks = ranksBetween(from[1], to[1]);
    return ranks && ranks.map(rank => from[0] + rank + from[2]);
}

// "JJ+" and "A8s+", given without the plus; null for another form.
function expandClimb(base) {
    if (isPair(base)) {
        const ranks = ranksBetween("A", base[0]);
        return ranks && ranks.map(rank => rank + rank);
    }
    if (base.length !== 3) {
        return null;
    }
    const ranks = ranksBetween(base[1], base[0]);
    if (ranks === null) {
        return null;
    }
    const climbs = RANKS.indexOf(base[1]) > RANKS.indexOf(base[0]);
    return climbs ? ranks.slice(0, -1).map(rank => base[0] + rank + base[2]) : [];
}
