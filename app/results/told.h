#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "session/hand_labels.h"
#include "session/node_record.h"
#include "session/result_snapshot.h"

namespace tidewell {

// The members of what is told about a solve, under the keys of the pages and of project files:
// each is handed to `member(key, value)`. Money in chips.

template <class Member>
void tell(const kestrel_app::SolveNodeMeta& meta, double effectiveStack, const Member& member) {
    member("chanceDeal", meta.chance_deal);
    member("effectiveStack", effectiveStack);
    member("hasChildren", meta.has_children);
    member("investedIp", meta.invested_ip / kestrel_app::hundredths_per_chip);
    member("investedOop", meta.invested_oop / kestrel_app::hundredths_per_chip);
    member("nodeType", meta.node_type);
    member("player", meta.player);
    member("pot", meta.pot / kestrel_app::hundredths_per_chip);
}

template <class Member>
void tell(const kestrel_app::SolveActionInfo& action, const Member& member) {
    member("actionType", action.action_type);
    member("childIndex", static_cast<int>(action.child_index));
    member("frequency", static_cast<double>(action.frequency));
    member("name", action.name);
}

/// By label.
template <class Value>
std::map<std::string, Value> labelled(const std::vector<Value>& values) {
    std::map<std::string, Value> map;
    for (std::size_t label = 0; label < values.size(); ++label) {
        map.emplace(kestrel_app::hand_label(label), values[label]);
    }
    return map;
}

template <class Member>
void tell(const kestrel_app::HandStrategy& strategy, const Member& member) {
    member("actionNames", strategy.action_names);
    member("actionProbs", labelled(strategy.action_probs));
    member("actionTypeList", strategy.action_types);
    member("dominantActionTypes", labelled(strategy.dominant_action_types));
    member("weights", labelled(strategy.weights));
}

template <class Member>
void tell(const kestrel_app::ReachStrategy& reach, const Member& member) {
    std::map<std::string, std::vector<double>> probs;
    std::map<std::string, double> weights;
    for (const kestrel_app::LabelPlay& play : reach) {
        probs.emplace(kestrel_app::hand_label(play.label), play.action_probs);
        weights.emplace(kestrel_app::hand_label(play.label), play.weight);
    }
    member("actionProbs", probs);
    member("weights", weights);
}

/// One action of a node's statistics.
template <class Member>
void tell(const kestrel_app::NodeActionStats& stats, std::size_t action, const Member& member) {
    member("actionType", stats.action_types[action]);
    member("combos", stats.combos[action]);
    member("equity", stats.equity[action]);
    member("ev", stats.ev[action]);
    member("frequency", static_cast<double>(stats.frequencies[action]));
    member("name", stats.action_names[action]);
}

/// The same of the hands that come; `reached`: the opponent comes, too.
template <class Member>
void tell(const kestrel_app::ActionStatsHere& stats, std::size_t action, const Member& member) {
    member("actionType", stats.action_types[action]);
    member("combos", stats.combos[action]);
    member("equity", stats.equity[action]);
    member("ev", stats.ev[action]);
    member("frequency", stats.frequencies[action]);
    member("name", stats.action_names[action]);
    member("reached", stats.opponent_comes);
}

template <class Member>
void tell(const kestrel_app::HandCombo& combo, const Member& member) {
    member("actionEvs", combo.action_evs);
    member("actionProbs", combo.action_probs);
    member("buckets", combo.buckets);
    member("c1", combo.c1);
    member("c2", combo.c2);
    member("ev", combo.ev);
    member("weight", combo.weight);
}

template <class Member>
void tell(const kestrel_app::SeatCombo& combo, const Member& member) {
    member("c1", combo.c1);
    member("c2", combo.c2);
    member("weight", combo.weight);
}

template <class Member>
void tell(const kestrel_app::HandBucket& bucket, const Member& member) {
    member("actionProbs", bucket.action_probs);
    member("combos", bucket.combos);
    member("name", bucket.name);
}

}  // namespace tidewell
