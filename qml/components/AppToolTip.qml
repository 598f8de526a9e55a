import QtQuick
import QtQuick.Templates as T
import Tidewell

// A line or two of help at a control: declared in it, visible while it is hovered.
T.ToolTip {
    id: tooltip

    property Theme theme: Fallback.theme
    // In pixels; longer text goes on in a new line.
    property real maximumWidth: 320

    x: parent ? Math.round((parent.width - implicitWidth) / 2) : 0
    y: -implicitHeight - 6
    implicitWidth: Math.min(maximumWidth,
                            Math.ceil(implicitContentWidth) + leftPadding + rightPadding)
    implicitHeight: Math.ceil(implicitContentHeight) + topPadding + bottomPadding
    margins: 6
    horizontalPadding: 10
    verticalPadding: 6
    delay: 500
    // A press goes through to what lies beneath.
    enabled: false
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent
                 | T.Popup.CloseOnReleaseOutsideParent

    contentItem: Text {
        text: tooltip.text
        textFormat: Text.PlainText
        color: tooltip.theme.text
        font.pixelSize: Fallback.type.labelMd
        wrapMode: Text.Wrap
        Accessible.role: Accessible.ToolTip
        Accessible.name: text
    }
    background: Rectangle {
        radius: tooltip.theme.radiusXs + 2
        color: tooltip.theme.surface3
        border.width: 1
        border.color: tooltip.theme.stroke
    }

    enter: Transition {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: 100 }
    }
    exit: Transition {
        NumberAnimation { property: "opacity"; from: 1; to: 0; duration: 100 }
    }
}
