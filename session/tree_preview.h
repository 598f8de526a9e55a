#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <vector>

#include "engine/poker/cards.h"
#include "session/solve_config.h"

namespace kestrel_app {

/// What a size comes to where it is first wagered.
struct PlayedSize {
    std::string text;         ///< as it was entered, "50", "3x"
    std::int32_t amount = 0;  ///< the bet, or what is raised to, in hundredths of a chip
    double percent = 0;       ///< the amount over the pot of the node, as actions are named
    bool all_in = false;

    bool operator==(const PlayedSize&) const = default;
};

/// The sizes of one list that a person has entered, in its order. Empty where the list is, and
/// where it is of raises and the other seat never bets first.
struct PlayedSizes {
    kestrel::Street street = kestrel::Street::Flop;
    kestrel::Seat seat = kestrel::Seat::OOP;
    bool raises = false;
    std::vector<PlayedSize> sizes;
};

/// The betting of one street on one board.
struct StreetLines {
    kestrel::Street street = kestrel::Street::Flop;
    std::uint64_t lines = 0;  ///< ways that the betting on it can end, on all ways to come to it
    std::uint64_t decisions = 0;
};

/// What will be played, before it is solved.
struct TreePreview {
    std::vector<StreetLines> streets;  ///< from the first street that is played
    /// Of each of these streets the bets and the raises of OOP, then those of IP. A size stands
    /// with the first node where it can be wagered: a bet after nothing but checks, a raise against
    /// the other seat's smallest bet there.
    std::vector<PlayedSizes> sizes;
    bool at_least = false;  ///< there are so many lines that not all were counted
};

/// The preview of a configuration. Takes milliseconds for most, at most a second. Throws as
/// `parse_spot` and `BettingRules` do, and kestrel::BuildStopped once `stop`, which may be null, is
/// true.
TreePreview preview_tree(const SolveConfig& config, const std::atomic<bool>* stop);

}  // namespace kestrel_app
