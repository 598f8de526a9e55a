#pragma once

#include <stdexcept>
#include <string>

namespace tidewell_cli {

/// What was solved cannot be written. One line for the user.
class WriteFailed : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Refuse, before the long run, a file that cannot be written. Throw InputError.

/// For a file that is written in its place; "-" is standard output.
void check_writable(const std::string& path);

/// For a file that a new one takes the place of: a device or a pipe would be lost.
void check_replaceable(const std::string& path);

}  // namespace tidewell_cli
