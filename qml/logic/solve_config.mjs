// What the controller is asked to solve, made from the properties of the project state, whoever
// holds them.

const STREETS = ["Flop", "Turn", "River"];

// What `targetPercent` of the pot is in chips; 0 where there is no such amount.
export function targetAmount(startingPot, targetPercent) {
    if (!Number.isFinite(startingPot) || !Number.isFinite(targetPercent) || startingPot <= 0) {
        return 0;
    }
    return startingPot * targetPercent / 100;
}

// They say how long to solve and how, not what.
const EFFORT_KEYS = ["max_iterations", "target_exploitability", "thread_count"];

// Whether two configurations describe the same game. What one of them does not say counts as equal,
// but for an option that is younger than some configurations, which were solved without it.
export function isSameSpot(config, other) {
    const known = Object.keys(other).length > 0
        ? Object.assign({exact_all_in: false}, other)
        : other;
    return Object.keys(config).every(key => EFFORT_KEYS.includes(key) || !(key in known)
        || String(config[key]) === String(known[key]));
}

// How many threads a solve that asks for `count` gets on a machine that has `maximum`: a project
// may come from a larger one. All of them where the count is none.
export function usableThreads(count, maximum) {
    return count >= 1 && count <= maximum ? count : maximum;
}

// What `chips` are in percent of the pot, without what arithmetic has added in the last digits.
export function percentOf(chips, pot) {
    return Number((100 * chips / pot).toPrecision(12));
}

// The properties of the project state behind the keys of a configuration.
function stateKeys() {
    const keys = {
        board: "boardText",
        oop_range: "oopRangeText",
        ip_range: "ipRangeText",
        max_iterations: "maxIterations",
        starting_pot: "startingPot",
        effective_stack: "effectiveStack",
        rake_percent: "rakePercent",
        rake_cap: "rakeCap",
        starting_street: "startingStreet",
        thread_count: "threadCount",
        exact_all_in: "exactAllIn"
    };
    for (const seat of ["oop", "ip"]) {
        for (const street of STREETS) {
            const prefix = `${seat}_${street.toLowerCase()}`;
            keys[`${prefix}_bet_sizes`] = `${seat}${street}BetSizesText`;
            keys[`${prefix}_raise_sizes`] = `${seat}${street}RaiseSizesText`;
            keys[`${prefix}_add_all_in`] = `${seat}${street}AddAllIn`;
            if (seat === "oop") {
                keys[`${prefix}_dont_donk`] = `oop${street}DontDonk`;
            }
        }
        keys[`${seat}_add_all_in_jam_threshold_enabled`] = `${seat}AddAllInIfJamLtEnabled`;
        keys[`${seat}_add_all_in_jam_threshold_pct`] = `${seat}AddAllInIfJamLtPct`;
    }
    return keys;
}

// `state` has the properties of the project state, and a `controller` that knows the machine.
export function solveConfig(state) {
    const maximum = state.controller?.systemThreadCount || state.threadCount;
    const config = {};
    for (const [key, property] of Object.entries(stateKeys())) {
        config[key] = state[property];
    }
    return Object.assign(config, {
        target_exploitability: targetAmount(state.startingPot, state.targetExploitability),
        thread_count: usableThreads(state.threadCount, maximum)
    });
}

// The other way round: what of the project state a configuration tells.
export function stateOf(config) {
    const state = {};
    for (const [key, property] of Object.entries(stateKeys())) {
        if (config[key] !== undefined) {
            state[property] = config[key];
        }
    }
    if (config.starting_pot > 0 && config.target_exploitability >= 0) {
        state.targetExploitability = percentOf(config.target_exploitability, config.starting_pot);
    }
    return state;
}
