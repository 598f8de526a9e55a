import QtQuick
import Tidewell

// A button that says which key does the same.
SecondaryButton {
    id: button

    // As it stands on the keyboard; empty for none.
    property string keyText: ""
    // The choice that the user has made, or the one that would have been right.
    property color mark: "transparent"

    readonly property bool _marked: mark.a > 0

    // A click leaves the keyboard where it is: the table's keys go on working.
    focusPolicy: Qt.TabFocus
    scale: 1
    horizontalPadding: theme.spaceMd
    Accessible.description: keyText

    contentItem: Row {
        spacing: button.theme.spaceSm
        opacity: button.enabled || button._marked ? 1 : 0.5

        KeyCap {
            anchors.verticalCenter: parent.verticalCenter
            theme: button.theme
            text: button.keyText
            visible: text !== ""
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: button.text
            textFormat: Text.PlainText
            color: button.theme.text
            font: button.font
            Accessible.ignored: true
        }
    }
    background: Rectangle {
        radius: button.theme.radiusSm
        color: button._marked ? button.theme.mixed(button.theme.surface, button.mark, 0.3)
                              : button._fill
        border.width: button._marked ? 2 : 1
        border.color: button._marked ? button.mark : button._borderColor
    }
}
