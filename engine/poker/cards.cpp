#include "engine/poker/cards.h"

#include <stdexcept>

#include "engine/poker/text.h"

namespace kestrel {

static_assert(pocket_index(0, 1) == 0 && pocket_index(0, 51) == 50 && pocket_index(1, 2) == 51 &&
              pocket_index(51, 50) == pocket_count - 1);

void detail::throw_bad_card() {
    throw std::out_of_range("Card code must be in [0, 52)");
}

int parse_rank(char character) {
    const auto place = rank_characters.find(to_upper(character));
    if (place == std::string_view::npos) {
        throw std::invalid_argument("Invalid rank character");
    }
    return static_cast<int>(place);
}

int parse_suit(char character) {
    const auto place = suit_characters.find(to_lower(character));
    if (place == std::string_view::npos) {
        throw std::invalid_argument("Invalid suit character");
    }
    return static_cast<int>(place);
}

char rank_char(int rank) {
    if (rank < 0 || rank >= rank_count) {
        throw std::out_of_range("Rank is out of range");
    }
    return rank_characters[static_cast<std::size_t>(rank)];
}

Card parse_card(std::string_view token) {
    if (token.size() != 2) {
        throw std::invalid_argument("Card token must consist of two characters");
    }
    const int rank = parse_rank(token[0]);
    return static_cast<Card>(rank * suit_count | parse_suit(token[1]));
}

std::string card_to_string(Card card) {
    check_card(card);
    return {rank_char(rank_of(card)), suit_characters[static_cast<std::size_t>(suit_of(card))]};
}

std::array<Card, 3> parse_flop(std::string_view text) {
    const std::string cards = without_white_space(text);
    if (cards.size() != 6) {
        throw std::invalid_argument("Flop string must contain exactly three cards");
    }
    std::array<Card, 3> flop{};
    for (std::size_t i = 0; i < flop.size(); ++i) {
        flop[i] = parse_card(std::string_view(cards).substr(2 * i, 2));
    }
    if (flop[0] == flop[1] || flop[0] == flop[2] || flop[1] == flop[2]) {
        throw std::invalid_argument("Flop cards must be unique");
    }
    return flop;
}

Pocket pocket_from_index(std::size_t index) {
    if (index >= pocket_count) {
        throw std::out_of_range("Pocket index is out of range");
    }
    std::size_t row_start = 0;
    for (std::size_t low = 0; low + 1 < card_count; ++low) {
        const std::size_t row_length = card_count - 1 - low;
        if (index < row_start + row_length) {
            return {static_cast<Card>(low), static_cast<Card>(low + 1 + index - row_start)};
        }
        row_start += row_length;
    }
    throw std::logic_error("Failed to resolve pocket index");
}

}  // namespace kestrel
