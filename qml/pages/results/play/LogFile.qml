pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Dialogs
import Tidewell

// Saves the log of hands as a file of tab-separated text.
OnDemand {
    id: place

    required property HandLog log
    // The program's AppController.
    required property var controller

    // In words for a person; empty when the last save went well.
    property string error: ""

    function choose(): void {
        (get() as FileDialog).open();
    }

    function save(file: url): void {
        const answer = controller.saveTextFile(file, log.toText());
        //: %1 is why
        error = answer.ok ? "" : qsTr("The log could not be saved. %1").arg(answer.error);
    }

    FileDialog {
        title: qsTr("Save Hand Log")
        fileMode: FileDialog.SaveFile
        defaultSuffix: "tsv"
        nameFilters: [qsTr("Tab-separated text (*.tsv)"), qsTr("All Files (*)")]
        onAccepted: place.save(selectedFile)
    }
}
