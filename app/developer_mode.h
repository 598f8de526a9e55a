#pragma once

namespace tidewell {

/// Whether the environment asks for what developers see. Of KESTREL_DEV_MODE, BRIGHTLEA_DEV_MODE
/// and NATIVE_SOLVER_DEV_MODE the first one that is set and not empty decides. Logs all three.
bool developerModeRequested();

}  // namespace tidewell
