pragma ComponentBehavior: Bound

import QtQuick
import Tidewell
import "../../logic/hand_rows.mjs" as HandRows

// One hand of the list: its cards, how much of it comes here, what each action is worth, and how often
// each is taken. Rows are given other hands as the list scrolls: nothing here is built anew for that.
Rectangle {
    id: row

    required property Theme theme
    required property HandColumns columns
    // As the list holds it; null for none.
    required property var combo
    required property var definitions
    // As ActionBar takes them.
    required property var actions
    // Why the values are not known; empty where they are.
    required property string unknownEv
    required property bool current
    required property bool hovered
    required property bool focusShown
    // The line that the pointer is on, and the one that the keyboard is on; -1 for none.
    required property int hoveredLine
    required property int focusedLine

    readonly property var _lines: combo ? HandRows.evLines(combo, definitions) : []
    readonly property string _weight: combo ? _percent(combo.weight) : ""
    readonly property color _ground: {
        if (current) {
            return theme.surface3;
        }
        return hovered ? theme.surfaceHover : theme.surface2;
    }
    // The actions' colours, as text on the row.
    readonly property var _tints: definitions.map(action => theme.legible(
        theme.actionColor(action.actionType || action.name), _ground))

    signal whyPressed(action: int)

    function _percent(share: real): string {
        const percent = 100 * share;
        if (percent > 0 && percent < 0.5) {
            return qsTr("<1%");
        }
        return qsTr("%1%").arg(percent.toLocaleString(Qt.locale(), "f", 0));
    }

    function _spoken(): string {
        if (!combo) {
            return "";
        }
        const cards = [combo.c1, combo.c2].map(card => CardText.spoken(card[0], card[1]));
        //: A hand of the list: its two cards, how much of it comes here, and what it does
        return qsTr("%1, %2, weight %3: %4").arg(cards[0]).arg(cards[1]).arg(_weight)
                                            .arg(bar.Accessible.name);
    }

    radius: theme.radiusXs
    color: current || hovered ? _ground : "transparent"
    border.width: focusShown ? 1 : 0
    border.color: theme.strokeFocus
    Accessible.role: Accessible.ListItem
    Accessible.name: row._spoken()
    Accessible.selectable: true
    Accessible.selected: current

    CardFace {
        x: row.columns.cardsX
        y: row.columns.cardsY
        width: row.columns.cardWidth
        height: row.columns.cardHeight
        theme: row.theme
        rank: row.combo ? row.combo.c1[0] : ""
        suit: row.combo ? row.combo.c1[1] : ""
        mini: true
        unit: row.columns.cardUnit
        cornerRadius: 4 * unit
        selected: false
    }
    CardFace {
        x: row.columns.cardsX + row.columns.cardWidth + row.columns.cardGap
        y: row.columns.cardsY
        width: row.columns.cardWidth
        height: row.columns.cardHeight
        theme: row.theme
        rank: row.combo ? row.combo.c2[0] : ""
        suit: row.combo ? row.combo.c2[1] : ""
        mini: true
        unit: row.columns.cardUnit
        cornerRadius: 4 * unit
        selected: false
    }
    AppLabel {
        x: row.columns.weightX
        width: row.columns.weightWidth
        anchors.verticalCenter: parent.verticalCenter
        theme: row.theme
        text: row._weight
        color: row.theme.legible(row.theme.textMuted, row._ground)
        font.pixelSize: Fallback.type.labelMd
        horizontalAlignment: Text.AlignRight
        Accessible.ignored: true
    }
    AppLabel {
        x: row.columns.labelX
        y: row.columns.linesY
        height: row.columns.lineHeight
        theme: row.theme
        //: Before the values of a hand's actions
        text: qsTr("EV:")
        color: row.theme.legible(row.theme.textMuted, row._ground)
        font.pixelSize: Fallback.type.labelMd
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
    Repeater {
        model: row.columns.lines

        EvLine {
            required property int index

            readonly property var _line: row._lines[index] ?? {action: -1, ev: NaN}

            x: row.columns.evX
            y: row.columns.linesY + index * row.columns.lineHeight
            width: row.columns.evWidth
            height: row.columns.lineHeight
            visible: index < row._lines.length
            theme: row.theme
            action: _line.action
            ev: _line.ev
            unknownEv: row.unknownEv
            actionName: _line.action >= 0 && _line.action < row.definitions.length
                ? ActionText.shown(row.definitions[_line.action]) : ""
            tint: row._tints[_line.action] ?? row.theme.text
            lit: row.hoveredLine === index
            focusShown: row.focusedLine === index
            onPressed: row.whyPressed(action)
        }
    }
    ActionBar {
        id: bar

        x: row.columns.barX
        width: row.columns.barWidth
        height: row.columns.barHeight
        anchors.verticalCenter: parent.verticalCenter
        theme: row.theme
        actions: row.actions
        showLabels: false
    }
}
