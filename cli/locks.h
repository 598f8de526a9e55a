#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "engine/game/game.h"
#include "session/node_locks.h"

namespace tidewell_cli {

/// Play that is fixed from the command line: "LINE;HAND=p1,p2,...".
struct Lock {
    std::string text;          ///< as it was given
    std::string line;          ///< see `walk_line`
    std::string hand;          ///< a label such as "AKs", or "*" for every hand of the node's seat
    std::vector<float> probs;  ///< one for each action; they add up to 1
};

/// Reads a lock without a tree: the hand in either case, probabilities of any scale. Throws
/// InputError.
Lock parse_lock(std::string_view text);

/// The entries of a solve for locks on a tree, later locks behind earlier ones, and each lock's
/// line as `line_of` writes it. Throws InputError for a line that does not exist, a node where
/// nobody decides, a wrong number of probabilities, and a hand that the seat cannot hold there.
std::vector<kestrel_app::NodeLockEntry> place_locks(const kestrel::Game& game,
                                                    std::span<Lock> locks);

}  // namespace tidewell_cli
