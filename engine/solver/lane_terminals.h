#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <utility>

#include "engine/game/game.h"
#include "engine/solver/lane_group.h"
#include "engine/solver/row_fetcher.h"
#include "engine/solver/showdown_order.h"

namespace kestrel {

/// Evaluates terminals of one board side by side, each in a lane of the vector registers, with the
/// same additions in the same order as `terminal_eval`, and so the same bits. The walk over the
/// hands, its index loads and its branches are paid once for all lanes. Holds its buffers: one
/// thread at a time.
class LaneTerminals {
  public:
    /// Both must outlive the object.
    LaneTerminals(const Game& game, const ShowdownOrders& orders);

    /// Folds on the board of this turn and river, `NO_CARD` where undealt.
    void folds(Seat seat, Card turn, Card river, std::span<const LaneTerminal> terminals);

    /// Showdowns on a complete board. Sorts `terminals` by rule.
    void showdowns(Seat seat, Card turn, Card river, std::span<LaneTerminal> terminals);

    /// All-ins: the sum of the showdowns over `runouts`, over `divisor` or, without one, over the
    /// number of run-outs that both seats have hands on. Sorts `terminals` by rule.
    void all_ins(Seat seat, std::span<const std::pair<Card, Card>> runouts,
                 std::optional<float> divisor, std::span<LaneTerminal> terminals);

    /// What to fetch into the caches while terminals are evaluated.
    RowFetcher fetcher;

  private:
    template <std::size_t vectors>
    void fold_group(Seat seat, Card turn, Card river, std::span<const LaneTerminal> terminals);
    template <std::size_t vectors>
    void showdown_group(Seat seat, std::size_t pair, std::span<const LaneTerminal> terminals);
    template <std::size_t vectors>
    void all_in_group(Seat seat, std::span<const std::pair<Card, Card>> runouts,
                      std::optional<float> divisor, std::span<const LaneTerminal> terminals);

    const CardContext& cards_;
    const ShowdownOrders& orders_;
    LaneBuffers buffers_;
};

}  // namespace kestrel
