#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "cli/terminal.h"

namespace tidewell_cli {

/// Lines in aligned columns for a person, behind an empty one: the first line is the headings, the
/// first column stands at the left and the others at the right. All lines have as many entries.
void print_columns(std::ostream& out, const TerminalStyle& style,
                   const std::vector<std::vector<std::string>>& lines);

}  // namespace tidewell_cli
