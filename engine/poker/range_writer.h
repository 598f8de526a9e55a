#pragma once

#include <string>

#include "engine/poker/range.h"

namespace kestrel {

/// The range as a short text that `parse_range` reads back to the bit: runs of hands ("TT+",
/// "A5s-A2s"), then single combos where the combos of a hand differ ("AhKh", "KsKh:0"). Items are
/// separated by ", "; a range without weights is the empty text. The same range gives the same
/// text.
std::string write_range(const Range& range);

/// A number in as few digits as give the same float again: "0.5", "1e-05".
std::string shortest_text(float number);

}  // namespace kestrel
