#pragma once

#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "cli/options.h"

namespace tidewell_cli {

/// What was solved cannot be written. One line for the user.
class WriteFailed : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Refuses, before the long run, files that cannot be written, and those that are the spot, each
/// other or where a standard stream goes, by whatever names. Throws InputError.
void check_outputs(const Options& options);

/// Whether a path leads to a file that a new one can take the place of, or to nothing yet. Pipes
/// and devices are written to as they stand.
bool is_replaced(const std::string& path);

using Write = std::function<void(std::string_view)>;

/// Replaces a file by what `content` hands to the function it is called with, as a whole or not at
/// all. Throws WriteFailed, and whatever `content` does.
void replace_file(const std::string& path, const std::function<void(const Write&)>& content);

}  // namespace tidewell_cli
