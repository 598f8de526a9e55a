#include "session/tree_preview.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

#include "engine/game/betting_rules.h"
#include "engine/game/tree_count.h"
#include "engine/poker/bet_size.h"
#include "engine/poker/text.h"

namespace kestrel_app {
namespace {

using kestrel::Action;
using kestrel::ActionKind;
using kestrel::BettingRules;
using kestrel::PlanOptions;
using kestrel::PlanStep;
using kestrel::Seat;
using kestrel::SizeToken;
using kestrel::Street;
using kestrel::StreetSizing;

constexpr std::array streets = {Street::Flop, Street::Turn, Street::River};

bool is_wager(const Action& action) {
    return action.kind == ActionKind::bet || action.kind == ActionKind::raise ||
           action.kind == ActionKind::allin;
}

/// Goes about the tree from its root.
class Walker {
  public:
    Walker(const PlanOptions& options, const kestrel::Board& board)
        : rules_(options, board, nullptr) {}

    /// The first decision of a street, after checks alone.
    PlanStep opening(Street street) const {
        PlanStep step = rules_.root();
        while (step.node.street != street) {
            step = checked(checked(step));
            const std::vector<Action> cards = actions(step);
            step = rules_.child_of(step, cards.at(0));
        }
        return step;
    }

    PlanStep checked(const PlanStep& step) const {
        return rules_.child_of(step, {ActionKind::check, 0});
    }

    std::optional<Action> smallest_wager(const PlanStep& step) const {
        const std::vector<Action> all = actions(step);
        const auto wager = std::ranges::find_if(all, is_wager);
        return wager == all.end() ? std::nullopt : std::optional(*wager);
    }

    PlanStep after(const PlanStep& step, const Action& action) const {
        return rules_.child_of(step, action);
    }

  private:
    std::vector<Action> actions(const PlanStep& step) const {
        BettingRules::Buffers buffers;
        rules_.list_actions(step, buffers);
        return buffers.actions;
    }

    const BettingRules rules_;
};

StreetSizing& sizing_of(PlanOptions& options, Street street) {
    return street == Street::Flop   ? options.flop
           : street == Street::Turn ? options.turn
                                    : options.river;
}

const StreetSizingText& text_of(const SolveConfig& config, Seat seat, Street street) {
    const bool oop = seat == Seat::OOP;
    switch (street) {
        case Street::Flop:
            return oop ? config.oop_flop : config.ip_flop;
        case Street::Turn:
            return oop ? config.oop_turn : config.ip_turn;
        case Street::River:
            break;
    }
    return oop ? config.oop_river : config.ip_river;
}

/// The pieces of a list that say a size.
std::vector<std::string> pieces_of(const std::string& text, bool add_all_in) {
    std::vector<std::string> pieces;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(',', begin), text.size());
        const auto piece = kestrel::trimmed(std::string_view(text).substr(begin, end - begin));
        begin = end + 1;
        if (!normalize_sizing_text(piece, false).empty()) {
            pieces.emplace_back(piece);
        }
    }
    const auto is_all_in = [](const std::string& piece) {
        return kestrel::lower_case(piece) == "a";
    };
    if (add_all_in && std::ranges::none_of(pieces, is_all_in)) {
        pieces.emplace_back("a");
    }
    return pieces;
}

/// What the seat's only size comes to, nothing where it cannot be wagered.
std::optional<PlayedSize> played(const PlanOptions& options, const kestrel::Board& board,
                                 const PlanStep& step) {
    // The step is the tree's own; only the sizes offered on it are others.
    const Walker walker(options, board);
    const std::optional<Action> wager = walker.smallest_wager(step);
    if (!wager) {
        return std::nullopt;
    }
    const double pot = step.node.pot > 0 ? step.node.pot : options.starting_pot;
    return PlayedSize{.text = {},
                      .amount = wager->amount,
                      .percent = pot > 0 ? wager->amount * 100.0 / pot : 0,
                      .all_in = wager->kind == ActionKind::allin};
}

/// The betting lines of one board, street by street.
class LineCounter {
  public:
    LineCounter(const SpotInputs& spot, const std::atomic<bool>* stop)
        : rules_(spot.options, spot.board, nullptr), stop_(stop) {}

    /// Whether all of them could be counted.
    bool count() {
        visit(rules_.root(), 0);
        return seen_ < most_seen;
    }

    StreetLines of(Street street) const {
        StreetLines lines = lines_[static_cast<std::size_t>(street)];
        lines.street = street;
        return lines;
    }

  private:
    static constexpr std::size_t most_seen = std::size_t{1} << 20;
    static constexpr std::size_t longest_line = 1000;  // as a tree may have

    void visit(const PlanStep& step, std::size_t depth) {
        if (stop_ != nullptr && stop_->load(std::memory_order_relaxed)) {
            throw kestrel::BuildStopped();
        }
        if (step.is_end() || seen_ == most_seen || depth == longest_line) {
            return;
        }
        BettingRules::Buffers buffers;
        rules_.list_actions(step, buffers);
        if (step.node.kind == kestrel::NodeKind::Terminal || buffers.actions.empty()) {
            return;  // both are all-in: no more is played
        }
        if (step.node.kind != kestrel::NodeKind::Decision) {
            visit(rules_.child_of(step, buffers.actions.front()),
                  depth + 1);  // stands for all cards
            return;
        }
        ++seen_;
        StreetLines& here = lines_[static_cast<std::size_t>(step.node.street)];
        ++here.decisions;
        for (const Action& action : buffers.actions) {
            const PlanStep child = rules_.child_of(step, action);
            here.lines += child.node.kind != kestrel::NodeKind::Decision ? 1 : 0;
            visit(child, depth + 1);
        }
    }

    const BettingRules rules_;
    const std::atomic<bool>* const stop_;
    std::array<StreetLines, 3> lines_{};
    std::size_t seen_ = 0;  // decisions
};

std::vector<PlayedSizes> played_sizes(const SolveConfig& config, const SpotInputs& spot) {
    const Walker walker(spot.options, spot.board);
    std::vector<PlayedSizes> lists;
    for (const Street street : streets) {
        if (street < spot.options.starting_street) {
            continue;
        }
        const PlanStep opening = walker.opening(street);
        const PlanStep behind = walker.checked(opening);
        for (const Seat seat : {Seat::OOP, Seat::IP}) {
            const PlanStep& bettor = seat == Seat::OOP ? opening : behind;
            const PlanStep& opponent = seat == Seat::OOP ? behind : opening;
            const std::optional<Action> faced = walker.smallest_wager(opponent);
            const StreetSizingText& text = text_of(config, seat, street);
            for (const bool raises : {false, true}) {
                PlayedSizes list = {.street = street, .seat = seat, .raises = raises, .sizes = {}};
                if (raises && !faced) {
                    lists.push_back(list);
                    continue;
                }
                const PlanStep step = raises ? walker.after(opponent, *faced) : bettor;
                for (const std::string& piece :
                     pieces_of(raises ? text.raise_sizes : text.bet_sizes, text.add_all_in)) {
                    PlanOptions only = spot.options;
                    only.jam_threshold = {};
                    StreetSizing& sizing = sizing_of(only, street);
                    const auto tokens =
                        kestrel::parse_size_list(normalize_sizing_text(piece, false), raises);
                    (seat == Seat::OOP ? raises ? sizing.oop_raises : sizing.oop_bets
                     : raises          ? sizing.ip_raises
                                       : sizing.ip_bets) = tokens;
                    if (sizing.donk_sizes && !sizing.donk_sizes->empty()) {
                        sizing.donk_sizes = sizing.oop_bets;
                    }
                    if (auto size = played(only, spot.board, step)) {
                        size->text = piece;
                        list.sizes.push_back(*size);
                    }
                }
                lists.push_back(list);
            }
        }
    }
    return lists;
}

}  // namespace

TreePreview preview_tree(const SolveConfig& config, const std::atomic<bool>* stop) {
    const SpotInputs spot = parse_spot(config, SizingErrors::plain);
    TreePreview preview;
    preview.sizes = played_sizes(config, spot);
    LineCounter counter(spot, stop);
    preview.at_least = !counter.count();
    for (const Street street : streets) {
        if (street >= spot.options.starting_street) {
            preview.streets.push_back(counter.of(street));
        }
    }
    return preview;
}

}  // namespace kestrel_app
