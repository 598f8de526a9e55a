#include "engine/solver/best_response.h"

#include <algorithm>

#include "engine/solver/chance.h"
#include "engine/solver/kernels.h"
#include "engine/solver/node_rules.h"
#include "engine/solver/terminal.h"

namespace kestrel {

MeasuringWalk::MeasuringWalk(const Game& game, const StateTable& states, Seat seat,
                             WorkerPool* pool, std::size_t threads)
    : game_(game), states_(states), seat_(seat), pool_(pool), threads_(threads) {}

void MeasuringWalk::compute_cfvalue_recursive(std::size_t node, std::span<const float> reach,
                                              std::span<float> out, std::size_t depth,
                                              ScratchStack& scratch) const {
    walk(Mode::average, node, reach, out, depth, scratch);
}

void MeasuringWalk::compute_best_cfvalue_recursive(std::size_t node, std::span<const float> reach,
                                                   std::span<float> out, std::size_t depth,
                                                   ScratchStack& scratch) const {
    walk(Mode::best, node, reach, out, depth, scratch);
}

void MeasuringWalk::walk(Mode mode, std::size_t node, std::span<const float> reach,
                         std::span<float> out, std::size_t depth, ScratchStack& scratch) const {
    const GameNode& n = game_.nodes[node];
    if (n.kind == NodeKind::Terminal) {
        terminal_eval(game_, n, seat_, reach, out);
    } else if (n.actions.empty()) {
        std::ranges::fill(out, 0.0F);
    } else if (n.kind == NodeKind::Chance) {
        walk_chance(mode, node, reach, out, depth, scratch);
    } else if (n.seat == seat_) {
        walk_own(mode, node, reach, out, depth, scratch);
    } else if (n.actions.size() == 1) {
        walk(mode, n.children[0], reach, out, depth + 1, scratch);
    } else {
        walk_opponent(mode, node, reach, out, depth, scratch);
    }
}

void MeasuringWalk::walk_chance(Mode mode, std::size_t node, std::span<const float> reach,
                                std::span<float> out, std::size_t depth,
                                ScratchStack& scratch) const {
    const GameNode& n = game_.nodes[node];
    ScratchFrame& frame = scratch.frame(depth);
    const std::size_t width = out.size();
    scale_chance_reach(n, reach, frame);
    frame.child_values.resize(n.children.size() * width);
    const auto evaluate = [&](std::size_t begin, std::size_t end, ScratchStack& stack) {
        for (std::size_t c = begin; c < end; ++c) {
            walk(mode, n.children[c], frame.chance_reach,
                 {frame.child_values.data() + c * width, width}, depth + 1, stack);
        }
    };
    if (states_.children_distinct(node) && pool_ != nullptr && threads_ >= 2 &&
        n.children.size() >= 2) {
        parallel_for(pool_, threads_, n.children.size(), [&](std::size_t begin, std::size_t end) {
            ScratchStack stack;
            evaluate(begin, end, stack);
        });
    } else {
        evaluate(0, n.children.size(), scratch);
    }
    aggregate_children(game_, n, seat_, frame, out);
}

void MeasuringWalk::walk_opponent(Mode mode, std::size_t node, std::span<const float> reach,
                                  std::span<float> out, std::size_t depth,
                                  ScratchStack& scratch) const {
    const GameNode& n = game_.nodes[node];
    ScratchFrame& frame = scratch.frame(depth);
    const std::size_t actions = n.actions.size();
    const std::size_t hands = reach.size();
    if (states_[node].num_hands != hands) {
        std::ranges::fill(out, 0.0F);
        return;
    }
    average_reach_rows(states_[node], reach, frame);
    frame.action_values.resize(actions * out.size());
    for (std::size_t a = 0; a < actions; ++a) {
        walk(mode, n.children[a], {frame.next_reach.data() + a * hands, hands},
             {frame.action_values.data() + a * out.size(), out.size()}, depth + 1, scratch);
    }
    sum_rows_in_double(out.data(), frame.action_values.data(), actions, out.size());
}

void MeasuringWalk::walk_own(Mode mode, std::size_t node, std::span<const float> reach,
                             std::span<float> out, std::size_t depth, ScratchStack& scratch) const {
    const GameNode& n = game_.nodes[node];
    ScratchFrame& frame = scratch.frame(depth);
    const std::size_t actions = n.actions.size();
    const std::size_t hands = out.size();
    if (states_[node].num_hands != hands) {
        std::ranges::fill(out, 0.0F);
        return;
    }
    frame.action_values.resize(actions * hands);
    for (std::size_t a = 0; a < actions; ++a) {
        walk(mode, n.children[a], reach, {frame.action_values.data() + a * hands, hands}, depth + 1,
             scratch);
    }
    if (mode == Mode::best) {
        best_decision_value(game_.node_lock(node), actions, frame, out);
    } else {
        average_decision_value(states_[node], frame, out);
    }
}

}  // namespace kestrel
