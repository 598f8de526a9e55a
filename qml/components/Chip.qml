import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tidewell

// A small pill of text: a label, a switchable filter or an entry that can be taken away.
T.Control {
    id: chip

    property Theme theme: Fallback.theme
    property string text: ""
    property string iconText: ""
    property color tint: theme.surface2
    property color stroke: theme.stroke
    property color textColor: theme.text
    property bool removable: false
    property bool clickable: false

    readonly property bool _hovered: clickable && enabled && area.containsMouse

    signal clicked
    signal removeClicked

    function _keyPressed(event: var): void {
        const isEnter = event.key === Qt.Key_Return || event.key === Qt.Key_Enter;
        const isDelete = event.key === Qt.Key_Delete || event.key === Qt.Key_Backspace;
        if (clickable && (isEnter || event.key === Qt.Key_Space)) {
            clicked();
        } else if (removable && isDelete) {
            removeClicked();
        } else {
            return;
        }
        event.accepted = true;
    }

    // What assistive programs call when they press the chip.
    function accessiblePressAction(): void {
        if (clickable) {
            clicked();
        }
    }

    leftPadding: theme.spaceMd
    rightPadding: removable ? theme.spaceXs : theme.spaceMd
    implicitWidth: Math.ceil(implicitContentWidth) + leftPadding + rightPadding
    implicitHeight: Math.max(28, Math.ceil(implicitContentHeight))
    font.pixelSize: Fallback.type.labelMd
    font.weight: Fallback.type.weightMedium
    focusPolicy: clickable || removable ? Qt.StrongFocus : Qt.NoFocus
    scale: _hovered ? 1.05 : 1
    opacity: enabled ? 1 : 0.5
    Accessible.role: clickable ? Accessible.Button : Accessible.StaticText
    Accessible.name: text

    Keys.onPressed: event => chip._keyPressed(event)

    contentItem: RowLayout {
        spacing: 6

        Text {
            text: chip.iconText
            textFormat: Text.PlainText
            color: chip.textColor
            font: chip.font
            visible: text !== ""
            Accessible.ignored: true
        }
        Text {
            text: chip.text
            textFormat: Text.PlainText
            color: chip.textColor
            font: chip.font
            elide: Text.ElideRight
            Accessible.ignored: true
            Layout.fillWidth: true
        }
        IconButton {
            implicitWidth: 20
            implicitHeight: 20
            theme: chip.theme
            //: On the button that takes an entry away; %1 is the entry
            tip: qsTr("Remove %1").arg(chip.text)
            iconText: "×"
            iconSize: 14
            color: chip.textColor
            focusPolicy: Qt.NoFocus
            visible: chip.removable
            onClicked: chip.removeClicked()
        }
    }
    background: Rectangle {
        radius: height / 2
        color: chip.tint
        border.width: 1
        border.color: chip.stroke

        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: chip.theme.text
            opacity: area.pressed ? 0.1 : 0.05
            visible: chip._hovered
        }
        FocusRing {
            theme: chip.theme
            cornerRadius: parent.radius
            shown: chip.visualFocus
        }
    }

    Behavior on scale { NumberAnimation { duration: chip.theme.durationFast } }

    // Below the content, so that the cross comes first.
    MouseArea {
        id: area

        anchors.fill: parent
        z: -1
        enabled: chip.clickable
        hoverEnabled: true
        cursorShape: enabled ? Qt.PointingHandCursor : Qt.ArrowCursor
        onClicked: chip.clicked()
    }
}
