import QtQuick
import QtQuick.Layouts
import Tidewell

// What a range holds in figures, and what it has of the hand in question.
RowLayout {
    id: summary

    property Theme theme: Fallback.theme
    // As HandRanges.read gives it.
    required property var range
    // A label, or none.
    property string hand: ""

    readonly property string _total: {
        const combos = _number(range.combos);
        const percent = _number(range.combos * 100 / 1326);
        //: What a range holds: how many combos, by weight, and the share of all hands
        return qsTr("%1 combos · %2% of hands").arg(combos).arg(percent);
    }
    readonly property string _blocked: range.blocked > 0
        //: Of a range: combos that hold a card of the board
        ? " · " + qsTr("%1 on the board").arg(_number(range.blocked)) : ""
    readonly property string handText: {
        if (hand === "") {
            return "";
        }
        const weight = _number((range.weights[hand] ?? 0) * 100);
        const part = range.parts[hand];
        if (part === undefined) {
            //: A starting hand and its weight: "AKs 50%"
            return qsTr("%1 %2%").arg(hand).arg(weight);
        }
        //: A starting hand of which a range has a part, and its mean weight: "AKs 2 of 4 combos, 50%"
        return qsTr("%1 %2 of %3 combos, %4%").arg(hand).arg(part).arg(HandRanges.sizeOf(hand))
                                             .arg(weight);
    }

    function _number(value: real): string {
        return value.toLocaleString(Qt.locale(), "f", value % 1 === 0 ? 0 : 1);
    }

    spacing: theme.spaceMd

    AppLabel {
        objectName: "rangeSize"
        theme: summary.theme
        muted: true
        text: summary._total + summary._blocked
        font.pixelSize: Fallback.type.labelMd
        elide: Text.ElideRight
        Layout.fillWidth: true
    }
    AppLabel {
        objectName: "rangeHand"
        theme: summary.theme
        text: summary.handText
        font.pixelSize: Fallback.type.labelMd
        // The line that the keyboard's own words are in is the matrix's.
        Accessible.ignored: true
    }
}
