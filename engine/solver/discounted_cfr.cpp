#include "engine/solver/discounted_cfr.h"

#include <algorithm>
#include <cassert>
#include <chrono>
#include <iostream>
#include <utility>

#include "engine/solver/best_response.h"
#include "engine/solver/node_passes.h"
#include "engine/solver/node_rules.h"
#include "engine/solver/profile.h"
#include "engine/solver/profile_report.h"
#include "engine/solver/traversal.h"

namespace kestrel {
namespace {

using Clock = std::chrono::steady_clock;

/// Whole microseconds since `start`, in milliseconds.
double milliseconds_since(Clock::time_point start) {
    const auto elapsed =
        std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - start);
    return static_cast<double>(elapsed.count()) / 1000.0;
}

CfrOptions without_callbacks(CfrOptions options) {
    options.progress = nullptr;
    options.should_stop = nullptr;
    return options;
}

}  // namespace

bool measures_at(const CfrOptions& options, std::uint32_t iteration) {
    const std::uint32_t interval = options.exploitability_interval;
    return iteration == options.max_iterations || (interval != 0 && iteration % interval == 0);
}

DiscountedCfr::DiscountedCfr(CfrOptions cfr_options)
    : options(without_callbacks(cfr_options)),
      threads_(std::max<std::size_t>(options.threads, 1)),
      callbacks_{std::move(cfr_options.progress), std::move(cfr_options.should_stop)} {
    if (threads_ > 1) {
        pool_ = std::make_unique<WorkerPool>(threads_ - 1);
    }
}

void DiscountedCfr::run(const Game& game) {
    const Callbacks callbacks = std::exchange(callbacks_, {});
    if (!SolverProfile::enabled()) {
        iterate(game, callbacks);
        return;
    }
    SolverProfile::reset();
    {
        const ProfileScope timer(ProfileSlot::total_run);
        iterate(game, callbacks);
    }
    print_profile(*this, threads_);
}

void DiscountedCfr::iterate(const Game& game, const Callbacks& callbacks) {
    exploitability = 0;
    iterations_completed = 0;
    prepare_states(game);

    const auto run_start = Clock::now();
    for (std::uint32_t i = 0; i < options.max_iterations; ++i) {
        if (callbacks.should_stop && callbacks.should_stop()) {
            break;
        }
        const std::uint32_t iteration = i + 1;
        const auto iteration_start = Clock::now();
        iterations_completed = iteration;
        solve_iteration(game, i);

        const bool measured = measures_at(options, iteration);
        if (measured) {
            exploitability = measure_exploitability(game);
        }
        const double iteration_ms = milliseconds_since(iteration_start);
        if (callbacks.progress) {
            callbacks.progress(iteration, exploitability, iteration_ms);
        }
        if (options.verbose && (iteration % 50 == 0 || iteration == options.max_iterations)) {
            std::cout << "[CFR] iteration " << iteration << " / " << options.max_iterations
                      << "  exploitability≈" << exploitability << "  iter≈" << iteration_ms
                      << "ms\n";
        }
        if (options.exploitability_interval != 0 && measured &&
            options.target_exploitability >= exploitability) {
            break;
        }
    }
    if (options.verbose) {
        const auto elapsed =
            std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - run_start);
        std::cout << "[CFR] completed " << iterations_completed << " iterations in "
                  << elapsed.count() << "ms  exploitability≈" << exploitability << "\n";
    }
}

void DiscountedCfr::prepare_states(const Game& game) {
    prepared_ = &game;
    states.prepare(game, options.compress, pool_.get(), threads_);
    batches_ = !options.plain_walk && batched_.prepare(game, states, pool_.get(), threads_);
}

/// States, rows and tables of another game would be read past their ends.
void DiscountedCfr::require_prepared([[maybe_unused]] const Game& game) const {
    assert(prepared_ == &game && "not the game whose states were prepared");
}

void DiscountedCfr::solve_iteration(const Game& game, std::uint32_t t) {
    require_prepared(game);
    const ProfileScope timer(ProfileSlot::solve_iteration);
    const Discounts discounts = discounts_of(t);
    for (const Seat seat : {Seat::OOP, Seat::IP}) {
        const std::size_t s = index_of(seat);
        root_values[s].assign(game.cards.pockets[s].size(), 0.0F);
        const std::span<const float> reach = game.cards.pocket_weights[1 - s];
        if (batches_) {
            batched_.run(WalkRule::iterate, game, states, discounts, seat, reach, root_values[s],
                         pool_.get(), threads_);
            continue;
        }
        const Traversal walk(game, states, discounts, seat, pool_.get(), threads_);
        walk.solve_recursive(0, reach, root_values[s], 0, scratch_[s]);
    }
}

std::array<float, 2> DiscountedCfr::mes_ev(const Game& game) {
    const ProfileScope timer(ProfileSlot::mes_ev);
    return measure(game, Measure::best_response);
}

std::array<float, 2> DiscountedCfr::current_ev(const Game& game) {
    const ProfileScope timer(ProfileSlot::current_ev);
    return measure(game, Measure::current);
}

std::array<float, 2> DiscountedCfr::measure(const Game& game, Measure what) {
    require_prepared(game);
    std::array<float, 2> result{};
    ScratchStack scratch;
    for (const Seat seat : {Seat::OOP, Seat::IP}) {
        const std::size_t s = index_of(seat);
        const std::vector<float>& weights = game.cards.pocket_weights[s];
        std::vector<float>& row = measure_values[s];
        row.assign(weights.size(), 0.0F);
        const std::span<const float> reach = game.cards.pocket_weights[1 - s];
        const bool best = what == Measure::best_response;
        if (batches_) {
            batched_.run(best ? WalkRule::best : WalkRule::average, game, states, {}, seat, reach,
                         row, pool_.get(), threads_);
        } else {
            const MeasuringWalk walk(game, states, seat, pool_.get(), threads_);
            if (best) {
                walk.compute_best_cfvalue_recursive(0, reach, row, 0, scratch);
            } else {
                walk.compute_cfvalue_recursive(0, reach, row, 0, scratch);
            }
        }
        double value = 0.0;
        for (std::size_t h = 0; h < row.size(); ++h) {
            value += static_cast<double>(weights[h]) * static_cast<double>(row[h]);
        }
        result[s] = static_cast<float>(value);
    }
    return result;
}

float DiscountedCfr::measure_exploitability(const Game& game) {
    const ProfileScope timer(ProfileSlot::exploitability);
    const std::array<float, 2> best = mes_ev(game);
    if (!(game.options.rake_fraction > 0)) {
        // Zero-sum: the current values cancel.
        return static_cast<float>((static_cast<double>(best[1]) + static_cast<double>(best[0])) *
                                  0.5);
    }
    const std::array<float, 2> current = current_ev(game);
    const float oop_gain = best[0] - current[0];
    const float ip_gain = best[1] - current[1];
    return static_cast<float>((static_cast<double>(ip_gain) + static_cast<double>(oop_gain)) * 0.5);
}

std::vector<float> DiscountedCfr::average_strategy(std::size_t node) const {
    if (node >= states.size() || !states[node].active) {
        return {};
    }
    const NodeState& state = states[node];
    std::vector<float> strategy(state.size());
    std::vector<float> denominator(state.num_hands);
    std::vector<float> buffer;
    if (!strategy.empty()) {
        average_strategy_of(state, buffer, strategy, denominator);
    }
    return strategy;
}

std::vector<float> DiscountedCfr::action_frequencies(std::size_t node) const {
    if (node >= states.size() || !states[node].active || states[node].num_hands == 0) {
        return {};
    }
    const NodeState& state = states[node];
    const std::size_t hands = state.num_hands;
    std::vector<double> totals(state.num_actions);
    if (!state.packed && state.num_actions <= most_fused_actions) {
        average_totals(totals.data(), state.strategy_sum().data(), state.num_actions, hands);
    } else {
        const std::vector<float> strategy = average_strategy(node);
        for (std::size_t i = 0; i < strategy.size(); ++i) {
            totals[i / hands] += static_cast<double>(strategy[i]);
        }
    }
    std::vector<float> result;
    for (const double total : totals) {
        result.push_back(static_cast<float>(total / static_cast<double>(hands)));
    }
    return result;
}

void DiscountedCfr::all_action_frequencies(std::span<const std::size_t> first_action,
                                           std::span<float> out) const {
    // Many small chunks, since decisions may stand close together in one part of the tree.
    constexpr std::size_t nodes_at_once = 4096;  // much work beside taking a turn
    const std::size_t chunks = (states.size() + nodes_at_once - 1) / nodes_at_once;
    parallel_turns(pool_.get(), threads_, chunks, [&](Turns& turns) {
        while (const auto chunk = turns.take()) {
            const std::size_t end = std::min((*chunk + 1) * nodes_at_once, states.size());
            for (std::size_t node = *chunk * nodes_at_once; node < end; ++node) {
                if (states[node].active) {
                    std::ranges::copy(action_frequencies(node), out.data() + first_action[node]);
                }
            }
        }
    });
}

void DiscountedCfr::values_at(const Game& game, Seat seat, std::span<const float> reach,
                              std::span<const std::uint64_t> nodes, std::span<float> out) const {
    require_prepared(game);
    const std::size_t hands = game.cards.pockets[index_of(seat)].size();
    if (batches_ && reach.size() == game.cards.pockets[index_of(other(seat))].size()) {
        batched_.values(game, states, seat, reach, nodes, out, pool_.get(), threads_);
        return;
    }
    ScratchStack scratch;
    const MeasuringWalk walk(game, states, seat, pool_.get(), threads_);
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        walk.compute_cfvalue_recursive(nodes[i], reach, out.subspan(i * hands, hands), 0, scratch);
    }
}

std::vector<float> DiscountedCfr::node_values(const Game& game, std::size_t node, Seat seat) const {
    return node_values(game, node, seat, game.cards.pocket_weights[index_of(other(seat))]);
}

std::vector<float> DiscountedCfr::node_values(const Game& game, std::size_t node, Seat seat,
                                              std::span<const float> reach) const {
    if (node >= game.nodes.size() || node >= states.size()) {
        return {};
    }
    std::vector<float> out(game.cards.pockets[index_of(seat)].size());
    const std::uint64_t index = node;
    values_at(game, seat, reach, {&index, 1}, out);
    return out;
}

std::vector<float> DiscountedCfr::action_values(const Game& game, std::size_t node,
                                                std::span<const float> reach) const {
    if (node >= game.nodes.size() || node >= states.size() || !states[node].active) {
        return {};
    }
    std::vector<float> out(states[node].size());
    values_at(game, states[node].seat, reach, game.nodes[node].children, out);
    return out;
}

std::vector<float> DiscountedCfr::decision_values(std::size_t node,
                                                  std::span<const float> action_values) const {
    if (node >= states.size() || !states[node].active ||
        action_values.size() != states[node].size()) {
        return {};
    }
    ScratchFrame frame;
    frame.action_values.assign(action_values.begin(), action_values.end());
    std::vector<float> out(states[node].num_hands);
    average_decision_value(states[node], frame, out);
    return out;
}

}  // namespace kestrel
