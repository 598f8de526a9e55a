import QtQuick
import Tidewell

// The cards of the Settings page.
DocumentCase {
    id: test

    readonly property Component cards: UpdatesCard {
        width: 600
        height: 400
    }
    // An update manager in any state that a test puts it in.
    readonly property Component updaters: QtObject {
        property string currentVersion: "1.0.4"
        property date lastCheckedAt: new Date(2026, 0, 2)
        property string lastError: ""
        property bool busy: false
        property bool updateAvailable: false
        property string latestVersion: ""
        property string releaseNotes: ""
        property bool downloadBusy: false
        property bool downloaded: false
        property double downloadProgress: 0
        property int downloadBytesTotal: 0
        property string downloadChecks: ""
        property bool installsAtEnd: false
        property int updates: 0

        function updateNow(): void {
            ++updates;
        }
    }

    function test_whatIsSaidAndOffered(): void {
        const found = {updateAvailable: true, latestVersion: "2.0", releaseNotes: " Faster \n"};
        for (const [state, said, unsaid, button, enabled] of [
            [{}, "No updates available.", "Update available: ", "Update", false],
            [{lastCheckedAt: new Date(NaN)}, "Current version: 1.0.4", "No updates available.", "Update", false],
            [{lastError: "Broken"}, "Broken", "No updates available.", "Update", false],
            [{busy: true}, "Checking...", "No updates available.", "Update", false],
            [found, "Faster", "Downloaded", "Update", true],
            [Object.assign({downloadBusy: true, downloadBytesTotal: 9, downloadProgress: 0.579}, found),
             "Downloading: 57%", "Downloading…", "Updating…", false],
            [Object.assign({downloadBusy: true, downloadBytesTotal: -1}, found),
             "Downloading…", "Downloading: 0%", "Updating…", false],
            [Object.assign({downloaded: true, downloadChecks: "Checked."}, found),
             "Checked.", "Downloading…", "Install update", true]]) {
            const card = make(cards, {updater: make(updaters, state)});
            const seen = texts(card).filter(text => text !== "");
            verify(seen.includes(said) && !seen.some(text => text.startsWith(unsaid)), seen.join(" | "));
            const install = all(card, item => item instanceof PrimaryButton)[0];
            compare([install.text, install.enabled], [button, enabled], said);
        }
    }

    // Nothing is fetched or started unasked.
    function test_anUpdateIsAskedFor(): void {
        const updater = make(updaters, {updateAvailable: true});
        const card = make(cards, {updater: updater});
        const install = all(card, item => item instanceof PrimaryButton)[0];
        for (const [key, updates] of [[Qt.Key_Escape, 0], [Qt.Key_Return, 1]]) {
            mouseClick(install);
            const question = findChild(card, "installQuestion");
            tryVerify(() => question.opened);
            compare(updater.updates, 0);
            if (key === Qt.Key_Return) {
                keyClick(Qt.Key_Tab);
            }
            keyClick(key);
            tryVerify(() => !question.visible);
            compare(updater.updates, updates);
        }
    }

    name: "Settings"
    width: 800
    height: 600
    when: windowShown
}
