pragma ComponentBehavior: Bound

import QtQuick
import Tidewell

// What is typed and chosen in.
DocumentCase {
    id: test

    readonly property Component numberField: NumberField {
        value: model.number
        from: 0.01
        to: 100
        onCommitted: number => model.number = number
    }
    readonly property Component stubbornField: NumberField { value: 10 }
    readonly property Component textField: AppTextField {}
    readonly property Component textArea: AppTextArea {}
    readonly property Component comboBox: AppComboBox {
        model: ["One", "Two", "Three, the widest of all"]
    }
    readonly property Component sliderComponent: AppSlider {
        to: 10
        stepSize: 1
    }

    function init(): void {
        failOnWarning(/.?/);
        model.number = 10;
    }

    // What a field that holds 10 makes of what is typed, with bounds of 0.01 and 100.
    function test_numberIsCommitted_data(): var {
        return [
            {typed: "42.50", number: 42.5},
            {typed: "0.01", number: 0.01},
            {typed: "100", number: 100},
            {typed: "150", refused: true},
            {typed: "0", refused: true},
            {typed: "", refused: true},
            {typed: ".", refused: true},
            {typed: "1.239", refused: true},
            {typed: "a5b", number: 5},
            {typed: "1e1", refused: true},
            {typed: "-5", refused: true},
            {typed: "1,5", number: 1.5},
            {typed: "1,500", refused: true},
            {typed: "1,5,0", refused: true},
            {typed: ",5", number: 0.5},
            {typed: "1 0", number: 10},
            {typed: "-1.5", properties: {from: -5}, number: -1.5},
            {typed: "7", properties: {decimals: 0}, number: 7},
            {typed: "7,5", properties: {decimals: 0}, refused: true}
        ];
    }

    function test_numberIsCommitted(row: var): void {
        for (const leaveBy of [Qt.Key_Return, Qt.Key_Tab]) {
            model.number = 10;
            const field = make(numberField, row.properties);
            make(textField);
            const committed = spyOn(field, "committed");
            type(field, row.typed);
            keyClick(leaveBy);
            compare(committed.count, row.refused ? 0 : 1);
            compare(model.number, row.number ?? 10);
            if (leaveBy === Qt.Key_Tab || !row.refused) {
                compare(field.text, String(model.number));
            }
            field.destroy();
        }
    }

    function test_numberOutOfBoundsIsMarked(): void {
        const field = make(numberField);
        const edited = spyOn(field, "edited");
        type(field, "150");
        compare(firstArguments(edited), [1, 15], "150 is out of bounds");
        verify(field.error.includes("100"), field.error);
        verify(Qt.colorEqual(field.background.border.color, Fallback.theme.danger));
        compare(field.Accessible.description, field.error);
        make(textField).forceActiveFocus();
        compare(field.error, "");
        compare(field.text, "10");
    }

    function test_numberIgnoresWhatCannotBeOne(): void {
        const field = make(numberField);
        const source = make(textField, {text: "1,500", y: 100});
        source.selectAll();
        source.copy();
        type(field, "");
        field.paste();
        compare(field.text, "");
    }

    function test_numberFollowsItsModelUnlessTypedIn(): void {
        const field = make(numberField);
        model.number = 20;
        compare(field.text, "20");
        type(field, "3");
        model.number = 30;
        compare(field.text, "3");
        const other = make(textField);
        field.text = "x";
        other.forceActiveFocus();
        compare(field.text, "30");
        // Out of bounds, but that is no fault of the user's.
        model.number = 0;
        field.forceActiveFocus();
        compare([field.text, field.error], ["0", ""]);
    }

    // The owner may refuse or change what was committed: the field shows what the owner holds.
    function test_numberShowsWhatTheOwnerMadeOfIt(): void {
        const field = make(stubbornField);
        type(field, "42");
        keyClick(Qt.Key_Return);
        compare(field.text, "10");
    }

    function test_textFieldTellsItsError(): void {
        const field = make(textField, {placeholderText: "Name", tip: "Any name", y: 100});
        compare(field.Accessible.description, "Any name");
        type(field, "abc");
        const tip = Array.from(field.data).find(item => item instanceof Tip);
        verify(!tip.item);
        field.error = "Not a name";
        tryVerify(() => tip.item?.opened);
        compare([tip.text, field.Accessible.description], ["Not a name", "Not a name"]);
        field.error = "";
        tryVerify(() => !tip.item.visible);
        field.enabled = false;
        keyClick("d");
        compare(field.text, "abc");
        verify(field.opacity < 1);
    }

    // Several lines take Return, but the keyboard can leave by Tab.
    function test_textAreaByKeyboard(): void {
        const area = make(textArea);
        const next = make(textField);
        area.editor.forceActiveFocus();
        keys(["a", Qt.Key_Return, "b"]);
        compare(area.text, "a\nb");
        keyClick(Qt.Key_Tab);
        verify(next.activeFocus);
        compare(area.text, "a\nb");
        keyClick(Qt.Key_Backtab);
        verify(area.editor.activeFocus);
    }

    function test_comboByKeyboard(): void {
        const box = make(comboBox);
        const activated = spyOn(box, "activated");
        box.forceActiveFocus(Qt.TabFocusReason);
        verify(Qt.colorEqual(box.background.border.color, Fallback.theme.strokeFocus));
        keyClick(Qt.Key_Down);
        compare(box.currentText, "Two");
        keyClick(Qt.Key_Space);
        tryVerify(() => box.popup.opened);
        keyClick(Qt.Key_Down);
        keyClick(Qt.Key_Return);
        tryVerify(() => !box.popup.visible);
        compare(box.currentText, "Three, the widest of all");
        compare(activated.count, 2);
        keyClick(Qt.Key_Space);
        tryVerify(() => box.popup.opened);
        keyClick(Qt.Key_Escape);
        tryVerify(() => !box.popup.visible);
        compare(activated.count, 2);
    }

    // Models of objects are read by the text role.
    function test_comboByMouse(): void {
        const box = make(comboBox, {model: languages, textRole: "label", valueRole: "code"});
        compare(box.displayText, "English");
        mouseClick(box);
        tryVerify(() => box.popup.opened);
        verify(waitForRendering(box.popup.contentItem));
        const row = box.popup.contentItem.itemAtIndex(1);
        compare([row.text, row.Accessible.name], ["Deutsch", "Deutsch"]);
        mouseClick(row);
        tryVerify(() => !box.popup.visible);
        compare([box.displayText, box.currentValue], ["Deutsch", "de"]);
    }

    function test_comboIsAsWideAsItsWidestText(): void {
        const box = make(comboBox);
        metrics.font = box.font;
        const width = box.implicitWidth;
        verify(width - box.leftPadding - box.rightPadding
               >= metrics.advanceWidth("Three, the widest of all"));
        box.currentIndex = 2;
        compare(box.implicitWidth, width);
        box.model = ["One"];
        verify(box.implicitWidth < width);
    }

    function test_slider(): void {
        const slider = make(sliderComponent);
        slider.forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Right);
        fuzzyCompare(slider.value, 1, 1e-9);
        mousePress(slider, 1, 12);
        mouseMove(slider, slider.width / 2, 12);
        mouseRelease(slider, slider.width / 2, 12);
        fuzzyCompare(slider.value, 5, 0.5);
    }

    function test_isSpokenAndGrowsWithItsFont(): void {
        const named = {placeholderText: "Pot"};
        for (const [component, properties, role, name] of [
            [textField, named, Accessible.EditableText, "Pot"],
            [numberField, named, Accessible.EditableText, "Pot"],
            [comboBox, {}, Accessible.ComboBox, "One"],
            [sliderComponent, {}, Accessible.Slider, ""]]) {
            const field = make(component, properties);
            compare([field.Accessible.role, field.Accessible.name], [role, name]);
            field.font.pixelSize = 40;
            verify(field.implicitHeight > 40 || role === Accessible.Slider);
        }
    }

    name: "Fields"
    width: 600
    height: 500

    QtObject {
        id: model

        property real number: 10
    }
    ListModel {
        id: languages

        ListElement {
            label: "English"
            code: "en"
        }
        ListElement {
            label: "Deutsch"
            code: "de"
        }
    }
    FontMetrics {
        id: metrics
    }
}
