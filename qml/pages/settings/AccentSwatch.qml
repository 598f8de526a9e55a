import QtQuick
import QtQuick.Templates as T
import Tidewell

// An accent colour to choose.
T.AbstractButton {
    id: swatch

    required property string hex
    property Theme theme: Fallback.theme

    readonly property bool isCurrent: Qt.colorEqual(hex, theme.accent)

    implicitWidth: 28
    implicitHeight: 28
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    Accessible.role: Accessible.RadioButton
    Accessible.name: text
    Accessible.description: hex
    Accessible.checkable: true
    Accessible.checked: isCurrent

    Keys.onReturnPressed: swatch.clicked()
    Keys.onEnterPressed: swatch.clicked()

    background: Rectangle {
        radius: width / 2
        color: "transparent"
        border.width: swatch.isCurrent ? 2 : 1
        border.color: swatch.isCurrent ? swatch.theme.strokeFocus : swatch.theme.stroke
        scale: swatch.hovered ? 1.1 : 1

        Behavior on scale { NumberAnimation { duration: swatch.theme.durationFast } }

        // Apart from the border, which may have the same colour.
        Rectangle {
            anchors.fill: parent
            anchors.margins: swatch.isCurrent ? 4 : 1
            radius: width / 2
            color: swatch.hex
        }
        FocusRing {
            theme: swatch.theme
            cornerRadius: parent.radius
            shown: swatch.visualFocus
        }
    }

    AppToolTip {
        theme: swatch.theme
        //: A colour's name and its code: "Green (#3FB950)"
        text: qsTr("%1 (%2)").arg(swatch.text).arg(swatch.hex)
        visible: swatch.hovered || swatch.visualFocus
    }
}
