pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tidewell

// What the current node's player does: how often over the whole range, and hand by hand. The matrix is
// as large as the height allows, so that all stands on one screen; where that would make it too small,
// the view scrolls.
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
    readonly property real _smallestMatrix: 13 * matrix.minCellSize + 12 * matrix.cellSpacing
    // What stands above and below the matrix; one line of the legend is counted.
    readonly property real _around: frequencies.implicitHeight + matrixTitle.implicitHeight
        + info.implicitHeight + Fallback.type.labelMd + 8 + theme.spaceMd + 4 * theme.spaceSm
    // Whole cells, so that what stands below is as wide.
    readonly property real _matrixWidth: {
        const side = Math.min(availableHeight - _around, _contentWidth);
        const gaps = 12 * matrix.cellSpacing;
        return Math.max(_smallestMatrix, 13 * Math.floor((side - gaps) / 13) + gaps);
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
            id: frequencies

            spacing: view.theme.spaceSm

            RowLayout {
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
                theme: view.theme
                actions: view.barActions
                Layout.fillWidth: true
                // Lines of labels beyond the first one make the bar higher, not the segments lower.
                Layout.preferredHeight: Math.max(60, implicitHeight + 20)
            }
        }
        RowLayout {
            spacing: view.theme.spaceLg
            Layout.fillWidth: true

            ColumnLayout {
                spacing: view.theme.spaceSm
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
                    theme: view.theme
                    actions: view.actions
                    Layout.fillWidth: true
                }
                NodeInfoBox {
                    id: info

                    theme: view.theme
                    meta: view._meta
                    player: view.player
                    rakePercent: view.rakePercent
                    rakeCap: view.rakeCap
                    Layout.fillWidth: true
                }
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
