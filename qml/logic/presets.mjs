// The project state: what a person has entered about a spot, as one flat map with the names of the
// shell's properties; and the states that projects start from. Money in chips, percentages of the
// pot, sizes and ranges as the text that was typed.

const SEATS = ["oop", "ip"];
const STREETS = ["Flop", "Turn", "River"];
// Where the machine does not tell how many threads it has.
const REFERENCE_THREADS = 12;

// The sizing of both seats, one text per street.
function sizing(bets, raises) {
    const state = {};
    for (const seat of SEATS) {
        STREETS.forEach((street, index) => {
            state[`${seat}${street}BetSizesText`] = bets[index];
            state[`${seat}${street}RaiseSizesText`] = raises[index];
        });
    }
    return state;
}

function optionsOff() {
    const state = {};
    for (const seat of SEATS) {
        for (const street of STREETS) {
            state[`${seat}${street}AddAllIn`] = false;
        }
        state[`${seat}AddAllInIfJamLtEnabled`] = false;
        state[`${seat}AddAllInIfJamLtPct`] = 0;
    }
    for (const street of STREETS) {
        state[`oop${street}DontDonk`] = false;
    }
    return state;
}

// `threads` is the machine's number in all of these, 0 where it is not known.

export function startupBlank(threads) {
    return Object.assign({
        boardText: "",
        oopRangeText: "",
        ipRangeText: "",
        betSizesText: "",
        maxIterations: 0,
        startingPot: 0,
        effectiveStack: 0,
        threadCount: threads || 1,
        startingStreet: "flop",
        targetExploitability: 0,
        rakePercent: 0,
        rakeCap: 0,
        exactAllIn: false
    }, sizing(["", "", ""], ["", "", ""]), optionsOff());
}

// A single raised pot on a wet flop, the same in every release: what developers compare solves by.
export function referenceSpot(threads) {
    return Object.assign(startupBlank(threads), {
        boardText: "QsJh2h",
        oopRangeText: "88+,A8s+,A5s-A2s:0.5,AJo+,ATo:0.75,K9s+,KQo,KJo:0.75,KTo:0.25,Q9s+,"
            + "QJo:0.5,J8s+,JTo:0.25,T8s+,T7s:0.45,97s+,96s:0.45,87s,86s:0.75,85s:0.45,"
            + "75s+:0.75,74s:0.45,65s:0.75,64s:0.5,63s:0.45,54s:0.75,53s:0.5,52s:0.45,"
            + "43s:0.5,42s:0.45,32s:0.45",
        ipRangeText: "AA:0.25,99-22,AJs-A2s,AQo-A8o,K2s+,K9o+,Q2s+,Q9o+,J6s+,J9o+,T6s+,T9o,"
            + "96s+,95s:0.5,98o,86s+,85s:0.5,75s+,74s:0.5,64s+,63s:0.5,54s,53s:0.5,43s",
        betSizesText: "52",
        maxIterations: 400,
        startingPot: 180,
        effectiveStack: 910,
        threadCount: threads || REFERENCE_THREADS,
        targetExploitability: 0.5,
        rakePercent: 5,
        rakeCap: 30
    }, sizing(["52", "55", "70"], ["45", "45", "45"]));
}

// A single raised pot as it is played: what Quick Solve begins with.
export function quickSpot(threads) {
    return Object.assign(referenceSpot(threads), {
        boardText: "AdJd8s",
        oopRangeText: "88+,A8s+,A5s,A4s,A3s-A2s:0.5,AJo+,ATo,K9s+,KQo,KJo:0.75,KTo:0.25,Q9s+,"
            + "QJo:0.5,J8s+,JTo:0.25,T8s+,T7s:0.45,97s+,96s:0.45,87s,86s:0.75,85s:0.45,"
            + "75s+:0.75,65s:0.75,64s:0.5,54s:0.75,53s:0.5,43s:0.5,32s:0.45,A9o:0.5,K8s:0.5,"
            + "Q8s:0.5,77:0.5,66:0.5,55:0.25",
        ipRangeText: "AA:0.25,99-22,AJs-A6s,A5s-A4s:0.5,A3s-A2s,AQo-A7o,K2s+,K9o+,Q4s+,"
            + "Q3s-Q2s:0.5,Q9o+,J6s+,J9o+,T6s+,T9o,96s+,95s:0.5,98o,86s+,85s:0.5,75s+,"
            + "74s:0.5,64s+,63s:0.5,54s,53s:0.5,43s,QQ:0.25,JJ:0.25,TT:0.5,A5o:0.5,A4o:0.5,"
            + "J5s:0.5,T5s:0.5",
        betSizesText: "50",
        startingPot: 18,
        effectiveStack: 91,
        rakeCap: 3
    }, sizing(["50", "75", "75"], ["50", "50", "75"]));
}

// No spot yet, but the game that is usually played: money and limits of a quick solve.
export function newProject(threads, developerMode) {
    const quick = developerMode ? referenceSpot(threads) : quickSpot(threads);
    return Object.assign(quick, {
        boardText: "",
        oopRangeText: "",
        ipRangeText: "",
        betSizesText: ""
    }, sizing(["", "", ""], ["", "", ""]));
}

// The names of all that a project state holds. The board comes first: a page that follows it
// derives others from it.
export const PROJECT_KEYS = Object.keys(startupBlank(1));

export const SIZING_KEYS = PROJECT_KEYS.filter(key => /(Bet|Raise)SizesText$/.test(key));
