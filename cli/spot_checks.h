#pragma once

#include <string>
#include <vector>

#include "session/config_map.h"

namespace tidewell_cli {

/// Where settings come from.
enum class SpotSource { spot, project };

/// Refuses board, ranges, sizes and street where they cannot be meant, or are missing but needed.
/// Throws InputError, naming the key and the piece. Where the starting street is left out, the
/// board decides it.
///
/// Sizes that say something else than the solver makes of them are refused in a spot. In a project
/// they go to `warnings`: the desktop program marks the field, but solves what it makes of them.
void check_texts(kestrel_app::ConfigMap& map, SpotSource source,
                 std::vector<std::string>& warnings);

}  // namespace tidewell_cli
