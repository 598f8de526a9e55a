pragma ComponentBehavior: Bound

import QtQuick
import Tidewell

// The table: seats, board, pot, and what the user can do next. The picture is dark in either theme, and
// so is all that stands on it.
Rectangle {
    id: table

    required property PlayScope page
    required property Theme theme

    readonly property Trainer trainer: page.trainer
    readonly property var _meta: page.nodes.meta(trainer.node)
    readonly property var _actions: page.nodes.actions(trainer.node)
    readonly property bool _runs: trainer.started && !trainer.complete
    // The seat whose turn it is, empty at a deal and at the end.
    readonly property string _actor: _runs ? _meta.player ?? "" : ""
    readonly property bool _userActs: _runs && _actor !== ""
        && (trainer.awaitsUser || trainer.chosenAction >= 0 && trainer.isHero(_actor))
    // Cards and distances shrink where the table is low.
    readonly property real _unit: Math.min(1, picture.height / 430)

    readonly property Theme _dark: Theme {
        dark: true
        useAccentOverride: table.theme.useAccentOverride
        accentOverride: table.theme.accentOverride
    }

    function _stackOf(invested: string): real {
        const left = _meta.effectiveStack - _meta[invested];
        return Number.isFinite(left) ? Math.max(0, left) : NaN;
    }

    // Once the hand has ended its details tell both hands.
    function _isHidden(seat: string): bool {
        return trainer.started && !trainer.complete && !_isHeroes(seat);
    }

    // isHero() does not notify.
    function _isHeroes(seat: string): bool {
        return [trainer.role, trainer.drillActor] !== null && trainer.isHero(seat);
    }

    // What a seat did last on the way to the node.
    function _lastActionOf(seat: string): string {
        const levels = page.walk.levels;
        for (let level = levels.count - 1; level >= 0; --level) {
            const row = levels.get(level);
            const action = page.nodes.actions(row.nodeIndex)[row.selectedActionIndex];
            if (action && page.nodes.meta(row.nodeIndex).player === seat) {
                return ActionText.shown(action);
            }
        }
        return qsTr("—");
    }

    function _bubbleOf(seat: string): string {
        const text = page.walk.currentNodeIndex >= 0 ? _lastActionOf(seat) : "";
        if (seat === "OOP" && trainer.drillActor === "IP") {
            //: %1 is what that seat has done, such as "Check"
            return qsTr("OOP action: %1").arg(text);
        }
        const speaks = trainer.started && !trainer.drilling && trainer.lastActor === seat;
        return speaks && !_isHeroes(seat) ? text : "";
    }

    // How the hand ended for a seat; empty for one that has neither won nor shared the pot.
    function _resultOf(seat: string, hand: var): string {
        const details = page._buildPlayHandDetails(hand);
        if (details.winner === "TIE") {
            return qsTr("Split pot");
        }
        //: Chips
        return details.winner === seat ? qsTr("Wins %1").arg(ActionText.chips(details.won)) : "";
    }

    color: "#0b0f14"
    radius: theme.radiusMd
    border.width: 1
    border.color: theme.stroke
    clip: true
    Accessible.role: Accessible.Grouping
    //: Where hands are played
    Accessible.name: qsTr("Table")

    Image {
        id: image

        anchors.fill: parent
        anchors.margins: 1
        source: "../../../assets/poker_table_placeholder.svg"
        sourceSize.width: 1200
        sourceSize.height: 700
        fillMode: Image.PreserveAspectFit
    }
    // The painted part of the image.
    Item {
        id: picture

        anchors.centerIn: image
        width: image.paintedWidth
        height: image.paintedHeight
    }

    RoleChoice {
        anchors.fill: picture
        theme: table._dark
        names: [qsTr("Play as OOP"), qsTr("Play as both"), qsTr("Play as IP")]
        visible: !table.trainer.started
        onChosen: place => table.trainer.start(table.page.playRoles[place])
    }

    PlaySeat {
        id: oopSeat

        anchors.centerIn: picture
        anchors.verticalCenterOffset: -0.26 * picture.height
        theme: table._dark
        name: "OOP"
        card1: table.trainer.oopCard1
        card2: table.trainer.oopCard2
        faceDown: table._isHidden("OOP")
        stack: table._stackOf("investedOop")
        acts: table._actor === "OOP"
        unit: table._unit
        visible: table.trainer.started
    }
    PlaySeat {
        id: ipSeat

        anchors.centerIn: picture
        anchors.verticalCenterOffset: 0.26 * picture.height + (table.height < 520 ? 18 : 8)
        theme: table._dark
        name: "IP"
        card1: table.trainer.ipCard1
        card2: table.trainer.ipCard2
        faceDown: table._isHidden("IP")
        stack: table._stackOf("investedIp")
        dealer: true
        acts: table._actor === "IP"
        unit: table._unit
        visible: table.trainer.started
    }
    // In the middle between the seats.
    Column {
        anchors.horizontalCenter: picture.horizontalCenter
        y: (oopSeat.y + oopSeat.height + ipSeat.y - height) / 2
        spacing: 3
        visible: table.trainer.started

        BoardDisplay {
            id: board

            anchors.horizontalCenter: parent.horizontalCenter
            theme: table._dark
            horizontalPadding: 0
            showStreet: false
            cardScale: 1.05 * table._unit
            boardText: table.trainer.board
            editable: table._runs && !table.trainer.drilling
            clickableIndices: [3, 4]
            onCardClicked: slot => table.page.redeal(slot)
        }
        AppLabel {
            anchors.horizontalCenter: parent.horizontalCenter
            theme: table._dark
            text: qsTr("Click Turn/River to change")
            font.pixelSize: Fallback.type.labelSm
            opacity: board.editable ? 0.85 : 0
            Accessible.ignored: !board.editable
        }
        Chip {
            anchors.horizontalCenter: parent.horizontalCenter
            theme: table._dark
            implicitHeight: 24
            //: In chips
            text: qsTr("Pot: %1").arg(Number.isFinite(table._meta.pot)
                ? table._meta.pot.toLocaleString(Qt.locale(), "f", 2) : qsTr("—"))
        }
    }

    SeatSide {
        seat: oopSeat
        name: "OOP"
    }
    SeatSide {
        seat: ipSeat
        name: "IP"
    }

    KeyButton {
        // Left of the board.
        x: picture.x + (picture.width - board.width) / 2 - 16 - width
        y: board.parent.y + (board.height - height) / 2
        theme: table._dark
        text: qsTr("Another hand")
        //: The key
        keyText: qsTr("Space")
        mark: table._dark.accent
        visible: table.trainer.complete
        onClicked: table.trainer.nextHand()
    }
    KeyButton {
        id: drillButton

        anchors.left: parent.left
        anchors.bottom: parent.bottom
        anchors.margins: table.theme.spaceMd
        theme: table._dark
        compact: true
        implicitHeight: 32
        text: table.trainer.drilling ? qsTr("Stop drill") : qsTr("Drill spot")
        //: The key
        keyText: qsTr("D")
        enabled: table.trainer.drilling || table._actor !== ""
        visible: table._runs
        onClicked: table.page.toggleDrill()
    }
    // Above the button, and above what stands beside the cards of IP.
    TableBubble {
        x: drillButton.x
        y: Math.min(drillButton.y, ipSeat.y) - height - table.theme.spaceXs
        theme: table._dark
        text: table.page.playDrillFeedbackText
        tint: table.page.playDrillFeedbackWrong ? theme.danger : theme.success
        maximumWidth: table.width - 2 * table.theme.spaceMd
    }

    // To the right of a seat's cards: its last action, the user's choices, or what was wrong.
    component SeatSide: Item {
        id: side

        required property PlaySeat seat
        required property string name

        readonly property real _room: table.width - x - table.theme.spaceMd
        readonly property real _most: Math.min(380, 0.45 * table.width, _room)
        // Empty until the hand has ended and is in the log.
        readonly property var _last: table.trainer.complete && table.trainer.log.count > 0
                                     ? table.trainer.log.get(0) : ({})
        readonly property bool _erred: _last.mistakeActor === name

        x: seat.x + seat.width + 14
        y: seat.y + seat.height / 2
        visible: seat.visible

        ActionChoice {
            anchors.verticalCenter: parent.verticalCenter
            width: side._most
            theme: table._dark
            actions: table._userActs && table._actor === side.name ? table._actions : []
            open: table.trainer.awaitsUser
            chosen: table.trainer.chosenAction
            verdict: table.trainer.verdict
            visible: table._userActs && table._actor === side.name
            onActed: action => table.trainer.act(action)
        }
        TableBubble {
            anchors.verticalCenter: parent.verticalCenter
            theme: table._dark
            maximumWidth: side._most
            tint: theme.textMuted
            text: side._last.line === undefined ? table._bubbleOf(side.name) : ""
        }
        TableBubble {
            anchors.verticalCenter: parent.verticalCenter
            theme: table._dark
            maximumWidth: side._most
            tint: side._erred ? theme.danger : theme.gold
            text: {
                if (side._last.line === undefined) {
                    return "";
                }
                //: %1 is what the user did, %2 the chips that this gives away
                return side._erred ? qsTr("%1: EV -%2")
                                         .arg(ActionText.label(side._last.mistakeAction, ""))
                                         .arg(side._last.evLoss.toLocaleString(Qt.locale(), "f", 3))
                                   : table._resultOf(side.name, side._last);
            }
            //: %1 is an action
            subtitle: side._erred ? qsTr("Best: %1").arg(ActionText.label(side._last.correctAction, ""))
                                  : ""
        }
    }
}
