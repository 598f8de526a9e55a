import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tidewell

// A run of the list: how it ended, what was solved, what came of it and when. `highlighted` when the
// keyboard stands on it.
T.ItemDelegate {
    id: row

    // See RunHistory.
    required property var modelData
    property Theme theme: Fallback.theme

    readonly property color _statusColor: {
        switch (modelData.status) {
        case "Running":
            return theme.success;
        case "Completed":
            return theme.info;
        default:
            return theme.danger;
        }
    }
    readonly property string _statusName: {
        switch (modelData.status) {
        case "Running":
            return qsTr("Running");
        case "Completed":
            return qsTr("Completed");
        case "Failed":
            return qsTr("Failed");
        case "Refused":
            //: A run that was not even started
            return qsTr("Refused");
        default:
            return qsTr("Cancelled");
        }
    }
    readonly property string _ending: {
        if (modelData.reason !== "") {
            return TextChecks.inWords(modelData.reason);
        }
        if (modelData.status !== "Completed") {
            return modelData.summary;
        }
        if (modelData.stoppedAtLimit) {
            return RunText.stopped(modelData.iterations, modelData.percent, modelData.targetPercent);
        }
        return modelData.targetPercent > 0
            ? RunText.reached(modelData.iterations, modelData.percent, modelData.targetPercent)
            : modelData.summary;
    }
    readonly property string _time:
        modelData.status === "Running" ? "" : DurationText.of(modelData.seconds)

    implicitHeight: Math.max(46, Math.ceil(implicitContentHeight) + topPadding + bottomPadding)
    leftPadding: theme.spaceXs
    rightPadding: theme.spaceMd
    verticalPadding: 4
    hoverEnabled: true
    Accessible.role: Accessible.ListItem
    Accessible.name: [_statusName, modelData.startedAt, modelData.board,
                      ExploitabilityText.percent(modelData.percent), _time, _ending].join(", ")

    contentItem: RowLayout {
        spacing: row.theme.spaceMd

        Rectangle {
            implicitWidth: 84
            implicitHeight: 22
            radius: height / 2
            color: row.theme.withOpacity(row._statusColor, 0.18)

            Text {
                anchors.centerIn: parent
                text: row._statusName
                textFormat: Text.PlainText
                color: row.theme.legible(row._statusColor,
                                         Qt.tint(row.theme.surface, parent.color))
                font.pixelSize: Fallback.type.labelSm
                font.weight: Fallback.type.weightSemibold
                Accessible.ignored: true
            }
        }
        ColumnLayout {
            spacing: 1
            Layout.fillWidth: true

            RowLayout {
                spacing: row.theme.spaceMd
                Layout.fillWidth: true

                BoardText {
                    theme: row.theme
                    board: row.modelData.board
                }
                AppLabel {
                    theme: row.theme
                    text: row.modelData.underLocks ? qsTr("with locks") : ""
                    muted: true
                    font.pixelSize: Fallback.type.labelMd
                    visible: text !== ""
                    Accessible.ignored: true
                }
                AppLabel {
                    theme: row.theme
                    text: ExploitabilityText.percent(row.modelData.percent)
                    font.pixelSize: Fallback.type.bodySm
                    visible: row.modelData.percent >= 0
                    Accessible.ignored: true
                }
                AppLabel {
                    theme: row.theme
                    text: row._time
                    font.pixelSize: Fallback.type.bodySm
                    visible: text !== ""
                    Accessible.ignored: true
                }
                Item {
                    Layout.fillWidth: true
                }
                AppLabel {
                    theme: row.theme
                    text: row.modelData.startedAt
                    muted: true
                    font.pixelSize: Fallback.type.labelMd
                    Accessible.ignored: true
                }
            }
            AppLabel {
                theme: row.theme
                text: row._ending
                muted: row.modelData.reason === "" && !row.modelData.stoppedAtLimit
                color: {
                    if (row.modelData.reason !== "") {
                        return row.theme.legible(row.theme.danger, row.theme.surface);
                    }
                    return row.modelData.stoppedAtLimit
                        ? row.theme.legible(row.theme.warn, row.theme.surface)
                        : row.theme.textMuted;
                }
                font.pixelSize: Fallback.type.labelMd
                elide: Text.ElideRight
                Accessible.ignored: true
                Layout.fillWidth: true
            }
        }
    }
    background: Rectangle {
        radius: row.theme.radiusXs
        color: row.hovered && row.enabled ? row.theme.surfaceHover : "transparent"
        border.width: row.highlighted ? 2 : 0
        border.color: row.theme.strokeFocus
    }
    AppToolTip {
        theme: row.theme
        text: qsTr("Put this spot on the Setup page") + "\n" + row.modelData.summary
        visible: row.hovered
    }
}
