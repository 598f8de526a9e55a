import QtQuick
import QtQuick.Layouts
import Tidewell

// The head of the start page: what the program is, and the ways into a project.
Rectangle {
    id: hero

    property Theme theme: Fallback.theme
    // There is a project to save.
    property bool canSave: true

    signal newRequested
    signal saveRequested
    signal openRequested

    implicitWidth: 2 * theme.spaceXl + Math.ceil(column.implicitWidth) + logo.width
    implicitHeight: 180
    radius: theme.radiusLg
    gradient: Gradient {
        orientation: Gradient.Horizontal
        GradientStop { position: 0; color: hero.theme.surface }
        GradientStop { position: 1; color: Qt.darker(hero.theme.accent, 1.5) }
    }
    border.width: 1
    border.color: theme.stroke

    ColumnLayout {
        id: column

        anchors.left: parent.left
        anchors.leftMargin: hero.theme.spaceXl
        anchors.right: logo.left
        anchors.verticalCenter: parent.verticalCenter
        spacing: hero.theme.spaceXs

        Text {
            text: qsTr("Tidewell")
            textFormat: Text.PlainText
            color: hero.theme.text
            font.pixelSize: Fallback.type.displayLg
            font.weight: Fallback.type.weightBold
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        Text {
            text: qsTr("A modern, high-performance holdem solver")
            textFormat: Text.PlainText
            color: hero.theme.text
            font.pixelSize: Fallback.type.bodyLg
            elide: Text.ElideRight
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            Layout.fillWidth: true
        }
        RowLayout {
            spacing: hero.theme.spaceSm
            Layout.topMargin: hero.theme.spaceMd

            PrimaryButton {
                theme: hero.theme
                text: qsTr("New Solve")
                iconText: "+"
                onClicked: hero.newRequested()
            }
            SecondaryButton {
                theme: hero.theme
                text: qsTr("Save")
                iconName: "save"
                enabled: hero.canSave
                onClicked: hero.saveRequested()
            }
            SecondaryButton {
                theme: hero.theme
                text: qsTr("Open File")
                iconName: "folder-open"
                onClicked: hero.openRequested()
            }
        }
    }
    Image {
        id: logo

        anchors.right: parent.right
        anchors.rightMargin: hero.theme.spaceSm
        anchors.verticalCenter: parent.verticalCenter
        width: 180
        height: 180
        source: "../../assets/Brightlea_logo.png"
        sourceSize.width: 360
        sourceSize.height: 360
        fillMode: Image.PreserveAspectFit
        smooth: true
        mipmap: true
        Accessible.ignored: true
    }
}
