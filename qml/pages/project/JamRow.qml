import QtQuick
import QtQuick.Layouts
import Tidewell

// The switch that adds an all-in where it is small for the pot, and how small. It shows `active`
// and `percent` and never writes them.
RowLayout {
    id: row

    property Theme theme: Fallback.theme
    property bool active: false
    // Of the pot.
    property real percent: 0
    property SetupHistory history: null

    // What the field has refused and still shows, as in SpotCheck but for the panel; null for none.
    readonly property var refused: field.error === "" ? null
        : {field: field.objectName, text: `${field.Accessible.name}: ${field.error}`}

    signal switched(active: bool)
    signal committed(percent: real)

    spacing: theme.spaceSm

    ToggleSwitch {
        objectName: "jamToggle"
        theme: row.theme
        checked: row.active
        Accessible.name: label.text
        onToggled: row.switched(checked)
    }
    AppLabel {
        id: label

        theme: row.theme
        text: qsTr("Add all-in if jam less than")
        font.pixelSize: Fallback.type.labelMd
        wrapMode: Text.Wrap
        Accessible.ignored: true
        Layout.fillWidth: true
        Layout.preferredWidth: 84
    }
    NumberField {
        id: field

        objectName: "jamPercent"
        theme: row.theme
        history: row.history
        placeholderText: qsTr("e.g. 30")
        enabled: row.active
        value: row.percent
        from: 0
        to: 1000
        decimals: 3
        Accessible.name: qsTr("Largest jam in percent of the pot")
        onEdited: number => row.committed(number)
        onCommitted: number => row.committed(number)
        Layout.preferredWidth: 65
    }
    AppLabel {
        theme: row.theme
        //: Stands behind a field for a percentage of the pot
        text: qsTr("% pot")
        muted: true
        font.pixelSize: Fallback.type.labelMd
    }
}
