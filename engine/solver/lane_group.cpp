#include "engine/solver/lane_group.h"

namespace kestrel {
namespace {

constexpr std::size_t largest_level = pocket_count;  // all hands of a seat may tie

}  // namespace

LaneBuffers::LaneBuffers(const CardContext& cards) {
    std::size_t most = 0;
    for (std::size_t seat = 0; seat < 2; ++seat) {
        const std::size_t theirs = cards.pockets[1 - seat].size();
        most = std::max(most, padded_row(theirs));
        for (const std::uint16_t twin : cards.same_pocket[seat]) {
            same_row_[seat].push_back(
                twin == no_position ? static_cast<std::uint16_t>(padded_row(theirs)) : twin);
        }
    }
    reach_ = AlignedBuffer<float>((most + 1) * widest_group);
    out_ = AlignedBuffer<float>(most * widest_group);
    parts_ = AlignedBuffer<float>(most * widest_group);
    won_ = AlignedBuffer<double>(largest_level * widest_group);
    nonzero_.resize(most);
    live_.resize(most + 1);
    live_before_.resize(most + 1);
    steps_.resize(2 * most + 2);
}

LiveOrder::LiveOrder(const BoardOrder& board, std::size_t theirs, LaneBuffers& buffers)
    : own(board.items[1 - theirs]), live(buffers.live_.data()) {
    // Items are dropped without a branch, and then levels that no item is left of.
    const std::span<const ShowdownItem> items = board.items[theirs];
    std::size_t left = 0;
    for (std::size_t i = 0; i < items.size(); ++i) {
        buffers.live_before_[i] = static_cast<std::uint16_t>(left);
        buffers.live_[left] = items[i];
        left += buffers.nonzero_[items[i].position];
    }
    buffers.live_before_[items.size()] = static_cast<std::uint16_t>(left);

    std::size_t count = 0;
    std::uint16_t below = 0;
    std::uint16_t before = 0;
    for (const LevelEnd& end : board.levels) {
        const std::uint16_t after = buffers.live_before_[end[theirs]];
        const std::uint16_t own_end = end[1 - theirs];
        buffers.steps_[count] = {below, own_end, after};
        count += after != before ? 1 : 0;
        below = own_end;
        before = after;
    }
    steps = std::span(buffers.steps_).first(count);
}

}  // namespace kestrel
