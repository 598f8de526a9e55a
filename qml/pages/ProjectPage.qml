import QtQuick
import QtQuick.Layouts
import Tidewell
import "../logic/board_text.mjs" as Board
import "../logic/presets.mjs" as Presets
import "../logic/settings_profiles.mjs" as Profiles

// Where a spot is described: board, game settings, the sizing and the range of each seat. Its
// properties are those of the project state; what is entered changes them and nothing else.
Item {
    id: page

    property Theme theme: Fallback.theme
    property Typography type: Fallback.type
    // For the memory figures; null for none.
    property var controller: null
    // Enough is entered to go on.
    property bool canSolve: false
    // Of this spot.
    required property SpotCheck spotCheck

    property string boardText: ""
    property string startingStreet: "flop"
    // Not shown.
    property string betSizesText: ""
    property int maxIterations: 0
    property bool exactAllIn: false

    property alias startingPot: gameSettings.startingPot
    property alias effectiveStack: gameSettings.effectiveStack
    property alias rakePercent: gameSettings.rakePercent
    property alias rakeCap: gameSettings.rakeCap
    property alias targetExploitability: gameSettings.targetExploitability

    property alias oopFlopBetSizesText: oopSizing.flopBetSizes
    property alias oopTurnBetSizesText: oopSizing.turnBetSizes
    property alias oopRiverBetSizesText: oopSizing.riverBetSizes
    property alias oopFlopRaiseSizesText: oopSizing.flopRaiseSizes
    property alias oopTurnRaiseSizesText: oopSizing.turnRaiseSizes
    property alias oopRiverRaiseSizesText: oopSizing.riverRaiseSizes
    property alias oopFlopAddAllIn: oopSizing.flopAddAllIn
    property alias oopTurnAddAllIn: oopSizing.turnAddAllIn
    property alias oopRiverAddAllIn: oopSizing.riverAddAllIn
    property alias oopFlopDontDonk: oopSizing.flopDontDonk
    property alias oopTurnDontDonk: oopSizing.turnDontDonk
    property alias oopRiverDontDonk: oopSizing.riverDontDonk
    property alias oopAddAllInIfJamLtEnabled: oopSizing.jamEnabled
    property alias oopAddAllInIfJamLtPct: oopSizing.jamPercent

    property alias ipFlopBetSizesText: ipSizing.flopBetSizes
    property alias ipTurnBetSizesText: ipSizing.turnBetSizes
    property alias ipRiverBetSizesText: ipSizing.riverBetSizes
    property alias ipFlopRaiseSizesText: ipSizing.flopRaiseSizes
    property alias ipTurnRaiseSizesText: ipSizing.turnRaiseSizes
    property alias ipRiverRaiseSizesText: ipSizing.riverRaiseSizes
    property alias ipFlopAddAllIn: ipSizing.flopAddAllIn
    property alias ipTurnAddAllIn: ipSizing.turnAddAllIn
    property alias ipRiverAddAllIn: ipSizing.riverAddAllIn
    property alias ipAddAllInIfJamLtEnabled: ipSizing.jamEnabled
    property alias ipAddAllInIfJamLtPct: ipSizing.jamPercent

    property alias oopRangeText: ranges.oopRangeText
    property alias ipRangeText: ranges.ipRangeText
    // Percent.
    property alias oopClickWeightPct: ranges.oopClickWeightPct
    property alias ipClickWeightPct: ranges.ipClickWeightPct

    property alias settingsProfiles: settingsPanel.profiles
    property alias editingCardIndex: boardPanel.editingIndex

    readonly property real uiScale: Math.max(0.80, Math.min(1.0, width / 1540))
    readonly property real sizingStreetColumnWidth: Math.max(56, Math.round(70 * uiScale * 1.10))
    readonly property real gameSettingsInputColumnWidth: Math.max(52, Math.round(60 * uiScale))
    // Layouts measure nothing while they are hidden, so it stays as the page was last seen.
    property int recommendedWindowWidth: 1540
    // What can be undone here.
    readonly property SetupHistory history: SetupHistory {
        spot: page
        keys: Presets.PROJECT_KEYS.filter(key => key !== "threadCount")
        typedKeys: ["boardText", "oopRangeText", "ipRangeText", "oopAddAllInIfJamLtPct",
                    "ipAddAllInIfJamLtPct"]
    }
    readonly property var usedBoardCards: Board.cardsOf(boardText)

    readonly property bool _narrow: width < 1700
    readonly property real _margin: 24
    readonly property real _gap: 16
    readonly property real _boardWidth: Math.max(boardPanel.display.implicitWidth + 27, 240)
    readonly property real _row1Width: 2 * _margin + _boardWidth + _gap + gameSettings.implicitWidth
        + _gap + oopSizing.implicitWidth + _gap + ipSizing.implicitWidth
    readonly property real _rangesWidth: 2 * _margin + ranges.neededWidth
    readonly property FieldGuide _guide: FieldGuide {
        spotCheck: page.spotCheck
        panels: ({board: boardPanel, game: gameSettings, oopSizing: oopSizing, ipSizing: ipSizing,
                  oopRange: ranges.oop, ipRange: ranges.ip})
    }

    signal goToSolve

    // The slots of the board as they are written, "" for an empty one.
    function _boardCardsArray(): var {
        return Board.writtenSlots(boardText);
    }

    function _setBoardFromCards(cards: var): void {
        boardText = Board.textOfSlots(cards);
    }

    function setBoardCardAt(index: int, card: string): void {
        history.begin();
        boardText = Board.withCard(boardText, index, card);
        history.end();
    }

    function clearBoardFrom(index: int): void {
        boardText = Board.clearedFrom(boardText, index);
    }

    function inferStreetFromBoardText(text: string): string {
        return Board.streetOf(text);
    }

    function validBoard(text: string): bool {
        return Board.isComplete(text);
    }

    function parseRangeWeights(text: string): var {
        return HandRanges.weightsOf(text);
    }

    // The labels of the hands that an item of a range has combos of.
    function expandHand(item: string): var {
        return Object.keys(parseRangeWeights(item));
    }

    function toggleHand(text: string, hand: string, currentWeight: real, addWeight: real): string {
        return HandRanges.painted(text, hand, currentWeight > 0 ? 0 : addWeight);
    }

    function copyOopSizingToIp(): void {
        for (const street of ["Flop", "Turn", "River"]) {
            for (const suffix of ["BetSizesText", "RaiseSizesText", "AddAllIn"]) {
                page[`ip${street}${suffix}`] = page[`oop${street}${suffix}`];
            }
        }
        ipAddAllInIfJamLtEnabled = oopAddAllInIfJamLtEnabled;
        ipAddAllInIfJamLtPct = oopAddAllInIfJamLtPct;
    }

    function currentSettingsSnapshot(): var {
        return Profiles.snapshotOf(page);
    }

    function applySettingsSnapshot(data: var): void {
        const settings = Profiles.settingsOf(data, startingPot);
        for (const [property, value] of Object.entries(settings)) {
            page[property] = value;
        }
    }

    // While a page is being hidden its layouts shrink before it is told that it is hidden; what it
    // reads of itself is right even then.
    function _measure(): void {
        if (visible && width > 0) {
            recommendedWindowWidth = Math.ceil(Math.max(_row1Width, _rangesWidth));
        }
    }

    on_Row1WidthChanged: _measure()
    on_RangesWidthChanged: _measure()
    onVisibleChanged: _measure()
    onBoardTextChanged: startingStreet = inferStreetFromBoardText(boardText)
    Component.onCompleted: {
        settingsPanel.load();
        history.watch();
    }

    TypingEnd {
        page: page
    }
    // The linter does not know StandardKey.
    // qmllint disable unqualified
    Shortcut {
        enabled: page.visible
        sequences: [StandardKey.Undo]
        onActivated: page.history.undo()
    }
    Shortcut {
        enabled: page.visible
        sequences: [StandardKey.Redo]
        onActivated: page.history.redo()
    }
    // qmllint enable unqualified
    WidePane {
        anchors.fill: parent
        theme: page.theme
        contentWidth: Math.max(page.width, page._row1Width, page._rangesWidth)
        contentHeight: content.implicitHeight + 2 * page._margin

        ColumnLayout {
            id: content

            x: page._margin
            y: page._margin
            width: parent.width - 2 * page._margin
            spacing: page._margin

            SetupHeader {
                theme: page.theme
                controller: page.controller
                check: page.spotCheck
                canSolve: page.canSolve
                history: page.history
                onPlaceWanted: place => page._guide.goTo(place)
                onContinued: page.goToSolve()
                Layout.fillWidth: true
            }
            RowLayout {
                spacing: page._gap
                Layout.fillWidth: true

                ColumnLayout {
                    spacing: page._gap
                    Layout.fillWidth: false
                    Layout.fillHeight: true
                    Layout.preferredWidth: page._boardWidth

                    BoardPanel {
                        id: boardPanel

                        theme: page.theme
                        boardText: page.boardText
                        error: page.spotCheck.boardMistake?.text ?? ""
                        history: page.history
                        marked: page._guide.markedIn("board") !== ""
                        cardScale: page.width < 1400 ? 0.75 : 1.25 * page.uiScale
                        onCardChosen: (slot, card) => page.setBoardCardAt(slot, card)
                        onCleared: slot => page.setBoardCardAt(slot, "")
                        onEntered: board => page.boardText = board
                        Layout.fillWidth: true
                        Layout.fillHeight: true
                    }
                    ProfilesPanel {
                        id: settingsPanel

                        theme: page.theme
                        settings: page
                        onChosen: data => page.applySettingsSnapshot(data)
                        Layout.fillWidth: true
                    }
                }
                GameSettingsPanel {
                    id: gameSettings

                    theme: page.theme
                    history: page.history
                    inputColumnWidth: page.gameSettingsInputColumnWidth
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                }
                SizingPanel {
                    id: oopSizing

                    objectName: "oopSizing"
                    theme: page.theme
                    history: page.history
                    title: qsTr("OOP Sizing")
                    outOfPosition: true
                    narrow: page._narrow
                    marked: page._guide.markedIn("oopSizing")
                    streetColumnWidth: page.sizingStreetColumnWidth
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                }
                SizingPanel {
                    id: ipSizing

                    objectName: "ipSizing"
                    theme: page.theme
                    history: page.history
                    title: qsTr("IP Sizing")
                    outOfPosition: false
                    narrow: page._narrow
                    marked: page._guide.markedIn("ipSizing")
                    streetColumnWidth: page.sizingStreetColumnWidth
                    onCopyRequested: page.copyOopSizingToIp()
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                }
            }
            RangesRow {
                id: ranges

                theme: page.theme
                spotCheck: page.spotCheck
                history: page.history
                // What is solved of a mistake is not what was meant.
                played: page.spotCheck.mistake ? {} : page.controller?.solvePreview ?? {}
                boardText: page.boardText
                uiScale: page.uiScale
                room: page.height - y - 2 * page._margin
                spacing: page._gap
                Layout.fillWidth: true
            }
        }
    }
}
