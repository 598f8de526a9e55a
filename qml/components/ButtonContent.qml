pragma ComponentBehavior: Bound

import QtQuick
import Tidewell

// What stands in a button: a spinner, an icon or a glyph, and the text.
Item {
    id: content

    property string text: ""
    property string iconName: ""
    property string iconText: ""
    property bool loading: false
    property color color: Fallback.theme.text
    property font font
    // Of the spinner and the icon; a glyph is as large as the text.
    property real iconSize: Math.round(font.pixelSize * 1.2)

    readonly property bool _hasMark: loading || iconName !== "" || iconText !== ""
    // Where the text begins.
    readonly property real _indent: _hasMark ? mark.implicitWidth + (text === "" ? 0 : 8) : 0

    implicitWidth: Math.ceil(_indent + label.implicitWidth)
    implicitHeight: Math.ceil(Math.max(_hasMark ? mark.implicitHeight : 0, label.implicitHeight))

    Item {
        anchors.centerIn: parent
        width: Math.min(content.implicitWidth, content.width)
        height: content.height

        Item {
            id: mark

            anchors.verticalCenter: parent.verticalCenter
            implicitWidth: glyph.visible ? Math.ceil(glyph.implicitWidth) : content.iconSize
            implicitHeight: glyph.visible ? Math.ceil(glyph.implicitHeight) : content.iconSize
            visible: content._hasMark

            OnDemand {
                anchors.fill: parent
                wanted: content.loading
                visible: wanted

                Spinner {
                    anchors.fill: parent
                    color: content.color
                }
            }
            OnDemand {
                wanted: !content.loading && content.iconName !== ""
                visible: wanted

                Icon {
                    name: content.iconName
                    size: content.iconSize
                    color: content.color
                }
            }
            Text {
                id: glyph

                text: content.iconText
                textFormat: Text.PlainText
                color: content.color
                font: content.font
                visible: !content.loading && content.iconName === "" && text !== ""
                Accessible.ignored: true
            }
        }
        Text {
            id: label

            anchors.verticalCenter: parent.verticalCenter
            x: content._indent
            width: parent.width - x
            text: content.text
            textFormat: Text.PlainText
            color: content.color
            font: content.font
            elide: Text.ElideRight
            Accessible.ignored: true
        }
    }
}
