#include "engine/solver/lane_terminals.h"

#include <algorithm>
#include <functional>

#include "engine/solver/lane_showdowns.h"
#include "engine/solver/profile.h"

namespace kestrel {
namespace {

/// Calls evaluate.operator()<vectors>(group) for each group of at most sixteen terminals, the last
/// as narrow as it fits: 4, 8 or 16 lanes.
template <class Evaluate>
void in_groups(std::span<const LaneTerminal> terminals, Evaluate evaluate) {
    for (std::size_t begin = 0; begin < terminals.size(); begin += widest_group) {
        const auto group =
            terminals.subspan(begin, std::min(widest_group, terminals.size() - begin));
        if (group.size() <= 4) {
            evaluate.template operator()<1>(group);
        } else if (group.size() <= 8) {
            evaluate.template operator()<2>(group);
        } else {
            evaluate.template operator()<4>(group);
        }
    }
}

/// Cuts the terminals into those without and those with rake and calls evaluate on both.
template <class Evaluate>
void by_rule(std::span<LaneTerminal> terminals, Evaluate evaluate) {
    const auto raked =
        std::ranges::stable_partition(terminals, std::logical_not<>{}, &LaneTerminal::raked);
    const std::size_t unraked = terminals.size() - raked.size();
    evaluate(std::span<const LaneTerminal>(terminals.first(unraked)));
    evaluate(std::span<const LaneTerminal>(terminals.subspan(unraked)));
}

/// The positions that a board's turn and river block, by seat; null before the turn.
const PositionLists* blocked_positions(const CardContext& cards, Card turn, Card river) {
    if (turn == NO_CARD) {
        return nullptr;
    }
    return river == NO_CARD ? &cards.blocked_by_card[turn]
                            : &cards.blocked_by_pair[pocket_index(turn, river)];
}

/// The opposing weight, all of a group's lanes side by side. Positions rise by low card, so the sum
/// of the low card stays in registers for its run. A card's sum takes its pockets in the order of
/// their positions, as the plain form does.
template <std::size_t vectors>
void add_facing(LaneSums<vectors>& sums, const LaneGroup<vectors>& group,
                const std::vector<Pocket>& pockets) {
    using V = Lanes<vectors>;
    const float* const reach = group.reach_row();
    const std::uint8_t* const nonzero = group.nonzero();
    V total = V::zero();
    for (std::size_t h = 0; h < pockets.size();) {
        const Card low = pockets[h].low;
        V low_sum = sums.card(low);
        for (; h < pockets.size() && pockets[h].low == low; ++h) {
            if (nonzero[h] == 0) {
                continue;
            }
            const V w = V::widen(reach + h * V::count);
            const Card high = pockets[h].high;
            total = total + w;
            low_sum = low_sum + w;
            (sums.card(high) + w).store(sums.by_card[high]);
        }
        low_sum.store(sums.by_card[low]);
    }
    sums.total = total;
}

/// One showdown of a group, whose terminals are raked alike.
template <std::size_t vectors, bool add>
void walk_board(LaneGroup<vectors>& group, const BoardOrder& board, RowFetcher& fetcher) {
    const LiveOrder order(board, group);
    const std::size_t terminals = group.terminals.size();
    if (group.terminals.front().raked) {
        const ProfileScope timer(ProfileSlot::showdown_r, terminals);
        RakedShowdowns<vectors, add>(group, order, fetcher).walk();
    } else {
        // A terminal's own showdown is booked as terminal time alone, a run-out's by itself.
        const ProfileScope timer(ProfileSlot::showdown_u, add ? terminals : 0);
        UnrakedShowdowns<vectors, add>(group, order, fetcher).walk();
    }
}

}  // namespace

LaneTerminals::LaneTerminals(const Game& game, const ShowdownOrders& orders)
    : cards_(game.cards), orders_(orders), buffers_(game.cards) {}

void LaneTerminals::folds(Seat seat, Card turn, Card river,
                          std::span<const LaneTerminal> terminals) {
    in_groups(terminals, [&]<std::size_t vectors>(auto group) {
        fold_group<vectors>(seat, turn, river, group);
    });
}

void LaneTerminals::showdowns(Seat seat, Card turn, Card river, std::span<LaneTerminal> terminals) {
    const std::size_t pair = pocket_index(turn, river);
    by_rule(terminals, [&](auto some) {
        in_groups(some, [&]<std::size_t vectors>(auto group) {
            showdown_group<vectors>(seat, pair, group);
        });
    });
}

void LaneTerminals::all_ins(Seat seat, std::span<const std::pair<Card, Card>> runouts,
                            std::optional<float> divisor, std::span<LaneTerminal> terminals) {
    by_rule(terminals, [&](auto some) {
        in_groups(some, [&]<std::size_t vectors>(auto group) {
            all_in_group<vectors>(seat, runouts, divisor, group);
        });
    });
}

template <std::size_t vectors>
void LaneTerminals::fold_group(Seat seat, Card turn, Card river,
                               std::span<const LaneTerminal> terminals) {
    const ProfileScope timer(ProfileSlot::terminal_eval, terminals.size());
    const ProfileScope fold_timer(ProfileSlot::fold, terminals.size());
    using V = Lanes<vectors>;
    LaneGroup<vectors> group(cards_, buffers_, seat, terminals);
    const PositionLists* const blocked = blocked_positions(cards_, turn, river);
    if (blocked != nullptr) {
        group.drop((*blocked)[group.theirs]);
    }
    LaneSums<vectors> facing;
    add_facing(facing, group, cards_.pockets[group.theirs]);

    LanePayoffs<vectors> payoffs(terminals);
    payoffs.clear_empty(facing.total);
    const V payoff = V::load(payoffs.win);
    const V total = facing.total;
    const Pocket* const pockets = cards_.pockets[group.own].data();
    const float* const reach = group.reach_row();
    const std::uint16_t* const same_row = group.same_rows();
    float* const out = group.out();
    for (std::size_t h = 0; h < group.own_hands; ++h) {
        fetcher.step();
        const V same = V::widen(reach + same_row[h] * V::count);
        const V free = total + same - facing.card(pockets[h].low) - facing.card(pockets[h].high);
        (free * payoff).narrow(out + h * V::count);
    }
    if (blocked != nullptr) {
        group.clear((*blocked)[group.own]);
    }
    group.write_rows();
}

template <std::size_t vectors>
void LaneTerminals::showdown_group(Seat seat, std::size_t pair,
                                   std::span<const LaneTerminal> terminals) {
    const ProfileScope timer(ProfileSlot::terminal_eval, terminals.size());
    const BoardOrder& board = orders_[pair];
    if (board.levels.empty()) {
        for (const LaneTerminal& terminal : terminals) {
            std::fill_n(terminal.out, cards_.pockets[index_of(seat)].size(), 0.0F);
        }
        return;
    }
    LaneGroup<vectors> group(cards_, buffers_, seat, terminals);
    group.clear(cards_.blocked_by_pair[pair][group.own]);
    walk_board<vectors, false>(group, board, fetcher);
    group.write_rows();
}

template <std::size_t vectors>
void LaneTerminals::all_in_group(Seat seat, std::span<const std::pair<Card, Card>> runouts,
                                 std::optional<float> divisor,
                                 std::span<const LaneTerminal> terminals) {
    const ProfileScope timer(ProfileSlot::terminal_eval, terminals.size());
    const ProfileScope all_in_timer(ProfileSlot::incomplete, terminals.size());
    LaneGroup<vectors> group(cards_, buffers_, seat, terminals);
    group.clear_all();
    std::size_t count = 0;
    for (const auto& [turn, river] : runouts) {
        const BoardOrder& board = orders_[pocket_index(turn, river)];
        if (!board.levels.empty()) {
            walk_board<vectors, true>(group, board, fetcher);
            ++count;
        }
    }
    if (count > 0) {
        group.scale_all(1.0F / divisor.value_or(static_cast<float>(count)));
    }
    group.write_rows();
}

}  // namespace kestrel
