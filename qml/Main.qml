import QtQuick
import QtQuick.Controls.Basic
import Tidewell

import "logic/window_geometry.mjs" as WindowGeometry

ApplicationWindow {
    id: window

    // What the screen leaves to windows. The program sets it before it shows the window and keeps
    // it current; by itself QML only knows the area of all screens together.
    property rect availableGeometry: Qt.rect(0, 0,
        Screen.desktopAvailableWidth || Screen.width,
        Screen.desktopAvailableHeight || Screen.height)

    // Set by the program if it was started with one.
    property url projectToOpen: ""
    // What the widest page would like to have, in pixels.
    readonly property int projectRecommendedWidth: shell.projectRecommendedWidth
    // The most of it so far. A page measures itself when it is first seen and while it is resized:
    // how small the window may become must not follow which page that was.
    property int _widestPage: 0

    title: "Tidewell"
    color: "#080B12"
    flags: Qt.Window | Qt.WindowTitleHint | Qt.WindowSystemMenuHint
           | Qt.WindowMinMaxButtonsHint | Qt.WindowCloseButtonHint
    width: 1200
    height: 800
    minimumWidth: WindowGeometry.minimumWidth(availableGeometry, _widestPage)
    minimumHeight: WindowGeometry.minimumHeight(availableGeometry)
    // Of what the program does not draw itself: the file dialog where the system has none.
    palette {
        window: shell.theme.surface
        windowText: shell.theme.text
        base: shell.theme.surface2
        alternateBase: shell.theme.surface3
        text: shell.theme.text
        placeholderText: shell.theme.textMuted
        button: shell.theme.surface3
        buttonText: shell.theme.text
        brightText: shell.theme.text
        light: shell.theme.surface2
        midlight: shell.theme.surfaceHover
        mid: shell.theme.stroke
        dark: shell.theme.textMuted
        shadow: "black"
        highlight: shell.theme.infoMuted
        highlightedText: "white"
        link: shell.theme.info
        toolTipBase: shell.theme.surface3
        toolTipText: shell.theme.text
    }

    onProjectRecommendedWidthChanged:
        _widestPage = Math.max(_widestPage, projectRecommendedWidth)
    Component.onCompleted: {
        const opening = WindowGeometry.openingGeometry(availableGeometry, projectRecommendedWidth);
        x = opening.x;
        y = opening.y;
        width = opening.width;
        height = opening.height;
        showNormal();
    }
    // Only when everything else is complete: the shell begins with an empty project.
    Timer {
        interval: 0
        running: String(window.projectToOpen) !== ""
        onTriggered: shell.files.open(window.projectToOpen)
    }
    onClosing: event => {
        event.accepted = shell.requestClose(() => window.close());
    }

    AppShell {
        id: shell

        anchors.fill: parent
        // The program makes it known to the documents.
        // qmllint disable unqualified
        controller: appController
        updater: updates
        // qmllint enable unqualified
    }
}
