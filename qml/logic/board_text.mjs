// A board while it is edited: its five slots as one text, "AdJd__2c" with "__" for a slot that is
// empty before a later card.

import { BOARD_SLOTS, boardSlots, normalizedCard } from "./card_text.mjs";

const EMPTY = "__";

function pairs(text) {
    return text.replace(/\s/g, "").match(/../g) ?? [];
}

// The slots as they were written, "" for an empty one; at least five.
export function writtenSlots(text) {
    const slots = pairs(text).map(pair => pair === EMPTY ? "" : pair);
    while (slots.length < BOARD_SLOTS) {
        slots.push("");
    }
    return slots;
}

// Empty slots at the end leave nothing behind.
export function textOfSlots(slots) {
    let end = slots.length;
    while (end > 0 && slots[end - 1] === "") {
        --end;
    }
    return slots.slice(0, end).map(card => card === "" ? EMPTY : card).join("");
}

export function withCard(text, slot, card) {
    const slots = writtenSlots(text);
    slots[slot] = card;
    return textOfSlots(slots);
}

// Without this slot and those behind it: later cards cannot stand without earlier ones.
export function clearedFrom(text, slot) {
    return textOfSlots(writtenSlots(text).map((card, index) => index < slot ? card : ""));
}

// The cards of all slots that hold one.
export function cardsOf(text) {
    return boardSlots(text).filter(card => card !== "");
}

export function streetOf(text) {
    const count = pairs(text).filter(pair => normalizedCard(pair) !== "").length;
    if (count >= 5) {
        return "river";
    }
    return count === 4 ? "turn" : "flop";
}

// A card that stands in two slots, "" where there is none.
export function cardTwice(text) {
    const cards = cardsOf(text);
    return cards.find((card, slot) => cards.indexOf(card) < slot) ?? "";
}

// Three, four or five cards and no gap.
export function isComplete(text) {
    const length = text.replace(/\s/g, "").length;
    return [6, 8, 10].includes(length) && pairs(text).every(pair => normalizedCard(pair) !== "");
}
