#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <vector>

namespace kestrel {

/// Buffers of one level of a tree walk. They grow on demand, keep their storage between visits and
/// are not cleared: whoever uses one writes the part that it reads.
struct ScratchFrame {
    // Chance nodes.
    std::vector<float> chance_reach;             ///< the opponent's reach times the chance factor
    std::vector<float> child_values;             ///< one row for each child
    std::vector<float> aggregate;                ///< sum over the children
    std::vector<float> swap_row;                 ///< a child's row with hands exchanged
    std::vector<std::uint16_t> unique_children;  ///< child positions that are evaluated
    std::vector<std::uint16_t> child_alias;      ///< first position of the same child

    // Decision nodes.
    std::vector<float> action_values;  ///< one row for each action
    std::vector<float> strategy;
    std::vector<float> strategy_denominator;
    std::vector<float> opponent_strategy;
    std::vector<float> opponent_denominator;
    std::vector<float> next_reach;  ///< one reach row for each action of the opponent

    // Packed states are unpacked into these for the time of a visit.
    std::vector<float> regrets;
    std::vector<float> strategy_sum;
};

/// One frame for each level of a walk, handed out by depth. A frame never moves once it exists, so
/// a level can pass spans of its buffers to the levels below. Used by one thread at a time.
class ScratchStack {
  public:
    /// The frame of a depth, the number of edges from the root of the walk.
    ScratchFrame& frame(std::size_t depth);

  private:
    /// Few lines are longer: four wagers and a check on each of three streets, and two deals.
    static constexpr std::size_t inline_frames = 32;

    std::array<ScratchFrame, inline_frames> inline_;
    std::deque<ScratchFrame> overflow_;
};

}  // namespace kestrel
