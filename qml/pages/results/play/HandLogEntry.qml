import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tidewell
import "../../../logic/played_hand.mjs" as PlayedHand

// A hand of the log: the board, the user's cards, and what was lost.
T.ItemDelegate {
    id: entry

    required property Theme theme
    // As HandLog keeps it.
    required property var hand
    required property bool current

    readonly property color _tint: hand.isMistake ? theme.danger : theme.success
    readonly property string _cards: PlayedHand.heroHand(hand)
    readonly property string _footer: hand.isMistake
        //: The chips that a mistake has lost
        ? qsTr("EV -%1").arg(hand.evLoss.toLocaleString(Qt.locale(), "f", 3)) : qsTr("Perfect")
    readonly property real _scale: Math.max(0.5, Math.min(0.8, availableWidth / 290))

    implicitHeight: Math.ceil(implicitContentHeight) + topPadding + bottomPadding
    padding: theme.spaceSm
    focusPolicy: Qt.NoFocus
    hoverEnabled: true
    Accessible.role: Accessible.ListItem
    Accessible.name: `${hand.board} ${_cards} ${_footer}`
    Accessible.selectable: true
    Accessible.selected: current

    contentItem: ColumnLayout {
        spacing: 4

        RowLayout {
            spacing: 6

            BoardDisplay {
                theme: entry.theme
                compact: true
                cardScale: entry._scale
                boardText: entry.hand.board
            }
            AppLabel {
                theme: entry.theme
                text: "|"
                muted: true
                Accessible.ignored: true
            }
            MiniHand {
                theme: entry.theme
                cards: entry._cards
                cardScale: entry._scale
            }
            Item {
                Layout.fillWidth: true
            }
        }
        AppLabel {
            theme: entry.theme
            text: entry._footer
            color: entry.theme.legible(entry._tint, entry.theme.surface)
            font.pixelSize: Fallback.type.labelMd
            font.weight: Fallback.type.weightSemibold
            Accessible.ignored: true
        }
    }
    background: Rectangle {
        radius: entry.theme.radiusSm
        color: entry.theme.withOpacity(entry._tint, entry.current ? 0.18 : 0.12)
        border.width: entry.current ? 2 : 1
        border.color: entry.current || entry.hovered ? entry._tint
                                                     : entry.theme.withOpacity(entry._tint, 0.35)
    }
}
