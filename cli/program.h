#pragma once

#include <span>

namespace tidewell_cli {

/// What the process ends with.
enum ExitCode : int {
    exit_ok = 0,
    exit_failed = 1,     ///< the solve failed, does not fit in memory or cannot be written
    exit_bad_input = 2,  ///< command line or spot
};

/// The whole program but for main: `arguments` without the program's name, results on standard
/// output, one line for each warning or error on standard error. Returns an ExitCode, or what a
/// shell makes of the signal that ended the run: 130 for Ctrl-C, 143 for SIGTERM, 129 for SIGHUP.
int run_program(std::span<const char* const> arguments);

}  // namespace tidewell_cli
