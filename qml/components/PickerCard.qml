import QtQuick
import Tidewell

// One card of the picker, as a tile with its rank.
Rectangle {
    id: card

    required property Theme theme
    required property string rank
    required property string suit
    required property color suitColor
    required property bool used

    signal chosen

    // What assistive programs call when they press the card.
    function accessiblePressAction(): void {
        chosen();
    }

    implicitWidth: 28
    implicitHeight: 28
    radius: theme.radiusXs + 2
    color: theme.surface2
    border.width: 1
    border.color: !used && area.containsMouse ? suitColor : theme.stroke
    opacity: used ? 0.3 : 1
    scale: !used && area.containsMouse ? 1.1 : 1
    Accessible.role: Accessible.Button
    Accessible.name: CardText.spoken(rank, suit)
    Accessible.focusable: !used
    Accessible.focused: activeFocus

    Behavior on scale { NumberAnimation { duration: 80 } }

    Text {
        anchors.centerIn: parent
        text: card.rank
        color: card.suitColor
        font.pixelSize: Fallback.type.bodyMd
        font.weight: Fallback.type.weightSemibold
        Accessible.ignored: true
    }
    FocusRing {
        theme: card.theme
        cornerRadius: card.radius
        gap: -1
        shown: card.activeFocus
    }
    MouseArea {
        id: area

        anchors.fill: parent
        hoverEnabled: true
        cursorShape: card.used ? Qt.ForbiddenCursor : Qt.PointingHandCursor
        onClicked: if (!card.used) card.chosen()
    }
}
