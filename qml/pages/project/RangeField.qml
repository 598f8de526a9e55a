import QtQuick
import Tidewell

// A range as text, which leaves by `edited` at every stroke. While the field has no keyboard it reads
// as one line, cut at the right.
AppTextField {
    id: field

    property string rangeText: ""
    // Where the range is to be played: some hand must be left beside its cards.
    property string boardText: ""

    // A mistake is marked once the text is finished, and until it is mended.
    property bool _finished: true
    readonly property string _mistake: TextChecks.checkRange(text, boardText)

    signal edited(text: string)

    mono: true
    //: An example of a range; the hands are written alike in all languages
    placeholderText: qsTr("e.g., AA, KK, AKs, QQ+ or 50%")
    error: _finished ? _mistake : ""
    color: activeFocus ? theme.text : "transparent"
    placeholderTextColor: activeFocus ? theme.placeholder : "transparent"
    inputMethodHints: Qt.ImhNoPredictiveText | Qt.ImhNoAutoUppercase

    onRangeTextChanged: if (text !== rangeText) text = rangeText
    onTextEdited: {
        _finished = error !== "";
        edited(text);
    }
    onEditingFinished: _finished = true
    Component.onCompleted: text = rangeText

    AppLabel {
        anchors.fill: parent
        leftPadding: field.leftPadding
        rightPadding: field.rightPadding
        theme: field.theme
        mono: true
        muted: field.text === ""
        text: field.text === "" ? field.placeholderText : field.text
        color: field.text === "" ? field.theme.placeholder : field.theme.text
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        visible: !field.activeFocus
        Accessible.ignored: true
    }
}
