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
    // What a field has refused and still shows, as a finding below; null for none.
    property var refused: null
    // A new estimate is about to be asked for.
    property bool estimateDue: false

    // Null while there is none; otherwise `badge` in a word or two, `text`, and `place`, where that is
    // to be mended: "board", "oopRange", "ipRange", or a field of a panel such as
    // "oopSizing/flopBetSizes" and "game/startingPot"; empty for nowhere.
    readonly property var boardMistake: _boardMistake()
    readonly property var mistake:
        boardMistake ?? refused ?? _rangeMistake() ?? _sizesMistake()
    readonly property bool pending: !mistake && !_missing
        && (estimateDue || (controller?.solveEstimatePending ?? false))
    readonly property bool ready: _finding.text === ""
    readonly property string badge: _finding.badge
    // Of the badge, by its name in the theme.
    readonly property string color: {
        if (ready || pending) {
            return ready ? "success" : "textMuted";
        }
        return mistake || !_missing ? "danger" : "warn";
    }
    // Empty when the spot can be solved.
    readonly property string obstacle: _finding.text
    // Where what keeps it from being solved can be mended.
    readonly property string place: _finding.place ?? ""

    readonly property var _missing: _whatIsMissing()
    readonly property string _estimateError: controller?.solveEstimateError ?? ""
    readonly property var _finding: {
        if (mistake) {
            return mistake;
        }
        if (_missing) {
            return Object.assign({badge: qsTr("Setup Required")}, _missing);
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
                    text: qsTr("Needs %1, %2 are free")
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
        return card === "" ? null : {badge: qsTr("Check Board"), place: "board",
                                     text: qsTr("The board has %1 twice").arg(card)};
    }

    function _rangeMistake(): var {
        const oop = TextChecks.checkRange(spot.oopRangeText, spot.boardText);
        if (oop !== "") {
            return {badge: qsTr("Check OOP Range"), place: "oopRange",
                    text: qsTr("OOP range: %1").arg(oop)};
        }
        const ip = TextChecks.checkRange(spot.ipRangeText, spot.boardText);
        return ip === "" ? null : {badge: qsTr("Check IP Range"), place: "ipRange",
                                   text: qsTr("IP range: %1").arg(ip)};
    }

    function _sizesMistake(): var {
        for (const key of Presets.SIZING_KEYS) {
            const why = key.includes("Bet") ? TextChecks.checkBetSizes(spot[key])
                                            : TextChecks.checkRaiseSizes(spot[key]);
            if (why !== "") {
                return {
                    badge: key.startsWith("oop") ? qsTr("Check OOP Sizing")
                                                 : qsTr("Check IP Sizing"),
                    place: _placeOf(key),
                    //: Whose sizes they are, and what is wrong with them
                    text: qsTr("%1: %2").arg(_sizeNames[key]).arg(why)
                };
            }
        }
        return null;
    }

    function _placeOf(key: string): string {
        const field = key.replace(/^(oop|ip)/, "").replace(/Text$/, "");
        return `${key.startsWith("oop") ? "oop" : "ip"}Sizing/${field[0].toLowerCase()}${field.slice(1)}`;
    }

    // The first thing, or all at once where nothing has been entered. Null for nothing.
    function _whatIsMissing(): var {
        const blank = Presets.SIZING_KEYS.find(key => spot[key].trim() === "");
        const hasOop = SolveGate.hasAnyHand(spot.oopRangeText);
        const hasIp = SolveGate.hasAnyHand(spot.ipRangeText);
        if (spot.boardText === "" && !hasOop && !hasIp && blank !== undefined) {
            return {text: _general, place: "board"};
        }
        if (!Board.isComplete(spot.boardText)) {
            return {text: qsTr("Choose three, four or five cards of the board, without a gap"),
                    place: "board"};
        }
        if (!hasOop) {
            return {text: qsTr("Choose at least one hand for OOP"), place: "oopRange"};
        }
        if (!hasIp) {
            return {text: qsTr("Choose at least one hand for IP"), place: "ipRange"};
        }
        return blank === undefined ? null
            : {text: qsTr("%1 are empty; - stands for no sizes").arg(_sizeNames[blank]),
               place: _placeOf(blank)};
    }
}
