import QtQuick
import "../../logic/solve_status.mjs" as Status

// Time and speed of a run, as far as it has come or as it has ended.
QtObject {
    id: clock

    // Of the controller, null for none.
    property var run: null
    property bool running: false
    // Of the run so far.
    property int iteration: 0

    // "mm:ss", and "—" for what remains as long as nobody can tell.
    property string elapsedTime: "00:00"
    property string estimatedRemaining: "—"
    property real iterationsPerSec: 0
    property real seconds: 0

    readonly property Timer _timer: Timer {
        interval: 500
        repeat: true
        running: clock.running
        onTriggered: clock._tick()
    }
    // A run may be forgotten, too.
    readonly property Connections _reports: Connections {
        target: clock.run
        ignoreUnknownSignals: true

        function onMeasured(): void {
            if (!clock.running) {
                clock._tick();
            }
        }
    }

    function _tick(): void {
        seconds = run?.seconds() ?? 0;
        elapsedTime = Status.minutesText(seconds);
        iterationsPerSec = seconds > 0 ? iteration / seconds : 0;
        const remaining = running ? run?.remainingSeconds() ?? -1 : -1;
        if (!running) {
            estimatedRemaining = seconds > 0 ? "00:00" : "—";
        } else {
            estimatedRemaining = remaining >= 0 ? Status.minutesText(Math.ceil(remaining)) : "—";
        }
    }

    onRunningChanged: _tick()
    onIterationChanged: if (!running) _tick()
    onRunChanged: _tick()
}
