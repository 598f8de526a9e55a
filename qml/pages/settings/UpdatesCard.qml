pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tidewell

// Whether there is a newer version, and the way to it.
Card {
    id: card

    // The program's UpdateManager; null for none.
    property var updater: null

    readonly property bool _checked: updater !== null && !isNaN(updater.lastCheckedAt.getTime())
    readonly property bool _downloaded: updater?.downloaded ?? false
    readonly property bool _downloading: updater?.downloadBusy ?? false

    function _downloadText(): string {
        if (_downloaded) {
            return qsTr("Downloaded");
        }
        return updater.downloadBytesTotal > 0
            ? qsTr("Downloading: %1%").arg(Math.floor(100 * updater.downloadProgress))
            : qsTr("Downloading…");
    }

    function _installText(): string {
        if (_downloading) {
            return qsTr("Updating…");
        }
        return _downloaded ? qsTr("Install update") : qsTr("Update");
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: card.theme.spaceMd

        CardHeading {
            theme: card.theme
            iconName: "trend-up"
            title: qsTr("Updates")
            Layout.fillWidth: true
        }
        Line {
            text: qsTr("Current version: %1").arg(card.updater?.currentVersion || qsTr("Unknown"))
        }
        Line {
            text: card._checked
                ? qsTr("Last checked: %1").arg(card.updater.lastCheckedAt.toLocaleString(Qt.locale(), Locale.ShortFormat))
                : ""
            muted: true
        }
        Line {
            text: card.updater?.lastError ?? ""
            color: card.theme.legible(card.theme.danger, card.theme.surface)
        }
        Line {
            text: card.updater?.updateAvailable
                ? qsTr("Update available: %1").arg(card.updater.latestVersion) : ""
            color: card.theme.legible(card.theme.success, card.theme.surface)
        }
        Line {
            text: card._checked && !card.updater.busy && !card.updater.updateAvailable
                && card.updater.lastError === "" ? qsTr("No updates available.") : ""
            muted: true
        }
        Line {
            text: card.updater?.updateAvailable ? card.updater.releaseNotes.trim() : ""
            muted: true
        }
        ColumnLayout {
            spacing: card.theme.spaceSm
            visible: card._downloading || card._downloaded

            AppProgressBar {
                theme: card.theme
                value: card._downloaded ? 1 : card.updater?.downloadProgress ?? 0
                indeterminate: card._downloading && card.updater.downloadBytesTotal <= 0
                Accessible.name: qsTr("Download")
                Layout.fillWidth: true
            }
            Line {
                text: parent.visible ? card._downloadText() : ""
                muted: true
            }
            Line {
                text: card.updater?.downloadChecks ?? ""
                muted: true
            }
            Line {
                text: card.updater?.installsAtEnd ? qsTr("The update starts when Tidewell closes.") : ""
            }
        }
        RowLayout {
            spacing: card.theme.spaceSm

            SecondaryButton {
                theme: card.theme
                text: card.updater?.busy ? qsTr("Checking...") : qsTr("Check for updates")
                enabled: card.updater !== null && !card.updater.busy
                onClicked: card.updater.checkNow()
            }
            PrimaryButton {
                theme: card.theme
                text: card._installText()
                enabled: (card.updater?.updateAvailable ?? false) && !card._downloading
                onClicked: question.open()
            }
        }
    }

    ConfirmDialog {
        id: question

        objectName: "installQuestion"
        theme: card.theme
        title: qsTr("Install update?")
        text: qsTr("Tidewell will close to install the update. Continue?")
        onAccepted: card.updater.updateNow()
    }

    // One that has nothing to say is not there.
    component Line: AppLabel {
        theme: card.theme
        font.pixelSize: Fallback.type.bodySm
        wrapMode: Text.Wrap
        visible: text !== ""
        Layout.fillWidth: true
    }
}
