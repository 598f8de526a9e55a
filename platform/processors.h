#pragma once

namespace tidewell_platform {

/// Logical processors that the calling thread may run on; 0 when the system does not tell.
int permitted_processors();

}  // namespace tidewell_platform
