// Whether a project is complete enough to be solved. The controller has the last word: what passes
// here may still be refused, but what does not pass is not even tried.

import { isComplete as isBoardComplete } from "./board_text.mjs";
import { SIZING_KEYS } from "./presets.mjs";

// A pair of ranks, a single combo or a percentage of all hands.
export function hasAnyHand(text) {
    const hands = text.replace(/\s/g, "");
    return /[AKQJT98765432]{2}|[AKQJT98765432][shdc][AKQJT98765432]/i.test(hands)
        || /^\s*\d+(\.\d+)?\s*%\s*$/.test(text);
}

// No field may be empty, not even one of a street that is not played any more.
export function isSizingFilled(state) {
    return SIZING_KEYS.every(key => state[key].trim() !== "");
}

export function isProjectComplete(state) {
    return isBoardComplete(state.boardText) && isSizingFilled(state)
        && hasAnyHand(state.oopRangeText) && hasAnyHand(state.ipRangeText);
}

function isAmount(bytes) {
    return Number.isFinite(bytes) && bytes > 0;
}

// `controller` may be null. Without an estimate there is never enough. The memory of the results
// on screen counts, since a solve begins by giving it back.
export function hasEnoughMemory(controller) {
    const required = controller?.solveRequiredMemoryBytes;
    const available = controller?.systemAvailableMemoryBytes;
    if (!isAmount(required) || !isAmount(available)) {
        return false;
    }
    return available + Math.max(controller.resultsReclaimableMemoryBytes ?? 0, 0) > required;
}
