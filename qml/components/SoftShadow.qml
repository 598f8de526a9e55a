pragma ComponentBehavior: Bound

import QtQuick
import Qt5Compat.GraphicalEffects
import Tidewell

// The shadow of a rounded rectangle that stands above its surface, to be drawn before it and with
// its geometry. Without a graphics card a few steps of darkness stand in for the glow.
Item {
    id: shadow

    property Theme theme: Fallback.theme
    property real cornerRadius: theme.radiusMd
    // How far the shadow reaches and how far down it is moved, in pixels.
    property real reach: 12
    property real offset: 4
    property real strength: theme.shadowOpacity

    readonly property bool _software: GraphicsInfo.api === GraphicsInfo.Software
    readonly property int _steps: 4

    OnDemand {
        wanted: shadow.visible && !shadow._software
        visible: wanted

        RectangularGlow {
            y: shadow.offset
            width: shadow.width
            height: shadow.height
            glowRadius: shadow.reach
            cornerRadius: shadow.cornerRadius + shadow.reach
            spread: 0
            color: Qt.rgba(0, 0, 0, shadow.strength)
        }
    }
    Repeater {
        model: shadow.visible && shadow._software ? shadow._steps : 0

        Rectangle {
            required property int index
            readonly property real spread: index * shadow.reach / shadow._steps

            x: -spread
            y: shadow.offset - spread
            width: shadow.width + 2 * spread
            height: shadow.height + 2 * spread
            radius: shadow.cornerRadius + spread
            color: Qt.rgba(0, 0, 0, shadow.strength / (2 * shadow._steps))
        }
    }
}
