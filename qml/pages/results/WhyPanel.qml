pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tidewell
import "../../logic/action_list.mjs" as ActionList
import "../../logic/why_rows.mjs" as WhyRows

// What the EV of one action is made of for one hand: how often each answer, card or outcome comes, and
// what the hand expects behind it.
ColumnLayout {
    id: panel

    required property Theme theme
    // As the controller tells it: with `pending` set while it is being worked out, and without `ok` where
    // it cannot be told.
    required property var breakdown
    // From the suits of cards as the tree keeps them to those that are shown.
    required property var suits

    readonly property var _rows: breakdown.ok
        ? WhyRows.rows(Object.assign({}, breakdown, {parts: panel._arrays(breakdown.parts)})) : []

    // A list of the controller is no array.
    function _arrays(parts: var): var {
        return ActionList.toArray(parts)
            .map(part => Object.assign({}, part, {parts: _arrays(part.parts)}));
    }

    function _figure(value: var): string {
        const known = ActionList.known(value);
        return Number.isFinite(known) ? known.toLocaleString(Qt.locale(), "f", 2) : qsTr("—");
    }

    function _nameOf(row: var): string {
        switch (row.kind) {
        case "card":
            return row.name[0] + CardText.symbol(suits[row.name[1]]);
        case "outcome":
            return _outcome(row.name);
        case "more":
            return qsTr("%Ln more cards", "", row.count);
        default:
            return ActionText.label(row.name, row.actionType);
        }
    }

    function _outcome(name: string): string {
        switch (name) {
        case "Win":
            //: The hand wins at showdown
            return qsTr("Win");
        case "Tie":
            //: Both hands are alike at showdown
            return qsTr("Tie");
        case "Lose":
            //: The hand loses at showdown
            return qsTr("Lose");
        default:
            //: Cards that cannot come, since one of the hands holds them; they count as an even split
            return qsTr("Blocked run-outs, counted as a split pot");
        }
    }

    function _hint(): string {
        if (breakdown.pending) {
            return qsTr("Working it out…");
        }
        if (!breakdown.ok) {
            return qsTr("Only a solve at hand can tell. Solve the spot again.");
        }
        if (!Number.isFinite(breakdown.ev)) {
            return qsTr("The other player never comes here");
        }
        switch (breakdown.follows) {
        case "answers":
            return qsTr("The answers of the hands that this one can meet");
        case "deal":
            return qsTr("The best and the worst cards");
        case "showdown":
            return qsTr("The showdown with the hands that this one can meet");
        default:
            return qsTr("The hand ends here");
        }
    }

    function _colorOf(row: var): color {
        const outcomes = {Win: theme.success, Lose: theme.danger};
        return row.kind === "action" ? theme.actionColor(row.actionType)
            : row.kind === "outcome" ? outcomes[row.name] ?? theme.textMuted : theme.gold;
    }

    spacing: theme.spaceXs
    Accessible.role: Accessible.Grouping
    Accessible.name: qsTr("What the EV is made of")

    AppLabel {
        theme: panel.theme
        text: panel._hint()
        muted: true
        font.pixelSize: Fallback.type.labelMd
        wrapMode: Text.Wrap
        Layout.fillWidth: true
    }
    Repeater {
        model: panel._rows

        RowLayout {
            id: row

            required property var modelData

            readonly property string _name: panel._nameOf(modelData)
            readonly property bool _counts: modelData.kind !== "more"

            spacing: panel.theme.spaceSm
            Layout.leftMargin: 20 * modelData.depth
            Accessible.role: Accessible.ListItem
            Accessible.name: _counts ? _name + " " + share.text + " " + ev.text : _name

            Rectangle {
                implicitWidth: row.modelData.depth > 0 ? 6 : 10
                implicitHeight: implicitWidth
                radius: 2
                color: row._counts ? panel._colorOf(row.modelData) : "transparent"
            }
            AppLabel {
                theme: panel.theme
                text: row._name
                muted: row.modelData.depth > 0 || !row._counts
                font.pixelSize: Fallback.type.labelMd
                elide: Text.ElideRight
                Accessible.ignored: true
                Layout.fillWidth: true
            }
            AppLabel {
                id: share

                theme: panel.theme
                mono: true
                muted: true
                text: row._counts ? qsTr("%1%").arg((100 * row.modelData.probability)
                                                    .toLocaleString(Qt.locale(), "f", 1)) : ""
                font.pixelSize: Fallback.type.labelMd
                horizontalAlignment: Text.AlignRight
                Accessible.ignored: true
                Layout.preferredWidth: 56
            }
            AppLabel {
                id: ev

                theme: panel.theme
                mono: true
                text: row._counts ? panel._figure(row.modelData.ev) : ""
                font.pixelSize: Fallback.type.labelMd
                horizontalAlignment: Text.AlignRight
                Accessible.ignored: true
                Layout.preferredWidth: 72
            }
        }
    }
    Rectangle {
        implicitHeight: 1
        color: panel.theme.stroke
        visible: total.visible
        Layout.fillWidth: true
    }
    RowLayout {
        id: total

        visible: panel.breakdown.ok

        AppLabel {
            theme: panel.theme
            //: The EVs, each as often as it comes, add up to this
            text: qsTr("In all")
            font.pixelSize: Fallback.type.labelMd
            Layout.fillWidth: true
        }
        AppLabel {
            objectName: "whyTotal"
            theme: panel.theme
            mono: true
            text: panel._figure(panel.breakdown.ev)
            font.pixelSize: Fallback.type.labelMd
            font.weight: Fallback.type.weightSemibold
        }
    }
}
