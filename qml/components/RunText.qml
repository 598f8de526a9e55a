pragma Singleton
import QtQuick

// How a solve has ended, in a line.
QtObject {
    // Percentages are of the starting pot.
    function stopped(iterations: int, percent: real, target: real): string {
        //: %1 is a number, %2 how good the strategy is and %3 how good it was to be, in percent
        return qsTr("Stopped at %1 iterations, %2 (target %3)")
            .arg(iterations.toLocaleString(Qt.locale(), "f", 0))
            .arg(ExploitabilityText.percent(percent)).arg(ExploitabilityText.exactPercent(target));
    }

    function reached(iterations: int, percent: real, target: real): string {
        //: As for "Stopped at"
        return qsTr("Target reached at %1 iterations, %2 (target %3)")
            .arg(iterations.toLocaleString(Qt.locale(), "f", 0))
            .arg(ExploitabilityText.percent(percent)).arg(ExploitabilityText.exactPercent(target));
    }
}
