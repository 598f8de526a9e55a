#include "engine/game/legal_actions.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

namespace kestrel {
namespace {

bool is_wager(ActionKind kind) {
    return kind == ActionKind::bet || kind == ActionKind::raise || kind == ActionKind::allin;
}

}  // namespace

LegalActions::LegalActions(const SizeContext& size, std::vector<Action>& list)
    : size_(size), list_(list) {}

void LegalActions::add(ActionKind kind, std::int32_t amount) {
    list_.push_back({kind, amount});
}

void LegalActions::add_wager(ActionKind kind, std::int32_t amount) {
    add(amount == size_.max_raise_to ? ActionKind::allin : kind, amount);
}

void LegalActions::add_bets(const std::vector<SizeToken>& tokens) {
    for (const SizeToken& token : tokens) {
        add_wager(ActionKind::bet, resolve_size(token, size_));
    }
}

void LegalActions::add_raises(const std::vector<SizeToken>& tokens,
                              std::int32_t raises_this_street) {
    for (const SizeToken& token : tokens) {
        if (token.kind == SizeKind::Chips && token.raise_cap >= 1 &&
            raises_this_street >= token.raise_cap) {
            continue;
        }
        // A raise by a part of the pot is the call plus that part of the pot after the call.
        const std::int32_t amount =
            token.kind == SizeKind::PotPercent
                ? clamp_amount(size_.street_bet + std::round(size_.pot_after_call * token.ratio),
                               size_.min_raise_to, size_.max_raise_to)
                : resolve_size(token, size_);
        add_wager(ActionKind::raise, amount);
    }
}

void LegalActions::add_jam() {
    if (std::ranges::find(list_, ActionKind::allin, &Action::kind) == list_.end()) {
        add(ActionKind::allin, size_.max_raise_to);
    }
}

void LegalActions::round_to_all_in(std::int32_t pot, double all_in_threshold) {
    for (Action& action : list_) {
        if (action.kind != ActionKind::bet && action.kind != ActionKind::raise) {
            continue;
        }
        const std::int32_t amount =
            std::max(size_.min_raise_to, std::min(action.amount, size_.max_raise_to));
        const double pot_when_called = pot + (amount - size_.street_bet) * 2.0;
        const double extra = std::round(pot_when_called * all_in_threshold);
        if (size_.max_raise_to <= size_.street_bet + extra || amount == size_.max_raise_to) {
            action = {ActionKind::allin, size_.max_raise_to};
        } else {
            action.amount = amount;
        }
    }
}

void LegalActions::order(std::vector<Action>& wagers) {
    wagers.clear();
    std::erase_if(list_, [&wagers](const Action& action) {
        const bool moves = is_wager(action.kind) && action.amount >= 1;
        if (moves) {
            wagers.push_back(action);
        }
        return moves;
    });
    std::ranges::sort(wagers, {}, [](const Action& a) { return std::pair(a.amount, a.kind); });
    list_.insert(list_.end(), wagers.begin(), wagers.end());
}

void LegalActions::merge(double threshold) {
    if (size_.pot_after_call <= 0) {
        return;
    }
    // Keeps an amount from surviving beside its equal through rounding of the quotients.
    constexpr double slack = 0.999999999999;
    const double pot = size_.pot_after_call;
    const auto ratio_of = [&](std::int32_t amount) {
        return (static_cast<double>(amount) - size_.street_bet) / pot;
    };
    std::int32_t kept = std::numeric_limits<std::int32_t>::max();
    std::size_t write = list_.size();
    for (std::size_t read = list_.size(); read-- > 0;) {
        const Action action = list_[read];
        if (is_wager(action.kind) && action.amount > 0) {
            if (!((ratio_of(kept) - threshold) / (1 + threshold) * slack >
                  ratio_of(action.amount))) {
                continue;
            }
            kept = action.amount;
        }
        list_[--write] = action;
    }
    list_.erase(list_.begin(), list_.begin() + static_cast<std::ptrdiff_t>(write));
}

}  // namespace kestrel
