#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "session/finished_solve.h"

namespace kestrel_app {

/// The hands of one seat that come to a node, by rising cards, and how each fares there against
/// what the other seat comes with.
struct SeatDistribution {
    std::vector<std::string> hands;  ///< "2c3d"
    std::vector<double> ev;          ///< hundredths of a chip, from zero
    std::vector<double> equity;      ///< sampled; NaN where no sample could be compared
};

/// Of both seats, OOP first.
using HandDistributions = std::array<SeatDistribution, 2>;

/// Of any node. Nothing for an index out of range and where a seat never comes. Takes a value walk
/// for each seat and a few thousand evaluations for each hand. The same node always gives the same
/// numbers. Nothing, too, after the next walk or sampling once `stop`, which may be null, is true.
std::optional<HandDistributions> hand_distributions(const FinishedSolve& solve, std::uint64_t node,
                                                    const std::atomic<bool>* stop = nullptr);

}  // namespace kestrel_app
