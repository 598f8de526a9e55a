import QtQuick
import QtQuick.Layouts
import Tidewell

// Above the actions that can be chosen.
RowLayout {
    id: banner

    required property Theme theme
    required property int options
    required property bool locked

    spacing: theme.spaceSm

    AppLabel {
        theme: banner.theme
        text: "▼"
        color: banner.theme.accent
        font.pixelSize: Fallback.type.labelSm
        Accessible.ignored: true
    }
    AppLabel {
        theme: banner.theme
        text: qsTr("Available actions")
        font.pixelSize: Fallback.type.labelMd
        font.weight: Fallback.type.weightSemibold
        elide: Text.ElideRight
        Layout.fillWidth: true
    }
    Icon {
        name: "lock"
        size: 14
        color: banner.theme.gold
        visible: banner.locked
    }
    AppLabel {
        theme: banner.theme
        muted: true
        //: How many actions can be chosen
        text: qsTr("%Ln options", "", banner.options)
        font.pixelSize: Fallback.type.labelMd
    }
}
