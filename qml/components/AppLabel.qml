import QtQuick
import Tidewell

// Plain text in the theme's colours.
Text {
    property Theme theme: Fallback.theme
    property bool muted: false
    property bool mono: false

    textFormat: Text.PlainText
    color: muted ? theme.textMuted : theme.text
    font.pixelSize: mono ? Fallback.type.mono : Fallback.type.bodyMd
    font.family: mono ? theme.monoFamily : theme.uiFamily
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
