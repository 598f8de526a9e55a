pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tidewell

// A range as a grid and as text. It leaves rangeText to its owner: rangeChanged tells the text that
// the user wants.
ColumnLayout {
    id: editor

    property Theme theme: Fallback.theme
    property string rangeText: ""
    property string label: ""

    readonly property string _name: label !== "" ? label : qsTr("Range")
    readonly property var _weights: HandRanges.weightsOf(rangeText)
    readonly property int _hands: Object.keys(_weights).length

    signal rangeChanged(newRange: string)
    // Around the changes of one stroke over the grid: one step to undo.
    signal strokeStarted
    signal strokeEnded

    spacing: theme.spaceSm

    // Typing ends the field's binding to the text.
    onRangeTextChanged: {
        if (field.text !== rangeText) {
            field.text = rangeText;
        }
    }

    RowLayout {
        spacing: editor.theme.spaceXs
        Layout.maximumWidth: matrix.implicitWidth

        AppLabel {
            theme: editor.theme
            text: editor.label
            font.weight: Fallback.type.weightSemibold
            elide: Text.ElideRight
            Layout.fillWidth: true
        }
        Repeater {
            model: [100, 50, 25]

            SecondaryButton {
                required property int modelData

                theme: editor.theme
                compact: true
                text: qsTr("%1%").arg(modelData)
                tip: qsTr("All hands at %1%").arg(modelData)
                onClicked: editor.rangeChanged(modelData + "%")
            }
        }
        SecondaryButton {
            theme: editor.theme
            compact: true
            text: qsTr("Clear")
            onClicked: editor.rangeChanged("")
        }
    }
    HandMatrix {
        id: matrix

        theme: editor.theme
        title: editor._name
        cellSize: 30
        editable: true
        weights: editor._weights
        onStrokeStarted: editor.strokeStarted()
        onStrokeEnded: editor.strokeEnded()
        onHandPainted: (hand, on) =>
            editor.rangeChanged(HandRanges.painted(editor.rangeText, hand, on ? 1 : 0))
    }
    RowLayout {
        spacing: editor.theme.spaceSm
        Layout.maximumWidth: matrix.implicitWidth

        AppTextField {
            id: field

            theme: editor.theme
            mono: true
            text: editor.rangeText
            //: %1 stands for an example of how a range is written
            placeholderText: qsTr("e.g., %1").arg("AA, KK, AKs, QQ+")
            Accessible.name: editor._name
            Layout.fillWidth: true
            onTextEdited: editor.rangeChanged(text)
        }
        Rectangle {
            implicitWidth: Math.ceil(count.implicitWidth) + 2 * editor.theme.spaceMd
            implicitHeight: field.implicitHeight
            radius: editor.theme.radiusSm
            color: editor.theme.surface2
            border.width: 1
            border.color: editor.theme.stroke

            AppLabel {
                id: count

                anchors.centerIn: parent
                theme: editor.theme
                muted: true
                font.pixelSize: Fallback.type.labelMd
                text: editor._hands === 1 ? qsTr("1 hand")
                                          : qsTr("%Ln hands", "", editor._hands)
            }
        }
    }
}
