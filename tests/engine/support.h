#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <random>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "engine/game/game.h"
#include "engine/poker/bet_size.h"
#include "engine/poker/evaluator.h"
#include "engine/poker/range.h"
#include "engine/solver/discounted_cfr.h"

namespace kestrel {

/// Sizing texts of one street. What is empty offers nothing.
struct Sizes {
    std::string_view oop_bets = {};
    std::string_view oop_raises = {};
    std::string_view ip_bets = {};
    std::string_view ip_raises = {};
    std::optional<std::string_view> donk = std::nullopt;
};

inline Sizes both(std::string_view bets, std::string_view raises = {}) {
    return {bets, raises, bets, raises, std::nullopt};
}

/// A spot as a player would write it; the street follows from the board.
struct Spot {
    std::string_view board = {};
    std::string oop = "AA";
    std::string ip = "KK";
    std::int32_t pot = 1000;  ///< hundredths of a chip, as all amounts
    std::int32_t stack = 10000;
    Sizes flop = {};
    Sizes turn = {};
    Sizes river = {};
    double rake = 0;
    double rake_cap = 0;
};

/// Ranges of the preset spot on AdJd8s.
inline constexpr std::string_view preset_oop =
    "88+,A8s+,A5s,A4s,A3s-A2s:0.5,AJo+,ATo,K9s+,KQo,KJo:0.75,KTo:0.25,Q9s+,QJo:0.5,J8s+,JTo:0.25,"
    "T8s+,T7s:0.45,97s+,96s:0.45,87s,86s:0.75,85s:0.45,75s+:0.75,65s:0.75,64s:0.5,54s:0.75,53s:0.5,"
    "43s:0.5,32s:0.45,A9o:0.5,K8s:0.5,Q8s:0.5,77:0.5,66:0.5,55:0.25";
inline constexpr std::string_view preset_ip =
    "AA:0.25,99-22,AJs-A6s,A5s-A4s:0.5,A3s-A2s,AQo-A7o,K2s+,K9o+,Q4s+,Q3s-Q2s:0.5,Q9o+,J6s+,J9o+,"
    "T6s+,T9o,96s+,95s:0.5,98o,86s+,85s:0.5,75s+,74s:0.5,64s+,63s:0.5,54s,53s:0.5,43s,QQ:0.25,"
    "JJ:0.25,TT:0.5,A5o:0.5,A4o:0.5,J5s:0.5,T5s:0.5";

inline CardMask mask_of(std::span<const Card> cards) {
    CardMask mask = 0;
    for (const Card card : cards)
        mask |= card_bit(card);
    return mask;
}

inline Board board_from(std::string_view text) {
    Board board;
    board.fill(NO_CARD);
    for (std::size_t i = 0; 2 * i < text.size(); ++i) {
        board.at(i) = parse_card(text.substr(2 * i, 2));
    }
    return board;
}

inline Pocket pocket_from(std::string_view text) {
    return pocket_from_index(
        pocket_index(parse_card(text.substr(0, 2)), parse_card(text.substr(2))));
}

inline StreetSizing sizing_from(const Sizes& sizes) {
    StreetSizing result;
    std::tie(result.oop_bets, result.oop_raises) =
        parse_bet_raise_lists(sizes.oop_bets, sizes.oop_raises);
    std::tie(result.ip_bets, result.ip_raises) =
        parse_bet_raise_lists(sizes.ip_bets, sizes.ip_raises);
    if (sizes.donk) {
        result.donk_sizes = parse_donk_list(*sizes.donk);
    }
    return result;
}

inline PlanOptions options_from(const Spot& spot) {
    PlanOptions options;
    options.starting_street = spot.board.size() == 10  ? Street::River
                              : spot.board.size() == 8 ? Street::Turn
                                                       : Street::Flop;
    options.starting_pot = spot.pot;
    options.effective_stack = spot.stack;
    options.rake_fraction = spot.rake;
    options.rake_cap = spot.rake_cap;
    options.flop = sizing_from(spot.flop);
    options.turn = sizing_from(spot.turn);
    options.river = sizing_from(spot.river);
    return options;
}

inline CardContext cards_from(const Spot& spot) {
    return {board_from(spot.board), {parse_range(spot.oop), parse_range(spot.ip)}};
}

inline Game game_from(const Spot& spot) {
    return {options_from(spot), cards_from(spot)};
}

inline CfrOptions iterations(std::uint32_t count) {
    CfrOptions options;
    options.max_iterations = count;
    return options;
}

/// A game and a finished run on it.
struct Solved {
    Game game;
    DiscountedCfr cfr;

    Solved(const Spot& spot, CfrOptions options) : game(game_from(spot)), cfr(std::move(options)) {
        cfr.run(game);
    }
};

/// "x" check, "f" fold, "c500" call, "b500" bet, "r500" raise, "a500" all-in, "d7h" a dealt card.
inline std::string text_of(Action action) {
    std::string text(1, "?fxcbrad"[static_cast<int>(action.kind)]);
    if (action.kind == ActionKind::chance) {
        text += card_to_string(static_cast<Card>(action.amount));
    } else if (action.amount != 0) {
        text += std::to_string(action.amount);
    }
    return text;
}

inline std::string text_of(std::span<const Action> actions) {
    std::string text;
    for (const Action action : actions) {
        if (!text.empty()) text += ' ';
        text += text_of(action);
    }
    return text;
}

/// The node at the end of a path of actions, "x b500 c500 d7h"; "d" alone is the first card dealt.
inline std::size_t descend(std::span<const GameNode> nodes, std::string_view path) {
    std::size_t node = 0;
    while (!path.empty()) {
        const std::size_t end = std::min(path.find(' '), path.size());
        const std::string_view step = path.substr(0, end);
        path.remove_prefix(std::min(end + 1, path.size()));
        const GameNode& n = nodes[node];
        std::size_t a = 0;
        while (step != "d" && a < n.actions.size() && text_of(n.actions[a]) != step)
            ++a;
        if (a == n.actions.size()) {
            throw std::runtime_error(
                std::string(step).append(" is not in ").append(text_of(n.actions)));
        }
        node = n.children[a];
    }
    return node;
}

inline std::size_t position_of(const Game& game, Seat seat, std::string_view pocket) {
    const auto& pockets = game.cards.pockets[index_of(seat)];
    const auto found = std::ranges::find(pockets, pocket_from(pocket));
    if (found == pockets.end()) {
        throw std::runtime_error(std::string(pocket).append(" is not in the range"));
    }
    return static_cast<std::size_t>(found - pockets.begin());
}

/// Average probability of the action that leads to `path`, for a hand of the seat that takes it.
inline double frequency(const Solved& solved, std::string_view path, std::string_view pocket) {
    const std::size_t cut = path.rfind(' ');
    const std::string_view before = cut == path.npos ? std::string_view() : path.substr(0, cut);
    const std::size_t node = descend(solved.game.nodes, before);
    const GameNode& n = solved.game.nodes[node];
    const auto action = std::ranges::find(n.children, descend(solved.game.nodes, path));
    const auto a = static_cast<std::size_t>(action - n.children.begin());
    return solved.cfr.average_strategy(
        node)[a * solved.game.cards.pockets[index_of(n.seat)].size() +
              position_of(solved.game, n.seat, pocket)];
}

inline bool same_bits(std::span<const float> a, std::span<const float> b) {
    return a.size() == b.size() &&
           (a.empty() || std::memcmp(a.data(), b.data(), a.size_bytes()) == 0);
}

/// Whether two runs hold the same bits in every regret and strategy sum.
inline bool same_states(const StateTable& a, const StateTable& b) {
    bool same = a.size() == b.size();
    for (std::size_t i = 0; same && i < a.size(); ++i) {
        same = same_bits(a[i].regrets(), b[i].regrets()) &&
               same_bits(a[i].strategy_sum(), b[i].strategy_sum()) &&
               std::ranges::equal(a[i].regrets_packed(), b[i].regrets_packed()) &&
               std::ranges::equal(a[i].strategy_sum_packed(), b[i].strategy_sum_packed()) &&
               a[i].regrets_scale == b[i].regrets_scale &&
               a[i].strategy_sum_scale == b[i].strategy_sum_scale;
    }
    return same;
}

/// Values in [0, 1) from a fixed generator, every fifth one 0.
inline std::vector<float> random_row(std::size_t size, std::uint32_t seed) {
    std::mt19937 random(seed);
    std::vector<float> row(size);
    for (float& value : row) {
        value = random() % 5 == 0 ? 0.0F : static_cast<float>(random() >> 8) * 0x1p-24F;
    }
    return row;
}

/// Sets an environment variable for the time of a scope.
class ScopedVariable {
  public:
    ScopedVariable(const char* name, const char* value) : name_(name) { setenv(name, value, 1); }
    ~ScopedVariable() { unsetenv(name_); }
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;

  private:
    const char* name_;
};

// The plain form of every value: hand against hand, run-out by run-out, in double.

inline double plain_mass(const CardContext& cards) {
    double mass = 0;
    for (std::size_t i = 0; i < cards.pockets[0].size(); ++i) {
        for (std::size_t j = 0; j < cards.pockets[1].size(); ++j) {
            if ((pocket_mask(cards.pockets[0][i]) & pocket_mask(cards.pockets[1][j])) == 0) {
                mass += static_cast<double>(cards.pocket_weights[0][i]) *
                        static_cast<double>(cards.pocket_weights[1][j]);
            }
        }
    }
    return mass;
}

/// Values of a seat's hands at a terminal, each showdown with cards to come the mean over all
/// undealt run-outs, of which those that hit a hand count as 0.
inline std::vector<double> plain_terminal(const Game& game, const GameNode& node, Seat seat,
                                          std::span<const float> reach) {
    const auto& own = game.cards.pockets[index_of(seat)];
    const auto& theirs = game.cards.pockets[index_of(other(seat))];
    const double pot = game.options.starting_pot + 2.0 * node.matched;
    const double cap = game.options.rake_cap > 0 ? game.options.rake_cap : pot;
    const double rake = std::min(game.options.rake_fraction * pot, cap);
    const bool fold = node.last_action == ActionKind::fold;

    std::vector<Board> boards;
    const Board& flop = game.cards.board;
    const auto add_board = [&](Card turn, Card river) {
        boards.push_back({flop[0], flop[1], flop[2], turn, river});
    };
    if (fold || node.river != NO_CARD) {
        add_board(node.turn, node.river);
    } else {
        for (std::size_t index = 0; index < pocket_count; ++index) {
            const Pocket pair = pocket_from_index(index);
            const CardMask hit = pocket_mask(pair) & (mask_of(flop) | card_bit(node.turn));
            if (hit == card_bit(node.turn)) add_board(pair.low, pair.high);
        }
    }
    std::vector<double> values(own.size());
    for (const Board& board : boards) {
        const auto strengths_of = [&](const std::vector<Pocket>& pockets) {
            std::vector<std::uint32_t> result(pockets.size(), 0);  // 0: hit by the board
            for (std::size_t i = 0; i < pockets.size(); ++i) {
                if ((pocket_mask(pockets[i]) & mask_of(board)) == 0) {
                    result[i] = fold ? 1 : evaluate_hand(pockets[i], board);
                }
            }
            return result;
        };
        const auto mine = strengths_of(own);
        const auto yours = strengths_of(theirs);
        for (std::size_t i = 0; i < own.size(); ++i) {
            for (std::size_t j = 0; j < theirs.size(); ++j) {
                const bool meet = (pocket_mask(own[i]) & pocket_mask(theirs[j])) == 0;
                if (!meet || mine[i] == 0 || yours[j] == 0) continue;
                const bool wins = fold ? node.last_actor != seat : mine[i] > yours[j];
                const bool ties = !fold && mine[i] == yours[j];
                values[i] += static_cast<double>(reach[j]) *
                             (ties ? -rake / 2 : (wins ? pot / 2 - rake : -pot / 2));
            }
        }
    }
    const double mass = plain_mass(game.cards) * static_cast<double>(boards.size());
    for (double& value : values)
        value /= mass;
    return values;
}

/// The value of one pocket against one other in a game without deals, when `policy(node, position,
/// action)` is the probability of each action; per deal of the two, hundredths of a chip.
template <class Policy>
double plain_pair_value(const Game& game, std::size_t node, Seat seat, std::size_t own,
                        std::size_t theirs, const Policy& policy) {
    const GameNode& n = game.nodes[node];
    if (n.kind == NodeKind::Terminal) {
        std::vector<float> reach(game.cards.pockets[index_of(other(seat))].size());
        reach[theirs] = 1;
        return plain_terminal(game, n, seat, reach)[own] * plain_mass(game.cards);
    }
    double value = 0;
    for (std::size_t a = 0; a < n.actions.size(); ++a) {
        const double share = policy(node, n.seat == seat ? own : theirs, a);
        if (share > 0) {
            value += share * plain_pair_value(game, n.children[a], seat, own, theirs, policy);
        }
    }
    return value;
}

}  // namespace kestrel
