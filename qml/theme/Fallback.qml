pragma Singleton

import QtQuick
import Tidewell

// What a component uses that is handed no theme or typography of its own.
QtObject {
    readonly property Theme theme: Theme {}
    readonly property Typography type: Typography {}
}
