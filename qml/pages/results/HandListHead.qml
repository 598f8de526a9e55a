pragma ComponentBehavior: Bound

import QtQuick
import Tidewell

// The heads of the hand list's columns, above them.
Item {
    id: heads

    required property Theme theme
    required property HandColumns columns
    required property HandList hands

    implicitHeight: 22

    SortHead {
        x: heads.columns.cardsX
        width: heads.columns.labelX - x - 2
        theme: heads.theme
        key: "weight"
        order: heads.hands.order
        text: qsTr("Weight")
        onClicked: heads.hands.sortBy(key)
    }
    SortHead {
        x: heads.columns.labelX
        width: heads.columns.barX - x - 2
        theme: heads.theme
        key: "ev"
        order: heads.hands.order
        //: Expected value
        text: qsTr("EV")
        onClicked: heads.hands.sortBy(key)
    }
    Row {
        id: actions

        x: heads.columns.barX

        Repeater {
            model: heads.hands.definitions

            SortHead {
                required property int index
                required property var modelData

                width: heads.columns.barWidth / heads.hands.definitions.length
                theme: heads.theme
                key: index
                order: heads.hands.order
                actionType: modelData.actionType || modelData.name
                text: ActionText.label(modelData.name, modelData.actionType)
                //: How often an action is taken: "frequency of Bet 33%"
                what: qsTr("frequency of %1").arg(text)
                onClicked: heads.hands.sortBy(key)
            }
        }
    }
}
