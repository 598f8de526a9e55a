#pragma once

#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

namespace kestrel {

enum class SizeKind : std::uint32_t {
    PotPercent = 0,     ///< "75%": fraction of the pot after calling.
    RaiseMultiple = 1,  ///< "2.5x": multiple of the bet level on this street; raises only.
    Chips = 2,          ///< "500c", "500c3r", "500": fixed amount on top of the bet level.
    Geometric = 3,      ///< "3e", "e", "3%75e": equal pot fractions that get the stack in.
    AllIn = 4,          ///< "a": the whole stack.
};

/// One bet or raise size. Fields that do not belong to the kind are 0.
struct SizeToken {
    SizeKind kind = SizeKind::AllIn;
    double ratio = 0.0;          ///< PotPercent: fraction of the pot. RaiseMultiple: the multiple.
    double max_ratio = 0.0;      ///< Geometric: limit of the pot fraction, +infinity for none.
    std::int32_t chips = 0;      ///< Chips: hundredths of a chip.
    std::int32_t raise_cap = 0;  ///< Chips: number of raises, 0 for no cap.
    std::int32_t streets = 0;    ///< Geometric: 0 means the streets left at the decision.

    bool operator==(const SizeToken&) const = default;
};

/// The numbers of one decision that a size depends on. Amounts are hundredths of a chip.
struct SizeContext {
    std::int32_t pot_after_call = 0;  ///< The pot once the player to act has called.
    std::int32_t street_bet = 0;      ///< Bet level on this street, 0 when nobody has bet.
    std::int32_t max_raise_to = 0;    ///< Highest total to bet or raise to.
    std::int32_t min_raise_to = 0;    ///< Lowest total to bet or raise to.
    std::int32_t streets_left = 0;    ///< 3 on the flop, 2 on the turn, 1 on the river.
    double stack_to_pot = 0.0;        ///< The opponent's stack over pot_after_call.
};

/// Number of the whole text as strtod reads it, so exponents, "inf" and "nan" count and an
/// underflow gives the value that strtod gives. Throws std::invalid_argument
/// "Failed to parse floating-point number from '<text>' (hex=<its bytes>)" for no number, leading
/// white space, an overflow, or characters left over.
double parse_decimal(std::string_view text);

/// Decimal number of the whole text. Throws std::invalid_argument
/// "Failed to parse integer from '<text>'" for no number, leading white space, an overflow of
/// 64 bits, or characters left over; std::out_of_range "Integer value is out of range" beyond
/// 32 bits.
std::int32_t parse_integer(std::string_view text);

/// Size of one token, letters in either case. `allow_relative` is true in a raise list; a bet list
/// has neither multiples nor raise caps. Throws std::invalid_argument "Empty bet size token",
/// "Relative raise (x) is not allowed in this context", "Relative raise must exceed 1.0x",
/// "Raise cap is only valid for raises", "Raise cap must end with 'r'",
/// "Raise cap must be positive", "Geometric streets must be positive", or as parse_decimal and
/// parse_integer do.
SizeToken parse_size_token(std::string_view text, bool allow_relative);

/// Sizes of a comma list in the order of the text; empty pieces are skipped. Throws as
/// parse_size_token does at the first bad token.
std::vector<SizeToken> parse_size_list(std::string_view text, bool allow_relative);

/// The bet list and the raise list of one seat and street. Throws as parse_size_list does.
std::pair<std::vector<SizeToken>, std::vector<SizeToken>> parse_bet_raise_lists(
    std::string_view bet_text, std::string_view raise_text);

/// The list of a donk bet, read as a bet list. Throws as parse_size_list does.
std::vector<SizeToken> parse_donk_list(std::string_view bet_text);

/// max(min_raise_to, min(x, max_raise_to)) where x is `amount` to the nearest whole number, halves
/// away from zero. An amount above 32 bits, or NaN, counts as max_raise_to. Hundredths of a chip.
std::int32_t clamp_amount(double amount, std::int32_t min_raise_to, std::int32_t max_raise_to);

/// Total to bet or raise to on this street, hundredths of a chip. Pot fractions are taken without
/// the bet level, so a raise by PotPercent is for the caller to place on top of it.
std::int32_t resolve_size(const SizeToken& token, const SizeContext& context);

}  // namespace kestrel
