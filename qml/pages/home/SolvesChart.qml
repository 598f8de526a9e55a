pragma ComponentBehavior: Bound

import QtQuick
import Tidewell

import "../../logic/home_statistics.mjs" as HomeStatistics

// All solves so far and their average run time, day by day. The two lines have scales of their own;
// only the solves' is written at the side.
Canvas {
    id: chart

    property Theme theme: Fallback.theme
    // As AppController.solveHistoryDaily() gives it.
    property var history: []

    readonly property var _days: HomeStatistics.cumulativeHistory(history)
    readonly property var _lines: HomeStatistics.chartLines(_days)
    readonly property int _total: _days.length > 0 ? _days[_days.length - 1].totalSolves : 0
    readonly property rect plot: Qt.rect(30, 8, Math.max(1, width - 38), Math.max(1, height - 26))
    // The day under the pointer or chosen by the keyboard, -1 for none.
    readonly property int hoveredIndex: {
        if (_days.length === 0) {
            return -1;
        }
        if (hover.hovered) {
            const day = (hover.point.position.x - plot.x) / plot.width * (_days.length - 1);
            return Math.max(0, Math.min(_days.length - 1, Math.round(day)));
        }
        return activeFocus ? Math.min(_focusedIndex, _days.length - 1) : -1;
    }
    property int _focusedIndex: 0

    function tipText(index: int): string {
        const day = _days[index];
        const average = Number.isFinite(day.averageSeconds)
            ? qsTr("%1s").arg(day.averageSeconds.toLocaleString(Qt.locale(), "f", 1)) : "—";
        //: A day of the chart: its date, solves of the day, all solves so far, their average time
        return qsTr("%1\nDaily: %2\nTotal: %3\nAvg runtime: %4").arg(_dateText(day.date))
            .arg(day.solves.toLocaleString(Qt.locale(), "f", 0))
            .arg(day.totalSolves.toLocaleString(Qt.locale(), "f", 0)).arg(average);
    }

    // `date` is "yyyy-MM-dd" of the local calendar.
    function _dateText(date: string): string {
        return Date.fromLocaleString(Qt.locale("C"), date, "yyyy-MM-dd")
            .toLocaleDateString(Qt.locale(), Locale.ShortFormat);
    }

    function _x(index: int): real {
        return plot.x + (_days.length > 1 ? index * plot.width / (_days.length - 1) : 0);
    }

    function _y(share: real): real {
        return plot.y + plot.height * (1 - share);
    }

    function _drawLine(context: var, shareOf: var): void {
        const points = _lines.map((line, index) => ({x: _x(index), y: _y(shareOf(line))}))
            .filter(point => Number.isFinite(point.y));
        context.beginPath();
        points.forEach((point, index) => {
            if (index === 0) {
                context.moveTo(point.x, point.y);
            } else {
                context.lineTo(point.x, point.y);
            }
        });
        context.stroke();
    }

    function _drawDot(context: var, color: color, index: int, share: real): void {
        if (!Number.isFinite(share)) {
            return;
        }
        context.fillStyle = color;
        context.beginPath();
        context.arc(_x(index), _y(share), 3, 0, 2 * Math.PI);
        context.fill();
    }

    implicitWidth: 320
    implicitHeight: 280
    activeFocusOnTab: _days.length > 0
    Accessible.role: Accessible.Chart
    Accessible.name: qsTr("Solves over time")
    Accessible.description: hoveredIndex >= 0 ? tipText(hoveredIndex) : ""
    Accessible.focusable: true

    onHoveredIndexChanged: requestPaint()
    onThemeChanged: requestPaint()
    on_LinesChanged: requestPaint()
    onPaint: {
        const context = getContext("2d");
        context.reset();
        context.strokeStyle = theme.stroke;
        context.lineWidth = 1;
        context.beginPath();
        context.moveTo(plot.x, plot.y);
        context.lineTo(plot.x, _y(0));
        context.lineTo(plot.x + plot.width, _y(0));
        context.stroke();

        context.lineWidth = 2;
        context.lineJoin = "round";
        context.strokeStyle = theme.accentMuted;
        context.setLineDash([2, 1.5]);  // in widths of the line
        _drawLine(context, line => line.seconds);
        context.setLineDash([]);
        context.strokeStyle = theme.accent;
        _drawLine(context, line => line.solves);

        const marked = _days.length === 1 ? 0 : hoveredIndex;
        if (marked >= 0) {
            _drawDot(context, theme.accentMuted, marked, _lines[marked].seconds);
            _drawDot(context, theme.accent, marked, _lines[marked].solves);
        }
    }
    onActiveFocusChanged: {
        if (activeFocus) {
            _focusedIndex = Math.max(0, _days.length - 1);
        }
    }

    Keys.onLeftPressed: _focusedIndex = Math.max(0, _focusedIndex - 1)
    Keys.onRightPressed: _focusedIndex = Math.min(_days.length - 1, _focusedIndex + 1)

    component Mark: Text {
        textFormat: Text.PlainText
        color: chart.theme.textMuted
        font.pixelSize: Fallback.type.labelSm
        visible: chart._days.length > 0
        Accessible.ignored: true
    }

    Mark {
        anchors.right: parent.left
        anchors.rightMargin: -(chart.plot.x - 6)
        y: chart._y(0) - height
        text: (0).toLocaleString(Qt.locale(), "f", 0)
    }
    Mark {
        anchors.right: parent.left
        anchors.rightMargin: -(chart.plot.x - 6)
        y: chart.plot.y - 4
        text: chart._total.toLocaleString(Qt.locale(), "f", 0)
    }
    Mark {
        x: chart.plot.x
        y: chart.height - height
        text: chart._days.length > 0 ? chart._dateText(chart._days[0].date) : ""
    }
    Mark {
        anchors.right: parent.right
        anchors.rightMargin: 8
        y: chart.height - height
        text: chart._days.length > 1
            ? chart._dateText(chart._days[chart._days.length - 1].date) : ""
    }
    Text {
        x: chart.plot.x + (chart.plot.width - width) / 2
        y: chart.plot.y + (chart.plot.height - height) / 2
        text: qsTr("No solves yet")
        textFormat: Text.PlainText
        color: chart.theme.textMuted
        font.pixelSize: Fallback.type.bodyMd
        visible: chart._days.length === 0
        Accessible.role: Accessible.StaticText
        Accessible.name: text
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
        theme: chart.theme
        // On the side where there is more room.
        x: chart._x(chart.hoveredIndex)
           + (2 * chart.hoveredIndex < chart._days.length ? 12 : -width - 12)
        y: chart.plot.y + 12
        maximumWidth: 190
        delay: 150
        text: chart.hoveredIndex >= 0 ? chart.tipText(chart.hoveredIndex) : ""
        visible: chart.hoveredIndex >= 0
    }
}
