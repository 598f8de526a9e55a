#include "app/files/project_json.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string_view>

namespace tidewell {
namespace {

using kestrel_app::ActionStatsHere;
using kestrel_app::HandBucket;
using kestrel_app::HandCombo;
using kestrel_app::HandStrategy;
using kestrel_app::LabelPlay;
using kestrel_app::NodeActionStats;
using kestrel_app::ReachStrategy;
using kestrel_app::SeatCombo;
using kestrel_app::SolveActionInfo;
using kestrel_app::SolveNodeMeta;
using nlohmann::json;

constexpr double unknown = std::numeric_limits<double>::quiet_NaN();

/// Null for what is missing.
const json& at(const json& object, const char* key) {
    static const json none;
    if (!object.is_object()) {
        return none;
    }
    const auto found = object.find(key);
    return found == object.end() ? none : *found;
}

double numberOf(const json& value, double missing) {
    return value.is_number() ? value.get<double>() : missing;
}

std::string textOf(const json& value) {
    return value.is_string() ? value.get<std::string>() : std::string();
}

std::vector<double> numbersAt(const json& object, const char* key, double missing) {
    std::vector<double> numbers;
    for (const json& element : listAt(object, key)) {
        numbers.push_back(numberOf(element, missing));
    }
    return numbers;
}

std::vector<std::string> textsAt(const json& object, const char* key) {
    std::vector<std::string> texts;
    for (const json& element : listAt(object, key)) {
        texts.push_back(textOf(element));
    }
    return texts;
}

std::string_view viewAt(const json& object, const char* key) {
    const json& value = at(object, key);
    return value.is_string() ? std::string_view(value.get_ref<const std::string&>())
                             : std::string_view();
}

/// NaN for what no float can hold.
float narrow(double number) {
    return std::abs(number) <= static_cast<double>(std::numeric_limits<float>::max())
               ? static_cast<float>(number)
               : std::numeric_limits<float>::quiet_NaN();
}

[[noreturn]] void refuse(std::size_t node, const char* key) {
    throw std::invalid_argument("node " + std::to_string(node) + ": " + key + " is out of range");
}

/// Chips as hundredths.
std::int32_t hundredthsAt(const json& object, const char* key, std::size_t node) {
    constexpr double hundredthsPerChip = 100.0;
    const double hundredths = std::round(numberAt(object, key) * hundredthsPerChip);
    if (!(std::abs(hundredths) <= std::numeric_limits<std::int32_t>::max())) {
        refuse(node, key);
    }
    return static_cast<std::int32_t>(hundredths);
}

std::uint32_t childAt(const json& object, std::size_t node) {
    const double index = numberAt(object, "childIndex");
    if (!(index >= 0 && index <= std::numeric_limits<int>::max()) || std::trunc(index) != index) {
        refuse(node, "childIndex");
    }
    return static_cast<std::uint32_t>(index);
}

/// An empty list for what is none.
const json& elementsOf(const json& value) {
    static const json none = json::array();
    return value.is_array() ? value : none;
}

/// Every element of a list, read by `read`.
template <class Read>
auto readAll(const json& list, Read read) {
    std::vector<decltype(read(list))> records;
    for (const json& element : elementsOf(list)) {
        records.push_back(read(element));
    }
    return records;
}

}  // namespace

std::string textAt(const json& object, const char* key) {
    return textOf(at(object, key));
}

double numberAt(const json& object, const char* key, double missing) {
    return numberOf(at(object, key), missing);
}

int intAt(const json& object, const char* key, int missing) {
    const double number = numberAt(object, key, missing);
    const bool fits =
        std::floor(number) == number && std::abs(number) <= std::numeric_limits<int>::max();
    return fits ? static_cast<int>(number) : missing;
}

bool flagAt(const json& object, const char* key) {
    const json& value = at(object, key);
    return value.is_boolean() && value.get<bool>();
}

const json& objectAt(const json& object, const char* key) {
    static const json none = json::object();
    const json& value = at(object, key);
    return value.is_object() ? value : none;
}

const json& listAt(const json& object, const char* key) {
    return elementsOf(at(object, key));
}

SolveNodeMeta readMeta(const json& object, std::size_t node) {
    return {viewAt(object, "nodeType"),
            viewAt(object, "chanceDeal"),
            viewAt(object, "player"),
            hundredthsAt(object, "pot", node),
            hundredthsAt(object, "investedOop", node),
            hundredthsAt(object, "investedIp", node),
            flagAt(object, "hasChildren")};
}

std::vector<SolveActionInfo> readActions(const json& list, std::size_t node) {
    return readAll(list, [node](const json& action) -> SolveActionInfo {
        return {viewAt(action, "name"), viewAt(action, "actionType"),
                narrow(numberAt(action, "frequency")), childAt(action, node)};
    });
}

std::optional<HandStrategy> readStrategy(const json& object) {
    HandStrategy strategy;
    strategy.action_names = textsAt(object, "actionNames");
    strategy.action_types = textsAt(object, "actionTypeList");
    const std::size_t actions =
        std::max(strategy.action_names.size(), strategy.action_types.size());
    if (actions == 0) {
        return std::nullopt;
    }
    strategy.action_names.resize(actions);
    strategy.action_types.resize(actions);
    const json& weights = objectAt(object, "weights");
    const json& dominant = objectAt(object, "dominantActionTypes");
    const json& probs = objectAt(object, "actionProbs");
    for (std::size_t label = 0; label < kestrel_app::label_count; ++label) {
        const char* const name = kestrel_app::hand_label(label).c_str();
        strategy.weights.push_back(numberAt(weights, name));
        strategy.dominant_action_types.push_back(textAt(dominant, name));
        strategy.action_probs.push_back(numbersAt(probs, name, 0));
        strategy.action_probs.back().resize(actions);
    }
    return strategy;
}

ReachStrategy readReach(const json& object) {
    ReachStrategy reach;
    const json& weights = objectAt(object, "weights");
    for (std::size_t label = 0; label < kestrel_app::label_count; ++label) {
        const char* const name = kestrel_app::hand_label(label).c_str();
        if (weights.contains(name)) {
            reach.push_back({label, numberAt(weights, name),
                             numbersAt(objectAt(object, "actionProbs"), name, 0)});
        }
    }
    return reach;
}

NodeActionStats readStats(const json& list) {
    NodeActionStats stats;
    for (const json& action : elementsOf(list)) {
        stats.action_names.push_back(textAt(action, "name"));
        stats.action_types.push_back(textAt(action, "actionType"));
        stats.frequencies.push_back(narrow(numberAt(action, "frequency", unknown)));
        stats.combos.push_back(numberAt(action, "combos", unknown));
        stats.equity.push_back(numberAt(action, "equity", unknown));
        stats.ev.push_back(numberAt(action, "ev", unknown));
    }
    return stats;
}

ActionStatsHere readStatsHere(const json& list) {
    ActionStatsHere stats;
    for (const json& action : elementsOf(list)) {
        stats.action_names.push_back(textAt(action, "name"));
        stats.action_types.push_back(textAt(action, "actionType"));
        stats.combos.push_back(numberAt(action, "combos", unknown));
        stats.frequencies.push_back(numberAt(action, "frequency", unknown));
        stats.equity.push_back(numberAt(action, "equity", unknown));
        stats.ev.push_back(numberAt(action, "ev", unknown));
        stats.opponent_comes = stats.opponent_comes || flagAt(action, "reached");
    }
    return stats;
}

std::vector<HandCombo> readCombos(const json& list) {
    return readAll(list, [](const json& combo) -> HandCombo {
        return {textAt(combo, "c1"),
                textAt(combo, "c2"),
                numberAt(combo, "weight"),
                numberAt(combo, "ev", unknown),
                numbersAt(combo, "actionEvs", unknown),
                numbersAt(combo, "actionProbs", 0),
                textsAt(combo, "buckets")};
    });
}

std::vector<HandBucket> readBuckets(const json& list) {
    return readAll(list, [](const json& bucket) -> HandBucket {
        return {textAt(bucket, "name"), numberAt(bucket, "combos"),
                readAll(listAt(bucket, "actionProbs"),
                        [](const json& prob) { return narrow(numberOf(prob, 0)); })};
    });
}

std::vector<SeatCombo> readSeatCombos(const json& list) {
    return readAll(list, [](const json& combo) -> SeatCombo {
        return {textAt(combo, "c1"), textAt(combo, "c2"), numberAt(combo, "weight")};
    });
}

}  // namespace tidewell
