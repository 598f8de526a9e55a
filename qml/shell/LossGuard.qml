pragma ComponentBehavior: Bound

import QtQuick
import Tidewell

// Knows whether the project has changes that are in no file, and asks before they are lost. A
// result that is in no file is such a change, too; a solve that runs is asked about as well.
Item {
    id: guard

    required property ProjectState project
    required property ProjectFiles files
    property Theme theme: Fallback.theme
    property bool hasProject: false

    readonly property bool unsavedChanges: hasProject
        && (_hasNewResult || JSON.stringify(project.exportProjectState()) !== _savedState)
    readonly property bool _running: project.controller?.running ?? false

    // The project state that a file holds, or that nobody has touched yet.
    property string _savedState: ""
    property bool _hasNewResult: false
    property bool _mayClose: false

    function markSaved(projectState: var): void {
        _savedState = JSON.stringify(projectState);
        _hasNewResult = false;
    }

    // Calls `proceed` at once where nothing is lost by it, otherwise when the person agrees.
    function confirmLoss(proceed: var): void {
        if (unsavedChanges) {
            (unsavedDialog.get() as UnsavedDialog).ask(proceed);
        } else if (_running) {
            const dialog = solveDialog.get();
            dialog.proceed = proceed;
            dialog.open();
        } else {
            proceed();
        }
    }

    // Whether the window may close now. If not, `close` is called when it may; not at all, though,
    // where a file is just being written.
    function requestClose(close: var): bool {
        if (files.busy) {
            return false;
        }
        if (_mayClose || !unsavedChanges && !_running) {
            return true;
        }
        confirmLoss(() => {
            guard._mayClose = true;
            close();
        });
        return false;
    }

    Connections {
        target: guard.project.controller

        function onResultsChanged(): void {
            guard._hasNewResult = guard.project.controller.resultIterations > 0;
        }
    }
    Connections {
        target: guard.files

        function onSaved(projectState: var): void {
            guard.markSaved(projectState);
        }
    }
    OnDemand {
        id: unsavedDialog

        UnsavedDialog {
            theme: guard.theme
            solveRuns: guard._running
            fileName: guard.files.currentName
            onSaveRequested: then => guard.files.saveAgain(then)
        }
    }
    OnDemand {
        id: solveDialog

        ConfirmDialog {
            property var proceed: null

            theme: guard.theme
            title: qsTr("Solve running")
            text: qsTr("A solve is running. It will be cancelled, and what it has found is lost.")
            confirmText: qsTr("Cancel Solve")
            cancelText: qsTr("Keep Solving")
            danger: true
            onAccepted: {
                const goOn = proceed;
                goOn();
            }
        }
    }
}
