#include "session/reach_strategy.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <stdexcept>
#include <string>
#include <utility>

#include "engine/poker/text.h"
#include "session/decision_view.h"
#include "session/hand_classes.h"
#include "session/hand_labels.h"

namespace kestrel_app {
namespace {

using kestrel::Pocket;

/// The hands of every label, added up.
class LabelSums {
  public:
    explicit LabelSums(std::size_t actions) : actions_(actions) {}

    void add(const Pocket& pocket, double weight, std::span<const double> probs) {
        Sums& sums = labels_[label_index(pocket)];
        const double counted = std::min(weight, 1.0);
        sums.weight += counted;
        ++sums.hands;
        sums.played.resize(actions_);
        for (std::size_t a = 0; a < std::min(actions_, probs.size()); ++a) {
            sums.played[a] += std::isfinite(probs[a]) && probs[a] > 0 ? probs[a] * counted : 0.0;
        }
    }

    ReachStrategy means() const {
        ReachStrategy result;
        for (std::size_t label = 0; label < label_count; ++label) {
            const Sums& sums = labels_[label];
            if (sums.hands > 0) {
                result.push_back({label, sums.weight / sums.hands, shares(sums)});
            }
        }
        return result;
    }

  private:
    struct Sums {
        double weight = 0;
        int hands = 0;
        std::vector<double> played;  // per action, probability times weight
    };

    static std::vector<double> shares(const Sums& sums) {
        std::vector<double> result;
        for (const double played : sums.played) {
            const double share = played / sums.weight;
            result.push_back(std::isfinite(share) && share > 0 ? share : 0.0);
        }
        const double total = std::accumulate(result.begin(), result.end(), 0.0);
        for (double& share : result) {
            share /= total > 0 ? total : 1.0;
        }
        return result;
    }

    std::size_t actions_;
    std::array<Sums, label_count> labels_;
};

std::string class_key(std::string_view name) {
    return kestrel::lower_case(kestrel::trimmed(name));
}

/// Whether a hand with these classes is meant by a key; the empty one means all.
bool is_meant(const std::string& key, const std::vector<std::string>& buckets) {
    return key.empty() || std::ranges::find(buckets, key, class_key) != buckets.end();
}

std::optional<Pocket> pocket_of(const HandCombo& combo) {
    try {
        const auto [low, high] = std::minmax({kestrel::parse_card(kestrel::trimmed(combo.c1)),
                                              kestrel::parse_card(kestrel::trimmed(combo.c2))});
        return low == high ? std::nullopt : std::optional(Pocket{low, high});
    } catch (const std::invalid_argument&) {
        return std::nullopt;
    }
}

}  // namespace

std::optional<ReachStrategy> reach_strategy(const FinishedSolve& solve, std::uint64_t node,
                                            std::string_view bucket) {
    const auto view = view_decision(solve, node);
    if (!view) {
        return std::nullopt;
    }
    const std::string key = class_key(bucket);
    const std::vector<float> reach = view->own_reach();
    const std::vector<kestrel::Card> board = board_cards(view->game, view->node);
    LabelSums sums(view->actions);
    for (std::size_t h = 0; h < view->pockets.size(); ++h) {
        const double weight = static_cast<double>(reach[h]) * view->weight(h);
        if (weight > 0 &&
            (key.empty() || is_meant(key, classify(board, view->pockets[h]).names()))) {
            sums.add(view->pockets[h], weight, view->probabilities(h));
        }
    }
    return sums.means();
}

ReachStrategy reach_strategy(std::span<const HandCombo> combos, std::size_t actions,
                             std::string_view bucket) {
    const std::string key = class_key(bucket);
    // In the order of a seat's hands, so that sums round as those of the solve do.
    std::vector<std::pair<std::uint16_t, const HandCombo*>> hands;
    for (const HandCombo& combo : combos) {
        const auto pocket = pocket_of(combo);
        if (pocket && std::isfinite(combo.weight) && combo.weight > 0 &&
            !combo.action_probs.empty() && is_meant(key, combo.buckets)) {
            hands.emplace_back(kestrel::pocket_index(pocket->low, pocket->high), &combo);
        }
    }
    std::ranges::stable_sort(hands, {}, [](const auto& hand) { return hand.first; });
    LabelSums sums(actions);
    for (const auto& [index, combo] : hands) {
        sums.add(kestrel::pocket_from_index(index), combo->weight, combo->action_probs);
    }
    return sums.means();
}

}  // namespace kestrel_app
