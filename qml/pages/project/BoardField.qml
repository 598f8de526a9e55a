import QtQuick
import Tidewell
import "../../logic/board_text.mjs" as Board

// A board as text, typed or pasted. Whole cards leave by `edited` as they are typed; what is none
// stays in the field, marked.
AppTextField {
    id: field

    property string boardText: ""

    // Not while the last card is half typed.
    property bool _finished: true
    readonly property var _typed: Board.typedBoard(text)

    signal edited(board: string)

    mono: true
    placeholderText: "As Kd 7c"
    error: _finished && _typed.piece !== ""
        //: A piece of a board that was typed
        ? qsTr("“%1” is no card of a board such as As Kd 7c").arg(_typed.piece) : ""
    tipElsewhere: true
    pending: _typed.piece !== ""
    inputMethodHints: Qt.ImhNoPredictiveText | Qt.ImhNoAutoUppercase
    Accessible.name: qsTr("Cards of the board")

    onBoardTextChanged: if (Board.typedBoard(text).board !== boardText) text = Board.spaced(boardText)
    // What follows from the text is not there yet.
    onTextEdited: {
        const {board, piece} = Board.typedBoard(text);
        _finished = error !== "" || piece.length > 1;
        if (board !== boardText) {
            edited(board);
        }
    }
    onEditingFinished: {
        _finished = true;
        if (_typed.piece === "") {
            text = Board.spaced(boardText);
        }
    }
    Component.onCompleted: text = Board.spaced(boardText)
    Connections {
        target: field.history

        function onForgotten(): void {
            field.text = Board.spaced(field.boardText);
        }
    }
}
