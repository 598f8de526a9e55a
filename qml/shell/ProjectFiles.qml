import QtQuick
import QtQuick.Dialogs
import Tidewell

// Opens and saves projects: the dialogs, the list of recent files, and the file that the project on
// screen belongs to.
Item {
    id: files

    property var controller: null
    // Gives the project state to be saved, a map.
    property var stateProvider: () => ({})
    // Called with what would lose unsaved changes; calls it when they may be lost.
    property var confirmLoss: proceed => proceed()
    // Of the project on screen; empty until it is saved or when it was not opened from a file.
    property url currentFile: ""

    readonly property string currentName: nameOf(currentFile)
    readonly property RecentFiles recent: RecentFiles {}
    // A file is being read or written; meanwhile nothing else may begin.
    property bool busy: false
    property var _afterSave: null

    signal opened(var projectState, bool hasResults)
    signal saved(var projectState)
    // In words for a person.
    signal failed(string message)

    function nameOf(file: url): string {
        return decodeURIComponent(String(file).split("/").pop());
    }

    function save(file: url): bool {
        if (busy) {
            return false;
        }
        const provide = stateProvider;
        const projectState = provide();
        busy = true;
        const isSaved = controller?.saveProject(file, projectState) ?? false;
        busy = false;
        if (!isSaved) {
            console.warn("Save failed:", file);
            failed(qsTr("%1 could not be saved. Is its folder writable, and is there room on the "
                        + "disk?").arg(nameOf(file)));
            return false;
        }
        currentFile = file;
        recent.add(file);
        saved(projectState);
        return true;
    }

    function open(file: url): void {
        if (controller?.running) {
            failed(qsTr("A solve is running. Wait for it or cancel it, then open %1.")
                .arg(nameOf(file)));
            return;
        }
        confirmLoss(() => files._load(file));
    }

    // To where it was saved before; asks where when there is no such place yet. `then` is called
    // when it is saved.
    function saveAgain(then: var): void {
        if (String(currentFile) === "") {
            chooseToSave(then);
        } else if (save(currentFile) && then) {
            then();
        }
    }

    function chooseToSave(then: var): void {
        _afterSave = then ?? null;
        saveDialog.selectedFile = String(currentFile) !== "" ? currentFile : _proposedFile();
        saveDialog.open();
    }

    function chooseToOpen(): void {
        openDialog.open();
    }

    // The project on screen belongs to no file any more.
    function forgetFile(): void {
        currentFile = "";
    }

    // Named after the board.
    function _proposedFile(): url {
        const provide = stateProvider;
        const board = (provide().boardText ?? "").replace(/[^0-9A-Za-z]/g, "");
        return `${saveDialog.currentFolder}/${board || qsTr("Spot")}.tidewellproj`;
    }

    // The dialog that Qt brings of its own gives what was typed there as a bare path.
    function _fileOf(choice: url): url {
        const text = String(choice);
        return text.startsWith("/") ? "file://" + text : choice;
    }

    function _load(file: url): void {
        busy = true;
        const answer = controller?.loadProject(file) ?? {ok: false, error: ""};
        busy = false;
        if (!answer.ok) {
            const reason = answer.error || qsTr("unknown");
            console.warn("Load failed:", reason);
            //: The first is a file's name, the second what is wrong with it
            failed(qsTr("%1 could not be opened: %2").arg(nameOf(file)).arg(reason));
            recent.refresh();
            return;
        }
        currentFile = file;
        recent.add(file);
        opened(answer.project, answer.hasResults);
    }

    FileDialog {
        id: saveDialog

        parentWindow: files.Window.window
        title: qsTr("Save Project")
        fileMode: FileDialog.SaveFile
        acceptLabel: qsTr("Save")
        defaultSuffix: selectedNameFilter.index === 1 ? "json" : "tidewellproj"
        nameFilters: openDialog.nameFilters
        onAccepted: {
            const then = files._afterSave;
            files._afterSave = null;
            if (files.save(files._fileOf(selectedFile)) && then) {
                then();
            }
        }
        onRejected: files._afterSave = null
    }
    FileDialog {
        id: openDialog

        parentWindow: files.Window.window
        title: qsTr("Open Project")
        fileMode: FileDialog.OpenFile
        nameFilters: [
            qsTr("Tidewell Project (*.tidewellproj)"),
            qsTr("JSON (*.json)"),
            qsTr("All Files (*)")
        ]
        onAccepted: files.open(files._fileOf(selectedFile))
    }
}
