pragma ComponentBehavior: Bound

import QtQuick
import Tidewell
import "../../logic/distribution_series.mjs" as Series

// Two curves by rank, one for each seat, each over the whole width. The pointer reads them where it is;
// Left and Right go from rank to rank, with Shift by ten, Home and End to the best and worst hand.
Item {
    id: plot

    required property Theme theme
    required property NodeDistributions distributions

    readonly property var _series: distributions.series
    readonly property bool _isEquity: distributions.isEquity
    readonly property bool _hasData: Series.longest(_series) >= 2
    readonly property var _ends: Series.scale(_series, _isEquity)
    readonly property rect _area: Qt.rect(52, 14, Math.max(1, width - 52 - 16),
                                          Math.max(1, height - 14 - 34))
    readonly property bool _hovering: _hasData && distributions.hoverT >= 0
    readonly property var _oopPoint: Series.pointAt(_series.oop, distributions.hoverT)
    readonly property var _ipPoint: Series.pointAt(_series.ip, distributions.hoverT)
    readonly property color _oopColor: theme.legible(theme.actionBet, theme.surface)
    readonly property color _ipColor: theme.legible(theme.info, theme.surface)

    function _figure(value: real, digits: int): string {
        return value.toLocaleString(Qt.locale(), "f", digits);
    }

    function _tick(value: real): string {
        return _isEquity ? qsTr("%1%").arg(_figure(100 * value, 0)) : _figure(value, 2);
    }

    function _y(value: real): real {
        return _area.y + _area.height * (_ends.high - value) / (_ends.high - _ends.low);
    }

    implicitWidth: 480
    implicitHeight: 280
    activeFocusOnTab: true
    Accessible.role: Accessible.Chart
    Accessible.focusable: true
    Accessible.name: _isEquity ? qsTr("Equity by hand") : qsTr("EV by hand")
    Accessible.description: _hovering ? reading.Accessible.name : message.text

    Keys.onPressed: event => {
        const step = event.modifiers & Qt.ShiftModifier ? 10 : 1;
        const ranks = Series.longest(plot._series);
        const moves = {[Qt.Key_Left]: -step, [Qt.Key_Right]: step,
                       [Qt.Key_Home]: -ranks, [Qt.Key_End]: ranks};
        if (plot._hasData && event.key in moves) {
            if (event.key === Qt.Key_Home || event.key === Qt.Key_End) {
                plot.distributions.hoverAt(event.key === Qt.Key_Home ? 0 : 1);
            } else {
                plot.distributions.moveHover(moves[event.key]);
            }
            event.accepted = true;
        }
    }

    HoverHandler {
        id: pointer

        // It tells of its place with every frame; a pointer at rest leaves the plot to the keys.
        property real _last: -1

        enabled: plot._hasData
        onPointChanged: {
            if (hovered && point.position.x !== _last) {
                _last = point.position.x;
                const t = (point.position.x - plot._area.x) / plot._area.width;
                plot.distributions.hoverAt(Math.max(0, Math.min(t, 1)));
            }
        }
        onHoveredChanged: if (!hovered) plot.distributions.clearHover()
    }
    TapHandler {
        onTapped: plot.forceActiveFocus(Qt.MouseFocusReason)
    }

    Repeater {
        model: plot._hasData ? Series.ticks(plot._ends, 5) : []

        Item {
            id: tick

            required property real modelData

            y: Math.round(plot._y(modelData))

            Rectangle {
                x: plot._area.x
                width: plot._area.width
                height: 1
                color: plot.theme.withOpacity(plot.theme.stroke, 0.22)
            }
            AppLabel {
                x: plot._area.x - 6 - width
                anchors.verticalCenter: parent.top
                theme: plot.theme
                mono: true
                text: plot._tick(tick.modelData)
                muted: true
                font.pixelSize: Fallback.type.labelSm
            }
        }
    }
    Rectangle {
        x: plot._area.x
        y: plot._area.y
        width: 1
        height: plot._area.height
        color: plot.theme.withOpacity(plot.theme.stroke, 0.55)
    }
    Rectangle {
        x: plot._area.x
        y: plot._area.bottom
        width: plot._area.width
        height: 1
        color: plot.theme.withOpacity(plot.theme.stroke, 0.55)
    }
    AxisEnd {
        anchors.left: parent.left
        anchors.leftMargin: plot._area.x
        text: qsTr("Best hand")
    }
    AxisEnd {
        anchors.right: parent.right
        anchors.rightMargin: plot.width - plot._area.right
        text: qsTr("Worst hand")
    }

    DistributionCurves {
        anchors.fill: parent
        series: plot._hasData ? plot._series : ({oop: [], ip: []})
        ends: plot._ends
        area: plot._area
        oopColor: plot._oopColor
        ipColor: plot._ipColor
    }

    Rectangle {
        x: Math.round(plot._area.x + plot.distributions.hoverT * plot._area.width)
        y: plot._area.y
        width: 1
        height: plot._area.height
        color: plot.theme.withOpacity(plot.theme.textMuted, 0.65)
        visible: plot._hovering
    }
    Mark {
        point: plot._oopPoint
        series: plot._series.oop
        color: plot._oopColor
    }
    Mark {
        point: plot._ipPoint
        series: plot._series.ip
        color: plot._ipColor
    }

    Row {
        id: legend

        anchors.right: parent.right
        anchors.rightMargin: plot.width - plot._area.right
        y: plot._area.y
        spacing: 18
        visible: plot._hasData

        LegendEntry {
            text: qsTr("OOP")
            color: plot._oopColor
        }
        LegendEntry {
            text: qsTr("IP")
            color: plot._ipColor
            dashed: true
        }
    }
    DistributionReading {
        id: reading

        anchors.right: legend.right
        y: legend.y + legend.height + plot.theme.spaceSm
        theme: plot.theme
        isEquity: plot._isEquity
        oopPoint: plot._oopPoint
        ipPoint: plot._ipPoint
        oopColor: plot._oopColor
        ipColor: plot._ipColor
        visible: plot._hovering
    }
    AppLabel {
        id: message

        anchors.centerIn: parent
        theme: plot.theme
        text: {
            if (plot._hasData) {
                return "";
            }
            return plot.distributions.payload.pending ? qsTr("Computing…") : qsTr("No data");
        }
        muted: true
    }
    FocusRing {
        theme: plot.theme
        cornerRadius: plot.theme.radiusSm
        shown: plot.activeFocus
    }

    component AxisEnd: AppLabel {
        y: plot._area.bottom + 8
        theme: plot.theme
        muted: true
        font.pixelSize: Fallback.type.labelSm
        visible: plot._hasData
    }
    component Mark: Rectangle {
        required property var point
        required property var series

        readonly property real _rank: Math.round(plot.distributions.hoverT * (series.length - 1))

        x: plot._area.x + _rank / Math.max(1, series.length - 1) * plot._area.width - width / 2
        y: point ? plot._y(point.value) - height / 2 : 0
        width: 8
        height: 8
        radius: 4
        border.width: 1
        border.color: plot.theme.surface
        visible: plot._hovering && point !== null
    }
    component LegendEntry: Row {
        id: entry

        property alias text: label.text
        property color color
        property bool dashed: false

        spacing: 6

        Item {
            anchors.verticalCenter: parent.verticalCenter
            width: 12
            height: 3

            Rectangle {
                width: entry.dashed ? 5 : 12
                height: 3
                color: entry.color
            }
            Rectangle {
                x: 7
                width: 5
                height: 3
                color: entry.color
                visible: entry.dashed
            }
        }
        AppLabel {
            id: label

            theme: plot.theme
            font.pixelSize: Fallback.type.labelMd
        }
    }
}
