#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "cli/solve_run.h"
#include "session/config_map.h"
#include "session/node_locks.h"

namespace tidewell_cli {

/// A finished solve with what it was made of.
struct SolvedProject {
    const SolveRun& run;
    kestrel_app::ConfigMap settings;
    std::span<const kestrel_app::NodeLockEntry> locks;  ///< of the solve
    std::uint64_t node = 0;                             ///< whose hands are kept beside the root's
};

/// What the pages of a saved project will not show as it is, one line each.
std::vector<std::string> save_warnings(const kestrel_app::ConfigMap& settings);

/// Writes a project that the desktop program opens on these results, and can solve again. The file
/// is replaced as a whole or not at all. Throws WriteFailed.
void save_project(const std::string& path, const SolvedProject& project);

}  // namespace tidewell_cli
