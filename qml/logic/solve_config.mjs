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

// Whether two configurations describe the same game. What one of them does not say counts as equal.
export function isSameSpot(config, other) {
    return Object.keys(config).every(key => EFFORT_KEYS.includes(key) || !(key in other)
        || String(config[key]) === String(other[key]));
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

export function solveConfig(state) {
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
        thread_count: state.threadCount,
        oop_flop_dont_donk: state.oopFlopDontDonk,
        oop_turn_dont_donk: state.oopTurnDontDonk,
        oop_river_dont_donk: state.oopRiverDontDonk
    }, seatConfig(state, "oop"), seatConfig(state, "ip"));
}
