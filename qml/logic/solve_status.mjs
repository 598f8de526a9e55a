// How far a solve is, read out of the status text that the controller shows while it runs:
// "Starting...", "Init: ...", "Iter 51 | exploitability≈12.3456", "Finalizing: ...".

export const WINDOW_ITERATIONS = 10;

// "starting", "initializing", "finalizing", or "" for everything else.
export function phaseOf(statusText) {
    if (statusText.startsWith("Starting")) {
        return "starting";
    }
    if (statusText.startsWith("Init:")) {
        return "initializing";
    }
    return statusText.startsWith("Finalizing:") ? "finalizing" : "";
}

// The last word on a solve that went wrong.
export function isFailure(statusText) {
    return statusText.startsWith("Error:");
}

// Without the word for it.
export function failureOf(statusText) {
    return isFailure(statusText) ? statusText.slice("Error:".length).trim() : statusText;
}

// What became of a run that ended with this word: "Completed", "Cancelled", "Failed", or "Refused"
// for what the controller says of a run that it has not let begin.
export function outcomeOf(statusText) {
    if (isFailure(statusText)) {
        return "Failed";
    }
    return {Done: "Completed", Cancelled: "Cancelled"}[statusText] ?? "Refused";
}

// 0 where the text tells none.
export function iterationOf(statusText) {
    const found = statusText.match(/Iter\s+(\d+)/);
    return found ? Number(found[1]) : 0;
}

// The last measurement in hundredths of a chip, NaN where the text tells none.
export function exploitabilityOf(statusText) {
    const found = statusText.match(/exploitability≈([0-9]+(?:\.[0-9]+)?)/);
    return found ? Number(found[1]) : NaN;
}

// How many iterations count as the whole way. A solve stops early at its target, in percent of the
// pot, and a looser one is reached sooner.
export function expectedIterations(targetPercent, maxIterations) {
    const most = Math.max(1, maxIterations);
    if (!Number.isFinite(targetPercent) || targetPercent < 0.1) {
        return most;
    }
    if (targetPercent >= 1) {
        return Math.min(most, 150);
    }
    return Math.min(most, targetPercent >= 0.5 ? 200 : 300);
}

// Iterations come in windows of ten: 1 to 10 within one, 0 before the first.
export function windowPosition(iteration) {
    return iteration > 0 ? (iteration - 1) % WINDOW_ITERATIONS + 1 : 0;
}

// Minutes and seconds, "61:05"; the minutes have no end.
export function minutesText(seconds) {
    const whole = Math.max(0, Math.floor(seconds));
    const digits = number => String(number).padStart(2, "0");
    return `${digits(Math.floor(whole / 60))}:${digits(whole % 60)}`;
}

// The numbers of threads to choose from, ascending; the last is all there are.
export function threadCounts(maximum) {
    const counts = [1, 2, 4, 8, 16, 32, 64, 128].filter(count => count < maximum);
    return [...counts, maximum];
}
