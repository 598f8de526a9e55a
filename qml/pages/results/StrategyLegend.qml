pragma ComponentBehavior: Bound

import QtQuick
import Tidewell

// Which colour stands for which action of the matrix. What is hardly ever done is left out.
Flow {
    id: legend

    required property Theme theme
    required property var actions

    spacing: theme.spaceLg

    Repeater {
        model: legend.actions.filter(action => action.frequency > 0.05)

        Row {
            id: entry

            required property var modelData

            spacing: 6

            Rectangle {
                anchors.verticalCenter: parent.verticalCenter
                width: 12
                height: 12
                radius: 3
                color: legend.theme.actionColor(entry.modelData.actionType)
            }
            AppLabel {
                theme: legend.theme
                text: ActionText.named(entry.modelData.name)
                font.pixelSize: Fallback.type.labelMd
            }
        }
    }
}
