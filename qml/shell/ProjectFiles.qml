pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Dialogs
import QtQuick.Templates as T
import Tidewell

// Opens and saves projects: the dialogs, the list of recent files, and the file that the project on
// screen belongs to.
Item {
    id: files

    property Theme theme: Fallback.theme
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
    readonly property var _nameFilters: [
        qsTr("Tidewell Project (*.tidewellproj)"),
        qsTr("JSON (*.json)"),
        qsTr("All Files (*)")
    ]

    signal opened(var projectState, bool hasResults)
    signal saved(var projectState)
    // In words for a person.
    signal failed(string message)

    function nameOf(file: url): string {
        const name = String(file).split("/").pop();
        try {
            return decodeURIComponent(name);
        } catch (error) {
            return name;  // bytes that are no UTF-8
        }
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
            //: The first is a file's name, the second why
            failed(qsTr("%1 could not be saved. %2").arg(nameOf(file))
                .arg(controller?.saveError ?? ""));
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
        } else {
            _afterSave = then ?? null;
            _saveKeepingResults(currentFile);
        }
    }

    function chooseToSave(then: var): void {
        const dialog = saveDialog.get() as FileDialog;
        _afterSave = then ?? null;
        _enterFolder(dialog);
        dialog.selectedFile = String(currentFile) !== "" ? currentFile
                                                         : _proposedFile(dialog.currentFolder);
        dialog.open();
        _dressPathBar(T.Overlay.overlay);
    }

    function chooseToOpen(): void {
        const dialog = openDialog.get() as FileDialog;
        _enterFolder(dialog);
        dialog.open();
        _dressPathBar(T.Overlay.overlay);
    }

    // The project on screen belongs to no file any more.
    function forgetFile(): void {
        currentFile = "";
    }

    // Qt's own dialog takes its colours from the window's palette, but for the ground of the bar with the
    // path, which is white. Where the system has a dialog there is no such bar.
    function _dressPathBar(item: var): bool {
        if (item?.upButton !== undefined && item.background) {
            item.background.color = Qt.binding(() => files.theme.surface2);
            return true;
        }
        return Array.from(item?.children ?? []).some(child => _dressPathBar(child));
    }

    // Named after the board.
    function _proposedFile(folder: url): url {
        const provide = stateProvider;
        const board = (provide().boardText ?? "").replace(/[^0-9A-Za-z]/g, "");
        return `${folder}/${board || qsTr("Spot")}.tidewellproj`;
    }

    // Where projects were last.
    function _enterFolder(dialog: FileDialog): void {
        const folder = recent.newestFolder();
        if (String(folder) !== "") {
            dialog.currentFolder = folder;
        }
    }

    // The dialog that Qt brings of its own gives what was typed there as a bare path, behind that of
    // the folder even where it is a whole one.
    function _fileOf(choice: url): url {
        const path = String(choice).replace(/^file:\/\//, "");
        return "file://" + path.slice(path.lastIndexOf("//") + 1);
    }

    // Asks before the content of another file than the project's own is lost.
    function _saveAs(file: url): void {
        if (String(file) === String(currentFile) || !recent.exists(file)) {
            _saveKeepingResults(file);
            return;
        }
        const question = overwriteDialog.get() as ConfirmDialog;
        question.file = file;
        question.open();
    }

    // Asks before a result on the disk is replaced by none.
    function _saveKeepingResults(file: url): void {
        if (busy || controller?.running || !(controller?.saveLosesResult(file) ?? false)) {
            _saveChosen(file);
            return;
        }
        const question = resultDialog.get() as ConfirmDialog;
        question.file = file;
        question.open();
    }

    function _saveChosen(file: url): void {
        const then = _afterSave;
        _afterSave = null;
        if (save(file) && then) {
            then();
        }
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

    OnDemand {
        id: saveDialog

        FileDialog {
            parentWindow: files.Window.window
            title: qsTr("Save Project")
            fileMode: FileDialog.SaveFile
            acceptLabel: qsTr("Save")
            defaultSuffix: selectedNameFilter.index === 1 ? "json" : "tidewellproj"
            nameFilters: files._nameFilters
            // Not every platform's dialog asks, so the program does.
            // qmllint disable
            options: FileDialog.DontConfirmOverwrite
            // qmllint enable
            onAccepted: files._saveAs(files._fileOf(selectedFile))
            onRejected: files._afterSave = null
        }
    }
    OnDemand {
        id: overwriteDialog

        ConfirmDialog {
            property url file

            theme: files.theme
            title: qsTr("Replace file")
            text: qsTr("%1 is there already. Its content will be replaced.")
                .arg(files.nameOf(file))
            confirmText: qsTr("Replace")
            danger: true
            onAccepted: files._saveChosen(file)
            onRejected: files._afterSave = null
        }
    }
    OnDemand {
        id: resultDialog

        ConfirmDialog {
            property url file

            theme: files.theme
            title: qsTr("Replace the result?")
            text: qsTr("%1 holds the result of a solve, and there is none now. Saving to it would "
                       + "lose that result.").arg(files.nameOf(file))
            otherText: qsTr("Save As…")
            confirmText: qsTr("Replace")
            danger: true
            onAccepted: files._saveChosen(file)
            onOtherChosen: files.chooseToSave(files._afterSave)
            onRejected: files._afterSave = null
        }
    }
    OnDemand {
        id: openDialog

        FileDialog {
            parentWindow: files.Window.window
            title: qsTr("Open Project")
            fileMode: FileDialog.OpenFile
            nameFilters: files._nameFilters
            onAccepted: files.open(files._fileOf(selectedFile))
        }
    }
}
