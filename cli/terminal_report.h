#pragma once

#include <ostream>

#include "cli/solve_report.h"
#include "cli/terminal.h"

namespace tidewell_cli {

/// What is about to be solved: the first rows of the summary, to which `print_report` adds.
void print_spot(std::ostream& out, const TerminalStyle& style, const BuiltSpot& spot);

/// The figures of the finished solve, then the node: its actions as bars and, where somebody
/// decides, that player's hands as a matrix of 13 by 13.
void print_report(std::ostream& out, const TerminalStyle& style, const SolveReport& report);

}  // namespace tidewell_cli
