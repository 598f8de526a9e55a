import QtQuick

// The runs that were started on the page, the newest first: runId, startedAt ("HH:MM:SS"), status
// ("Running", "Completed" or "Cancelled") and summary.
QtObject {
    id: history

    property var runs: []
    readonly property int mostRuns: 10

    // -1 while no run of the list is active.
    property int _activeRunId: -1
    property int _lastRunId: 0

    // A run begins; what becomes of it is told by the functions below.
    function begin(summary: string): void {
        _activeRunId = ++_lastRunId;
        const run = {
            runId: _activeRunId,
            startedAt: new Date().toLocaleTimeString(Qt.locale("C"), "HH:mm:ss"),
            status: "Running",
            summary: summary
        };
        runs = [run, ...runs].slice(0, mostRuns);
    }

    function cancel(): void {
        _setStatus("Cancelled");
    }

    function end(): void {
        _setStatus("Completed");
        _activeRunId = -1;
    }

    // The run has not come about.
    function withdraw(): void {
        runs = runs.filter(run => run.runId !== _activeRunId);
        _activeRunId = -1;
    }

    function clear(): void {
        runs = [];
    }

    // Of the active run; what has been decided stays.
    function _setStatus(status: string): void {
        runs = runs.map(run => run.runId === _activeRunId && run.status === "Running"
            ? Object.assign({}, run, {status: status}) : run);
    }
}
