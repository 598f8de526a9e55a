#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "cli/built_spot.h"
#include "cli/line_walk.h"
#include "cli/locks.h"
#include "cli/solve_run.h"
#include "cli/timing.h"
#include "cli/why.h"
#include "session/node_here.h"
#include "session/node_queries.h"

namespace tidewell_cli {

struct ActionReport {
    std::string name;
    std::string type;
    double frequency = 0;  ///< mean over the hands; all of a node add up to 1
    std::uint64_t child = 0;
};

struct NodeReport {
    std::uint64_t index = 0;
    std::string line;
    std::string player;    ///< "OOP" or "IP", empty where nobody decides
    std::int32_t pot = 0;  ///< hundredths of a chip
    kestrel::Street street = kestrel::Street::Flop;
    std::vector<ActionReport> actions;
    /// The acting player's hands by falling EV; empty where nobody decides.
    std::vector<kestrel_app::HandCombo> combos;
};

NodeReport report_node(const SolveRun& run, const NodePath& path);

/// Everything that is told about a finished solve. Money in hundredths of a chip where not said
/// otherwise.
struct SolveReport {
    kestrel_app::SolveConfig config;
    kestrel_app::SolveMemoryEstimate estimate;
    std::uint64_t peak_resident_bytes = 0;
    kestrel_app::SolveResult result;
    double iteration_ms = 0;  ///< see SolveRun
    std::vector<TracePoint> trace;
    PhaseSeconds seconds;  ///< of the reported solve; the total is of the whole program
    NodeReport node;
    // Of the node's actions, if asked for: the whole ranges, the hands that come, and one hand.
    std::optional<kestrel_app::NodeActionStats> stats;
    std::optional<kestrel_app::ActionStatsHere> here;
    std::optional<WhyReport> why;

    std::vector<Lock> locks;                               ///< of the reported solve
    std::optional<kestrel_app::SolveResult> before_locks;  ///< of the solve without them
};

/// The report of a solve and the node behind `path`, without what only its caller knows: peak
/// and total time of the program, statistics and locks.
SolveReport report_solve(const BuiltSpot& spot, const SolveRun& run, const NodePath& path);

/// Exploitability in percent of the starting pot.
double exploitability_percent(const kestrel_app::SolveResult& result);

}  // namespace tidewell_cli
