#include "session/action_names.h"

#include <cstdio>

#include "engine/poker/cards.h"

namespace kestrel_app {
namespace {

using kestrel::Action;
using kestrel::ActionKind;

std::string sized(const char* word, const Action& action, std::int32_t pot) {
    if (pot < 1) {
        return word;
    }
    const double percent = static_cast<double>(action.amount) / pot * 100.0;
    char number[32];
    std::snprintf(number, sizeof number, " %.0f%%", percent);
    return std::string(word) + number;
}

}  // namespace

std::string action_display_name(const Action& action, std::int32_t pot) {
    switch (action.kind) {
        case ActionKind::check:
            return "Check";
        case ActionKind::call:
            return "Call";
        case ActionKind::fold:
            return "Fold";
        case ActionKind::allin:
            return "All-In";
        case ActionKind::chance:
            return kestrel::card_to_string(static_cast<kestrel::Card>(action.amount));
        case ActionKind::bet:
            return sized("Bet", action, pot);
        case ActionKind::raise:
            return sized("Raise", action, pot);
        case ActionKind::none:
            break;
    }
    return "Action";
}

std::string action_type_name(const Action& action, std::int32_t pot) {
    switch (action.kind) {
        case ActionKind::check:
            return "check";
        case ActionKind::call:
            return "call";
        case ActionKind::fold:
            return "fold";
        case ActionKind::allin:
            return "allin";
        case ActionKind::chance:
            return "chance";
        case ActionKind::bet:
            return sized("bet", action, pot);
        case ActionKind::raise:
            return sized("raise", action, pot);
        case ActionKind::none:
            break;
    }
    return "none";
}

std::int32_t naming_pot(const kestrel::Game& game, std::uint64_t node) {
    const std::int32_t starting_pot = game.options.starting_pot;
    const std::int32_t pot = game.nodes[node].pot;
    if (node == 0) {
        return starting_pot >= 1 ? starting_pot : pot;
    }
    return pot > 0 ? pot : starting_pot;
}

}  // namespace kestrel_app
