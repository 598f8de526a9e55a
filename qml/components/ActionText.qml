pragma Singleton

import QtQuick
import "../logic/action_list.mjs" as ActionList

// Actions as they are read, in the language of the user.
QtObject {
    // From an action's name ("Bet 33%") and type ("bet 33%"); the type wins. What is no action of the
    // game, such as a card, stays as it is.
    function label(name: string, actionType: string): string {
        const kind = ActionList.kindOf(actionType);
        const size = _sizeIn(name, kind) || _sizeIn(actionType, kind);
        return _phrase(kind, size) || _fromName(name);
    }

    // With its chips if they are known: "Bet 75% · 13.50", "Raise to 36". `action` has a `name`, and may
    // have an `actionType` and `chips`.
    function shown(action: var): string {
        const type = action.actionType ?? "";
        const text = label(action.name, type);
        if (!(action.chips > 0)) {
            return text;
        }
        return ActionList.kindOf(type) === "raise"
            //: A raise, by what its player has bet on this street then, in chips
            ? qsTr("Raise to %1").arg(chips(action.chips))
            //: An action and what it takes, in chips: "Bet 75% · 13.50"
            : qsTr("%1 · %2").arg(text).arg(chips(action.chips));
    }

    // With hundredths where there are some.
    function chips(amount: real): string {
        const isWhole = Math.round(100 * amount) % 100 === 0;
        return amount.toLocaleString(Qt.locale(), "f", isWhole ? 0 : 2);
    }

    // From the name alone, in any case, as "bet 50%".
    function fromAnyCase(name: string): string {
        const upper = word => word[0].toUpperCase() + word.slice(1);
        const proper = name.replace(/^(bet|raise) /i, kind => upper(kind.toLowerCase()))
                           .replace(/^[a-z]/, upper);
        const text = _fromName(proper);
        return text === proper && !/^(Bet|Raise|Check|Call|Fold|All-in)/.test(proper) ? name : text;
    }

    function _fromName(name: string): string {
        const kind = /^(Bet|Raise)( |$)|^(Check|Call|Fold|All-In|All-in)$/.test(name)
            ? ActionList.kindOf(name.replace("-", "")) : "";
        return _phrase(kind, _sizeIn(name, kind)) || name;
    }

    function _sizeIn(text: string, kind: string): string {
        return text.toLowerCase().startsWith(kind) ? text.slice(kind.length).trim() : "";
    }

    function _phrase(kind: string, size: string): string {
        switch (kind) {
        case "check":
            return qsTranslate("TreeNode", "Check");
        case "call":
            return qsTranslate("TreeNode", "Call");
        case "fold":
            return qsTranslate("TreeNode", "Fold");
        case "allin":
            return qsTranslate("TreeNode", "All-in");
        case "bet":
            //: %1 is the size, such as "33%"
            return size ? qsTranslate("TreeNode", "Bet %1").arg(size) : qsTranslate("TreeNode", "Bet");
        case "raise":
            //: %1 is the size, such as "33%"
            return size ? qsTranslate("TreeNode", "Raise %1").arg(size)
                        : qsTranslate("TreeNode", "Raise");
        default:
            return "";
        }
    }
}
