pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tidewell

// What a click on a hand locks: one action or a mix. And the solve under the locks.
Rectangle {
    id: panel

    required property Theme theme
    required property NodeLockState locks

    readonly property int _count: locks.actions.length

    signal solveRequested

    // With the chips, unless they are not known.
    function _nameOf(action: var): string {
        return action.chips > 0 ? ActionText.shown(action) : ActionText.fromAnyCase(action.name);
    }

    implicitWidth: 320
    implicitHeight: Math.ceil(column.implicitHeight) + 2 * theme.spaceMd
    radius: theme.radiusSm
    color: theme.surface2
    border.width: 1
    border.color: locks.mode ? theme.gold : theme.stroke
    Accessible.role: Accessible.Grouping
    Accessible.name: qsTr("Node-Locking")

    ColumnLayout {
        id: column

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.margins: panel.theme.spaceMd
        spacing: panel.theme.spaceSm

        RowLayout {
            spacing: panel.theme.spaceSm

            Icon {
                name: "lock"
                size: 16
                color: panel.theme.gold
            }
            AppLabel {
                theme: panel.theme
                text: qsTr("Node-Locking")
                font.weight: Fallback.type.weightSemibold
                Accessible.role: Accessible.Heading
                Layout.fillWidth: true
            }
        }
        Hint {
            text: qsTr("Node-locking is only available on decision nodes.")
            visible: !panel.locks.lockable
        }
        Flow {
            spacing: 6
            visible: panel.locks.lockable
            Layout.fillWidth: true

            Repeater {
                model: panel.locks.mode ? panel.locks.actions : []

                Choice {
                    required property int index
                    required property var modelData

                    text: panel._nameOf(modelData)
                    swatch: panel.theme.actionColor(modelData.actionType || modelData.name)
                    checked: !panel.locks.mixed && panel.locks.selectedAction === index
                    onClicked: panel.locks.select(index)
                }
            }
            Choice {
                //: Several actions, each with a frequency
                text: qsTr("Mixed")
                checked: panel.locks.mixed
                onClicked: panel.locks.toggleMixed()
            }
        }
        Repeater {
            model: panel.locks.lockable && panel.locks.mixed ? panel.locks.actions : []

            RowLayout {
                id: line

                required property int index
                required property var modelData

                readonly property string _name: panel._nameOf(modelData)

                spacing: panel.theme.spaceSm

                AppLabel {
                    theme: panel.theme
                    text: line._name
                    elide: Text.ElideRight
                    Layout.preferredWidth: 120
                }
                AppLabel {
                    theme: panel.theme
                    text: qsTr("frequency")
                    color: panel.theme.legible(panel.theme.textMuted, panel.color)
                }
                AppTextField {
                    id: field

                    readonly property string value: panel.locks.mixTexts[line.index] ?? ""

                    theme: panel.theme
                    mono: true
                    //: Short for frequency, where nothing is entered yet
                    placeholderText: qsTr("freq")
                    Accessible.name: qsTr("Frequency of %1").arg(line._name)
                    implicitWidth: 90
                    inputMethodHints: Qt.ImhFormattedNumbersOnly
                    // What the field does not take, the tree would.
                    Keys.priority: Keys.AfterItem
                    Keys.onPressed: event =>
                        event.accepted = ![Qt.Key_Tab, Qt.Key_Backtab].includes(event.key)
                    onValueChanged: text = value
                    onEditingFinished: {
                        if (text !== value) {
                            panel.locks.editMix(panel._count, line.index, text);
                        }
                        text = value;
                    }
                }
            }
        }
        RowLayout {
            spacing: panel.theme.spaceSm
            visible: panel.locks.lockable

            SecondaryButton {
                objectName: "resetLocks"
                theme: panel.theme
                text: qsTr("Reset locks")
                tip: qsTr("Frees all hands of this node.")
                onClicked: panel.locks.resetNode(panel.locks.node)
            }
            PrimaryButton {
                objectName: "reSolve"
                theme: panel.theme
                text: qsTr("Re-solve")
                tip: qsTr("Solves the same spot again with all hands that are locked.")
                enabled: panel.locks.lockable && panel.locks.nodes.controller !== null
                onClicked: panel.solveRequested()
            }
        }
        Hint {
            text: panel.locks.mixed
                ? qsTr("Tip: enter frequencies above, then click a hand cell in the matrix to apply the mixed strategy.")
                : qsTr("Tip: select an action above, then click a hand cell in the matrix to lock it.")
            visible: panel.locks.lockable
        }
    }

    component Choice: SecondaryButton {
        // Transparent for none.
        property color swatch: "transparent"

        theme: panel.theme
        compact: true
        iconText: checked ? "✓" : ""
        leftPadding: swatch.a > 0 ? panel.theme.spaceMd + 8 : panel.theme.spaceMd
        Accessible.role: Accessible.RadioButton
        Accessible.checkable: true

        Rectangle {
            anchors.verticalCenter: parent.verticalCenter
            x: 8
            width: 8
            height: 8
            radius: 2
            color: parent.swatch
        }
    }
    component Hint: AppLabel {
        theme: panel.theme
        color: panel.theme.legible(panel.theme.textMuted, panel.color)
        font.pixelSize: Fallback.type.labelMd
        wrapMode: Text.Wrap
        Layout.fillWidth: true
    }
}
