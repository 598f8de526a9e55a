pragma ComponentBehavior: Bound

import QtQuick
import Qt5Compat.GraphicalEffects
import Tidewell

// A monochrome picture in one colour. The graphics card does the tinting; where there is none, a
// canvas does.
Item {
    id: tinted

    property url source
    property color color: Fallback.theme.text

    readonly property bool _filled: String(source) !== ""
    readonly property bool _software: GraphicsInfo.api === GraphicsInfo.Software

    Image {
        id: picture

        anchors.fill: parent
        source: tinted.source
        sourceSize.width: Math.round(width)
        sourceSize.height: Math.round(height)
        fillMode: Image.PreserveAspectFit
        visible: false
    }
    OnDemand {
        anchors.fill: parent
        wanted: tinted._filled && !tinted._software
        visible: wanted

        ColorOverlay {
            anchors.fill: parent
            source: picture
            color: tinted.color
        }
    }
    OnDemand {
        anchors.fill: parent
        wanted: tinted._filled && tinted._software
        visible: wanted

        DrawnImage {
            anchors.fill: parent
            source: tinted.source
            color: tinted.color
        }
    }

    component DrawnImage: Canvas {
        property url source
        property color color

        onSourceChanged: loadImage(source)
        Component.onCompleted: loadImage(source)
        onColorChanged: requestPaint()
        onImageLoaded: requestPaint()
        onPaint: {
            const context = getContext("2d");
            context.reset();
            if (!isImageLoaded(source)) {
                return;
            }
            context.drawImage(source, 0, 0, width, height);
            context.globalCompositeOperation = "source-in";
            context.fillStyle = color;
            context.fillRect(0, 0, width, height);
        }
    }
}
