#include "session/result_snapshot.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <stdexcept>
#include <unordered_map>

#include "session/action_names.h"

namespace kestrel_app {
namespace {

using kestrel::Game;
using kestrel::GameNode;
using kestrel::NodeKind;

constexpr std::array<std::string_view, 3> node_types = {"decision", "chance", "terminal"};
constexpr std::array<std::string_view, 3> chance_deals = {"", "turn", "river"};
constexpr std::array<std::string_view, 3> players = {"", "OOP", "IP"};

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

constexpr std::uint8_t decision = 0;  // its place among the types

void require(bool holds, std::size_t node, const char* what) {
    if (!holds) {
        throw std::invalid_argument("node " + std::to_string(node) + ": " + what);
    }
}

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
    static_assert(bytes_per_node == sizeof(Node) + sizeof(std::uint32_t) + sizeof(Action) +
                                        sizeof(std::size_t) + sizeof(float));
    std::vector<std::size_t> first_action(game.nodes.size());
    std::size_t count = 0;
    for (std::size_t i = 0; i < game.nodes.size(); ++i) {
        first_action[i] = count;
        count += game.nodes[i].actions.size();
    }
    std::vector<float> frequencies(count);
    solver.all_action_frequencies(first_action, frequencies);

    nodes_.reserve(game.nodes.size());
    first_action_.reserve(game.nodes.size() + 1);
    actions_.reserve(count);
    std::unordered_map<LabelKey, std::uint32_t, LabelKeyHash> known;
    for (std::size_t i = 0; i < game.nodes.size(); ++i) {
        const GameNode& node = game.nodes[i];
        const std::size_t actions = node.actions.size();
        const bool deals = node.kind == NodeKind::Chance;
        const int deal = !deals                           ? 0
                         : node.turn == kestrel::NO_CARD  ? 1
                         : node.river == kestrel::NO_CARD ? 2
                                                          : 0;
        const std::size_t player =
            node.kind == NodeKind::Decision ? 1 + kestrel::index_of(node.seat) : 0;
        nodes_.push_back({node.pot,
                          {node.contributed[0], node.contributed[1]},
                          static_cast<std::uint8_t>(node.kind),
                          static_cast<std::uint8_t>(deal),
                          static_cast<std::uint8_t>(player)});
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
        first_action_.push_back(static_cast<std::uint32_t>(actions_.size()));
    }
}

SolveNodeMeta TreeSnapshot::node(std::size_t index) const {
    const Node& node = nodes_.at(index);
    return {node_types[node.type], chance_deals[node.deal], players[node.player],   node.pot,
            node.invested[0],      node.invested[1],        action_count(index) > 0};
}

std::size_t TreeSnapshot::action_count(std::size_t index) const {
    return first_action_.at(index + 1) - first_action_[index];
}

std::vector<SolveActionInfo> TreeSnapshot::actions(std::size_t index) const {
    std::vector<SolveActionInfo> result;
    const std::size_t end = first_action_.at(index + 1);
    for (std::size_t a = first_action_[index]; a < end; ++a) {
        const auto& [name, type] = labels_[actions_[a].label];
        result.push_back({name, type, actions_[a].frequency, actions_[a].child});
    }
    return result;
}

std::size_t TreeSnapshot::memory_bytes() const {
    std::size_t bytes =
        nodes_.capacity() * sizeof(Node) + first_action_.capacity() * sizeof(std::uint32_t) +
        actions_.capacity() * sizeof(Action) + labels_.capacity() * sizeof(labels_[0]);
    for (const auto& [name, type] : labels_) {
        bytes += name.capacity() + type.capacity();
    }
    return bytes;
}

void TreeSnapshot::Builder::add_node(const SolveNodeMeta& meta) {
    const std::size_t index = tree_->nodes_.size();
    const auto place = [&](const auto& texts, std::string_view text) {
        const auto found = std::ranges::find(texts, text);
        require(found != texts.end(), index, "a text that no node has");
        return static_cast<std::uint8_t>(found - texts.begin());
    };
    tree_->nodes_.push_back({meta.pot,
                             {meta.invested_oop, meta.invested_ip},
                             place(node_types, meta.node_type),
                             place(chance_deals, meta.chance_deal),
                             place(players, meta.player)});
}

void TreeSnapshot::Builder::add_actions(std::span<const SolveActionInfo> actions) {
    const std::size_t index = tree_->first_action_.size() - 1;
    require(actions.size() <= most_actions, index, "more actions than any node has");
    for (const SolveActionInfo& action : actions) {
        require(action.frequency >= 0 && action.frequency <= 1, index, "no frequency");
        const std::pair label(std::string(action.name), std::string(action.action_type));
        const auto [found, is_new] =
            known_.try_emplace(label, static_cast<std::uint32_t>(tree_->labels_.size()));
        if (is_new) {
            tree_->labels_.push_back(label);
        }
        tree_->actions_.push_back({action.frequency, action.child_index, found->second});
    }
    tree_->first_action_.push_back(static_cast<std::uint32_t>(tree_->actions_.size()));
}

std::shared_ptr<const TreeSnapshot> TreeSnapshot::Builder::finish() {
    known_.clear();
    const auto tree = std::exchange(tree_, std::shared_ptr<TreeSnapshot>(new TreeSnapshot));
    tree->check();
    return tree;
}

void TreeSnapshot::check() const {
    const std::size_t count = nodes_.size();
    require(count + 1 == first_action_.size(), std::min(count, first_action_.size() - 1),
            "not one list of actions for each node");
    std::vector<bool> has_parent(count);
    for (std::size_t node = 0; node < count; ++node) {
        for (std::size_t a = first_action_[node]; a < first_action_[node + 1]; ++a) {
            const std::size_t child = actions_[a].child;
            if (child != 0) {
                require(child > node && child < count, node, "a child that does not stand below");
                require(!has_parent[child], child, "two parents");
                has_parent[child] = true;
            }
        }
        require(nodes_[node].type != decision || action_count(node) > 0, node,
                "a decision without actions");
        require(node == 0 || has_parent[node], node, "no parent");
    }
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
