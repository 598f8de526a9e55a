#include "session/finished_solve.h"

#include <algorithm>
#include <utility>

namespace kestrel_app {

using kestrel::Game;

ParentLinks::ParentLinks(const Game& game) : links_(game.nodes.size()) {
    // A parent stands before its children. From the last node up, so that of several parents the
    // first one stands.
    for (std::size_t node = game.nodes.size(); node-- > 0;) {
        const auto& children = game.nodes[node].children;
        for (std::size_t action = children.size(); action-- > 0;) {
            links_[children[action]] = {static_cast<std::uint32_t>(node),
                                        static_cast<std::uint32_t>(action)};
        }
    }
}

std::vector<PathStep> ParentLinks::path_to(std::uint64_t node) const {
    std::vector<PathStep> path;
    while (node != 0) {
        const Link& link = links_[node];
        path.push_back({link.parent, link.action});
        node = link.parent;
    }
    std::ranges::reverse(path);
    return path;
}

FinishedSolve::FinishedSolve(std::shared_ptr<const Game> solved_game,
                             std::shared_ptr<const kestrel::DiscountedCfr> finished_solver)
    : game(std::move(solved_game)), solver(std::move(finished_solver)) {}

const ParentLinks& FinishedSolve::parents() const {
    std::call_once(parents_made_, [this] { parents_ = std::make_unique<ParentLinks>(*game); });
    return *parents_;
}

}  // namespace kestrel_app
