#include "engine/solver/showdown_order.h"

#include <algorithm>

#include "engine/parallel/worker_pool.h"

namespace kestrel {
namespace {

/// Calls visit(end of OOP's, end of IP's hands) for each level, in real entries from 0.
template <class Visit>
void for_each_level(const ShowdownTable& table, Visit visit) {
    // Behind each list stands a sentinel stronger than any hand.
    std::size_t i = 1;
    std::size_t j = 1;
    while (i + 1 < table[0].size() || j + 1 < table[1].size()) {
        const std::uint32_t strength = std::min(table[0][i].strength, table[1][j].strength);
        while (table[0][i].strength == strength) {
            ++i;
        }
        while (table[1][j].strength == strength) {
            ++j;
        }
        visit(i - 1, j - 1);
    }
}

bool has_hands_on_both_sides(const ShowdownTable& table) {
    return table[0].size() >= 3 && table[1].size() >= 3;
}

}  // namespace

void ShowdownOrders::build(const CardContext& cards, WorkerPool* pool, std::size_t threads) {
    struct Place {
        std::size_t item;
        std::size_t level;
    };
    const std::size_t count = cards.showdown.size();
    std::vector<Place> places(count + 1);
    parallel_for(pool, threads, count, [&](std::size_t begin, std::size_t end) {
        for (std::size_t pair = begin; pair < end; ++pair) {
            const ShowdownTable& table = cards.showdown[pair];
            if (has_hands_on_both_sides(table)) {
                std::size_t levels = 0;
                for_each_level(table, [&](std::size_t, std::size_t) { ++levels; });
                places[pair + 1] = {table[0].size() + table[1].size() - 4, levels};
            }
        }
    });
    for (std::size_t pair = 0; pair < count; ++pair) {
        places[pair + 1].item += places[pair].item;
        places[pair + 1].level += places[pair].level;
    }
    items_ = std::vector<ShowdownItem>(places[count].item);
    levels_ = std::vector<LevelEnd>(places[count].level);
    orders_.assign(count, {});

    parallel_for(pool, threads, count, [&](std::size_t begin, std::size_t end) {
        for (std::size_t pair = begin; pair < end; ++pair) {
            if (places[pair].item == places[pair + 1].item) {
                continue;
            }
            const ShowdownTable& table = cards.showdown[pair];
            ShowdownItem* item = items_.data() + places[pair].item;
            for (std::size_t seat = 0; seat < 2; ++seat) {
                ShowdownItem* const first = item;
                for (std::size_t i = 1; i + 1 < table[seat].size(); ++i) {
                    const std::uint16_t position = table[seat][i].position;
                    const Pocket pocket = cards.pockets[seat][position];
                    *item++ = {position, pocket.low, pocket.high};
                }
                orders_[pair].items[seat] = {first, item};
            }
            LevelEnd* const first_level = levels_.data() + places[pair].level;
            LevelEnd* level = first_level;
            for_each_level(table, [&](std::size_t oop_end, std::size_t ip_end) {
                *level++ = {static_cast<std::uint16_t>(oop_end),
                            static_cast<std::uint16_t>(ip_end)};
            });
            orders_[pair].levels = {first_level, level};
        }
    });
}

}  // namespace kestrel
