#pragma once

#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "cli/line_walk.h"
#include "cli/terminal.h"
#include "engine/game/game.h"
#include "engine/poker/cards.h"
#include "session/action_breakdown.h"

namespace tidewell_cli {

/// What the actions of a node are made of for one hand.
struct WhyReport {
    std::string hand;                                      ///< "AhKd", the lower card first
    std::vector<kestrel_app::ActionBreakdown> breakdowns;  ///< one for each action
};

/// Reads two cards such as "AhKd", in either order. Throws InputError.
kestrel::Pocket parse_hand(std::string_view text);

/// Throws InputError where nobody decides behind the path, or not with this hand.
void check_why(const kestrel::Game& game, const NodePath& path, const kestrel::Pocket& hand);

/// Of a decision and a hand that `check_why` has passed.
WhyReport why(const kestrel_app::FinishedSolve& solve, const NodePath& path,
              const kestrel::Pocket& hand);

/// Word for what comes next: "answers", "deal", "showdown" or "nothing".
const char* word_of(kestrel_app::Follows follows);

/// For a person, under the actions' names: of a deal the best and worst cards alone.
void print_why(std::ostream& out, const TerminalStyle& style, const WhyReport& report,
               const std::vector<std::string>& action_names);

}  // namespace tidewell_cli
