#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "engine/game/card_context.h"
#include "engine/poker/cards.h"
#include "engine/solver/aligned_buffer.h"
#include "engine/solver/lane_rows.h"
#include "engine/solver/showdown_order.h"
#include "engine/solver/simd.h"
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

/// Lanes of the widest group: four registers a value, so that the three values that a loop works
/// with stay within the sixteen that there are.
inline constexpr std::size_t widest_group = 16;

/// A level at which some lane has an opposing hand: our hands below it, our hands at it and their
/// live hands up to it, as ends in the two lists of a `LiveOrder`.
struct ShowdownStep {
    std::uint16_t own_below;
    std::uint16_t own_end;
    std::uint16_t live_end;
};

/// The storage of the group that a thread has at work. What is in it is known to the objects below
/// only, each of which vouches for a part.
class LaneBuffers {
  public:
    explicit LaneBuffers(const CardContext& cards);

  private:
    template <std::size_t vectors>
    friend class LaneGroup;
    friend class LiveOrder;

    /// Per seat and position: the row of the identical pocket, or the row of zeros behind the last.
    std::array<std::vector<std::uint16_t>, 2> same_row_;
    AlignedBuffer<float> reach_;
    AlignedBuffer<float> out_;
    AlignedBuffer<float> parts_;
    AlignedBuffer<double> won_;
    std::vector<std::uint8_t> nonzero_;
    std::vector<ShowdownItem> live_;
    std::vector<std::uint16_t> live_before_;
    std::vector<ShowdownStep> steps_;
};

/// At most 4 * vectors terminals whose reach has been turned into lanes: the lanes of a position
/// stand side by side. Values are put beside it and turned into the terminals' rows at the end.
template <std::size_t vectors>
class LaneGroup {
  public:
    static constexpr std::size_t lanes = 4 * vectors;

    /// Turns the reach in. `list`: at least one.
    LaneGroup(const CardContext& cards, LaneBuffers& buffers, Seat seat,
              std::span<const LaneTerminal> list)
        : terminals(list),
          own(index_of(seat)),
          theirs(1 - own),
          own_hands(cards.pockets[own].size()),
          buffers_(buffers),
          reach_(buffers.reach_.data()),
          out_(buffers.out_.data()),
          same_row_(buffers.same_row_[own].data()) {
        const std::size_t hands = padded_row(cards.pockets[theirs].size());
        const float* rows[lanes];
        for (std::size_t i = 0; i < lanes; ++i) {
            // A lane without a terminal repeats the first; nobody reads it.
            rows[i] = terminals[i < terminals.size() ? i : 0].reach;
        }
        interleave<vectors>(rows, hands, reach_, buffers.nonzero_.data());
        std::fill_n(reach_ + hands * lanes, lanes, 0.0F);
    }

    const std::span<const LaneTerminal> terminals;
    const std::size_t own;
    const std::size_t theirs;
    const std::size_t own_hands;

    /// By position of the other seat; whether any lane has some.
    const float* reach_row() const { return reach_; }
    const std::uint8_t* nonzero() const { return buffers_.nonzero_.data(); }
    void drop(std::span<const std::uint16_t> their_positions) {
        for (const std::uint16_t position : their_positions) {
            buffers_.nonzero_[position] = 0;
        }
    }

    /// By our position: where the reach of the identical pocket stands, which our own cards rule
    /// out twice.
    const std::uint16_t* same_rows() const { return same_row_; }

    /// Values by our position.
    float* out() { return out_; }
    void clear(std::span<const std::uint16_t> own_positions) {
        for (const std::uint16_t position : own_positions) {
            std::fill_n(out_ + position * lanes, lanes, 0.0F);
        }
    }
    void clear_all() { std::fill_n(out_, own_hands * lanes, 0.0F); }
    void scale_all(float share) {
        for (std::size_t i = 0; i < own_hands * lanes; ++i) {
            out_[i] *= share;
        }
    }

    /// Room beside the values, by our item of a board and of a level of it.
    float* parts() { return buffers_.parts_.data(); }
    double* won() { return buffers_.won_.data(); }

    /// Turns the values out into the rows of the terminals.
    void write_rows() {
        float* rows[lanes];
        for (std::size_t i = 0; i < terminals.size(); ++i) {
            rows[i] = terminals[i].out;
        }
        separate<vectors>(out_, padded_row(own_hands), std::span(rows).first(terminals.size()));
    }

  private:
    friend class LiveOrder;

    LaneBuffers& buffers_;
    float* const reach_;
    float* const out_;
    const std::uint16_t* const same_row_;
};

/// The showdown order of a board for one group, less the opposing hands that no lane has and the
/// levels that are then empty. Most hands of a solved spot have left the line.
class LiveOrder {
  public:
    template <std::size_t vectors>
    LiveOrder(const BoardOrder& board, const LaneGroup<vectors>& group)
        : LiveOrder(board, group.theirs, group.buffers_) {}

    const std::span<const ShowdownItem> own;  ///< all our items
    const ShowdownItem* const live;           ///< their items that are left
    std::span<const ShowdownStep> steps;      ///< by rising strength

    std::size_t live_count() const { return steps.empty() ? 0 : steps.back().live_end; }

  private:
    LiveOrder(const BoardOrder& board, std::size_t theirs, LaneBuffers& buffers);
};

/// The payoffs of a group, a lane for each terminal.
template <std::size_t vectors>
struct LanePayoffs {
    alignas(64) double win[4 * vectors] = {};
    alignas(64) double lose[4 * vectors] = {};
    alignas(64) double tie[4 * vectors] = {};

    explicit LanePayoffs(std::span<const LaneTerminal> terminals) {
        for (std::size_t i = 0; i < terminals.size(); ++i) {
            win[i] = terminals[i].payoffs.win;
            lose[i] = terminals[i].payoffs.lose;
            tie[i] = terminals[i].payoffs.tie;
        }
    }

    /// A lane whose opponent cannot be there is worth +0, whatever the signs of its payoffs.
    void clear_empty(const Lanes<vectors>& total) {
        alignas(64) double sums[4 * vectors];
        total.store(sums);
        for (std::size_t i = 0; i < 4 * vectors; ++i) {
            if (sums[i] == 0.0) {
                win[i] = lose[i] = tie[i] = 0.0;
            }
        }
    }
};

/// Weights of a set of pockets for each lane, in all and by card.
template <std::size_t vectors>
struct LaneSums {
    using V = Lanes<vectors>;

    V total = V::zero();
    alignas(64) double by_card[card_count][V::count] = {};

    V card(Card c) const { return V::load(by_card[c]); }

    /// Adds items in their order. The total stays in registers: through memory, each addition
    /// would wait for the store of the one before.
    template <class Iterator>
    void add(Iterator item, Iterator end, const float* reach) {
        V sum = total;
        for (; item != end; ++item) {
            const V w = V::widen(reach + item->position * V::count);
            sum = sum + w;
            (card(item->low) + w).store(by_card[item->low]);
            (card(item->high) + w).store(by_card[item->high]);
        }
        total = sum;
    }

    /// The weight that a hand of ours leaves of `sum`, the identical pocket taken off twice.
    V free_of(const ShowdownItem& item, const V& sum) const {
        return sum - card(item.low) - card(item.high);
    }
};

}  // namespace kestrel
