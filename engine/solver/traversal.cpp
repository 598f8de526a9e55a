#include "engine/solver/traversal.h"

#include <algorithm>

#include "engine/solver/chance.h"
#include "engine/solver/kernels.h"
#include "engine/solver/terminal.h"

namespace kestrel {

Traversal::Traversal(const Game& game, StateTable& states, const Discounts& discounts, Seat seat,
                     WorkerPool* pool, std::size_t threads)
    : game_(game),
      states_(states),
      discounts_(discounts),
      seat_(seat),
      pool_(pool),
      threads_(threads) {}

void Traversal::solve_recursive(std::size_t node, std::span<const float> reach,
                                std::span<float> out, std::size_t depth,
                                ScratchStack& scratch) const {
    const GameNode& n = game_.nodes[node];
    if (n.kind == NodeKind::Terminal) {
        terminal_eval(game_, n, seat_, reach, out);
    } else if (n.actions.empty() || out.empty()) {
        std::ranges::fill(out, 0.0F);
    } else if (n.kind == NodeKind::Chance) {
        solve_chance(node, reach, out, depth, scratch);
    } else if (n.seat != seat_) {
        solve_opponent(node, reach, out, depth, scratch);
    } else {
        solve_own(node, reach, out, depth, scratch);
    }
}

void Traversal::solve_chance(std::size_t node, std::span<const float> reach, std::span<float> out,
                             std::size_t depth, ScratchStack& scratch) const {
    const GameNode& n = game_.nodes[node];
    ScratchFrame& frame = scratch.frame(depth);
    const std::size_t width = out.size();
    scale_chance_reach(n, reach, frame);
    frame.child_values.resize(n.children.size() * width);

    const bool distinct = states_.children_distinct(node);
    if (!distinct) {
        find_unique_children(n, frame);
    }
    const std::size_t items = distinct ? n.children.size() : frame.unique_children.size();
    const auto evaluate = [&](std::size_t begin, std::size_t end, ScratchStack& stack) {
        for (std::size_t item = begin; item < end; ++item) {
            const std::size_t c = distinct ? item : frame.unique_children[item];
            solve_recursive(n.children[c], frame.chance_reach,
                            {frame.child_values.data() + c * width, width}, depth + 1, stack);
        }
    };
    // Deeper deals are small, and there is work enough above them.
    constexpr std::size_t deepest_fan_out = 8;
    if (pool_ != nullptr && threads_ >= 2 && depth <= deepest_fan_out && items >= 2 &&
        worth_fanning_out(n.children.size(), width)) {
        parallel_for(pool_, threads_, items, [&](std::size_t begin, std::size_t end) {
            ScratchStack stack;
            evaluate(begin, end, stack);
        });
    } else {
        evaluate(0, items, scratch);
    }
    if (!distinct) {
        copy_repeated_rows(frame, width);
    }
    aggregate_children(game_, n, seat_, frame, out);
}

void Traversal::solve_opponent(std::size_t node, std::span<const float> reach, std::span<float> out,
                               std::size_t depth, ScratchStack& scratch) const {
    const GameNode& n = game_.nodes[node];
    if (n.actions.size() == 1) {
        solve_recursive(n.children[0], reach, out, depth + 1, scratch);
        return;
    }
    const NodeState& state = states_[node];
    const std::size_t hands = reach.size();
    if (state.num_hands != hands) {
        std::ranges::fill(out, 0.0F);
        return;
    }
    ScratchFrame& frame = scratch.frame(depth);
    const std::size_t actions = n.actions.size();
    current_reach_rows(game_, node, state, reach, frame);
    frame.action_values.resize(actions * out.size());
    for (std::size_t a = 0; a < actions; ++a) {
        solve_recursive(n.children[a], {frame.next_reach.data() + a * hands, hands},
                        {frame.action_values.data() + a * out.size(), out.size()}, depth + 1,
                        scratch);
    }
    sum_rows_in_double(out.data(), frame.action_values.data(), actions, out.size());
}

void Traversal::solve_own(std::size_t node, std::span<const float> reach, std::span<float> out,
                          std::size_t depth, ScratchStack& scratch) const {
    const GameNode& n = game_.nodes[node];
    NodeState& state = states_[node];
    const std::size_t hands = out.size();
    if (state.num_hands != hands) {
        std::ranges::fill(out, 0.0F);
        return;
    }
    ScratchFrame& frame = scratch.frame(depth);
    const std::size_t actions = n.actions.size();
    frame.action_values.resize(actions * hands);
    for (std::size_t a = 0; a < actions; ++a) {
        solve_recursive(n.children[a], reach, {frame.action_values.data() + a * hands, hands},
                        depth + 1, scratch);
    }
    update_decision(game_, node, state, discounts_, frame, out);
}

}  // namespace kestrel
