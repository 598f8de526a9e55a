pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tidewell

// The ranges of both seats and what will be played with them.
RowLayout {
    id: row

    property Theme theme: Fallback.theme
    required property SpotCheck spotCheck
    required property SetupHistory history
    // What will be played, as the controller tells it.
    property var played: ({})
    property string boardText: ""
    property real uiScale: 1
    // For all of it, in pixels.
    property real room: 0

    property alias oopRangeText: oop.rangeText
    property alias ipRangeText: ip.rangeText
    property alias oopClickWeightPct: oop.clickWeightPct
    property alias ipClickWeightPct: ip.clickWeightPct
    readonly property alias oop: oop
    readonly property alias ip: ip
    // What it has to have, in pixels.
    readonly property real neededWidth:
        oop.implicitWidth + ip.implicitWidth + preview.implicitWidth + 2 * spacing

    // As large as the window allows without scrolling.
    readonly property real _mostCellSize: Math.min(Math.round(36 * uiScale),
        Math.floor((room - Math.max(oop.surroundings, ip.surroundings) + 2) / 13) - 2)

    function _set(oopText: string, ipText: string): void {
        history.begin();
        [oopRangeText, ipRangeText] = [oopText, ipText];
        history.end();
    }

    component SeatRange: RangePanel {
        theme: row.theme
        history: row.history
        boardText: row.boardText
        uiScale: row.uiScale
        mostCellSize: row._mostCellSize
        marked: row.spotCheck.place === objectName
        onSwapRequested: row._set(row.ipRangeText, row.oopRangeText)
        Layout.fillHeight: true
    }

    SeatRange {
        id: oop

        objectName: "oopRange"
        title: qsTr("OOP Range")
        markColor: row.theme.actionBet
        otherSeat: qsTr("IP")
        hasOther: row.ipRangeText !== ""
        onCopyRequested: row._set(row.ipRangeText, row.ipRangeText)
    }
    SeatRange {
        id: ip

        objectName: "ipRange"
        title: qsTr("IP Range")
        markColor: row.theme.info
        otherSeat: qsTr("OOP")
        hasOther: row.oopRangeText !== ""
        onCopyRequested: row._set(row.oopRangeText, row.oopRangeText)
    }
    PreviewPanel {
        id: preview

        objectName: "preview"
        theme: row.theme
        preview: row.played
        pending: row.spotCheck.pending
        Layout.fillWidth: true
        Layout.fillHeight: true
    }
}
