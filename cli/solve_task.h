#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "cli/options.h"
#include "session/config_map.h"
#include "session/node_locks.h"

namespace tidewell_cli {

/// What the command line asks to solve.
struct SolveTask {
    kestrel_app::ConfigMap settings;                ///< with what the options change
    std::vector<kestrel_app::NodeLockEntry> locks;  ///< of the project
};

std::size_t all_threads();

/// Reads the spot or the project, or takes the quick-solve spot. Throws InputError. `warnings`: one
/// line each.
SolveTask read_task(const Options& options, std::vector<std::string>& warnings);

/// A task in the engine's terms.
kestrel_app::SolveConfig config_of(const SolveTask& task);

}  // namespace tidewell_cli
