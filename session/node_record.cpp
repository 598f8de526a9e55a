#include "session/node_record.h"

#include <string>
#include <utility>

namespace kestrel_app {
namespace {

// Bytes behind an object, beside its own size.

std::size_t behind(double) {
    return 0;
}

std::size_t behind(float) {
    return 0;
}

std::size_t behind(const std::string& text) {
    static const std::size_t inside = std::string().capacity();
    return text.capacity() > inside ? text.capacity() + 1 : 0;
}

template <class Element>
std::size_t behind(const std::vector<Element>& list);

std::size_t behind(const HandCombo& combo) {
    return behind(combo.action_evs) + behind(combo.action_probs) + behind(combo.buckets);
}

std::size_t behind(const SeatCombo&) {
    return 0;
}

std::size_t behind(const HandBucket& bucket) {
    return behind(bucket.name) + behind(bucket.action_probs);
}

std::size_t behind(const LabelPlay& play) {
    return behind(play.action_probs);
}

std::size_t behind(const HandStrategy& strategy) {
    return behind(strategy.action_names) + behind(strategy.action_types) +
           behind(strategy.weights) + behind(strategy.dominant_action_types) +
           behind(strategy.action_probs);
}

std::size_t behind(const NodeActionStats& stats) {
    return behind(stats.action_names) + behind(stats.action_types) + behind(stats.frequencies) +
           behind(stats.combos) + behind(stats.equity) + behind(stats.ev);
}

std::size_t behind(const ActionStatsHere& stats) {
    return behind(stats.action_names) + behind(stats.action_types) + behind(stats.combos) +
           behind(stats.frequencies) + behind(stats.equity) + behind(stats.ev);
}

constexpr std::size_t of_an_allocation = 16;  // what the allocator adds, about

template <class Element>
std::size_t behind(const std::vector<Element>& list) {
    std::size_t bytes = list.capacity() * sizeof(Element);
    bytes += bytes > 0 ? of_an_allocation : 0;
    for (const Element& element : list) {
        bytes += behind(element);
    }
    return bytes;
}

template <class Answer>
std::size_t bytes_of(const std::shared_ptr<const Answer>& answer) {
    return answer ? of_an_allocation + sizeof(Answer) + behind(*answer) : 0;
}

template <class Answer>
std::shared_ptr<const Answer> kept(Answer answer) {
    return std::make_shared<const Answer>(std::move(answer));
}

}  // namespace

void NodeRecord::drop_hand_lists() {
    combos = nullptr;
    seat_combos = {};
}

NodeActionStats in_chips(NodeActionStats stats) {
    for (double& ev : stats.ev) {
        ev /= hundredths_per_chip;
    }
    return stats;
}

ActionStatsHere in_chips(ActionStatsHere stats) {
    for (double& ev : stats.ev) {
        ev /= hundredths_per_chip;
    }
    return stats;
}

std::vector<HandCombo> in_chips(std::vector<HandCombo> combos) {
    for (HandCombo& combo : combos) {
        combo.ev /= hundredths_per_chip;
        for (double& ev : combo.action_evs) {
            ev /= hundredths_per_chip;
        }
    }
    return combos;
}

std::size_t hand_list_bytes(const NodeRecord& record) {
    return bytes_of(record.combos) + bytes_of(record.seat_combos[0]) +
           bytes_of(record.seat_combos[1]);
}

std::size_t memory_bytes(const NodeRecord& record) {
    return sizeof record + bytes_of(record.strategy) + bytes_of(record.reach) +
           bytes_of(record.stats) + bytes_of(record.stats_here) + bytes_of(record.buckets) +
           hand_list_bytes(record);
}

NodeRecord work_out(const FinishedSolve& solve, std::uint64_t node) {
    NodeRecord record;
    auto strategy = hand_strategy(solve, node);
    if (!strategy) {
        return record;
    }
    record.strategy = kept(*std::move(strategy));
    record.combos = kept(in_chips(hand_combos(solve, node).value()));
    record.buckets = kept(hand_buckets(solve, node).value());
    record.stats = kept(in_chips(node_action_stats(solve, node).value()));
    record.stats_here = kept(in_chips(action_stats_here(solve, node).value()));
    return record;
}

}  // namespace kestrel_app
