// Cards as text: rank upper case, suit lower case ("Ah"); a board is its cards without separators,
// in which any other pair of characters ("__") stands for an empty slot.

export const RANKS = "AKQJT98765432";
export const SUITS = "shdc";
export const BOARD_SLOTS = 5;

// "ah" gives "Ah"; what is no card gives "".
export function normalizedCard(text) {
    if (text.length !== 2) {
        return "";
    }
    const card = text[0].toUpperCase() + text[1].toLowerCase();
    return RANKS.includes(card[0]) && SUITS.includes(card[1]) ? card : "";
}

// The five slots of a board, "" for an empty one. White space does not count, nor does an odd
// character at the end.
export function boardSlots(text) {
    const pairs = text.replace(/\s/g, "").match(/../g) ?? [];
    return Array.from({length: BOARD_SLOTS}, (_, slot) => normalizedCard(pairs[slot] ?? ""));
}
