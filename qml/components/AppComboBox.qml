pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Tidewell

// One of a list.
T.ComboBox {
    id: combo

    property Theme theme: Fallback.theme
    // Help, shown while the pointer rests on the box.
    property string tip: ""

    function _widestText(): real {
        let widest = 0;
        for (let i = 0; i < count; ++i) {
            widest = Math.max(widest, Math.ceil(metrics.advanceWidth(textAt(i))));
        }
        return widest;
    }

    implicitWidth: Math.max(120, _widestText() + leftPadding + rightPadding)
    implicitHeight: Math.max(34, Math.ceil(implicitContentHeight) + topPadding + bottomPadding)
    leftPadding: 10
    rightPadding: 30
    verticalPadding: 6
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    font.pixelSize: Fallback.type.bodyMd
    opacity: enabled ? 1 : 0.5
    Accessible.role: Accessible.ComboBox
    Accessible.name: displayText
    Accessible.description: tip

    contentItem: Text {
        text: combo.displayText
        textFormat: Text.PlainText
        color: combo.theme.text
        font: combo.font
        elide: Text.ElideRight
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
    indicator: Text {
        x: combo.width - width - 10
        y: (combo.height - height) / 2
        text: "▾"
        color: combo.theme.textMuted
        font.pixelSize: Fallback.type.bodyMd
        Accessible.ignored: true
    }
    background: FieldFrame {
        theme: combo.theme
        focused: combo.visualFocus || combo.popup.visible
        hovered: combo.enabled && combo.hovered
    }
    delegate: AppListRow {
        required property int index

        width: ListView.view ? ListView.view.width : 0
        theme: combo.theme
        text: combo.textAt(index)
        highlighted: combo.highlightedIndex === index
        current: combo.currentIndex === index
        font.pixelSize: combo.font.pixelSize
    }
    popup: T.Popup {
        y: combo.height + 4
        width: combo.width
        height: Math.min(implicitContentHeight + topPadding + bottomPadding, 320)
        margins: 8
        padding: 4

        contentItem: ListView {
            clip: true
            implicitHeight: contentHeight
            model: combo.delegateModel // qmllint disable type
            currentIndex: combo.highlightedIndex
            highlightMoveDuration: 0
            boundsBehavior: Flickable.StopAtBounds
            T.ScrollBar.vertical: AppScrollBar { theme: combo.theme }
        }
        background: Rectangle {
            radius: combo.theme.radiusSm
            color: combo.theme.surface
            border.width: 1
            border.color: combo.theme.stroke
        }
    }

    FontMetrics {
        id: metrics

        font: combo.font
    }
    Tip {
        theme: combo.theme
        text: combo.tip
        shown: combo.hovered && !combo.popup.visible
    }
}
