#include "session/hand_labels.h"

#include <algorithm>
#include <array>

namespace kestrel_app {
namespace {

constexpr std::string_view ranks_from_the_ace = "AKQJT98765432";
constexpr std::size_t ranks = ranks_from_the_ace.size();

using Labels = std::array<std::string, label_count>;

Labels make_labels() {
    Labels labels;
    for (std::size_t row = 0; row < ranks; ++row) {
        for (std::size_t column = 0; column < ranks; ++column) {
            std::string& label = labels[row * ranks + column];
            label = {ranks_from_the_ace[std::min(row, column)],
                     ranks_from_the_ace[std::max(row, column)]};
            if (row != column) {
                label += row < column ? 's' : 'o';
            }
        }
    }
    return labels;
}

const Labels& all_labels() {
    static const Labels labels = make_labels();
    return labels;
}

}  // namespace

const std::string& hand_label(std::size_t index) {
    return all_labels().at(index);
}

std::size_t label_index(const kestrel::Pocket& pocket) {
    const auto from_the_ace = [](kestrel::Card card) {
        return ranks - 1 - static_cast<std::size_t>(kestrel::rank_of(card));
    };
    const auto [higher, lower] = std::minmax({from_the_ace(pocket.low), from_the_ace(pocket.high)});
    const bool suited = kestrel::suit_of(pocket.low) == kestrel::suit_of(pocket.high);
    return suited ? higher * ranks + lower : lower * ranks + higher;
}

std::size_t label_index(std::string_view label) {
    return static_cast<std::size_t>(std::ranges::find(all_labels(), label) - all_labels().begin());
}

}  // namespace kestrel_app
