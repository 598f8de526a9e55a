// What has been done to a set of named values, to be undone and done again. A history is
// {past, future}, lists of changes, the last one the nearest; a change is {values: {name: [before,
// after]}, time (milliseconds), typed}. Histories are values: what changes one gives another.

const MOST_CHANGES = 200;
// Strokes of the keyboard that follow each other as fast are one change.
const TYPING_PAUSE = 1000;

export const EMPTY = {past: [], future: []};

export function mapOf(names, valueOf) {
    const map = {};
    for (const name of names) {
        map[name] = valueOf(name);
    }
    return map;
}

// What differs between two maps with the same names, null for nothing.
export function difference(before, after) {
    const names = Object.keys(after).filter(name => before[name] !== after[name]);
    return names.length === 0 ? null : mapOf(names, name => [before[name], after[name]]);
}

// Before a change (0) or after it (1).
function valuesOf(change, side) {
    return mapOf(Object.keys(change.values), name => change.values[name][side]);
}

function goesOn(last, change) {
    const names = Object.keys(change.values);
    return last !== undefined && last.typed && change.typed && names.length === 1
        && Object.keys(last.values).join() === names[0]
        && change.time - last.time < TYPING_PAUSE;
}

// With a change that has just been made. What was undone before cannot be done again.
export function recorded(history, change) {
    const past = [...history.past];
    const last = past[past.length - 1];
    if (history.future.length === 0 && goesOn(last, change)) {
        const name = Object.keys(change.values)[0];
        const values = {[name]: [last.values[name][0], change.values[name][1]]};
        past[past.length - 1] = Object.assign({}, change, {values});
    } else {
        past.push(change);
    }
    return {past: past.slice(-MOST_CHANGES), future: []};
}

// {history, values}: the history after a step back, and the values to set; null where there is none.
export function stepBack(history) {
    const change = history.past[history.past.length - 1];
    return change === undefined ? null : {
        history: {past: history.past.slice(0, -1), future: [...history.future, change]},
        values: valuesOf(change, 0)
    };
}

export function stepForward(history) {
    const change = history.future[history.future.length - 1];
    return change === undefined ? null : {
        history: {past: [...history.past, change], future: history.future.slice(0, -1)},
        values: valuesOf(change, 1)
    };
}
