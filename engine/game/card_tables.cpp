#include "engine/game/card_tables.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

#include "engine/parallel/worker_pool.h"
#include "engine/poker/evaluator.h"

namespace kestrel {
namespace {

/// Sorts by the 32 bits above the lowest 16, keeping the order of equal ones: by bytes from the
/// lowest up. A third of the time of a comparing sort at the length of a showdown list.
void sort_by_strength(std::vector<std::uint64_t>& keys, std::vector<std::uint64_t>& buffer) {
    buffer.resize(keys.size());
    for (unsigned shift = 16; shift < 48; shift += 8) {
        std::array<std::uint32_t, 257> start{};
        for (const std::uint64_t key : keys) {
            ++start[(key >> shift & 0xFFU) + 1];
        }
        for (std::size_t i = 1; i < start.size(); ++i) {
            start[i] += start[i - 1];
        }
        for (const std::uint64_t key : keys) {
            buffer[start[key >> shift & 0xFFU]++] = key;
        }
        keys.swap(buffer);
    }
}

class Builder {
  public:
    Builder(const Board& board, const std::array<Range, 2>& weights, std::size_t workers)
        : board_mask_(mask_of(board)), runouts_(runouts_on(board)), workers_(workers) {
        if (workers > 1) {
            pool_ = std::make_unique<WorkerPool>(workers - 1);
        }
        tables_->board = board;
        tables_->weights = weights;
    }

    std::shared_ptr<const CachedArtifacts> build() {
        static_cast<DealtHands&>(*tables_) = deal_hands(tables_->board, tables_->weights);
        number_positions();
        find_same_pockets();
        build_showdown_tables();
        build_position_tables();
        build_removal_weights();
        return tables_;
    }

  private:
    void number_positions() {
        for (std::size_t seat = 0; seat < 2; ++seat) {
            auto& all = tables_->all_positions[seat];
            all.resize(tables_->pockets[seat].size());
            std::iota(all.begin(), all.end(), std::uint16_t{0});
        }
    }

    void find_same_pockets() {
        for (std::size_t seat = 0; seat < 2; ++seat) {
            // Both lists rise by pocket number, which orders pockets by their two cards.
            const auto& theirs = tables_->pockets[1 - seat];
            auto& same = tables_->same_pocket[seat];
            for (const Pocket pocket : tables_->pockets[seat]) {
                const auto by_number = [](Pocket p) { return pocket_index(p.low, p.high); };
                const auto found =
                    std::ranges::lower_bound(theirs, by_number(pocket), {}, by_number);
                same.push_back(found != theirs.end() && *found == pocket
                                   ? static_cast<std::uint16_t>(found - theirs.begin())
                                   : no_position);
            }
            same.shrink_to_fit();
        }
    }

    /// A pocket that either seat holds, with its position for each.
    struct Contender {
        CardMask mask;
        SuitLanes lanes;
        std::array<std::uint16_t, 2> position;
    };

    /// All pockets of both seats in rising pocket number, so that one evaluation and one sorting
    /// serve both.
    std::vector<Contender> list_contenders() const {
        std::vector<std::array<std::uint16_t, 2>> positions(pocket_count,
                                                            {no_position, no_position});
        for (std::size_t seat = 0; seat < 2; ++seat) {
            for (std::size_t i = 0; i < tables_->pockets[seat].size(); ++i) {
                const Pocket pocket = tables_->pockets[seat][i];
                positions[pocket_index(pocket.low, pocket.high)][seat] =
                    static_cast<std::uint16_t>(i);
            }
        }
        std::vector<Contender> contenders;
        for (std::size_t index = 0; index < pocket_count; ++index) {
            if (positions[index][0] != no_position || positions[index][1] != no_position) {
                const Pocket pocket = pocket_from_index(index);
                contenders.push_back({pocket_mask(pocket),
                                      suit_lanes(pocket.low) | suit_lanes(pocket.high),
                                      positions[index]});
            }
        }
        return contenders;
    }

    void build_showdown_tables() {
        tables_->showdown.resize(pocket_count);
        const std::vector<Contender> contenders = list_contenders();
        parallel_for(
            pool_.get(), workers_, runouts_.size(), [&](std::size_t begin, std::size_t end) {
                std::vector<std::uint64_t> order;
                std::vector<std::uint64_t> buffer;
                for (std::size_t i = begin; i < end; ++i) {
                    const Pocket pair = runouts_[i];
                    fill_showdown_table(pair, contenders, order, buffer,
                                        tables_->showdown[pocket_index(pair.low, pair.high)]);
                }
            });
    }

    void fill_showdown_table(Pocket pair, const std::vector<Contender>& contenders,
                             std::vector<std::uint64_t>& order, std::vector<std::uint64_t>& buffer,
                             ShowdownTable& table) const {
        const Board& board = tables_->board;
        const CardMask dead = pocket_mask(pair);  // the flop has left the pockets already
        const SuitLanes dealt = suit_lanes(board[0]) | suit_lanes(board[1]) | suit_lanes(board[2]) |
                                suit_lanes(pair.low) | suit_lanes(pair.high);
        // Strength above, place in the list below: positions rise with the place, so the order is
        // by strength and then by position for each seat.
        order.clear();
        std::array<std::size_t, 2> live{};
        for (std::size_t i = 0; i < contenders.size(); ++i) {
            const Contender& contender = contenders[i];
            if ((contender.mask & dead) != 0) {
                continue;
            }
            const std::uint64_t strength = evaluate_lanes(dealt | contender.lanes) + 1U;
            order.push_back(strength << 16U | i);
            for (std::size_t seat = 0; seat < 2; ++seat) {
                live[seat] += contender.position[seat] != no_position ? 1 : 0;
            }
        }
        sort_by_strength(order, buffer);
        for (std::size_t seat = 0; seat < 2; ++seat) {
            std::vector<ShowdownEntry>& list = table[seat];
            list.reserve(live[seat] + 2);
            list.push_back({0, no_position});
            for (const std::uint64_t key : order) {
                const std::uint16_t position = contenders[key & 0xFFFFU].position[seat];
                if (position != no_position) {
                    list.push_back({static_cast<std::uint32_t>(key >> 16U), position});
                }
            }
            list.push_back({4294967295U, no_position});
        }
    }

    void build_position_tables() {
        const auto fill = [this](PositionLists& valid, PositionLists& blocked, CardMask dealt) {
            for (std::size_t seat = 0; seat < 2; ++seat) {
                const auto& masks = pocket_masks_[seat];
                std::size_t hit = 0;
                for (const CardMask mask : masks) {
                    hit += (mask & dealt) != 0 ? 1 : 0;
                }
                blocked[seat].reserve(hit);
                valid[seat].reserve(masks.size() - hit);
                for (std::size_t position = 0; position < masks.size(); ++position) {
                    auto& list = (masks[position] & dealt) != 0 ? blocked[seat] : valid[seat];
                    list.push_back(static_cast<std::uint16_t>(position));
                }
            }
        };
        for (std::size_t seat = 0; seat < 2; ++seat) {
            for (const Pocket pocket : tables_->pockets[seat]) {
                pocket_masks_[seat].push_back(pocket_mask(pocket));
            }
        }
        tables_->valid_by_card.resize(card_count);
        tables_->blocked_by_card.resize(card_count);
        tables_->valid_by_pair.resize(pocket_count);
        tables_->blocked_by_pair.resize(pocket_count);
        for (Card card = 0; card < card_count; ++card) {
            const Card turn = tables_->board[3];
            if (turn != NO_CARD ? card == turn : (board_mask_ & card_bit(card)) == 0) {
                fill(tables_->valid_by_card[card], tables_->blocked_by_card[card], card_bit(card));
            }
        }
        for (const Pocket pair : runouts_) {
            const std::size_t index = pocket_index(pair.low, pair.high);
            fill(tables_->valid_by_pair[index], tables_->blocked_by_pair[index], pocket_mask(pair));
        }
    }

    void build_removal_weights() {
        for (std::size_t seat = 0; seat < 2; ++seat) {
            const std::size_t opponent = 1 - seat;
            const auto& their_weights = tables_->pocket_weights[opponent];
            double total = 0;
            std::array<double, card_count> card_mass{};
            for (std::size_t j = 0; j < their_weights.size(); ++j) {
                const double weight = their_weights[j];
                total += weight;
                card_mass[tables_->pockets[opponent][j].low] += weight;
                card_mass[tables_->pockets[opponent][j].high] += weight;
            }
            for (std::size_t i = 0; i < tables_->pockets[seat].size(); ++i) {
                const Pocket pocket = tables_->pockets[seat][i];
                const std::uint16_t twin = tables_->same_pocket[seat][i];
                // The identical pocket was taken off once for each of its cards.
                const double same = twin == no_position ? 0.0 : their_weights[twin];
                const double free = total - card_mass[pocket.low] - card_mass[pocket.high] + same;
                const double weight = tables_->pocket_weights[seat][i];
                tables_->removal_weights[seat].push_back(
                    free > 0 ? static_cast<float>(weight * free) : 0.0F);
            }
            tables_->removal_weights[seat].shrink_to_fit();
        }
    }

    const CardMask board_mask_;
    const std::vector<Pocket> runouts_;
    std::size_t workers_;
    std::unique_ptr<WorkerPool> pool_;  // exists when workers_ is above 1
    std::shared_ptr<CachedArtifacts> tables_ = std::make_shared<CachedArtifacts>();
    std::array<std::vector<CardMask>, 2> pocket_masks_;
};

template <class T>
std::size_t bytes_of(const std::vector<T>& list) {
    return list.capacity() * sizeof(T);
}

template <class T, std::size_t n>
std::size_t bytes_of(const std::array<T, n>& lists) {
    std::size_t bytes = 0;
    for (const T& list : lists) {
        bytes += bytes_of(list);
    }
    return bytes;
}

/// A list of records that hold lists themselves.
template <class T>
std::size_t nested_bytes_of(const std::vector<T>& records) {
    std::size_t bytes = bytes_of(records);
    for (const T& record : records) {
        bytes += bytes_of(record);
    }
    return bytes;
}

std::size_t hands_bytes(const DealtHands& hands) {
    const SuitIsomorphism& iso = hands.isomorphism;
    return bytes_of(hands.pockets) + bytes_of(hands.pocket_weights) + bytes_of(iso.turn_refs) +
           bytes_of(iso.turn_cards) + bytes_of(iso.turn_swaps) + bytes_of(iso.river_refs) +
           bytes_of(iso.river_cards) + bytes_of(iso.river_swaps);
}

}  // namespace

std::size_t tables_bytes(const CachedArtifacts& tables) {
    return hands_bytes(tables) + bytes_of(tables.removal_weights) + bytes_of(tables.same_pocket) +
           bytes_of(tables.all_positions) + nested_bytes_of(tables.showdown) +
           nested_bytes_of(tables.valid_by_card) + nested_bytes_of(tables.valid_by_pair) +
           nested_bytes_of(tables.blocked_by_card) + nested_bytes_of(tables.blocked_by_pair);
}

std::size_t tables_bytes(const Board& board, const DealtHands& hands) {
    const std::vector<Pocket> runouts = runouts_on(board);
    const std::size_t cards = board[3] != NO_CARD ? 1 : card_count - 3;
    std::size_t bytes = hands_bytes(hands) + pocket_count * sizeof(ShowdownTable) +
                        2 * (card_count + pocket_count) * sizeof(PositionLists);
    for (const std::vector<Pocket>& pockets : hands.pockets) {
        // Each position stands once in a list of its own seat, in one of the other seat's, and for
        // each card and pair either among those that it leaves or among those that it blocks.
        bytes +=
            pockets.size() * (sizeof(float) + (2 + cards + runouts.size()) * sizeof(std::uint16_t));
        for (const Pocket pair : runouts) {
            const auto live = std::ranges::count_if(pockets, [pair](Pocket pocket) {
                return (pocket_mask(pocket) & pocket_mask(pair)) == 0;
            });
            bytes += (static_cast<std::size_t>(live) + 2) * sizeof(ShowdownEntry);
        }
    }
    return bytes;
}

std::shared_ptr<const CachedArtifacts> build_card_tables(const Board& board,
                                                         const std::array<Range, 2>& weights,
                                                         std::size_t workers) {
    return Builder(board, weights, workers).build();
}

}  // namespace kestrel
