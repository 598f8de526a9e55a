pragma ComponentBehavior: Bound

import QtQuick
import Tidewell

// Knows whether the project has changes that are in no file, and asks before they are lost. A
// result and locks that are in no file are such a change, too; a solve that runs is asked about as
// well.
Item {
    id: guard

    required property ProjectState project
    required property ProjectFiles files
    property Theme theme: Fallback.theme
    property bool hasProject: false
    // What is found sooner than the question is answered can be found again: the solver comes to the
    // same result to the last bit.
    property real worthKeepingSeconds: 2

    readonly property bool unsavedChanges: hasProject
        && (_hasNewResult || (project.controller?.nodeLocksUnsaved ?? false)
            || JSON.stringify(project.exportProjectState()) !== _savedState)
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
        _confirm(proceed, {
            title: qsTr("Unsaved changes"),
            discardText: qsTr("Don't Save"),
            saveText: qsTr("Save")
        });
    }

    // The same before a solve, which keeps the project but neither its result nor, unless it is made
    // under them, its locks.
    function confirmSolve(proceed: var, underLocks: bool): void {
        const result = _hasNewResult && _solveSeconds() >= worthKeepingSeconds;
        const locks = !underLocks && (project.controller?.nodeLocksUnsaved ?? false);
        if (!result && !locks) {
            proceed();
            return;
        }
        _ask({
            title: result ? qsTr("Keep the result?") : qsTr("Keep the locks?"),
            text: _whatASolveTakes(result, locks),
            discardText: qsTr("Don't Save"),
            saveText: qsTr("Save")
        }, proceed);
    }

    // The same before another spot takes the place of what has been entered; results stay.
    function confirmSetup(proceed: var): void {
        if (!hasProject || JSON.stringify(project.exportProjectState()) === _savedState) {
            proceed();
            return;
        }
        _ask({
            title: qsTr("Unsaved changes"),
            text: qsTr("Setup has changes that are not saved. Another spot takes their place."),
            discardText: qsTr("Don't Save"),
            saveText: qsTr("Save")
        }, proceed);
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
        _confirm(() => {
            guard._mayClose = true;
            close();
        }, {
            title: qsTr("Quit Tidewell?"),
            discardText: qsTr("Quit Without Saving"),
            saveText: qsTr("Save and Quit"),
            stopText: qsTr("Quit")
        });
        return false;
    }

    // Texts of the question; `stopText` for the yes where there is no more to lose than a solve that
    // runs.
    function _confirm(proceed: var, question: var): void {
        if (unsavedChanges) {
            const paragraphs = [_whatIsUnsaved()];
            if (_running) {
                paragraphs.push(qsTr("The solve that is running will be cancelled."));
            }
            _ask(Object.assign({text: paragraphs.join("\n\n")}, question), proceed);
        } else if (_running) {
            const dialog = solveDialog.get() as ConfirmDialog;
            dialog.proceed = proceed;
            dialog.title = question.stopText ? question.title : qsTr("Solve running");
            dialog.confirmText = question.stopText ?? qsTr("Cancel Solve");
            dialog.open();
        } else {
            proceed();
        }
    }

    function _ask(question: var, proceed: var): void {
        (unsavedDialog.get() as UnsavedDialog).ask(question, proceed);
    }

    function _solveSeconds(): real {
        return project.controller?.run?.seconds() ?? 0;
    }

    function _whatIsUnsaved(): string {
        const name = files.currentName;
        if (!_hasNewResult || _running) {
            return name === "" ? qsTr("This project has changes that are not saved.")
                               : qsTr("%1 has changes that are not saved.").arg(name);
        }
        const time = DurationText.of(_solveSeconds());
        //: %1 is a time such as "19 s"
        return name === "" ? qsTr("Keep the result of %1 of solving? It is not saved.").arg(time)
                           : qsTr("Keep the result of %1 of solving? It is not saved in %2.")
                             .arg(time).arg(name);
    }

    function _whatASolveTakes(result: bool, locks: bool): string {
        const time = DurationText.of(_solveSeconds());
        if (!result) {
            return qsTr("Keep the locks that are set? A solve from Setup starts without them.");
        }
        //: %1 is a time such as "19 s"
        return locks ? qsTr("Keep the result of %1 of solving, and the locks that are set? "
                            + "A new solve replaces both.").arg(time)
                     : qsTr("Keep the result of %1 of solving? A new solve replaces it.").arg(time);
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
            onSaveRequested: then => guard.files.saveAgain(then)
        }
    }
    OnDemand {
        id: solveDialog

        ConfirmDialog {
            property var proceed: null

            theme: guard.theme
            text: qsTr("A solve is running. It will be cancelled, and what it has found is lost.")
            cancelText: qsTr("Keep Solving")
            danger: true
            onAccepted: {
                const goOn = proceed;
                goOn();
            }
        }
    }
}
