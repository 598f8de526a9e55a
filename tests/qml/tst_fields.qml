pragma ComponentBehavior: Bound

import QtQuick
import QtTest
import Tidewell

// What is typed and chosen in.
TestCase {
    id: test

    name: "Fields"
    when: windowShown
    visible: true
    width: 600
    height: 500

    function init(): void {
        failOnWarning(/.?/);
        model.number = 10;
    }

    function make(component: Component, properties: var): var {
        return createTemporaryObject(component, test, properties ?? {});
    }

    function spyOn(item: QtObject, signalName: string): SignalSpy {
        return createTemporaryObject(spy, test, {target: item, signalName: signalName});
    }

    function type(field: Item, text: string): void {
        field.forceActiveFocus();
        keyClick(Qt.Key_A, Qt.ControlModifier);
        keyClick(Qt.Key_Backspace);
        for (const letter of text) {
            keyClick(letter);
        }
    }

    function test_numberIsCommitted_data(): var {
        return [
            {tag: "a number", typed: "42.5", number: 42.5, shown: "42.5"},
            {tag: "zeros at the end", typed: "42.50", number: 42.5, shown: "42.5"},
            {tag: "lower bound", typed: "0.01", number: 0.01, shown: "0.01"},
            {tag: "upper bound", typed: "100", number: 100, shown: "100"},
            {tag: "too large", typed: "150", number: 10, shown: "10", refused: true},
            {tag: "too small", typed: "0", number: 10, shown: "10", refused: true},
            {tag: "empty", typed: "", number: 10, shown: "10", refused: true},
            {tag: "only a point", typed: ".", number: 10, shown: "10", refused: true},
            {tag: "too many decimals", typed: "1.239", number: 1.23, shown: "1.23"},
            {tag: "letters", typed: "a5b", number: 5, shown: "5"},
            {tag: "an exponent", typed: "1e1", number: 11, shown: "11"},
            {tag: "a sign", typed: "-5", number: 5, shown: "5"},
            {tag: "a comma", typed: "1,5", number: 1.5, shown: "1.5"},
            {tag: "a comma for thousands", typed: "1,500", number: 1.5, shown: "1.5"},
            {tag: "two commas", typed: "1,5,0", number: 1.5, shown: "1.5"},
            {tag: "a comma first", typed: ",5", number: 0.5, shown: "0.5"},
            {tag: "a blank", typed: "1 0", number: 10, shown: "10"},
            {tag: "below 0", from: -5, typed: "-1.5", number: -1.5, shown: "-1.5"},
            {tag: "a comma in a whole", decimals: 0, from: 0, typed: "7,5", number: 75,
             shown: "75"},
            {tag: "whole", decimals: 0, from: 0, typed: "7", number: 7, shown: "7"},
            {tag: "a point in a whole", decimals: 0, from: 0, typed: "7.5", number: 75,
             shown: "75"}
        ];
    }

    function test_numberIsCommitted(row): void {
        for (const leaveBy of [Qt.Key_Return, Qt.Key_Tab]) {
            model.number = 10;
            const field = make(numberField,
                               {decimals: row.decimals ?? 2, from: row.from ?? 0.01});
            make(textField);
            const committed = spyOn(field, "committed");
            type(field, row.typed);
            keyClick(leaveBy);
            compare(committed.count, row.refused ? 0 : 1);
            if (leaveBy === Qt.Key_Tab || !row.refused) {
                compare(field.text, row.shown);
            }
            compare(model.number, row.number);
            field.destroy();
        }
    }

    function test_numberOutOfBoundsIsMarked(): void {
        const field = make(numberField);
        type(field, "150");
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

    // A model may hold what the field would not take; that is no fault of the user's.
    function test_numberOutOfBoundsInTheModelIsNotMarked(): void {
        const field = make(numberField, {value: 0, from: 0.01});
        compare(field.text, "0");
        field.forceActiveFocus();
        compare(field.error, "");
    }

    function test_numberFollowsItsModelUnlessTypedIn(): void {
        const field = make(numberField);
        compare(field.text, "10");
        model.number = 20;
        compare(field.text, "20");
        type(field, "3");
        model.number = 30;
        compare(field.text, "3");
        const other = make(textField);
        field.text = "x";
        other.forceActiveFocus();
        compare(field.text, "30");
    }

    // The owner may refuse or change what was committed: the field shows what the owner holds.
    function test_numberShowsWhatTheOwnerMadeOfIt(): void {
        const field = make(stubbornField);
        type(field, "42");
        keyClick(Qt.Key_Return);
        compare(field.text, "10");
    }

    function test_numberWhileTyping(): void {
        const field = make(numberField);
        const edited = spyOn(field, "edited");
        type(field, "150");
        // "1" and "15" are numbers in bounds, "150" is none.
        compare(edited.count, 2);
        compare(edited.signalArguments[1][0], 15);
    }

    function test_textFieldShowsItsState(): void {
        const theme = Fallback.theme;
        const field = make(textField, {placeholderText: "Name", tip: "Any name"});
        compare(field.Accessible.role, Accessible.EditableText);
        compare(field.Accessible.name, "Name");
        compare(field.Accessible.description, "Any name");
        verify(Qt.colorEqual(field.background.border.color, theme.stroke));
        type(field, "abc");
        compare(field.text, "abc");
        verify(Qt.colorEqual(field.background.border.color, theme.strokeFocus));
        field.error = "Not a name";
        verify(Qt.colorEqual(field.background.border.color, theme.danger));
        compare(field.Accessible.description, "Not a name");
        field.enabled = false;
        keyClick("d");
        compare(field.text, "abc");
        verify(field.opacity < 1);
    }

    function test_errorIsToldWhileTyping(): void {
        const field = make(textField, {y: 100});
        field.forceActiveFocus();
        const tip = findTip(field);
        verify(!tip.visible);
        field.error = "Not a size: x";
        tryVerify(() => tip.opened);
        compare(tip.text, "Not a size: x");
        field.error = "";
        tryVerify(() => !tip.visible);
    }

    function findTip(item: Item): var {
        for (let i = 0; i < item.data.length; ++i) {
            if (item.data[i] instanceof AppToolTip) {
                return item.data[i];
            }
        }
        return null;
    }

    // Several lines take Return, but the keyboard can leave by Tab.
    function test_textAreaByKeyboard(): void {
        const area = make(textArea);
        const next = make(textField);
        area.editor.forceActiveFocus();
        for (const key of ["a", Qt.Key_Return, "b"]) {
            keyClick(key);
        }
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

    function test_comboByMouse(): void {
        const box = make(comboBox);
        mouseClick(box);
        tryVerify(() => box.popup.opened);
        verify(waitForRendering(box.popup.contentItem));
        const row = box.popup.contentItem.itemAtIndex(1);
        compare(row.text, "Two");
        compare(row.Accessible.name, "Two");
        mouseClick(row);
        tryVerify(() => !box.popup.visible);
        compare(box.displayText, "Two");
        compare(box.Accessible.role, Accessible.ComboBox);
        compare(box.Accessible.name, "Two");
    }

    function test_comboIsAsWideAsItsWidestText(): void {
        const box = make(comboBox);
        metrics.font = box.font;
        const room = box.implicitWidth - box.leftPadding - box.rightPadding;
        verify(room >= metrics.advanceWidth("Three, the widest of all"));
        const width = box.implicitWidth;
        box.currentIndex = 2;
        compare(box.implicitWidth, width);
        box.model = ["One"];
        verify(box.implicitWidth < width);
    }

    // Models of objects are read by the text role.
    function test_comboOfObjects(): void {
        const box = make(comboBox, {model: languages, textRole: "label", valueRole: "code"});
        compare(box.displayText, "English");
        mouseClick(box);
        tryVerify(() => box.popup.opened);
        verify(waitForRendering(box.popup.contentItem));
        mouseClick(box.popup.contentItem.itemAtIndex(1));
        tryVerify(() => !box.popup.visible);
        compare(box.currentValue, "de");
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
        compare(slider.Accessible.role, Accessible.Slider);
        slider.enabled = false;
        keyClick(Qt.Key_Right);
        fuzzyCompare(slider.value, 5, 0.5);
    }

    function test_heightFollowsTheFont_data(): var {
        return [
            {tag: "text", component: textField},
            {tag: "number", component: numberField},
            {tag: "combo", component: comboBox}
        ];
    }

    function test_heightFollowsTheFont(row): void {
        const field = make(row.component);
        compare(field.implicitHeight, 34);
        field.font.pixelSize = 40;
        verify(field.implicitHeight > 40);
    }

    QtObject {
        id: model

        property real number: 10
    }
    Component {
        id: numberField

        NumberField {
            value: model.number
            to: 100
            onCommitted: number => model.number = number
        }
    }
    Component {
        id: stubbornField

        NumberField { value: 10 }
    }
    Component {
        id: textField

        AppTextField {}
    }
    Component {
        id: textArea

        AppTextArea {}
    }
    Component {
        id: comboBox

        AppComboBox { model: ["One", "Two", "Three, the widest of all"] }
    }
    Component {
        id: sliderComponent

        AppSlider {
            to: 10
            stepSize: 1
        }
    }
    Component {
        id: spy

        SignalSpy {}
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
