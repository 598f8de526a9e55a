#include "session/recent_nodes.h"

namespace kestrel_app {

std::vector<int> RecentNodes::use(int node, std::size_t bytes) {
    forget(node);
    used_.push_front({node, bytes});
    places_[node] = used_.begin();
    bytes_ += bytes;
    std::vector<int> gone;
    while (bytes_ > byteLimit_ && used_.size() > 1) {
        gone.push_back(used_.back().node);
        forget(gone.back());
    }
    return gone;
}

void RecentNodes::forget(int node) {
    const auto place = places_.find(node);
    if (place != places_.end()) {
        bytes_ -= place->second->bytes;
        used_.erase(place->second);
        places_.erase(place);
    }
}

void RecentNodes::clear() {
    used_.clear();
    places_.clear();
    bytes_ = 0;
}

}  // namespace kestrel_app
