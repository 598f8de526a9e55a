import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tidewell

// The head of a column: a press sorts by it, falling, then rising, then not at all.
T.Button {
    id: head

    required property Theme theme
    // What it stands for in the list's order, and that order.
    required property var key
    required property var order
    // Type word of an action whose colour stands before the text; empty for none.
    property string actionType: ""
    // What is sorted by, for the tip.
    property string what: text

    readonly property bool _sorting: order.key === key
    readonly property string _arrow: _sorting ? order.rising ? "▲" : "▼" : ""

    horizontalPadding: 2
    implicitHeight: 22
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    font.pixelSize: Fallback.type.labelSm
    Accessible.role: Accessible.Button
    //: On the head of a column: "Sort by EV"
    Accessible.name: qsTr("Sort by %1").arg(what)
    Accessible.description: _sorting ? order.rising ? qsTr("Rising") : qsTr("Falling") : ""

    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: RowLayout {
        spacing: 3

        ActionSwatch {
            implicitWidth: 8
            implicitHeight: 8
            radius: 2
            theme: head.theme
            actionType: head.actionType
            visible: head.actionType !== ""
        }
        Text {
            text: head._arrow
            color: head.theme.accent
            font.pixelSize: Math.round(0.8 * head.font.pixelSize)
            visible: text !== ""
            Accessible.ignored: true
        }
        Text {
            text: head.text
            textFormat: Text.PlainText
            color: head._sorting || head.hovered
                ? head.theme.text : head.theme.legible(head.theme.textMuted, head.theme.surface2)
            font: head.font
            elide: Text.ElideRight
            Accessible.ignored: true
            Layout.fillWidth: true
        }
    }
    background: Rectangle {
        radius: head.theme.radiusXs
        color: head.hovered ? head.theme.surfaceHover : "transparent"
        border.width: head.visualFocus ? 2 : 0
        border.color: head.theme.strokeFocus
    }

    Tip {
        theme: head.theme
        text: head.Accessible.name
        shown: head.hovered || head.visualFocus
    }
}
