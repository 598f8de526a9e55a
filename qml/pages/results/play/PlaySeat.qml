pragma ComponentBehavior: Bound

import QtQuick
import Tidewell

// A seat of the table: its two cards, which stand in the middle, and its stack beside them. What is
// declared in it stands at the other side.
Item {
    id: seat

    required property Theme theme
    // "OOP" or "IP".
    required property string name
    required property string card1
    required property string card2
    required property bool faceDown
    // In chips, NaN where it is not known.
    required property real stack
    property bool dealer: false
    // It is this seat's turn.
    property bool acts: false
    // Of the picture, 1 on a large table.
    property real unit: 1
    default property alias beside: place.data

    readonly property bool _dealt: card1 !== ""

    implicitWidth: cards.width
    implicitHeight: cards.height
    Accessible.role: Accessible.Grouping
    Accessible.name: name

    Rectangle {
        anchors.fill: cards
        anchors.margins: -5
        radius: seat.theme.radiusSm
        color: "transparent"
        border.width: 2
        border.color: seat.theme.gold
        visible: seat.acts
    }
    Row {
        id: cards

        anchors.centerIn: parent
        spacing: 4

        Repeater {
            model: [seat.card1, seat.card2]

            PlayingCard {
                required property string modelData

                theme: seat.theme
                rank: modelData.charAt(0)
                suit: modelData.charAt(1)
                faceDown: seat.faceDown && seat._dealt
                sizeScale: 0.95 * seat.unit
                hoverable: false
            }
        }
    }
    Row {
        anchors.right: cards.left
        anchors.rightMargin: 14
        anchors.verticalCenter: cards.verticalCenter
        spacing: seat.theme.spaceSm

        Rectangle {
            anchors.verticalCenter: parent.verticalCenter
            width: 24
            height: 24
            radius: 12
            color: seat.theme.cardFace
            border.width: 1
            border.color: seat.theme.stroke
            visible: seat.dealer
            Accessible.role: Accessible.StaticText
            Accessible.name: qsTr("Dealer")

            Text {
                anchors.centerIn: parent
                //: On the dealer button
                text: qsTr("D")
                color: seat.theme.suitSpades
                font.pixelSize: Fallback.type.labelMd
                font.weight: Fallback.type.weightBold
                Accessible.ignored: true
            }
        }
        Column {
            spacing: 2

            AppLabel {
                anchors.right: parent.right
                theme: seat.theme
                text: seat.name
                muted: true
                font.pixelSize: Fallback.type.labelMd
                font.weight: Fallback.type.weightSemibold
            }
            AppLabel {
                anchors.right: parent.right
                theme: seat.theme
                text: qsTr("Stack: %1").arg(Number.isFinite(seat.stack)
                    ? seat.stack.toLocaleString(Qt.locale(), "f", 2) : qsTr("—"))
                font.pixelSize: Fallback.type.bodySm
            }
        }
    }
    Item {
        id: place

        anchors.left: cards.right
        anchors.leftMargin: 14
        anchors.verticalCenter: cards.verticalCenter
    }
}
