#include "cli/line_walk.h"

#include <algorithm>
#include <cstdio>
#include <optional>

#include "cli/format.h"
#include "cli/input_error.h"
#include "engine/poker/text.h"
#include "session/action_names.h"

namespace tidewell_cli {
namespace {

using kestrel::Action;
using kestrel::ActionKind;
using kestrel::Card;
using kestrel::Game;
using kestrel::GameNode;
using kestrel::NodeKind;

std::string folded(std::string_view text) {
    return kestrel::lower_case(kestrel::without_white_space(text));
}

std::string name_of(const Game& game, std::uint64_t node, std::size_t action) {
    return kestrel_app::action_display_name(game.nodes[node].actions[action],
                                            kestrel_app::naming_pot(game, node));
}

bool is_deal(const GameNode& node) {
    return !node.actions.empty() && node.actions.front().kind == ActionKind::chance;
}

std::optional<Card> card_in(std::string_view text) {
    try {
        return kestrel::parse_card(text);
    } catch (const std::invalid_argument&) {
        return std::nullopt;
    }
}

/// For a card that a deal leaves out because a child stands for it, that child's card.
std::optional<Card> representative(const Game& game, const GameNode& node, Card card) {
    const kestrel::SuitIsomorphism& suits = game.cards.isomorphism;
    const std::vector<Card>& skipped =
        node.turn == kestrel::NO_CARD
            ? suits.turn_cards
            : suits.river_cards[static_cast<std::size_t>(kestrel::suit_of(node.turn))];
    const std::vector<std::uint8_t>& children = game.references(node);
    const auto found = std::ranges::find(skipped, card);
    const auto place = static_cast<std::size_t>(found - skipped.begin());
    if (found == skipped.end() || place >= children.size()) {
        return std::nullopt;
    }
    return static_cast<Card>(node.actions[children[place]].amount);
}

/// How the position of a choice is named where names are not enough.
std::string numbered(std::size_t action) {
    return "#" + std::to_string(action + 1);
}

std::size_t find_step(const Game& game, const NodePath& path, std::string_view step) {
    const GameNode& node = game.nodes[path.node];
    const std::string wanted = folded(step);
    const std::string place = " behind " + line_of(game, path);
    if (node.actions.empty()) {
        throw InputError("the hand is over" + place + ", " + in_quotes(step) + " cannot follow");
    }

    std::vector<std::size_t> matches;
    for (std::size_t a = 0; a < node.actions.size(); ++a) {
        if (wanted == folded(name_of(game, path.node, a)) || wanted == numbered(a)) {
            matches.push_back(a);
        }
    }
    if (matches.size() == 1) {
        return matches.front();
    }
    if (matches.size() > 1) {
        std::string list;
        for (const std::size_t a : matches) {
            list += (list.empty() ? "" : ", ") + numbered(a) + " to " +
                    chips(node.actions[a].amount) + " chips";
        }
        throw InputError(in_quotes(step) + place + " has several meanings: " + list +
                         "; write the number for the one you mean");
    }
    if (const auto card = card_in(wanted); card && is_deal(node)) {
        if (const auto other = representative(game, node, *card)) {
            throw InputError(in_quotes(step) + place + " plays like another suit: name " +
                             kestrel::card_to_string(*other) + " instead");
        }
        throw InputError(in_quotes(step) + place + " is on the board already");
    }
    throw InputError("there is no " + in_quotes(step) + place +
                     "; choices: " + choices_at(game, path.node));
}

const char* kind_text(const GameNode& node) {
    if (node.kind == NodeKind::Decision) {
        return node.seat == kestrel::Seat::OOP ? "OOP" : "IP";
    }
    if (node.kind == NodeKind::Chance) {
        return "deal";
    }
    if (node.last_action == ActionKind::fold) {
        return "fold";
    }
    return node.runout_pending ? "all-in" : "showdown";
}

void list_below(std::ostream& out, const Game& game, NodePath& path, std::size_t depth) {
    const GameNode& node = game.nodes[path.node];
    char head[64];
    std::snprintf(head, sizeof head, "%9llu  %-8s  %9s  ",
                  static_cast<unsigned long long>(path.node), kind_text(node),
                  chips(node.pot).c_str());
    out << head << line_of(game, path) << '\n';
    if (path.steps.size() == depth || !out) {  // or nobody reads on
        return;
    }
    const std::uint64_t here = path.node;
    for (std::size_t a = 0; a < node.children.size(); ++a) {
        path.steps.push_back({here, a});
        path.node = node.children[a];
        list_below(out, game, path, depth);
        path.steps.pop_back();
    }
    path.node = here;
}

}  // namespace

NodePath walk_line(const Game& game, std::string_view line) {
    NodePath path;
    if (folded(line) == "root") {
        return path;
    }
    for (std::size_t begin = 0; begin <= line.size();) {
        const std::size_t end = std::min(line.find('/', begin), line.size());
        const std::string_view step = kestrel::trimmed(line.substr(begin, end - begin));
        begin = end + 1;
        if (step.empty()) {
            continue;
        }
        const std::size_t action = find_step(game, path, step);
        path.steps.push_back({path.node, action});
        path.node = game.nodes[path.node].children[action];
    }
    return path;
}

std::string line_of(const Game& game, const NodePath& path) {
    if (path.steps.empty()) {
        return "root";
    }
    std::string line;
    for (const kestrel_app::PathStep& step : path.steps) {
        line += (line.empty() ? "" : "/") + name_of(game, step.node, step.action);
    }
    return line;
}

std::string choices_at(const Game& game, std::uint64_t node) {
    std::string list;
    for (std::size_t a = 0; a < game.nodes[node].actions.size(); ++a) {
        list += (a == 0 ? "" : ", ") + name_of(game, node, a);
    }
    return list;
}

void list_nodes(std::ostream& out, const Game& game, std::size_t depth) {
    out << "    index  kind            pot  line\n";
    NodePath path;
    list_below(out, game, path, depth);
}

}  // namespace tidewell_cli
