#pragma once

#include <cstddef>
#include <list>
#include <map>
#include <vector>

namespace kestrel_app {

/// Which nodes' lists are to go when all together take more than a number of bytes: those that were
/// not used for the longest time.
class RecentNodes {
  public:
    explicit RecentNodes(std::size_t byteLimit) : byteLimit_(byteLimit) {}

    /// A node was used, whose lists now take `bytes`. Returns the nodes that are to go, and counts
    /// them no more; never the one just used.
    std::vector<int> use(int node, std::size_t bytes);

    /// The node counts no more.
    void forget(int node);
    void clear();

    std::size_t bytes() const { return bytes_; }

  private:
    struct Used {
        int node;
        std::size_t bytes;
    };

    std::size_t byteLimit_;
    std::size_t bytes_ = 0;
    std::list<Used> used_;  // the last one first
    std::map<int, std::list<Used>::iterator> places_;
};

}  // namespace kestrel_app
