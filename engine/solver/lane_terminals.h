#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "engine/game/game.h"
#include "engine/solver/aligned_buffer.h"
#include "engine/solver/row_fetcher.h"
#include "engine/solver/showdown_order.h"
#include "engine/solver/terminal.h"

namespace kestrel {

/// A terminal as the lanes see it. Both rows start on a 32-byte boundary and are padded to a whole
/// number of vectors; what stands in the padding does not matter, and garbage is written there.
struct LaneTerminal {
    const float* reach;       ///< one per hand of the other seat
    float* out;               ///< one per hand of the seat
    bool raked;               ///< showdowns and all-ins: a tie is worth something
    TerminalPayoffs payoffs;  ///< a fold pays `win`, whoever folded
};

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

    template <std::size_t vectors>
    void turn_in(Seat seat, std::span<const LaneTerminal> terminals);
    template <std::size_t vectors>
    void turn_out(Seat seat, std::span<const LaneTerminal> terminals);
    void list_live(const BoardOrder& board, std::size_t theirs);
    template <std::size_t vectors, bool add>
    void walk(const BoardOrder& board, Seat seat, std::span<const LaneTerminal> terminals);
    template <std::size_t vectors, bool add>
    void walk_raked(const BoardOrder& board, std::size_t own,
                    std::span<const LaneTerminal> terminals);
    template <std::size_t vectors, bool add>
    void walk_unraked(const BoardOrder& board, std::size_t own,
                      std::span<const LaneTerminal> terminals);

    /// A level at which some lane has an opposing hand: our hands below it, our hands at it and
    /// their live hands up to it, as ends in the two lists.
    struct Step {
        std::uint16_t own_below;
        std::uint16_t own_end;
        std::uint16_t live_end;
    };

    const Game& game_;
    const ShowdownOrders& orders_;
    /// Per seat and position: the row of the identical pocket, or the row of zeros behind the last.
    std::array<std::vector<std::uint16_t>, 2> same_row_;

    // Of the group at work. Interleaved: the lanes of a position stand side by side.
    AlignedBuffer<float> reach_;
    AlignedBuffer<float> out_;
    AlignedBuffer<double> won_;
    AlignedBuffer<float> parts_;
    std::vector<std::uint8_t> nonzero_;  // by position of the other seat: some lane has reach
    std::vector<ShowdownItem> live_;     // their items with reach in some lane
    std::vector<std::uint16_t> live_before_;
    std::vector<Step> steps_;
    std::size_t step_count_ = 0;
};

}  // namespace kestrel
