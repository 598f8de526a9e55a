#include "cli/why.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <stdexcept>

#include "cli/columns.h"
#include "cli/format.h"
#include "cli/input_error.h"
#include "engine/poker/text.h"
#include "session/reach.h"

namespace tidewell_cli {
namespace {

using kestrel_app::Follows;
using kestrel_app::FollowUp;

constexpr std::size_t cards_shown = 3;  // of the best, and of the worst

using Line = std::vector<std::string>;  // what comes, how often, EV

Line line_of(const FollowUp& part, std::size_t depth) {
    return {std::string(2 * depth, ' ') + part.name, fixed(100.0 * part.probability, 2) + " %",
            std::isfinite(part.ev) ? fixed(part.ev / 100.0, 4) : "-"};
}

void add_lines(std::vector<Line>& lines, Follows follows, const std::vector<FollowUp>& parts,
               std::size_t depth) {
    const bool shortened = follows == Follows::deal && parts.size() > 2 * cards_shown + 1;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (shortened && i >= cards_shown && i + cards_shown < parts.size()) {
            if (i == cards_shown) {
                lines.push_back({std::string(2 * depth, ' ') + "...", "", ""});
            }
            continue;
        }
        lines.push_back(line_of(parts[i], depth));
        add_lines(lines, parts[i].follows, parts[i].parts, depth + 1);
    }
}

}  // namespace

kestrel::Pocket parse_hand(std::string_view text) {
    const std::string_view cards = kestrel::trimmed(text);
    try {
        if (cards.size() == 4) {
            const auto [low, high] = std::minmax(
                {kestrel::parse_card(cards.substr(0, 2)), kestrel::parse_card(cards.substr(2))});
            if (low != high) {
                return {low, high};
            }
        }
    } catch (const std::invalid_argument&) {
        // Told below.
    }
    throw InputError("--why takes a hand of two cards such as AhKd, not " + in_quotes(text));
}

void check_why(const kestrel::Game& game, const NodePath& path, const kestrel::Pocket& hand) {
    const kestrel::GameNode& node = game.nodes[path.node];
    if (node.kind != kestrel::NodeKind::Decision) {
        throw InputError("nobody decides behind " + line_of(game, path) +
                         ", where --why needs a decision");
    }
    const auto& pockets = game.cards.pockets[index_of(node.seat)];
    if (std::ranges::find(pockets, hand) == pockets.end() ||
        (pocket_mask(hand) & kestrel_app::board_at(game, node)) != 0) {
        throw InputError("--why: " + std::string(node.seat == kestrel::Seat::OOP ? "OOP" : "IP") +
                         " cannot hold " + kestrel::card_to_string(hand.low) +
                         kestrel::card_to_string(hand.high) + " behind " + line_of(game, path));
    }
}

WhyReport why(const kestrel_app::FinishedSolve& solve, const NodePath& path,
              const kestrel::Pocket& hand) {
    const std::string low = kestrel::card_to_string(hand.low);
    const std::string high = kestrel::card_to_string(hand.high);
    WhyReport report{low + high, {}};
    for (std::size_t a = 0; a < solve.game->nodes[path.node].actions.size(); ++a) {
        report.breakdowns.push_back(
            kestrel_app::action_breakdown(solve, path.node, low, high, a).value());
    }
    return report;
}

const char* word_of(Follows follows) {
    switch (follows) {
        case Follows::answers:
            return "answers";
        case Follows::deal:
            return "deal";
        case Follows::showdown:
            return "showdown";
        case Follows::nothing:
            break;
    }
    return "nothing";
}

void print_why(std::ostream& out, const TerminalStyle& style, const WhyReport& report,
               const std::vector<std::string>& action_names) {
    std::vector<Line> lines = {{"With " + report.hand, "Comes", "EV"}};
    for (std::size_t a = 0; a < report.breakdowns.size(); ++a) {
        const kestrel_app::ActionBreakdown& action = report.breakdowns[a];
        lines.push_back(
            {action_names[a], "", std::isfinite(action.ev) ? fixed(action.ev / 100.0, 4) : "-"});
        add_lines(lines, action.follows, action.parts, 1);
    }
    print_columns(out, style, lines);
    const bool met = std::ranges::any_of(
        report.breakdowns, [](const auto& action) { return std::isfinite(action.ev); });
    out << (met ? "  What follows each action, against the hands that this one meets.\n"
                : "  The other player never comes here with a hand that this one can meet.\n");
}

}  // namespace tidewell_cli
