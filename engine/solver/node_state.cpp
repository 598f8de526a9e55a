#include "engine/solver/node_state.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <mutex>
#include <stdexcept>

#include "engine/parallel/worker_pool.h"

namespace kestrel {
namespace {

bool has_repeated_child(const GameNode& node) {
    if (std::ranges::is_sorted(node.children)) {
        return std::ranges::adjacent_find(node.children) != node.children.end();
    }
    std::vector<std::uint64_t> sorted(node.children.begin(), node.children.end());
    std::ranges::sort(sorted);
    return std::ranges::adjacent_find(sorted) != sorted.end();
}

/// Every row starts on a vector boundary.
constexpr std::size_t row_alignment = 32;

/// Calls visit(decision nodes) for the decisions of one street on one board, all betting lines that
/// lead there together: the order in which the batched walk comes to them, so that an iteration
/// streams through the arena.
template <class Visit>
class StreetOrder {
  public:
    StreetOrder(const Game& game, Visit visit) : game_(game), visit_(visit) {}

    void street(std::span<const std::uint64_t> roots) {
        std::vector<std::uint64_t> decisions;
        std::vector<std::uint64_t> chances;
        for (const std::uint64_t root : roots) {
            collect(root, decisions, chances);
        }
        visit_(std::span<const std::uint64_t>(decisions));
        std::size_t cards = 0;
        for (const std::uint64_t chance : chances) {
            cards = std::max(cards, game_.nodes[chance].children.size());
        }
        for (std::size_t card = 0; card < cards; ++card) {
            std::vector<std::uint64_t> dealt;
            for (const std::uint64_t chance : chances) {
                const auto children = game_.nodes[chance].children;
                if (card < children.size()) {
                    dealt.push_back(children[card]);
                }
            }
            street(dealt);
        }
    }

  private:
    void collect(std::uint64_t index, std::vector<std::uint64_t>& decisions,
                 std::vector<std::uint64_t>& chances) {
        const GameNode& node = game_.nodes[index];
        if (node.kind == NodeKind::Chance) {
            chances.push_back(index);
        } else if (node.kind == NodeKind::Decision) {
            decisions.push_back(index);
            for (const std::uint64_t child : node.children) {
                collect(child, decisions, chances);
            }
        }
    }

    const Game& game_;
    Visit visit_;
};

template <class Visit>
void for_each_street(const Game& game, Visit visit) {
    if (!game.nodes.empty()) {
        const std::uint64_t root = 0;
        StreetOrder<Visit>(game, visit).street({&root, 1});
    }
}

std::span<float> row_or_unpacked(std::span<float> row, std::span<const std::int16_t> packed,
                                 float scale, std::vector<float>& buffer) {
    if (packed.empty()) {
        return row;
    }
    buffer.resize(packed.size());
    unpack_row(packed, scale, buffer);
    return buffer;
}

}  // namespace

void MarkedNodes::assign(std::size_t count, WorkerPool* pool, std::size_t threads,
                         const std::function<bool(std::size_t)>& marks) {
    size_ = count;
    blocks_.assign(count / 64 + 1, {});
    parallel_for(pool, threads, blocks_.size(), [&](std::size_t begin, std::size_t end) {
        for (std::size_t node = begin * 64; node < std::min(end * 64, count); ++node) {
            blocks_[node / 64].bits |= std::uint64_t{marks(node)} << node % 64;
        }
    });
    marked_ = 0;
    for (Block& block : blocks_) {
        block.before = marked_;
        marked_ += static_cast<std::size_t>(std::popcount(block.bits));
    }
}

std::uint64_t StateTable::bytes_of_rows(std::size_t actions, std::size_t hands, bool compress) {
    const std::size_t element = compress ? sizeof(std::int16_t) : sizeof(float);
    return 2 * ((actions * hands * element + row_alignment - 1) / row_alignment * row_alignment);
}

void StateTable::prepare(const Game& game, bool compress, WorkerPool* pool, std::size_t threads) {
    const std::size_t count = game.nodes.size();
    states_ = {};
    arena_ = {};
    repeated_.clear();
    decisions_.assign(count, pool, threads, [&game](std::size_t node) {
        return game.nodes[node].kind == NodeKind::Decision && !game.nodes[node].actions.empty();
    });
    states_.resize(decisions_.marked());
    std::mutex repeated_mutex;
    parallel_for(pool, threads, count, [&](std::size_t begin, std::size_t end) {
        for (std::size_t i = begin; i < end; ++i) {
            const GameNode& node = game.nodes[i];
            if (node.kind == NodeKind::Chance && has_repeated_child(node)) {
                const std::scoped_lock lock(repeated_mutex);
                repeated_.push_back(i);
            }
            if (!decisions_[i]) {
                continue;
            }
            if (node.actions.size() > std::numeric_limits<std::uint16_t>::max()) {
                throw std::out_of_range("Too many actions at a node");
            }
            NodeState& state = states_[decisions_.before(i)];
            state.seat = node.seat;
            state.active = true;
            state.packed = compress;
            state.num_actions = static_cast<std::uint16_t>(node.actions.size());
            state.num_hands =
                static_cast<std::uint16_t>(game.cards.pockets[index_of(node.seat)].size());
        }
    });

    std::ranges::sort(repeated_);

    std::size_t bytes = 0;
    for (const NodeState& state : states_) {
        bytes += bytes_of_rows(state.num_actions, state.num_hands, compress);
    }
    arena_ = AlignedBuffer<std::byte>(bytes);
    place_rows(game, compress);
    constexpr std::size_t block = std::size_t{1} << 21;  // a large page: touched by one thread
    parallel_for(pool, threads, (bytes + block - 1) / block,
                 [&](std::size_t begin, std::size_t end) {
                     std::memset(arena_.data() + begin * block, 0,
                                 std::min(end * block, bytes) - begin * block);
                 });
}

void StateTable::place_rows(const Game& game, bool compress) {
    std::byte* next = arena_.data();
    for_each_street(game, [&](std::span<const std::uint64_t> decisions) {
        for (const Seat seat : {Seat::OOP, Seat::IP}) {
            for (std::size_t row = 0; row < 2; ++row) {
                for (const std::uint64_t node : decisions) {
                    NodeState& state = (*this)[node];
                    if (state.active && state.seat == seat && state.rows_[row] == nullptr) {
                        state.rows_[row] = next;
                        next += bytes_of_rows(state.num_actions, state.num_hands, compress) / 2;
                    }
                }
            }
        }
    });
}

float pack_row(std::span<const float> row, std::span<std::int16_t> packed) {
    float largest = 0.0F;
    for (const float value : row) {
        largest = std::max(largest, std::abs(value));
    }
    if (static_cast<double>(largest) <= 1e-9) {
        std::ranges::fill(packed, std::int16_t{0});
        return 1.0F;
    }
    for (std::size_t i = 0; i < row.size(); ++i) {
        const float share = std::clamp(row[i] / largest, -1.0F, 1.0F);
        packed[i] = static_cast<std::int16_t>(std::lround(32767.0F * share));
    }
    return largest;
}

void unpack_row(std::span<const std::int16_t> packed, float scale, std::span<float> row) {
    if (packed.size() < row.size() || !(scale > 0.0F)) {
        std::ranges::fill(row, 0.0F);
        return;
    }
    for (std::size_t i = 0; i < row.size(); ++i) {
        row[i] = static_cast<float>(packed[i]) / 32767.0F * scale;
    }
}

std::span<float> get_regrets(const NodeState& state, std::vector<float>& buffer) {
    return row_or_unpacked(state.regrets(), state.regrets_packed(), state.regrets_scale, buffer);
}

std::span<float> get_strategy_sum(const NodeState& state, std::vector<float>& buffer) {
    return row_or_unpacked(state.strategy_sum(), state.strategy_sum_packed(),
                           state.strategy_sum_scale, buffer);
}

}  // namespace kestrel
