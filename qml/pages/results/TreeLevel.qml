pragma ComponentBehavior: Bound

import QtQuick
import Tidewell

// One block of the tree: a deal with its cards, or the actions of a decision, of which only the chosen
// one is left once the way goes on behind it.
Column {
    id: level

    required property int index
    required property int nodeIndex
    required property int selectedActionIndex
    required property Theme theme
    required property NodeReader nodes
    required property bool isLast
    // The card dealt here, `kept` and `shown`; null for none.
    required property var deal
    // Of a deal, the cards that can be dealt, as they are shown.
    required property var freeCards
    // The action that the keyboard stands on, -1 for none.
    required property int cursor

    readonly property var _meta: nodes.meta(nodeIndex)
    readonly property var _actions: nodes.actions(nodeIndex)
    readonly property bool _isDeal: _meta.nodeType === "chance"
    readonly property bool _decided: selectedActionIndex >= 0
    readonly property bool _locked: !_isDeal && nodes.hasLocks(nodeIndex)
    // All that the boxes show, at once: neither do they outlive what it is taken from, nor see a part of
    // it change before the rest.
    readonly property var _shownActions: {
        const meta = nodes.meta(nodeIndex);
        const actions = nodes.frequencies(nodeIndex);
        if (meta.nodeType === "chance") {
            return [];
        }
        const shown = selectedActionIndex >= 0 && !isLast ? [selectedActionIndex] : Array.from(actions.keys());
        return shown.filter(index => index < actions.length)
                    .map(index => _boxContent(index, meta, actions));
    }

    signal pressed(action: int)
    signal cardChosen(card: string)

    // The box of an action, or of the deal.
    function boxOf(action: int): Item {
        return _isDeal ? dealBoxes.itemAt(0) : boxes.itemAt(_shownActions.findIndex(box => box.index === action));
    }

    function _boxContent(index: int, meta: var, actions: var): var {
        const action = actions[index];
        const child = nodes.meta(action.childIndex);
        return {
            index: index,
            nodeType: meta.nodeType,
            player: meta.player,
            name: action.name,
            actionType: action.actionType,
            siblingTypes: actions.map(sibling => sibling.actionType),
            chips: action.chips ?? NaN,
            frequency: action.frequency ?? -1,  // not known
            pot: child.pot ?? meta.pot,
            hasChildren: child.hasChildren ?? false,
            locked: nodes.hasLocks(nodeIndex) || nodes.hasLocks(action.childIndex)
        };
    }

    spacing: theme.spaceSm

    Line {
        visible: level._isDeal
    }
    Repeater {
        id: dealBoxes

        model: level._isDeal ? 1 : 0

        TreeNode {
            width: level.width
            theme: level.theme
            nodeType: "chance"
            player: {
                const street = level._meta.chanceDeal === "river" ? qsTr("River") : qsTr("Turn");
                //: %1 is the street: "Deal Turn"
                return qsTr("Deal %1").arg(street);
            }
            action: level.deal ? level.deal.shown : ""
            pot: level._meta.pot ?? 0
            depth: level.index
            selected: level.isLast
            current: level.cursor >= 0
            onClicked: level.pressed(0)
        }
    }
    OnDemand {
        width: level.width
        height: (item as Item)?.implicitHeight ?? 0
        visible: wanted
        wanted: level._isDeal

        DealStrip {
            width: level.width
            theme: level.theme
            freeCards: level.freeCards
            dealt: level.deal ? level.deal.shown : ""
            onChosen: card => level.cardChosen(card)
        }
    }
    Line {
        visible: level._isDeal
    }
    TreeBanner {
        width: level.width
        theme: level.theme
        options: level._actions.length
        locked: level._locked
        visible: level.isLast && !level._isDeal && options > 1
    }
    Repeater {
        id: boxes

        model: level._shownActions

        TreeNode {
            required property var modelData

            width: level.width
            theme: level.theme
            nodeType: modelData.nodeType
            player: modelData.player
            action: modelData.name
            actionType: modelData.actionType
            siblingTypes: modelData.siblingTypes
            chips: modelData.chips
            frequency: modelData.frequency
            pot: modelData.pot
            hasChildren: modelData.hasChildren
            locked: modelData.locked
            depth: level.index
            selected: level.selectedActionIndex === modelData.index
            expanded: selected
            current: level.cursor === modelData.index
            onClicked: level.pressed(modelData.index)
            onToggleExpand: level.pressed(modelData.index)
        }
    }

    component Line: Rectangle {
        width: level.width
        height: 1
        color: level.theme.stroke
    }
}
