pragma ComponentBehavior: Bound

import QtQuick
import Tidewell
import "../../logic/convergence.mjs" as Convergence

// The exploitability of a solve in percent of the pot over its time, on a logarithmic scale, and the
// target as a line.
Canvas {
    id: chart

    property Theme theme: Fallback.theme
    // As SolveRun.measurements.
    property var measurements: []
    // Percent of the pot; none where it is not above 0.
    property real targetPercent: 0

    readonly property var _points: Array.from(measurements)
    readonly property var _decades: Convergence.decades(_points.map(point => point.percent),
                                                        targetPercent)
    readonly property real _seconds: _points.length > 0 ? _points[_points.length - 1].seconds : 0
    readonly property rect plot: Qt.rect(52, 8, Math.max(1, width - 60), Math.max(1, height - 30))
    // The measurement under the pointer or chosen by the keyboard, -1 for none.
    readonly property int hoveredIndex: {
        if (_points.length === 0) {
            return -1;
        }
        if (hover.hovered) {
            const seconds = (hover.point.position.x - plot.x) / plot.width * _seconds;
            return Convergence.nearest(_points.map(point => point.seconds), seconds);
        }
        return activeFocus ? Math.max(0, Math.min(_focusedIndex, _points.length - 1)) : -1;
    }
    property int _focusedIndex: 0

    function tipText(index: int): string {
        const point = _points[index];
        //: A measurement: its iteration, time, percent of the pot, chips
        return qsTr("Iteration %1\n%2\n%3\n%4")
            .arg(point.iteration.toLocaleString(Qt.locale(), "f", 0))
            .arg(DurationText.of(point.seconds)).arg(ExploitabilityText.percent(point.percent))
            .arg(ExploitabilityText.chips(point.chips));
    }

    function _x(seconds: real): real {
        return plot.x + (_seconds > 0 ? seconds / _seconds * plot.width : plot.width / 2);
    }

    function _y(percent: real): real {
        return plot.y + plot.height * (1 - Convergence.share(percent, _decades));
    }

    function _line(context: var, fromX: real, fromY: real, toX: real, toY: real): void {
        context.beginPath();
        context.moveTo(fromX, fromY);
        context.lineTo(toX, toY);
        context.stroke();
    }

    function _dot(context: var, point: var): void {
        context.beginPath();
        context.arc(_x(point.seconds), _y(point.percent), 3, 0, 2 * Math.PI);
        context.fill();
    }

    implicitWidth: 320
    implicitHeight: 190
    activeFocusOnTab: _points.length > 0
    Accessible.role: Accessible.Chart
    Accessible.name: qsTr("Exploitability over time")
    Accessible.description: hoveredIndex >= 0 ? tipText(hoveredIndex) : ""
    Accessible.focusable: true

    onHoveredIndexChanged: requestPaint()
    onThemeChanged: requestPaint()
    onTargetPercentChanged: requestPaint()
    on_PointsChanged: requestPaint()
    onPaint: {
        const context = getContext("2d");
        context.reset();
        context.lineWidth = 1;
        context.strokeStyle = theme.stroke;
        _decades.forEach(decade => _line(context, plot.x, _y(decade), plot.x + plot.width,
                                         _y(decade)));
        _line(context, plot.x, plot.y, plot.x, plot.y + plot.height);

        context.lineWidth = 2;
        if (targetPercent > 0) {
            context.strokeStyle = theme.gold;
            context.setLineDash([2, 1.5]);  // in widths of the line
            _line(context, plot.x, _y(targetPercent), plot.x + plot.width, _y(targetPercent));
            context.setLineDash([]);
        }
        context.lineJoin = "round";
        context.strokeStyle = context.fillStyle = theme.accent;
        context.beginPath();
        _points.forEach((point, index) => {
            if (index === 0) {
                context.moveTo(_x(point.seconds), _y(point.percent));
            } else {
                context.lineTo(_x(point.seconds), _y(point.percent));
            }
        });
        context.stroke();
        const marked = hoveredIndex >= 0 ? hoveredIndex : _points.length - 1;
        if (marked >= 0) {
            _dot(context, _points[marked]);
        }
    }
    onActiveFocusChanged: {
        if (activeFocus) {
            _focusedIndex = Math.max(0, _points.length - 1);
        }
    }

    Keys.onLeftPressed: _focusedIndex = Math.max(0, hoveredIndex - 1)
    Keys.onRightPressed: _focusedIndex = Math.min(_points.length - 1, hoveredIndex + 1)

    component Mark: Text {
        textFormat: Text.PlainText
        color: chart.theme.textMuted
        font.pixelSize: Fallback.type.labelSm
        Accessible.ignored: true
    }

    Repeater {
        model: chart._decades

        Mark {
            required property real modelData

            x: chart.plot.x - 6 - width
            y: chart._y(modelData) - height / 2
            text: ExploitabilityText.exactPercent(modelData)
        }
    }
    Mark {
        id: target

        x: chart.plot.x + chart.plot.width - width - 4
        // Where the line of the measurements is not.
        y: chart._y(chart.targetPercent) + (chart._y(chart.targetPercent) + height
                                            > chart.plot.y + chart.plot.height ? -height - 1 : 2)
        text: qsTr("target %1").arg(ExploitabilityText.exactPercent(chart.targetPercent))
        color: chart.theme.legible(chart.theme.gold, chart.theme.surface)
        visible: chart.targetPercent > 0
    }
    Mark {
        x: chart.plot.x
        y: chart.height - height
        text: qsTr("0 s")
    }
    Mark {
        anchors.right: parent.right
        anchors.rightMargin: 8
        y: chart.height - height
        text: DurationText.of(chart._seconds)
        visible: chart._seconds > 0
    }
    HoverHandler {
        id: hover
    }
    FocusRing {
        theme: chart.theme
        shown: chart.activeFocus
    }
    Connections {
        target: chart.theme

        function onDarkChanged(): void {
            chart.requestPaint();
        }
        function onAccentChanged(): void {
            chart.requestPaint();
        }
    }
    AppToolTip {
        readonly property real _pointX: chart.hoveredIndex >= 0
            ? chart._x(chart._points[chart.hoveredIndex].seconds) : 0

        theme: chart.theme
        // On the side where there is more room.
        x: _pointX + (2 * _pointX < chart.width ? 12 : -width - 12)
        y: chart.plot.y + 4
        maximumWidth: 190
        delay: 0
        text: chart.hoveredIndex >= 0 ? chart.tipText(chart.hoveredIndex) : ""
        visible: chart.hoveredIndex >= 0
    }
}
