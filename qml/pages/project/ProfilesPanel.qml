pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tidewell
import "../../logic/settings_profiles.mjs" as Profiles

// Settings that are kept under a name: saving those of the page and getting others back.
Card {
    id: panel

    // Whose settings are saved, with the properties of the project state.
    required property var settings
    // See settings_profiles.mjs. Other windows keep theirs in the same list.
    property var profiles: []

    readonly property string _key: "settings_profiles/profilesJson"

    // The data of a profile is to be applied.
    signal chosen(data: var)

    // Reads what is kept. What cannot be read stays there until something is saved.
    function load(): void {
        profiles = Profiles.parsedProfiles(SharedTexts.read(_key, "[]")) ?? [];
    }

    function _save(name: string): void {
        _change(kept => [...kept, Profiles.newProfile(name, kept, settings)]);
    }

    function _remove(id: string): void {
        _change(kept => kept.filter(profile => profile.id !== id));
    }

    // `edit` gives the new list for the one that is kept.
    function _change(edit: var): void {
        const json = SharedTexts.change(_key, "[]",
            kept => JSON.stringify(edit(Profiles.parsedProfiles(kept) ?? [])));
        profiles = Profiles.parsedProfiles(json) ?? [];
    }

    padding: theme.spaceMd

    RowLayout {
        anchors.fill: parent
        spacing: panel.theme.spaceSm

        ProfileButton {
            objectName: "loadSettings"
            text: qsTr("Load settings")
            iconName: panel.width < 300 ? "" : "folder-open"
            onClicked: {
                panel.load();
                (loadDialog.get() as LoadProfileDialog).openFresh();
            }
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

    component ProfileButton: SecondaryButton {
        theme: panel.theme
        compact: true
        implicitHeight: 34
        Layout.fillWidth: true
        Layout.preferredWidth: 1
    }
}
