// Where the window opens and how small it may become. An area is what the screen leaves to windows:
// x, y, width and height in pixels. `recommendedWidth` is what the widest page would like to have,
// 0 when there is none.

const SHARE = 0.95;  // of the area, so that the window never hides the desktop
const LEAST_WIDTH = 900;
const LEAST_HEIGHT = 650;
const DESIRED_WIDTH = 1540;
const DESIRED_HEIGHT = 1200;

function most(length) {
    return Math.floor(SHARE * length);
}

// The lower bound wins where the bounds cross.
function clamp(value, least, greatest) {
    return Math.max(least, Math.min(value, greatest));
}

export function minimumWidth(area, recommendedWidth) {
    return Math.min(Math.max(LEAST_WIDTH, recommendedWidth), most(area.width));
}

export function minimumHeight(area) {
    return Math.min(LEAST_HEIGHT, most(area.height));
}

// Centred in the area.
export function openingGeometry(area, recommendedWidth) {
    const width = clamp(Math.max(DESIRED_WIDTH, recommendedWidth), LEAST_WIDTH, most(area.width));
    const height = clamp(DESIRED_HEIGHT, LEAST_HEIGHT, most(area.height));
    return {
        x: area.x + Math.floor((area.width - width) / 2),
        y: area.y + Math.floor((area.height - height) / 2),
        width: width,
        height: height
    };
}
