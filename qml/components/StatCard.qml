import QtQuick
import QtQuick.Layouts
import Tidewell

// One figure with its name.
Rectangle {
    id: stat

    property Theme theme: Fallback.theme
    property string label: ""
    property string value: ""
    property string unit: ""
    // What it was before, at the left of the value in place of the unit at its right; empty for none.
    property string before: ""
    // "up", "down" or nothing.
    property string trend: ""
    property color accentColor: theme.text
    property bool compact: false

    readonly property int _margin: compact ? theme.spaceSm + 2 : theme.spaceMd

    implicitWidth: Math.max(compact ? 120 : 160, Math.ceil(column.implicitWidth) + 2 * _margin)
    implicitHeight: Math.max(compact ? 64 : 80, Math.ceil(column.implicitHeight) + 2 * _margin)
    radius: theme.radiusSm
    color: theme.surface2
    border.width: 1
    border.color: theme.stroke
    Accessible.role: Accessible.StaticText
    //: A figure and its name, as a screen reader says it: "Accuracy: 92 %"
    Accessible.name: qsTr("%1: %2 %3").arg(label).arg(value).arg(unit).trim()
    //: A figure as it was before the last change
    Accessible.description: before === "" ? "" : qsTr("Before: %1").arg(before)

    ColumnLayout {
        id: column

        anchors.fill: parent
        anchors.margins: stat._margin
        spacing: stat.theme.spaceXs

        Text {
            text: stat.label
            textFormat: Text.PlainText
            color: stat.theme.textMuted
            font.pixelSize: Fallback.type.labelSm
            font.weight: Fallback.type.weightMedium
            font.capitalization: Font.AllUppercase
            font.letterSpacing: 0.5
            elide: Text.ElideRight
            Accessible.ignored: true
            Layout.fillWidth: true
        }
        RowLayout {
            spacing: stat.theme.spaceXs

            Text {
                //: A figure before a change; the new one stands behind the arrow
                text: qsTr("%1 →").arg(stat.before)
                textFormat: Text.PlainText
                color: stat.theme.legible(stat.theme.textMuted, stat.color)
                font.pixelSize: stat.compact ? Fallback.type.labelMd : Fallback.type.bodyLg
                visible: stat.before !== ""
                Accessible.ignored: true
                Layout.alignment: Qt.AlignBaseline
            }
            Text {
                text: stat.value
                textFormat: Text.PlainText
                color: stat.accentColor
                font.pixelSize: stat.compact ? Fallback.type.headingMd : Fallback.type.displaySm
                font.weight: Fallback.type.weightBold
                elide: Text.ElideRight
                Accessible.ignored: true
                Layout.fillWidth: true
                Layout.maximumWidth: Math.ceil(implicitWidth)
                Layout.alignment: Qt.AlignBaseline
            }
            Text {
                text: stat.unit
                textFormat: Text.PlainText
                color: stat.theme.textMuted
                font.pixelSize: Fallback.type.labelMd
                visible: text !== "" && stat.before === ""
                Accessible.ignored: true
                Layout.alignment: Qt.AlignBaseline
            }
            Text {
                text: stat.trend === "up" ? "↑" : "↓"
                textFormat: Text.PlainText
                color: stat.trend === "up" ? stat.theme.success : stat.theme.danger
                font.pixelSize: Fallback.type.bodyMd
                font.weight: Fallback.type.weightBold
                visible: stat.trend === "up" || stat.trend === "down"
                Accessible.ignored: true
                Layout.alignment: Qt.AlignBaseline
            }
        }
    }
}
