pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Qt.labs.settings
import Tidewell
import "../../logic/settings_profiles.mjs" as Profiles

// Settings that are kept under a name: saving those of the page and getting others back.
Card {
    id: panel

    // Whose settings are saved, with the properties of the project state.
    required property var settings
    // See settings_profiles.mjs. What is kept follows the list.
    property var profiles: []
    property bool _loaded: false

    // The data of a profile is to be applied.
    signal chosen(data: var)

    // Reads what is kept. What cannot be read stays there until something is saved.
    function load(): void {
        const kept = Profiles.parsedProfiles(String(store.value("profilesJson", "[]")));
        _loaded = true;
        if (kept) {
            profiles = kept;
        }
    }

    function _save(name: string): void {
        profiles = [...profiles, Profiles.newProfile(name, profiles, settings)];
    }

    function _remove(id: string): void {
        profiles = profiles.filter(profile => profile.id !== id);
    }

    padding: theme.spaceMd

    onProfilesChanged: {
        if (_loaded) {
            store.setValue("profilesJson", JSON.stringify(profiles));
            store.sync();
        }
    }

    RowLayout {
        anchors.fill: parent
        spacing: panel.theme.spaceSm

        ProfileButton {
            objectName: "loadSettings"
            text: qsTr("Load settings")
            iconName: panel.width < 300 ? "" : "folder-open"
            onClicked: (loadDialog.get() as LoadProfileDialog).openFresh()
        }
        ProfileButton {
            objectName: "saveSettings"
            text: qsTr("Save settings")
            iconName: panel.width < 300 ? "" : "save"
            onClicked: (saveDialog.get() as SaveProfileDialog).openFresh()
        }
    }
    OnDemand {
        id: saveDialog

        SaveProfileDialog {
            theme: panel.theme
            onNamed: name => panel._save(name)
        }
    }
    OnDemand {
        id: loadDialog

        LoadProfileDialog {
            theme: panel.theme
            profiles: panel.profiles
            onChosen: data => panel.chosen(data)
            onDeleted: id => panel._remove(id)
        }
    }
    Settings {
        id: store

        category: "settings_profiles"
    }

    component ProfileButton: SecondaryButton {
        theme: panel.theme
        compact: true
        implicitHeight: 34
        Layout.fillWidth: true
        Layout.preferredWidth: 1
    }
}
