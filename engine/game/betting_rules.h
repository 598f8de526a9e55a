#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "engine/game/action.h"
#include "engine/game/plan_node.h"
#include "engine/game/suit_isomorphism.h"
#include "engine/poker/cards.h"

namespace kestrel {

/// The running state of the hand at one node. Amounts in hundredths of a chip.
struct HandState {
    ActionKind last_step = ActionKind::none;  ///< what led here, also a dealt card
    std::int32_t raises_this_street = 0;      ///< bets and raises so far; reset by a call
    bool all_in = false;
    Seat last_aggressor = Seat::OOP;      ///< after a call: whose bet was called; otherwise OOP
    std::array<std::int32_t, 2> stack{};  ///< left per seat
    std::int32_t street_bet = 0;          ///< the bet level on this street
    std::array<std::int32_t, 2> contributed{};
    std::int32_t pot = 0;
    Seat last_actor = Seat::OOP;
    ActionKind last_bet_action = ActionKind::none;
    CardMask dead_cards = 0;
    Card turn = NO_CARD;
    Card river = NO_CARD;

    /// Board cards that are still to come: 0, 1 or 2.
    std::size_t cards_to_come() const { return turn == NO_CARD ? 2 : river == NO_CARD ? 1 : 0; }
};

/// A node, without its lists, and the hand that led to it.
struct PlanStep {
    PlanNode node;
    HandState state;

    /// Whether nothing follows: a fold, or a showdown on a complete board.
    bool is_end() const { return node.kind == NodeKind::Terminal && !node.runout_pending; }
};

/// What the actions of a decision and all that follows them depend on, the cards aside: two steps
/// with the same key have the same betting below them.
struct BettingKey {
    std::array<std::int32_t, 2> stack{};
    std::int32_t matched = 0;
    std::int32_t street_bet = 0;
    std::int32_t raises_this_street = 0;  ///< 0 on a street where no size counts them
    std::uint8_t cards_to_come = 0;
    Street street = Street::Flop;
    Seat seat = Seat::OOP;
    bool bet_open = false;
    bool all_in = false;
    bool donk_spot = false;

    bool operator==(const BettingKey&) const = default;
};

/// The rules of the betting: what children a node has. The one description of them, for those who
/// build the tree and for those who count it.
class BettingRules {
  public:
    /// The buffers of an expansion, one for each thread, so that no node allocates.
    struct Buffers {
        std::vector<Action> actions;
        std::vector<Action> wagers;
    };

    /// What is pointed to must outlive the object. `isomorphism`: null for none.
    BettingRules(const PlanOptions& options, const Board& board,
                 const SuitIsomorphism* isomorphism);

    /// OOP's decision on the starting street.
    PlanStep root() const;

    /// Lists in `buffers.actions` what leads to the children, in their order; nothing at an end.
    /// Throws std::logic_error ("Unknown street").
    void list_actions(const PlanStep& step, Buffers& buffers) const;

    PlanStep child_of(const PlanStep& step, Action action) const;

    BettingKey key_of(const PlanStep& step) const;

  private:
    void list_decision(const PlanStep& step, Buffers& buffers) const;
    void list_deal(const HandState& state, std::vector<Action>& actions) const;
    bool is_donk_spot(const PlanStep& step) const;
    const StreetSizing& sizing(Street street) const;

    const PlanOptions& options_;
    const Board board_;
    const SuitIsomorphism* const isomorphism_;
    std::array<bool, 3> counts_raises_{};  // by street: some size has a cap on raises
};

}  // namespace kestrel
