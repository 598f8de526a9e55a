#include "session/solve_config.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "tests/engine/failure.h"

namespace kestrel_app {
namespace {

using kestrel::failure_of;
using kestrel::SizeKind;

const std::string head = "invalid argument: ";

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
    using Case = std::tuple<const char*, bool, const char*>;
    const Case cases[] = {{"33, 75", true, "33%,75%,a"},
                          {"33,A", true, "33%,A"},
                          {"100a", true, "100a,a"},
                          {"3r", false, "3r%"},
                          {"33.3%", false, "33.3%"},
                          {" , ,", false, ""},
                          {"$33; 7 5 !", false, "3375%"},
                          {"", true, "a"},
                          {"2.5x, 1e, 3E, 500c, 500C3R", false, "2.5x,1e,3E,500c,500C3R"}};
    for (const auto& [text, add_all_in, result] : cases) {
        EXPECT_EQ(normalize_sizing_text(text, add_all_in), result) << text;
    }
    EXPECT_EQ(failure_of([] { normalize_sizing_text("33,%", false); }),
              head + "Sizing: invalid token '%'. Use numbers like '33, 75' or '33%, 75%'");
    for (const char* token : {"c", "E", "x"}) {
        EXPECT_EQ(failure_of([&] { normalize_sizing_text(token, true); }),
                  head + "Sizing: invalid token '" + token + "'");
    }
}

TEST(SizingText, FaultsAreNamed) {
    for (const char* text :
         {"", "-", " , ,", "33 , 75%, 2.5x,", "33 %,.5,5.", "A, 500c, 500C3R, 1e, 2%80E, %75e"}) {
        EXPECT_TRUE(sizing_faults(text, true).empty()) << text;
    }
    // What the solver would make something of, and what means nothing.
    for (const char* piece :
         {"33 75", "33;75",    "33/75", "half", "pot", "min",       "-50",   "1/2",
          "$5",    "50 chips", "1.5e3", "100a", "xa",  "3e75%",     "1.2.3", "33-",
          "x",     "%",        "e",     "5 00", "3r",  "\xc2\xa0 5"}) {
        EXPECT_EQ(
            sizing_faults("75, " + std::string(piece) + " ,1x", true),
            (std::vector<SizingFault>{{piece, ""}, {"1x", "Relative raise must exceed 1.0x"}}));
    }
    const std::tuple<const char*, bool, const char*> sizes[] = {
        {"2x", false, "Relative raise (x) is not allowed in this context"},
        {"500c2r", false, "Raise cap is only valid for raises"},
        {"3000000000c", false, "Integer value is out of range"},
        {"0e", false, "Geometric streets must be positive"}};
    for (const auto& [piece, allow_relative, reason] : sizes) {
        EXPECT_EQ(sizing_faults(piece, allow_relative),
                  (std::vector<SizingFault>{{piece, reason}}));
    }
}

TEST(StreetSizing, TakesEachListFromItsSeat) {
    const StreetSizingText oop = {"33, 75", "2.5x", true, false};
    const StreetSizingText ip = {"100", "50, 60", false, true};
    const kestrel::StreetSizing sizing = build_street_sizing(oop, ip, "turn");
    ASSERT_EQ(sizing.oop_bets.size(), 3U);
    EXPECT_EQ(sizing.oop_bets[0].ratio, 0.33);
    EXPECT_EQ(sizing.oop_bets[2].kind, SizeKind::AllIn);
    EXPECT_EQ(sizing.oop_raises.at(0).kind, SizeKind::RaiseMultiple);
    EXPECT_EQ(sizing.donk_sizes, sizing.oop_bets);
    EXPECT_EQ(sizing.ip_bets.at(0).ratio, 1.0);
    EXPECT_EQ(sizing.ip_raises.size(), 2U);
    const auto no_donk = build_street_sizing_quiet({"33", "", false, true}, ip);
    EXPECT_EQ(no_donk.donk_sizes, std::vector<kestrel::SizeToken>());

    const StreetSizingText bad = {"33, 2x", "50", true, false};
    const std::string why = "Relative raise (x) is not allowed in this context";
    const std::string texts =
        " sizing (bet='33, 2x', raise='50', bet_norm='33%,2x,a', raise_norm='50%,a'): ";
    EXPECT_EQ(failure_of([&] { build_street_sizing(bad, ip, "turn"); }),
              head + "OOP turn" + texts + why);
    EXPECT_EQ(failure_of([&] { build_street_sizing(oop, bad, "river"); }),
              head + "IP river" + texts + why);
    EXPECT_EQ(failure_of([&] { build_street_sizing_quiet(oop, bad); }), head + why);
    // A text that cannot even be normalised gives the plain message, also from the other list.
    EXPECT_EQ(failure_of([&] {
                  build_street_sizing({"2x", "e"}, ip, "flop");
              }),
              head + "Sizing: invalid token 'e'");
}

TEST(RangeOrPercent, Percent) {
    const std::pair<const char*, float> weights[] = {
        {" 50% ", 0.5F}, {"100%", 1.0F}, {"0%", 0.0F}, {"33.5%", 0.335F}};
    for (const auto& [text, weight] : weights) {
        EXPECT_EQ(std::ranges::count(parse_range_or_percent(text), weight), 1326) << text;
    }
    EXPECT_EQ(parse_range_or_percent(" AA "), kestrel::parse_range("AA"));
    EXPECT_EQ(failure_of([] { parse_range_or_percent("150%"); }),
              head + "Weight must be within [0, 1]");
    for (const std::string& text :
         {std::string(".%"), std::string("1.2.3%"), "0." + std::string(60, '0') + "1%",
          std::string(400, '9') + "%"}) {
        EXPECT_EQ(failure_of([&] { parse_range_or_percent(text); }),
                  head + "Invalid percent range '" + text + "' (expected like '50%')");
    }
    for (const char* text : {"%", "5 0%", "50%%", "-5%", "1e1%"}) {
        EXPECT_EQ(failure_of([&] { parse_range_or_percent(text); }),
                  failure_of([&] { kestrel::parse_range(text); }));
    }
}

TEST(ParseSpot, FillsTheEnginesRecords) {
    SolveConfig config = river_config();
    config.rake_percent = 5;
    config.oop_add_all_in_jam_threshold_pct = 30.0;
    config.ip_add_all_in_jam_threshold_pct = -1.0;
    config.exact_all_in = true;
    const SpotInputs spot = parse_spot(config);
    EXPECT_TRUE(spot.options.exact_all_in);
    EXPECT_EQ(spot.board, (kestrel::Board{50, 45, 20, 11, 2}));
    EXPECT_EQ(spot.ranges[0], kestrel::parse_range("QQ+"));
    EXPECT_EQ(spot.ranges[1][0], 0.5F);
    EXPECT_EQ(spot.options.rake_fraction, 0.05);
    EXPECT_EQ(spot.options.jam_threshold, (std::array<double, 2>{0.3, 0.0}));
    EXPECT_EQ(spot.options.river.oop_bets.size(), 3U);

    config.board = "AhKd7c";
    config.starting_street = "preflop";  // counts as the flop
    EXPECT_EQ(parse_spot(config).board[3], kestrel::NO_CARD);
}

TEST(ParseSpot, Refuses) {
    using Change = void (*)(SolveConfig&);
    const std::string street = "Starting street does not match the board";
    const std::pair<std::string, Change> cases[] = {
        {"Board must include at least a flop (6 chars, e.g. AhKsQd)",
         [](SolveConfig& c) { c.board = "AhKd7"; }},
        {"Flop cards must be unique", [](SolveConfig& c) { c.board = "AhAh7c4s2h"; }},
        {"Invalid rank character", [](SolveConfig& c) { c.board = "AhKd7c4sXh"; }},
        {street, [](SolveConfig& c) { c.board = "AhKd7c4s"; }},
        // The first fault in the order of parsing is the one that is told.
        {street, [](SolveConfig& c) { c.starting_street = c.oop_flop.bet_sizes = "x"; }},
        {"Pot and stack are too large", [](SolveConfig& c) { c.effective_stack = 1073741824; }},
        {"Pot and stack are too large", [](SolveConfig& c) { c.starting_pot = 4294967295U; }},
        {"Sizing: invalid token 'x'", [](SolveConfig& c) { c.oop_flop.bet_sizes = "x"; }},
    };
    for (const auto& [message, change] : cases) {
        SolveConfig config = river_config();
        config.starting_pot = 1;
        config.effective_stack = 1073741823;  // together 2^31 - 1, the most there may be
        EXPECT_NO_THROW(parse_spot(config));
        change(config);
        EXPECT_EQ(failure_of([&] { parse_spot(config); }), head + message);
    }
}

}  // namespace
}  // namespace kestrel_app
