#include "engine/poker/evaluator.h"

#include <algorithm>
#include <stdexcept>

namespace kestrel {

HandStrength evaluate_hand(Pocket pocket, std::span<const Card> board) {
    if (board.size() != 5) {
        throw std::invalid_argument("Board must contain exactly 5 cards for evaluation");
    }
    std::array<Card, 7> cards{pocket.low, pocket.high};
    if (std::copy(board.begin(), board.end(), cards.begin() + 2) != cards.end()) {
        throw std::invalid_argument("Insufficient cards to evaluate hand");
    }
    return evaluate_seven(cards);
}

}  // namespace kestrel
