#include "engine/solver/chance.h"

#include <algorithm>

#include "engine/solver/kernels.h"

namespace kestrel {

float chance_factor(const GameNode& node) {
    if (node.turn == NO_CARD) {
        return 45.0F;
    }
    return node.river == NO_CARD ? 44.0F : static_cast<float>(node.children.size());
}

bool worth_fanning_out(std::size_t cards, std::size_t hands) {
    // Below these a task is shorter than what handing it out costs.
    constexpr std::size_t fewest_cards = 6;
    constexpr std::size_t fewest_hands = 64;
    constexpr std::size_t fewest_values = 1536;
    return cards >= fewest_cards && hands >= fewest_hands && cards * hands >= fewest_values;
}

void scale_chance_reach(const GameNode& node, std::span<const float> reach, ScratchFrame& frame) {
    const float factor = chance_factor(node);
    frame.chance_reach.resize(reach.size());
    scale_row(frame.chance_reach.data(), reach.data(), factor == 0.0F ? 1.0F : 1.0F / factor,
              reach.size());
}

void find_unique_children(const GameNode& node, ScratchFrame& frame) {
    frame.unique_children.clear();
    frame.child_alias.resize(node.children.size());
    for (std::size_t i = 0; i < node.children.size(); ++i) {
        const auto first = std::ranges::find(node.children, node.children[i]);
        const auto alias = static_cast<std::uint16_t>(first - node.children.begin());
        frame.child_alias[i] = alias;
        if (alias == i) {
            frame.unique_children.push_back(alias);
        }
    }
}

void copy_repeated_rows(ScratchFrame& frame, std::size_t width) {
    for (std::size_t i = 0; i < frame.child_alias.size(); ++i) {
        const std::size_t alias = frame.child_alias[i];
        if (alias != i) {
            std::copy_n(frame.child_values.data() + alias * width, width,
                        frame.child_values.data() + i * width);
        }
    }
}

void aggregate_children(const Game& game, const GameNode& node, Seat seat, ScratchFrame& frame,
                        std::span<float> out) {
    const std::size_t width = out.size();
    frame.aggregate.assign(width, 0.0F);
    sum_rows_into(frame.aggregate.data(), frame.child_values.data(), node.children.size(), width);

    const auto& references = game.references(node);
    for (std::size_t k = 0; k < references.size(); ++k) {
        if (references[k] >= node.children.size()) {
            continue;
        }
        const float* row = frame.child_values.data() + references[k] * width;
        const auto& swaps = game.swap_list(node, k)[index_of(seat)];
        if (!swaps.empty()) {
            frame.swap_row.assign(row, row + width);
            for (const auto& [x, y] : swaps) {
                if (x < width && y < width) {
                    std::swap(frame.swap_row[x], frame.swap_row[y]);
                }
            }
            row = frame.swap_row.data();
        }
        add_scaled_row(frame.aggregate.data(), row, width, 1.0F);
    }
    std::ranges::copy(frame.aggregate, out.begin());
}

}  // namespace kestrel
