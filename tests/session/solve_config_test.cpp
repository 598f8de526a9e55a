#include "session/solve_config.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <utility>

#include "tests/engine/failure.h"

namespace kestrel_app {
namespace {

using kestrel::failure_of;
using kestrel::SizeKind;

SolveConfig river_config() {
    SolveConfig config;
    config.board = "AhKd7c4s2h";
    config.starting_street = "river";
    config.oop_range = "QQ+";
    config.ip_range = "50%";
    config.oop_river = {"33, 75", "3x", true, false};
    config.ip_river = {"100", "50", false, false};
    return config;
}

TEST(SizingText, Normalised) {
    const struct {
        const char* text;
        bool add_all_in;
        const char* result;
    } cases[] = {
        {"33, 75", false, "33%,75%"},
        {"33, 75", true, "33%,75%,a"},
        {"33,a", true, "33%,a"},
        {"33,A", true, "33%,A"},
        {"100a", true, "100a,a"},
        {"2.5x, 1e, 3E, 500c, 500c3r, 500C3R", false, "2.5x,1e,3E,500c,500c3r,500C3R"},
        {"3r", false, "3r%"},
        {"33.3%", false, "33.3%"},
        {"$33; 7 5 !", false, "3375%"},
        {" , ,", false, ""},
        {" , ,", true, "a"},
        {"", true, "a"},
        {"a", true, "a"},
    };
    for (const auto& [text, add_all_in, result] : cases) {
        EXPECT_EQ(normalize_sizing_text(text, add_all_in), result) << text;
    }
    EXPECT_EQ(failure_of([] { normalize_sizing_text("33,%", false); }),
              "invalid argument: Sizing: invalid token '%'. Use numbers like '33, 75' or "
              "'33%, 75%'");
    for (const char* token : {"c", "E", "x"}) {
        EXPECT_EQ(failure_of([&] { normalize_sizing_text(token, true); }),
                  std::string("invalid argument: Sizing: invalid token '") + token + "'");
    }
}

TEST(StreetSizing, TakesEachListFromItsSeat) {
    const StreetSizingText oop = {"33, 75", "2.5x", true, false};
    const StreetSizingText ip = {"100", "50, 60", false, true};
    const kestrel::StreetSizing sizing = build_street_sizing(oop, ip, "turn");
    ASSERT_EQ(sizing.oop_bets.size(), 3U);
    EXPECT_EQ(sizing.oop_bets[0].ratio, 0.33);
    EXPECT_EQ(sizing.oop_bets[2].kind, SizeKind::AllIn);
    ASSERT_EQ(sizing.oop_raises.size(), 2U);
    EXPECT_EQ(sizing.oop_raises[0].kind, SizeKind::RaiseMultiple);
    EXPECT_EQ(sizing.donk_sizes, sizing.oop_bets);
    ASSERT_EQ(sizing.ip_bets.size(), 1U);
    EXPECT_EQ(sizing.ip_bets[0].ratio, 1.0);
    EXPECT_EQ(sizing.ip_raises.size(), 2U);

    const auto no_donk = build_street_sizing_quiet({"33", "", false, true}, ip);
    EXPECT_EQ(no_donk.donk_sizes, std::vector<kestrel::SizeToken>());
    EXPECT_EQ(no_donk.oop_bets.size(), 1U);
}

TEST(StreetSizing, FailuresNameSeatStreetAndTexts) {
    const StreetSizingText good = {"33", "50"};
    const StreetSizingText bad = {"33, 2x", "50", true, false};
    const std::string why = "Relative raise (x) is not allowed in this context";
    const std::string texts =
        " sizing (bet='33, 2x', raise='50', bet_norm='33%,2x,a', raise_norm='50%,a'): ";
    const std::string head = "invalid argument: ";
    EXPECT_EQ(failure_of([&] { build_street_sizing(bad, good, "turn"); }),
              head + "OOP turn" + texts + why);
    EXPECT_EQ(failure_of([&] { build_street_sizing(good, bad, "river"); }),
              head + "IP river" + texts + why);
    EXPECT_EQ(failure_of([&] { build_street_sizing_quiet(good, bad); }), head + why);
    // A text that cannot even be normalised gives the plain message, also from the other list.
    EXPECT_EQ(failure_of([&] {
                  build_street_sizing({"2x", "e"}, good, "flop");
              }),
              head + "Sizing: invalid token 'e'");
}

TEST(RangeOrPercent, Percent) {
    const std::pair<const char*, float> weights[] = {
        {"50%", 0.5F}, {" 50% ", 0.5F}, {"100%", 1.0F}, {"0%", 0.0F}, {"33.5%", 0.335F}};
    for (const auto& [text, weight] : weights) {
        const kestrel::Range range = parse_range_or_percent(text);
        EXPECT_EQ(std::ranges::count(range, weight), 1326) << text;
    }
    EXPECT_EQ(parse_range_or_percent(" AA "), kestrel::parse_range("AA"));

    const std::string head = "invalid argument: ";
    const auto not_percent = [&](const std::string& text) {
        return head + "Invalid percent range '" + text + "' (expected like '50%')";
    };
    const std::string tiny = "0." + std::string(60, '0') + "1%";
    const std::string huge = std::string(400, '9') + "%";
    const std::pair<std::string, std::string> failures[] = {
        {"150%", head + "Weight must be within [0, 1]"},
        {".%", not_percent(".%")},
        {"1.2.3%", not_percent("1.2.3%")},
        {tiny, not_percent(tiny)},
        {huge, not_percent(huge)},
    };
    for (const auto& [text, failure] : failures) {
        EXPECT_EQ(failure_of([&] { parse_range_or_percent(text); }), failure);
    }
    for (const char* text : {"%", "5 0%", "50%%", "-5%", "1e1%"}) {
        EXPECT_EQ(failure_of([&] { parse_range_or_percent(text); }),
                  failure_of([&] { kestrel::parse_range(text); }))
            << text;
    }
}

TEST(ParseSpot, FillsTheEnginesRecords) {
    SolveConfig config = river_config();
    config.starting_pot = 1250;
    config.effective_stack = 9000;
    config.rake_percent = 5;
    config.rake_cap = 250.5;
    config.oop_add_all_in_jam_threshold_pct = 30.0;
    config.ip_add_all_in_jam_threshold_pct = -1.0;
    const SpotInputs spot = parse_spot(config);
    EXPECT_EQ(spot.board, (kestrel::Board{50, 45, 20, 11, 2}));
    EXPECT_EQ(spot.ranges[0], kestrel::parse_range("QQ+"));
    EXPECT_EQ(spot.ranges[1][0], 0.5F);
    EXPECT_EQ(spot.options.starting_street, kestrel::Street::River);
    EXPECT_EQ(spot.options.starting_pot, 1250);
    EXPECT_EQ(spot.options.effective_stack, 9000);
    EXPECT_EQ(spot.options.rake_fraction, 0.05);
    EXPECT_EQ(spot.options.rake_cap, 250.5);
    EXPECT_EQ(spot.options.jam_threshold, (std::array<double, 2>{0.3, 0.0}));
    EXPECT_EQ(spot.options.river.oop_bets.size(), 3U);
    EXPECT_EQ(spot.options.river.ip_raises.size(), 1U);
    EXPECT_TRUE(spot.options.turn.oop_bets.empty());

    config.board = "AhKd7c";
    config.starting_street = "preflop";  // counts as the flop
    EXPECT_EQ(parse_spot(config).board[3], kestrel::NO_CARD);
}

TEST(ParseSpot, Refuses) {
    using Change = std::function<void(SolveConfig&)>;
    const std::pair<std::string, Change> cases[] = {
        {"Board must include at least a flop (6 chars, e.g. AhKsQd)",
         [](SolveConfig& c) { c.board = "AhKd7"; }},
        {"Flop cards must be unique", [](SolveConfig& c) { c.board = "AhAh7c4s2h"; }},
        {"Invalid rank character", [](SolveConfig& c) { c.board = "AhKd7c4sXh"; }},
        {"Weight must be within [0, 1]", [](SolveConfig& c) { c.ip_range = "101%"; }},
        {"Starting street does not match the board",
         [](SolveConfig& c) { c.starting_street = "turn"; }},
        {"Starting street does not match the board", [](SolveConfig& c) { c.board = "AhKd7c4s"; }},
        {"Starting street does not match the board",
         [](SolveConfig& c) { c.starting_street = "flop"; }},
        {"Pot and stack are too large",
         [](SolveConfig& c) {
             c.starting_pot = 1;
             c.effective_stack = 1073741824;
         }},
        {"Pot and stack are too large", [](SolveConfig& c) { c.starting_pot = 4294967295U; }},
        // The first fault in the order of parsing is the one that is told.
        {"Invalid percent range '.%' (expected like '50%')",
         [](SolveConfig& c) {
             c.oop_range = ".%";
             c.ip_range = "101%";
             c.starting_street = "turn";
             c.oop_river.bet_sizes = "x";
         }},
        {"Sizing: invalid token 'x'", [](SolveConfig& c) { c.oop_flop.bet_sizes = "x"; }},
        {"IP river sizing (bet='1x', raise='', bet_norm='1x', raise_norm=''): Relative raise (x) "
         "is not allowed in this context",
         [](SolveConfig& c) {
             c.ip_river = {"1x", ""};
         }},
    };
    for (const auto& [message, change] : cases) {
        SolveConfig config = river_config();
        change(config);
        EXPECT_EQ(failure_of([&] { parse_spot(config); }), "invalid argument: " + message);
    }
    SolveConfig largest = river_config();
    largest.starting_pot = 1;
    largest.effective_stack = 1073741823;  // together 2^31 - 1
    EXPECT_NO_THROW(parse_spot(largest));
}

}  // namespace
}  // namespace kestrel_app
