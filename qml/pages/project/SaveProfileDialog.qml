import QtQuick
import QtQuick.Layouts
import Tidewell

// Asks for the name of a settings profile.
AppDialog {
    id: dialog

    signal named(name: string)

    function openFresh(): void {
        field.clear();
        complaint.visible = false;
        field.focus = true;
        open();
    }

    function _save(): void {
        if (field.text.trim() === "") {
            complaint.visible = true;
            return;
        }
        named(field.text);
        accept();
    }

    title: qsTr("Save Settings Profile")
    buttons: [
        SecondaryButton {
            theme: dialog.theme
            text: qsTr("Cancel")
            onClicked: dialog.reject()
        },
        PrimaryButton {
            objectName: "saveProfile"
            theme: dialog.theme
            text: qsTr("Save")
            enabled: field.text.trim() !== ""
            onClicked: dialog._save()
        }
    ]

    ColumnLayout {
        spacing: dialog.theme.spaceSm

        AppLabel {
            id: label

            theme: dialog.theme
            text: qsTr("Profile name:")
        }
        AppTextField {
            id: field

            objectName: "profileName"
            theme: dialog.theme
            focus: true
            placeholderText: qsTr("e.g., 100bb rake-free (fast)")
            Accessible.name: label.text
            onTextEdited: complaint.visible = false
            onAccepted: dialog._save()
            Layout.preferredWidth: 340
        }
        AppLabel {
            id: complaint

            objectName: "nameComplaint"
            theme: dialog.theme
            text: qsTr("Please enter a name.")
            color: dialog.theme.danger
            font.pixelSize: Fallback.type.labelMd
            visible: false
        }
    }
}
