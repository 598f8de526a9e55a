pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tidewell

// What the current node's player does: how often over the whole range, and hand by hand. Bar, matrix and
// legend stand on one screen: the matrix is as large as the height allows, and the room at its right
// stays free. Where the height is short, first the money goes there, then the bar and the cells shrink;
// only then the view scrolls.
AppScrollView {
    id: view

    required property NodeReader nodes
    required property StrategyData strategy
    required property int nodeIndex
    required property string player
    // Of the node, for the legend, and the same with values against folding, for the bar.
    required property var actions
    required property var barActions
    required property real rakePercent
    required property real rakeCap
    property string selectedHand: ""

    readonly property var _meta: nodes.meta(nodeIndex)
    readonly property bool _empty: Object.keys(strategy.weights).length === 0
    readonly property real _smallestMatrix: _sideOf(matrix.minCellSize)
    // Beside the matrix.
    readonly property real _freeWidth: 320
    // The bar with segments of a good height, and with as low ones as its labels leave.
    readonly property real _highBar: Math.max(60, bar.implicitHeight + 20)
    readonly property real _lowBar: Math.max(60, bar.implicitHeight)
    readonly property bool _moneyBeside: !_isRoomy(_highBar, true)
        && _contentWidth >= _smallestMatrix + theme.spaceLg + _freeWidth
    readonly property bool _moneyBelow: !_moneyBeside && _isRoomy(_lowBar, true)
    readonly property real _barHeight: _isRoomy(_highBar, _moneyBelow) ? _highBar : _lowBar
    // Whole cells, so that what stands below is as wide.
    readonly property real _matrixWidth: {
        const widest = Math.max(_smallestMatrix, _contentWidth - theme.spaceLg - _freeWidth);
        const side = Math.min(_heightLeft(_barHeight, _moneyBelow), widest);
        return _sideOf(Math.max(matrix.minCellSize, Math.floor((side - _sideOf(0)) / 13)));
    }
    // Beside the scroll bar, whether it is there or not: otherwise it would come and go with the width.
    readonly property real _contentWidth: availableWidth - theme.spaceMd

    signal handClicked(hand: string)

    function copyMatrix(): void {
        matrix.copy();
    }

    // By a part of the height.
    function scrollBy(part: real): void {
        const flickable = contentItem as Flickable;
        const most = Math.max(0, flickable.contentHeight - flickable.height);
        const y = flickable.contentY + part * flickable.height;
        flickable.contentY = Math.max(0, Math.min(y, most));
    }

    // Of the matrix.
    function _sideOf(cellSize: real): real {
        return 13 * cellSize + 12 * matrix.cellSpacing;
    }

    // What the view leaves for the matrix.
    function _heightLeft(barHeight: real, moneyBelow: bool): real {
        const lines = Math.ceil(legend.lineWidth / _sideOf(28));
        const around = barTitle.implicitHeight + barHeight + matrixTitle.implicitHeight
            + lines * legend.lineHeight + (moneyBelow ? money.implicitHeight + theme.spaceSm : 0);
        return availableHeight - around - theme.spaceMd - 3 * theme.spaceSm;
    }

    // Whether cells are of a good size then.
    function _isRoomy(barHeight: real, moneyBelow: bool): bool {
        return _heightLeft(barHeight, moneyBelow) >= _sideOf(28);
    }

    // Scrolls as far as a cell of the matrix asks for it.
    function _reveal(cell: rect): void {
        const flickable = contentItem as Flickable;
        const top = matrix.mapToItem(column, 0, cell.y).y - theme.spaceSm;
        const least = top + cell.height + 2 * theme.spaceSm - flickable.height;
        flickable.contentY = Math.max(0, Math.min(Math.max(flickable.contentY, least), top));
    }

    function _hint(): string {
        if (_meta.nodeType === "chance") {
            return _meta.chanceDeal === "river"
                ? qsTr("Click “Deal River” in the game tree to choose the card.")
                : qsTr("Click “Deal Turn” in the game tree to choose the card.");
        }
        return nodes.nodeCount() > 0 ? qsTr("Nothing is known of the hands at this node.")
                                     : qsTr("There are no results yet.");
    }

    // It takes what it is given: sizes that follow from its content would go round in a circle.
    implicitWidth: 300
    implicitHeight: 200
    contentWidth: _contentWidth
    contentHeight: column.implicitHeight
    activeFocusOnTab: false

    ColumnLayout {
        id: column

        width: view._contentWidth
        spacing: view.theme.spaceMd

        ColumnLayout {
            spacing: view.theme.spaceSm

            RowLayout {
                id: barTitle

                spacing: view.theme.spaceSm

                PanelTitle {
                    text: qsTr("Action Frequencies")
                }
                AppLabel {
                    theme: view.theme
                    //: What the figures of the actions count
                    text: qsTr("of the whole starting range")
                    muted: true
                    font.pixelSize: Fallback.type.labelMd
                    visible: view._meta.nodeType === "decision"
                }
            }
            ActionBar {
                id: bar

                theme: view.theme
                actions: view.barActions
                Layout.fillWidth: true
                Layout.preferredHeight: view._barHeight
            }
        }
        GridLayout {
            columnSpacing: view.theme.spaceLg
            rowSpacing: view.theme.spaceSm

            ColumnLayout {
                spacing: view.theme.spaceSm
                Layout.row: 0
                Layout.column: 0
                Layout.preferredWidth: view._matrixWidth
                Layout.maximumWidth: view._matrixWidth
                Layout.alignment: Qt.AlignTop

                PanelTitle {
                    id: matrixTitle

                    text: qsTr("Strategy by Hand")
                }
                HandMatrix {
                    id: matrix

                    theme: view.theme
                    weights: view.strategy.weights
                    colors: view.strategy.colors
                    actionTypes: view.strategy.actionTypes
                    actionProbs: view.strategy.actionProbs
                    weightDisplayMode: "verticalFill"
                    cellSize: 34
                    autoFitToWidth: true
                    minCellSize: 20
                    showLabels: true
                    selectable: true
                    selectedHand: view.selectedHand
                    onHandClicked: hand => view.handClicked(hand)
                    onMarkedCellChanged: if (markedCell.height > 0) view._reveal(markedCell)
                    Layout.fillWidth: true

                    // Over the grid, which keeps its size whatever there is to say.
                    Rectangle {
                        anchors.centerIn: parent
                        width: Math.min(Math.ceil(hint.implicitWidth), parent.width)
                        height: Math.ceil(hint.implicitHeight)
                        radius: view.theme.radiusSm
                        color: view.theme.surface2
                        border.width: 1
                        border.color: view.theme.stroke
                        visible: view._empty

                        AppLabel {
                            id: hint

                            width: parent.width
                            theme: view.theme
                            text: view._hint()
                            font.pixelSize: Fallback.type.bodySm
                            wrapMode: Text.Wrap
                            horizontalAlignment: Text.AlignHCenter
                            padding: view.theme.spaceMd
                        }
                    }
                }
                StrategyLegend {
                    id: legend

                    theme: view.theme
                    actions: view.actions
                    Layout.fillWidth: true
                }
            }
            NodeInfoBox {
                id: money

                theme: view.theme
                meta: view._meta
                player: view.player
                rakePercent: view.rakePercent
                rakeCap: view.rakeCap
                Layout.row: view._moneyBeside ? 0 : 1
                Layout.column: view._moneyBeside ? 1 : 0
                Layout.preferredWidth: view._moneyBeside ? view._freeWidth : view._matrixWidth
                // Level with the matrix.
                Layout.topMargin: view._moneyBeside ? matrixTitle.height + view.theme.spaceSm : 0
                Layout.alignment: Qt.AlignTop
            }
        }
    }

    component PanelTitle: AppLabel {
        theme: view.theme
        font.pixelSize: Fallback.type.bodyLg
        font.weight: Fallback.type.weightSemibold
        Accessible.role: Accessible.Heading
    }
}
