pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tidewell

// The weight that hands are painted with: one of four, or one that is typed. It shows `percent` and
// never writes it.
RowLayout {
    id: row

    property Theme theme: Fallback.theme
    property real percent: 100

    signal chosen(percent: real)

    spacing: theme.spaceXs

    AppLabel {
        theme: row.theme
        text: qsTr("Weight")
        font.pixelSize: Fallback.type.labelMd
        Accessible.ignored: true
        Layout.rightMargin: row.theme.spaceXs
    }
    Repeater {
        model: [25, 50, 75, 100]

        SecondaryButton {
            required property int modelData

            objectName: "brush" + modelData
            theme: row.theme
            compact: true
            horizontalPadding: row.theme.spaceSm
            //: On a button that sets the weight hands are painted with
            text: qsTr("%1%").arg(modelData)
            tip: qsTr("Paint hands at %1%").arg(modelData)
            checked: row.percent === modelData
            Accessible.checkable: true
            onClicked: row.chosen(modelData)
        }
    }
    NumberField {
        objectName: "clickWeight"
        theme: row.theme
        placeholderText: "100"
        value: row.percent
        from: 0
        to: 100
        decimals: 3
        leftPadding: 6
        rightPadding: 6
        Accessible.name: qsTr("Weight of painted hands in percent")
        onEdited: number => row.chosen(number)
        onCommitted: number => row.chosen(number)
        Layout.preferredWidth: 64
        Layout.fillWidth: true
        Layout.maximumWidth: 84
    }
    AppLabel {
        theme: row.theme
        //: Stands behind a field for a percentage
        text: qsTr("%")
        muted: true
    }
    Item {
        Layout.fillWidth: true
    }
}
