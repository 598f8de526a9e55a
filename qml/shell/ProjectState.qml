import QtQuick

import "../logic/board_text.mjs" as Board
import "../logic/presets.mjs" as Presets
import "../logic/solve_config.mjs" as SolveConfig
import "../logic/solve_gate.mjs" as SolveGate

// The one canonical copy of what the person has entered, and whether it can be solved. Money in
// chips, percentages as told, texts as they were typed.
Item {
    id: state

    // An AppController, or null.
    property var controller: null

    // Cards without separators, "__" for a slot that is empty while the board is edited.
    property string boardText: ""
    property string oopRangeText: ""
    property string ipRangeText: ""
    // Of files of old: kept, but never solved with.
    property string betSizesText: ""
    property int maxIterations: 0
    property real startingPot: 0
    property real effectiveStack: 0
    property int threadCount: _threads || 1
    property string startingStreet: "flop"
    // Percent of the pot.
    property real targetExploitability: 0
    property real rakePercent: 0
    // No cap when 0.
    property int rakeCap: 0
    // All-ins before the river count by the boards that the two hands can meet.
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
    // Percent of the pot.
    property real oopAddAllInIfJamLtPct: 0
    property real ipAddAllInIfJamLtPct: 0

    readonly property bool developerMode: controller?.developerMode ?? false
    readonly property int _threads: controller?.systemThreadCount ?? 0
    readonly property var startupBlankPreset: Presets.startupBlank(_threads)
    readonly property var defaultPreset: Presets.referenceSpot(_threads)
    readonly property var customerQuickSolvePreset: Presets.quickSpot(_threads)
    readonly property var newProjectPreset: Presets.newProject(_threads, developerMode)

    readonly property bool _canSolveBase: SolveGate.isProjectComplete(state)
    // The last estimate is of what was entered before.
    readonly property alias estimateDue: estimate.running
    readonly property bool canSolve: _canSolveBase && SolveGate.hasEnoughMemory(controller)

    function quickSolvePreset(): var {
        return developerMode ? defaultPreset : customerQuickSolvePreset;
    }

    function exportProjectState(): var {
        const exported = {};
        for (const key of Presets.PROJECT_KEYS) {
            exported[key] = state[key];
        }
        return exported;
    }

    // What `p` does not have stays as it is, so that files of older versions can be read; and so
    // does what a damaged file has as something else.
    function applyProjectState(p: var): void {
        if (!p) {
            return;
        }
        for (const key of Presets.PROJECT_KEYS) {
            if (typeof p[key] === typeof state[key]) {
                state[key] = p[key];
            }
        }
    }

    // The target in chips.
    function targetExploitabilityAmount(): real {
        return SolveConfig.targetAmount(startingPot, targetExploitability);
    }

    function solveConfig(): var {
        return SolveConfig.solveConfig(state);
    }

    // The Setup page does so as well, once it stands; a file need not wait for it.
    onBoardTextChanged: startingStreet = Board.streetOf(boardText)
    // What was estimated is of no spot any more.
    on_CanSolveBaseChanged: {
        if (!_canSolveBase) {
            controller?.forgetSolveMemoryEstimate();
        }
    }
    Component.onCompleted: {
        // None of them changes what a solve needs.
        const indifferent = ["betSizesText", "maxIterations", "targetExploitability", "exactAllIn"];
        for (const key of Presets.PROJECT_KEYS.filter(name => !indifferent.includes(name))) {
            state[key + "Changed"].connect(estimate.restart);
        }
    }

    // Only when the typing pauses: a large river takes seconds to count.
    Timer {
        id: estimate

        interval: 450
        onTriggered: {
            if (state._canSolveBase) {
                state.controller?.requestSolveMemoryEstimate(state.solveConfig());
            }
        }
    }
}
