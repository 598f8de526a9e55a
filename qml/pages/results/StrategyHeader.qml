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
    // The Setup page describes another spot by now.
    property bool setupChanged: false
    default property alias actions: actionColumn.data

    readonly property color _playerColor: player === "IP" ? theme.info : theme.actionBet
    readonly property real _gap: theme.spaceLg
    readonly property real _topHeight: Math.max(board.implicitHeight, actionColumn.implicitHeight)
    readonly property bool _wide: width >= board.implicitWidth + figures.implicitWidth
                                           + actionColumn.implicitWidth + 2 * _gap

    // Half of the starting pot is each seat's before anything is bet.
    function _ev(seatEv: real): string {
        return _figure(seatEv + controller.resultStartingPot / 2, 3);
    }

    function _figure(value: real, digits: int): string {
        return Number.isFinite(value) ? value.toLocaleString(Qt.locale(), "f", digits) : qsTr("—");
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
                theme: header.theme
                //: %1 is the seat, "OOP" or "IP"
                text: qsTr("%1 to act").arg(header.player)
                tint: header.theme.withOpacity(header._playerColor, 0.15)
                stroke: "transparent"
                textColor: header._playerColor
            }
            Chip {
                objectName: "setupChanged"
                theme: header.theme
                text: qsTr("Setup has changed since this solve")
                tint: header.theme.withOpacity(header.theme.warn, 0.15)
                stroke: "transparent"
                textColor: header.theme.warn
                visible: header.setupChanged
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
            value: header.controller ? header._ev(header.controller.resultEvOop) : qsTr("—")
            Layout.fillWidth: true
        }
        StatCard {
            theme: header.theme
            compact: true
            //: Expected value of the seat that is in position
            label: qsTr("EV (IP)")
            value: header.controller ? header._ev(header.controller.resultEvIp) : qsTr("—")
            Layout.fillWidth: true
        }
        StatCard {
            theme: header.theme
            compact: true
            label: qsTr("Exploitability")
            value: header.controller ? header._figure(header.controller.resultExploitability, 4)
                                     : qsTr("—")
            accentColor: header.theme.gold
            Layout.fillWidth: true
        }
    }
    ColumnLayout {
        id: actionColumn

        anchors.right: parent.right
        spacing: header.theme.spaceSm
    }
}
