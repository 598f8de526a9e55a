import QtQuick
import QtQuick.Layouts
import Tidewell
import "../../logic/distribution_series.mjs" as Series

// Each player's equity or EV by hand, as two curves.
AppDialog {
    id: dialog

    required property NodeDistributions distributions
    required property real pageWidth
    required property real pageHeight

    readonly property var _payload: distributions.payload

    function _toText(): string {
        const heads = distributions.isEquity
            ? [qsTr("Rank"), qsTr("OOP hand"), qsTr("OOP equity"), qsTr("IP hand"), qsTr("IP equity")]
            : [qsTr("Rank"), qsTr("OOP hand"), qsTr("OOP EV"), qsTr("IP hand"), qsTr("IP EV")];
        return Series.tabSeparated(distributions.series, heads);
    }

    function copy(): void {
        if (Series.longest(distributions.series) > 0) {
            clipboard.put(_toText());
            copied.restart();
        }
    }

    title: qsTr("Distributions")
    width: Math.min(0.92 * pageWidth, 980)
    height: Math.min(0.86 * pageHeight, 680)
    visible: distributions.shown
    onAboutToHide: distributions.close()

    ColumnLayout {
        anchors.fill: parent
        spacing: dialog.theme.spaceMd

        Keys.onPressed: event => {
            if (event.matches(StandardKey.Copy)) {
                dialog.copy();
                event.accepted = true;
            }
        }

        RowLayout {
            spacing: dialog.theme.spaceSm

            AppLabel {
                theme: dialog.theme
                text: dialog.distributions.isEquity ? qsTr("Equity by hand") : qsTr("EV by hand")
                font.pixelSize: Fallback.type.bodyLg
                font.weight: Fallback.type.weightSemibold
                elide: Text.ElideRight
                Layout.fillWidth: true
            }
            AppLabel {
                theme: dialog.theme
                text: qsTr("Copied")
                muted: true
                visible: copied.running
            }
            AppLabel {
                theme: dialog.theme
                text: qsTr("Equity")
            }
            ToggleSwitch {
                objectName: "distributionMetric"
                theme: dialog.theme
                checked: !dialog.distributions.isEquity
                Accessible.name: qsTr("EV in place of equity")
                onToggled: dialog.distributions.isEquity = !checked
            }
            AppLabel {
                theme: dialog.theme
                //: Expected value
                text: qsTr("EV")
            }
            SecondaryButton {
                objectName: "closeDistributions"
                theme: dialog.theme
                compact: true
                text: qsTr("Close")
                onClicked: dialog.close()
                Layout.leftMargin: dialog.theme.spaceMd
            }
        }
        RowLayout {
            spacing: dialog.theme.spaceSm
            visible: dialog._payload.pending

            Spinner {
                color: dialog.theme.textMuted
                Layout.preferredWidth: 16
                Layout.preferredHeight: 16
            }
            AppLabel {
                theme: dialog.theme
                text: qsTr("Computing distributions…")
                muted: true
            }
        }
        AppLabel {
            theme: dialog.theme
            text: dialog._payload.error || qsTr("Distributions unavailable.")
            color: dialog.theme.legible(dialog.theme.danger, dialog.theme.surface)
            wrapMode: Text.Wrap
            visible: !dialog._payload.pending && !dialog._payload.ok
            Layout.fillWidth: true
        }
        DistributionPlot {
            theme: dialog.theme
            distributions: dialog.distributions
            focus: true
            Layout.fillWidth: true
            Layout.fillHeight: true
        }
    }
    Clipboard {
        id: clipboard
    }
    Timer {
        id: copied

        interval: 2000
    }
}
