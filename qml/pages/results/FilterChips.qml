pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tidewell

// What narrows the hands down, each to be taken away.
RowLayout {
    id: chips

    required property Theme theme
    required property HandList hands
    // Of the node, as the controller tells them.
    required property var buckets

    function _bucketName(): string {
        for (let i = 0; i < buckets.length; ++i) {
            if (buckets[i].name === hands.bucket) {
                return buckets[i].displayName || buckets[i].name;
            }
        }
        return hands.bucket;
    }

    spacing: theme.spaceXs

    FilterChip {
        text: chips.hands.handClass
        onRemoveClicked: chips.hands.handClass = ""
    }
    FilterChip {
        text: chips._bucketName()
        onRemoveClicked: chips.hands.bucket = ""
    }
    FilterChip {
        //: What is searched for among the hands
        text: chips.hands.searchText.trim() === "" ? "" : qsTr("“%1”").arg(chips.hands.searchText.trim())
        onRemoveClicked: chips.hands.searchText = ""
    }

    component FilterChip: Chip {
        theme: chips.theme
        implicitHeight: 24
        leftPadding: chips.theme.spaceSm
        tint: chips.theme.withOpacity(chips.theme.accent, 0.15)
        removable: true
        visible: text !== ""
        Layout.fillWidth: true
        Layout.minimumWidth: 48
        Layout.maximumWidth: implicitWidth
    }
}
