import QtQuick
import QtQuick.Templates as T
import Tidewell

// Yes or no, with its label at the right.
T.CheckBox {
    id: box

    property Theme theme: Fallback.theme

    implicitWidth: text === "" ? implicitIndicatorWidth : Math.ceil(implicitContentWidth)
    implicitHeight: Math.max(24, Math.ceil(implicitContentHeight))
    padding: 0
    spacing: theme.spaceSm
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    font.pixelSize: Fallback.type.bodySm
    opacity: enabled ? 1 : 0.5
    Accessible.role: Accessible.CheckBox
    Accessible.name: text
    Accessible.checkable: true
    Accessible.checked: checked

    indicator: Rectangle {
        implicitWidth: 18
        implicitHeight: 18
        anchors.verticalCenter: parent.verticalCenter
        radius: box.theme.radiusXs
        color: box.checked ? box.theme.accent : box.theme.surface2
        border.width: 1
        border.color: {
            if (box.checked) {
                return box.theme.accent;
            }
            return box.hovered ? box.theme.strokeFocus : box.theme.stroke;
        }

        Text {
            anchors.centerIn: parent
            text: "✓"
            color: "white"
            font.pixelSize: 13
            font.weight: Fallback.type.weightBold
            visible: box.checked
            Accessible.ignored: true
        }
        FocusRing {
            theme: box.theme
            cornerRadius: parent.radius
            shown: box.visualFocus
        }
    }
    contentItem: Text {
        leftPadding: box.implicitIndicatorWidth + box.spacing
        text: box.text
        textFormat: Text.PlainText
        color: box.theme.text
        font: box.font
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        visible: box.text !== ""
        Accessible.ignored: true
    }
}
