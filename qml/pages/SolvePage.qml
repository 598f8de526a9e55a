import QtQuick
import QtQuick.Layouts
import Tidewell
import "../logic/solve_config.mjs" as SolveConfig

// Starts and cancels a solve and shows how far it is. The spot comes from outside, in the properties
// of the project state; of these the page changes threadCount, exactAllIn and maxIterations.
Item {
    id: page

    property Theme theme: Fallback.theme
    property Typography type: Fallback.type
    // An AppController, or null.
    property var controller: null
    // Of that controller, and of this spot.
    required property SolveProgress solveProgress
    required property SpotCheck spotCheck
    required property RunHistory runHistory
    property bool canSolve: false
    // Called with a solve that is to begin; calls it when nothing is lost by it, or may be.
    property var confirmSolve: (proceed, underLocks) => proceed()

    property string boardText: ""
    property string oopRangeText: ""
    property string ipRangeText: ""
    property string betSizesText: ""
    property int maxIterations: 0
    property real startingPot: 0
    property real effectiveStack: 0
    property int threadCount: maxThreadCount
    property string startingStreet: "flop"
    property real targetExploitability: 0
    property real rakePercent: 0
    property int rakeCap: 0
    property bool exactAllIn: false
    property string oopFlopBetSizesText: ""
    property string oopTurnBetSizesText: ""
    property string oopRiverBetSizesText: ""
    property string oopFlopRaiseSizesText: ""
    property string oopTurnRaiseSizesText: ""
    property string oopRiverRaiseSizesText: ""
    property string ipFlopBetSizesText: ""
    property string ipTurnBetSizesText: ""
    property string ipRiverBetSizesText: ""
    property string ipFlopRaiseSizesText: ""
    property string ipTurnRaiseSizesText: ""
    property string ipRiverRaiseSizesText: ""
    property bool oopFlopAddAllIn: false
    property bool oopTurnAddAllIn: false
    property bool oopRiverAddAllIn: false
    property bool ipFlopAddAllIn: false
    property bool ipTurnAddAllIn: false
    property bool ipRiverAddAllIn: false
    property bool oopFlopDontDonk: false
    property bool oopTurnDontDonk: false
    property bool oopRiverDontDonk: false
    property bool oopAddAllInIfJamLtEnabled: false
    property bool ipAddAllInIfJamLtEnabled: false
    property real oopAddAllInIfJamLtPct: 0
    property real ipAddAllInIfJamLtPct: 0

    readonly property int maxThreadCount: controller?.systemThreadCount || 1

    readonly property bool isStarting: solveProgress.isStarting
    readonly property bool isInitializing: solveProgress.isInitializing
    readonly property bool isFinalizing: solveProgress.isFinalizing
    readonly property int currentIteration: solveProgress.currentIteration
    readonly property real currentExploitabilityValue: solveProgress.currentExploitabilityValue
    readonly property int progressWheelTotalIterations: solveProgress.progressWheelTotalIterations
    readonly property real progressWheelValue: solveProgress.progressWheelValue
    readonly property bool runComplete: solveProgress.runComplete
    readonly property int iterationWindowSize: solveProgress.iterationWindowSize
    readonly property int iterationWindowValue: solveProgress.iterationWindowValue
    readonly property alias elapsedTime: solveClock.elapsedTime
    readonly property alias estimatedRemaining: solveClock.estimatedRemaining
    readonly property alias iterationsPerSec: solveClock.iterationsPerSec
    readonly property var runs: runHistory.runs
    readonly property int _lastIterFromStatusText: solveProgress._lastIterFromStatusText
    readonly property int _activeRunId: runHistory._activeRunId
    readonly property alias _threadChoiceModel: computePanel._threadChoiceModel

    readonly property real _targetAmount:
        SolveConfig.targetAmount(startingPot, targetExploitability)

    signal goToResults
    // The spot of a former run, as the controller was given it.
    signal spotRequested(var config)

    function startSolve(): void {
        if (!canSolve || !controller || controller.running) {
            return;
        }
        const config = SolveConfig.solveConfig(page);
        const confirm = confirmSolve;
        confirm(() => controller.startSolveWithConfig(config), false);
    }

    function cancelSolve(): void {
        controller?.cancelSolve();
    }

    function _formatExploitabilityForUi(iteration: int, value: real): string {
        return progressPanel._formatExploitabilityForUi(iteration, value);
    }

    function _limitThreads(): void {
        if (threadCount < 1 || threadCount > maxThreadCount) {
            threadCount = maxThreadCount;
        }
    }

    onMaxThreadCountChanged: _limitThreads()

    SolveClock {
        id: solveClock

        run: page.controller?.run ?? null
        running: page.solveProgress.running
        iteration: page.solveProgress.currentIteration
    }
    AppScrollView {
        id: view

        anchors.fill: parent
        theme: page.theme
        contentWidth: availableWidth
        contentHeight: content.implicitHeight + 2 * page.theme.spaceXl

        ColumnLayout {
            id: content

            x: page.theme.spaceXl
            y: page.theme.spaceXl
            width: view.availableWidth - 2 * page.theme.spaceXl
            spacing: page.theme.spaceXl

            SectionHeader {
                theme: page.theme
                title: qsTr("Solve")
                subtitle: qsTr("Run the CFR solver and monitor progress in real-time.")
                badge: {
                    if (!page.solveProgress.running) {
                        return page.spotCheck.badge;
                    }
                    return page.solveProgress.isFinalizing ? qsTr("Finalizing") : qsTr("Running");
                }
                badgeColor: {
                    if (!page.solveProgress.running) {
                        return page.spotCheck.ready ? page.theme.textMuted
                                                    : page.theme[page.spotCheck.color];
                    }
                    return page.solveProgress.isFinalizing ? page.theme.warn : page.theme.success;
                }
                Layout.fillWidth: true
            }
            RowLayout {
                id: columns

                readonly property real room: content.width - spacing

                spacing: 20
                Layout.fillWidth: true

                ColumnLayout {
                    spacing: columns.spacing
                    Layout.preferredWidth: 0.4 * columns.room
                    Layout.maximumWidth: 0.4 * columns.room
                    Layout.alignment: Qt.AlignTop

                    ConfigurationPanel {
                        theme: page.theme
                        spot: page
                        targetAmount: page._targetAmount
                        running: page.solveProgress.running
                        canStart: page.canSolve && page.spotCheck.ready
                                  && !page.solveProgress.running
                        obstacle: page.spotCheck.obstacle
                        cancelling: page.runHistory.cancelling
                        complete: page.solveProgress.runComplete
                        onStarted: page.startSolve()
                        onCancelled: page.cancelSolve()
                        onResultsRequested: page.goToResults()
                        Layout.fillWidth: true
                    }
                    ComputePanel {
                        id: computePanel

                        theme: page.theme
                        controller: page.controller
                        maxThreadCount: page.maxThreadCount
                        threadCount: page.threadCount
                        exactAllIn: page.exactAllIn
                        maxIterations: page.maxIterations
                        running: page.solveProgress.running
                        onChosen: threads => page.threadCount = threads
                        onExactAllInChosen: exact => page.exactAllIn = exact
                        onLimitChosen: iterations => page.maxIterations = iterations
                        Layout.fillWidth: true
                    }
                }
                ColumnLayout {
                    spacing: columns.spacing
                    Layout.preferredWidth: 0.6 * columns.room
                    Layout.maximumWidth: 0.6 * columns.room
                    Layout.alignment: Qt.AlignTop

                    ProgressPanel {
                        id: progressPanel

                        theme: page.theme
                        progress: page.solveProgress
                        clock: solveClock
                        target: page.targetExploitability
                        cancelling: page.runHistory.cancelling
                        obstacle: page.spotCheck.obstacle
                        Layout.fillWidth: true
                    }
                    RecentRunsPanel {
                        theme: page.theme
                        history: page.runHistory
                        running: page.solveProgress.running
                        onSpotRequested: config => page.spotRequested(config)
                        Layout.fillWidth: true
                    }
                }
            }
        }
    }
}
