#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "engine/solver/lane_group.h"
#include "engine/solver/row_fetcher.h"

namespace kestrel {

// The two walks over a board's hands by rising strength, for all lanes of a group at once, with the
// additions of `showdown_r` and `showdown_u` in the same order. With `add` the values, each rounded
// to a float as a whole, are added to those that stand there, for a sum over run-outs; without it
// they replace them.
//
// Bound by the loads and stores of the card sums, and by the branches where levels end; sixteen
// lanes share these. On the rows of a running solve about 1 ns a hand and terminal at 2.7 GHz,
// against 4 for the plain form.

/// Showdowns at which a tie is worth something.
template <std::size_t vectors, bool add>
class RakedShowdowns {
  public:
    RakedShowdowns(LaneGroup<vectors>& group, const LiveOrder& order, RowFetcher& fetcher)
        : group_(group), order_(order), fetcher_(fetcher), payoffs_(group.terminals) {
        all_.add(order.live, order.live + order.live_count(), group.reach_row());
        payoffs_.clear_empty(all_.total);
    }

    void walk() {
        const V win = V::load(payoffs_.win);
        const V lose = V::load(payoffs_.lose);
        const V tie = V::load(payoffs_.tie);
        for (const ShowdownStep& step : order_.steps) {
            settle_untied(step.own_below, win, lose);
            settle_level(step, win, lose, tie);
        }
        settle_untied(order_.own.size(), win, lose);
    }

  private:
    using V = Lanes<vectors>;

    // What a loop reads of the members stands in locals: a vector that is stored might change any
    // member as far as the compiler knows.

    static void put(float* to, const V& value) {
        if constexpr (add) {
            value.narrow_and_add(to);
        } else {
            value.narrow(to);
        }
    }

    /// Our hands up to `end`, with which nothing ties: the share of ties is -0 and adds nothing.
    void settle_untied(std::size_t end, const V& win, const V& lose) {
        const V total = sums_.total;
        const V all_total = all_.total;
        const ShowdownItem* const own = order_.own.data();
        float* const out = group_.out();
        RowFetcher& fetcher = fetcher_;
        for (std::size_t i = own_; i < end; ++i) {
            fetcher.step();
            const V won = sums_.free_of(own[i], total);
            const V lost = all_.free_of(own[i], all_total) - won;
            put(out + own[i].position * V::count, won * win + lost * lose);
        }
        own_ = std::max(own_, end);
    }

    /// One chain of sums serves what the plain form keeps apart: before a level's items are added
    /// it holds what is weaker, after them what is at most as strong.
    void settle_level(const ShowdownStep& step, const V& win, const V& lose, const V& tie) {
        const ShowdownItem* const own = order_.own.data() + own_;
        const std::size_t count = step.own_end - own_;
        const float* const reach = group_.reach_row();
        double* const won_before = group_.won();
        const V total_below = sums_.total;
        for (std::size_t t = 0; t < count; ++t) {
            sums_.free_of(own[t], total_below).store(won_before + t * V::count);
        }
        sums_.add(order_.live + live_, order_.live + step.live_end, reach);
        live_ = step.live_end;
        const V total = sums_.total;
        const V all_total = all_.total;
        const std::uint16_t* const same_row = group_.same_rows();
        float* const out = group_.out();
        RowFetcher& fetcher = fetcher_;
        for (std::size_t t = 0; t < count; ++t) {
            fetcher.step();
            const ShowdownItem item = own[t];
            const V won = V::load(won_before + t * V::count);
            const V met = sums_.free_of(item, total);
            const V tied = met - won + V::widen(reach + same_row[item.position] * V::count);
            const V lost = all_.free_of(item, all_total) - met;
            put(out + item.position * V::count, tied * tie + won * win + lost * lose);
        }
        own_ = step.own_end;
    }

    LaneGroup<vectors>& group_;
    const LiveOrder& order_;
    RowFetcher& fetcher_;
    LanePayoffs<vectors> payoffs_;
    LaneSums<vectors> all_;
    LaneSums<vectors> sums_;  // of their first live_ items
    std::size_t own_ = 0;     // our first item that has no value yet
    std::size_t live_ = 0;
};

/// Showdowns at which a tie is worth nothing: what is won on a way up, what is lost on a way down.
template <std::size_t vectors, bool add>
class UnrakedShowdowns {
  public:
    UnrakedShowdowns(LaneGroup<vectors>& group, const LiveOrder& order, RowFetcher& fetcher)
        : group_(group), order_(order), fetcher_(fetcher), payoffs_(group.terminals) {}

    void walk() {
        settle_won();
        settle_lost();
    }

  private:
    using V = Lanes<vectors>;

    /// With run-outs to add up, the winning part waits for the losing part, so that their sum is
    /// rounded before it is added.
    void settle_won() {
        const V win = V::load(payoffs_.win);
        const ShowdownItem* const own = order_.own.data();
        float* const to = add ? group_.parts() : group_.out();
        RowFetcher& fetcher = fetcher_;
        LaneSums<vectors> beaten;
        std::size_t i = 0;
        const auto settle = [&](std::size_t end) {
            const V total = beaten.total;
            for (; i < end; ++i) {
                fetcher.step();
                const V value = beaten.free_of(own[i], total) * win;
                value.narrow(to + (add ? i : own[i].position) * V::count);
            }
        };
        std::size_t k = 0;
        for (const ShowdownStep& step : order_.steps) {
            settle(step.own_end);
            beaten.add(order_.live + k, order_.live + step.live_end, group_.reach_row());
            k = step.live_end;
        }
        settle(order_.own.size());
    }

    void settle_lost() {
        const V lose = V::load(payoffs_.lose);
        const ShowdownItem* const own = order_.own.data();
        float* const parts = group_.parts();
        float* const out = group_.out();
        RowFetcher& fetcher = fetcher_;
        LaneSums<vectors> beating;
        std::size_t i = order_.own.size();
        const auto settle = [&](std::size_t end) {
            const V total = beating.total;
            while (i > end) {
                --i;
                fetcher.step();
                const V value = beating.free_of(own[i], total) * lose;
                add_lost(out + own[i].position * V::count, parts + i * V::count, value);
            }
        };
        std::size_t k = order_.live_count();
        for (std::size_t s = order_.steps.size(); s-- > 0;) {
            settle(order_.steps[s].own_below);
            const std::size_t end = s == 0 ? 0 : order_.steps[s - 1].live_end;
            beating.add(std::reverse_iterator(order_.live + k),
                        std::reverse_iterator(order_.live + end), group_.reach_row());
            k = end;
        }
        settle(0);
    }

    static void add_lost(float* to, float* won_part, const V& value) {
        if constexpr (add) {
            value.narrow_and_add(won_part);
            for (std::size_t lane = 0; lane < V::count; ++lane) {
                to[lane] += won_part[lane];
            }
        } else {
            value.narrow_and_add(to);
        }
    }

    LaneGroup<vectors>& group_;
    const LiveOrder& order_;
    RowFetcher& fetcher_;
    const LanePayoffs<vectors> payoffs_;
};

}  // namespace kestrel
