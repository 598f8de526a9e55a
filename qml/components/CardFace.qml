import QtQuick
import Tidewell

// The face of a card. A mini one has only its corner.
Rectangle {
    id: face

    required property Theme theme
    required property string rank
    required property string suit
    required property bool mini
    // Scale of a card of base size.
    required property real unit
    required property real cornerRadius
    required property bool selected

    radius: cornerRadius
    border.width: selected ? 2 : 1
    border.color: selected ? theme.accent : theme.cardBorder
    gradient: Gradient {
        GradientStop { position: 0; color: face.theme.cardFace }
        GradientStop { position: 1; color: Qt.darker(face.theme.cardFace, 1.03) }
    }

    CardCorner {
        x: 5 * face.unit
        y: (face.mini ? 2 : 4) * face.unit
        theme: face.theme
        rank: face.rank
        suit: face.suit
        pixelSize: Math.round((face.mini ? 18 : 14) * face.unit)
    }
    CardCorner {
        x: parent.width - width - 5 * face.unit
        y: parent.height - height - 4 * face.unit
        theme: face.theme
        rank: face.rank
        suit: face.suit
        pixelSize: Math.round(14 * face.unit)
        rotation: 180
        visible: !face.mini
    }
    Text {
        anchors.centerIn: parent
        text: CardText.symbol(face.suit)
        color: face.theme.suitColor(face.suit)
        font.pixelSize: Math.round(24 * face.unit)
        visible: !face.mini
        Accessible.ignored: true
    }
}
