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

// The next slot to fill of the street that a slot is of, -1 where the street is full: the flop is
// dealt as a whole, turn and river card by card.
export function nextSlot(text, slot) {
    const slots = boardSlots(text);
    return slot > 2 ? -1
        : [1, 2].map(step => (slot + step) % 3).find(place => slots[place] === "") ?? -1;
}

// As it is shown to be typed in: "Ad Jd __ 2c".
export function spaced(text) {
    return (textOfSlots(writtenSlots(text)).match(/../g) ?? []).join(" ");
}

// What was typed, with or without blanks and commas, T or 10 for a ten: {board, piece}, `board` for
// all that is whole cards, up to the first `piece` that is none or one too many; "" for none such.
export function typedBoard(entry) {
    const pairs = entry.replace(/[\s,;]/g, "").replace(/10/g, "T").match(/..?/g) ?? [];
    const wrong = pairs.findIndex((pair, slot) => slot >= BOARD_SLOTS
        || pair !== EMPTY && normalizedCard(pair) === "");
    const good = wrong < 0 ? pairs : pairs.slice(0, wrong);
    return {
        board: textOfSlots(good.map(pair => pair === EMPTY ? "" : normalizedCard(pair))),
        piece: wrong < 0 ? "" : pairs[wrong]
    };
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
