// What an action of a node takes, in chips: the controller names sizes in percent of the pot alone.

import { kindOf } from "./action_list.mjs";

// By player as a node's meta tells it.
function investedBy(player, meta) {
    return {OOP: meta.investedOop, IP: meta.investedIp}[player] ?? NaN;
}

// Whether there is no bet to answer: both players have paid alike.
export function isEven(meta) {
    return meta.investedOop === meta.investedIp;
}

// What the player of `meta` has put in on this street once a bet, a raise or an all-in is made, and what a
// call adds; NaN for all else. `child` is the meta after the action, `evenAt` that of the last node at
// which both had paid alike, which is where the street stood before its first bet.
export function chipsOf(actionType, meta, child, evenAt) {
    const paid = investedBy(meta.player, child);
    const before = {
        bet: investedBy(meta.player, evenAt),
        raise: investedBy(meta.player, evenAt),
        allin: investedBy(meta.player, evenAt),
        call: investedBy(meta.player, meta)
    }[kindOf(actionType)] ?? NaN;
    return Math.round(100 * (paid - before)) / 100;  // the engine counts hundredths
}
