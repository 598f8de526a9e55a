#pragma once

#include <cstddef>
#include <optional>
#include <span>

namespace tidewell {

/// What a choice is worth beside the best one, in chips.
struct Judgement {
    double chosenEv = 0;
    double bestEv = 0;
    std::size_t bestIndex = 0;  ///< the first of equal ones

    double loss() const { return bestEv - chosenEv; }
};

/// From the values of a node's actions; those that are not finite do not count. Nothing where the
/// chosen one's is not known.
std::optional<Judgement> judge(std::span<const double> actionEvs, std::size_t chosen);

/// How much may be lost without it being a mistake.
struct Tolerance {
    double absolute = 1e-6;  ///< chips
    /// Of the larger value: in a solve that has not come to its end, actions of a mix differ by
    /// about as much.
    double relative = 0.01;
};

bool isMistake(const Judgement& judgement, const Tolerance& tolerance);

}  // namespace tidewell
