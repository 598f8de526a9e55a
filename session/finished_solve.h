#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

#include "engine/game/game.h"
#include "engine/solver/discounted_cfr.h"
#include "session/recent_values.h"

namespace kestrel_app {

/// One step down the tree: the place of a child among those of a node.
struct PathStep {
    std::uint64_t node = 0;
    std::size_t action = 0;

    bool operator==(const PathStep&) const = default;
};

/// The way back from every node of a tree to its root.
class ParentLinks {
  public:
    explicit ParentLinks(const kestrel::Game& game);

    /// The steps from the root to a node of the tree; none for the root.
    std::vector<PathStep> path_to(std::uint64_t node) const;

  private:
    struct Link {
        std::uint32_t parent;
        std::uint32_t action;
    };
    std::vector<Link> links_;  // by node; the root's stands for nothing
};

/// A game with the solver that has run on it, for any number of threads to ask.
class FinishedSolve {
  public:
    FinishedSolve(std::shared_ptr<const kestrel::Game> solved_game,
                  std::shared_ptr<const kestrel::DiscountedCfr> finished_solver);

    /// Made at the first call.
    const ParentLinks& parents() const;

    const std::shared_ptr<const kestrel::Game> game;
    const std::shared_ptr<const kestrel::DiscountedCfr> solver;

    /// Of decisions: what their actions are worth against the hands that the opponent comes with.
    /// See ReachedValues.
    mutable RecentValues recent_values;

  private:
    mutable std::once_flag parents_made_;
    mutable std::unique_ptr<const ParentLinks> parents_;
};

}  // namespace kestrel_app
