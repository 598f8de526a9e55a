import QtQuick
import Tidewell
import "../logic/action_list.mjs" as ActionList

// What one action of a bar stands for: its colour, its name and its figures. "—" is a figure that is
// not known.
Row {
    id: label

    required property Theme theme
    required property var action
    required property int percent
    required property color swatch

    function _figure(value: var, digits: int): string {
        return Number.isFinite(value) ? Number(value).toLocaleString(Qt.locale(), "f", digits) : "";
    }

    // Such as "12.5 combos".
    function _phrase(phrase: string, figure: string): string {
        return figure === "" ? qsTr("—") : phrase.arg(figure);
    }

    spacing: 8

    Rectangle {
        anchors.verticalCenter: parent.verticalCenter
        width: 10
        height: 10
        radius: 2
        color: label.swatch
    }
    AppLabel {
        theme: label.theme
        text: ActionText.named(label.action.name)
        font.pixelSize: Fallback.type.labelMd
        font.weight: Fallback.type.weightSemibold
    }
    AppLabel {
        theme: label.theme
        text: qsTr("%1%").arg(label.percent)
        font.pixelSize: Fallback.type.labelMd
    }
    AppLabel {
        theme: label.theme
        muted: true
        //: Number of hands with suits, of a range or an action
        text: label._phrase(qsTr("%1 combos"),
                            label._figure(label.action.combos,
                                          ActionList.comboDigits(label.action.combos)))
        font.pixelSize: Fallback.type.labelMd
    }
    AppLabel {
        theme: label.theme
        muted: true
        text: label._phrase(qsTr("%1% equity"), label._figure(100 * label.action.equity, 1))
        font.pixelSize: Fallback.type.labelMd
    }
    AppLabel {
        theme: label.theme
        muted: true
        //: Expected value, in chips
        text: label._phrase(qsTr("%1 EV"), label._figure(label.action.ev, 2))
        font.pixelSize: Fallback.type.labelMd
    }
}
