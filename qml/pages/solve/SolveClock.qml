import QtQuick
import "../../logic/solve_status.mjs" as Status

// Time and speed of a run, second by second.
QtObject {
    id: clock

    property bool running: false
    // Of the run so far, and at most.
    property int iteration: 0
    property int maxIterations: 0

    // "mm:ss"
    property string elapsedTime: "00:00"
    property string estimatedRemaining: "--:--"
    property real iterationsPerSec: 0

    property int _seconds: 0
    readonly property Timer _timer: Timer {
        interval: 1000
        repeat: true
        running: clock.running
        onTriggered: clock._tick()
        onRunningChanged: if (!running) clock._stop()
    }

    function _tick(): void {
        ++_seconds;
        elapsedTime = Status.minutesText(_seconds);
        if (iteration > 0) {
            iterationsPerSec = iteration / _seconds;
            estimatedRemaining = Status.minutesText((maxIterations - iteration) / iterationsPerSec);
        }
    }

    function _stop(): void {
        _seconds = 0;
        estimatedRemaining = "00:00";
    }
}
