#include "session/config_map.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "engine/game/check_tree.h"
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
TEST(ConfigMap, ValuesReadAsQtReadsThem) {
    const std::tuple<const char*, double, std::uint32_t> texts[] = {
        {" 5 ", 5, 5},          {"+5", 5, 5},
        {"-5", -5, 0},          {" 2.5\t", 2.5, 0},
        {".5", 0.5, 0},         {"5.", 5, 0},
        {"2e3", 2000, 0},       {"1e400", infinity, 0},
        {"-inf", -infinity, 0}, {"99999999999", 99999999999.0, 1215752191}};
    for (const auto& [text, number, whole] : texts) {
        const ConfigValue value{std::string(text)};
        EXPECT_EQ(to_double(value), number) << text;
        EXPECT_EQ(to_unsigned(value), whole) << text;
        EXPECT_EQ(to_text(value), text);
    }
    for (const char* text : {"", "0", "00", "False", " false", "True", "1e", "1,5", "5 5", "+-5",
                             "++5", "0x10", "1e-400", "infinity", "-nan"}) {
        const ConfigValue value{std::string(text)};
        EXPECT_EQ(to_double(value), 0.0) << text;
        EXPECT_EQ(to_unsigned(value), 0U) << text;
        const bool is_false = *text == '\0' || value == ConfigValue("0") || *text == 'F';
        EXPECT_EQ(to_bool(value), !is_false) << text;
    }
    const std::tuple<double, const char*, std::uint32_t, bool> numbers[] = {
        {0.5, "0.5", 1, true},           {-0.4, "-0.4", 0, false},
        {-0.0, "0", 0, false},           {-1, "-1", 4294967295U, true},
        {100000, "1e+05", 100000, true}, {123456, "123456", 123456, true},
        {5e9, "5e+09", 705032704, true}, {1e300, "1e+300", 0, true},
        {-nan, "nan", 0, true}};
    for (const auto& [number, text, whole, flag] : numbers) {
        const ConfigValue value{number};
        EXPECT_EQ(to_text(value), text);
        EXPECT_EQ(to_unsigned(value), whole) << text;
        EXPECT_EQ(to_bool(value), flag) << text;
    }
    EXPECT_EQ(to_text(true), "true");
    EXPECT_EQ(to_double(true), 1.0);
    EXPECT_EQ(to_unsigned(true), 1U);
}

TEST(ConfigMap, BoardText) {
    const std::pair<const char*, const char*> cases[] = {
        {"  aH\tKS\nqD 2c ", "AhKsQd2c"},
        {"Ah1xKs", "AhKs"},
        {"AhK", "Ah"},
        {"hAhAhA", ""},
        {"10hAs", ""},
        {"Ah\u00a0Ks\u2003Qd", "AhKsQd"},  // spaces beyond ASCII
        {"\u00e9\u00e9Ks", "Ks"},          // two characters, four bytes
        {"\U0001F0A1Ks", "Ks"},            // one character, two UTF-16 units
        {"\u00e9Ks", ""},
        // Bytes that are no UTF-8 are one character each and never a card.
        {"\xc1\x81hKs", ""},           // "A" in two bytes
        {"\xe0\x81\x81hKs", "Ks"},     // and in three
        {"\x81h\xc3\xc3Ks", "Ks"},     // a continuation of nothing, two broken leads
        {"\xed\xa0\x80hKs", "Ks"},     // half a surrogate pair
        {"\xf4\x90\x80\x80Ks", "Ks"},  // beyond Unicode
        {"Ks\xc3", "Ks"},
    };
    for (const auto& [text, board] : cases) {
        EXPECT_EQ(normalize_board_text(text), board) << testing::PrintToString(text);
    }
}

TEST(ConfigMap, Money) {
    using Amount = std::pair<double, std::uint32_t>;
    const Amount amounts[] = {{12.5, 1250},
                              {0.005, 1},
                              {0.004, 0},
                              {-5, 0},
                              {nan, 10000},
                              {infinity, 10000},
                              {30000000, 2147483646},
                              {max_chips, 2147483646}};
    for (const auto& [chips, hundredths] : amounts) {
        EXPECT_EQ(to_hundredths(chips, 10000), hundredths) << chips;
        EXPECT_EQ(config_with("starting_pot", chips).starting_pot, hundredths) << chips;
        EXPECT_EQ(config_with("effective_stack", chips).effective_stack, hundredths) << chips;
    }
    const std::tuple<double, double, float> limits[] = {
        {0.0512, 5.12, 5.12F}, {-1, 0, 0}, {nan, 0, 0.1F}, {3e7, 2147483646.0, 2147483646.0F}};
    for (const auto& [chips, cap, target] : limits) {
        EXPECT_DOUBLE_EQ(config_with("rake_cap", chips).rake_cap, cap) << chips;
        EXPECT_EQ(config_with("target_exploitability", chips).target_exploitability, target);
    }
    EXPECT_EQ(config_with("rake_percent", -250.0).rake_percent, -250.0);
}

TEST(ConfigMap, EachKeyReachesAFieldOfItsOwn) {
    EXPECT_EQ(config_from_map({}), SolveConfig{});
    EXPECT_EQ(config_keys().size(), 41U);
    std::vector<SolveConfig> seen = {SolveConfig{}};
    for (const ConfigKey& key : config_keys()) {
        if (key.name == "apply_node_locks" || key.name.ends_with("_enabled")) continue;
        ConfigMap map;
        map[key.name] = key.kind == ConfigKind::flag    ? ConfigValue(true)
                        : key.kind == ConfigKind::board ? ConfigValue("AsKsQs")
                                                        : ConfigValue("7");
        if (key.name.ends_with("_pct")) {
            EXPECT_EQ(config_from_map(map), SolveConfig{}) << key.name;  // not enabled
            map[key.name.substr(0, key.name.size() - 3) + "enabled"] = true;
        }
        const SolveConfig config = config_from_map(map);
        EXPECT_EQ(std::ranges::count(seen, config), 0) << key.name;
        seen.push_back(config);
    }
    const SolveConfig named = config_from_map({{"ip_turn_bet_sizes", "33"},
                                               {"ip_turn_raise_sizes", 50.0},
                                               {"ip_turn_add_all_in", "true"}});
    EXPECT_EQ(named.ip_turn, (StreetSizingText{"33", "50", true, false}));
}

TEST(ConfigMap, NotReady) {
    const std::string board = "Not ready: enter a valid board first";
    const std::string range = "Not ready: select at least one hand in both ranges";
    const std::string sizing = "Not ready: fill out both OOP and IP sizing";
    const std::tuple<std::string, const char*, std::vector<const char*>> cases[] = {
        {board, "board", {"AdJd", "AdJd8s2c3c4c"}},
        {"", "board", {"AdJd8s2c", "AdAdAd"}},
        {range, "ip_range", {" ", "A s", "%50%"}},
        {"", "oop_range", {"xxt9x", " 50% ", "A K", "AhKh"}},
        {sizing, "ip_river_raise_sizes", {"", " \t"}},
        {"", "oop_flop_bet_sizes", {"x"}}};
    for (const auto& [reason, key, texts] : cases) {
        for (const char* text : texts) {
            ConfigMap map = quick_solve_preset();
            map[key] = text;
            EXPECT_EQ(not_ready_reason(map).value_or(""), reason) << key << " '" << text << "'";
        }
    }
    EXPECT_EQ(not_ready_reason({}), board);
}

TEST(Presets, AreCompleteAndBuildASoundTree) {
    for (const ConfigMap& map : {default_preset(), quick_solve_preset()}) {
        for (const auto& [name, value] : map) {
            EXPECT_EQ(std::ranges::count(config_keys(), name, &ConfigKey::name), 1) << name;
        }
        EXPECT_EQ(not_ready_reason(map), std::nullopt);
        const SolveConfig config = config_from_map(map);
        EXPECT_FLOAT_EQ(config.target_exploitability,
                        static_cast<float>(config.starting_pot) * 0.005F);
        SpotInputs spot = parse_spot(config);
        const kestrel::Game game(std::move(spot.options),
                                 kestrel::CardContext(spot.board, spot.ranges));
        EXPECT_NO_THROW(kestrel::check_tree(game));
    }
}

}  // namespace
}  // namespace kestrel_app
