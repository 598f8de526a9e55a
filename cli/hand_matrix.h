#pragma once

#include <ostream>

#include "cli/solve_report.h"
#include "cli/terminal.h"

namespace tidewell_cli {

/// Prints the hands of a decision's player as a matrix of 13 by 13: with colours each class split
/// by how often it takes each action, otherwise with the letter of its most frequent action.
void print_hand_matrix(std::ostream& out, const TerminalStyle& style, const NodeReport& node);

}  // namespace tidewell_cli
