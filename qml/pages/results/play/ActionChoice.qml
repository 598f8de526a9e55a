pragma ComponentBehavior: Bound

import QtQuick
import Tidewell

// What the user can do at a decision: a button for each action, with its key. Once something is chosen
// it is marked, and the others wait; a drill also marks what would have been right.
Flow {
    id: choice

    required property Theme theme
    // Of the node, with `name`.
    required property var actions
    // Something can be chosen now.
    required property bool open
    // -1 for none.
    required property int chosen
    // What the drill says of it; empty for nothing.
    required property var verdict

    signal acted(action: int)

    function _markOf(action: int): color {
        if (chosen < 0) {
            return "transparent";  // the verdict may be read for longer, but is of another hand
        }
        if (verdict.wrong && action === verdict.bestIndex) {
            return theme.success;
        }
        if (action !== chosen) {
            return "transparent";
        }
        if (verdict.wrong === undefined) {
            return theme.strokeFocus;
        }
        return verdict.wrong ? theme.danger : theme.success;
    }

    spacing: 6

    Repeater {
        model: choice.actions

        KeyButton {
            required property int index
            required property var modelData

            theme: choice.theme
            compact: true
            implicitHeight: 32
            text: ActionText.shown(modelData)
            keyText: index < 9 ? String(index + 1) : ""
            mark: choice._markOf(index)
            enabled: choice.open
            onClicked: choice.acted(index)
        }
    }
}
