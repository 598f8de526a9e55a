#pragma once

#include <array>
#include <memory>
#include <vector>

#include "engine/game/game.h"
#include "engine/poker/bet_size.h"
#include "engine/solver/discounted_cfr.h"
#include "session/config_map.h"
#include "session/presets.h"
#include "session/solve_config.h"

/// The spots that the benchmarks share, and rows as a running solve has them.
namespace bench {

using namespace kestrel;

inline kestrel_app::SpotInputs quick_solve() {
    return kestrel_app::parse_spot(kestrel_app::config_from_map(kestrel_app::quick_solve_preset()));
}

inline StreetSizing sizing(const char* bets, const char* raises) {
    const auto [bet_list, raise_list] = parse_bet_raise_lists(bets, raises);
    StreetSizing result{bet_list, raise_list, bet_list, raise_list, {}};
    return result;
}

/// A turn spot with every hand in both ranges and two bet sizes; raked or not.
inline kestrel_app::SpotInputs full_turn(bool raked) {
    kestrel_app::SpotInputs spot;
    const auto flop = parse_flop("AdJd8s");
    spot.board = {flop[0], flop[1], flop[2], parse_card("2c"), NO_CARD};
    for (Range& range : spot.ranges) {
        range.fill(1.0F);
    }
    spot.options.starting_street = Street::Turn;
    spot.options.starting_pot = 1000;
    spot.options.effective_stack = 6000;
    spot.options.rake_fraction = raked ? 0.05 : 0.0;
    spot.options.rake_cap = raked ? 300 : 0;
    spot.options.turn = spot.options.river = sizing("33%,75%", "50%");
    return spot;
}

inline std::unique_ptr<Game> make_game(const kestrel_app::SpotInputs& spot) {
    return std::make_unique<Game>(spot.options, CardContext(spot.board, spot.ranges));
}

inline CfrOptions options_of(bool plain, std::size_t threads = 1) {
    CfrOptions options;
    options.plain_walk = plain;
    options.threads = threads;
    return options;
}

/// A terminal with the opponent's reach row that arrives there.
struct ReachedTerminal {
    std::size_t node;
    std::vector<float> reach;
};

/// All terminals below a node with the rows of the current strategies, `seat` being traversed.
inline void collect_terminals(const Game& game, const DiscountedCfr& solver, Seat seat,
                              std::size_t node, const std::vector<float>& reach,
                              std::vector<ReachedTerminal>& result) {
    const GameNode& n = game.nodes[node];
    if (n.kind == NodeKind::Terminal) {
        result.push_back({node, reach});
        return;
    }
    ScratchFrame frame;
    const bool theirs = n.kind == NodeKind::Decision && n.seat != seat;
    if (theirs) {
        current_reach_rows(game, node, solver.states[node], reach, frame);
    }
    for (std::size_t a = 0; a < n.children.size(); ++a) {
        if (theirs) {
            const auto row =
                frame.next_reach.begin() + static_cast<std::ptrdiff_t>(a * reach.size());
            const std::vector<float> next(row, row + static_cast<std::ptrdiff_t>(reach.size()));
            collect_terminals(game, solver, seat, n.children[a], next, result);
        } else {
            collect_terminals(game, solver, seat, n.children[a], reach, result);
        }
    }
}

/// The terminals that IP's walk meets below one node of a game solved for some iterations.
template <class Wanted>
std::vector<ReachedTerminal> terminals_of_solve(const Game& game, std::uint32_t iterations,
                                                std::size_t below, Wanted wanted) {
    DiscountedCfr solver(options_of(false));
    solver.prepare_states(game);
    for (std::uint32_t t = 0; t < iterations; ++t) {
        solver.solve_iteration(game, t);
    }
    std::vector<ReachedTerminal> all;
    collect_terminals(game, solver, Seat::IP, below, game.cards.pocket_weights[0], all);
    std::erase_if(all, [&](const ReachedTerminal& t) { return !wanted(game.nodes[t.node]); });
    return all;
}

}  // namespace bench
