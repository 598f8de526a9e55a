import QtQuick
import QtQuick.Templates as T
import Tidewell

// Thin, and only there where there is something to scroll.
T.ScrollBar {
    id: bar

    property Theme theme: Fallback.theme

    implicitWidth: Math.ceil(implicitContentWidth) + leftPadding + rightPadding
    implicitHeight: Math.ceil(implicitContentHeight) + topPadding + bottomPadding
    padding: 2
    minimumSize: 0.08
    visible: policy === T.ScrollBar.AlwaysOn
             || policy === T.ScrollBar.AsNeeded && size < 1
    Accessible.role: Accessible.ScrollBar

    contentItem: Rectangle {
        implicitWidth: 6
        implicitHeight: 6
        radius: 3
        color: bar.pressed || bar.hovered ? bar.theme.textFaint : bar.theme.stroke
    }
}
