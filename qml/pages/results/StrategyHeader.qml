import QtQuick
import QtQuick.Layouts
import Tidewell

// The head of the right panel: the board and who is to act, and the figures of the whole solve, beside
// each other where there is room, otherwise below. What is declared in it stands at the right end.
Item {
    id: header

    required property Theme theme
    // Null for none.
    required property var controller
    required property string boardText
    required property string player
    // Of the current node, as the controller tells it, and the action that ended the hand there; null
    // while it goes on.
    required property var meta
    required property var ending
    // The Setup page describes another spot by now.
    property bool setupChanged: false
    // `evOop`, `evIp`, `exploitability` and `startingPot` of the result before the last solve under
    // locks; null for none.
    property var before: null
    // The opponent of who is to act never comes to the current node.
    property bool unreached: false
    default property alias actions: actionColumn.data

    readonly property bool _isDeal: meta.nodeType === "chance"
    readonly property color _stateColor: {
        if (_isDeal || ending) {
            return ending ? theme.textMuted : theme.gold;
        }
        return player === "IP" ? theme.info : theme.actionBet;
    }
    readonly property real _gap: theme.spaceLg
    readonly property real _topHeight: Math.max(board.implicitHeight, actionColumn.implicitHeight)
    readonly property bool _wide: width >= board.implicitWidth + figures.implicitWidth
                                           + actionColumn.implicitWidth + 2 * _gap

    // What the current node is.
    function _state(): string {
        if (ending) {
            return _end();
        }
        if (_isDeal) {
            return meta.chanceDeal === "river" ? qsTr("River to be dealt") : qsTr("Turn to be dealt");
        }
        //: %1 is the seat, "OOP" or "IP"
        return qsTr("%1 to act").arg(player);
    }

    function _end(): string {
        if (ending.actionType === "fold") {
            //: %1 is the seat, "OOP" or "IP"
            return qsTr("%1 folds, the hand is over").arg(player);
        }
        return boardText.replace(/\s/g, "").length < 10 ? qsTr("All-in, the board runs out")
                                                        : qsTr("Showdown");
    }

    // Half of the starting pot is each seat's before anything is bet.
    function _ev(seatEv: real, pot: real): string {
        return _figure(seatEv + pot / 2, 3);
    }

    // Of the starting pot.
    function _ofPot(chips: real, pot: real): string {
        const percent = 100 * chips / pot;
        return Number.isFinite(percent) ? qsTr("%1%").arg(_figure(percent, 3)) : qsTr("—");
    }

    function _inChips(chips: real): string {
        return Number.isFinite(chips) ? qsTr("%1 chips").arg(_figure(chips, 4)) : "";
    }

    function _figure(value: real, digits: int): string {
        return Number.isFinite(value) ? value.toLocaleString(Qt.locale(), "f", digits) : qsTr("—");
    }

    // As text on its own faint shade.
    function _onShade(wish: color): color {
        return theme.legible(wish, Qt.tint(theme.surface, _shade(wish)));
    }

    function _shade(tint: color): color {
        return theme.withOpacity(tint, 0.15);
    }

    implicitWidth: Math.max(board.implicitWidth + _gap + actionColumn.implicitWidth,
                            figures.implicitWidth)
    implicitHeight: _wide ? Math.max(_topHeight, figures.implicitHeight)
                          : _topHeight + theme.spaceMd + figures.implicitHeight

    ColumnLayout {
        id: board

        spacing: header.theme.spaceSm

        SectionHeader {
            theme: header.theme
            title: qsTr("Strategy View")
            Layout.fillWidth: true
        }
        RowLayout {
            spacing: header.theme.spaceMd

            BoardDisplay {
                theme: header.theme
                compact: true
                boardText: header.boardText
            }
            Rectangle {
                implicitWidth: 1
                color: header.theme.stroke
                Layout.fillHeight: true
                Layout.topMargin: 4
                Layout.bottomMargin: 4
            }
            Chip {
                objectName: "nodeState"
                theme: header.theme
                text: header._state()
                tint: header._shade(header._stateColor)
                stroke: "transparent"
                textColor: header._onShade(header._stateColor)
            }
            Chip {
                objectName: "setupChanged"
                theme: header.theme
                text: qsTr("Setup has changed since this solve")
                tint: header._shade(header.theme.warn)
                stroke: "transparent"
                textColor: header._onShade(header.theme.warn)
                visible: header.setupChanged
            }
            Chip {
                objectName: "unreached"
                theme: header.theme
                text: qsTr("The other player never comes here")
                tint: header._shade(header.theme.warn)
                stroke: "transparent"
                textColor: header._onShade(header.theme.warn)
                visible: header.unreached
            }
        }
    }
    RowLayout {
        id: figures

        x: header._wide ? actionColumn.x - header._gap * (actionColumn.width > 0 ? 1 : 0) - width : 0
        y: header._wide ? 0 : header._topHeight + header.theme.spaceMd
        width: header._wide ? implicitWidth : header.width
        spacing: header.theme.spaceSm

        StatCard {
            theme: header.theme
            compact: true
            //: Expected value of the seat that is out of position
            label: qsTr("EV (OOP)")
            value: header.controller
                ? header._ev(header.controller.resultEvOop, header.controller.resultStartingPot)
                : qsTr("—")
            before: header.before ? header._ev(header.before.evOop, header.before.startingPot) : ""
            Layout.fillWidth: true
        }
        StatCard {
            theme: header.theme
            compact: true
            //: Expected value of the seat that is in position
            label: qsTr("EV (IP)")
            value: header.controller
                ? header._ev(header.controller.resultEvIp, header.controller.resultStartingPot)
                : qsTr("—")
            before: header.before ? header._ev(header.before.evIp, header.before.startingPot) : ""
            Layout.fillWidth: true
        }
        StatCard {
            theme: header.theme
            compact: true
            label: qsTr("Exploitability")
            value: header.controller
                ? header._ofPot(header.controller.resultExploitability,
                                header.controller.resultStartingPot)
                : qsTr("—")
            before: header.before
                ? header._ofPot(header.before.exploitability, header.before.startingPot) : ""
            unit: header.controller ? header._inChips(header.controller.resultExploitability) : ""
            accentColor: header.theme.legible(header.theme.gold, color)
            Layout.fillWidth: true
        }
    }
    ColumnLayout {
        id: actionColumn

        anchors.right: parent.right
        spacing: header.theme.spaceSm
    }
}
