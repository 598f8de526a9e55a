import QtQuick
import QtQuick.Layouts
import Tidewell

// One line that tells what happened. What went wrong stays until it is closed; good news leave by
// themselves.
Rectangle {
    id: bar

    property Theme theme: Fallback.theme
    property string text: ""
    property bool isError: false

    readonly property color _tint: isError ? theme.danger : theme.success

    function showError(message: string): void {
        _show(message, true);
    }

    function showInfo(message: string): void {
        _show(message, false);
    }

    function dismiss(): void {
        visible = false;
    }

    function _show(message: string, failure: bool): void {
        text = message;
        isError = failure;
        visible = true;
        if (failure) {
            leave.stop();
        } else {
            leave.restart();
        }
    }

    implicitWidth: Math.ceil(row.implicitWidth) + 2 * theme.spaceLg
    implicitHeight: Math.ceil(row.implicitHeight) + 2 * theme.spaceSm
    radius: theme.radiusSm
    color: theme.surface3
    border.width: 1
    border.color: _tint
    visible: false
    Accessible.role: isError ? Accessible.AlertMessage : Accessible.StaticText
    Accessible.name: text

    Timer {
        id: leave

        interval: 4000
        onTriggered: bar.dismiss()
    }
    SoftShadow {
        anchors.fill: parent
        z: -1
        theme: bar.theme
        cornerRadius: bar.radius
    }
    // The bar covers what lies under it.
    MouseArea {
        anchors.fill: parent
        hoverEnabled: true
        acceptedButtons: Qt.AllButtons
    }
    RowLayout {
        id: row

        anchors.fill: parent
        anchors.leftMargin: bar.theme.spaceLg
        anchors.rightMargin: bar.theme.spaceSm
        spacing: bar.theme.spaceSm

        Rectangle {
            implicitWidth: 8
            implicitHeight: 8
            radius: 4
            color: bar._tint
        }
        Text {
            text: bar.text
            textFormat: Text.PlainText
            color: bar.theme.text
            font.pixelSize: Fallback.type.bodyMd
            wrapMode: Text.Wrap
            maximumLineCount: 3
            elide: Text.ElideRight
            Accessible.ignored: true
            Layout.fillWidth: true
        }
        IconButton {
            theme: bar.theme
            tip: qsTr("Close this message")
            iconText: "×"
            onClicked: bar.dismiss()
        }
    }
}
