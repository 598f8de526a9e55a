pragma ComponentBehavior: Bound

import QtQuick
import Tidewell

// Which colour stands for which action of the matrix. What is hardly ever done is left out; where nobody
// knows how often, nothing is.
Flow {
    id: legend

    required property Theme theme
    required property var actions

    // Of all entries beside each other, and of a line of them with its distance to the next one.
    readonly property real lineWidth: Array.from(visibleChildren)
        .reduce((sum, entry) => sum + entry.width + spacing, 0)
    readonly property real lineHeight: metrics.height + spacing

    readonly property FontMetrics _metrics: FontMetrics {
        id: metrics

        font.pixelSize: Fallback.type.labelMd
    }

    spacing: 6

    Repeater {
        model: legend.actions.filter(action => !(action.frequency <= 0.05))

        Row {
            id: entry

            required property var modelData

            spacing: 6
            // Further from the next entry than lines are from each other.
            rightPadding: 10

            ActionSwatch {
                anchors.verticalCenter: parent.verticalCenter
                theme: legend.theme
                actionType: entry.modelData.actionType
            }
            AppLabel {
                theme: legend.theme
                text: ActionText.shown(entry.modelData)
                font.pixelSize: Fallback.type.labelMd
            }
        }
    }
}
