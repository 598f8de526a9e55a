#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>

#include "engine/game/action.h"
#include "engine/game/betting_rules.h"
#include "engine/game/card_context.h"
#include "engine/game/fixed_list.h"
#include "engine/game/plan_node.h"
#include "engine/game/tree_count.h"
#include "engine/poker/cards.h"

namespace kestrel {

/// The tree takes more than it may.
class TreeTooLarge : public std::runtime_error {
  public:
    TreeTooLarge() : std::runtime_error("The tree is too large") {}
};

/// The complete betting tree of a spot, from the starting street to every fold and showdown, deal
/// by deal, as one flat list in depth-first order. Node 0 is the root, OOP's decision on the
/// starting street; a parent stands before its children.
class ActionPlan {
  public:
    /// Counts the tree, and builds it when it keeps to the limits and to `most_nodes`. `cards` must
    /// outlive the plan; null means a board of no cards and no interchangeable suits. Throws
    /// TreeTooLarge, BuildStopped, std::bad_alloc and what `TreeCounter` throws.
    ///
    /// Environment: KESTREL_ACTIONPLAN_PARALLEL_DEPTH, the depth from which on subtrees are built
    /// side by side (default 0, not at all), and KESTREL_ACTIONPLAN_MAX_WORKERS, on how many
    /// threads (default the hardware's). Text that is no number is ignored. The tree is the same.
    ActionPlan(PlanOptions options, const CardContext* cards, const TreeLimits& limits = {});

    ActionPlan(const ActionPlan&) = delete;
    ActionPlan& operator=(const ActionPlan&) = delete;

    std::size_t node_count() const { return nodes.size(); }
    const PlanNode& node(std::size_t index) const { return nodes[index]; }

    /// Bytes of all nodes with their lists.
    std::size_t memory_bytes() const;

    /// The same of a plan of so many nodes, in `NodeCosts`.
    static NodeCosts node_costs();

    const PlanOptions options;
    const Board board;
    const CardContext* const cards;

  private:
    class Builder;

    // Of all nodes, one list after the other.
    FixedList<Action> actions_;
    FixedList<std::uint64_t> children_;

  public:
    FixedList<PlanNode> nodes;  ///< constant after construction
};

}  // namespace kestrel
