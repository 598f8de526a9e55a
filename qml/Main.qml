import QtQuick
import QtQuick.Controls.Basic

ApplicationWindow {
    title: "Tidewell"
    visible: true
    color: "#080B12"
    width: 1200
    height: 800
}
