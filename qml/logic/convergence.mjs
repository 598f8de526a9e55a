// The logarithmic scale of a chart of exploitability, in percent of the pot.

// No strategy is measured more finely than this.
const FINEST = 1e-6;

// The powers of ten that hold all values and the target, descending; at least two of them. What is
// not above 0 has no place on the scale.
export function decades(values, target) {
    const shown = [...values, target].filter(value => value > 0)
        .map(value => Math.max(value, FINEST));
    if (shown.length === 0) {
        return [];
    }
    const last = Math.floor(Math.log10(Math.min(...shown)) + 1e-9);
    const first = Math.max(Math.ceil(Math.log10(Math.max(...shown)) - 1e-9), last + 1);
    return Array.from({length: first - last + 1}, (_, index) => Number(`1e${first - index}`));
}

// Where a value lies between the lowest and the highest of the decades, 0 to 1.
export function share(value, decades) {
    if (decades.length < 2 || !(value > 0)) {
        return 0;
    }
    const low = Math.log10(decades[decades.length - 1]);
    const high = Math.log10(decades[0]);
    return Math.max(0, Math.min(1, (Math.log10(value) - low) / (high - low)));
}

// The index of the number nearest to `wanted` in an ascending list; -1 for an empty one.
export function nearest(numbers, wanted) {
    const after = numbers.findIndex(number => number >= wanted);
    if (after <= 0) {
        return after < 0 ? numbers.length - 1 : 0;
    }
    return wanted - numbers[after - 1] <= numbers[after] - wanted ? after - 1 : after;
}
