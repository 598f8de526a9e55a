#include "cli/project_state.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "app/config_map.h"
#include "engine/poker/text.h"

namespace tidewell_cli {
namespace {

using kestrel_app::ConfigKey;
using kestrel_app::ConfigKind;
using kestrel_app::ConfigMap;
using kestrel_app::ConfigValue;

/// A setting of a solve, and the property of the pages that holds the same.
struct SharedSetting {
    std::string key;
    std::string property;
};

const std::vector<SharedSetting>& shared_settings() {
    static const std::vector<SharedSetting> settings = [] {
        std::vector<SharedSetting> list = {
            {"board", "boardText"},          {"oop_range", "oopRangeText"},
            {"ip_range", "ipRangeText"},     {"max_iterations", "maxIterations"},
            {"starting_pot", "startingPot"}, {"effective_stack", "effectiveStack"},
            {"thread_count", "threadCount"}, {"starting_street", "startingStreet"},
            {"rake_percent", "rakePercent"}, {"rake_cap", "rakeCap"},
            {"exact_all_in", "exactAllIn"}};
        constexpr std::pair<const char*, const char*> streets[] = {
            {"flop", "Flop"}, {"turn", "Turn"}, {"river", "River"}};
        for (const std::string seat : {"oop", "ip"}) {
            for (const auto& [street, capital] : streets) {
                const std::string key = seat + "_" + street;
                const std::string property = seat + capital;
                list.push_back({key + "_bet_sizes", property + "BetSizesText"});
                list.push_back({key + "_raise_sizes", property + "RaiseSizesText"});
                list.push_back({key + "_add_all_in", property + "AddAllIn"});
                if (seat == "oop") {
                    list.push_back({key + "_dont_donk", property + "DontDonk"});
                }
            }
            list.push_back(
                {seat + "_add_all_in_jam_threshold_enabled", seat + "AddAllInIfJamLtEnabled"});
            list.push_back({seat + "_add_all_in_jam_threshold_pct", seat + "AddAllInIfJamLtPct"});
        }
        return list;
    }();
    return settings;
}

ConfigKind kind_of(const std::string& key) {
    return std::ranges::find(kestrel_app::config_keys(), key, &ConfigKey::name)->kind;
}

ConfigValue empty_value(ConfigKind kind) {
    switch (kind) {
        case ConfigKind::flag:
            return false;
        case ConfigKind::chips:
        case ConfigKind::percent:
        case ConfigKind::whole:
            return 0.0;
        default:
            return std::string();
    }
}

double number_in(const ConfigMap& map, const char* key) {
    const auto found = map.find(key);
    return found == map.end() ? 0.0 : kestrel_app::to_double(found->second);
}

/// The target in percent of the pot, to the digits that the pages take.
double target_percent(const ConfigMap& settings) {
    constexpr double parts = 1e6;
    const double percent =
        100.0 * number_in(settings, "target_exploitability") / number_in(settings, "starting_pot");
    return std::round(percent * parts) / parts;
}

}  // namespace

ConfigMap settings_for_pages(const ConfigMap& settings) {
    const kestrel_app::SolveConfig defaults;
    ConfigMap complete = settings;
    std::erase_if(complete, [](const auto& setting) {  // without effect, and not of the pages
        return setting.first.starts_with("ip_") && setting.first.ends_with("_dont_donk");
    });
    complete.try_emplace("starting_pot", defaults.starting_pot / 100.0);
    complete.try_emplace("effective_stack", defaults.effective_stack / 100.0);
    complete.try_emplace("max_iterations", static_cast<double>(defaults.max_iterations));
    complete.try_emplace("target_exploitability",
                         static_cast<double>(defaults.target_exploitability) / 100.0);
    complete.try_emplace("thread_count", static_cast<double>(defaults.thread_count));
    for (const auto& [key, property] : shared_settings()) {
        const ConfigKind kind = kind_of(key);
        ConfigValue& value = complete.try_emplace(key, empty_value(kind)).first->second;
        const std::string text = kestrel_app::to_text(value);
        if (kind == ConfigKind::sizing && kestrel::trimmed(text).empty()) {
            value = "-";
        } else if (kind == ConfigKind::board) {
            value = kestrel_app::normalize_board_text(text);
        }
    }
    return complete;
}

QVariantMap page_state(const ConfigMap& complete) {
    ConfigMap shared;
    for (const auto& [key, property] : shared_settings()) {
        shared[property] = complete.at(key);
    }
    QVariantMap state = tidewell::variantMapOf(shared);
    const double iterations = number_in(complete, "max_iterations");
    state.insert("maxIterations", std::min<double>(iterations, std::numeric_limits<int>::max()));
    state.insert("rakeCap", page_rake_cap(number_in(complete, "rake_cap")));
    state.insert("targetExploitability", target_percent(complete));
    state.insert("betSizesText", QString());
    return state;
}

double page_rake_cap(double chips) {
    return chips > 0 ? std::max(1.0, std::round(chips)) : 0.0;
}

ConfigMap settings_of_pages(const QVariantMap& state) {
    const ConfigMap given = tidewell::configMapOf(state);
    ConfigMap settings;
    for (const auto& [key, property] : shared_settings()) {
        if (const auto found = given.find(property); found != given.end()) {
            settings[key] = found->second;
        }
    }
    settings.erase("starting_street");
    if (given.contains("targetExploitability")) {
        const double pot = number_in(given, "startingPot");
        const double percent = number_in(given, "targetExploitability");
        const double amount = pot * percent / 100.0;
        settings["target_exploitability"] = pot > 0 && std::isfinite(amount) ? amount : 0.0;
    }
    return settings;
}

}  // namespace tidewell_cli
