#include "engine/solver/node_rules.h"

#include <algorithm>
#include <cmath>

#include "engine/solver/kernels.h"

namespace kestrel {
namespace {

bool is_locked(float value) {
    return !std::signbit(value);
}

/// A lock holds for whole hands, so its first action tells.
bool hand_is_locked(std::span<const float> lock, std::size_t hand) {
    return hand < lock.size() && is_locked(lock[hand]);
}

void overlay_lock(std::span<const float> lock, std::span<float> strategy) {
    const std::size_t n = std::min(lock.size(), strategy.size());
    for (std::size_t i = 0; i < n; ++i) {
        if (is_locked(lock[i])) {
            strategy[i] = lock[i];
        }
    }
}

/// `update_regrets` for the hands that are not locked.
void update_free_regrets(std::span<const float> lock, std::span<float> regrets,
                         const float* action_values, std::span<const float> ev,
                         const Discounts& discounts) {
    const std::size_t hands = ev.size();
    for (std::size_t h = 0; h < hands; ++h) {
        if (hand_is_locked(lock, h)) {
            continue;
        }
        for (std::size_t i = h; i < regrets.size(); i += hands) {
            const float discount = regrets[i] >= 0.0F ? discounts.alpha : discounts.beta;
            regrets[i] = discount * regrets[i] + action_values[i] - ev[h];
        }
    }
}

/// out[h] = sum over the actions of value times share, in double in action order, rounded once.
/// `share(a, h)` gives the share, `counts(a, h)` whether the action takes part.
template <class Share, class Counts>
float mix(const float* values, std::size_t actions, std::size_t hands, std::size_t h, Share share,
          Counts counts) {
    double sum = 0.0;
    for (std::size_t a = 0; a < actions; ++a) {
        if (counts(a, h)) {
            sum += static_cast<double>(values[a * hands + h]) * static_cast<double>(share(a, h));
        }
    }
    return static_cast<float>(sum);
}

void take_best(const float* values, std::size_t actions, std::span<float> out) {
    const std::size_t hands = out.size();
    std::copy_n(values, hands, out.begin());
    for (std::size_t a = 1; a < actions; ++a) {
        const float* row = values + a * hands;
        for (std::size_t h = 0; h < hands; ++h) {
            out[h] = row[h] > out[h] ? row[h] : out[h];
        }
    }
}

}  // namespace

Discounts discounts_of(std::uint32_t t) {
    Discounts result;
    const double a = t == 0 ? 0.0 : t - 1.0;
    const double p = a * std::sqrt(a);
    result.alpha = static_cast<float>(p / (p + 1.0));
    result.beta = 0.5F;

    std::uint32_t k = 0;
    for (std::uint32_t power = 1; power != 0 && power <= t; power *= 4) {
        k = power;
    }
    const double g = t - k;
    const double q = g / (g + 1.0);
    result.gamma = static_cast<float>(q * q * q);
    return result;
}

void current_reach_rows(const Game& game, std::size_t node, const NodeState& state,
                        std::span<const float> reach, ScratchFrame& frame) {
    const std::size_t actions = state.num_actions;
    const std::size_t hands = reach.size();
    const std::span<const float> regrets = get_regrets(state, frame.regrets);
    frame.opponent_strategy.resize(actions * hands);
    frame.opponent_denominator.resize(hands);
    regret_matching(frame.opponent_strategy.data(), frame.opponent_denominator.data(),
                    regrets.data(), actions, hands);
    overlay_lock(game.node_lock(node), frame.opponent_strategy);
    frame.next_reach.resize(actions * hands);
    for (std::size_t a = 0; a < actions; ++a) {
        multiply_rows(frame.next_reach.data() + a * hands,
                      frame.opponent_strategy.data() + a * hands, reach.data(), hands);
    }
}

void update_decision(const Game& game, std::size_t node, NodeState& state,
                     const Discounts& discounts, ScratchFrame& frame, std::span<float> out) {
    const std::size_t actions = state.num_actions;
    const std::size_t hands = out.size();
    const std::span<float> regrets = get_regrets(state, frame.regrets);
    const std::span<float> strategy_sum = get_strategy_sum(state, frame.strategy_sum);
    frame.strategy.resize(actions * hands);
    frame.strategy_denominator.resize(hands);
    regret_matching(frame.strategy.data(), frame.strategy_denominator.data(), regrets.data(),
                    actions, hands);
    const std::span<const float> lock = game.node_lock(node);
    overlay_lock(lock, frame.strategy);
    fma_actions(out.data(), frame.strategy.data(), frame.action_values.data(), actions, hands);
    strategy_sum_update(strategy_sum.data(), frame.strategy.data(), discounts.gamma,
                        actions * hands);

    const bool fully_locked =
        lock.size() >= hands && std::ranges::all_of(lock.first(hands), is_locked);
    if (lock.empty()) {
        update_regrets(regrets.data(), frame.action_values.data(), out.data(), actions, hands,
                       discounts.alpha, discounts.beta);
    } else if (!fully_locked) {
        update_free_regrets(lock, regrets, frame.action_values.data(), out, discounts);
    }
    if (state.packed) {
        if (!fully_locked) {
            state.regrets_scale = pack_row(regrets, state.regrets_packed());
        }
        state.strategy_sum_scale = pack_row(strategy_sum, state.strategy_sum_packed());
    }
}

void average_reach_rows(const NodeState& state, std::span<const float> reach, ScratchFrame& frame) {
    const std::size_t hands = reach.size();
    frame.opponent_strategy.resize(state.size());
    frame.opponent_denominator.resize(hands);
    average_strategy_of(state, frame.strategy_sum, frame.opponent_strategy,
                        frame.opponent_denominator);
    frame.next_reach.resize(state.size());
    for (std::size_t a = 0; a < state.num_actions; ++a) {
        multiply_rows(frame.next_reach.data() + a * hands,
                      frame.opponent_strategy.data() + a * hands, reach.data(), hands);
    }
}

void average_decision_value(const NodeState& state, ScratchFrame& frame, std::span<float> out) {
    const std::size_t hands = out.size();
    frame.strategy.resize(state.size());
    frame.strategy_denominator.resize(hands);
    average_strategy_of(state, frame.strategy_sum, frame.strategy, frame.strategy_denominator);
    for (std::size_t h = 0; h < hands; ++h) {
        out[h] = mix(
            frame.action_values.data(), state.num_actions, hands, h,
            [&](std::size_t a, std::size_t hand) { return frame.strategy[a * hands + hand]; },
            [](std::size_t, std::size_t) { return true; });
    }
}

void best_decision_value(std::span<const float> lock, std::size_t actions,
                         const ScratchFrame& frame, std::span<float> out) {
    const float* const values = frame.action_values.data();
    const std::size_t hands = out.size();
    if (lock.size() == actions) {  // one mix for all hands
        for (std::size_t h = 0; h < hands; ++h) {
            out[h] = mix(
                values, actions, hands, h, [&](std::size_t a, std::size_t) { return lock[a]; },
                [](std::size_t, std::size_t) { return true; });
        }
        return;
    }
    take_best(values, actions, out);
    if (lock.size() < actions * hands) {
        return;
    }
    for (std::size_t h = 0; h < hands; ++h) {
        if (is_locked(lock[h])) {
            const auto share = [&](std::size_t a, std::size_t hand) {
                return lock[a * hands + hand];
            };
            out[h] = mix(values, actions, hands, h, share, [&](std::size_t a, std::size_t hand) {
                return is_locked(share(a, hand));
            });
        }
    }
}

void average_strategy_of(const NodeState& state, std::vector<float>& unpack_buffer,
                         std::span<float> strategy, std::span<float> denominator) {
    const std::span<const float> sums = get_strategy_sum(state, unpack_buffer);
    const std::size_t hands = denominator.size();
    std::ranges::fill(denominator, 0.0F);
    for (std::size_t i = 0, h = 0; i < strategy.size(); ++i, h = h + 1 == hands ? 0 : h + 1) {
        const float positive = sums[i] > 0.0F ? sums[i] : 0.0F;
        strategy[i] = positive;
        denominator[h] += positive;
    }
    const float uniform = 1.0F / static_cast<float>(state.num_actions);
    for (std::size_t i = 0, h = 0; i < strategy.size(); ++i, h = h + 1 == hands ? 0 : h + 1) {
        strategy[i] = denominator[h] > 0.0F ? strategy[i] / denominator[h] : uniform;
    }
}

}  // namespace kestrel
