#pragma once

namespace tidewell {

/// Whether an environment variable switches something on: its value, without white space at both
/// ends and in any letter case, is "1", "true", "yes" or "on".
bool envFlagEnabled(const char* name);

}  // namespace tidewell
