pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tidewell
import "../../logic/solve_config.mjs" as SolveConfig

// How far the solve is, how good its result is so far, and how fast it goes.
Card {
    id: panel

    required property SolveProgress progress
    required property SolveClock clock
    // Percent of the starting pot.
    property real target: 0
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
                                                progress.exploitabilityPercent));
        }
        return progress.statusText;
    }

    function _restingLine(): string {
        switch (progress.statusText) {
        case "Done":
            return _endLine();
        case "Cancelled":
            return qsTr("Cancelled");
        case "":
        case qsTranslate("AppController", "Ready"):
            // The controller knows of no run, but not of the spot.
            return obstacle || progress.statusText || qsTr("Ready to solve");
        default:
            return _isLoaded() ? _loadedLine() : progress.statusText;
        }
    }

    // What the controller says of a file counts what is in it; that tells a person nothing.
    function _isLoaded(): bool {
        const told = qsTranslate("AppController",
                                 "Loaded project (%1 strategy nodes, %2 combo nodes)");
        return progress.statusText.startsWith(told.slice(0, told.indexOf("%1")));
    }

    function _loadedLine(): string {
        if (!progress.runComplete) {
            return obstacle || qsTr("Ready to solve");
        }
        //: %1 is a number, %2 how good the strategy is, in percent
        return qsTr("Opened: a result of %1 iterations, %2")
            .arg(progress.resultIterations.toLocaleString(Qt.locale(), "f", 0))
            .arg(ExploitabilityText.percent(progress.exploitabilityPercent));
    }

    function _endLine(): string {
        if (!progress.stoppedAtLimit) {
            return qsTr("Done");
        }
        return RunText.stopped(progress.resultIterations, progress.exploitabilityPercent,
                               _runTarget);
    }

    // In percent of the pot; the first iterations have none yet.
    function _formatExploitabilityForUi(iteration: int, percent: real): string {
        return iteration > 0 ? ExploitabilityText.percent(percent) : "—";
    }

    function _windowCaption(): string {
        if (progress.runComplete) {
            return qsTr("Iterations: %1")
                .arg(progress.resultIterations.toLocaleString(Qt.locale(), "f", 0));
        }
        return qsTr("Window %1/%2").arg(progress.running ? progress.iterationWindowValue : 0)
            .arg(progress.iterationWindowSize);
    }

    readonly property bool _isMeasured: Number.isFinite(progress.exploitabilityPercent)
    readonly property var _run: progress.controller?.run ?? null
    // Of the run, which the field may have left behind; percent of the pot.
    readonly property real _runTarget: _run?.startingPot > 0
        ? SolveConfig.percentOf(_run.target, _run.startingPot) : target

    function _exploitabilityText(): string {
        if (_isMeasured) {
            return ExploitabilityText.percent(progress.exploitabilityPercent);
        }
        return progress.running ? qsTr("Measuring...") : "—";
    }

    function _elapsed(): string {
        return progress.running || clock.seconds <= 0 || clock.seconds >= 60
            ? clock.elapsedTime : DurationText.of(clock.seconds);
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
                indeterminate: panel.progress.running && !panel.progress.isEstimated
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
                value: panel._elapsed()
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
                    ? panel.clock.iterationsPerSec
                        .toLocaleString(Qt.locale(), "f", panel.clock.iterationsPerSec < 10 ? 1 : 0) : "—"
                //: Iterations per second
                unit: panel.clock.iterationsPerSec > 0 ? qsTr("it/s") : ""
            }
            Metric {
                objectName: "exploitability"
                label: qsTr("Exploitability")
                value: panel._exploitabilityText()
                unit: ExploitabilityText.chips(panel.progress.exploitabilityChips)
                accentColor: panel.theme.gold
                Layout.preferredWidth: 1.6  // two figures
            }
        }
        ConvergenceChart {
            objectName: "convergence"
            theme: panel.theme
            measurements: panel._run?.measurements ?? []
            targetPercent: panel._runTarget
            visible: panel._run !== null && (panel.progress.running || measurements.length > 0)
            Layout.fillWidth: true
        }
    }

    component Metric: StatCard {
        theme: panel.theme
        compact: true
        Layout.fillWidth: true
        Layout.preferredWidth: 1
    }
}
