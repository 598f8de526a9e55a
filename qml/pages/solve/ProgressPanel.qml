pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tidewell
import "../../logic/solve_status.mjs" as Status

// How far the solve is, how good its result is so far, and how fast it goes.
Card {
    id: panel

    required property SolveProgress progress
    required property SolveClock clock
    property bool cancelling: false
    // Why nothing can be solved; empty when it can.
    property string obstacle: ""

    function _statusLine(): string {
        if (!progress.controller) {
            return qsTr("Ready to solve");
        }
        if (!progress.running) {
            return _restingLine();
        }
        if (cancelling) {
            return qsTr("Cancelling...");
        }
        if (progress.isStarting) {
            return qsTr("Starting solver…");
        }
        if (progress.isInitializing) {
            return qsTr("Initializing…");
        }
        if (progress.isFinalizing) {
            return qsTr("Finalizing…");
        }
        if (progress.currentIteration > 0) {
            return qsTr("Iteration %1 | exploitability=%2")
                .arg(progress.currentIteration.toLocaleString(Qt.locale(), "f", 0))
                .arg(_formatExploitabilityForUi(progress.currentIteration,
                                                progress.currentExploitabilityValue));
        }
        return progress.statusText;
    }

    function _restingLine(): string {
        switch (progress.statusText) {
        case "Done":
            return qsTr("Done");
        case "Cancelled":
            return qsTr("Cancelled");
        case "":
        case qsTranslate("AppController", "Ready"):
            // The controller knows of no run, but not of the spot.
            return obstacle || progress.statusText || qsTr("Ready to solve");
        default:
            return progress.statusText;
        }
    }

    function _formatExploitabilityForUi(iteration: int, value: real): string {
        if (Status.isSettling(iteration)) {
            return "∞";
        }
        return Number.isFinite(value) ? value.toLocaleString(Qt.locale(), "f", 2) : "—";
    }

    function _windowCaption(): string {
        if (progress.runComplete) {
            return qsTr("Iterations: %1")
                .arg(progress.resultIterations.toLocaleString(Qt.locale(), "f", 0));
        }
        return qsTr("Window %1/%2").arg(progress.running ? progress.iterationWindowValue : 0)
            .arg(progress.iterationWindowSize);
    }

    // The status says 0 until it has been measured for the first time.
    readonly property bool _isMeasured: progress.currentExploitabilityValue > 0

    function _exploitabilityText(): string {
        if (_isMeasured) {
            return progress.currentExploitabilityValue.toLocaleString(Qt.locale(), "f", 4);
        }
        return progress.running ? qsTr("Measuring...") : "—";
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: panel.theme.spaceLg

        CardHeading {
            theme: panel.theme
            iconName: "clock"
            title: qsTr("Progress")
            Layout.fillWidth: true
        }
        RowLayout {
            spacing: panel.theme.spaceXl
            Layout.fillWidth: true

            ProgressRing {
                objectName: "ring"
                theme: panel.theme
                strokeWidth: 10
                value: panel.progress.progressWheelValue
                indeterminate: panel.progress.running && panel.progress.currentIteration <= 0
                Layout.preferredWidth: 140
                Layout.preferredHeight: 140
            }
            ColumnLayout {
                spacing: panel.theme.spaceSm
                Layout.fillWidth: true

                AppLabel {
                    objectName: "statusLine"
                    theme: panel.theme
                    text: panel._statusLine()
                    color: panel.progress.failed ? panel.theme.danger : panel.theme.text
                    font.pixelSize: Fallback.type.bodyLg
                    font.weight: Fallback.type.weightMedium
                    wrapMode: Text.Wrap
                    maximumLineCount: 5
                    elide: Text.ElideRight
                    Layout.fillWidth: true
                }
                AppLabel {
                    objectName: "finalizingLine"
                    theme: panel.theme
                    text: qsTr("The solver has reached its end; the results are being finalised.")
                    muted: true
                    font.pixelSize: Fallback.type.labelMd
                    wrapMode: Text.Wrap
                    visible: panel.progress.isFinalizing
                    Layout.fillWidth: true
                }
                AppProgressBar {
                    objectName: "window"
                    theme: panel.theme
                    from: 0
                    to: panel.progress.iterationWindowSize
                    value: panel.progress.running ? panel.progress.iterationWindowValue : 0
                    Accessible.name: caption.text
                    Layout.fillWidth: true
                    Layout.preferredHeight: 4
                    Layout.topMargin: panel.theme.spaceXs
                }
                AppLabel {
                    id: caption

                    objectName: "windowCaption"
                    theme: panel.theme
                    text: panel._windowCaption()
                    muted: true
                    font.pixelSize: Fallback.type.labelMd
                    Layout.fillWidth: true
                }
            }
        }
        CardHeading {
            theme: panel.theme
            title: qsTr("Metrics")
            Layout.fillWidth: true
        }
        GridLayout {
            columns: width >= 560 ? 4 : 2
            columnSpacing: panel.theme.spaceMd
            rowSpacing: panel.theme.spaceMd
            Layout.fillWidth: true

            Metric {
                objectName: "elapsed"
                label: qsTr("Elapsed")
                value: panel.clock.elapsedTime
            }
            Metric {
                objectName: "remaining"
                label: qsTr("Remaining")
                value: panel.clock.estimatedRemaining
            }
            Metric {
                objectName: "speed"
                label: qsTr("Speed")
                value: panel.clock.iterationsPerSec > 0
                    ? panel.clock.iterationsPerSec.toLocaleString(Qt.locale(), "f", 0) : "—"
                //: Iterations per second
                unit: panel.clock.iterationsPerSec > 0 ? qsTr("it/s") : ""
            }
            Metric {
                objectName: "exploitability"
                label: qsTr("Exploitability")
                value: panel._exploitabilityText()
                unit: {
                    if (!panel._isMeasured) {
                        return "";
                    }
                    //: c is a hundredth of a chip, as in sizes such as "500c"
                    return panel.progress.running ? qsTr("c") : qsTr("chips");
                }
                accentColor: panel.theme.gold
            }
        }
    }

    component Metric: StatCard {
        theme: panel.theme
        compact: true
        Layout.fillWidth: true
        Layout.preferredWidth: 1
    }
}
