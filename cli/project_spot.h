#pragma once

#include <string>
#include <vector>

#include "session/config_map.h"
#include "session/node_locks.h"

namespace tidewell_cli {

/// What a project of the desktop program asks to solve: its last solve, or what its pages show
/// where nothing has been solved.
struct ProjectSpot {
    kestrel_app::ConfigMap settings;
    /// Play that its last solve was made with, in terms of that solve's tree; mostly none.
    std::vector<kestrel_app::NodeLockEntry> locks;
};

/// Whether a file is named as a project or begins as one.
bool is_project(const std::string& path);

/// Reads a project. What it does not heed of it goes to `warnings`, one line each. Throws
/// InputError, naming the file.
ProjectSpot read_project_spot(const std::string& path, std::vector<std::string>& warnings);

}  // namespace tidewell_cli
