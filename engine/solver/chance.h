#pragma once

#include <cstddef>
#include <span>

#include "engine/game/game.h"
#include "engine/solver/scratch_stack.h"

namespace kestrel {

/// The number of cards that can still come for a pair of pockets and a board: 45 when the turn is
/// dealt, 44 when the river is, whatever the number of children.
float chance_factor(const GameNode& node);

/// Whether the deals of a chance node are worth spreading over threads, by the cards dealt and the
/// hands of the traversed seat.
bool worth_fanning_out(std::size_t cards, std::size_t hands);

/// frame.chance_reach = reach over the chance factor, by an f32 reciprocal.
void scale_chance_reach(const GameNode& node, std::span<const float> reach, ScratchFrame& frame);

/// Lists in `unique_children` the first position of each child of a node whose child list repeats
/// some, and in `child_alias` for each position the first one that holds the same child.
void find_unique_children(const GameNode& node, ScratchFrame& frame);

/// Copies the evaluated rows of `child_values` to the positions that repeat their child.
void copy_repeated_rows(ScratchFrame& frame, std::size_t width);

/// out = sum of the children's rows in `child_values`, each once in child order, and then once more
/// for each card that a child stands for, with the hands of `seat` exchanged that the renaming of
/// suits exchanges. One thread, always the same order of additions.
void aggregate_children(const Game& game, const GameNode& node, Seat seat, ScratchFrame& frame,
                        std::span<float> out);

}  // namespace kestrel
