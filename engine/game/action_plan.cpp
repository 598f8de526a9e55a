#include "engine/game/action_plan.h"

#include <algorithm>
#include <memory>
#include <span>
#include <utility>
#include <vector>

#include "engine/game/environment.h"
#include "engine/parallel/worker_pool.h"

namespace kestrel {
namespace {

constexpr std::uint64_t edge_bytes = sizeof(Action) + sizeof(std::uint64_t);

Board board_of(const CardContext* cards) {
    if (cards != nullptr) {
        return cards->board;
    }
    return {NO_CARD, NO_CARD, NO_CARD, NO_CARD, NO_CARD};
}

}  // namespace

/// Writes the nodes and their lists where they belong. Every subtree is counted before it is
/// passed over, so its place is known and any thread can fill it.
class ActionPlan::Builder {
  public:
    Builder(ActionPlan& plan, const TreeLimits& limits)
        : plan_(plan),
          limits_(limits),
          rules_(plan.options, plan.board,
                 plan.cards == nullptr ? nullptr : &plan.cards->isomorphism),
          counter_(rules_, node_costs(), limits),
          parallel_depth_(number_from_environment("KESTREL_ACTIONPLAN_PARALLEL_DEPTH", 0, 0)) {}

    void build() {
        const PlanStep root = rules_.root();
        const TreeCounter::Result counted = counter_.count(root);
        if (counted.at_least) {
            throw TreeTooLarge();
        }
        plan_.nodes = FixedList<PlanNode>(counted.tree.nodes);
        plan_.actions_ = FixedList<Action>(counted.tree.nodes - 1);
        plan_.children_ = FixedList<std::uint64_t>(counted.tree.nodes - 1);

        plan_.nodes[0] = root.node;
        Place next{1, 0};
        BettingRules::Buffers buffers;
        expand(root, 0, 0, next, buffers);
        build_waiting();
    }

  private:
    /// Where the next node and the next list go.
    struct Place {
        std::size_t node;
        std::size_t edge;
    };

    /// A subtree that is filled in later: its root stands already.
    struct Waiting {
        PlanStep step;
        std::size_t index;
        Place place;
    };

    void expand(const PlanStep& step, std::size_t index, std::size_t depth, Place& next,
                BettingRules::Buffers& buffers) {
        if (limits_.stop != nullptr && limits_.stop->load(std::memory_order_relaxed)) {
            throw BuildStopped();
        }
        rules_.list_actions(step, buffers);
        const std::size_t count = buffers.actions.size();
        if (count > plan_.actions_.size() - next.edge) {
            throw std::logic_error("The tree was counted wrong");
        }
        const std::span actions(plan_.actions_.data() + next.edge, count);
        const std::span children(plan_.children_.data() + next.edge, count);
        next.edge += count;
        std::ranges::copy(buffers.actions, actions.begin());
        plan_.nodes[index].actions = actions;
        plan_.nodes[index].children = children;
        for (std::size_t i = 0; i < count; ++i) {
            const PlanStep child = rules_.child_of(step, actions[i]);
            const std::size_t place = next.node++;
            children[i] = place;
            plan_.nodes[place] = child.node;
            if (!child.is_end()) {
                fill(child, place, depth + 1, next, buffers);
            }
        }
    }

    void fill(const PlanStep& step, std::size_t index, std::size_t depth, Place& next,
              BettingRules::Buffers& buffers) {
        if (depth != parallel_depth_) {
            expand(step, index, depth, next, buffers);
            return;
        }
        waiting_.push_back({step, index, next});
        const std::size_t below = counter_.count(step).tree.nodes - 1;
        next.node += below;
        next.edge += below;
    }

    void build_waiting() {
        if (waiting_.empty()) {
            return;
        }
        const std::size_t workers =
            number_from_environment("KESTREL_ACTIONPLAN_MAX_WORKERS", 1, hardware_threads());
        const auto pool = workers > 1 ? std::make_unique<WorkerPool>(workers - 1) : nullptr;
        parallel_turns(pool.get(), workers, waiting_.size(), [this](Turns& turns) {
            BettingRules::Buffers buffers;
            while (const auto turn = turns.take()) {
                Waiting& subtree = waiting_[*turn];
                expand(subtree.step, subtree.index, parallel_depth_ + 1, subtree.place, buffers);
            }
        });
    }

    ActionPlan& plan_;
    const TreeLimits limits_;
    const BettingRules rules_;
    TreeCounter counter_;
    const std::size_t parallel_depth_;  // 0: nothing waits
    std::vector<Waiting> waiting_;
};

ActionPlan::ActionPlan(PlanOptions plan_options, const CardContext* card_context,
                       const TreeLimits& limits)
    : options(std::move(plan_options)), board(board_of(card_context)), cards(card_context) {
    Builder(*this, limits).build();
}

std::size_t ActionPlan::memory_bytes() const {
    return nodes.size() * sizeof(PlanNode) + actions_.size() * edge_bytes;
}

NodeCosts ActionPlan::node_costs() {
    return {.node = sizeof(PlanNode) + edge_bytes, .decision = 0, .actions = {}};
}

}  // namespace kestrel
