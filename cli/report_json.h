#pragma once

#include <string>

#include "cli/solve_report.h"

namespace tidewell_cli {

/// The result as indented JSON, amounts in chips, floating-point numbers with all the digits that
/// tell them apart.
std::string json_text(const SolveReport& report);

/// Refuses, before the long run, a file that cannot be written. Throws InputError.
void check_writable(const std::string& path);

/// Writes the result to a file, or to standard output for "-". Throws std::runtime_error.
void write_json(const SolveReport& report, const std::string& path);

}  // namespace tidewell_cli
