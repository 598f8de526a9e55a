#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <stdexcept>
#include <unordered_map>
#include <vector>

#include "engine/game/betting_rules.h"

namespace kestrel {

/// A tree or a count was given up on request.
class BuildStopped : public std::runtime_error {
  public:
    BuildStopped() : std::runtime_error("Stopped") {}
};

/// More nodes than this have no place in a result, where a node's number is a signed 32-bit one.
inline constexpr std::uint64_t most_nodes = std::numeric_limits<std::int32_t>::max();

/// What the nodes of a tree take, in bytes: the plan of a `PlanNode`, or all that a solve keeps.
struct NodeCosts {
    std::uint64_t node = 0;      ///< each, with the action that leads to it
    std::uint64_t decision = 0;  ///< on top, for each decision
    /// On top, for a decision of this seat with this many actions. May be empty.
    std::function<std::uint64_t(Seat, std::size_t)> actions;
};

/// How many nodes a tree has. An edge leads to each but the root.
struct TreeCount {
    std::uint64_t nodes = 0;
    std::uint64_t decisions = 0;
    std::uint64_t chances = 0;               ///< nodes where a card is dealt and play goes on
    std::array<std::uint64_t, 2> actions{};  ///< per seat, those of all its decisions
    std::uint64_t action_bytes = 0;          ///< `NodeCosts::actions` of all decisions

    bool operator==(const TreeCount&) const = default;
    TreeCount& operator+=(const TreeCount& other);
    TreeCount& operator-=(const TreeCount& other);
    TreeCount operator*(std::uint64_t times) const;

    std::uint64_t bytes(const NodeCosts& costs) const;
};

/// When counting or building a tree ends early.
struct TreeLimits {
    std::uint64_t most_bytes = std::numeric_limits<std::uint64_t>::max();
    const std::atomic<bool>* stop = nullptr;  ///< once true, BuildStopped is thrown
};

/// Counts trees without building them. How many cards are dealt depends on the board alone, and how
/// the betting goes does not depend on the cards. So the betting lines of one board are walked, and
/// what is found behind a deal counts once for each board that can be dealt. Lines that come to the
/// same stacks are walked once. For most trees that takes milliseconds and a megabyte; for a river
/// tree of a hundred million nodes seconds and up to 300 MB.
class TreeCounter {
  public:
    struct Result {
        TreeCount tree;
        TreeCount first_street;  ///< of it, what stands before the first deal
        std::uint64_t bytes = 0;
        bool at_least = false;  ///< beyond the limits, where counting ended: the tree is no smaller
    };

    /// The rules must outlive the counter.
    TreeCounter(const BettingRules& rules, NodeCosts costs, const TreeLimits& limits);

    /// The tree below a step, its own node included. Throws BuildStopped, std::logic_error
    /// ("Unknown street") and std::invalid_argument ("The betting lines are too long").
    Result count(const PlanStep& step);

  private:
    /// By cards to come: what one board has on the street, or streets, with so many of them.
    using ByCards = std::array<TreeCount, 3>;

    struct KeyHash {
        std::size_t operator()(const BettingKey& key) const;
    };

    /// Counting has gone beyond a limit.
    struct Beyond {};

    void find_deals(const PlanStep& step);
    void visit(const PlanStep& step, std::size_t depth);
    void visit_deal(const PlanStep& step, std::size_t depth);
    void visit_decision(const PlanStep& step, std::size_t depth);
    void visit_children(const PlanStep& step, std::size_t depth);
    std::uint64_t boards(std::size_t cards_to_come) const { return boards_[cards_to_come]; }
    TreeCount total() const;
    bool is_beyond(const TreeCount& tree) const;

    const BettingRules& rules_;
    const NodeCosts costs_;
    const TreeLimits limits_;
    ByCards seen_;                           // so far
    std::array<std::uint64_t, 3> boards_{};  // by cards to come: boards that can be dealt
    std::array<Card, 3> dealt_{};            // by cards to come: one that can be dealt next
    /// What stands below the decisions that were counted: for each the place of the first of its
    /// counts, which are by cards to come, rising.
    std::unordered_map<BettingKey, std::uint32_t, KeyHash> known_;
    std::vector<TreeCount> known_counts_;
    BettingRules::Buffers buffers_;
    std::vector<Action> pending_;  // of the decisions above: their actions that are still to do
};

}  // namespace kestrel
