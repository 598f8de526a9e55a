#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "engine/game/game.h"
#include "engine/solver/aligned_buffer.h"

namespace kestrel {

class WorkerPool;

/// What the solver remembers at one decision node: a regret and a strategy sum for each action and
/// hand, action-major, A x H with H the pockets of the acting seat on every board. Each of the two
/// rows is either f32, or 16-bit whole numbers with one scale per row. A row lives in the table's
/// arena. During an iteration a node is touched by one thread at a time.
struct NodeState {
    Seat seat = Seat::OOP;
    bool active = false;  ///< a decision node with at least one action
    bool packed = false;
    std::uint16_t num_actions = 0;
    std::uint16_t num_hands = 0;
    float regrets_scale = 1.0F;  ///< the largest absolute value of the row when it was packed
    float strategy_sum_scale = 1.0F;

    std::size_t size() const { return std::size_t{num_actions} * num_hands; }

    /// The f32 rows; empty while the state is packed.
    std::span<float> regrets() const { return packed ? std::span<float>() : row<float>(0); }
    std::span<float> strategy_sum() const { return packed ? std::span<float>() : row<float>(1); }

    /// The 16-bit rows; empty while the state is not packed.
    std::span<std::int16_t> regrets_packed() const {
        return packed ? row<std::int16_t>(0) : std::span<std::int16_t>();
    }
    std::span<std::int16_t> strategy_sum_packed() const {
        return packed ? row<std::int16_t>(1) : std::span<std::int16_t>();
    }

  private:
    friend class StateTable;

    template <class T>
    std::span<T> row(std::size_t which) const {
        return {static_cast<T*>(rows_[which]), active ? size() : 0};
    }

    std::array<void*, 2> rows_{};  // regrets, strategy sums
};

/// Which nodes of a tree are marked, and how many of them stand before each: a bit for each node
/// and a count for each 64.
class MarkedNodes {
  public:
    /// Marks the nodes below `count` that `marks` says, asked in any order and from any thread.
    void assign(std::size_t count, WorkerPool* pool, std::size_t threads,
                const std::function<bool(std::size_t)>& marks);

    std::size_t size() const { return size_; }
    std::size_t marked() const { return marked_; }

    bool operator[](std::size_t node) const {
        return (blocks_[node / 64].bits >> node % 64 & 1U) != 0;
    }

    /// The marked ones before a node.
    std::size_t before(std::size_t node) const {
        const Block& block = blocks_[node / 64];
        const std::uint64_t below = (std::uint64_t{1} << node % 64) - 1;
        return block.before + static_cast<std::size_t>(std::popcount(block.bits & below));
    }

    static std::uint64_t bytes(std::uint64_t nodes) { return (nodes / 64 + 1) * sizeof(Block); }

  private:
    struct Block {
        std::uint64_t bits = 0;
        std::size_t before = 0;
    };
    std::vector<Block> blocks_;
    std::size_t size_ = 0;
    std::size_t marked_ = 0;
};

/// The states of a game, by node index. Only decision nodes have one; that of any other node is
/// empty.
class StateTable {
  public:
    /// Makes the states, all rows zero, in parallel. With `compress` the rows are 16-bit from the
    /// start. Throws std::bad_alloc, and std::out_of_range "Too many actions at a node" beyond
    /// 65535.
    void prepare(const Game& game, bool compress, WorkerPool* pool, std::size_t threads);

    std::size_t size() const { return decisions_.size(); }
    const NodeState& operator[](std::size_t node) const {
        return decisions_[node] ? states_[decisions_.before(node)] : none_;
    }
    NodeState& operator[](std::size_t node) {
        return decisions_[node] ? states_[decisions_.before(node)] : none_;
    }

    /// False for a chance node whose child list holds the same node more than once.
    bool children_distinct(std::size_t node) const {
        return repeated_.empty() || !std::ranges::binary_search(repeated_, node);
    }

    // What a table takes, in bytes: for its nodes, for each decision, and for a decision's rows.
    static std::uint64_t bytes_of_nodes(std::uint64_t nodes) { return MarkedNodes::bytes(nodes); }
    static constexpr std::uint64_t bytes_of_state = sizeof(NodeState);
    static std::uint64_t bytes_of_rows(std::size_t actions, std::size_t hands, bool compress);

  private:
    void place_rows(const Game& game, bool compress);

    MarkedNodes decisions_;
    std::vector<NodeState> states_;
    NodeState none_;                       // of every node that is no decision
    std::vector<std::uint64_t> repeated_;  // chance nodes without distinct children, rising
    AlignedBuffer<std::byte> arena_;
};

/// Packs a row to 16-bit block floating point: each value over the largest absolute value, times
/// 32767, to the nearest whole number. The values must be finite. A row with no value above 1e-9
/// becomes zeros with scale 1. Returns the scale. `packed` has the length of `row`.
float pack_row(std::span<const float> row, std::span<std::int16_t> packed);

/// The inverse, up to half a step of scale / 32767. Zeros when the scale is not above 0.
void unpack_row(std::span<const std::int16_t> packed, float scale, std::span<float> row);

/// The f32 row itself or, for a packed state, its values unpacked into `buffer`, which must live
/// as long as the result is used.
std::span<float> get_regrets(const NodeState& state, std::vector<float>& buffer);
std::span<float> get_strategy_sum(const NodeState& state, std::vector<float>& buffer);

}  // namespace kestrel
