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

/// A spot with its cards and tree: what lines are looked up in, and what the estimate is made of. A
/// solve builds a tree of its own, so this one goes before, and finds the cards in their cache.
struct BuiltSpot {
    kestrel_app::SolveConfig config;
    std::unique_ptr<kestrel::Game> game;
    std::optional<kestrel::CardContext> cards;  ///< keeps the tables while there is no game
    kestrel_app::SolveMemoryEstimate estimate;
    std::optional<std::uint64_t> available_bytes;  ///< before anything was built; if known
    PhaseSeconds seconds;                          ///< of the cards and the tree
};

/// Builds cards and tree. Throws InputError for a spot that the engine refuses, and MemoryRefused
/// when not even these fit.
BuiltSpot build_spot(const kestrel_app::SolveConfig& config);

/// Throws MemoryRefused when the estimate does not fit.
void check_memory(const BuiltSpot& spot);

}  // namespace tidewell_cli
