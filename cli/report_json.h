#pragma once

#include <string>

#include "cli/solve_report.h"

namespace tidewell_cli {

/// The result as indented JSON, amounts in chips, floating-point numbers with all the digits that
/// tell them apart.
std::string json_text(const SolveReport& report);

/// Replaces a file by the result, writes it into a pipe or a device, or for "-" to standard output,
/// whose state tells of failures. Throws WriteFailed.
void write_json(const SolveReport& report, const std::string& path);

}  // namespace tidewell_cli
