#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "session/config_map.h"

namespace tidewell_cli {

/// Reads a spot from a JSON file, "-" for standard input. Unknown and repeated keys go to
/// `warnings`, one line each. Throws InputError, naming the file and, for text that is no JSON,
/// line and column.
kestrel_app::ConfigMap read_spot_file(const std::string& path, std::vector<std::string>& warnings);

/// The same for the text itself; `name` stands for the file. Stricter than `config_from_map`,
/// which clamps: whatever could not be meant is refused, key by key. Where the starting street is
/// left out, the board decides it.
kestrel_app::ConfigMap parse_spot_text(std::string_view text, const std::string& name,
                                       std::vector<std::string>& warnings);

/// The same for the settings of a project, whose sizes are only warned about (see `check_texts`).
kestrel_app::ConfigMap check_project_settings(const kestrel_app::ConfigMap& settings,
                                              const std::string& name,
                                              std::vector<std::string>& warnings);

}  // namespace tidewell_cli
