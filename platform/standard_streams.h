#pragma once

#include <cstddef>

namespace tidewell_platform {

enum class StandardStream { input = 0, output = 1, error = 2 };

/// For the start of a program that writes files: one that was started without a standard stream
/// gets an unusable one, as the next file that is opened would take its place. And a reader that
/// has gone or a limit on the size of files becomes a failure to write, rather than the end of the
/// process.
void secure_standard_streams();

bool is_terminal(StandardStream stream);

/// The width of a terminal in characters; 0 when unknown.
std::size_t terminal_columns(StandardStream stream);

}  // namespace tidewell_platform
