#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <span>
#include <vector>

#include "engine/game/action.h"
#include "engine/game/card_context.h"
#include "engine/game/growing_list.h"
#include "engine/game/list_pool.h"
#include "engine/poker/bet_size.h"
#include "engine/poker/cards.h"

namespace kestrel {

enum class NodeKind : std::uint8_t { Decision, Chance, Terminal };

/// What each seat may bet and raise on one street.
struct StreetSizing {
    std::vector<SizeToken> oop_bets;
    std::vector<SizeToken> oop_raises;
    std::vector<SizeToken> ip_bets;
    std::vector<SizeToken> ip_raises;
    /// What OOP may bet when leading into the player who had the betting lead. Absent: as
    /// `oop_bets`. Present and empty: OOP can only check there.
    std::optional<std::vector<SizeToken>> donk_sizes;
};

/// The configuration of a betting tree. Amounts in hundredths of a chip.
struct PlanOptions {
    Street starting_street = Street::Flop;
    std::int32_t starting_pot = 0;
    std::int32_t effective_stack = 0;  ///< of each player
    double rake_fraction = 0;          ///< 0.05 for 5 % of the pot
    double rake_cap = 0;               ///< hundredths of a chip; 0 for no cap
    StreetSizing flop;
    StreetSizing turn;
    StreetSizing river;
    /// Per seat: an all-in of at most this fraction of the pot is always offered. 0 is off.
    std::array<double, 2> jam_threshold{};
    /// A bet that leaves less than this fraction of the pot behind becomes an all-in. 0 is off.
    double all_in_threshold = 0;
    /// Bets closer to each other than this fraction of the pot become one. 0 merges equal ones.
    double merge_threshold = 0;
    /// Weighs the run-outs of an all-in before the river as the two hands really meet them. Off,
    /// an all-in is worth the mean over all run-outs of the undealt cards, in which those that a
    /// hand's own cards rule out count as nothing. Read by the solver only.
    bool exact_all_in = false;
};

/// One node of the tree. `actions` and `children` point into the plan that owns the node.
struct PlanNode {
    NodeKind kind = NodeKind::Decision;
    /// Decision: the player to act. Terminal after a fold: the seat that folded. Otherwise OOP.
    Seat seat = Seat::OOP;
    /// A chance node carries the street that its card opens; the terminal behind an all-in call
    /// before the river carries the next street.
    Street street = Street::Flop;
    bool runout_pending = false;  ///< terminal only: all-in with cards still to come
    std::int32_t matched = 0;     ///< put in by each player since the root and matched by the other
    std::span<const Action> actions;          ///< one per child
    std::span<const std::uint64_t> children;  ///< node indices, aligned with `actions`
    std::int32_t pot = 0;                     ///< all chips in the middle, unmatched ones included
    std::array<std::int32_t, 2> contributed{};  ///< per seat, put in since the root
    /// The last betting action on the way here, which a dealt card leaves alone. On a terminal,
    /// fold marks a fold and anything else a showdown.
    ActionKind last_action = ActionKind::none;
    Seat last_actor = Seat::OOP;
    Card turn = NO_CARD;
    Card river = NO_CARD;
};

/// The complete betting tree of a spot, from the starting street to every fold and showdown, deal
/// by deal, as one flat list. Node 0 is the root, OOP's decision on the starting street; a parent
/// stands before its children. Built without tasks, the nodes are in depth-first order.
class ActionPlan {
  public:
    /// Builds the whole tree. `cards` must outlive the plan; null means a board of no cards and no
    /// interchangeable suits. Throws std::logic_error ("Unknown street").
    ///
    /// Environment: KESTREL_ACTIONPLAN_PARALLEL_DEPTH, the depth above which children are built as
    /// tasks (default 0, none), and KESTREL_ACTIONPLAN_MAX_WORKERS, the soft limit of tasks at a
    /// time (default the hardware's). Text that is no number is ignored.
    ActionPlan(PlanOptions options, const CardContext* cards);

    ActionPlan(const ActionPlan&) = delete;
    ActionPlan& operator=(const ActionPlan&) = delete;

    std::size_t node_count() const { return nodes.size(); }
    const PlanNode& node(std::size_t index) const { return nodes[index]; }

    /// Bytes of all nodes with their lists.
    std::size_t memory_bytes() const;

    const PlanOptions options;
    const Board board;
    const CardContext* const cards;

  private:
    struct BuildContext;
    struct PlanChild;
    struct Candidates;
    struct WorkerPlace;

    void build_recursive(std::size_t node_index, const BuildContext& context, std::size_t depth,
                         Candidates& candidates);
    void list_actions(const PlanNode& node, const BuildContext& context,
                      Candidates& candidates) const;
    void list_decision(const PlanNode& node, const BuildContext& context,
                       Candidates& candidates) const;
    void list_deal(const BuildContext& context, Candidates& candidates) const;
    PlanChild child_of(const PlanNode& node, const BuildContext& context, Action action) const;
    static void make_wager(PlanChild& child, const PlanNode& node, const BuildContext& context,
                           Action action);
    const StreetSizing& sizing(Street street) const;
    std::unique_lock<std::mutex> lock_nodes();

    std::mutex nodes_lock;  // guards nodes and the two pools while tasks build
    std::size_t max_workers = 1;
    std::size_t parallel_depth = 0;
    std::atomic<std::size_t> active_workers{1};
    ListPool<Action> action_pool_;
    ListPool<std::uint64_t> child_pool_;
    std::size_t edge_count_ = 0;

  public:
    GrowingList<PlanNode> nodes;  ///< constant after construction
};

}  // namespace kestrel
