#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "engine/game/card_context.h"

namespace kestrel {

class WorkerPool;

/// A hand of a showdown walk: all that the inner loop reads of it, in four bytes.
struct ShowdownItem {
    std::uint16_t position;
    Card low;
    Card high;
};

/// Where a level of equal strength ends in each seat's list of items.
using LevelEnd = std::array<std::uint16_t, 2>;

/// The showdown order of one complete board: per seat the live hands by strength and position, cut
/// into levels that hold both seats' hands of one strength. No hand on one side: no levels.
struct BoardOrder {
    std::array<std::span<const ShowdownItem>, 2> items;
    std::span<const LevelEnd> levels;
};

/// The orders of all boards of a spot: the showdown tables in the form that the batched walk reads,
/// half their size.
class ShowdownOrders {
  public:
    /// Replaces the content; in parallel over the boards. `cards` is read during the call only.
    void build(const CardContext& cards, WorkerPool* pool, std::size_t threads);

    /// By pocket number of the turn-river pair.
    const BoardOrder& operator[](std::size_t pair) const { return orders_[pair]; }

  private:
    std::vector<BoardOrder> orders_;
    std::vector<ShowdownItem> items_;
    std::vector<LevelEnd> levels_;
};

}  // namespace kestrel
