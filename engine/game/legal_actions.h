#pragma once

#include <cstdint>
#include <vector>

#include "engine/game/action.h"
#include "engine/poker/bet_size.h"

namespace kestrel {

/// Step by step from the sizes that were asked for to the legal actions of one decision. Amounts in
/// hundredths of a chip.
class LegalActions {
  public:
    /// Appends to `list`, which is empty; both must outlive the object.
    LegalActions(const SizeContext& size, std::vector<Action>& list);

    void add(ActionKind kind, std::int32_t amount);

    /// A wager of each size; one of all that can be wagered is an all-in.
    void add_bets(const std::vector<SizeToken>& tokens);
    /// Leaves out a chip size whose cap on raises is reached.
    void add_raises(const std::vector<SizeToken>& tokens, std::int32_t raises_this_street);
    /// An all-in, unless there is one.
    void add_jam();

    /// Clamps wagers to what is legal, and makes an all-in of one that, once called, leaves at most
    /// `all_in_threshold` of the pot behind.
    void round_to_all_in(std::int32_t pot, double all_in_threshold);

    /// Fold, call and check first, then the wagers from small to large. `wagers` is a buffer.
    void order(std::vector<Action>& wagers);

    /// Drops wagers that lie too close below the next larger one; at threshold 0, equal ones.
    void merge(double threshold);

  private:
    void add_wager(ActionKind kind, std::int32_t amount);

    const SizeContext& size_;
    std::vector<Action>& list_;
};

}  // namespace kestrel
