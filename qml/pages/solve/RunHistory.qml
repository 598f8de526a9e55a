import QtQuick
import "../../logic/solve_status.mjs" as Status

// The runs that were started on the page, the newest first: runId, startedAt ("HH:MM:SS"), status
// ("Running", "Completed", "Cancelled", "Failed" or "Refused"), summary, and reason, which says why
// a run failed or was refused.
QtObject {
    id: history

    // An AppController, or null.
    property var controller: null
    property var runs: []
    readonly property int mostRuns: 10
    // The run on the way, of the list or not, has been told to stop.
    property bool cancelling: false

    // -1 while no run of the list is active.
    property int _activeRunId: -1
    property int _lastRunId: 0

    // Wherever a run is cancelled, the controller says so.
    readonly property Connections _reports: Connections {
        target: history.controller
        ignoreUnknownSignals: true

        function onStatusTextChanged(): void {
            const word = qsTranslate("AppController", "Cancelling...");
            if (history.controller.running && history.controller.statusText === word) {
                history._cancel();
            }
        }
        function onRunningChanged(): void {
            if (!history.controller.running) {
                history._end();
            }
        }
    }

    // Before a run is started; what becomes of it is told by the controller.
    function begin(summary: string): void {
        _activeRunId = ++_lastRunId;
        const run = {
            runId: _activeRunId,
            startedAt: new Date().toLocaleTimeString(Qt.locale("C"), "HH:mm:ss"),
            status: "Running",
            summary: summary,
            reason: ""
        };
        runs = [run, ...runs].slice(0, mostRuns);
    }

    // After the start: a run that was refused at once has never been on the way.
    function follow(): void {
        if (!controller.running) {
            _end();
        }
    }

    function clear(): void {
        runs = [];
    }

    function _cancel(): void {
        cancelling = true;
        _setActive({status: "Cancelled"});
    }

    // A run is given up for another project, too, and then the controller is ready at once.
    function _end(): void {
        const text = controller.statusText;
        const outcome = text === qsTranslate("AppController", "Ready")
            || cancelling && text !== "Done" ? "Cancelled" : Status.outcomeOf(text);
        const why = ["Failed", "Refused"].includes(outcome) ? Status.failureOf(text) : "";
        _setActive({status: outcome, reason: why});
        cancelling = false;
        _activeRunId = -1;
    }

    function _setActive(values: var): void {
        runs = runs.map(run => run.runId === _activeRunId ? Object.assign({}, run, values) : run);
    }

    onControllerChanged: {
        cancelling = false;
        _activeRunId = -1;
    }
}
