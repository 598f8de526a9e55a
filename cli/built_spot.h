#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>

#include "cli/timing.h"
#include "engine/game/card_context.h"
#include "engine/game/game.h"
#include "session/memory_estimate.h"
#include "session/solve_config.h"

namespace tidewell_cli {

/// The solve does not fit in memory. One line for the user.
class MemoryRefused : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// A spot with what it needs and, once they are built, its cards and its tree, in which lines are
/// looked up. A solve builds a tree of its own, so this one goes before, and finds the cards in
/// their cache.
struct BuiltSpot {
    kestrel_app::SolveConfig config;
    kestrel_app::SpotInputs inputs;
    std::unique_ptr<kestrel::Game> game;
    std::optional<kestrel::CardContext> cards;  ///< keeps the tables while there is no game
    kestrel_app::SolveMemoryEstimate estimate;
    std::optional<std::uint64_t> available_bytes;  ///< before anything was built; if known
    PhaseSeconds seconds;                          ///< of the cards and the tree
};

/// Estimates a spot. Throws InputError for one that the engine refuses.
BuiltSpot estimate_spot(const kestrel_app::SolveConfig& config);

/// Throws MemoryRefused when the solve does not fit.
void check_memory(const BuiltSpot& spot);

/// Builds cards and tree. Throws MemoryRefused when these do not fit.
void build_spot(BuiltSpot& spot);

}  // namespace tidewell_cli
