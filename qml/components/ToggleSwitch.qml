import QtQuick
import QtQuick.Templates as T
import Tidewell

// On or off, at once. With `text` the label stands at its right; where the label stands elsewhere,
// set Accessible.name.
T.Switch {
    id: toggle

    property Theme theme: Fallback.theme

    implicitWidth: text === "" ? implicitIndicatorWidth : Math.ceil(implicitContentWidth)
    implicitHeight: Math.max(implicitIndicatorHeight, Math.ceil(implicitContentHeight))
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

    indicator: Item {
        implicitWidth: 44
        implicitHeight: 24
        anchors.verticalCenter: parent.verticalCenter

        Rectangle {
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width
            height: 18
            radius: height / 2
            color: {
                if (toggle.checked) {
                    return toggle.hovered ? toggle.theme.accentHover : toggle.theme.accent;
                }
                return toggle.hovered ? toggle.theme.surfaceHover : toggle.theme.surface3;
            }
            border.width: toggle.checked ? 0 : 1
            border.color: toggle.theme.stroke

            Behavior on color { ColorAnimation { duration: toggle.theme.durationFast } }

            Rectangle {
                x: 2 + toggle.visualPosition * (parent.width - width - 4)
                anchors.verticalCenter: parent.verticalCenter
                width: 14
                height: 14
                radius: height / 2
                color: toggle.checked || toggle.theme.dark ? "white" : toggle.theme.textMuted

                Behavior on x {
                    enabled: !toggle.pressed
                    NumberAnimation {
                        duration: toggle.theme.durationFast
                        easing.type: Easing.OutCubic
                    }
                }
            }
            FocusRing {
                theme: toggle.theme
                cornerRadius: parent.radius
                shown: toggle.visualFocus
            }
        }
    }
    contentItem: Text {
        leftPadding: toggle.implicitIndicatorWidth + toggle.spacing
        text: toggle.text
        textFormat: Text.PlainText
        color: toggle.theme.text
        font: toggle.font
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        visible: toggle.text !== ""
        Accessible.ignored: true
    }
}
