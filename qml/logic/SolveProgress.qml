import QtQuick
import "solve_status.mjs" as Status

// How far the controller's solve is. While it runs, what it says changes with every iteration, some
// thousand times a second in small spots: it is taken over at once where the phase changes, and
// otherwise a few times a second.
QtObject {
    id: solve

    // An AppController, or null.
    property var controller: null
    property int maxIterations: 0
    // Percent of the starting pot.
    property real targetExploitability: 0

    readonly property bool running: controller?.running ?? false
    readonly property var _run: controller?.run ?? null
    readonly property string statusText: _statusText
    readonly property string phase: {
        if (!running) {
            return "";
        }
        // The controller speaks the user's language where it speaks for itself.
        return _statusText === qsTranslate("AppController", "Starting...")
            ? "starting" : Status.phaseOf(_statusText);
    }
    readonly property bool isStarting: phase === "starting"
    readonly property bool isInitializing: phase === "initializing"
    readonly property bool isFinalizing: phase === "finalizing"

    readonly property int resultIterations: controller?.resultIterations ?? 0
    readonly property bool runComplete: !running && resultIterations > 0
    readonly property bool failed: !running && Status.isFailure(_statusText)
    readonly property int currentIteration: {
        if (!running) {
            return resultIterations;
        }
        if (isFinalizing && _lastIterFromStatusText > 0) {
            return _lastIterFromStatusText;
        }
        return Status.iterationOf(_statusText)
            || Math.max(0, Math.floor(_progress * maxIterations));
    }
    // While running as the status text has it, in hundredths of a chip; then in chips. NaN for none.
    readonly property real currentExploitabilityValue: {
        if (running) {
            return Status.exploitabilityOf(_statusText);
        }
        const result = controller?.resultExploitability ?? 0;
        return Number.isFinite(result) && result > 0 ? result : NaN;
    }

    // The same as it is told: in percent of the starting pot and in chips, NaN for none.
    readonly property real exploitabilityPercent: {
        if (running) {
            return _run?.exploitabilityPercent >= 0 ? _run.exploitabilityPercent : NaN;
        }
        const pot = controller?.resultStartingPot ?? 0;
        return pot > 0 && resultIterations > 0 ? 100 * controller.resultExploitability / pot : NaN;
    }
    readonly property real exploitabilityChips: {
        if (running) {
            return _run?.exploitability >= 0 ? _run.exploitability : NaN;
        }
        return resultIterations > 0 ? controller.resultExploitability : NaN;
    }
    // It has ended at its limit of iterations and not at its target.
    readonly property bool stoppedAtLimit: runComplete && (_run?.stoppedAtLimit ?? false)

    // Where the solve is going has been measured.
    readonly property bool isEstimated: running && (_run?.expectedIterations ?? 0) > 0
    // What counts as the whole way, and how much of it is done: 0 to 1.
    readonly property int progressWheelTotalIterations: isEstimated
        ? _run.expectedIterations : Status.expectedIterations(targetExploitability, maxIterations)
    readonly property real progressWheelValue: {
        if (!running) {
            return runComplete ? 1 : 0;
        }
        if (!isEstimated) {
            return 0;
        }
        return Math.min(currentIteration / Math.max(1, progressWheelTotalIterations), 1);
    }

    readonly property int iterationWindowSize: Status.WINDOW_ITERATIONS
    readonly property int iterationWindowValue: Status.windowPosition(currentIteration)

    // Survives the last reports, which tell no iteration.
    property int _lastIterFromStatusText: 0

    // What the controller said when it was last looked at.
    property string _statusText: ""
    property real _progress: 0

    readonly property Connections _reports: Connections {
        target: solve.controller
        ignoreUnknownSignals: true

        function onStatusTextChanged(): void {
            solve._hear();
        }
        function onRunningChanged(): void {
            if (!solve.running) {
                solve._lastIterFromStatusText = 0;
            }
            solve._take();
        }
    }
    readonly property Timer _pace: Timer {
        interval: 100
        onTriggered: if (solve._statusText !== solve.controller?.statusText) solve._take()
    }

    function _hear(): void {
        const iteration = Status.iterationOf(controller.statusText);
        if (iteration > 0) {
            _lastIterFromStatusText = iteration;
        }
        if (iteration === 0 || !_pace.running) {
            _take();
        }
    }

    function _take(): void {
        _progress = controller?.progress ?? 0;
        _statusText = controller?.statusText ?? "";
        _pace.restart();
    }

    onControllerChanged: _take()
}
