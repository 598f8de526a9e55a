// The two curves of a node: each seat's hands by what they are worth, the best first. A series is an
// array of `{hand, value}`; its x axis is the rank, so each seat's spans the whole width.

function byValue(one, other) {
    if (one.value !== other.value) {
        return other.value - one.value;
    }
    return one.hand < other.hand ? -1 : 1;  // so that equal hands keep their order
}

// Of as many hands as have values; what is not known is left out. Lists as the controller gives them.
export function series(hands, values) {
    const points = [];
    const count = Math.min(hands?.length ?? 0, values?.length ?? 0);
    for (let i = 0; i < count; ++i) {
        if (hands[i] && Number.isFinite(values[i])) {
            points.push({hand: hands[i], value: values[i]});
        }
    }
    return points.sort(byValue);
}

// From a payload of the controller, the same for both seats; empty where it holds no answer.
export function bothSeats(payload, isEquity) {
    if (!payload.ok || payload.pending) {
        return {oop: [], ip: []};
    }
    return {
        oop: series(payload.oopHands, isEquity ? payload.equityOop : payload.evOop),
        ip: series(payload.ipHands, isEquity ? payload.equityIp : payload.evIp)
    };
}

// The ends of the y axis. Equity has its own; EVs get some air around them.
export function scale(both, isEquity) {
    const whole = {low: 0, high: 1};
    if (isEquity) {
        return whole;
    }
    const ends = [both.oop, both.ip].filter(points => points.length > 0);
    const high = Math.max(...ends.map(points => points[0].value));
    const low = Math.min(...ends.map(points => points[points.length - 1].value));
    const air = 0.08 * (high - low);
    return high > low ? {low: low - air, high: high + air} : whole;
}

// `count` values of the axis, evenly from the top down.
export function ticks(ends, count) {
    return Array.from({length: count}, (_, i) =>
        ends.high - (ends.high - ends.low) * i / (count - 1));
}

// How many ranks the longer series has.
export function longest(both) {
    return Math.max(both.oop.length, both.ip.length);
}

// The point of a series at a place from 0 to 1 of the width; null where it has none.
export function pointAt(points, t) {
    return points[Math.round(t * (points.length - 1))] ?? null;
}

// Where the hover goes from `t`, or from the start where it is negative, by ranks of the longer series.
export function moved(t, ranks, both) {
    const last = longest(both) - 1;
    if (last < 1) {
        return -1;
    }
    const rank = t < 0 ? (ranks > 0 ? 0 : last) : Math.round(t * last) + ranks;
    return Math.max(0, Math.min(rank, last)) / last;
}

// Lines of rank, hand and value of each seat, with tabs and numbers with a point, whatever the language.
// `heads` are the five titles.
export function tabSeparated(both, heads) {
    const cells = point => point ? [point.hand, String(Number(point.value.toFixed(6)))] : ["", ""];
    const lines = Array.from({length: longest(both)}, (_, i) =>
        [i + 1, ...cells(both.oop[i]), ...cells(both.ip[i])]);
    return [heads, ...lines].map(line => line.join("\t") + "\n").join("");
}
