#pragma once

#include <ostream>
#include <span>
#include <string>
#include <vector>

#include "cli/solve_report.h"
#include "cli/terminal.h"
#include "session/hand_distributions.h"
#include "session/node_queries.h"

namespace tidewell_cli {

// Tables of tab-separated values: a line of headings, then one line for each entry. Amounts are in
// chips and count from zero: what can be expected out of the pot. "-" stands for what is unknown.

/// The names of a node's actions; where several share one, its number among the choices stands
/// behind it as `walk_line` takes it: "Bet 50% #2".
std::vector<std::string> distinct_names(std::span<const ActionReport> actions);

/// combo, weight, ev, for each action "NAME ev" and "NAME prob", tags with commas; by falling EV.
std::string combos_table(const NodeReport& node);

/// class, combos, for each action "NAME prob".
std::string buckets_table(const NodeReport& node, std::span<const kestrel_app::HandBucket> buckets);

/// seat, hand, ev, equity; OOP's hands first.
std::string distributions_table(const kestrel_app::HandDistributions& distributions);

/// The actions of the reported node in aligned columns, for a person. Nothing without statistics.
void print_stats(std::ostream& out, const TerminalStyle& style, const SolveReport& report);

}  // namespace tidewell_cli
