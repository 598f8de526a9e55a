// The deck as it is laid out to choose from: a row for each suit, a column for each rank. Places count
// row by row from the ace of spades.

import { RANKS, SUITS } from "./card_text.mjs";

export const COLUMNS = RANKS.length;
export const CARDS = Array.from({length: COLUMNS * SUITS.length},
    (_, place) => RANKS[place % COLUMNS] + SUITS[Math.floor(place / COLUMNS)]);

// Whether a list holds a card, its suit in either case.
export function holds(list, card) {
    return list.includes(card) || list.includes(card.toUpperCase());
}

// The next place in a direction whose card is free; the place itself where there is none.
export function nextFree(place, columns, rows, isFree) {
    let column = place % COLUMNS + columns;
    let row = Math.floor(place / COLUMNS) + rows;
    while (column >= 0 && column < COLUMNS && row >= 0 && row < SUITS.length) {
        if (isFree(CARDS[row * COLUMNS + column])) {
            return row * COLUMNS + column;
        }
        column += columns;
        row += rows;
    }
    return place;
}

// 0 where no card is free.
export function firstFree(isFree) {
    return Math.max(0, CARDS.findIndex(isFree));
}

// A card is typed rank first, in either case. From the rank typed so far ("" for none) and a letter:
// the rank from then on, and the card when it is complete, both "" where the letter is of no use.
export function typed(rank, letter) {
    if (rank !== "" && letter !== "" && SUITS.includes(letter.toLowerCase())) {
        return {rank: "", card: rank + letter.toLowerCase()};
    }
    const isRank = letter !== "" && RANKS.includes(letter.toUpperCase());
    return {rank: isRank ? letter.toUpperCase() : "", card: ""};
}
