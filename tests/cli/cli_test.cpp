#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <initializer_list>
#include <iterator>
#include <new>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <string_view>
#include <tuple>
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
    EXPECT_EQ(std::tuple(options.threads, options.iterations, options.target_percent),
              std::tuple(3U, 70U, 0.25));
    EXPECT_EQ(options.json_path + options.node_line + options.spot_path, "-Check-spot.json");
    EXPECT_TRUE(options.exact_all_in && options.stats && !options.tables());
    EXPECT_EQ(options.locks.at(0).hand + options.locks.at(1).hand, "AKsAA");

    const std::string refused =
        "--threads 2x|--threads|--threads 5000|--iterations 0|--iterations 4294967296|"
        "--target nan|--target 101|--target=|--json=|--save -|--list-nodes 1 --save a|"
        "--list-nodes -1|--list-nodes 1 --json -|--list-nodes 1 --stats|--stats=yes|"
        "--json - --combos|--lock|--lock Check;AKs|--signature --buckets|"
        "--node Check --list-nodes 1|-x|--help=yes|a.json b.json|--signature a.json|--target 1" +
        std::string(100000, 'x');
    std::istringstream lines(refused);
    for (std::string line; std::getline(lines, line, '|');) {
        const std::string told = refusal_of([&] { parsed(line); });
        EXPECT_TRUE(told != "accepted" && told.size() < 400) << line.substr(0, 30);
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
        {"oop_range", "AA, K K:2", "oop_range: 'KK:2': Weight must be within [0, 1]"},
        {"ip_range", "AA:0", "ip_range holds no hand"},
        {"oop_range", "AhKd,AhAc", "oop_range holds no hand that the board leaves"},
        {"starting_street", "preflop", "starting_street must be flop, turn or river"},
        {"ip_river_bet_sizes", -50, "ip_river_bet_sizes: '-50' is no size; write sizes such as"},
        {"oop_turn_bet_sizes", "50, 2x", "oop_turn_bet_sizes: '2x': Relative raise (x) is not"},
        {"oop_river_raise_sizes", std::string(1 << 20, '\n') + "half", "'half' is no size"},
        {"starting_street", std::string(1 << 20, '\a'), "not '\\x07\\x07"},
    };
    const auto message_of = [](const std::string& text) {
        std::vector<std::string> warnings;
        return refusal_of([&] { parse_spot_text(text, "a.json", warnings); });
    };
    for (const auto& [key, value, message] : cases) {
        const std::string told = message_of(river_with(key, value).dump());
        EXPECT_THAT(told, AllOf(StartsWith("a.json: "), HasSubstr(message)));
        EXPECT_LT(told.size(), 400U);
    }
    const std::string deep = std::string(200000, '[') + std::string(200000, ']');
    const std::pair<std::string, const char*> texts[] = {
        {"", "a.json: line 1, column 1: "},
        {"{\n\"board\": \"AhKd7c\",\n}", "a.json: line 3, column 1: "},
        {"{\n\n\"starting_pot\": 1e999}", "a.json: line 3, column 17: the number 1e999 is too"},
        {"[1]", "a.json: a spot is one JSON object"},
        {"{\"board\": \"AhKd7c\", \"ip_range\": \"AA\"}", "a.json: oop_range is missing"},
        {"{\"board\": \"\xff\"}", "a.json: line 1, column 12: "},
        {"{\"board\": \"" + deep, "a.json: line 1, column 400012: "},
        {"\"\\\"[\"\n" + deep,
         "a.json: line 2, column 17: lists and objects are nested too deeply"},
        {"{\"unknown\": {\"a\": " + deep + "}}", "a.json: line 1, column 33: lists and objects"},
    };
    for (const auto& [text, message] : texts) {
        const std::string told = message_of(text);
        EXPECT_THAT(told, StartsWith(message)) << text.substr(0, 30);
        EXPECT_LT(told.size(), 400U);
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

using tidewell_platform::InterruptGuard;

TEST(InterruptDeathTest, EndsAtOnceOrIsRemembered) {
    const auto raised = [](std::initializer_list<int> signals, void (InterruptGuard::*mode)()) {
        InterruptGuard guard("told\n");
        (guard.*mode)();
        for (const int number : signals) {
            raise(number);
        }
        return guard.exit_code();
    };
    EXPECT_EQ(raised({SIGTERM}, &InterruptGuard::defer), 143);
    EXPECT_EQ(raised({SIGHUP, SIGINT, SIGTERM}, &InterruptGuard::hold), 129);
    EXPECT_EXIT(raised({SIGINT, SIGHUP}, &InterruptGuard::defer), testing::ExitedWithCode(129),
                "^told");
    EXPECT_EXIT(raised({SIGINT}, &InterruptGuard::stop_deferring), testing::ExitedWithCode(130),
                "^told");
    signal(SIGHUP, SIG_IGN);  // as nohup does
    EXPECT_EQ(raised({SIGHUP}, &InterruptGuard::stop_deferring), 0);
    signal(SIGHUP, SIG_DFL);
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
    EXPECT_GT(report["peak_rss_bytes"], report["estimate_bytes"]);
    EXPECT_EQ(report["trace"].at(2),
              (json{{"iteration", 130}, {"exploitability", exploitability}}));

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
    const std::string link = folder_ / "link";
    const std::string dangling = folder_ / "dangling";
    std::filesystem::create_hard_link(spot_, link);
    std::filesystem::create_symlink("new", dangling);
    // Others would lose what they read from.
    const std::string pipe = folder_ / "pipe";
    const std::string pipe_project = folder_ / "pipe.tidewellproj";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600) + mkfifo(pipe_project.c_str(), 0600), 0);
    int files = 0;
    const auto spot = [&](const std::string& key, const json& value) {
        return folder_.write(std::to_string(++files) + ".json", river_with(key, value).dump());
    };
    const std::pair<std::vector<std::string>, const char*> cases[] = {
        {{folder_ / "nowhere.json"}, "cannot open "},
        {{folder_ / "nowhere.tidewellproj"}, "cannot open "},
        {{folder_.path().string()}, "is a folder"},
        {{"/dev/zero"}, "is too large for a spot"},
        {{pipe_project}, "This is a pipe, not a file"},
        {{spot_, "--save", pipe}, "pipe: it is a pipe or a device"},
        {{spot_, "--save", folder_.path().string()}, "Is a directory"},
        {{spot("starting_street", "a\nb")}, "not 'a\\nb'"},
        {{spot("board", "AhKd7cAh2s")}, "2.json: board has Ah twice"},
        {{spot("starting_street", "turn")}, "3.json: Starting street does not match the board"},
        {{spot_, "--node", "Chek"}, "choices: Check, Bet 50%, Bet 100%, All-In"},
        {{spot_, "--json", folder_ / "no/such.json"}, "such.json: No such file or directory"},
        {{spot_, "--json", folder_ / std::string(256, 'n')}, "n: File name too long"},
        {{spot_, "--json", link}, "link is the same file as the spot"},
        {{link, "--save", spot_}, "river.json is the same file as the spot"},
        {{spot_, "--json", folder_ / "new", "--save", folder_ / "./new"},
         "is the same file as --json "},
        {{spot_, "--json", dangling, "--save", folder_ / "new"}, "is the same file as --json "},
    };
    for (const auto& [arguments, message] : cases) {
        const RunResult result = run(arguments);
        EXPECT_EQ(result.exit_code, 2) << message;
        EXPECT_THAT(result.err, AllOf(StartsWith("tidewell-solve: "), HasSubstr(message)));
        EXPECT_EQ(std::ranges::count(result.err, '\n'), 1) << result.err;
    }
}

TEST_F(Program, ReplacesFilesAsAWholeOrNotAtAll) {
    // Names as long as they get, of bytes that are no text, and of a link.
    const std::string link = folder_ / std::string(255, 'l');
    const std::string project = folder_ / ("\xff" + std::string(254, 'p'));
    std::filesystem::create_symlink(file_, link);
    const std::vector<std::string> arguments = {spot_, "--json", link, "--save", project};

    // Room for a part only.
    std::ofstream(file_) << "the former file";
    std::ofstream(project) << "the former project";
    chmod(file_.c_str(), 0640);
    RunResult result = Child(arguments, "ulimit -f 16").wait();
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_EQ(result.err, "tidewell-solve: cannot write " + project + ": File too large\n" +
                              "tidewell-solve: cannot write " + link + ": File too large\n");
    EXPECT_THAT(result.out, HasSubstr("Exploitability"));
    EXPECT_EQ(contents(file_) + contents(project), "the former filethe former project");

    EXPECT_EQ(run(arguments).exit_code, 0);
    EXPECT_TRUE(json::parse(contents(file_)).contains("node"));
    EXPECT_TRUE(json::parse(contents(project)).contains("results"));
    struct stat status {};
    EXPECT_EQ(stat(file_.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0640U);
    const std::filesystem::directory_iterator files(folder_.path());
    EXPECT_EQ(std::distance(begin(files), end(files)), 4);  // nothing beside them

    // Nobody reads the report.
    for (const char* output : {" >&-", " | false"}) {
        std::filesystem::remove(project);
        result = Child({spot_, "--save", project}, "true", output).wait();
        EXPECT_EQ(result.exit_code, 1);
        EXPECT_EQ(result.err, "tidewell-solve: cannot write to standard output\n");
        EXPECT_TRUE(std::filesystem::exists(project));
    }
}

TEST(Memory, RefusesWhatDoesNotFit) {
    const std::pair<const char*, const char*> cases[] = {
        {"700000", "the solve needs 1.[01][0-9] GB, [0-9]+ MB are available"},
        {"40000", "the solve needs more than [0-9]+ [KM]B, [0-9]+ [KM]B are available"},
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
    tidewell_platform::InterruptGuard interrupt("interrupted\n");
    const tidewell_platform::AllocationLimit limit(std::uint64_t{400} << 20);
    EXPECT_THROW(run_solve(kestrel_app::config_from_map(kestrel_app::quick_solve_preset()),
                           interrupt, [](std::uint32_t, double, bool) {}),
                 std::bad_alloc);
}

// Stacks of a gigabyte each.
TEST_F(Program, TellsThatThreadsCannotBeStarted) {
    const RunResult result =
        Child({spot_, "--threads", "64"}, "ulimit -s 1000000; ulimit -v 4000000").wait();
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_THAT(result.err, HasSubstr("Cannot start 64 threads: "));
}

TEST_F(Program, SignalsEndASolve) {
    for (const auto& [number, code] : {std::pair{SIGINT, 130}, {SIGTERM, 143}, {SIGHUP, 129}}) {
        Child child({spot_, "--iterations", "4000000000"});
        for (int i = 0; i < 1000 && child.out().find("iteration 50 ") == std::string::npos; ++i) {
            usleep(10000);
        }
        child.send(number);
        const RunResult result = child.wait();
        EXPECT_EQ(result.exit_code, code);
        EXPECT_THAT(result.err,
                    MatchesRegex("tidewell-solve: interrupted after [0-9]+ iterations\n"));
    }
}

}  // namespace
}  // namespace tidewell_cli
