import QtQuick
import Tidewell

// What the curves say at one place: a hand of each seat and what it is worth.
Rectangle {
    id: reading

    required property Theme theme
    required property bool isEquity
    // `{hand, value}`; null for none.
    required property var oopPoint
    required property var ipPoint
    required property color oopColor
    required property color ipColor

    function _figure(value: real, digits: int): string {
        return value.toLocaleString(Qt.locale(), "f", digits);
    }

    function _oopText(): string {
        if (!oopPoint) {
            return qsTr("OOP: —");
        }
        return isEquity ? qsTr("OOP: %1%").arg(_figure(100 * oopPoint.value, 1))
                        : qsTr("OOP: %1").arg(_figure(oopPoint.value, 2));
    }

    function _ipText(): string {
        if (!ipPoint) {
            return qsTr("IP: —");
        }
        return isEquity ? qsTr("IP: %1%").arg(_figure(100 * ipPoint.value, 1))
                        : qsTr("IP: %1").arg(_figure(ipPoint.value, 2));
    }

    width: lines.implicitWidth + 2 * theme.spaceMd
    height: lines.implicitHeight + 2 * theme.spaceSm
    radius: theme.radiusXs + 2
    color: theme.surface3
    border.width: 1
    border.color: theme.stroke
    Accessible.role: Accessible.StaticText
    Accessible.name: qsTr("%1, %2, %3").arg(hands.text).arg(oopValue.text).arg(ipValue.text)

    Column {
        id: lines

        anchors.centerIn: parent
        spacing: reading.theme.spaceXs

        AppLabel {
            id: hands

            theme: reading.theme
            mono: true
            //: A hand of each seat
            text: qsTr("OOP: %1    IP: %2").arg(reading.oopPoint?.hand ?? qsTr("—"))
                                            .arg(reading.ipPoint?.hand ?? qsTr("—"))
        }
        Row {
            spacing: reading.theme.spaceLg

            AppLabel {
                id: oopValue

                theme: reading.theme
                mono: true
                text: reading._oopText()
                color: reading.theme.legible(reading.oopColor, reading.color)
            }
            AppLabel {
                id: ipValue

                theme: reading.theme
                mono: true
                text: reading._ipText()
                color: reading.theme.legible(reading.ipColor, reading.color)
            }
        }
    }
}
