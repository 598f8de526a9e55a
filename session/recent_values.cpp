#include "session/recent_values.h"

#include <algorithm>

namespace kestrel_app {

RecentValues::Values RecentValues::of(std::uint64_t node,
                                      const std::function<std::vector<float>()>& work_out) {
    const std::shared_ptr<Entry> entry = entry_of(node);
    std::call_once(entry->made, [&] { entry->values = work_out(); });
    return {entry, &entry->values};
}

std::shared_ptr<RecentValues::Entry> RecentValues::entry_of(std::uint64_t node) {
    const std::lock_guard lock(mutex_);
    const auto found =
        std::ranges::find(entries_, node, [](const auto& entry) { return entry->node; });
    if (found != entries_.end()) {
        entries_.splice(entries_.begin(), entries_, found);
    } else {
        entries_.push_front(std::make_shared<Entry>());
        entries_.front()->node = node;
        if (entries_.size() > most_kept) {
            entries_.pop_back();
        }
    }
    return entries_.front();
}

}  // namespace kestrel_app
