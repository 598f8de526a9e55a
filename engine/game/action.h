#pragma once

#include <cstdint>

namespace kestrel {

enum class ActionKind : std::uint8_t { none, fold, check, call, bet, raise, allin, chance };

/// `amount` in hundredths of a chip: for bet, raise and allin the total for the street (the
/// raise-to amount), for call the chips to call, 0 for fold and check. For chance the card code.
struct Action {
    ActionKind kind = ActionKind::none;
    std::int32_t amount = 0;

    bool operator==(const Action&) const = default;
};

}  // namespace kestrel
