pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tidewell

// A heading and figures under it, each with its name at the left.
ColumnLayout {
    id: list

    property Theme theme: Fallback.theme
    property alias iconName: heading.iconName
    property alias title: heading.title
    property alias caption: heading.caption
    // Maps of `label` and `value`.
    property var facts: []

    spacing: theme.spaceSm

    CardHeading {
        id: heading

        theme: list.theme
        Layout.fillWidth: true
        Layout.bottomMargin: list.theme.spaceXs
    }
    // By number: rows that were replaced with every new figure would lose their places.
    Repeater {
        model: list.facts.length

        RowLayout {
            id: row

            required property int index
            readonly property var fact: list.facts[index]

            spacing: list.theme.spaceMd
            Accessible.role: Accessible.StaticText
            //: A figure with its name, as a screen reader says it
            Accessible.name: qsTr("%1: %2").arg(fact.label).arg(fact.value)
            Layout.fillWidth: true

            Text {
                text: row.fact.label
                textFormat: Text.PlainText
                color: list.theme.textMuted
                font.pixelSize: Fallback.type.bodySm
                elide: Text.ElideRight
                Accessible.ignored: true
                Layout.fillWidth: true
            }
            Text {
                text: row.fact.value
                textFormat: Text.PlainText
                color: list.theme.text
                font.pixelSize: Fallback.type.bodySm
                font.weight: Fallback.type.weightSemibold
                horizontalAlignment: Text.AlignRight
                Accessible.ignored: true
            }
        }
    }
    Item {
        Layout.fillHeight: true
    }
}
