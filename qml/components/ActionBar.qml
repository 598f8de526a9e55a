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
    // `ev`. The frequencies count in relation to each other.
    property var actions: []
    property bool showLabels: true
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

    Canvas {
        id: canvas

        // All that the picture follows from, so that it is painted anew with each of them.
        readonly property var look: [bar._shares, bar._entries, colors, bar.theme.surface2,
                                     bar.selectedAction, bar.activeFocus, bar._current]
        readonly property var colors:
            bar._types.map(type => bar.theme.actionColorAmong(type, bar._types))

        function isFramed(index: int): bool {
            return bar.activeFocus
                ? index === bar._current
                : bar.selectedAction !== "" && bar._entries[index].name === bar.selectedAction;
        }

        // From the top edge on; `left` and `right` are the radii at the ends.
        function roundedRect(context: var, x: real, width: real, height: real, left: real,
                             right: real): void {
            context.beginPath();
            context.moveTo(x + left, 0);
            context.lineTo(x + width - right, 0);
            context.arcTo(x + width, 0, x + width, right, right);
            context.lineTo(x + width, height - right);
            context.arcTo(x + width, height, x + width - right, height, right);
            context.lineTo(x + left, height);
            context.arcTo(x, height, x, height - left, left);
            context.lineTo(x, left);
            context.arcTo(x, 0, x + left, 0, left);
            context.closePath();
        }

        function paintSegment(context: var, segment: var, index: int): void {
            if (segment.width <= 0) {
                return;
            }
            const outline = () => roundedRect(context, segment.x, segment.width, height,
                                              segment.leftRadius, segment.rightRadius);
            outline();
            context.fillStyle = colors[index];
            context.fill();
            if (ActionList.isAllIn(bar._types[index])) {
                paintHatch(context, segment, colors[index]);
            }
            if (Bar.isParted(bar._shares, bar._types, index)) {
                context.fillStyle = bar.theme.surface2;
                context.fillRect(segment.x, 0, 1, height);
            }
            if (isFramed(index)) {
                outline();
                context.lineWidth = 2;
                context.strokeStyle = bar.theme.text;
                context.stroke();
            }
            const percent = bar._percent(index);
            if (segment.width > 35 && percent > 0) {
                paintPercent(context, segment, qsTr("%1%").arg(percent));
            }
        }

        // Within the current path.
        function paintHatch(context: var, segment: var, ground: color): void {
            context.save();
            context.clip();
            context.beginPath();
            for (let x = segment.x; x < segment.x + segment.width + height; x += 7) {
                context.moveTo(x, 0);
                context.lineTo(x - height, height);
            }
            context.lineWidth = 1.8;
            context.strokeStyle = bar.theme.hatchOn(ground);
            context.stroke();
            context.restore();
        }

        // On a plate, which makes it legible on any action's colour.
        function paintPercent(context: var, segment: var, text: string): void {
            context.font = "bold 10px sans-serif";
            const width = Math.ceil(context.measureText(text).width) + 8;
            const plate = Math.min(height, 16);
            if (width > segment.width) {
                return;
            }
            const middle = segment.x + segment.width / 2;
            context.save();
            context.translate(0, (height - plate) / 2);
            roundedRect(context, middle - width / 2, width, plate, 4, 4);
            context.restore();
            context.fillStyle = bar.theme.plate;
            context.fill();
            context.fillStyle = bar.theme.plateText;
            context.textAlign = "center";
            context.textBaseline = "middle";
            context.fillText(text, middle, height / 2);
        }

        width: parent.width
        height: bar.showLabels
            ? Math.max(0, bar.height - bar._labelGap - Math.ceil(labels.implicitHeight)) : bar.height
        onLookChanged: requestPaint()
        onWidthChanged: requestPaint()
        onHeightChanged: requestPaint()
        onPaint: {
            const context = getContext("2d");
            context.reset();
            const end = Math.min(bar.theme.radiusSm, width / 2, height / 2);
            roundedRect(context, 0, width, height, end, end);
            context.fillStyle = bar.theme.surface2;
            context.fill();
            Bar.segments(bar._shares, width, height, bar.theme.radiusSm)
                .forEach((segment, index) => paintSegment(context, segment, index));
        }

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
            model: bar.showLabels ? bar._entries : []

            ActionBarLabel {
                required property int index
                required property var modelData

                rightPadding: 26
                theme: bar.theme
                action: modelData
                types: bar._types
                percent: bar._percent(index)
            }
        }
    }
}
