// What there is to tell of a hand that was played: `board` and `line`, `oop` and `ip` (four characters
// each), `pot`, `investedOop`, `investedIp` (chips), as the log of the trainer keeps them.

import { rakeOf } from "./tree_money.mjs";

const BETWEEN_STEPS = " → ";
const CARDS_OF_FLOP = 3;
const STREETS = 3;

function stepsOf(line) {
    return line === "" ? [] : line.split(BETWEEN_STEPS);
}

function isDeal(step) {
    return step.startsWith("Chance");
}

// The steps of flop, turn and river, deals left out. A spot may begin on any of them: as many cards were
// dealt as the board has more than its flop.
export function stepsByStreet(hand) {
    const steps = stepsOf(hand.line);
    const deals = steps.filter(isDeal).length;
    const streets = [[], [], []];
    let street = Math.max(0, hand.board.length / 2 - CARDS_OF_FLOP - deals);
    for (const step of steps) {
        if (isDeal(step)) {
            ++street;
        } else {
            streets[Math.min(street, STREETS - 1)].push(step);
        }
    }
    return streets;
}

// Flop, turn and river of the board, "" for a street that did not come.
export function boardByStreet(board) {
    return [board.slice(0, 6), board.slice(6, 8), board.slice(8, 10)];
}

// "OOP", "IP" or "TIE", "" where nobody knows. Who folds loses; otherwise `showdown(board, oop, ip)` is
// asked, an answer with `winner`, once the board is full.
export function winnerOf(hand, showdown) {
    const fold = stepsOf(hand.line).reverse().find(step => step.includes("Fold"));
    if (fold !== undefined) {
        return fold.startsWith("OOP") ? "IP" : "OOP";
    }
    const canShow = hand.board.length === 10 && hand.oop !== "" && hand.ip !== "";
    const winner = canShow ? showdown(hand.board, hand.oop, hand.ip).winner : "";
    return ["OOP", "IP", "TIE"].includes(winner) ? winner : "";
}

// In chips: what the winner has taken beyond what was put in, NaN without one, and what the house took.
export function moneyOf(hand, winner, rakePercent, rakeCap) {
    const won = {
        OOP: hand.pot - hand.investedOop,
        IP: hand.pot - hand.investedIp,
        TIE: 0
    };
    return {won: won[winner] ?? NaN, rake: rakeOf(hand.pot, rakePercent, rakeCap)};
}

// The four characters of the hand that the user held.
export function heroHand(hand) {
    return hand.role === "IP" ? hand.ip : hand.oop;
}

// How a session went, from the hands that were played, those with a mistake, and the chips that these
// lost: shares in percent, NaN without a hand.
export function sessionFigures(hands, mistakes, evLost, pot) {
    const perHand = hands > 0 ? evLost / hands : NaN;
    return {
        withoutMistake: hands > 0 ? 100 * (hands - mistakes) / hands : NaN,
        lostPerHand: perHand,
        lostOfPot: pot > 0 ? 100 * perHand / pot : NaN
    };
}
