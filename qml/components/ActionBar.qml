pragma ComponentBehavior: Bound

import QtQuick
import Tidewell
import "../logic/action_bar.mjs" as Bar
import "../logic/action_list.mjs" as ActionList

// How often each action is taken, as segments of one bar, with a line of figures for each action below
// if labels are shown.
Item {
    id: bar

    property Theme theme: Fallback.theme
    // Maps of `name`, `actionType`, `frequency` and, if known, `chips`, `combos`, `equity` (0 to 1) and
    // `ev`, and `pending` while those are on their way. The frequencies count in relation to each other.
    property var actions: []
    property bool showLabels: true
    // Why nobody can say what the actions are worth; empty where `ev` and `equity` count.
    property string unknownEv: ""
    // Segments can be pressed.
    property bool interactive: false
    // Name of the action that is framed, none if empty.
    property string selectedAction: ""

    readonly property var _entries: Array.from({length: actions ? actions.length : 0},
                                               (_, index) => actions[index])
    readonly property var _types: _entries.map(action => action.actionType || action.name)
    readonly property var _shares: Bar.shares(_entries)
    readonly property real _labelGap: 6
    // The actions under the pointer and under the keyboard.
    readonly property int _pointed: hover.hovered ? _indexAt(hover.point.position.x) : -1
    property int _current: 0

    signal actionClicked(index: int, name: string)
    signal actionHovered(index: int, name: string, frequency: real)

    function _percent(index: int): int {
        return Math.round(100 * _shares[index]);
    }

    function _indexAt(x: real): int {
        return Bar.indexAt(_shares, x / Math.max(1, width));
    }

    function _press(index: int): void {
        if (interactive && index >= 0 && index < _entries.length) {
            _current = index;
            actionClicked(index, _entries[index].name);
        }
    }

    function _move(step: int): void {
        _current = Math.max(0, Math.min(_current + step, _entries.length - 1));
    }

    implicitWidth: 200
    implicitHeight: showLabels
        ? Math.max(40, 18 + _labelGap + Math.ceil(labels.implicitHeight)) : 24
    activeFocusOnTab: interactive
    Accessible.role: interactive ? Accessible.List : Accessible.Graphic
    Accessible.focusable: interactive
    Accessible.name: _entries.map((action, index) => qsTr("%1 %2%").arg(ActionText.shown(action))
                                                         .arg(_percent(index))).join(", ")

    Keys.enabled: interactive
    Keys.onLeftPressed: _move(-1)
    Keys.onRightPressed: _move(1)
    Keys.onReturnPressed: _press(_current)
    Keys.onEnterPressed: _press(_current)
    Keys.onSpacePressed: _press(_current)

    onActionsChanged: _current = 0
    on_PointedChanged: {
        if (_pointed >= 0) {
            actionHovered(_pointed, _entries[_pointed].name, _shares[_pointed]);
        }
    }

    MixBar {
        width: parent.width
        height: bar.showLabels
            ? Math.max(0, bar.height - bar._labelGap - Math.ceil(labels.implicitHeight)) : bar.height
        theme: bar.theme
        shares: bar._shares
        looks: bar.theme.actionLooks(bar._types)
        framed: bar.activeFocus ? bar._current
            : bar.selectedAction === "" ? -1
            : bar._entries.findIndex(action => action.name === bar.selectedAction)

        FocusRing {
            theme: bar.theme
            shown: bar.activeFocus
        }
        HoverHandler {
            id: hover

            cursorShape: bar.interactive ? Qt.PointingHandCursor : Qt.ArrowCursor
        }
        TapHandler {
            enabled: bar.interactive
            gesturePolicy: TapHandler.ReleaseWithinBounds
            onTapped: point => bar._press(bar._indexAt(point.position.x))
        }
    }

    Flow {
        id: labels

        // Labels are 32 apart, lines of them 6: each label brings the rest of its distance along.
        width: parent.width + 26
        anchors.bottom: parent.bottom
        spacing: 6
        visible: bar.showLabels

        Repeater {
            model: bar.showLabels ? ActionList.withoutUntaken(bar._entries) : []

            ActionBarLabel {
                required property int index
                required property var modelData

                rightPadding: 26
                theme: bar.theme
                action: modelData
                types: bar._types
                percent: bar._percent(index)
                unknownEv: bar.unknownEv
            }
        }
    }
}
