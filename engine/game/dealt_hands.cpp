#include "engine/game/dealt_hands.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <stdexcept>

namespace kestrel {
namespace {

double mass_of(const DealtHands& hands) {
    std::vector<CardMask> ip_masks;
    for (const Pocket pocket : hands.pockets[1]) {
        ip_masks.push_back(pocket_mask(pocket));
    }
    double mass = 0;
    for (std::size_t i = 0; i < hands.pockets[0].size(); ++i) {
        const CardMask oop_mask = pocket_mask(hands.pockets[0][i]);
        const double oop_weight = hands.pocket_weights[0][i];
        for (std::size_t j = 0; j < ip_masks.size(); ++j) {
            if ((oop_mask & ip_masks[j]) == 0) {
                mass += oop_weight * static_cast<double>(hands.pocket_weights[1][j]);
            }
        }
    }
    return mass;
}

}  // namespace

CardMask mask_of(const Board& board) {
    CardMask mask = 0;
    for (const Card card : board) {
        mask |= card_bit(card);
    }
    return mask;
}

const Board& checked_board(const Board& board) {
    const std::span flop(board.data(), 3);
    for (const Card card : flop) {
        if (card == NO_CARD) {
            throw std::invalid_argument("Flop cards must be defined");
        }
        check_card(card);
    }
    if (flop[0] == flop[1] || flop[0] == flop[2] || flop[1] == flop[2]) {
        throw std::invalid_argument("Flop cards must be unique");
    }
    const Card turn = board[3];
    const Card river = board[4];
    if (turn != NO_CARD) {
        check_card(turn);
        if (std::ranges::count(flop, turn) != 0) {
            throw std::invalid_argument("Turn conflicts with flop");
        }
    }
    if (river != NO_CARD) {
        check_card(river);
        if (std::ranges::count(flop, river) != 0 || river == turn) {
            throw std::invalid_argument("River conflicts with existing cards");
        }
        if (turn == NO_CARD) {
            throw std::invalid_argument("River cannot be dealt without a turn");
        }
    }
    return board;
}

std::vector<Pocket> runouts_on(const Board& board) {
    const CardMask flop = mask_of({board[0], board[1], board[2], NO_CARD, NO_CARD});
    const CardMask must_hold = mask_of(board) & ~flop;
    std::vector<Pocket> runouts;
    for (std::size_t index = 0; index < pocket_count; ++index) {
        const Pocket pair = pocket_from_index(index);
        const CardMask mask = pocket_mask(pair);
        if ((mask & flop) == 0 && (mask & must_hold) == must_hold) {
            runouts.push_back(pair);
        }
    }
    return runouts;
}

DealtHands deal_hands(const Board& board, const std::array<Range, 2>& weights) {
    const CardMask board_mask = mask_of(board);
    DealtHands hands;
    for (std::size_t seat = 0; seat < 2; ++seat) {
        for (std::size_t index = 0; index < pocket_count; ++index) {
            const float weight = weights[seat][index];
            const Pocket pocket = pocket_from_index(index);
            if (weight > 0 && (pocket_mask(pocket) & board_mask) == 0) {
                hands.pockets[seat].push_back(pocket);
                hands.pocket_weights[seat].push_back(weight);
            }
        }
        if (hands.pockets[seat].empty()) {
            throw std::invalid_argument("Player range empty after filtering board cards");
        }
        hands.pockets[seat].shrink_to_fit();
        hands.pocket_weights[seat].shrink_to_fit();
    }
    hands.isomorphism = find_suit_isomorphism(board, weights, hands.pockets);
    hands.combination_mass = mass_of(hands);
    return hands;
}

}  // namespace kestrel
