pragma ComponentBehavior: Bound

import QtQuick
import Tidewell
import "../../logic/action_bar.mjs" as Bar
import "../../logic/hand_rows.mjs" as HandRows

// One hand of the list: its cards, how much of it comes here, what each action is worth, and how often
// each is taken. Rows are given other hands as the list scrolls: nothing here is built anew for that.
Rectangle {
    id: row

    required property Theme theme
    required property HandColumns columns
    required property HandListLook look
    // As the list holds it; null for none.
    required property var combo
    required property var definitions
    // Gives the entries of an ActionBar for a list of probabilities.
    required property var actionsFor
    // Why the values are not known; empty where they are.
    required property string unknownEv
    required property bool current
    required property bool hovered
    required property bool focusShown
    // The line that the pointer is on, and the one that the keyboard is on; -1 for none.
    required property int hoveredLine
    required property int focusedLine

    readonly property var _lines: combo ? HandRows.evLines(combo, definitions) : []
    readonly property var _shade: look.shades[current ? "current" : hovered ? "hovered" : "plain"]

    signal whyPressed(action: int)

    function _percent(share: real): string {
        const percent = 100 * share;
        return percent > 0 && percent < 0.5 ? qsTr("<1%") : qsTr("%1%").arg(Math.round(percent));
    }

    // A hand that nobody is on is told by its cards alone: lists change often.
    function _spoken(): string {
        if (!combo) {
            return "";
        }
        if (!current && !hovered) {
            return combo.c1 + combo.c2;
        }
        const cards = [combo.c1, combo.c2].map(card => CardText.spoken(card[0], card[1]));
        const mix = actionsFor(combo.actionProbs).map(action =>
            //: An action and how often it is taken: "Bet 33%: 40%"
            qsTr("%1: %2%").arg(ActionText.shown(action)).arg(Math.round(100 * action.frequency)));
        //: A hand of the list: its two cards, how much of it comes here, and what it does
        return qsTr("%1, %2, weight %3: %4").arg(cards[0]).arg(cards[1])
                                            .arg(_percent(combo.weight)).arg(mix.join(", "));
    }

    function _spokenValue(line: var, value: string): string {
        const isOne = line.action >= 0 && line.action < definitions.length;
        //: What an action of a hand is worth: "Bet 33%: EV 12.50"
        return current && isOne ? qsTr("%1: EV %2").arg(ActionText.shown(definitions[line.action])).arg(value)
                                : value;
    }

    radius: theme.radiusXs
    color: current || hovered ? _shade.ground : "transparent"
    border.width: focusShown ? 1 : 0
    border.color: theme.strokeFocus
    Accessible.role: Accessible.ListItem
    Accessible.name: row._spoken()
    Accessible.selectable: true
    Accessible.selected: current

    MiniCard {
        x: row.columns.cardsX
        y: row.columns.cardsY
        theme: row.theme
        name: row.combo ? row.combo.c1 : ""
        unit: row.columns.cardUnit
    }
    MiniCard {
        x: row.columns.cardsX + row.columns.cardWidth + row.columns.cardGap
        y: row.columns.cardsY
        theme: row.theme
        name: row.combo ? row.combo.c2 : ""
        unit: row.columns.cardUnit
    }
    AppLabel {
        x: row.columns.weightX
        width: row.columns.weightWidth
        anchors.verticalCenter: parent.verticalCenter
        theme: row.theme
        text: row.combo ? row._percent(row.combo.weight) : ""
        color: row._shade.muted
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
        color: row._shade.muted
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
            text: row.unknownEv === "" && Number.isFinite(_line.ev)
                ? _line.ev.toLocaleString(row.columns.locale, "f", 2) : qsTr("—")
            color: row._shade.tints[_line.action] ?? row.theme.text
            action: _line.action
            spoken: row._spokenValue(_line, text)
            unknownEv: row.unknownEv
            lit: row.hoveredLine === index
            focusShown: row.focusedLine === index
            onPressed: row.whyPressed(action)
        }
    }
    MixBar {
        x: row.columns.barX
        width: row.columns.barWidth
        height: row.columns.barHeight
        anchors.verticalCenter: parent.verticalCenter
        theme: row.theme
        shares: row.combo ? Bar.sharesOf(row.combo.actionProbs) : []
        looks: row.look.actions
    }
}
