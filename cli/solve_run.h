#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "cli/interrupt.h"
#include "cli/line_walk.h"
#include "engine/game/game.h"
#include "engine/solver/discounted_cfr.h"
#include "session/memory_estimate.h"
#include "session/solve_config.h"

namespace tidewell_cli {

using Clock = std::chrono::steady_clock;

double seconds_since(Clock::time_point start);

/// Iterations between two measurements.
inline constexpr std::uint32_t measuring_interval = 50;

/// The solve does not fit in memory. One line for the user.
class MemoryRefused : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

class Interrupted : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

struct PhaseSeconds {
    double card_context = 0;
    double tree = 0;
    double prepare = 0;  ///< the solver's states
    double solve = 0;    ///< iterations and measurements
    double total = 0;    ///< since the program began
};

/// A spot with its cards and tree, ready to be solved.
struct BuiltSpot {
    kestrel_app::SolveConfig config;
    std::unique_ptr<kestrel::Game> game;
    kestrel_app::SolveMemoryEstimate estimate;
    std::optional<std::uint64_t> available_bytes;  ///< before anything was built; if known
    PhaseSeconds seconds;
};

/// Builds cards and tree. Throws InputError for a spot that the engine refuses, and MemoryRefused
/// when not even these fit.
BuiltSpot build_spot(const kestrel_app::SolveConfig& config);

struct ActionReport {
    std::string name;
    std::string type;
    double frequency = 0;  ///< mean over the hands; all of a node add up to 1
    std::uint64_t child = 0;
};

struct ComboReport {
    kestrel::Pocket pocket{};
    double weight = 0;          ///< range weight times the player's own way here
    std::vector<double> probs;  ///< one per action
};

struct NodeReport {
    std::uint64_t index = 0;
    std::string line;
    std::string player;    ///< "OOP" or "IP", empty where nobody decides
    std::int32_t pot = 0;  ///< hundredths of a chip
    kestrel::Street street = kestrel::Street::Flop;
    std::vector<ActionReport> actions;
    std::vector<ComboReport> combos;  ///< the acting player's hands; empty where nobody decides
};

NodeReport report_node(const kestrel::Game& game, const kestrel::DiscountedCfr& solver,
                       const NodePath& path);

struct TracePoint {
    std::uint32_t iteration = 0;
    double exploitability = 0;  ///< hundredths of a chip
};

/// Everything that is told about a finished solve. Money in hundredths of a chip where not said
/// otherwise.
struct SolveReport {
    kestrel_app::SolveConfig config;
    kestrel_app::SolveMemoryEstimate estimate;
    std::uint64_t peak_resident_bytes = 0;
    std::uint32_t iterations = 0;
    double exploitability = 0;
    std::array<double, 2> ev{};  ///< OOP first, against an even split of the pot
    double iteration_ms = 0;     ///< median of the iterations without a measurement; 0 if none
    std::vector<TracePoint> trace;
    PhaseSeconds seconds;  ///< `solve_spot` leaves the total to its caller
    NodeReport node;

    double exploitability_percent() const;  ///< of the starting pot
};

/// After every iteration: its number from 1, the exploitability last measured in hundredths of a
/// chip, and whether it was measured just now.
using IterationCallback = std::function<void(std::uint32_t, double, bool)>;

/// Solves a built spot and reports the node behind `path`. Throws MemoryRefused before the solver
/// takes memory when the estimate does not fit, Interrupted after a deferred Ctrl-C, and whatever
/// the engine throws.
SolveReport solve_spot(const BuiltSpot& spot, const NodePath& path, InterruptGuard& interrupt,
                       const IterationCallback& on_iteration);

}  // namespace tidewell_cli
