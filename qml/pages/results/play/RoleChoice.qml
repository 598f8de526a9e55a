pragma ComponentBehavior: Bound

import QtQuick
import Tidewell

// Asks which seat to take: the buttons stand where the seats are, that for both in between.
Item {
    id: choice

    required property Theme theme
    // Of the three buttons from the top.
    required property var names

    signal chosen(place: int)

    Repeater {
        model: choice.names

        KeyButton {
            required property int index
            required property string modelData

            anchors.centerIn: parent
            anchors.verticalCenterOffset: (index - 1) * 0.26 * choice.height + 0.043 * choice.height
            width: Math.max(implicitWidth, 180)
            theme: choice.theme
            text: modelData
            keyText: String(index + 1)
            onClicked: choice.chosen(index)
        }
    }
}
