import QtQuick
import Tidewell
import "../logic/action_list.mjs" as ActionList

// What one action of a bar stands for: its colour, its name and its figures. "—" is a figure that is
// not known.
Row {
    id: label

    required property Theme theme
    required property var action
    // Of all actions of the bar.
    required property var types
    required property int percent
    // Why nobody can say what the action is worth; empty where its figures count.
    property string unknownEv: ""

    // What stands for a figure that is not known, or not yet.
    readonly property string _none: action.pending && unknownEv === "" ? qsTr("…") : qsTr("—")

    // Such as "12.50 EV".
    function _phrase(phrase: string, figure: real, digits: int): string {
        return Number.isFinite(figure)
            ? phrase.arg(figure.toLocaleString(Qt.locale(), "f", digits)) : _none;
    }

    function _combosText(combos: real): string {
        const count = Math.round(combos);
        if (!ActionList.isWhole(combos)) {
            return _phrase(qsTr("%1 combos"), combos, 1);
        }
        //: Number of hands with suits, of a range or an action
        return count === 1 ? qsTr("1 combo") : qsTr("%Ln combos", "", count);
    }

    spacing: 8

    ActionSwatch {
        anchors.verticalCenter: parent.verticalCenter
        width: 10
        height: 10
        radius: 2
        theme: label.theme
        actionType: label.action.actionType || label.action.name
        actions: label.types
    }
    AppLabel {
        theme: label.theme
        text: ActionText.shown(label.action)
        font.pixelSize: Fallback.type.labelMd
        font.weight: Fallback.type.weightSemibold
    }
    AppLabel {
        theme: label.theme
        text: Number.isFinite(ActionList.known(label.action.frequency))
            ? qsTr("%1%").arg(label.percent) : qsTr("—")
        font.pixelSize: Fallback.type.labelMd
    }
    AppLabel {
        theme: label.theme
        muted: true
        text: label._combosText(ActionList.known(label.action.combos))
        font.pixelSize: Fallback.type.labelMd
    }
    AppLabel {
        theme: label.theme
        muted: true
        text: label._phrase(qsTr("%1% equity"), 100 * ActionList.known(label.action.equity), 1)
        font.pixelSize: Fallback.type.labelMd
    }
    AppLabel {
        theme: label.theme
        muted: true
        //: Expected value, in chips
        text: label._phrase(qsTr("%1 EV"),
                            label.unknownEv === "" ? ActionList.known(label.action.ev) : NaN, 2)
        font.pixelSize: Fallback.type.labelMd
        Accessible.description: label.unknownEv

        HoverHandler {
            id: hover
        }
        Tip {
            theme: label.theme
            text: label.unknownEv
            shown: hover.hovered
        }
    }
}
