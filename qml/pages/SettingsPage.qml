import QtQuick
import QtQuick.Layouts
import Tidewell

// What the person likes. Changes show at once, and outlive the program when they are saved.
Item {
    id: page

    property Theme theme: Fallback.theme
    property Typography type: Fallback.type
    property bool darkMode: true
    // The program's AppController and UpdateManager; null for none.
    property var controller: null
    property var updater: null

    // The settings were written to the store.
    signal stored

    // "" for the theme's own accent; what is no colour is ignored.
    function applyAccentHex(s: string): void {
        store.applyAccent(theme, s);
    }

    function saveSettings(): void {
        store.keep(darkMode, theme);
        stored();
    }

    function resetToDefaults(): void {
        darkMode = true;
        applyAccentHex("");
        theme.distinctActions = false;
        saveSettings();
    }

    AppearanceStore {
        id: store
    }
    AppScrollView {
        id: scroll

        anchors.fill: parent
        theme: page.theme
        contentWidth: availableWidth

        ColumnLayout {
            x: Math.round((scroll.availableWidth - width) / 2)
            width: Math.min(0.66 * scroll.availableWidth, scroll.availableWidth - 48)
            spacing: page.theme.spaceXl

            SectionHeader {
                theme: page.theme
                title: qsTr("Settings")
                Layout.fillWidth: true
                Layout.topMargin: page.theme.spaceXl
            }
            AppearanceCard {
                theme: page.theme
                darkMode: page.darkMode
                onDarkModeToggled: on => page.darkMode = on
                onAccentChosen: accent => page.applyAccentHex(accent)
                onDistinctActionsChosen: on => page.theme.distinctActions = on
                Layout.fillWidth: true
            }
            LicensesCard {
                theme: page.theme
                onFolderRequested: page.controller.openLicensesFolder()
                onNoticesRequested: page.controller.openThirdPartyNotices()
                Layout.fillWidth: true
            }
            UpdatesCard {
                theme: page.theme
                updater: page.updater
                Layout.fillWidth: true
            }
            RowLayout {
                spacing: page.theme.spaceSm
                Layout.bottomMargin: page.theme.spaceXl

                Item {
                    Layout.fillWidth: true
                }
                SecondaryButton {
                    theme: page.theme
                    text: qsTr("Reset to Defaults")
                    onClicked: page.resetToDefaults()
                }
                PrimaryButton {
                    theme: page.theme
                    text: qsTr("Save Settings")
                    onClicked: page.saveSettings()
                }
            }
        }
    }
}
