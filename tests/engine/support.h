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
    bool exact_all_in = false;
};

/// A range of all hands.
inline constexpr std::string_view all_hands =
    "22+,A2s+,A2o+,K2s+,K2o+,Q2s+,Q2o+,J2s+,J2o+,T2s+,T2o+,92s+,92o+,82s+,82o+,72s+,72o+,62s+,62o+,"
    "52s+,52o+,42s+,42o+,32s,32o";

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
    options.exact_all_in = spot.exact_all_in;
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
            throw std::runtime_error("no such action");
        }
        node = n.children[a];
    }
    return node;
}

inline std::size_t position_of(const Game& game, Seat seat, std::string_view text) {
    const Card a = parse_card(text.substr(0, 2));
    const Card b = parse_card(text.substr(2));
    const auto& pockets = game.cards.pockets[index_of(seat)];
    const auto found = std::ranges::find(pockets, pocket_from_index(pocket_index(a, b)));
    if (found == pockets.end()) throw std::runtime_error("not in the range");
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

inline bool share_cards(const Pocket& a, const Pocket& b) {
    return (pocket_mask(a) & pocket_mask(b)) != 0;
}

inline double plain_mass(const CardContext& cards) {
    double mass = 0;
    for (std::size_t i = 0; i < cards.pockets[0].size(); ++i) {
        for (std::size_t j = 0; j < cards.pockets[1].size(); ++j) {
            if (!share_cards(cards.pockets[0][i], cards.pockets[1][j])) {
                mass += static_cast<double>(cards.pocket_weights[0][i]) *
                        static_cast<double>(cards.pocket_weights[1][j]);
            }
        }
    }
    return mass;
}

inline double plain_pot(const Game& game, const GameNode& node) {
    return game.options.starting_pot + 2.0 * node.matched;
}

/// All boards that a node's board can still become; of a fold, its own.
inline std::vector<Board> plain_boards(const Game& game, const GameNode& node) {
    Board board = game.cards.board;
    board[3] = node.turn;
    board[4] = node.river;
    if (node.last_action == ActionKind::fold || node.river != NO_CARD) {
        return {board};
    }
    std::vector<Board> boards;
    const CardMask flop = mask_of(std::span(board).first(3));
    for (std::size_t index = 0; index < pocket_count; ++index) {
        const Pocket pair = pocket_from_index(index);
        if ((pocket_mask(pair) & (flop | card_bit(node.turn))) == card_bit(node.turn)) {
            boards.push_back({board[0], board[1], board[2], pair.low, pair.high});
        }
    }
    return boards;
}

/// Values of a seat's hands at a terminal. With cards to come, the mean over all undealt run-outs,
/// of which those that hit a hand count as 0, or with `exact` over those that hit neither of two.
inline std::vector<double> plain_terminal(const Game& game, const GameNode& node, Seat seat,
                                          const std::vector<double>& reach, bool exact) {
    const auto& own = game.cards.pockets[index_of(seat)];
    const auto& theirs = game.cards.pockets[index_of(other(seat))];
    const double half = plain_pot(game, node) / 2;
    const double uncapped = game.options.rake_fraction * plain_pot(game, node);
    const double cap = game.options.rake_cap;
    const double rake = cap > 0 ? std::min(uncapped, cap) : uncapped;
    const bool fold = node.last_action == ActionKind::fold;
    const std::vector<Board> boards = plain_boards(game, node);
    const auto strengths_of = [&](const std::vector<Pocket>& pockets) {
        std::vector<std::uint32_t> result;  // by board and pocket; 0: hit by the board
        for (const Board& board : boards) {
            for (const Pocket& pocket : pockets) {
                const bool hit = (pocket_mask(pocket) & mask_of(board)) != 0;
                result.push_back(hit ? 0 : fold ? 1 : evaluate_hand(pocket, board));
            }
        }
        return result;
    };
    const auto mine = strengths_of(own);
    const auto yours = strengths_of(theirs);
    std::vector<double> values(own.size());
    for (std::size_t i = 0; i < own.size(); ++i) {
        for (std::size_t j = 0; j < theirs.size(); ++j) {
            if (share_cards(own[i], theirs[j])) continue;
            double sum = 0;
            std::size_t met = 0;
            for (std::size_t b = 0; b < boards.size(); ++b) {
                const std::uint32_t me = mine[b * own.size() + i];
                const std::uint32_t you = yours[b * theirs.size() + j];
                if (me == 0 || you == 0) continue;
                const bool wins = fold ? node.last_actor != seat : me > you;
                sum += !fold && me == you ? -rake / 2 : wins ? half - rake : -half;
                ++met;
            }
            const std::size_t count = exact ? met : boards.size();
            values[i] += met == 0 ? 0 : reach[j] * sum / static_cast<double>(count);
        }
    }
    const double mass = plain_mass(game.cards);
    for (double& value : values)
        value /= mass;
    return values;
}

/// Values of a seat's hands when both seats play their average strategies or, with `best`, the seat
/// its best response. For trees that deal every card.
inline std::vector<double> plain_walk(const Solved& solved, std::size_t index, Seat seat, bool best,
                                      const std::vector<double>& reach, bool exact) {
    const GameNode& node = solved.game.nodes[index];
    if (node.kind == NodeKind::Terminal) {
        return plain_terminal(solved.game, node, seat, reach, exact);
    }
    const auto& own = solved.game.cards.pockets[index_of(seat)];
    const auto& theirs = solved.game.cards.pockets[index_of(other(seat))];
    const bool deals = node.kind == NodeKind::Chance;
    const bool acts = !deals && node.seat == seat;
    const auto strategy = solved.cfr.average_strategy(index);
    if (deals && !solved.game.references(node).empty()) {
        throw std::logic_error("a card is left out");
    }
    std::vector<double> values(own.size(), acts && best ? -1e30 : 0);
    for (std::size_t a = 0; a < node.actions.size(); ++a) {
        const CardMask dealt = deals ? card_bit(static_cast<Card>(node.actions[a].amount)) : 0;
        std::vector<double> next = reach;
        for (std::size_t j = 0; j < next.size(); ++j) {
            if (deals) {  // 45 or 44 cards are left when two hands are known
                const bool hit = (pocket_mask(theirs[j]) & dealt) != 0;
                next[j] *= hit ? 0 : node.turn == NO_CARD ? 1.0 / 45 : 1.0 / 44;
            } else if (!acts) {
                next[j] *= static_cast<double>(strategy[a * theirs.size() + j]);
            }
        }
        const auto child = plain_walk(solved, node.children[a], seat, best, next, exact);
        for (std::size_t h = 0; h < own.size(); ++h) {
            if (acts && best) {
                values[h] = std::max(values[h], child[h]);
            } else if (acts) {
                values[h] += static_cast<double>(strategy[a * own.size() + h]) * child[h];
            } else if ((pocket_mask(own[h]) & dealt) == 0) {
                values[h] += child[h];
            }
        }
    }
    return values;
}

}  // namespace kestrel
