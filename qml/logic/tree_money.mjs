// The money at a node, in chips. A figure that makes no sense there is NaN.

function atLeastZero(value) {
    return Math.max(0, value);
}

// What the house takes of a pot; a cap of 0 is none.
export function rakeOf(pot, percent, cap) {
    if (!(pot > 0) || !(percent > 0)) {
        return 0;
    }
    const rake = pot * percent / 100;
    return cap > 0 ? Math.min(rake, cap) : rake;
}

// Of the player to act at the node of `meta`. `potOdds` is the share of the pot that a call has to pay,
// 0 to 1.
export function nodeMoney(meta, rakePercent, rakeCap) {
    const pot = meta.pot ?? NaN;
    const invested = {OOP: meta.investedOop, IP: meta.investedIp}[meta.player];
    const acts = invested !== undefined;
    const stack = acts ? atLeastZero(meta.effectiveStack - invested) : 0;
    const toCall = acts
        ? atLeastZero(Math.max(meta.investedOop, meta.investedIp) - invested) : 0;
    return {
        pot: pot,
        stack: stack,
        toCall: toCall,
        rake: rakeOf(pot, rakePercent, rakeCap),
        spr: pot > 0 ? stack / pot : NaN,
        potOdds: pot > 0 && toCall > 0 ? toCall / (pot + toCall) : NaN
    };
}
