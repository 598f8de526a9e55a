// The tree may keep one card for several that differ only by the names of suits. The user chooses any of
// them and sees just that one: cards "as kept" are turned into cards "as shown" by a map from suit to
// suit.

import { SUITS, boardSlots, normalizedCard } from "./card_text.mjs";

// Of the cards dealt so far, pairs of the card as kept and as shown. Where a card is shown in another suit
// than the map so far would show it in, the two suits trade places from then on.
export function suitMap(deals) {
    const map = {s: "s", h: "h", d: "d", c: "c"};
    for (const deal of deals) {
        const kept = normalizedCard(deal.kept);
        const shown = normalizedCard(deal.shown);
        if (kept !== "" && shown !== "" && kept[0] === shown[0] && map[kept[1]] !== shown[1]) {
            const other = [...SUITS].find(suit => map[suit] === shown[1]);
            map[other] = map[kept[1]];
            map[kept[1]] = shown[1];
        }
    }
    return map;
}

export function shownCard(card, map) {
    const kept = normalizedCard(card);
    return kept === "" ? "" : kept[0] + map[kept[1]];
}

export function keptCard(card, map) {
    const shown = normalizedCard(card);
    return shown === "" ? "" : shown[0] + [...SUITS].find(suit => map[suit] === shown[1]);
}

// Hands with cards `c1` and `c2` as kept, as they are shown.
export function shownHands(hands, map) {
    return [...SUITS].every(suit => map[suit] === suit) ? hands : hands.map(
        hand => Object.assign({}, hand, {c1: shownCard(hand.c1, map), c2: shownCard(hand.c2, map)}));
}

// Index of the action for each card as shown that can be dealt on a board; `names` are the cards of the
// actions as kept. A card of the board cannot come again.
export function dealableCards(names, map, boardText) {
    const board = boardSlots(boardText);
    const indexByCard = {};
    names.forEach((name, index) => {
        const card = name.length === 2 ? shownCard(name, map) : "";
        if (card !== "" && !board.includes(card)) {
            indexByCard[card] = index;
        }
    });
    return indexByCard;
}

// The action that deals a card, or one that differs from it only by the name of a suit that the board
// does not have: such suits are alike when there are two or more. -1 where there is none.
export function indexForCard(card, indexByCard, boardText) {
    if (card in indexByCard) {
        return indexByCard[card];
    }
    const suits = boardSlots(boardText).map(slot => slot.charAt(1));
    const absent = [...SUITS].filter(suit => !suits.includes(suit));
    if (absent.length < 2 || !absent.includes(card[1])) {
        return -1;
    }
    const twin = absent.map(suit => card[0] + suit).find(other => other in indexByCard);
    return twin === undefined ? -1 : indexByCard[twin];
}
