#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "engine/game/game.h"
#include "engine/solver/discounted_cfr.h"

namespace kestrel_app {

/// How an action is shown. Texts live as long as the snapshot that they come from.
struct SolveActionInfo {
    std::string_view name;         ///< "Bet 50%"
    std::string_view action_type;  ///< "bet 50%"
    float frequency = 0;           ///< those of a node add up to 1
    std::uint32_t child_index = 0;

    bool operator==(const SolveActionInfo&) const = default;
};

/// What is shown of a node. Money in hundredths of a chip.
struct SolveNodeMeta {
    std::string_view node_type;    ///< "decision", "chance" or "terminal"
    std::string_view chance_deal;  ///< "turn" or "river" at a chance node, otherwise empty
    std::string_view player;       ///< "OOP" or "IP" at a decision, otherwise empty
    std::int32_t pot = 0;
    std::int32_t invested_oop = 0;
    std::int32_t invested_ip = 0;
    bool has_children = false;

    bool operator==(const SolveNodeMeta&) const = default;
};

/// A finished tree as it is shown, by node index, without the game and the solver. Nodes are kept
/// in compact records, about 30 bytes each with their actions, and told on demand. Immutable.
class TreeSnapshot {
  public:
    class Builder;

    TreeSnapshot(const kestrel::Game& game, const kestrel::DiscountedCfr& solver);

    std::size_t size() const { return nodes_.size(); }

    // These throw std::out_of_range for an index at or past the size.
    SolveNodeMeta node(std::size_t index) const;
    std::vector<SolveActionInfo> actions(std::size_t index) const;
    std::size_t action_count(std::size_t index) const;

    std::size_t memory_bytes() const;

    /// What a node takes, with the action that leads to it, while the snapshot of a finished solve
    /// is made: its records, and the frequencies on their way to them.
    static constexpr std::size_t bytes_per_node = 44;

  private:
    struct Node {
        std::int32_t pot;
        std::int32_t invested[2];
        std::uint8_t type;  // places in the lists of texts
        std::uint8_t deal;
        std::uint8_t player;
    };
    struct Action {
        float frequency;
        std::uint32_t child;
        std::uint32_t label;
    };

    TreeSnapshot() = default;

    void check() const;

    std::vector<Node> nodes_;
    std::vector<std::uint32_t> first_action_{0};  // a list ends where the next begins
    std::vector<Action> actions_;
    std::vector<std::pair<std::string, std::string>> labels_;  // name and type, each pair once
};

/// Puts a snapshot together that comes from elsewhere, a file for one: nodes and lists of actions
/// each in index order. Throws std::invalid_argument, with the node, for what no tree of a solve
/// has.
class TreeSnapshot::Builder {
  public:
    /// More actions than anybody types sizes for, and than a page can show.
    static constexpr std::size_t most_actions = 1000;

    /// `has_children` is passed over: it follows from the actions.
    void add_node(const SolveNodeMeta& meta);

    /// Frequencies lie between 0 and 1.
    void add_actions(std::span<const SolveActionInfo> actions);

    /// The finished snapshot; the builder starts anew. There is one list of actions for each node,
    /// a child stands behind its parent, and every node but the root is the child of one action. An
    /// action without a child has the index 0.
    std::shared_ptr<const TreeSnapshot> finish();

  private:
    std::shared_ptr<TreeSnapshot> tree_{new TreeSnapshot};
    std::map<std::pair<std::string, std::string>, std::uint32_t> known_;
};

/// The frequencies of a node's actions as they are shown: values that are not finite and above 0
/// count as 0, and all are scaled to a sum of 1; uniform without any.
void normalise_frequencies(std::span<float> frequencies);

/// What is told of a finished solve. Money in hundredths of a chip.
struct SolveResult {
    bool ok = false;
    std::string error;  ///< "Cancelled", what failed, or empty
    std::string board;
    std::uint32_t starting_pot = 0;
    std::uint32_t effective_stack = 0;
    std::uint32_t iterations = 0;
    float exploitability = 0;
    float ev_oop = 0;  ///< against an even split of the pot, as `ev_ip`
    float ev_ip = 0;
    std::vector<std::string> root_action_names;
    std::vector<std::string> root_action_types;
    std::vector<float> root_action_frequencies;
    std::shared_ptr<const TreeSnapshot> nodes;  ///< null unless `ok`
};

/// Fills the root actions of a result.
void add_root_actions(SolveResult& result, const kestrel::Game& game,
                      const kestrel::DiscountedCfr& solver);

}  // namespace kestrel_app
