#pragma once

#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "engine/game/game.h"

namespace kestrel {

// Values of terminal nodes, for all hands of a seat at once and in time linear in the hands: what
// a hand cannot face because it shares a card is taken back out of running totals through per-card
// sums. `reach` has one entry for each pocket of the other seat, `out` one for each pocket of
// `seat`. Values are in hundredths of a chip per unit of combination mass, against an even split
// of the pot: the winner gets half the pot less the rake, the loser pays half the pot, a tie costs
// each half the rake. Rake is taken at every terminal, folds included.
//
// Rows of another length, and showdowns without a table, give a row of zeros. Pure functions of
// constant game data: any thread may call them. Only `incomplete` allocates.

/// What a terminal pays per unit of combination mass.
struct TerminalPayoffs {
    double win = 0;
    double lose = 0;
    double tie = 0;
};

/// How a showdown is worked out and what it pays.
struct ShowdownRule {
    bool raked = false;  ///< a tie is worth something
    TerminalPayoffs payoffs;
};

/// The rake of a pot in hundredths of a chip: the fraction of it, up to the cap; a cap of 0 is
/// none.
double rake_of(const PlanOptions& options, double pot);

/// Payoffs of a pot; all zero when the ranges cannot meet.
TerminalPayoffs payoffs_of(const Game& game, double pot);

/// The chips that a terminal is played for: what was not matched has gone back.
double matched_pot(const Game& game, const GameNode& node);

/// What a fold pays `seat`, rounded to f32.
double fold_payoff(const Game& game, const GameNode& node, Seat seat);

/// The rule of a showdown on one complete board: of a terminal with a complete board itself, and
/// of one run-out of an all-in.
ShowdownRule showdown_rule(const Game& game, const GameNode& node);
ShowdownRule runout_rule(const Game& game, const GameNode& node);

/// The value of a terminal node, whole, whether it is a fold, a showdown, or an all-in with cards
/// to come.
void terminal_eval(const Game& game, const GameNode& node, Seat seat, std::span<const float> reach,
                   std::span<float> out);

/// A fold: every live hand of `seat` gets `payoff` for each unit of reach that it does not block.
/// Writes only the positions that the node's board leaves alive.
void fold(const Game& game, const GameNode& node, Seat seat, double payoff,
          std::span<const float> reach, std::span<float> out);

/// One run-out's showdown, by `showdown_r` when the pot is raked, otherwise by `showdown_u`. False,
/// with `out` untouched, when the board is not complete or the node has no table; the three write
/// only the positions of live hands.
bool showdown(const Game& game, const GameNode& node, Seat seat, std::span<const float> reach,
              std::span<float> out);

/// Without rake a tie is worth nothing, so one rising pass adds what a hand beats and one falling
/// pass what beats it.
bool showdown_u(const Game& game, const GameNode& node, Seat seat, const TerminalPayoffs& payoffs,
                std::span<const float> reach, std::span<float> out);

/// With rake: one rising pass with two running sums, below and up to the current strength.
bool showdown_r(const Game& game, const GameNode& node, Seat seat, const TerminalPayoffs& payoffs,
                std::span<const float> reach, std::span<float> out);

/// The pairs of turn and river that complete a node's board, in rising order.
std::vector<std::pair<Card, Card>> runouts_of(const Game& game, const GameNode& node);

/// What an all-in's sum over its run-outs is divided by, where that is not the number of run-outs
/// that both seats have hands on. With `exact_all_in` it is the number that a pair of hands can
/// really meet, those without its four cards, the same for every pair: 990 behind a flop, 44 behind
/// a turn.
std::optional<float> runout_divisor(const Game& game, const GameNode& node);

/// An all-in before the river: the sum of the showdowns over all run-outs of the undealt cards,
/// 1176 behind a flop and 48 behind a turn, over their number or `runout_divisor`.
void incomplete(const Game& game, const GameNode& node, Seat seat, std::span<const float> reach,
                std::span<float> out);

}  // namespace kestrel
