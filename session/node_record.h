#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <vector>

#include "session/finished_solve.h"
#include "session/node_here.h"
#include "session/node_queries.h"
#include "session/reach_strategy.h"

namespace kestrel_app {

/// What is known of one node, from a solve or from a project file; null where nothing is. Money in
/// chips, as in files, so that nothing is rounded on the way through one. Copies share: a file can
/// be written beside further questions.
struct NodeRecord {
    template <class Answer>
    using Kept = std::shared_ptr<const Answer>;

    Kept<HandStrategy> strategy;
    Kept<ReachStrategy> reach;         ///< of all hands
    Kept<NodeActionStats> stats;       ///< of the whole range
    Kept<ActionStatsHere> stats_here;  ///< of the hands that come
    Kept<std::vector<HandBucket>> buckets;

    // Whole hand lists: some hundred bytes for each hand.
    Kept<std::vector<HandCombo>> combos;
    std::array<Kept<std::vector<SeatCombo>>, 2> seat_combos;  ///< OOP's first

    void drop_hand_lists();
};

/// By node index.
using NodeRecords = std::map<int, NodeRecord>;

/// How many nodes have a part, such as &NodeRecord::combos.
template <class Part>
std::size_t nodes_with(const NodeRecords& records, Part NodeRecord::*part) {
    std::size_t count = 0;
    for (const auto& [node, record] : records) {
        count += record.*part ? 1 : 0;
    }
    return count;
}

inline constexpr double hundredths_per_chip = 100.0;

// Answers of a solve as records keep them.
NodeActionStats in_chips(NodeActionStats stats);
ActionStatsHere in_chips(ActionStatsHere stats);
std::vector<HandCombo> in_chips(std::vector<HandCombo> combos);

/// Bytes that the hand lists of a record take, and the whole of it.
std::size_t hand_list_bytes(const NodeRecord& record);
std::size_t memory_bytes(const NodeRecord& record);

/// All that a project is to hold of a decision, but for the seats' hands; nothing of any other
/// node. Several value walks: for any thread.
NodeRecord work_out(const FinishedSolve& solve, std::uint64_t node);

}  // namespace kestrel_app
