// Game settings and sizing of a spot, without its board and ranges, kept under a name for other
// spots. A profile is {id, name, createdAt, data}; `data` has the keys below.

import { newNodeId } from "./node_id.mjs";

const SEATS = ["oop", "ip"];
const STREETS = ["flop", "turn", "river"];

const NUMBER_KEYS = {
    starting_pot: "startingPot",
    effective_stack: "effectiveStack",
    rake_percent: "rakePercent",
    rake_cap: "rakeCap",
    max_iterations: "maxIterations"
};

function capitalized(word) {
    return word[0].toUpperCase() + word.slice(1);
}

// {oop_flop_bet_sizes: "oopFlopBetSizesText", ...} for one or more of the things that a seat has on
// each street.
function streetKeys(seats, things) {
    const keys = {};
    for (const seat of seats) {
        for (const [thing, suffix] of things) {
            for (const street of STREETS) {
                keys[`${seat}_${street}_${thing}`] = seat + capitalized(street) + suffix;
            }
        }
    }
    return keys;
}

const TEXT_KEYS = streetKeys(SEATS,
    [["bet_sizes", "BetSizesText"], ["raise_sizes", "RaiseSizesText"]]);
const FLAG_KEYS = Object.assign({exact_all_in: "exactAllIn"},
    streetKeys(SEATS, [["add_all_in", "AddAllIn"]]),
    streetKeys(["oop"], [["dont_donk", "DontDonk"]]));

const ALL_KEYS = Object.assign({
    target_exploitability_pct: "targetExploitability",
    starting_street: "startingStreet",
    oop_add_all_in_jam_threshold_enabled: "oopAddAllInIfJamLtEnabled",
    oop_add_all_in_jam_threshold_pct: "oopAddAllInIfJamLtPct",
    ip_add_all_in_jam_threshold_enabled: "ipAddAllInIfJamLtEnabled",
    ip_add_all_in_jam_threshold_pct: "ipAddAllInIfJamLtPct"
}, NUMBER_KEYS, TEXT_KEYS, FLAG_KEYS);

function isPresent(value) {
    return value !== undefined && value !== null;
}

function isNumber(value) {
    return isPresent(value) && value !== "" && Number.isFinite(Number(value));
}

// `state` has the properties of the project state.
export function snapshotOf(state) {
    const data = {};
    for (const [key, property] of Object.entries(ALL_KEYS)) {
        data[key] = state[property];
    }
    return data;
}

// The jam threshold of both seats. Older profiles had one for both.
function jamSettings(data) {
    const settings = {};
    for (const seat of SEATS) {
        const enabled = data.add_all_in_jam_threshold_enabled
                        ?? data[`${seat}_add_all_in_jam_threshold_enabled`];
        settings[`${seat}AddAllInIfJamLtEnabled`] = Boolean(enabled);
        const percent = data.add_all_in_jam_threshold_pct
                        ?? data[`${seat}_add_all_in_jam_threshold_pct`];
        if (isNumber(percent)) {
            settings[`${seat}AddAllInIfJamLtPct`] = Number(percent);
        }
    }
    return settings;
}

// The properties of the project state that a profile sets. Sizing is set as a whole, with nothing
// for what the profile lacks; of the rest only what it has. `startingPot` is the present pot.
export function settingsOf(data, startingPot) {
    const settings = {};
    for (const [key, property] of Object.entries(NUMBER_KEYS)) {
        if (isNumber(data[key])) {
            settings[property] = Number(data[key]);
        }
    }
    if (isPresent(data.starting_street)) {
        settings.startingStreet = String(data.starting_street);
    }
    if (isNumber(data.target_exploitability_pct)) {
        settings.targetExploitability = Number(data.target_exploitability_pct);
    } else if (isNumber(data.target_exploitability)) {
        // Older profiles have chips.
        const chips = Number(data.target_exploitability);
        const pot = settings.startingPot ?? startingPot;
        settings.targetExploitability = Number.isFinite(pot) && pot > 0 ? chips * 100 / pot : chips;
    }
    for (const [key, property] of Object.entries(TEXT_KEYS)) {
        settings[property] = String(data[key] ?? "");
    }
    for (const [key, property] of Object.entries(FLAG_KEYS)) {
        settings[property] = Boolean(data[key]);
    }
    return Object.assign(settings, jamSettings(data));
}

// What was stored, mended where something is missing; null where it cannot be read.
export function parsedProfiles(json) {
    let stored;
    try {
        stored = JSON.parse(json);
    } catch (error) {
        return null;
    }
    if (!Array.isArray(stored)) {
        return null;
    }
    return stored.filter(entry => typeof entry?.name === "string" && entry.name.trim() !== "")
        .map(entry => ({
            id: entry.id || newNodeId(),
            name: entry.name,
            createdAt: entry.createdAt || "",
            data: entry.data || {}
        }));
}

// The trimmed name, with " (2)", " (3)" and so on where it is taken.
export function uniqueName(name, profiles) {
    const wanted = name.trim();
    const taken = new Set(profiles.map(profile => profile.name));
    let free = wanted;
    for (let number = 2; taken.has(free); ++number) {
        free = `${wanted} (${number})`;
    }
    return free;
}

export function newProfile(name, profiles, state) {
    return {
        id: newNodeId(),
        name: uniqueName(name, profiles),
        createdAt: new Date().toISOString(),
        data: snapshotOf(state)
    };
}
