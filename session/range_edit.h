#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "engine/poker/range.h"

namespace kestrel_app {

/// A range as it stands in a text field: what the solver reads of it, and the pieces that it
/// refuses. While there are such pieces the whole text is refused; they are kept so that nothing
/// that was typed is lost by a change of the rest.
struct EditedRange {
    kestrel::Range weights{};
    std::vector<std::string> refused;  ///< as they were typed, without white space around them
};

/// Reads range grammar or a percentage ("50%"). Never throws but std::bad_alloc.
EditedRange read_edited_range(std::string_view text);

/// The short text of it, a percentage where all hands have the same weight. What the solver reads
/// of it is what it has read before, the refused pieces apart, which come last.
std::string edited_text(const EditedRange& range);

/// What one starting hand ("AA", "AKs", "AKo") or all hands have of a range.
struct ComboSum {
    int combos = 0;     ///< with a weight above 0
    double weight = 0;  ///< of all of them together

    bool operator==(const ComboSum&) const = default;
};

/// By the place of a label in the grid of hand_labels.h.
std::vector<ComboSum> combos_by_label(const kestrel::Range& range);

/// The combos of a label that are in play at any weight: 6, 4 or 12.
std::vector<kestrel::Pocket> pockets_of_label(std::size_t label);

}  // namespace kestrel_app
