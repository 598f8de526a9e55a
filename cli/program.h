#pragma once

#include <span>
#include <string_view>

namespace tidewell_cli {

/// What the process ends with.
enum ExitCode : int {
    exit_ok = 0,
    exit_failed = 1,         ///< the solve failed, does not fit in memory or cannot be written
    exit_bad_input = 2,      ///< command line or spot
    exit_interrupted = 130,  ///< 128 + SIGINT
};

/// What an interrupted process says when it cannot end in the ordinary way.
inline constexpr std::string_view interrupted_line = "\ntidewell-solve: interrupted\n";

/// The whole program but for main: `arguments` without the program's name, results on standard
/// output, one line for each warning or error on standard error. Returns the exit code.
int run_program(std::span<const char* const> arguments);

}  // namespace tidewell_cli
