import QtQuick
import QtTest
import Tidewell

// The program's window, with a screen of its own.
TestCase {
    id: test

    readonly property Component windowComponent: Main {
        availableGeometry: Qt.rect(0, 0, 2000, 1200)
    }

    // Pages that come and go, and one that is seen for the first time, change nothing about it.
    function test_leastWidth(): void {
        failOnWarning(/.?/);
        const window = createTemporaryObject(windowComponent, test);
        const shell = Array.from(window.contentItem.children).find(item => item instanceof AppShell);
        const least = window.minimumWidth;
        compare(least, 1540);
        shell.newProject();
        for (const index of [1, 0, 4, 1, 4]) {
            shell.navIndex = index;
            wait(50);
            compare([window.minimumWidth, shell.navIndex], [least, index]);
        }
        const measured = shell.projectRecommendedWidth;
        verify(measured > 1000, "as the page was last seen, not as it is hidden: " + measured);
    }

    name: "Window"
    when: windowShown
}
