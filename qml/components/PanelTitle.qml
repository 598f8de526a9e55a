import QtQuick
import Tidewell

// The head of a part of a page.
AppLabel {
    font.pixelSize: Fallback.type.bodyLg
    font.weight: Fallback.type.weightSemibold
    elide: Text.ElideRight
    Accessible.role: Accessible.Heading
}
