#include "engine/poker/range_writer.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>
#include <vector>

namespace kestrel {
namespace {

constexpr int no_weight = -1;  // of a hand that a list leaves out

/// Hands that differ in their ranks alone.
struct Family {
    Suitedness suitedness = Suitedness::Any;
    int high_suit = 0;  // of exact combos
    int low_suit = 0;
};

/// By the higher rank and the lower one.
using Weights = std::array<std::array<float, rank_count>, rank_count>;

/// Hands of one family and weight: those of one high rank whose low ranks run from `top` down to
/// `bottom`; of pairs, whose ranks are both, those from `top` to `bottom`; with `rungs`, that many
/// hands each a rank below the one before.
struct Item {
    Family family;
    int high = 0;
    int top = 0;
    int bottom = 0;
    float weight = 0;
    int rungs = 1;

    bool is_pair() const { return high == no_weight; }
    bool is_single() const { return !is_pair() && top == bottom; }
};

using Items = std::vector<Item>;

std::string label(const Family& family, int high, int low) {
    std::string text;
    const bool exact = family.suitedness == Suitedness::Exact;
    const auto add = [&](int rank, int suit) {
        text += rank_char(rank);
        if (exact) {
            text += suit_characters[static_cast<std::size_t>(suit)];
        }
    };
    add(high, family.high_suit);
    add(low, family.low_suit);
    if (family.suitedness == Suitedness::Suited) {
        text += 's';
    } else if (family.suitedness == Suitedness::Offsuit) {
        text += 'o';
    }
    return text;
}

std::string text_of(const Item& item) {
    const auto name = [&](int low) {
        return label(item.family, item.is_pair() ? low : item.high, low);
    };
    const int highest = item.is_pair() ? rank_count - 1 : item.high - 1;
    std::string text;
    if (item.rungs > 1) {
        const int down = item.rungs - 1;
        text = name(item.top) + '-' + label(item.family, item.high - down, item.top - down);
    } else if (item.top == item.bottom) {
        text = name(item.top);
    } else if (item.top == highest) {
        text = name(item.bottom) + '+';
    } else {
        text = name(item.top) + '-' + name(item.bottom);
    }
    return item.weight == 1.0F ? text : text + ':' + shortest_text(item.weight);
}

std::string text_of(const Items& items) {
    std::string text;
    for (const Item& item : items) {
        text += (text.empty() ? "" : ", ") + text_of(item);
    }
    return text;
}

/// Adds the runs of equal weights from rank `from` down; `weight_of_rank` gives the weight of a
/// rank, `no_weight` where nothing is to be written.
template <class WeightOfRank>
void add_runs(Items& items, const Family& family, int high, int from,
              const WeightOfRank& weight_of_rank) {
    for (int top = from; top >= 0;) {
        const float weight = weight_of_rank(top);
        int bottom = top;
        while (bottom > 0 && weight_of_rank(bottom - 1) == weight) {
            --bottom;
        }
        if (weight != no_weight) {
            items.push_back({family, high, top, bottom, weight});
        }
        top = bottom - 1;
    }
}

void add_pairs(Items& items, const Family& family, const Weights& weights) {
    add_runs(items, family, no_weight, rank_count - 1, [&](int rank) {
        return weights[static_cast<std::size_t>(rank)][static_cast<std::size_t>(rank)];
    });
}

void add_row(Items& items, const Family& family, int high, const Weights& weights) {
    add_runs(items, family, high, high - 1, [&](int low) {
        return weights[static_cast<std::size_t>(high)][static_cast<std::size_t>(low)];
    });
}

/// The hands of one high rank, those whose suited and offsuit weights agree as one item or as two,
/// whichever is shorter.
void add_row(Items& items, int high, const Weights& suited, const Weights& offsuit) {
    const auto row = static_cast<std::size_t>(high);
    Items apart;
    add_row(apart, {Suitedness::Suited}, high, suited);
    add_row(apart, {Suitedness::Offsuit}, high, offsuit);

    std::array<Weights, 3> split = {suited, suited, offsuit};  // both, suited, offsuit
    for (std::size_t low = 0; low < row; ++low) {
        const bool same = suited[row][low] == offsuit[row][low];
        (same ? split[1] : split[0])[row][low] = no_weight;
        split[2][row][low] = same ? static_cast<float>(no_weight) : offsuit[row][low];
    }
    Items together;
    add_row(together, {Suitedness::Any}, high, split[0]);
    add_row(together, {Suitedness::Suited}, high, split[1]);
    add_row(together, {Suitedness::Offsuit}, high, split[2]);

    const Items& shorter = text_of(together).size() < text_of(apart).size() ? together : apart;
    items.insert(items.end(), shorter.begin(), shorter.end());
}

bool is_below(const Item& lower, const Item& item, int ranks) {
    return lower.is_single() && lower.rungs == 1 && lower.high == item.high - ranks &&
           lower.top == item.top - ranks && lower.weight == item.weight &&
           lower.family.suitedness == item.family.suitedness &&
           lower.family.high_suit == item.family.high_suit &&
           lower.family.low_suit == item.family.low_suit;
}

/// Single hands that stand one below the other, such as connectors, become one item from three on.
Items with_ladders(const Items& items) {
    constexpr int fewest = 3;
    Items result;
    std::vector<bool> taken(items.size());
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (taken[i]) {
            continue;
        }
        Item item = items[i];
        std::vector<std::size_t> rungs;
        for (std::size_t k = i + 1; item.is_single() && k < items.size(); ++k) {
            if (!taken[k] && is_below(items[k], item, static_cast<int>(rungs.size()) + 1)) {
                rungs.push_back(k);
            }
        }
        if (static_cast<int>(rungs.size()) + 1 >= fewest) {
            item.rungs = static_cast<int>(rungs.size()) + 1;
            std::ranges::for_each(rungs, [&](std::size_t k) { taken[k] = true; });
        }
        result.push_back(item);
    }
    return result;
}

/// What a hand is written with: the weight that the fewest of its combos have to be named apart
/// from, 0 for not at all.
float usual_weight(const Range& range, const RangePattern& pattern) {
    const std::vector<std::uint16_t> pockets = expand_pattern(pattern);
    const auto items = [&](float weight) {
        return (weight != 0.0F ? 1 : 0) +
               std::ranges::count_if(pockets, [&](auto pocket) { return range[pocket] != weight; });
    };
    float best = 0;
    for (const std::uint16_t pocket : pockets) {
        if (items(range[pocket]) < items(best)) {
            best = range[pocket];
        }
    }
    return best;
}

Weights nothing() {
    Weights weights;
    for (auto& row : weights) {
        row.fill(no_weight);
    }
    return weights;
}

/// The hands at their usual weights.
Items hand_items(const Range& range) {
    Weights pairs = nothing();
    Weights suited = nothing();
    Weights offsuit = nothing();
    const auto set = [&](Weights& weights, int high, int low, Suitedness suitedness) {
        const float weight = usual_weight(range, {.high_rank = static_cast<std::uint8_t>(high),
                                                  .low_rank = static_cast<std::uint8_t>(low),
                                                  .suitedness = suitedness});
        if (weight != 0.0F) {
            weights[static_cast<std::size_t>(high)][static_cast<std::size_t>(low)] = weight;
        }
    };
    for (int high = 0; high < rank_count; ++high) {
        set(pairs, high, high, Suitedness::Any);
        for (int low = 0; low < high; ++low) {
            set(suited, high, low, Suitedness::Suited);
            set(offsuit, high, low, Suitedness::Offsuit);
        }
    }
    Items items;
    add_pairs(items, {}, pairs);
    for (int high = rank_count - 1; high > 0; --high) {
        add_row(items, high, suited, offsuit);
    }
    return with_ladders(items);
}

/// The combos whose weight is not the one that `written` gives them.
Items combo_items(const Range& range, const Range& written) {
    Items items;
    for (int high_suit = suit_count - 1; high_suit >= 0; --high_suit) {
        for (int low_suit = suit_count - 1; low_suit >= 0; --low_suit) {
            Weights weights = nothing();
            for (int high = 0; high < rank_count; ++high) {
                // The two suits of a pair stand in one order only.
                const int last = high_suit > low_suit ? high : high - 1;
                for (int low = 0; low <= last; ++low) {
                    const std::uint16_t pocket =
                        pocket_index(static_cast<Card>(high * suit_count + high_suit),
                                     static_cast<Card>(low * suit_count + low_suit));
                    if (range[pocket] != written[pocket]) {
                        weights[static_cast<std::size_t>(high)][static_cast<std::size_t>(low)] =
                            range[pocket];
                    }
                }
            }
            const Family family = {Suitedness::Exact, high_suit, low_suit};
            add_pairs(items, family, weights);
            for (int high = rank_count - 1; high > 0; --high) {
                add_row(items, family, high, weights);
            }
        }
    }
    return items;
}

}  // namespace

std::string shortest_text(float number) {
    std::array<char, 32> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr;
    return {buffer.data(), end};
}

std::string write_range(const Range& range) {
    std::string text = text_of(hand_items(range));
    const std::string combos = text_of(combo_items(range, parse_range(text)));
    return text.empty() || combos.empty() ? text + combos : text + ", " + combos;
}

}  // namespace kestrel
