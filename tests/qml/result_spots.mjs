// Spots that solve in milliseconds, as the controller takes them.

function spot(values, betSizes) {
    const config = Object.assign({
        starting_pot: 10,
        effective_stack: 40,
        max_iterations: 40,
        target_exploitability: 0,
        thread_count: 2
    }, values);
    for (const seat of ["oop", "ip"]) {
        for (const street of ["flop", "turn", "river"]) {
            config[seat + "_" + street + "_bet_sizes"] = betSizes;
            config[seat + "_" + street + "_raise_sizes"] = "60";
        }
    }
    return config;
}

export const river = spot({
    board: "Td9c6h6c2s",
    starting_street: "river",
    oop_range: "TT,87s,KQo",
    ip_range: "99,AJs,A6s,54s"
}, "50");

// All suits but hearts are alike, so that the tree keeps the clubs of them.
export const turn = spot({
    board: "AhQh7h2h",
    starting_street: "turn",
    oop_range: "KK,JJ",
    ip_range: "TT,99"
}, "50");

// Whoever bets is all in, so that the tree stays small.
export const flop = spot({
    board: "AhQh7h",
    starting_street: "flop",
    oop_range: "KK,JJ",
    ip_range: "TT,99",
    effective_stack: 10,
    max_iterations: 5
}, "100");
