#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "engine/poker/cards.h"

namespace kestrel {

/// Weights in [0, 1] by pocket number; 0 means that the pocket is not in the range.
using Range = std::array<float, pocket_count>;

enum class Suitedness : std::uint32_t { Any = 0, Suited = 1, Offsuit = 2, Exact = 3 };

/// One hand pattern such as "AA", "AKs" or "AhKh".
struct RangePattern {
    std::uint8_t high_rank = 0;
    std::uint8_t low_rank = 0;  ///< Never above high_rank.
    Suitedness suitedness = Suitedness::Any;
    std::uint8_t high_suit = 0;  ///< Of the first card; 0 unless Exact.
    std::uint8_t low_suit = 0;   ///< Of the second card; 0 unless Exact.

    bool operator==(const RangePattern&) const = default;
};

/// Range of a comma list of items, applied from left to right over an all-zero table: a later item
/// overwrites an earlier one pocket by pocket. White space and empty items are skipped, so an empty
/// text gives the all-zero table. Throws as apply_range_item does at the first bad item.
Range parse_range(std::string_view text);

/// Writes one item into the table: a pattern, a plus form ("TT+") or a dash form ("A5s-A2s"),
/// each with an optional ":weight" (1 without). Throws std::invalid_argument
/// "Weight string is empty", "invalid stof argument", "Weight string contains invalid characters",
/// "Weight must be within [0, 1]" (also NaN), "Missing range expression", or as parse_pattern,
/// apply_plus and apply_dash do; std::out_of_range "stof argument out of range" for a weight that
/// overflows or underflows a float.
void apply_range_item(Range& range, std::string_view item);

/// Pattern of two ranks with an optional "s" or "o", or of an exact combo; letters in either case.
/// Throws std::invalid_argument "Empty combo", "Invalid combo pattern length",
/// "Invalid suitedness suffix", "First rank must be >= second rank",
/// "Pair cannot have suitedness suffix", or as parse_rank and parse_exact_combo do.
RangePattern parse_pattern(std::string_view text);

/// Exact pattern of rank, suit, rank, suit, the higher rank first. Throws std::invalid_argument
/// "Exact combo must contain four characters", "First rank must be >= second rank",
/// "Duplicate cards are not allowed", or as parse_rank and parse_suit do.
RangePattern parse_exact_combo(std::string_view text);

/// Pocket numbers of a pattern: 6 for a pair, 16, 4 or 12 for two ranks, 1 if exact. Throws
/// std::invalid_argument "Pair cannot be suited/offsuit" for a suited or offsuit pair and
/// "Duplicate cards are not allowed" for an exact pair of one card with itself; std::out_of_range
/// "Card code must be in [0, 52)" for a rank or suit that does not exist.
std::vector<std::uint16_t> expand_pattern(const RangePattern& pattern);

/// Writes a plus form. A pair or a hand of neighbouring ranks climbs with both ranks up to the ace
/// ("TT+", "T9s+"); otherwise the low rank climbs to just below the high one ("A5s+"). Throws
/// std::invalid_argument "Expected trailing '+'" without a "+" or a pattern before it,
/// "Weight must be within [0, 1]", or as parse_pattern does.
void apply_plus(Range& range, std::string_view expression, float weight);

/// Writes a dash form, whose two sides may stand in either order and whose suits are the left
/// side's: a ladder of equal gaps ("99-66", "T9s-65s"), one high card with a run of low ones
/// ("A5s-A2s"), or, suited and offsuit only, a block ("AQs-KTs"). Throws std::invalid_argument
/// "Expected '-' in range", "Suitedness mismatch in range", "Unsupported range expression",
/// "Weight must be within [0, 1]", or as parse_pattern and expand_pattern do.
void apply_dash(Range& range, std::string_view expression, float weight);

/// Weight of two cards in either order. Throws std::out_of_range "Card code must be in [0, 52)",
/// std::invalid_argument "Cards must differ".
float weight_of(const Range& range, Card card_a, Card card_b);

/// Sets the weight of two cards in either order. Throws as weight_of does, and
/// std::invalid_argument "Weight must be within [0, 1]" (also NaN).
void set_weight(Range& range, Card card_a, Card card_b, float weight);

/// Whether the range stays the same when two suits, each in [0, 4), swap names. A NaN anywhere
/// gives false.
bool is_suit_symmetric(const Range& range, int suit_a, int suit_b);

}  // namespace kestrel
