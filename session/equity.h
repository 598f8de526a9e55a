#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <span>
#include <vector>

#include "engine/game/card_context.h"
#include "engine/poker/cards.h"

namespace kestrel_app {

// Equity is the chance to win at showdown with no further betting, a tie counting as half; NaN
// where no pair of hands can be compared. Sampled figures are the same on every machine: the
// generator's sequence is fixed by the C++ standard, and what is drawn from it is worked out here.

/// Hands with how often each is held; weights that are not finite and above 0 count as 0.
struct WeightedHands {
    std::span<const kestrel::Pocket> pockets;
    std::span<const double> weights;  ///< aligned with `pockets`
};

/// Equity of one range against another on a dealt board by comparing every pair. `weights`: one for
/// each position of the seats' lists, the seat's own first.
double exact_equity(const kestrel::CardContext& cards, kestrel::Seat seat, kestrel::Card turn,
                    kestrel::Card river, std::span<const double> own_weights,
                    std::span<const double> their_weights);

/// The same from `samples` deals of both hands and of the cards that are to come (`NO_CARD`). NaN
/// also for lists that are empty or differ in length from their weights.
double monte_carlo_equity(std::mt19937& generator, std::span<const kestrel::Card> flop,
                          kestrel::Card turn, kestrel::Card river, const WeightedHands& hero,
                          const WeightedHands& opponent, std::size_t samples);

/// Equity of each hero hand against the opposing range: every sample, one run-out and one opposing
/// hand, is compared with all of them.
std::vector<double> shared_sample_equity(std::mt19937& generator,
                                         std::span<const kestrel::Card> flop, kestrel::Card turn,
                                         kestrel::Card river,
                                         std::span<const kestrel::Pocket> heroes,
                                         const WeightedHands& opponent, std::size_t samples);

}  // namespace kestrel_app
