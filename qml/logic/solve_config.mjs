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

function seatConfig(state, seat) {
    const config = {};
    for (const street of STREETS) {
        const prefix = `${seat}_${street.toLowerCase()}`;
        config[`${prefix}_bet_sizes`] = state[`${seat}${street}BetSizesText`];
        config[`${prefix}_raise_sizes`] = state[`${seat}${street}RaiseSizesText`];
        config[`${prefix}_add_all_in`] = state[`${seat}${street}AddAllIn`];
    }
    config[`${seat}_add_all_in_jam_threshold_enabled`] = state[`${seat}AddAllInIfJamLtEnabled`];
    config[`${seat}_add_all_in_jam_threshold_pct`] = state[`${seat}AddAllInIfJamLtPct`];
    return config;
}

// `state` has the properties of the project state, and a `controller` that knows the machine.
export function solveConfig(state) {
    const maximum = state.controller?.systemThreadCount || state.threadCount;
    return Object.assign({
        board: state.boardText,
        oop_range: state.oopRangeText,
        ip_range: state.ipRangeText,
        max_iterations: state.maxIterations,
        target_exploitability: targetAmount(state.startingPot, state.targetExploitability),
        starting_pot: state.startingPot,
        effective_stack: state.effectiveStack,
        rake_percent: state.rakePercent,
        rake_cap: state.rakeCap,
        starting_street: state.startingStreet,
        thread_count: usableThreads(state.threadCount, maximum),
        exact_all_in: state.exactAllIn,
        oop_flop_dont_donk: state.oopFlopDontDonk,
        oop_turn_dont_donk: state.oopTurnDontDonk,
        oop_river_dont_donk: state.oopRiverDontDonk
    }, seatConfig(state, "oop"), seatConfig(state, "ip"));
}
