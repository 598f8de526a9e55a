pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tidewell
import "../../logic/strategy_layout.mjs" as StrategyLayout
import "../../logic/suit_map.mjs" as Suits

// What the current node's player does: how often in all, hand by hand, class by class, and
// the money there. The first screen holds all but, where the height is short, the money.
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
    required property real uiScale
    required property HandList hands
    // Of the node, as the controller tells them.
    required property var buckets
    // Gives the entries of an ActionBar for a list of probabilities.
    required property var actionsFor
    property string selectedHand: ""
    // A click or a drag over the matrix locks hands.
    property bool painting: false

    // At the right of the money, and below it.
    property alias nodeButtons: nodeButtons.data
    property alias nodeTools: nodeTools.data

    // Index of the action that was chosen in the bar, -1 for none.
    property int chosenAction: -1

    readonly property var _meta: nodes.meta(nodeIndex)
    // Why nobody can say what anything is worth here; empty where it is known.
    readonly property string _unknownEv: nodes.opponentComes(nodeIndex)
        ? "" : qsTr("The other player never comes here")
    // A layout takes no other sizes while it lays out, which is when the room changes: it is given them
    // right afterwards.
    readonly property var _sizes: _settledSizes ?? _wantedSizes
    property var _settledSizes: null
    readonly property var _wantedSizes: StrategyLayout.shareOut({
        width: _contentWidth, height: availableHeight, scale: uiScale,
        gap: theme.spaceMd, line: theme.spaceSm,
        barTitle: barTitle.implicitHeight,
        highBar: Math.max(60, bar.implicitHeight + 20), lowBar: Math.max(60, bar.implicitHeight),
        matrixTitle: matrixPanel.titleHeight,
        legendWidth: matrixPanel.legend.lineWidth, legendLine: matrixPanel.legend.lineHeight,
        smallestCell: matrixPanel.matrix.minCellSize, cellGap: matrixPanel.matrix.cellSpacing,
        money: {
            wide: Math.max(money.wideHeight, nodeButtons.implicitHeight),
            narrow: Math.max(money.narrowHeight, nodeButtons.implicitHeight),
            least: money.leastWideWidth
                + (nodeButtons.implicitWidth > 0 ? nodeButtons.implicitWidth + theme.spaceSm : 0),
        },
        tools: painting ? _toolsRoom : 0,
    })
    // Locks are painted with what is painted in sight: where the height is short, the lists give way.
    readonly property bool _toolsBeside: painting && _sizes.beside && !_sizes.moneyBelow
    // What the panel of the locks takes at most without a mix. Its own height follows from where it
    // stands, and so cannot decide on that.
    readonly property real _toolsRoom: 220
    // Beside the scroll bar, whether it is there or not: otherwise it would come and go with the width.
    readonly property real _contentWidth: availableWidth - theme.spaceMd

    signal handClicked(hand: string)
    signal bucketClicked(name: string)
    signal whyRequested(c1: string, c2: string, actionIndex: int)
    signal handDragged(hand: string)
    signal handsHereChosen(handsHere: bool)

    function copyMatrix(): void {
        matrixPanel.matrix.copy();
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
        const top = matrixPanel.matrix.mapToItem(column, 0, cell.y).y - theme.spaceSm;
        const least = top + cell.height + 2 * theme.spaceSm - flickable.height;
        flickable.contentY = Math.max(0, Math.min(Math.max(flickable.contentY, least), top));
    }

    function _settle(): void {
        _settledSizes = _wantedSizes;
    }

    on_WantedSizesChanged: {
        // qmllint disable
        Qt.callLater(_settle);
        // qmllint enable
    }
    onActionsChanged: chosenAction = -1
    onNodeIndexChanged: whyPopup.close()

    // It takes what it is given: sizes that follow from its content would go round in a circle.
    implicitWidth: 300
    implicitHeight: 200
    contentWidth: _contentWidth
    contentHeight: column.implicitHeight
    activeFocusOnTab: false

    WhyPopup {
        id: whyPopup

        parent: handDetails
        theme: view.theme
        controller: view.nodes.controller
        suits: view.hands.suits
    }
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
                    theme: view.theme
                    text: qsTr("Action Frequencies")
                }
                RangeChoice {
                    theme: view.theme
                    handsHere: view.nodes.handsHere
                    available: view.nodes.knowsHandsHere(view.nodeIndex)
                    visible: view._meta.nodeType === "decision"
                    onChosen: handsHere => view.handsHereChosen(handsHere)
                }
            }
            ActionBar {
                id: bar

                theme: view.theme
                actions: view.barActions
                interactive: view._meta.nodeType === "decision"
                selectedAction: view.barActions[view.chosenAction]?.name ?? ""
                unknownEv: view._unknownEv
                onActionClicked: index =>
                    view.chosenAction = index === view.chosenAction ? -1 : index
                Layout.fillWidth: true
                Layout.preferredHeight: view._sizes.barHeight
            }
        }
        // Matrix and money at the left, the lists at the right; the money below both where it is not
        // below the matrix alone, and the lists below all of it in a narrow view.
        GridLayout {
            columnSpacing: view.theme.spaceMd
            rowSpacing: view.theme.spaceSm

            MatrixPanel {
                id: matrixPanel

                theme: view.theme
                nodes: view.nodes
                strategy: view.strategy
                nodeIndex: view.nodeIndex
                actions: view.actions
                selectedHand: view.selectedHand
                litHand: handDetails.litHand
                unknownEv: handDetails.unknownEv
                hands: view.hands
                buckets: view.buckets
                painting: view.painting
                onHandClicked: hand => view.handClicked(hand)
                onHandDragged: hand => view.handDragged(hand)
                Layout.row: 0
                Layout.column: 0
                Layout.preferredWidth: view._sizes.matrixWidth
                Layout.maximumWidth: view._sizes.matrixWidth
                Layout.alignment: Qt.AlignTop

                Connections {
                    target: matrixPanel.matrix

                    function onMarkedCellChanged(): void {
                        const cell = matrixPanel.matrix.markedCell;
                        if (cell.height > 0) {
                            view._reveal(cell);
                        }
                    }
                }
            }
            ColumnLayout {
                spacing: view.theme.spaceSm
                Layout.row: view._toolsBeside ? 0 : 1
                Layout.column: view._toolsBeside ? 1 : 0
                Layout.columnSpan: view._sizes.moneyBelow || view._toolsBeside ? 1 : 2
                Layout.preferredWidth: {
                    if (view._toolsBeside) {
                        return view._contentWidth - view._sizes.matrixWidth - view.theme.spaceMd;
                    }
                    return view._sizes.moneyBelow ? view._sizes.matrixWidth : view._contentWidth;
                }
                Layout.maximumWidth: Layout.preferredWidth
                Layout.alignment: Qt.AlignTop

                RowLayout {
                    spacing: view.theme.spaceSm

                    NodeInfoBox {
                        id: money

                        theme: view.theme
                        meta: view._meta
                        player: view.player
                        rakePercent: view.rakePercent
                        rakeCap: view.rakeCap
                        wide: view._sizes.moneyWide
                        lockedHands: view.painting || view.strategy.lockedHands.length > 0
                            ? view.strategy.lockedHands.length : -1
                        Layout.fillWidth: true
                        Layout.alignment: Qt.AlignTop
                    }
                    ColumnLayout {
                        id: nodeButtons

                        spacing: view.theme.spaceSm
                        visible: implicitWidth > 0
                        Layout.alignment: Qt.AlignTop
                    }
                }
                ColumnLayout {
                    id: nodeTools

                    spacing: view.theme.spaceSm
                    visible: view.painting
                }
            }
            RowLayout {
                spacing: view.theme.spaceMd
                visible: !view._toolsBeside
                Layout.row: view._sizes.beside ? 0 : 2
                Layout.column: view._sizes.beside ? 1 : 0
                Layout.rowSpan: view._sizes.beside && view._sizes.moneyBelow ? 2 : 1
                Layout.columnSpan: view._sizes.beside ? 1 : 2
                Layout.fillWidth: true
                Layout.preferredHeight: view._sizes.listsHeight
                Layout.alignment: Qt.AlignTop

                BucketsPanel {
                    theme: view.theme
                    buckets: view.buckets
                    settled: view.hands.settled
                    actions: view.actions
                    actionsFor: view.actionsFor
                    selected: view.hands.bucket
                    onChosen: name => view.bucketClicked(name)
                    Layout.preferredWidth: StrategyLayout.bucketsWidth(view.uiScale)
                    Layout.fillHeight: true
                }
                HandDetails {
                    id: handDetails

                    theme: view.theme
                    hands: view.hands
                    actionsFor: view.actionsFor
                    uiScale: view.uiScale
                    unknownEv: view._unknownEv
                    onWhyRequested: (c1, c2, action) => {
                        whyPopup.ask(view.nodeIndex, Suits.keptCard(c1, view.hands.suits),
                                     Suits.keptCard(c2, view.hands.suits), action,
                                     view.nodes.actions(view.nodeIndex)[action]);
                        view.whyRequested(c1, c2, action);
                    }
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                }
            }
        }
    }
}
