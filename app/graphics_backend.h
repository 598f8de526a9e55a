#pragma once

namespace tidewell {

/// Draws windows without OpenGL where OpenGL itself is drawn by the processor: rasterising what has
/// changed takes a fraction of what a software OpenGL takes for whole frames. Leaves the choice
/// alone where the environment (QT_QUICK_BACKEND) makes it. To be called once the application
/// object is there, before the first window.
void chooseGraphicsBackend();

}  // namespace tidewell
