#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <iterator>
#include <new>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "cli/input_error.h"
#include "cli/line_walk.h"
#include "cli/options.h"
#include "cli/program.h"
#include "cli/solve_run.h"
#include "cli/spot_file.h"
#include "platform/interrupt.h"
#include "platform/memory_info.h"
#include "session/config_map.h"
#include "session/presets.h"
#include "tests/cli/support.h"

namespace tidewell_cli {
namespace {

using nlohmann::json;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;
using testing::StartsWith;

Options parsed(const std::string& line) {
    std::istringstream in(line);
    const std::vector<std::string> words{std::istream_iterator<std::string>(in), {}};
    std::vector<const char*> arguments;
    std::ranges::transform(words, std::back_inserter(arguments), &std::string::c_str);
    return parse_options(arguments);
}

TEST(Options, ReadOrRefused) {
    const Options options = parsed(
        "--threads 3 --iterations=70 --target 0.25 --json=- --node Check --exact-all-in --stats "
        "--lock=Check;AKs=1,0 --lock ;AA=0,1 -- -spot.json");
    EXPECT_EQ(options.threads, 3U);
    EXPECT_EQ(options.iterations, 70U);
    EXPECT_EQ(options.target_percent, 0.25);
    EXPECT_EQ(options.json_path, "-");
    EXPECT_EQ(options.node_line, "Check");
    EXPECT_TRUE(options.exact_all_in);
    EXPECT_TRUE(options.stats);
    EXPECT_FALSE(options.tables());
    ASSERT_EQ(options.locks.size(), 2U);
    EXPECT_EQ(options.locks[0].hand + options.locks[1].hand, "AKsAA");
    EXPECT_EQ(options.spot_path, "-spot.json");

    const std::string refused =
        "--threads 2x|--threads|--threads 5000|--iterations 0|--iterations 4294967296|"
        "--target nan|--target 101|--target=|--json=|--save -|--list-nodes 1 --save a|"
        "--list-nodes -1|--list-nodes 1 --json -|--list-nodes 1 --stats|--stats=yes|"
        "--json - --combos|--lock|--lock Check;AKs|--signature --buckets|"
        "--node Check --list-nodes 1|-x|--help=yes|a.json b.json|--signature a.json";
    std::istringstream lines(refused);
    for (std::string line; std::getline(lines, line, '|');) {
        EXPECT_THROW(parsed(line), InputError) << line;
    }
}

TEST(SpotFile, ReadsLooselyTypedValues) {
    std::vector<std::string> warnings;
    const auto map = parse_spot_text(
        R"({"board": "ah kd 7c", "oop_range": "AA", "ip_range": "50%", "starting_pot": "12.5",
            "effective_stack": 3, "effective_stack": 4, "bord": 1, "exact_all_in": 1})",
        "spot", warnings);
    const auto config = kestrel_app::config_from_map(map);
    EXPECT_EQ(config.starting_pot, 1250U);
    EXPECT_EQ(config.effective_stack, 400U);
    EXPECT_TRUE(config.exact_all_in);
    EXPECT_THAT(warnings,
                ElementsAre("spot: key 'effective_stack' stands there twice; the last one counts",
                            "spot: unknown key 'bord' is ignored"));
}

TEST(SpotFile, RefusesWhatCannotBeMeant) {
    const struct {
        const char* key;
        json value;
        const char* message;
    } cases[] = {
        {"board", "AhKd7c4s2hQs", "board must be three to five cards such as AdJd8s, not"},
        {"starting_pot", 0, "starting_pot must be a number from 0.01 to 21474836.46, not 0"},
        {"starting_pot", "nan", "starting_pot must be"},
        {"effective_stack", json::object(), "not an object"},
        {"rake_percent", 100.5, "rake_percent must be a number from 0 to 100, not 100.5"},
        {"max_iterations", 1.5, "max_iterations must be a whole number from 1 to 4294967295"},
        {"thread_count", 0, "thread_count must be a whole number from 1 to 1024, not 0"},
        {"oop_river_add_all_in", json::array({1}), "must be true or false, not a list"},
        {"oop_range", "AA:2", "oop_range: Weight must be within [0, 1]"},
        {"starting_street", "preflop", "starting_street must be flop, turn or river"},
    };
    const auto message_of = [](const std::string& text) {
        std::vector<std::string> warnings;
        return refusal_of([&] { parse_spot_text(text, "a.json", warnings); });
    };
    for (const auto& [key, value, message] : cases) {
        EXPECT_THAT(message_of(river_with(key, value).dump()),
                    AllOf(StartsWith("a.json: "), HasSubstr(message)))
            << key;
    }
    const std::string deep = std::string(200000, '[') + std::string(200000, ']');
    const std::pair<std::string, const char*> texts[] = {
        {"", "a.json: line 1"},
        {"{\n\"board\": \"AhKd7c\",\n}", "a.json: line 3"},
        {"{\n\n\"starting_pot\": 1e999}", "a.json: line 3: the number 1e999 is too large"},
        {"[1]", "a.json: a spot is one JSON object"},
        {"{\"board\": \"AhKd7c\", \"ip_range\": \"AA\"}", "a.json: oop_range is missing"},
        {"{\"board\": \"\xff\"}", "a.json: line 1"},
        {deep, "a.json: lists and objects are nested too deeply"},
        {"{\"starting_pot\": " + deep + "}", "a.json: lists and objects are nested too deeply"},
        {"{\"unknown\": {\"a\": " + deep + "}}", "a.json: lists and objects are nested too"},
    };
    for (const auto& [text, message] : texts) {
        EXPECT_THAT(message_of(text), StartsWith(message)) << text.substr(0, 30);
    }
}

// Diamonds and spades play alike until one of them is dealt. Two bets share a name.
TEST(LineWalk, FollowsNamesCardsAndNumbersOrTellsTheChoices) {
    kestrel_app::SolveConfig config;
    config.board = "9h8h2c";
    config.oop_range = "AA,KK";
    config.ip_range = "QQ,JJ";
    config.starting_pot = 1000;
    config.effective_stack = 3000;
    config.oop_flop = {"50, 50.2", ""};
    config.ip_flop = {"75", "60", true, false};
    const kestrel_app::SpotInputs spot = kestrel_app::parse_spot(config);
    const kestrel::Game game{spot.options, kestrel::CardContext(spot.board, spot.ranges)};

    const std::pair<const char*, const char*> lines[] = {
        {"", "root"},
        {" check / BET75% /call/ 2D/CHECK", "Check/Bet 75%/Call/2d/Check"},
        {"check/all-in/call/kd", "Check/All-In/Call/Kd"},
        {"#2/#1", "Bet 50%/Fold"},
    };
    for (const auto& [line, canonical] : lines) {
        const NodePath path = walk_line(game, line);
        EXPECT_EQ(line_of(game, path), canonical) << line;
        std::uint64_t node = 0;
        for (const kestrel_app::PathStep& step : path.steps) {
            EXPECT_EQ(step.node, node);
            node = game.nodes[node].children[step.action];
        }
        EXPECT_EQ(path.node, node);
    }
    EXPECT_NE(walk_line(game, "#2").node, walk_line(game, "#3").node);

    const std::pair<const char*, const char*> refused[] = {
        {"Chek", "there is no 'Chek' behind root; choices: Check, Bet 50%, Bet 50%"},
        {"Bet 50%",
         "'Bet 50%' behind root has several meanings: #2 to 5 chips, #3 to 5.02 chips; "
         "write the number for the one you mean"},
        {"Check/Check/2s", "'2s' behind Check/Check plays like another suit: name 2d instead"},
        {"Check/Check/9h", "'9h' behind Check/Check is on the board already"},
        {"#2/Fold/Check", "the hand is over behind Bet 50%/Fold, 'Check' cannot follow"},
    };
    for (const auto& [line, message] : refused) {
        EXPECT_THAT(refusal_of([&, text = line] { walk_line(game, text); }), StartsWith(message));
    }
}

TEST(InterruptDeathTest, IsDeferredOnlyForATime) {
    {
        tidewell_platform::InterruptGuard guard(interrupted_line, exit_interrupted);
        guard.defer();
        EXPECT_FALSE(guard.interrupted());
        raise(SIGINT);
        EXPECT_TRUE(guard.interrupted());
    }
    const auto interrupted_behind_the_solve = [] {
        tidewell_platform::InterruptGuard guard(interrupted_line, exit_interrupted);
        guard.defer();
        guard.stop_deferring();
        raise(SIGINT);
    };
    EXPECT_EXIT(interrupted_behind_the_solve(), testing::ExitedWithCode(130), "interrupted");
}

/// Runs of the program on the river spot.
class Program : public testing::Test {
  protected:
    json report_of(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), {spot_, "--json", file_});
        const RunResult result = run(arguments);
        EXPECT_EQ(result.exit_code, 0) << result.err;
        return json::parse(contents(file_));
    }

    const Folder folder_;
    const std::string spot_ = folder_.write("river.json", river_spot);
    const std::string file_ = folder_ / "result.json";
};

TEST_F(Program, WritesTheWholeResult) {
    const RunResult result =
        run({spot_, "--json", file_, "--node", "check/bet 75%", "--threads", "2"});
    EXPECT_EQ(result.exit_code, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(result.out, HasSubstr("Check/Bet 75%: River, OOP to act, pot 35"));
    EXPECT_THAT(result.out, Not(HasSubstr("exact")));
    EXPECT_THAT(result.out, Not(HasSubstr("\x1b")));  // no terminal, no colours

    const json report = json::parse(contents(file_));
    const double exploitability = report["exploitability"];
    EXPECT_GT(exploitability, 0.0);
    EXPECT_LT(exploitability, 0.2);
    EXPECT_DOUBLE_EQ(report["exploitability_pct"], exploitability * 5);
    // The rake is all that the two lose against an even split: at least 5 % of the pot, at most 3.
    const double both = report["ev_oop"].get<double>() + report["ev_ip"].get<double>();
    EXPECT_LT(both, -0.99);
    EXPECT_GT(both, -3.01);
    EXPECT_GT(report["nodes"], report["decision_nodes"]);
    EXPECT_GT(report["peak_rss_bytes"], report["estimate_bytes"]);
    EXPECT_GT(report["iteration_ms"], 0.0);
    EXPECT_GT(report["seconds"]["total"], report["seconds"]["solve"]);
    ASSERT_EQ(report["trace"].size(), 3U);
    EXPECT_EQ(report["trace"][2], (json{{"iteration", 130}, {"exploitability", exploitability}}));

    const json& node = report["node"];
    EXPECT_EQ(node["player"], "OOP");
    EXPECT_EQ(node["pot"], 35.0);
    std::string names;
    for (const json& action : node["actions"]) {
        names += action["name"].get<std::string>() + "|" + action["type"].get<std::string>() + " ";
    }
    EXPECT_EQ(names, "Fold|fold Call|call Raise 129%|raise 129% All-In|allin ");
    // Behind a check the weights are what the player checks at the root.
    const RunResult root = run({spot_, "--json", "-", "--threads", "1", "--exact-all-in"});
    const json at_root = json::parse(root.out)["node"];
    EXPECT_THAT(root.err, AllOf(HasSubstr("Exploitability"), HasSubstr("exact run-outs")));
    ASSERT_EQ(node["combos"].size(), report["hands_oop"]);
    for (std::size_t i = 0; i < node["combos"].size(); ++i) {
        const json& combo = node["combos"][i];
        const json& before = at_root["combos"][i];
        EXPECT_EQ(combo["combo"], before["combo"]);
        EXPECT_NEAR(combo["weight"],
                    before["weight"].get<double>() * before["probs"][0].get<double>(), 1e-7);
    }
}

TEST_F(Program, StopsAtTheTargetInPercentOfThePot) {
    const json report = report_of({"--target", "5", "--iterations", "1000"});
    EXPECT_LE(report["exploitability_pct"], 5.0);
    EXPECT_EQ(report["iterations"].get<int>() % 50, 0);
    EXPECT_LT(report["iterations"], 1000);
}

TEST_F(Program, ListsNodesThatNodeUnderstands) {
    const RunResult list = run({spot_, "--list-nodes", "2"});
    EXPECT_EQ(list.exit_code, 0);
    std::istringstream lines(list.out);
    std::string line;
    std::getline(lines, line);
    int count = 0;
    for (; std::getline(lines, line); ++count) {
        const std::string path = line.substr(line.rfind("  ") + 2);
        EXPECT_EQ(report_of({"--iterations", "1", "--node", path})["node"]["index"],
                  std::stoi(line));
    }
    EXPECT_GT(count, 10);
}

TEST_F(Program, TellsBadInputInOneLineWithCodeTwo) {
    int files = 0;
    const auto spot = [&](const std::string& key, const json& value) {
        return folder_.write(std::to_string(++files) + ".json", river_with(key, value).dump());
    };
    const std::pair<std::vector<std::string>, const char*> cases[] = {
        {{folder_ / "nowhere.json"}, "cannot open "},
        {{folder_.path().string()}, "is a folder"},
        {{spot("starting_street", "a\nb")}, "not 'a?b'"},
        {{spot("board", "AhKd7cAh2s")}, "Turn conflicts with flop"},
        {{spot_, "--node", "Chek"}, "choices: Check, Bet 50%, Bet 100%, All-In"},
        {{spot_, "--json", folder_ / "no/such.json"}, "cannot write "},
    };
    for (const auto& [arguments, message] : cases) {
        const RunResult result = run(arguments);
        EXPECT_EQ(result.exit_code, 2) << message;
        EXPECT_THAT(result.err, AllOf(StartsWith("tidewell-solve: "), HasSubstr(message)));
        EXPECT_EQ(std::ranges::count(result.err, '\n'), 1) << result.err;
    }
}

TEST(Memory, RefusesWhatDoesNotFit) {
    const std::pair<const char*, const char*> cases[] = {
        {"700000", "the solve needs 1.1[0-9] GB, [0-9]+ MB are available"},
        {"40000",
         "the solve needs more than the [0-9]+ MB available, which ran out after "
         "[0-9]+ [KM]B of the betting tree"},
    };
    for (const auto& [limit, message] : cases) {
        const RunResult result = Child({}, std::string("ulimit -d ") + limit).wait();
        EXPECT_EQ(result.exit_code, 1);
        EXPECT_THAT(result.err, MatchesRegex(std::string("tidewell-solve: not enough memory: ") +
                                             message + "\n"));
    }
}

// Room for the tree, but not for the states.
TEST(Memory, RunningOutInTheSolveIsAnException) {
    tidewell_platform::InterruptGuard interrupt(interrupted_line, exit_interrupted);
    const tidewell_platform::AllocationLimit limit(std::uint64_t{400} << 20);
    EXPECT_THROW(run_solve(kestrel_app::config_from_map(kestrel_app::quick_solve_preset()),
                           interrupt, [](std::uint32_t, double, bool) {}),
                 std::bad_alloc);
}

TEST_F(Program, CtrlCEndsASolve) {
    Child child({spot_, "--iterations", "4000000000"});
    for (int i = 0; i < 1000 && child.out().find("iteration 50 ") == std::string::npos; ++i) {
        usleep(10000);
    }
    child.send(SIGINT);
    const RunResult result = child.wait();
    EXPECT_EQ(result.exit_code, 130);
    EXPECT_THAT(result.err, MatchesRegex(".*interrupted after [0-9]+ iterations\n"));
}

}  // namespace
}  // namespace tidewell_cli
