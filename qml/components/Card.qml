import QtQuick
import QtQuick.Templates as T
import Tidewell

// A framed panel as large as what it holds: its children are asked for their implicit sizes, so
// they should be layouts, texts or controls, stretched by anchors.fill: parent.
T.Frame {
    id: card

    property Theme theme: Fallback.theme
    property bool hoverable: false
    property bool elevated: false
    // Of the frame; transparent stands for the theme's stroke.
    property color accentColor: "transparent"

    function _largest(extent: string): real {
        let largest = 0;
        for (let i = 0; i < contentChildren.length; ++i) {
            if (contentChildren[i].visible) {
                largest = Math.max(largest, contentChildren[i][extent]);
            }
        }
        return largest;
    }

    padding: theme.spaceLg
    contentWidth: _largest("implicitWidth")
    contentHeight: _largest("implicitHeight")
    implicitWidth: Math.ceil(contentWidth) + leftPadding + rightPadding
    implicitHeight: Math.ceil(contentHeight) + topPadding + bottomPadding
    scale: hoverable && hover.hovered ? 1.01 : 1

    background: Item {
        SoftShadow {
            anchors.fill: parent
            theme: card.theme
            cornerRadius: card.theme.radiusMd
            visible: card.elevated
        }
        Rectangle {
            anchors.fill: parent
            radius: card.theme.radiusMd
            color: card.theme.surface
        }
        Rectangle {
            anchors.fill: parent
            radius: card.theme.radiusMd
            color: card.theme.surfaceHover
            opacity: card.hoverable && hover.hovered ? 0.3 : 0

            Behavior on opacity { NumberAnimation { duration: 150 } }
        }
        Rectangle {
            anchors.fill: parent
            radius: card.theme.radiusMd
            border.width: 1
            border.color: card.accentColor.a > 0 ? card.accentColor : card.theme.stroke
            gradient: Gradient {
                GradientStop { position: 0; color: Qt.rgba(1, 1, 1, 0.03) }
                GradientStop { position: 0.5; color: Qt.rgba(1, 1, 1, 0) }
            }
        }
    }

    Behavior on scale { NumberAnimation { duration: 150; easing.type: Easing.OutCubic } }

    HoverHandler {
        id: hover

        enabled: card.hoverable
    }
}
