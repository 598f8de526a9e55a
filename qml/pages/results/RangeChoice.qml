pragma ComponentBehavior: Bound

import QtQuick
import Tidewell

// Whether the figures of the actions count the hands that come to the node or the whole starting range,
// and what they count now.
Row {
    id: choice

    required property Theme theme
    // What is wanted.
    required property bool handsHere
    // Whether anybody knows which hands come to the node.
    required property bool available

    signal chosen(handsHere: bool)

    function _choose(handsHere: bool): void {
        if (available && handsHere !== choice.handsHere) {
            chosen(handsHere);
        }
    }

    function _move(): void {
        _choose(!handsHere);
        const button = handsHere ? here : whole;
        button.forceActiveFocus(Qt.TabFocusReason);
    }

    spacing: theme.spaceSm
    Accessible.role: Accessible.Grouping
    Accessible.name: qsTr("Hands that the figures count")

    Row {
        spacing: 2

        Option {
            id: here

            //: The figures of the actions count the hands that come to this place of the game tree
            text: qsTr("Hands here")
            tip: choice.available
                ? qsTr("Each hand counts as often as it comes here.")
                : qsTr("This project does not hold them for this node.")
            checked: choice.handsHere && choice.available
            enabled: choice.available
            onClicked: choice._choose(true)
        }
        Option {
            id: whole

            //: The figures of the actions count every hand of the starting range
            text: qsTr("Whole range")
            tip: qsTr("Every hand of the starting range counts, whatever was played on the way.")
            checked: !here.checked
            onClicked: choice._choose(false)
        }
    }
    AppLabel {
        objectName: "figuresCaption"
        anchors.verticalCenter: parent.verticalCenter
        theme: choice.theme
        //: What the figures of the actions count
        text: here.checked ? qsTr("of the hands that come here")
                           //: What the figures of the actions count
                           : qsTr("of the whole starting range")
        muted: true
        font.pixelSize: Fallback.type.labelMd
    }

    component Option: SecondaryButton {
        theme: choice.theme
        compact: true
        focusPolicy: checked ? Qt.StrongFocus : Qt.ClickFocus
        Accessible.role: Accessible.RadioButton
        Accessible.checkable: true
        Accessible.checked: checked
        Keys.onLeftPressed: choice._move()
        Keys.onRightPressed: choice._move()
    }
}
