#pragma once

#include <cstddef>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/results/told.h"

namespace tidewell {

// What is known of a solve as a project file has it, and back. Values of a wrong kind read as if
// they were missing: empty, 0 or false. A figure of the statistics and an EV that is no number, as
// null is none, is not known: NaN, which is null again when it is written.

// Members of an object by kind.
std::string textAt(const nlohmann::json& object, const char* key);
double numberAt(const nlohmann::json& object, const char* key, double missing = 0);
int intAt(const nlohmann::json& object, const char* key, int missing = 0);  ///< whole ones alone
bool flagAt(const nlohmann::json& object, const char* key);
/// An empty object, or an empty list, for what is none.
const nlohmann::json& objectAt(const nlohmann::json& object, const char* key);
const nlohmann::json& listAt(const nlohmann::json& object, const char* key);

/// What `tell` has to say of its arguments.
template <class... Told>
nlohmann::json jsonObject(const Told&... told) {
    nlohmann::json object = nlohmann::json::object();
    tell(told..., [&](const char* key, const auto& value) { object.emplace(key, value); });
    return object;
}

template <class Record>
nlohmann::json jsonList(const std::vector<Record>& records) {
    nlohmann::json list = nlohmann::json::array();
    for (const Record& record : records) {
        list.push_back(jsonObject(record));
    }
    return list;
}

/// One object for each action.
template <class Stats>
nlohmann::json jsonListOfActions(const Stats& stats) {
    nlohmann::json list = nlohmann::json::array();
    for (std::size_t action = 0; action < stats.action_names.size(); ++action) {
        list.push_back(jsonObject(stats, action));
    }
    return list;
}

inline nlohmann::json jsonList(const kestrel_app::NodeActionStats& stats) {
    return jsonListOfActions(stats);
}

inline nlohmann::json jsonList(const kestrel_app::ActionStatsHere& stats) {
    return jsonListOfActions(stats);
}

// A node of the tree and its actions, with texts that point into the document. These throw
// std::invalid_argument, with the node, for numbers that are out of range.
kestrel_app::SolveNodeMeta readMeta(const nlohmann::json& object, std::size_t node);
std::vector<kestrel_app::SolveActionInfo> readActions(const nlohmann::json& list, std::size_t node);

/// Nothing where the object tells of no action.
std::optional<kestrel_app::HandStrategy> readStrategy(const nlohmann::json& object);
kestrel_app::ReachStrategy readReach(const nlohmann::json& object);
kestrel_app::NodeActionStats readStats(const nlohmann::json& list);
kestrel_app::ActionStatsHere readStatsHere(const nlohmann::json& list);
std::vector<kestrel_app::HandCombo> readCombos(const nlohmann::json& list);
std::vector<kestrel_app::HandBucket> readBuckets(const nlohmann::json& list);
std::vector<kestrel_app::SeatCombo> readSeatCombos(const nlohmann::json& list);

}  // namespace tidewell
