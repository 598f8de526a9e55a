// Which hands of a list are shown. A combo is two cards `c1`, `c2` ("Ah"), a `weight`, and `buckets`, the
// names of its classes.

import { RANKS, SUITS } from "./card_text.mjs";

// Rounding leaves hands that never come with weights that are not quite 0. The heaviest of the first
// hands stands for all: a whole scan at each step would cost time.
const SAMPLE = 96;
const LEAST_WEIGHT = 1e-10;
const LEAST_SHARE = 1e-6;  // of the heaviest
const CARDS_WITH_NOISE = 4;  // on the board

export function tokensOf(text) {
    return text.replace(/,/g, " ").split(/\s+/).filter(token => token !== "");
}

// "AKs", "AKo", "AA", the higher rank first; ranks as they stand in RANKS.
function classOf(rank1, rank2, suited) {
    if (rank1 === rank2) {
        return rank1 + rank2;
    }
    const [high, low] = RANKS.indexOf(rank1) < RANKS.indexOf(rank2) ? [rank1, rank2] : [rank2, rank1];
    return high + low + (suited ? "s" : "o");
}

export function classOfCards(c1, c2) {
    return classOf(c1[0], c2[0], c1[1] === c2[1]);
}

function isRank(text) {
    return text.length === 1 && RANKS.includes(text);
}

function card(text) {
    const name = text[0].toUpperCase() + text[1].toLowerCase();
    return isRank(name[0]) && SUITS.includes(name[1]) ? name : "";
}

// What a token asks for: `cards` both of which are held, or one of `classes`; null for what asks for
// nothing that there is.
function meaningOf(token) {
    const ranks = [...token.slice(0, 2).toUpperCase()];
    switch (token.length) {
    case 4: {
        const cards = [card(token.slice(0, 2)), card(token.slice(2))];
        return cards[0] && cards[1] && cards[0] !== cards[1] ? {cards: cards} : null;
    }
    case 2:
        return ranks.every(isRank)
            ? {classes: [classOf(...ranks, true), classOf(...ranks, false)]} : null;
    case 3: {
        const suffix = token[2].toLowerCase();
        return ranks.every(isRank) && ranks[0] !== ranks[1] && "so".includes(suffix)
            ? {classes: [classOf(...ranks, suffix === "s")]} : null;
    }
    default:
        return null;
    }
}

function hasMeaning(meaning, c1, c2, handClass) {
    return meaning.classes ? meaning.classes.includes(handClass)
                           : meaning.cards.includes(c1) && meaning.cards.includes(c2);
}

// Two cards ("JcJd"), two ranks in any order ("JJ", "KA"), or those with "s" or "o". An empty token takes
// every hand.
export function tokenMatches(token, c1, c2) {
    if (token === "") {
        return true;
    }
    const meaning = meaningOf(token);
    return meaning !== null && hasMeaning(meaning, c1, c2, classOfCards(c1, c2));
}

// A hand is shown if its weight is above this; -1 where all are.
export function cutoff(combos, boardCards) {
    if (boardCards < CARDS_WITH_NOISE) {
        return -1;
    }
    let most = 0;
    for (let i = 0; i < Math.min(combos.length, SAMPLE); ++i) {
        most = Math.max(most, combos[i].weight || 0);
    }
    return Math.max(LEAST_WEIGHT, most * LEAST_SHARE);
}

// Those of a hand label, of a class and of what is searched for, each of which may be empty. The list
// itself where nothing narrows it down.
export function filtered(combos, handClass, bucket, searchText, boardCards) {
    const least = cutoff(combos, boardCards);
    const tokens = tokensOf(searchText);
    if (least < 0 && handClass === "" && bucket === "" && tokens.length === 0) {
        return combos;
    }
    const meanings = tokens.map(meaningOf).filter(meaning => meaning !== null);
    const result = [];
    for (let i = 0; i < combos.length; ++i) {
        const combo = combos[i];
        if (least >= 0 && !(combo.weight > least)
            || bucket !== "" && !combo.buckets.includes(bucket)) {
            continue;
        }
        const label = handClass !== "" || tokens.length > 0 ? classOfCards(combo.c1, combo.c2) : "";
        if ((handClass === "" || label === handClass)
            && (tokens.length === 0
                || meanings.some(meaning => hasMeaning(meaning, combo.c1, combo.c2, label)))) {
            result.push(combo);
        }
    }
    return result;
}
