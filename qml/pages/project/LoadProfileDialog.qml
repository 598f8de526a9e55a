pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tidewell

// Chooses one of the settings profiles, or deletes it.
AppDialog {
    id: dialog

    property var profiles: []

    // Id of the chosen row, empty for none.
    property string _selected: ""
    readonly property var _profile: profiles.find(profile => profile.id === _selected) ?? null

    signal chosen(data: var)
    signal deleted(id: string)

    function openFresh(): void {
        _select("");
        list.focus = true;
        open();
    }

    function _select(id: string): void {
        _selected = id;
        complaint.visible = false;
    }

    function _load(): void {
        if (!_profile) {
            complaint.visible = true;
            return;
        }
        chosen(_profile.data);
        accept();
    }

    title: qsTr("Load Settings Profile")
    buttons: [
        SecondaryButton {
            theme: dialog.theme
            text: qsTr("Cancel")
            onClicked: dialog.reject()
        },
        SecondaryButton {
            objectName: "deleteProfile"
            theme: dialog.theme
            text: qsTr("Delete")
            danger: enabled
            enabled: dialog._selected !== ""
            onClicked: (confirmation.get() as ConfirmDialog).open()
        },
        PrimaryButton {
            objectName: "loadProfile"
            theme: dialog.theme
            text: qsTr("Load")
            enabled: dialog._selected !== ""
            onClicked: dialog._load()
        }
    ]

    ColumnLayout {
        spacing: dialog.theme.spaceSm

        AppLabel {
            theme: dialog.theme
            text: qsTr("Choose a saved profile:")
        }
        Rectangle {
            implicitWidth: 380
            implicitHeight: Math.max(96, Math.min(list.contentHeight + 8, 280))
            radius: dialog.theme.radiusSm
            color: dialog.theme.surface2
            border.width: 1
            border.color: dialog.theme.stroke
            Layout.fillWidth: true

            AppLabel {
                objectName: "noProfiles"
                anchors.centerIn: parent
                theme: dialog.theme
                text: qsTr("No saved profiles yet.")
                muted: true
                visible: list.count === 0
            }
            ListView {
                id: list

                function chooseCurrent(): void {
                    dialog._select(dialog.profiles[currentIndex]?.id ?? "");
                }

                objectName: "profileList"
                anchors.fill: parent
                anchors.margins: 4
                clip: true
                focus: true
                boundsBehavior: Flickable.StopAtBounds
                activeFocusOnTab: count > 0
                keyNavigationEnabled: true
                model: dialog.profiles
                Accessible.role: Accessible.List
                Accessible.name: qsTr("Saved profiles")

                onCurrentIndexChanged: if (activeFocus) chooseCurrent()
                Keys.onSpacePressed: chooseCurrent()
                Keys.onReturnPressed: dialog._load()
                Keys.onEnterPressed: dialog._load()

                T.ScrollBar.vertical: AppScrollBar { theme: dialog.theme }

                delegate: AppListRow {
                    required property var modelData
                    required property int index

                    width: ListView.view.width
                    theme: dialog.theme
                    text: modelData.name
                    current: modelData.id === dialog._selected
                    highlighted: ListView.isCurrentItem && ListView.view.activeFocus
                    focusPolicy: Qt.NoFocus
                    onClicked: {
                        ListView.view.currentIndex = index;
                        dialog._select(modelData.id);
                    }
                    onDoubleClicked: {
                        dialog._select(modelData.id);
                        dialog._load();
                    }
                }
            }
        }
        AppLabel {
            id: complaint

            objectName: "profileComplaint"
            theme: dialog.theme
            text: qsTr("Please select a profile.")
            color: dialog.theme.danger
            font.pixelSize: Fallback.type.labelMd
            visible: false
        }
    }
    OnDemand {
        id: confirmation

        ConfirmDialog {
            theme: dialog.theme
            title: qsTr("Delete settings profile")
            text: [qsTr("Are you sure you want to delete this saved profile?"),
                   qsTr("“%1”").arg(dialog._profile?.name ?? ""),
                   qsTr("This cannot be undone.")].join("\n\n")
            confirmText: qsTr("Delete")
            danger: true
            onAccepted: {
                const id = dialog._selected;
                dialog._select("");
                dialog.deleted(id);
                list.focus = true;
            }
        }
    }
}
