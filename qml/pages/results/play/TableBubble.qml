pragma ComponentBehavior: Bound

import QtQuick
import Tidewell

// Something that is said at a seat: what it has done, or what the user's choice was worth.
Rectangle {
    id: bubble

    required property Theme theme
    property string text: ""
    property string subtitle: ""
    property color tint: theme.textMuted
    property real maximumWidth: 260

    implicitWidth: Math.min(maximumWidth,
                            Math.ceil(Math.max(first.implicitWidth, second.implicitWidth)) + 2 * theme.spaceMd)
    implicitHeight: Math.ceil(column.implicitHeight) + 2 * theme.spaceSm
    radius: Math.min(theme.radiusMd, height / 2)
    color: theme.mixed(theme.surface, tint, 0.25)
    border.width: 1
    border.color: tint
    visible: text !== ""
    Accessible.role: Accessible.StaticText
    Accessible.name: subtitle === "" ? text : `${text}, ${subtitle}`

    Column {
        id: column

        x: bubble.theme.spaceMd
        y: bubble.theme.spaceSm
        width: parent.width - 2 * bubble.theme.spaceMd

        BubbleText {
            id: first

            text: bubble.text
            font.weight: Fallback.type.weightSemibold
        }
        BubbleText {
            id: second

            text: bubble.subtitle
            font.pixelSize: Fallback.type.labelMd
            visible: text !== ""
        }
    }

    component BubbleText: AppLabel {
        width: parent.width
        theme: bubble.theme
        elide: Text.ElideRight
        font.pixelSize: Fallback.type.bodyMd
        Accessible.ignored: true
    }
}
