#pragma once

#include <string_view>

namespace tidewell_platform {

/// The files that take a process's last words, UTF-8 or whatever the file system takes. To be
/// called once, before `installCrashHandlers`. An empty path, and one too long for the system to
/// open, stands for no file.
void setCrashLogPaths(std::string_view appDir, std::string_view temp);

/// Has everything that ends this process abnormally leave its line in both files first: uncaught
/// exceptions, failed allocations among them, other calls of std::terminate, and fatal signals. The
/// process then dies as it would have died, by the same signal. A stack that overflows is told of
/// on the calling thread only, which gets a spare stack for that.
void installCrashHandlers();

/// Appends a line, ended by CR LF, to a log file as `open_log` opens it; at once, and silently
/// without effect when that fails. Takes no lock, allocates nothing and keeps no state: for any
/// thread in any state, signal handlers included. A line is cut to 510 bytes. Does nothing for an
/// empty path.
void appendLineToFile(std::string_view line, const char* path) noexcept;

/// The same for the file beside the program and then for the one in the temporary folder.
void appendCrashLine(std::string_view line) noexcept;

}  // namespace tidewell_platform
