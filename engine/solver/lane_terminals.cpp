#include "engine/solver/lane_terminals.h"

#include <algorithm>
#include <iterator>

#include "engine/solver/lane_rows.h"
#include "engine/solver/profile.h"
#include "engine/solver/simd.h"

namespace kestrel {
namespace {

constexpr std::size_t widest = 16;  // lanes of the widest group
constexpr std::size_t largest_level = pocket_count;

/// Weights of a set of pockets for each lane, in all and by card.
template <std::size_t vectors>
struct LaneSums {
    using V = Lanes<vectors>;

    V total = V::zero();
    alignas(64) double by_card[card_count][V::count] = {};

    V card(Card c) const { return V::load(by_card[c]); }

    /// Adds items in their order. The total stays in registers: through memory, each addition
    /// would wait for the store of the one before.
    template <class Iterator>
    void add(Iterator item, Iterator end, const float* reach) {
        V sum = total;
        for (; item != end; ++item) {
            const V w = V::widen(reach + item->position * V::count);
            sum = sum + w;
            (card(item->low) + w).store(by_card[item->low]);
            (card(item->high) + w).store(by_card[item->high]);
        }
        total = sum;
    }

    V free_of(const ShowdownItem& item, const V& sum) const {
        return sum - card(item.low) - card(item.high);
    }
};

template <std::size_t vectors>
struct LanePayoffs {
    alignas(64) double win[4 * vectors] = {};
    alignas(64) double lose[4 * vectors] = {};
    alignas(64) double tie[4 * vectors] = {};

    explicit LanePayoffs(std::span<const LaneTerminal> terminals) {
        for (std::size_t i = 0; i < terminals.size(); ++i) {
            win[i] = terminals[i].payoffs.win;
            lose[i] = terminals[i].payoffs.lose;
            tie[i] = terminals[i].payoffs.tie;
        }
    }

    /// A lane whose opponent cannot be there is worth +0, whatever the signs of its payoffs.
    void clear_empty(const Lanes<vectors>& total) {
        alignas(64) double sums[4 * vectors];
        total.store(sums);
        for (std::size_t i = 0; i < 4 * vectors; ++i) {
            if (sums[i] == 0.0) {
                win[i] = lose[i] = tie[i] = 0.0;
            }
        }
    }
};

/// Calls evaluate.operator()<vectors>(group) for each group of at most sixteen terminals, the last
/// as narrow as it fits: 4, 8 or 16 lanes.
template <class Evaluate>
void in_groups(std::span<const LaneTerminal> terminals, Evaluate evaluate) {
    for (std::size_t begin = 0; begin < terminals.size(); begin += widest) {
        const auto group = terminals.subspan(begin, std::min(widest, terminals.size() - begin));
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

}  // namespace

LaneTerminals::LaneTerminals(const Game& game, const ShowdownOrders& orders)
    : game_(game), orders_(orders) {
    std::size_t most = 0;
    for (std::size_t seat = 0; seat < 2; ++seat) {
        const std::size_t theirs = game.cards.pockets[1 - seat].size();
        most = std::max(most, padded_row(theirs));
        for (const std::uint16_t twin : game.cards.same_pocket[seat]) {
            same_row_[seat].push_back(
                twin == no_position ? static_cast<std::uint16_t>(padded_row(theirs)) : twin);
        }
    }
    reach_ = AlignedBuffer<float>((most + 1) * widest);
    out_ = AlignedBuffer<float>(most * widest);
    won_ = AlignedBuffer<double>(largest_level * widest);
    parts_ = AlignedBuffer<float>(most * widest);
    nonzero_.resize(most);
    live_.resize(most + 1);
    live_before_.resize(most + 1);
    steps_.resize(2 * most + 2);
}

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
void LaneTerminals::turn_in(Seat seat, std::span<const LaneTerminal> terminals) {
    constexpr std::size_t lanes = 4 * vectors;
    const std::size_t hands = padded_row(game_.cards.pockets[index_of(other(seat))].size());
    const float* rows[lanes];
    for (std::size_t i = 0; i < lanes; ++i) {
        // A lane without a terminal repeats the first; nobody reads it.
        rows[i] = terminals[i < terminals.size() ? i : 0].reach;
    }
    interleave<vectors>(rows, hands, reach_.data(), nonzero_.data());
    std::fill_n(reach_.data() + hands * lanes, lanes, 0.0F);
}

template <std::size_t vectors>
void LaneTerminals::turn_out(Seat seat, std::span<const LaneTerminal> terminals) {
    const std::size_t hands = padded_row(game_.cards.pockets[index_of(seat)].size());
    float* rows[4 * vectors];
    for (std::size_t i = 0; i < terminals.size(); ++i) {
        rows[i] = terminals[i].out;
    }
    separate<vectors>(out_.data(), hands, std::span(rows).first(terminals.size()));
}

template <std::size_t vectors>
void LaneTerminals::fold_group(Seat seat, Card turn, Card river,
                               std::span<const LaneTerminal> terminals) {
    const ProfileScope timer(ProfileSlot::terminal_eval, terminals.size());
    const ProfileScope fold_timer(ProfileSlot::fold, terminals.size());
    using V = Lanes<vectors>;
    const CardContext& cards = game_.cards;
    const std::size_t own = index_of(seat);
    const std::size_t theirs = 1 - own;
    turn_in<vectors>(seat, terminals);
    float* const reach = reach_.data();

    const PositionLists* blocked = nullptr;
    if (turn != NO_CARD) {
        blocked = river == NO_CARD ? &cards.blocked_by_card[turn]
                                   : &cards.blocked_by_pair[pocket_index(turn, river)];
        for (const std::uint16_t position : (*blocked)[theirs]) {
            nonzero_[position] = 0;
        }
    }

    // Positions rise by low card, so the sum of the low card stays in registers for its run. A
    // card's sum takes its pockets in the order of their positions, as the plain form does.
    LaneSums<vectors> sums;
    V total = V::zero();
    const std::vector<Pocket>& their_pockets = cards.pockets[theirs];
    for (std::size_t h = 0; h < their_pockets.size();) {
        const Card low = their_pockets[h].low;
        V low_sum = sums.card(low);
        for (; h < their_pockets.size() && their_pockets[h].low == low; ++h) {
            if (nonzero_[h] == 0) {
                continue;
            }
            const V w = V::widen(reach + h * V::count);
            const Card high = their_pockets[h].high;
            total = total + w;
            low_sum = low_sum + w;
            (sums.card(high) + w).store(sums.by_card[high]);
        }
        low_sum.store(sums.by_card[low]);
    }

    LanePayoffs<vectors> payoffs(terminals);
    payoffs.clear_empty(total);
    const V payoff = V::load(payoffs.win);
    const std::size_t own_hands = cards.pockets[own].size();
    const Pocket* const own_pockets = cards.pockets[own].data();
    const std::uint16_t* const same_row = same_row_[own].data();
    float* const out = out_.data();
    for (std::size_t h = 0; h < own_hands; ++h) {
        fetcher.step();
        const V same = V::widen(reach + same_row[h] * V::count);
        const V free =
            total + same - sums.card(own_pockets[h].low) - sums.card(own_pockets[h].high);
        (free * payoff).narrow(out + h * V::count);
    }
    if (blocked != nullptr) {
        for (const std::uint16_t position : (*blocked)[own]) {
            std::fill_n(out + position * V::count, V::count, 0.0F);
        }
    }
    turn_out<vectors>(seat, terminals);
}

void LaneTerminals::list_live(const BoardOrder& board, std::size_t theirs) {
    // Most hands of a solved spot have left the line: their items are dropped without a branch,
    // and then the levels that no item is left of.
    const std::span<const ShowdownItem> items = board.items[theirs];
    std::size_t live = 0;
    for (std::size_t i = 0; i < items.size(); ++i) {
        live_before_[i] = static_cast<std::uint16_t>(live);
        live_[live] = items[i];
        live += nonzero_[items[i].position];
    }
    live_before_[items.size()] = static_cast<std::uint16_t>(live);

    const std::size_t own = 1 - theirs;
    std::size_t steps = 0;
    std::uint16_t below = 0;
    std::uint16_t before = 0;
    for (const LevelEnd& end : board.levels) {
        const std::uint16_t after = live_before_[end[theirs]];
        steps_[steps] = {below, end[own], after};
        steps += after != before ? 1 : 0;
        below = end[own];
        before = after;
    }
    step_count_ = steps;
}

// Bound by the loads and stores of the card sums, and by the branches where levels end; sixteen
// lanes share these. On the rows of a running solve about 1 ns a hand and terminal at 2.7 GHz,
// against 4 for the plain form.
template <std::size_t vectors, bool add>
void LaneTerminals::walk_raked(const BoardOrder& board, std::size_t own,
                               std::span<const LaneTerminal> terminals) {
    using V = Lanes<vectors>;
    const float* const reach = reach_.data();
    float* const out = out_.data();
    const std::uint16_t* const same_row = same_row_[own].data();
    const ShowdownItem* const items = board.items[own].data();
    const std::size_t item_count = board.items[own].size();
    const std::size_t live_count = step_count_ == 0 ? 0 : steps_[step_count_ - 1].live_end;

    LaneSums<vectors> all;
    const ShowdownItem* const live = live_.data();
    all.add(live, live + live_count, reach);
    const V all_total = all.total;
    LanePayoffs<vectors> payoffs(terminals);
    payoffs.clear_empty(all.total);
    const V win = V::load(payoffs.win);
    const V lose = V::load(payoffs.lose);
    const V tie = V::load(payoffs.tie);
    const auto put = [out](const ShowdownItem& item, const V& value) {
        if constexpr (add) {
            value.narrow_and_add(out + item.position * V::count);
        } else {
            value.narrow(out + item.position * V::count);
        }
    };

    // One chain of sums serves what the plain form keeps apart: before a level's items are added
    // it holds what is weaker, after them what is at most as strong.
    LaneSums<vectors> sums;
    std::size_t i = 0;
    std::size_t k = 0;
    const auto without_ties = [&](std::size_t end) {
        // Nothing ties: the share of ties is -0, which adds nothing.
        const V total = sums.total;
        for (; i < end; ++i) {
            fetcher.step();
            const V won = sums.free_of(items[i], total);
            const V lost = all.free_of(items[i], all_total) - won;
            put(items[i], won * win + lost * lose);
        }
    };
    for (std::size_t s = 0; s < step_count_; ++s) {
        const Step step = steps_[s];
        without_ties(step.own_below);
        const V total_below = sums.total;
        for (std::size_t t = i; t < step.own_end; ++t) {
            sums.free_of(items[t], total_below).store(won_.data() + (t - i) * V::count);
        }
        sums.add(live + k, live + step.live_end, reach);
        k = step.live_end;
        const V total = sums.total;
        for (std::size_t t = i; t < step.own_end; ++t) {
            fetcher.step();
            const ShowdownItem item = items[t];
            const V won = V::load(won_.data() + (t - i) * V::count);
            const V met = sums.free_of(item, total);
            const V same = V::widen(reach + same_row[item.position] * V::count);
            const V tied = met - won + same;
            const V lost = all.free_of(item, all_total) - met;
            put(item, tied * tie + won * win + lost * lose);
        }
        i = step.own_end;
    }
    without_ties(item_count);
}

template <std::size_t vectors, bool add>
void LaneTerminals::walk_unraked(const BoardOrder& board, std::size_t own,
                                 std::span<const LaneTerminal> terminals) {
    using V = Lanes<vectors>;
    const float* const reach = reach_.data();
    float* const out = out_.data();
    const ShowdownItem* const items = board.items[own].data();
    const std::size_t item_count = board.items[own].size();
    const ShowdownItem* const live = live_.data();
    const LanePayoffs<vectors> payoffs(terminals);

    // With run-outs to add up, the winning part waits for the losing part, so that their sum is
    // rounded before it is added.
    {
        const V win = V::load(payoffs.win);
        LaneSums<vectors> beaten;
        std::size_t i = 0;
        std::size_t k = 0;
        const auto settle = [&](std::size_t end) {
            const V total = beaten.total;
            for (; i < end; ++i) {
                fetcher.step();
                const V value = beaten.free_of(items[i], total) * win;
                if constexpr (add) {
                    value.narrow(parts_.data() + i * V::count);
                } else {
                    value.narrow(out + items[i].position * V::count);
                }
            }
        };
        for (std::size_t s = 0; s < step_count_; ++s) {
            settle(steps_[s].own_end);
            beaten.add(live + k, live + steps_[s].live_end, reach);
            k = steps_[s].live_end;
        }
        settle(item_count);
    }
    const V lose = V::load(payoffs.lose);
    LaneSums<vectors> beating;
    std::size_t i = item_count;
    std::size_t k = step_count_ == 0 ? 0 : steps_[step_count_ - 1].live_end;
    const auto settle = [&](std::size_t end) {
        const V total = beating.total;
        while (i > end) {
            --i;
            fetcher.step();
            const V value = beating.free_of(items[i], total) * lose;
            if constexpr (add) {
                float* const part = parts_.data() + i * V::count;
                value.narrow_and_add(part);
                float* const to = out + items[i].position * V::count;
                for (std::size_t lane = 0; lane < V::count; ++lane) {
                    to[lane] += part[lane];
                }
            } else {
                value.narrow_and_add(out + items[i].position * V::count);
            }
        }
    };
    for (std::size_t s = step_count_; s-- > 0;) {
        settle(steps_[s].own_below);
        const std::size_t end = s == 0 ? 0 : steps_[s - 1].live_end;
        beating.add(std::reverse_iterator(live + k), std::reverse_iterator(live + end), reach);
        k = end;
    }
    settle(0);
}

template <std::size_t vectors, bool add>
void LaneTerminals::walk(const BoardOrder& board, Seat seat,
                         std::span<const LaneTerminal> terminals) {
    list_live(board, index_of(other(seat)));
    if (terminals.front().raked) {
        const ProfileScope timer(ProfileSlot::showdown_r, terminals.size());
        walk_raked<vectors, add>(board, index_of(seat), terminals);
    } else {
        // A terminal's own showdown is booked as terminal time alone, a run-out's by itself.
        const ProfileScope timer(ProfileSlot::showdown_u, add ? terminals.size() : 0);
        walk_unraked<vectors, add>(board, index_of(seat), terminals);
    }
}

template <std::size_t vectors>
void LaneTerminals::showdown_group(Seat seat, std::size_t pair,
                                   std::span<const LaneTerminal> terminals) {
    const ProfileScope timer(ProfileSlot::terminal_eval, terminals.size());
    constexpr std::size_t lanes = 4 * vectors;
    const std::size_t hands = game_.cards.pockets[index_of(seat)].size();
    const BoardOrder& board = orders_[pair];
    if (board.levels.empty()) {
        for (const LaneTerminal& terminal : terminals) {
            std::fill_n(terminal.out, hands, 0.0F);
        }
        return;
    }
    turn_in<vectors>(seat, terminals);
    for (const std::uint16_t position : game_.cards.blocked_by_pair[pair][index_of(seat)]) {
        std::fill_n(out_.data() + position * lanes, lanes, 0.0F);
    }
    walk<vectors, false>(board, seat, terminals);
    turn_out<vectors>(seat, terminals);
}

template <std::size_t vectors>
void LaneTerminals::all_in_group(Seat seat, std::span<const std::pair<Card, Card>> runouts,
                                 std::optional<float> divisor,
                                 std::span<const LaneTerminal> terminals) {
    const ProfileScope timer(ProfileSlot::terminal_eval, terminals.size());
    const ProfileScope all_in_timer(ProfileSlot::incomplete, terminals.size());
    constexpr std::size_t lanes = 4 * vectors;
    const std::size_t values = game_.cards.pockets[index_of(seat)].size() * lanes;
    turn_in<vectors>(seat, terminals);
    std::fill_n(out_.data(), values, 0.0F);
    std::size_t count = 0;
    for (const auto& [turn, river] : runouts) {
        const BoardOrder& board = orders_[pocket_index(turn, river)];
        if (!board.levels.empty()) {
            walk<vectors, true>(board, seat, terminals);
            ++count;
        }
    }
    if (count > 0) {
        const float share = 1.0F / divisor.value_or(static_cast<float>(count));
        for (std::size_t i = 0; i < values; ++i) {
            out_[i] *= share;
        }
    }
    turn_out<vectors>(seat, terminals);
}

}  // namespace kestrel
