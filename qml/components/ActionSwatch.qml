pragma ComponentBehavior: Bound

import QtQuick
import Tidewell
import "../logic/action_list.mjs" as ActionList

// A small square in the colour of an action, with the hatch of an all-in.
Rectangle {
    id: swatch

    property Theme theme: Fallback.theme
    property string actionType: ""
    // The type words of its node; null for the node that is looked at.
    property var actions: null

    implicitWidth: 12
    implicitHeight: 12
    radius: 3
    color: actions ? theme.actionColorAmong(actionType, actions) : theme.actionColor(actionType)
    Accessible.ignored: true

    Item {
        id: inside

        anchors.fill: parent
        anchors.margins: 1
        clip: true

        Repeater {
            model: ActionList.isAllIn(swatch.actionType) ? 3 : 0

            Rectangle {
                required property int index

                x: (inside.width - width) / 2 + 5 * (index - 1)
                y: (inside.height - height) / 2
                width: 2
                height: 2 * swatch.height
                rotation: 45
                antialiasing: true
                color: swatch.theme.hatchOn(swatch.color)
            }
        }
    }
}
