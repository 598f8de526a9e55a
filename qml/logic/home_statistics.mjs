// The figures of the start page, from the daily counts that the controller keeps. A day of the
// history has `date`, `solves` and `runtimeMsSum`; a cell of the calendar is a day too, or padding.

const DAYS_A_WEEK = 7;

// Running totals, one entry a day: solves of the day and so far, and the average run time so far in
// seconds, NaN before there is one.
export function cumulativeHistory(days) {
    let solves = 0;
    let milliseconds = 0;
    return Array.from(days, day => {
        const ofDay = Math.max(0, Math.round(day.solves));
        solves += ofDay;
        milliseconds += Math.max(0, day.runtimeMsSum);
        const isTimed = solves > 0 && milliseconds > 0;
        return {
            date: day.date,
            solves: ofDay,
            totalSolves: solves,
            averageSeconds: isTimed ? milliseconds / 1000 / solves : NaN
        };
    });
}

// Both lines of the chart as shares of its height, NaN where a line has no point. The total of
// solves fills the height, and so does the longest average: the two have no scale in common.
export function chartLines(history) {
    const total = history.length > 0 ? history[history.length - 1].totalSolves : 0;
    const peak = history.reduce((greatest, day) => Math.max(greatest, day.averageSeconds || 0), 0);
    return history.map(day => ({
        solves: day.totalSolves / Math.max(1, total),
        seconds: day.averageSeconds / peak
    }));
}

// The calendar ends with the present week, so its last seven cells are this week's.
export function calendarSummary(cells) {
    const days = Array.from(cells);
    const past = day => !day.isPadding && !day.isFuture;
    const solvesOf = list => list.filter(past).reduce((sum, day) => sum + day.solves, 0);
    const timed = days.filter(day => past(day) && day.runtimeMsSum > 0);
    const milliseconds = timed.reduce((sum, day) => sum + day.runtimeMsSum, 0);
    return {
        totalSolves: solvesOf(days),
        solvesThisWeek: solvesOf(days.slice(-DAYS_A_WEEK)),
        averageSeconds: timed.length > 0 ? milliseconds / 1000 / solvesOf(timed) : NaN
    };
}

// For each week of the calendar the month, 0 to 11, that begins in it, or -1.
export function monthStarts(cells) {
    const weeks = Math.max(1, Math.floor(cells.length / DAYS_A_WEEK));
    return Array.from({length: weeks}, (_, week) => {
        const days = Array.from({length: DAYS_A_WEEK}, (_, day) => cells[week * DAYS_A_WEEK + day]);
        const first = days.find(day => day && !day.isPadding && day.date.endsWith("-01"));
        return first ? Number(first.date.slice(5, 7)) - 1 : -1;
    });
}

// A time as people say it: null for none, only seconds below a minute, whole minutes and whole
// seconds from there.
export function durationParts(seconds) {
    if (!Number.isFinite(seconds) || seconds <= 0) {
        return null;
    }
    if (seconds < 60) {
        return {minutes: 0, seconds: seconds};
    }
    const whole = Math.round(seconds);
    return {minutes: Math.floor(whole / 60), seconds: whole % 60};
}
