#include "session/config_map.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <set>
#include <string>
#include <utility>

#include "session/presets.h"

namespace kestrel_app {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

SolveConfig config_with(std::string_view key, ConfigValue value) {
    ConfigMap map;
    map.emplace(key, std::move(value));
    return config_from_map(map);
}

// The answers of Qt 6.4's QVariant.
TEST(ConfigMap, TextReadsAsQtReadsIt) {
    const struct {
        const char* text;
        double number;
        std::uint32_t whole;
        bool flag;
    } cases[] = {
        {"5", 5, 5, true},
        {" 5 ", 5, 5, true},
        {"+5", 5, 5, true},
        {"-5", -5, 0, true},
        {"5.5", 5.5, 0, true},
        {" 2.5\t", 2.5, 0, true},
        {".5", 0.5, 0, true},
        {"5.", 5, 0, true},
        {"2e3", 2000, 0, true},
        {"4294967295", 4294967295.0, 4294967295U, true},
        {"99999999999", 99999999999.0, 1215752191, true},
        {"1e400", infinity, 0, true},
        {"-1e400", -infinity, 0, true},
        {"1e-400", 0, 0, true},
        {"INF", infinity, 0, true},
        {"infinity", 0, 0, true},
        {"-nan", 0, 0, true},
        {"0x10", 0, 0, true},
        {"0x1p3", 0, 0, true},
        {"+-5", 0, 0, true},
        {"1,5", 0, 0, true},
        {"1e", 0, 0, true},
        {"abc", 0, 0, true},
        {"5 5", 0, 0, true},
        {"True", 0, 0, true},
        {"False", 0, 0, false},
        {" false", 0, 0, true},
        {"0", 0, 0, false},
        {"00", 0, 0, true},
        {"", 0, 0, false},
    };
    for (const auto& [text, number, whole, flag] : cases) {
        const ConfigValue value{std::string(text)};
        EXPECT_EQ(to_double(value), number) << text;
        EXPECT_EQ(to_unsigned(value), whole) << text;
        EXPECT_EQ(to_bool(value), flag) << text;
        EXPECT_EQ(to_text(value), text);
    }
    EXPECT_TRUE(std::isnan(to_double(std::string("NaN"))));
}

TEST(ConfigMap, NumbersReadAsQtReadsThem) {
    const struct {
        double number;
        const char* text;
        std::uint32_t whole;
        bool flag;
    } cases[] = {
        {0.5, "0.5", 1, true},
        {2.4, "2.4", 2, true},
        {-0.4, "-0.4", 0, false},
        {-1, "-1", 4294967295U, true},
        {-0.0, "0", 0, false},
        {100000, "1e+05", 100000, true},
        {123456, "123456", 123456, true},
        {5e9, "5e+09", 705032704, true},
        {1e300, "1e+300", 0, true},
        {infinity, "inf", 0, true},
        {-nan, "nan", 0, true},
    };
    for (const auto& [number, text, whole, flag] : cases) {
        const ConfigValue value{number};
        EXPECT_EQ(to_text(value), text);
        EXPECT_EQ(to_unsigned(value), whole) << text;
        EXPECT_EQ(to_bool(value), flag) << text;
    }
    EXPECT_EQ(to_text(true), "true");
    EXPECT_EQ(to_text(false), "false");
    EXPECT_EQ(to_double(true), 1.0);
    EXPECT_EQ(to_unsigned(true), 1U);
}

TEST(ConfigMap, BoardText) {
    const std::pair<const char*, const char*> cases[] = {
        {"ah ks qd", "AhKsQd"},
        {"  aH\tKS\nqD 2c ", "AhKsQd2c"},
        {"Ah1xKs", "AhKs"},
        {"__AhKs", "AhKs"},
        {"AhK", "Ah"},
        {"hAhAhA", ""},
        {"10hAs", ""},
        {"Ah\u00a0Ks\u2003Qd", "AhKsQd"},  // spaces beyond ASCII
        {"\u00e9\u00e9Ks", "Ks"},          // two characters, four bytes
        {"\U0001F0A1Ks", "Ks"},            // one character, two UTF-16 units
        {"\u00e9Ks", ""},
        {"A\xc3", ""},
        {"", ""},
    };
    for (const auto& [text, board] : cases) {
        EXPECT_EQ(normalize_board_text(text), board) << text;
    }
}

TEST(ConfigMap, Money) {
    const std::pair<double, std::uint32_t> amounts[] = {
        {12.5, 1250},
        {0.005, 1},
        {0.004, 0},
        {-5, 0},
        {nan, 10000},
        {infinity, 10000},
        {30000000, 2147483646},
        {21474836.46, 2147483646},
    };
    for (const auto& [chips, hundredths] : amounts) {
        EXPECT_EQ(to_hundredths(chips, 10000), hundredths) << chips;
        EXPECT_EQ(config_with("starting_pot", chips).starting_pot, hundredths) << chips;
        EXPECT_EQ(config_with("effective_stack", chips).effective_stack, hundredths) << chips;
    }
    const struct {
        double chips;
        double cap;
        float target;
    } limits[] = {
        {2.5, 250.0, 250.0F}, {0.0512, 5.12, 5.12F}, {-1, 0, 0},
        {nan, 0, 0.1F},       {-infinity, 0, 0.1F},  {3e7, 2147483646.0, 2147483646.0F},
    };
    for (const auto& [chips, cap, target] : limits) {
        EXPECT_DOUBLE_EQ(config_with("rake_cap", chips).rake_cap, cap) << chips;
        EXPECT_EQ(config_with("target_exploitability", chips).target_exploitability, target)
            << chips;
    }
    EXPECT_EQ(config_with("rake_percent", -250.0).rake_percent, -250.0);
}

TEST(ConfigMap, EmptyMapGivesTheDefaults) {
    const SolveConfig config = config_from_map({});
    EXPECT_EQ(config.board, "");
    EXPECT_EQ(config.starting_pot, 10000U);
    EXPECT_EQ(config.effective_stack, 10000U);
    EXPECT_EQ(config.rake_cap, 0.0);
    EXPECT_EQ(config.starting_street, "flop");
    EXPECT_EQ(config.max_iterations, 2000U);
    EXPECT_EQ(config.target_exploitability, 10.0F);
    EXPECT_EQ(config.thread_count, 1U);
    EXPECT_FALSE(config.compress);
    EXPECT_EQ(config, SolveConfig{});
}

TEST(ConfigMap, EachKeyReachesAFieldOfItsOwn) {
    const std::set<std::string> no_field = {
        "apply_node_locks",
        // Each of the two counts only with the other.
        "oop_add_all_in_jam_threshold_enabled",
        "oop_add_all_in_jam_threshold_pct",
        "ip_add_all_in_jam_threshold_enabled",
        "ip_add_all_in_jam_threshold_pct",
    };
    EXPECT_EQ(config_keys().size(), 40U);
    std::vector<SolveConfig> seen = {SolveConfig{}};
    for (const ConfigKey& key : config_keys()) {
        ConfigMap map = {{"oop_add_all_in_jam_threshold_enabled", true},
                         {"ip_add_all_in_jam_threshold_enabled", true}};
        if (key.name.ends_with("_enabled")) continue;
        if (no_field.contains(key.name) && !key.name.ends_with("_pct")) continue;
        map[key.name] = key.kind == ConfigKind::flag    ? ConfigValue(true)
                        : key.kind == ConfigKind::board ? ConfigValue("AsKsQs")
                                                        : ConfigValue("7");
        const SolveConfig config = config_from_map(map);
        for (const SolveConfig& other : seen)
            EXPECT_FALSE(config == other) << key.name;
        seen.push_back(config);
    }
    const SolveConfig named = config_from_map({{"ip_turn_bet_sizes", "33"},
                                               {"ip_turn_raise_sizes", 50.0},
                                               {"ip_turn_add_all_in", "true"},
                                               {"oop_river_dont_donk", 1.0}});
    EXPECT_EQ(named.ip_turn, (StreetSizingText{"33", "50", true, false}));
    EXPECT_EQ(named.oop_river, (StreetSizingText{"", "", false, true}));
}

TEST(ConfigMap, JamThresholdCountsOnlyWhenEnabled) {
    ConfigMap map = {{"oop_add_all_in_jam_threshold_pct", 30.0}};
    EXPECT_FALSE(config_from_map(map).oop_add_all_in_jam_threshold_pct.has_value());
    map["oop_add_all_in_jam_threshold_enabled"] = true;
    EXPECT_EQ(config_from_map(map).oop_add_all_in_jam_threshold_pct, 30.0);
    EXPECT_FALSE(config_from_map(map).ip_add_all_in_jam_threshold_pct.has_value());
}

TEST(ConfigMap, NotReady) {
    const std::string board = "Not ready: enter a valid board first";
    const std::string range = "Not ready: select at least one hand in both ranges";
    const std::string sizing = "Not ready: fill out both OOP and IP sizing";
    const struct {
        const char* key;
        const char* text;
        std::string reason;
    } cases[] = {
        {"board", "AdJd", board},
        {"board", "AdJd8s2c3c4c", board},
        {"board", "AdJd8s2c", ""},
        {"board", "AdAdAd", ""},
        {"oop_range", " ", range},
        {"ip_range", "A", range},
        {"ip_range", "A K", range},
        {"ip_range", "xxt9x", ""},
        {"ip_range", " 50% ", ""},
        {"ip_range", "%50%", range},
        {"ip_river_raise_sizes", " \t", sizing},
        {"oop_flop_bet_sizes", "", sizing},
        {"oop_flop_bet_sizes", "x", ""},
    };
    EXPECT_EQ(not_ready_reason(quick_solve_preset()), std::nullopt);
    for (const auto& [key, text, reason] : cases) {
        ConfigMap map = quick_solve_preset();
        map[key] = text;
        EXPECT_EQ(not_ready_reason(map).value_or(""), reason) << key << " '" << text << "'";
    }
    EXPECT_EQ(not_ready_reason({}), board);
    ConfigMap map = quick_solve_preset();
    map.erase("ip_turn_bet_sizes");
    EXPECT_EQ(not_ready_reason(map), sizing);
}

TEST(ConfigMap, QuickSolvePreset) {
    const ConfigMap map = quick_solve_preset();
    for (const auto& [name, value] : map) {
        EXPECT_TRUE(std::ranges::any_of(config_keys(), [&](const ConfigKey& key) {
            return key.name == name;
        })) << name;
    }
    const SolveConfig config = config_from_map(map);
    EXPECT_EQ(config.starting_pot, 1800U);
    EXPECT_EQ(config.effective_stack, 9100U);
    EXPECT_EQ(config.rake_cap, 300.0);
    EXPECT_FLOAT_EQ(config.target_exploitability, 9.0F);  // half a percent of the pot
    EXPECT_EQ(config.max_iterations, 400U);
    EXPECT_EQ(config.oop_turn, (StreetSizingText{"75", "50", false, false}));
    EXPECT_EQ(config.ip_river, (StreetSizingText{"75", "75", false, false}));
    EXPECT_NO_THROW(parse_spot(config));
}

}  // namespace
}  // namespace kestrel_app
