#include "engine/game/tree_count.h"

#include <utility>

namespace kestrel {
namespace {

/// The longest line of actions and cards. Only raises by a few chips at deep stacks come to it, and
/// whoever walks a tree does so on a stack of limited size.
constexpr std::size_t longest_line = 1000;

/// Keeps the counter below 300 MB where few lines meet again.
constexpr std::size_t most_known = std::size_t{1} << 21;

/// From so many lines on there will be many more, and one table for all is made at once.
constexpr std::size_t many_known = std::size_t{1} << 14;

}  // namespace

TreeCount& TreeCount::operator+=(const TreeCount& other) {
    nodes += other.nodes;
    decisions += other.decisions;
    chances += other.chances;
    actions[0] += other.actions[0];
    actions[1] += other.actions[1];
    action_bytes += other.action_bytes;
    return *this;
}

TreeCount& TreeCount::operator-=(const TreeCount& other) {
    return *this += other * ~std::uint64_t{0};  // times -1
}

TreeCount TreeCount::operator*(std::uint64_t times) const {
    return {nodes * times,
            decisions * times,
            chances * times,
            {actions[0] * times, actions[1] * times},
            action_bytes * times};
}

std::uint64_t TreeCount::bytes(const NodeCosts& costs) const {
    return nodes * costs.node + decisions * costs.decision + action_bytes;
}

TreeCounter::TreeCounter(const BettingRules& rules, NodeCosts costs, const TreeLimits& limits)
    : rules_(rules), costs_(std::move(costs)), limits_(limits) {}

TreeCounter::Result TreeCounter::count(const PlanStep& step) {
    find_deals(step);
    seen_ = {};
    pending_.clear();
    try {
        visit(step, 0);
    } catch (const Beyond&) {
        // What has been seen so far says it.
    }
    Result result;
    result.tree = total();
    result.first_street = seen_[step.state.cards_to_come()];
    result.bytes = result.tree.bytes(costs_);
    result.at_least = is_beyond(result.tree);
    return result;
}

/// How many boards there are below a step, after each deal.
void TreeCounter::find_deals(const PlanStep& step) {
    boards_ = {};
    PlanStep dealer = step;
    dealer.node.kind = NodeKind::Chance;
    const std::size_t to_come = step.state.cards_to_come();
    boards_[to_come] = 1;
    rules_.list_actions(dealer, buffers_);
    const std::vector<Action> first = buffers_.actions;
    for (const Action card : first) {
        ++boards_[to_come - 1];
        dealt_[to_come] = static_cast<Card>(card.amount);
        if (to_come == 2) {
            PlanStep second = dealer;
            second.state = rules_.child_of(dealer, card).state;
            rules_.list_actions(second, buffers_);
            for (const Action next : buffers_.actions) {
                ++boards_[0];
                dealt_[1] = static_cast<Card>(next.amount);
            }
        }
    }
}

void TreeCounter::visit(const PlanStep& step, std::size_t depth) {
    ++seen_[step.state.cards_to_come()].nodes;
    if (step.is_end()) {
        return;
    }
    if (depth == longest_line) {
        throw std::invalid_argument("The betting lines are too long");
    }
    if (step.node.kind != NodeKind::Decision) {
        visit_deal(step, depth);
    } else if (step.state.all_in) {
        visit_children(step, depth);  // a fold and a call: quicker done than looked up
    } else {
        visit_decision(step, depth);
    }
}

/// Of the cards that can be dealt one stands for all.
void TreeCounter::visit_deal(const PlanStep& step, std::size_t depth) {
    const std::size_t to_come = step.state.cards_to_come();
    seen_[to_come].chances += step.node.kind == NodeKind::Chance ? 1 : 0;
    if (to_come > 0 && boards_[to_come - 1] > 0) {
        visit(rules_.child_of(step, {ActionKind::chance, dealt_[to_come]}), depth + 1);
    }
}

void TreeCounter::visit_decision(const PlanStep& step, std::size_t depth) {
    const BettingKey key = rules_.key_of(step);
    const std::size_t counts = step.state.cards_to_come() + 1;
    if (const auto known = known_.find(key); known != known_.end()) {
        for (std::size_t i = 0; i < counts; ++i) {
            seen_[i] += known_counts_[known->second + i];
        }
        return;
    }
    const ByCards before = seen_;
    visit_children(step, depth);
    if (known_.size() == many_known) {
        known_.reserve(most_known);
    }
    if (known_.size() < most_known) {
        known_[key] = static_cast<std::uint32_t>(known_counts_.size());
        for (std::size_t i = 0; i < counts; ++i) {
            known_counts_.push_back(seen_[i]);
            known_counts_.back() -= before[i];
        }
    }
}

void TreeCounter::visit_children(const PlanStep& step, std::size_t depth) {
    if (limits_.stop != nullptr && limits_.stop->load(std::memory_order_relaxed)) {
        throw BuildStopped();
    }
    rules_.list_actions(step, buffers_);
    const std::size_t begin = pending_.size();
    const std::size_t count = buffers_.actions.size();
    pending_.insert(pending_.end(), buffers_.actions.begin(), buffers_.actions.end());

    TreeCount& here = seen_[step.state.cards_to_come()];
    ++here.decisions;
    here.actions[index_of(step.node.seat)] += count;
    here.action_bytes += costs_.actions ? costs_.actions(step.node.seat, count) : 0;
    if (is_beyond(total())) {
        throw Beyond();
    }
    for (std::size_t i = begin; i < begin + count; ++i) {
        visit(rules_.child_of(step, pending_[i]), depth + 1);
    }
    pending_.resize(begin);
}

bool TreeCounter::is_beyond(const TreeCount& tree) const {
    return tree.nodes > most_nodes || tree.bytes(costs_) > limits_.most_bytes;
}

TreeCount TreeCounter::total() const {
    TreeCount sum;
    for (std::size_t to_come = 0; to_come < seen_.size(); ++to_come) {
        sum += seen_[to_come] * boards_[to_come];
    }
    return sum;
}

std::size_t TreeCounter::KeyHash::operator()(const BettingKey& key) const {
    std::uint64_t hash = 0;
    const auto mix = [&hash](std::uint64_t value) {
        hash = (hash ^ value) * 0x9E3779B97F4A7C15U;
        hash ^= hash >> 32U;
    };
    const auto both = [](std::int32_t a, std::int32_t b) {
        return std::uint64_t{static_cast<std::uint32_t>(a)} << 32U | static_cast<std::uint32_t>(b);
    };
    mix(both(key.stack[0], key.stack[1]));
    mix(both(key.street_bet, key.matched));
    mix(both(key.raises_this_street, static_cast<std::int32_t>(key.street) << 8 |
                                         static_cast<std::int32_t>(key.seat) << 4 |
                                         static_cast<std::int32_t>(key.bet_open) << 2 |
                                         static_cast<std::int32_t>(key.donk_spot)));
    mix(key.cards_to_come);
    return hash;
}

}  // namespace kestrel
