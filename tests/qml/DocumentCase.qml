import QtQuick
import QtTest

import "finding.mjs" as Finding

// What tests of documents share.
TestCase {
    id: documentCase

    // Set by the program that runs the tests.
    readonly property var controller: appController // qmllint disable unqualified
    readonly property var terminal: terminalProgram // qmllint disable unqualified
    // For files of the tests' own; it goes with the process.
    readonly property url temporaryFolder: temporaryFolderUrl // qmllint disable unqualified

    readonly property Component _spy: SignalSpy {}
    property var _spies: []

    // Whoever has an init of their own fails on warnings there.
    function init(): void {
        failOnWarning(/.?/);
    }

    // A spy outlives its test for a moment, and must not hear of the next one.
    function cleanup(): void {
        _spies.filter(spy => spy.target).forEach(spy => spy.target = null);
        _spies = [];
    }

    function make(component: Component, properties: var): var {
        return createTemporaryObject(component, documentCase, properties ?? {});
    }

    function spyOn(object: QtObject, signalName: string): SignalSpy {
        const spy = make(_spy, {target: object, signalName: signalName});
        _spies.push(spy);
        return spy;
    }

    // The values of a signal's first parameter, from the first time on.
    function firstArguments(spy: SignalSpy): var {
        return Array.from({length: spy.count}, (_, index) => spy.signalArguments[index][0]);
    }

    function all(item: var, matches: var): var {
        return Finding.allSeen(item, matches);
    }

    function texts(item: var): var {
        return all(item, child => child instanceof Text).map(child => child.text);
    }

    function keys(list: var): void {
        list.forEach(key => keyClick(key));
    }

    // In place of what is there.
    function type(field: var, text: string): void {
        field.forceActiveFocus();
        keyClick(Qt.Key_A, Qt.ControlModifier);
        keyClick(Qt.Key_Delete);
        keys([...text]);
    }

    // How much of the item's picture is as asked.
    function share(item: var, wanted: var): real {
        const picture = grabImage(item);
        let hits = 0;
        for (let x = 0; x < item.width; ++x) {
            for (let y = 0; y < item.height; ++y) {
                hits += wanted(picture.pixel(x, y)) ? 1 : 0;
            }
        }
        return hits / (item.width * item.height);
    }

    function isReddish(color: color): bool {
        return color.r > color.g + 0.2 && color.r > color.b + 0.2;
    }

    when: windowShown
    visible: true
}
