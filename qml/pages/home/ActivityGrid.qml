pragma ComponentBehavior: Bound

import QtQuick
import Tidewell

import "../../logic/home_statistics.mjs" as HomeStatistics

// Half a year of days, a column for each week from Monday to Sunday, the darker the more was
// solved.
Item {
    id: grid

    property Theme theme: Fallback.theme
    // As AppController.solveActivityGridLastSixMonths() gives it.
    property var cells: []

    readonly property int weeks: Math.max(1, Math.floor(cells.length / 7))
    readonly property int cellSize: Math.max(14, Math.floor((width - view.x) / weeks))
    // The cell under the pointer or chosen by the keyboard, -1 for none or for padding.
    readonly property int hoveredIndex: {
        const index = hover.hovered ? _indexAt(hover.point.position) : _focusedIndex;
        return index >= 0 && index < cells.length && !cells[index].isPadding ? index : -1;
    }
    readonly property int _focusedIndex: view.activeFocus ? view.currentIndex : -1
    readonly property var _months: [
        qsTr("Jan"), qsTr("Feb"), qsTr("Mar"), qsTr("Apr"), qsTr("May"), qsTr("Jun"), qsTr("Jul"),
        qsTr("Aug"), qsTr("Sep"), qsTr("Oct"), qsTr("Nov"), qsTr("Dec")
    ]

    function fillOf(cell: var): color {
        if (cell.isPadding) {
            return "transparent";
        }
        if (!cell.solves) {
            return theme.surface2;
        }
        if (cell.solves === 1) {
            return theme.withOpacity(theme.accent, 0.55);
        }
        return cell.solves === 2 ? theme.accentMuted : theme.accent;
    }

    function borderOf(cell: var): color {
        return cell.solves > 0 ? Qt.darker(theme.accent, 1.35) : theme.stroke;
    }

    // Of older days nobody knows what share of the pots it was.
    function _exploitability(cell: var): string {
        const chips = ExploitabilityText.chips(cell.avgExploitability);
        return cell.avgExploitabilityPercent >= 0
            ? qsTr("%1 (%2)").arg(ExploitabilityText.percent(cell.avgExploitabilityPercent)).arg(chips)
            : chips;
    }

    function tipText(index: int): string {
        const cell = cells[index];
        const date = Date.fromLocaleString(Qt.locale("C"), cell.date, "yyyy-MM-dd")
            .toLocaleDateString(Qt.locale(), Locale.ShortFormat);
        const number = (value, decimals) => value.toLocaleString(Qt.locale(), "f", decimals);
        return [
            //: A day of the calendar that is still to come
            cell.isFuture ? qsTr("%1 (future)").arg(date) : date,
            qsTr("Solves: %1").arg(number(cell.solves, 0)),
            qsTr("Avg iters: %1").arg(number(cell.avgIterations, 0)),
            qsTr("Avg expl: %1").arg(_exploitability(cell))
        ].join("\n");
    }

    function _indexAt(position: point): int {
        const column = Math.floor((position.x - view.x) / cellSize);
        const row = Math.floor((position.y - view.y) / cellSize);
        return column < 0 || column >= weeks || row < 0 || row > 6 ? -1 : 7 * column + row;
    }

    implicitWidth: view.x + 14 * weeks
    implicitHeight: view.y + 7 * cellSize

    Repeater {
        model: HomeStatistics.monthStarts(grid.cells)

        Text {
            required property int index
            required property int modelData

            x: view.x + index * grid.cellSize
            text: modelData >= 0 ? grid._months[modelData] : ""
            textFormat: Text.PlainText
            color: grid.theme.textMuted
            font.pixelSize: Fallback.type.labelSm
            visible: modelData >= 0
            Accessible.ignored: true
        }
    }
    Repeater {
        model: [qsTr("Mon"), qsTr("Tue"), qsTr("Wed"), qsTr("Thu"), qsTr("Fri"), qsTr("Sat"),
            qsTr("Sun")]

        Text {
            required property int index
            required property string modelData

            y: view.y + index * grid.cellSize
            width: view.x
            height: grid.cellSize - 2
            text: modelData
            textFormat: Text.PlainText
            color: grid.theme.textMuted
            font.pixelSize: Fallback.type.labelSm
            verticalAlignment: Text.AlignVCenter
            Accessible.ignored: true
        }
    }
    GridView {
        id: view

        x: 34
        y: 20
        width: grid.weeks * cellWidth
        height: 7 * cellHeight
        flow: GridView.FlowTopToBottom
        cellWidth: grid.cellSize
        cellHeight: grid.cellSize
        interactive: false
        activeFocusOnTab: true
        keyNavigationEnabled: true
        model: grid.cells
        currentIndex: grid.cells.length - 1
        Accessible.role: Accessible.Table
        Accessible.name: qsTr("Solve Activity")
        Accessible.description: grid.hoveredIndex >= 0 ? grid.tipText(grid.hoveredIndex) : ""
        Accessible.focusable: true

        delegate: Item {
            id: cell

            required property int index
            required property var modelData

            width: grid.cellSize
            height: grid.cellSize

            Rectangle {
                width: Math.max(10, grid.cellSize - 2)
                height: width
                radius: 3
                color: grid.fillOf(cell.modelData)
                border.width: {
                    if (cell.modelData.isPadding) {
                        return 0;
                    }
                    return grid._focusedIndex === cell.index ? 2 : 1;
                }
                border.color: grid.hoveredIndex === cell.index ? grid.theme.strokeFocus
                                                               : grid.borderOf(cell.modelData)
                opacity: cell.modelData.isFuture ? 0.45 : 1
            }
        }
    }
    HoverHandler {
        id: hover
    }
    AppToolTip {
        readonly property int column: Math.floor(grid.hoveredIndex / 7)
        readonly property int row: grid.hoveredIndex % 7

        theme: grid.theme
        x: view.x + (column + 0.5) * grid.cellSize - width / 2
        y: view.y + row * grid.cellSize - height - 4
        maximumWidth: 190
        delay: 150
        text: grid.hoveredIndex >= 0 ? grid.tipText(grid.hoveredIndex) : ""
        visible: grid.hoveredIndex >= 0
    }
}
