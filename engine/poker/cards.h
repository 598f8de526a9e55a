#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kestrel {

/// Card code: rank * 4 + suit, valid in [0, 52).
using Card = std::uint8_t;

/// Set of cards, bit c for card c.
using CardMask = std::uint64_t;

/// Stands for the absence of a card wherever one may be absent.
inline constexpr Card NO_CARD = 255;

inline constexpr int rank_count = 13;
inline constexpr int suit_count = 4;
inline constexpr std::size_t card_count = 52;
inline constexpr std::size_t pocket_count = 1326;

/// Upper-case characters of the ranks and lower-case ones of the suits, by number.
inline constexpr std::string_view rank_characters = "23456789TJQKA";
inline constexpr std::string_view suit_characters = "cdhs";
static_assert(rank_characters.size() == rank_count && suit_characters.size() == suit_count);

/// The two players. OOP acts first on every street. Tables by seat stand in this order.
enum class Seat : std::uint8_t { OOP = 0, IP = 1 };

enum class Street : std::uint8_t { Flop, Turn, River };

/// Two different cards, the lower code first.
struct Pocket {
    Card low;
    Card high;

    bool operator==(const Pocket&) const = default;
};

/// Flop 1 to 3 in the order of the text, turn, river. Turn and river may be NO_CARD.
using Board = std::array<Card, 5>;

constexpr std::size_t index_of(Seat seat) {
    return static_cast<std::size_t>(seat);
}

constexpr Seat other(Seat seat) {
    return static_cast<Seat>(static_cast<std::uint8_t>(seat) ^ std::uint8_t{1});
}

/// Rank number of a valid code, 0 (deuce) to 12 (ace).
constexpr int rank_of(Card card) {
    return card >> 2;
}

/// Suit number of a valid code, 0 to 3 in the order c, d, h, s.
constexpr int suit_of(Card card) {
    return card & 3;
}

/// The card's bit; no bit for NO_CARD. `card` is a valid code or NO_CARD.
constexpr CardMask card_bit(Card card) {
    return card == NO_CARD ? 0 : CardMask{1} << card;
}

constexpr CardMask pocket_mask(Pocket pocket) {
    return card_bit(pocket.low) | card_bit(pocket.high);
}

/// Number of the unordered pair {a, b}, two different valid codes: its place in [0, 1326) in
/// lexicographic order of (lower, higher). Not checked, as it stands in hot loops.
constexpr std::uint16_t pocket_index(Card a, Card b) {
    const int low = a < b ? a : b;
    const int high = a < b ? b : a;
    return static_cast<std::uint16_t>(low * (101 - low) / 2 - 1 + high);
}

/// Inverse of pocket_index. Throws std::out_of_range "Pocket index is out of range" for 1326 or
/// more.
Pocket pocket_from_index(std::size_t index);

/// Rank number of a character, letters in either case. Throws std::invalid_argument
/// "Invalid rank character".
int parse_rank(char character);

/// Suit number of a character, in either case. Throws std::invalid_argument "Invalid suit
/// character".
int parse_suit(char character);

/// Upper-case character of a rank number. Throws std::out_of_range "Rank is out of range" outside
/// [0, 13).
char rank_char(int rank);

namespace detail {
/// Throws std::out_of_range "Card code must be in [0, 52)".
[[noreturn]] void throw_bad_card();
}  // namespace detail

/// Throws std::out_of_range "Card code must be in [0, 52)" for a code of 52 or more.
inline void check_card(Card card) {
    if (card >= card_count) {
        detail::throw_bad_card();
    }
}

/// Card of a token of exactly two characters, rank then suit. Throws std::invalid_argument
/// "Card token must consist of two characters", or as parse_rank and parse_suit do.
Card parse_card(std::string_view token);

/// Rank character and lower-case suit character, "Ah". Throws as check_card does.
std::string card_to_string(Card card);

/// Three different cards in the order of the text; white space is dropped wherever it stands.
/// Throws std::invalid_argument "Flop string must contain exactly three cards" unless six other
/// characters remain, "Flop cards must be unique" for a repeated card, or as parse_card does.
std::array<Card, 3> parse_flop(std::string_view text);

}  // namespace kestrel
