import QtQuick
import Tidewell
import "board_text.mjs" as Board
import "presets.mjs" as Presets
import "solve_gate.mjs" as SolveGate

// What keeps a spot from being solved, one thing at a time and in words for a person: first what is
// wrong in it, then what is missing, then what the estimate of its memory has to say.
QtObject {
    id: check

    // With the properties of the project state.
    required property var spot
    // An AppController, or null.
    property var controller: null
    // Enough is entered, and the last estimate fits.
    property bool canSolve: false
    // A new estimate is about to be asked for.
    property bool estimateDue: false

    // Null while there is none; otherwise `badge` in a word or two, and `text`.
    readonly property var boardMistake: _boardMistake()
    readonly property var mistake: boardMistake ?? _rangeMistake() ?? _sizesMistake()
    readonly property bool pending: !mistake && _missing === ""
        && (estimateDue || (controller?.solveEstimatePending ?? false))
    readonly property bool ready: _finding.text === ""
    readonly property string badge: _finding.badge
    // Of the badge, by its name in the theme.
    readonly property string color: {
        if (ready || pending) {
            return ready ? "success" : "textMuted";
        }
        return mistake || _missing === "" ? "danger" : "warn";
    }
    // Empty when the spot can be solved.
    readonly property string obstacle: _finding.text

    readonly property string _missing: _whatIsMissing()
    readonly property string _estimateError: controller?.solveEstimateError ?? ""
    readonly property var _finding: {
        if (mistake) {
            return mistake;
        }
        if (_missing !== "") {
            return {badge: qsTr("Setup Required"), text: _missing};
        }
        if (pending) {
            return {badge: qsTr("Estimating..."),
                    text: qsTr("Estimating how much memory the solve needs...")};
        }
        if (canSolve) {
            return {badge: qsTr("Ready"), text: ""};
        }
        if (_estimateError !== "") {
            return {badge: qsTr("Cannot Be Solved"), text: TextChecks.inWords(_estimateError)};
        }
        if (controller?.solveRequiredMemoryBytes > 0) {
            return {badge: qsTr("Not Enough RAM"),
                    //: Amounts of memory such as "1.2 GB"
                    text: qsTr("This solve needs more memory than there is: %1 of %2")
                        .arg(controller.solveRequiredMemoryText)
                        .arg(controller.effectiveAvailableMemoryText)};
        }
        return {badge: qsTr("Setup Required"), text: _general};
    }

    readonly property string _general: qsTr("Fill board, ranges, and sizings to enable Solve")
    readonly property var _sizeNames: ({
        oopFlopBetSizesText: qsTr("OOP bet sizes on the flop"),
        oopTurnBetSizesText: qsTr("OOP bet sizes on the turn"),
        oopRiverBetSizesText: qsTr("OOP bet sizes on the river"),
        oopFlopRaiseSizesText: qsTr("OOP raise sizes on the flop"),
        oopTurnRaiseSizesText: qsTr("OOP raise sizes on the turn"),
        oopRiverRaiseSizesText: qsTr("OOP raise sizes on the river"),
        ipFlopBetSizesText: qsTr("IP bet sizes on the flop"),
        ipTurnBetSizesText: qsTr("IP bet sizes on the turn"),
        ipRiverBetSizesText: qsTr("IP bet sizes on the river"),
        ipFlopRaiseSizesText: qsTr("IP raise sizes on the flop"),
        ipTurnRaiseSizesText: qsTr("IP raise sizes on the turn"),
        ipRiverRaiseSizesText: qsTr("IP raise sizes on the river")
    })

    function _boardMistake(): var {
        const card = Board.cardTwice(spot.boardText);
        return card === "" ? null : {badge: qsTr("Check Board"),
                                     text: qsTr("The board has %1 twice").arg(card)};
    }

    function _rangeMistake(): var {
        const oop = TextChecks.checkRange(spot.oopRangeText, spot.boardText);
        if (oop !== "") {
            return {badge: qsTr("Check OOP Range"), text: qsTr("OOP range: %1").arg(oop)};
        }
        const ip = TextChecks.checkRange(spot.ipRangeText, spot.boardText);
        return ip === "" ? null : {badge: qsTr("Check IP Range"), text: qsTr("IP range: %1").arg(ip)};
    }

    function _sizesMistake(): var {
        for (const key of Presets.SIZING_KEYS) {
            const why = key.includes("Bet") ? TextChecks.checkBetSizes(spot[key])
                                            : TextChecks.checkRaiseSizes(spot[key]);
            if (why !== "") {
                return {
                    badge: key.startsWith("oop") ? qsTr("Check OOP Sizing")
                                                 : qsTr("Check IP Sizing"),
                    //: Whose sizes they are, and what is wrong with them
                    text: qsTr("%1: %2").arg(_sizeNames[key]).arg(why)
                };
            }
        }
        return null;
    }

    function _whatIsMissing(): string {
        const board = Board.isComplete(spot.boardText)
            ? "" : qsTr("Choose three, four or five cards of the board, without a gap");
        const blank = Presets.SIZING_KEYS.find(key => spot[key].trim() === "");
        const sizes = blank === undefined
            ? "" : qsTr("%1 are empty; - stands for no sizes").arg(_sizeNames[blank]);
        const found = [board, _missingRange(), sizes].filter(text => text !== "");
        return found.length > 1 ? _general : found[0] ?? "";
    }

    // Single combos such as AhKh are no hand to the controller where nothing stands beside them.
    function _missingRange(): string {
        if (!SolveGate.hasAnyHand(spot.oopRangeText)) {
            return qsTr("Choose at least one hand such as AA or AKs for OOP");
        }
        return SolveGate.hasAnyHand(spot.ipRangeText)
            ? "" : qsTr("Choose at least one hand such as AA or AKs for IP");
    }
}
