#include "session/result_snapshot.h"

#include <cmath>
#include <unordered_map>

#include "session/action_names.h"

namespace kestrel_app {
namespace {

using kestrel::Game;
using kestrel::GameNode;
using kestrel::NodeKind;

/// Actions that are shown alike have the same key: names depend on the kind, and on the amount and
/// the pot where the name holds a number.
struct LabelKey {
    kestrel::Action action;
    std::int32_t pot;

    bool operator==(const LabelKey&) const = default;
};

struct LabelKeyHash {
    std::size_t operator()(const LabelKey& key) const {
        const auto amount = static_cast<std::uint32_t>(key.action.amount);
        const auto pot = static_cast<std::uint32_t>(key.pot);
        const std::uint64_t both = std::uint64_t{amount} << 32 | pot;
        return static_cast<std::size_t>((both + static_cast<std::uint64_t>(key.action.kind)) *
                                        0x9E3779B97F4A7C15U);
    }
};

}  // namespace

void normalise_frequencies(std::span<float> frequencies) {
    double sum = 0;
    for (float& frequency : frequencies) {
        if (!std::isfinite(frequency) || frequency < 0) {
            frequency = 0;
        }
        sum += static_cast<double>(frequency);
    }
    for (float& frequency : frequencies) {
        frequency = sum > 0 ? static_cast<float>(static_cast<double>(frequency) / sum)
                            : 1.0F / static_cast<float>(frequencies.size());
    }
}

TreeSnapshot::TreeSnapshot(const Game& game, const kestrel::DiscountedCfr& solver) {
    std::vector<std::size_t> first_action(game.nodes.size());
    std::size_t count = 0;
    for (std::size_t i = 0; i < game.nodes.size(); ++i) {
        first_action[i] = count;
        count += game.nodes[i].actions.size();
    }
    std::vector<float> frequencies(count);
    solver.all_action_frequencies(first_action, frequencies);

    nodes_.reserve(game.nodes.size());
    actions_.reserve(count);
    std::unordered_map<LabelKey, std::uint32_t, LabelKeyHash> known;
    for (std::size_t i = 0; i < game.nodes.size(); ++i) {
        const GameNode& node = game.nodes[i];
        const std::size_t actions = node.actions.size();
        Deal deal = Deal::none;
        if (node.kind == NodeKind::Chance) {
            deal = node.turn == kestrel::NO_CARD    ? Deal::turn
                   : node.river == kestrel::NO_CARD ? Deal::river
                                                    : Deal::none;
        }
        nodes_.push_back({node.pot,
                          {node.contributed[0], node.contributed[1]},
                          static_cast<std::uint32_t>(first_action[i]),
                          node.kind,
                          node.seat,
                          deal});
        const std::span shown(frequencies.data() + first_action[i], actions);
        normalise_frequencies(shown);
        const std::int32_t pot = naming_pot(game, i);
        for (std::size_t a = 0; a < actions; ++a) {
            const kestrel::Action& action = node.actions[a];
            const bool sized = action.kind == kestrel::ActionKind::bet ||
                               action.kind == kestrel::ActionKind::raise;
            const bool counts = sized || action.kind == kestrel::ActionKind::chance;
            const LabelKey key{{action.kind, counts ? action.amount : 0}, sized ? pot : 0};
            const auto [label, is_new] =
                known.try_emplace(key, static_cast<std::uint32_t>(labels_.size()));
            if (is_new) {
                labels_.emplace_back(action_display_name(action, pot),
                                     action_type_name(action, pot));
            }
            const std::uint64_t child = a < node.children.size() ? node.children[a] : 0;
            actions_.push_back({shown[a], static_cast<std::uint32_t>(child), label->second});
        }
    }
}

SolveNodeMeta TreeSnapshot::node(std::size_t index) const {
    constexpr std::string_view kinds[] = {"decision", "chance", "terminal"};
    constexpr std::string_view deals[] = {"", "turn", "river"};
    constexpr std::string_view players[] = {"OOP", "IP"};
    const Node& node = nodes_.at(index);
    SolveNodeMeta meta;
    meta.node_type = kinds[static_cast<std::size_t>(node.kind)];
    meta.chance_deal = deals[static_cast<std::size_t>(node.deal)];
    meta.player = node.kind == NodeKind::Decision ? players[index_of(node.seat)] : "";
    meta.pot = node.pot;
    meta.invested_oop = node.invested[0];
    meta.invested_ip = node.invested[1];
    const std::size_t end =
        index + 1 < nodes_.size() ? nodes_[index + 1].first_action : actions_.size();
    for (std::size_t a = node.first_action; a < end; ++a) {
        const auto& [name, type] = labels_[actions_[a].label];
        meta.actions.push_back({name, type, actions_[a].frequency, actions_[a].child});
    }
    return meta;
}

std::size_t TreeSnapshot::memory_bytes() const {
    std::size_t bytes = nodes_.capacity() * sizeof(Node) + actions_.capacity() * sizeof(Action) +
                        labels_.capacity() * sizeof(labels_[0]);
    for (const auto& [name, type] : labels_) {
        bytes += name.capacity() + type.capacity();
    }
    return bytes;
}

void add_root_actions(SolveResult& result, const Game& game, const kestrel::DiscountedCfr& solver) {
    const GameNode& root = game.nodes[0];
    const std::int32_t pot = naming_pot(game, 0);
    for (const kestrel::Action& action : root.actions) {
        result.root_action_names.push_back(action_display_name(action, pot));
        result.root_action_types.push_back(action_type_name(action, pot));
    }
    result.root_action_frequencies = solver.action_frequencies(0);
    result.root_action_frequencies.resize(root.actions.size());
    normalise_frequencies(result.root_action_frequencies);
}

}  // namespace kestrel_app
