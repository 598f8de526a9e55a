// The 169 starting hands by label ("AA", "AKs", "AKo") in the order of the grid.

const RANKS = "AKQJT98765432";

// The label at a place of the grid: pairs on the diagonal, suited hands above it, offsuit below.
export function handAt(row, column) {
    if (row === column) {
        return RANKS[row] + RANKS[row];
    }
    return row < column ? RANKS[row] + RANKS[column] + "s" : RANKS[column] + RANKS[row] + "o";
}

const HANDS = Array.from({length: RANKS.length * RANKS.length}, (_, cell) =>
    handAt(Math.floor(cell / RANKS.length), cell % RANKS.length));

// All labels, row by row.
export function allHands() {
    return HANDS;
}
