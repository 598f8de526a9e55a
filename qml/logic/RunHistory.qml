import QtQuick
import "solve_config.mjs" as SolveConfig
import "solve_status.mjs" as Status

// The runs since the program was started, the newest first, whoever has started them: runId,
// startedAt ("HH:MM:SS"), status ("Running", "Completed", "Cancelled", "Failed" or "Refused"),
// summary, reason (why a run failed or was refused), config (what was asked for), board,
// targetPercent, underLocks; and at the end seconds, iterations, percent (exploitability, of the
// pot; -1 without a result) and stoppedAtLimit.
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

    // Wherever a run is begun or cancelled, the controller says so.
    readonly property Connections _reports: Connections {
        target: history.controller
        ignoreUnknownSignals: true

        function onStatusTextChanged(): void {
            const word = qsTranslate("AppController", "Cancelling...");
            if (history.controller.running && history.controller.statusText === word) {
                history._cancel();
            }
        }
    }
    readonly property Connections _run: Connections {
        target: history.controller?.run ?? null

        function onBegan(): void {
            history._begin(history.controller.run.config);
        }
        function onEnded(): void {
            history._end();
        }
    }

    function clear(): void {
        runs = [];
    }

    // Whether this spot can be had back from the list.
    function holds(config: var): bool {
        return runs.some(run => SolveConfig.isSameSpot(config, run.config));
    }

    function _begin(config: var): void {
        cancelling = false;
        _activeRunId = ++_lastRunId;
        const pot = Number(config.starting_pot) || 0;
        const target = Number(config.target_exploitability) || 0;
        const run = {
            runId: _activeRunId,
            startedAt: new Date().toLocaleTimeString(Qt.locale("C"), "HH:mm:ss"),
            status: "Running",
            reason: "",
            config: config,
            board: String(config.board ?? ""),
            targetPercent: pot > 0 ? SolveConfig.percentOf(target, pot) : 0,
            underLocks: Boolean(config.apply_node_locks),
            seconds: 0,
            iterations: 0,
            percent: -1,
            stoppedAtLimit: false
        };
        run.summary = _summaryOf(run);
        runs = [run, ...runs].slice(0, mostRuns);
    }

    function _summaryOf(run: var): string {
        //: A run in one line; %3 is the target in chips
        return qsTr("Iterations %1 • Target %2% (≈ %3) • Threads %4")
            .arg(Number(run.config.max_iterations ?? 0).toLocaleString(Qt.locale(), "f", 0))
            .arg(run.targetPercent.toLocaleString(Qt.locale(), "f", -128))
            .arg(Number(run.config.target_exploitability ?? 0).toLocaleString(Qt.locale(), "f", 2))
            .arg(run.config.thread_count ?? 1);
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
        const values = {
            status: outcome,
            reason: ["Failed", "Refused"].includes(outcome) ? Status.failureOf(text) : "",
            seconds: controller.run.seconds()
        };
        if (outcome === "Completed") {
            Object.assign(values, {
                iterations: controller.run.measurements.slice(-1)[0]?.iteration ?? 0,
                percent: controller.run.exploitabilityPercent,
                stoppedAtLimit: controller.run.stoppedAtLimit
            });
        }
        _setActive(values);
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
