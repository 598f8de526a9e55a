pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tidewell

// What will be played: how much betting there is on each street, and what each size comes to in chips
// where it can first be wagered.
Card {
    id: panel

    // As the controller tells it; empty for nothing.
    property var preview: ({})
    // It is worked out anew.
    property bool pending: false

    readonly property var _streets: preview.streets ?? []
    readonly property var _streetNames: ({flop: qsTr("Flop"), turn: qsTr("Turn"), river: qsTr("River")})
    readonly property var _lists: [
        {seat: "OOP", raise: false, label: qsTr("OOP bets")},
        {seat: "IP", raise: false, label: qsTr("IP bets")},
        {seat: "OOP", raise: true, label: qsTr("OOP raises")},
        {seat: "IP", raise: true, label: qsTr("IP raises")}
    ]

    function _whole(number: real): string {
        return number.toLocaleString(Qt.locale(), "f", 0);
    }

    function _linesOf(street: var): string {
        const lines = _whole(street.lines);
        const decisions = _whole(street.decisions);
        return preview.linesAtLeast
            //: Of a street on one board, where not all were counted
            ? qsTr("more than %1 lines, %2 decisions").arg(lines).arg(decisions)
            //: Of a street on one board: ways that its betting can go, and decisions in them
            : qsTr("%1 lines, %2 decisions").arg(lines).arg(decisions);
    }

    function _sizesOf(street: string, list: var): string {
        const found = (preview.sizes ?? []).filter(size =>
            size.street === street && size.seat === list.seat && size.raise === list.raise);
        return found.map(size => _told(size)).join("\n");
    }

    function _told(size: var): string {
        const name = /[\d.]$/.test(size.text) ? size.text + "%" : size.text;
        const chips = ActionText.chips(size.chips);
        const percent = _whole(size.percent);
        if (size.allIn) {
            //: A size as it was entered, and the all-in that it comes to in chips: "a → all-in 91"
            return qsTr("%1 → all-in %2").arg(name).arg(chips);
        }
        if (size.raise) {
            //: A size, what it raises to in chips, and that in percent of the pot: "3x → 27 (129%)"
            return qsTr("%1 → to %2 (%3%)").arg(name).arg(chips).arg(percent);
        }
        return /%$/.test(name)
            //: A size as it was entered, and the bet that it comes to in chips: "50% → 9"
            ? qsTr("%1 → %2").arg(name).arg(chips)
            : qsTr("%1 → %2 (%3%)").arg(name).arg(chips).arg(percent);
    }

    padding: theme.spaceMd
    implicitWidth: 290
    Accessible.role: Accessible.Grouping
    Accessible.name: heading.title

    ColumnLayout {
        anchors.fill: parent
        spacing: panel.theme.spaceSm

        CardHeading {
            id: heading

            theme: panel.theme
            title: qsTr("What Will Be Played")
            Layout.fillWidth: true
        }
        AppLabel {
            theme: panel.theme
            objectName: "previewTotal"
            muted: true
            font.pixelSize: Fallback.type.labelMd
            wrapMode: Text.Wrap
            text: {
                if (panel._streets.length === 0) {
                    return panel.pending ? qsTr("Working it out...")
                                         : qsTr("Shown once the spot is complete.");
                }
                const decisions = panel._whole(panel.preview.decisions);
                return panel.preview.atLeast
                    ? qsTr("More than %1 decisions on all boards").arg(decisions)
                    : qsTr("%1 decisions on all boards").arg(decisions);
            }
            Layout.fillWidth: true
        }
        Repeater {
            model: panel._streets.length

            ColumnLayout {
                id: section

                required property int index
                readonly property var street: panel._streets[index]
                    ?? {street: "", lines: 0, decisions: 0}

                spacing: 2
                Layout.fillWidth: true
                Layout.topMargin: panel.theme.spaceXs

                RowLayout {
                    spacing: panel.theme.spaceSm
                    Layout.fillWidth: true

                    AppLabel {
                        theme: panel.theme
                        text: panel._streetNames[section.street.street] ?? ""
                        font.weight: Fallback.type.weightSemibold
                    }
                    AppLabel {
                        theme: panel.theme
                        muted: true
                        font.pixelSize: Fallback.type.labelMd
                        elide: Text.ElideRight
                        text: panel._linesOf(section.street)
                        Layout.fillWidth: true
                    }
                }
                GridLayout {
                    columns: panel.availableWidth > 420 ? 4 : 2
                    columnSpacing: panel.theme.spaceMd
                    rowSpacing: 2
                    Layout.fillWidth: true

                    Repeater {
                        model: 8

                        // A label, then what it is the label of.
                        AppLabel {
                            required property int index
                            readonly property var _list: panel._lists[Math.floor(index / 2)]
                            readonly property string _sizes:
                                panel._sizesOf(section?.street?.street ?? "", _list)

                            theme: panel.theme
                            muted: index % 2 === 0
                            font.pixelSize: Fallback.type.labelMd
                            text: index % 2 === 0 ? _list.label : _sizes
                            visible: _sizes !== ""
                            elide: Text.ElideRight
                            Layout.alignment: Qt.AlignTop
                            Layout.fillWidth: index % 2 === 1
                        }
                    }
                }
            }
        }
        Item {
            Layout.fillHeight: true
        }
    }
}
