#include "engine/solver/terminal.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <utility>
#include <vector>

#include "engine/solver/profile.h"

namespace kestrel {
namespace {

/// A rake below this, in hundredths of a chip, is none: rounding of a pot without rake leaves less.
constexpr double negligible_rake = 1e-9;

/// The weight of a set of pockets, in all and by card.
struct CardSums {
    double total = 0;
    std::array<double, card_count> by_card{};

    void add(Pocket pocket, float weight) {
        if (weight == 0.0F) {
            return;
        }
        const double w = weight;
        total += w;
        by_card[pocket.low] += w;
        by_card[pocket.high] += w;
    }

    /// The weight that shares no card with a pocket, less the identical pocket's.
    double free_of(Pocket pocket) const {
        return total - by_card[pocket.low] - by_card[pocket.high];
    }
};

/// What both showdown walks read: the two sorted lists and the pockets of both seats.
struct Showdown {
    const std::vector<ShowdownEntry>& own;
    const std::vector<ShowdownEntry>& theirs;
    const std::vector<Pocket>& own_pockets;
    const std::vector<Pocket>& their_pockets;
    bool valid;

    Showdown(const Game& game, const GameNode& node, Seat seat, std::span<const float> reach,
             std::span<float> out)
        : Showdown(game, game.cards.showdown_table(node.turn, node.river), seat, reach, out) {}

  private:
    Showdown(const Game& game, const ShowdownTable& table, Seat seat, std::span<const float> reach,
             std::span<float> out)
        : own(table[index_of(seat)]),
          theirs(table[index_of(other(seat))]),
          own_pockets(game.cards.pockets[index_of(seat)]),
          their_pockets(game.cards.pockets[index_of(other(seat))]),
          valid(own.size() >= 3 && theirs.size() >= 3 && reach.size() == their_pockets.size() &&
                out.size() == own_pockets.size()) {}
};

/// Their hands below a strength and up to it, for strengths that rise.
class Levels {
  public:
    Levels(const Showdown& showdown, std::span<const float> reach)
        : theirs_(showdown.theirs), pockets_(showdown.their_pockets), reach_(reach) {}

    CardSums below;  ///< strictly weaker
    CardSums up_to;  ///< with the ties

    void rise_to(std::uint32_t strength) {
        const std::size_t last = theirs_.size() - 2;
        if (next_below_ < next_up_to_) {
            below = up_to;
            next_below_ = next_up_to_;
        }
        for (; next_below_ <= last && theirs_[next_below_].strength < strength; ++next_below_) {
            add(below, next_below_);
        }
        if (next_up_to_ < next_below_) {
            up_to = below;
            next_up_to_ = next_below_;
        }
        for (; next_up_to_ <= last && theirs_[next_up_to_].strength == strength; ++next_up_to_) {
            add(up_to, next_up_to_);
        }
    }

  private:
    void add(CardSums& sums, std::size_t entry) const {
        const std::size_t position = theirs_[entry].position;
        sums.add(pockets_[position], reach_[position]);
    }

    const std::vector<ShowdownEntry>& theirs_;
    const std::vector<Pocket>& pockets_;
    const std::span<const float> reach_;
    std::size_t next_below_ = 1;  // the entries before it are in `below`; the first is a sentinel
    std::size_t next_up_to_ = 1;
};

float same_reach(const Game& game, Seat seat, std::size_t position, std::span<const float> reach) {
    const std::uint16_t twin = game.cards.same_pocket[index_of(seat)][position];
    return twin < reach.size() ? reach[twin] : 0.0F;
}

/// The positions of a seat that a node's dealt cards leave alive.
const std::vector<std::uint16_t>& live_positions(const Game& game, const GameNode& node,
                                                 Seat seat) {
    const CardContext& cards = game.cards;
    const std::size_t s = index_of(seat);
    if (node.turn == NO_CARD) {
        return cards.all_positions[s];
    }
    return node.river == NO_CARD ? cards.valid_by_card[node.turn][s]
                                 : cards.valid_by_pair[pocket_index(node.turn, node.river)][s];
}

void clear_blocked(const Game& game, const GameNode& node, Seat seat, std::span<float> out) {
    if (node.turn == NO_CARD || node.river == NO_CARD) {
        std::ranges::fill(out, 0.0F);
        return;
    }
    const std::size_t pair = pocket_index(node.turn, node.river);
    if (game.cards.valid_by_pair[pair][index_of(seat)].empty()) {
        std::ranges::fill(out, 0.0F);  // no live hand, or a pair that the board rules out
        return;
    }
    for (const std::uint16_t position : game.cards.blocked_by_pair[pair][index_of(seat)]) {
        out[position] = 0.0F;
    }
}

}  // namespace

double rake_of(const PlanOptions& options, double pot) {
    const double rake = options.rake_fraction > 0 ? pot * options.rake_fraction : 0.0;
    return options.rake_cap > 0 ? std::min(rake, options.rake_cap) : rake;
}

TerminalPayoffs payoffs_of(const Game& game, double pot) {
    const double mass = game.cards.combination_mass;
    if (!(mass > 0)) {
        return {};
    }
    const double half = pot * 0.5;
    const double rake = rake_of(game.options, pot);
    return {(half - rake) / mass, -half / mass, -0.5 * rake / mass};
}

double matched_pot(const Game& game, const GameNode& node) {
    return game.options.starting_pot + 2 * node.matched;
}

double fold_payoff(const Game& game, const GameNode& node, Seat seat) {
    const TerminalPayoffs payoffs = payoffs_of(game, matched_pot(game, node));
    return static_cast<float>(seat == node.last_actor ? payoffs.lose : payoffs.win);
}

ShowdownRule showdown_rule(const Game& game, const GameNode& node) {
    const double pot = matched_pot(game, node);
    if (std::abs(rake_of(game.options, pot)) <= negligible_rake) {
        return {false, payoffs_of(game, pot)};
    }
    return runout_rule(game, node);
}

ShowdownRule runout_rule(const Game& game, const GameNode& node) {
    const double pot = node.pot;
    const double net = pot > 0 ? std::max(pot - rake_of(game.options, pot), 0.0) : 0.0;
    if (std::abs(pot - net) > negligible_rake) {
        return {true, payoffs_of(game, pot)};
    }
    const double mass = game.cards.combination_mass;
    const double half = mass > 0 ? pot * 0.5 / mass : 0.0;
    return {false, {half, -half, 0.0}};
}

std::vector<std::pair<Card, Card>> runouts_of(const Game& game, const GameNode& node) {
    const CardMask dead = game.cards.board_mask | card_bit(node.turn) | card_bit(node.river);
    std::vector<std::pair<Card, Card>> result;
    for (Card c = 0; c < card_count; ++c) {
        if ((dead & card_bit(c)) != 0) {
            continue;
        }
        if (node.turn != NO_CARD) {
            result.emplace_back(node.turn, c);
            continue;
        }
        for (auto d = static_cast<Card>(c + 1); d < card_count; ++d) {
            if ((dead & card_bit(d)) == 0) {
                result.emplace_back(c, d);
            }
        }
    }
    return result;
}

std::optional<float> runout_divisor(const Game& game, const GameNode& node) {
    if (!game.options.exact_all_in) {
        return std::nullopt;
    }
    const auto dealt =
        std::popcount(game.cards.board_mask | card_bit(node.turn) | card_bit(node.river));
    const int unseen = static_cast<int>(card_count) - dealt - 4;
    return static_cast<float>(node.turn != NO_CARD ? unseen : unseen * (unseen - 1) / 2);
}

void terminal_eval(const Game& game, const GameNode& node, Seat seat, std::span<const float> reach,
                   std::span<float> out) {
    const ProfileScope timer(ProfileSlot::terminal_eval);
    if (reach.size() != game.cards.pockets[index_of(other(seat))].size() ||
        out.size() != game.cards.pockets[index_of(seat)].size()) {
        std::ranges::fill(out, 0.0F);
        return;
    }
    clear_blocked(game, node, seat, out);
    if (node.last_action == ActionKind::fold) {
        fold(game, node, seat, fold_payoff(game, node, seat), reach, out);
        return;
    }
    if (node.turn == NO_CARD || node.river == NO_CARD) {
        incomplete(game, node, seat, reach, out);
        return;
    }
    const ShowdownRule rule = showdown_rule(game, node);
    const bool evaluated = rule.raked ? showdown_r(game, node, seat, rule.payoffs, reach, out)
                                      : showdown_u(game, node, seat, rule.payoffs, reach, out);
    if (!evaluated) {
        std::ranges::fill(out, 0.0F);
    }
}

void fold(const Game& game, const GameNode& node, Seat seat, double payoff,
          std::span<const float> reach, std::span<float> out) {
    const ProfileScope timer(ProfileSlot::fold);
    const auto& own = live_positions(game, node, seat);
    const auto& own_pockets = game.cards.pockets[index_of(seat)];
    const auto& their_pockets = game.cards.pockets[index_of(other(seat))];
    CardSums facing;
    for (const std::uint16_t position : live_positions(game, node, other(seat))) {
        if (position < reach.size()) {
            facing.add(their_pockets[position], reach[position]);
        }
    }
    if (facing.total == 0) {
        for (const std::uint16_t position : own) {
            out[position] = 0.0F;
        }
        return;
    }
    for (const std::uint16_t position : own) {
        const Pocket pocket = own_pockets[position];
        const double same = same_reach(game, seat, position, reach);
        const double free =
            facing.total + same - facing.by_card[pocket.low] - facing.by_card[pocket.high];
        out[position] = static_cast<float>(free * payoff);
    }
}

bool showdown(const Game& game, const GameNode& node, Seat seat, std::span<const float> reach,
              std::span<float> out) {
    if (node.turn == NO_CARD || node.river == NO_CARD) {
        return false;
    }
    const ShowdownRule rule = runout_rule(game, node);
    if (rule.raked) {
        return showdown_r(game, node, seat, rule.payoffs, reach, out);
    }
    const ProfileScope timer(ProfileSlot::showdown_u);
    return showdown_u(game, node, seat, rule.payoffs, reach, out);
}

bool showdown_u(const Game& game, const GameNode& node, Seat seat, const TerminalPayoffs& payoffs,
                std::span<const float> reach, std::span<float> out) {
    const Showdown s(game, node, seat, reach, out);
    if (!s.valid) {
        return false;
    }
    const std::size_t own_last = s.own.size() - 2;
    const std::size_t their_last = s.theirs.size() - 2;

    CardSums beaten;
    for (std::size_t i = 1, j = 1; i <= own_last; ++i) {
        const ShowdownEntry& e = s.own[i];
        for (; j <= their_last && s.theirs[j].strength < e.strength; ++j) {
            const std::size_t position = s.theirs[j].position;
            beaten.add(s.their_pockets[position], reach[position]);
        }
        out[e.position] =
            static_cast<float>(beaten.free_of(s.own_pockets[e.position]) * payoffs.win);
    }

    CardSums beating;
    for (std::size_t i = own_last, j = their_last; i >= 1; --i) {
        const ShowdownEntry& e = s.own[i];
        for (; j >= 1 && s.theirs[j].strength > e.strength; --j) {
            const std::size_t position = s.theirs[j].position;
            beating.add(s.their_pockets[position], reach[position]);
        }
        out[e.position] +=
            static_cast<float>(beating.free_of(s.own_pockets[e.position]) * payoffs.lose);
    }
    return true;
}

bool showdown_r(const Game& game, const GameNode& node, Seat seat, const TerminalPayoffs& payoffs,
                std::span<const float> reach, std::span<float> out) {
    const ProfileScope timer(ProfileSlot::showdown_r);
    const Showdown s(game, node, seat, reach, out);
    if (!s.valid) {
        return false;
    }
    const std::size_t own_last = s.own.size() - 2;
    const std::size_t their_last = s.theirs.size() - 2;

    CardSums all;
    for (std::size_t i = 1; i <= their_last; ++i) {
        const std::size_t position = s.theirs[i].position;
        all.add(s.their_pockets[position], reach[position]);
    }
    if (all.total == 0) {
        for (std::size_t i = 1; i <= own_last; ++i) {
            out[s.own[i].position] = 0.0F;
        }
        return true;
    }

    Levels levels(s, reach);
    std::uint32_t current = 0;
    for (std::size_t k = 1; k <= own_last; ++k) {
        const ShowdownEntry& e = s.own[k];
        if (e.strength > current) {
            current = e.strength;
            levels.rise_to(current);
        }
        const Pocket pocket = s.own_pockets[e.position];
        const double won = levels.below.free_of(pocket);
        const double met = levels.up_to.free_of(pocket);
        const double same = same_reach(game, seat, e.position, reach);
        const double tied = met - won + same;
        const double lost = all.free_of(pocket) - met;
        out[e.position] =
            static_cast<float>(tied * payoffs.tie + won * payoffs.win + lost * payoffs.lose);
    }
    return true;
}

void incomplete(const Game& game, const GameNode& node, Seat seat, std::span<const float> reach,
                std::span<float> out) {
    const ProfileScope timer(ProfileSlot::incomplete);
    std::ranges::fill(out, 0.0F);
    if (reach.size() != game.cards.pockets[index_of(other(seat))].size() ||
        out.size() != game.cards.pockets[index_of(seat)].size()) {
        return;
    }
    std::vector<float> row(out.size());
    GameNode complete = node;
    std::size_t count = 0;
    for (const auto& [turn, river] : runouts_of(game, node)) {
        complete.turn = turn;
        complete.river = river;
        std::ranges::fill(row, 0.0F);
        if (!showdown(game, complete, seat, reach, row)) {
            continue;
        }
        for (std::size_t h = 0; h < out.size(); ++h) {
            out[h] += row[h];
        }
        ++count;
    }
    if (count == 0) {
        return;
    }
    const float share = 1.0F / runout_divisor(game, node).value_or(static_cast<float>(count));
    for (float& value : out) {
        value *= share;
    }
}

}  // namespace kestrel
