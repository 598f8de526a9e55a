import QtQuick
import Tidewell

// At the left of a box of the game tree: a button where there is something to unfold, otherwise a dot.
Item {
    id: mark

    required property Theme theme
    required property bool foldable
    required property bool expanded
    required property color textColor
    required property color dotColor

    signal toggled

    implicitWidth: 20
    implicitHeight: 20

    Rectangle {
        anchors.centerIn: parent
        width: 8
        height: 8
        radius: 4
        color: mark.dotColor
        visible: !mark.foldable
    }
    Rectangle {
        anchors.fill: parent
        radius: mark.theme.radiusXs
        color: hover.hovered ? mark.theme.surfaceHover : mark.theme.surface
        border.width: 1
        border.color: mark.theme.stroke
        visible: mark.foldable

        Text {
            anchors.centerIn: parent
            text: mark.expanded ? "−" : "+"
            color: mark.theme.text
            font.pixelSize: Fallback.type.bodyMd
            font.weight: Fallback.type.weightBold
            Accessible.ignored: true
        }
        HoverHandler {
            id: hover
        }
        TapHandler {
            gesturePolicy: TapHandler.ReleaseWithinBounds
            onTapped: mark.toggled()
        }
    }
}
