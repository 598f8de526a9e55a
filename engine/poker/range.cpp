#include "engine/poker/range.h"

#include <algorithm>
#include <stdexcept>
#include <string>

#include "engine/poker/text.h"

namespace kestrel {
namespace {

// Written so that NaN fails too.
void check_weight(float weight) {
    if (!(weight >= 0.0F && weight <= 1.0F)) {
        throw std::invalid_argument("Weight must be within [0, 1]");
    }
}

float parse_weight(std::string_view text) {
    if (text.empty()) {
        throw std::invalid_argument("Weight string is empty");
    }
    const ReadNumber<float> number = read_float(text);
    if (number.length == 0) {
        throw std::invalid_argument("invalid stof argument");
    }
    if (number.out_of_range) {
        throw std::out_of_range("stof argument out of range");
    }
    if (number.length != text.size()) {
        throw std::invalid_argument("Weight string contains invalid characters");
    }
    check_weight(number.value);
    return number.value;
}

void check_rank_order(int first, int second) {
    if (first < second) {
        throw std::invalid_argument("First rank must be >= second rank");
    }
}

Card card_of(int rank, int suit) {
    if (rank >= rank_count || suit >= suit_count) {
        detail::throw_bad_card();
    }
    return static_cast<Card>(rank * suit_count + suit);
}

void assign(Range& range, const RangePattern& pattern, float weight) {
    for (const std::uint16_t pocket : expand_pattern(pattern)) {
        range[pocket] = weight;
    }
}

void assign(Range& range, RangePattern pattern, int high_rank, int low_rank, float weight) {
    pattern.high_rank = static_cast<std::uint8_t>(high_rank);
    pattern.low_rank = static_cast<std::uint8_t>(low_rank);
    assign(range, pattern, weight);
}

std::uint16_t checked_pocket_index(Card card_a, Card card_b) {
    check_card(card_a);
    check_card(card_b);
    if (card_a == card_b) {
        throw std::invalid_argument("Cards must differ");
    }
    return pocket_index(card_a, card_b);
}

}  // namespace

Range parse_range(std::string_view text) {
    const std::string items = without_white_space(text);
    Range range{};
    for (std::string_view rest = items; !rest.empty();) {
        const std::size_t comma = std::min(rest.find(','), rest.size());
        if (comma > 0) {
            apply_range_item(range, rest.substr(0, comma));
        }
        rest.remove_prefix(std::min(comma + 1, rest.size()));
    }
    return range;
}

void apply_range_item(Range& range, std::string_view item) {
    const std::size_t colon = item.find(':');
    const float weight =
        colon == std::string_view::npos ? 1.0F : parse_weight(item.substr(colon + 1));
    const std::string_view expression = item.substr(0, colon);
    if (expression.empty()) {
        throw std::invalid_argument("Missing range expression");
    }
    if (expression.find('-') != std::string_view::npos) {
        apply_dash(range, expression, weight);
    } else if (expression.back() == '+') {
        apply_plus(range, expression, weight);
    } else {
        assign(range, parse_pattern(expression), weight);
    }
}

RangePattern parse_pattern(std::string_view text) {
    if (text.empty()) {
        throw std::invalid_argument("Empty combo");
    }
    if (text.size() == 4 && is_letter(text[1]) && is_letter(text[3])) {
        return parse_exact_combo(text);
    }
    if (text.size() != 2 && text.size() != 3) {
        throw std::invalid_argument("Invalid combo pattern length");
    }
    const int first = parse_rank(text[0]);
    const int second = parse_rank(text[1]);
    RangePattern pattern{.high_rank = static_cast<std::uint8_t>(first),
                         .low_rank = static_cast<std::uint8_t>(second)};
    if (text.size() == 3) {
        switch (text[2]) {
            case 's':
            case 'S':
                pattern.suitedness = Suitedness::Suited;
                break;
            case 'o':
            case 'O':
                pattern.suitedness = Suitedness::Offsuit;
                break;
            default:
                throw std::invalid_argument("Invalid suitedness suffix");
        }
    }
    check_rank_order(first, second);
    if (first == second && text.size() == 3) {
        throw std::invalid_argument("Pair cannot have suitedness suffix");
    }
    return pattern;
}

RangePattern parse_exact_combo(std::string_view text) {
    if (text.size() != 4) {
        throw std::invalid_argument("Exact combo must contain four characters");
    }
    const Card first = parse_card(text.substr(0, 2));
    const Card second = parse_card(text.substr(2, 2));
    check_rank_order(rank_of(first), rank_of(second));
    if (first == second) {
        throw std::invalid_argument("Duplicate cards are not allowed");
    }
    return {.high_rank = static_cast<std::uint8_t>(rank_of(first)),
            .low_rank = static_cast<std::uint8_t>(rank_of(second)),
            .suitedness = Suitedness::Exact,
            .high_suit = static_cast<std::uint8_t>(suit_of(first)),
            .low_suit = static_cast<std::uint8_t>(suit_of(second))};
}

std::vector<std::uint16_t> expand_pattern(const RangePattern& pattern) {
    const bool is_pair = pattern.high_rank == pattern.low_rank;
    if (is_pair &&
        (pattern.suitedness == Suitedness::Suited || pattern.suitedness == Suitedness::Offsuit)) {
        throw std::invalid_argument("Pair cannot be suited/offsuit");
    }
    std::vector<std::uint16_t> pockets;
    const auto add = [&](int high_suit, int low_suit) {
        pockets.push_back(pocket_index(card_of(pattern.high_rank, high_suit),
                                       card_of(pattern.low_rank, low_suit)));
    };
    if (pattern.suitedness == Suitedness::Exact) {
        if (is_pair && pattern.high_suit == pattern.low_suit) {
            throw std::invalid_argument("Duplicate cards are not allowed");
        }
        add(pattern.high_suit, pattern.low_suit);
        return pockets;
    }
    for (int high_suit = 0; high_suit < suit_count; ++high_suit) {
        for (int low_suit = is_pair ? high_suit + 1 : 0; low_suit < suit_count; ++low_suit) {
            const bool suited = high_suit == low_suit;
            if (pattern.suitedness == Suitedness::Any ||
                suited == (pattern.suitedness == Suitedness::Suited)) {
                add(high_suit, low_suit);
            }
        }
    }
    return pockets;
}

void apply_plus(Range& range, std::string_view expression, float weight) {
    check_weight(weight);
    if (expression.size() < 2 || expression.back() != '+') {
        throw std::invalid_argument("Expected trailing '+'");
    }
    const RangePattern pattern = parse_pattern(expression.substr(0, expression.size() - 1));
    const int gap = pattern.high_rank - pattern.low_rank;
    if (gap > 1) {
        for (int low = pattern.low_rank; low < pattern.high_rank; ++low) {
            assign(range, pattern, pattern.high_rank, low, weight);
        }
    } else {
        for (int high = pattern.high_rank; high < rank_count; ++high) {
            assign(range, pattern, high, high - gap, weight);
        }
    }
}

void apply_dash(Range& range, std::string_view expression, float weight) {
    check_weight(weight);
    const std::size_t dash = expression.find('-');
    if (dash == std::string_view::npos) {
        throw std::invalid_argument("Expected '-' in range");
    }
    const RangePattern left = parse_pattern(expression.substr(0, dash));
    const RangePattern right = parse_pattern(expression.substr(dash + 1));
    if (left.suitedness != right.suitedness) {
        throw std::invalid_argument("Suitedness mismatch in range");
    }
    const auto [high_from, high_to] = std::minmax<int>({left.high_rank, right.high_rank});
    const auto [low_from, low_to] = std::minmax<int>({left.low_rank, right.low_rank});
    const int left_gap = left.high_rank - left.low_rank;
    const int right_gap = right.high_rank - right.low_rank;

    if (left_gap == right_gap) {
        for (int high = high_from; high <= high_to; ++high) {
            assign(range, left, high, high - left_gap, weight);
        }
        return;
    }
    if (left.high_rank == right.high_rank) {
        for (int low = low_from; low <= low_to; ++low) {
            assign(range, left, left.high_rank, low, weight);
        }
        return;
    }
    // Refuses pairs too, as they have no suffix.
    if (left.suitedness != Suitedness::Suited && left.suitedness != Suitedness::Offsuit) {
        throw std::invalid_argument("Unsupported range expression");
    }
    for (int high = high_from; high <= high_to; ++high) {
        for (int low = low_from; low <= std::min(low_to, high - 1); ++low) {
            assign(range, left, high, low, weight);
        }
    }
}

float weight_of(const Range& range, Card card_a, Card card_b) {
    return range[checked_pocket_index(card_a, card_b)];
}

void set_weight(Range& range, Card card_a, Card card_b, float weight) {
    const std::uint16_t pocket = checked_pocket_index(card_a, card_b);
    check_weight(weight);
    range[pocket] = weight;
}

bool is_suit_symmetric(const Range& range, int suit_a, int suit_b) {
    const auto swapped = [&](Card card) {
        const int suit = suit_of(card);
        const int image = suit == suit_a ? suit_b : suit == suit_b ? suit_a : suit;
        return static_cast<Card>(rank_of(card) * suit_count + image);
    };
    for (Card low = 0; low < card_count; ++low) {
        for (auto high = static_cast<Card>(low + 1); high < card_count; ++high) {
            const float weight = range[pocket_index(low, high)];
            // A NaN differs from itself, so it ends here even where the swap leaves it in place.
            if (weight != range[pocket_index(swapped(low), swapped(high))]) {
                return false;
            }
        }
    }
    return true;
}

}  // namespace kestrel
