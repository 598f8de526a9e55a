#include "engine/solver/scratch_stack.h"

namespace kestrel {

ScratchFrame& ScratchStack::frame(std::size_t depth) {
    if (depth < inline_frames) {
        return inline_[depth];
    }
    while (overflow_.size() <= depth - inline_frames) {
        overflow_.emplace_back();
    }
    return overflow_[depth - inline_frames];
}

}  // namespace kestrel
