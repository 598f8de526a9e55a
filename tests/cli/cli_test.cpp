#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <new>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "cli/input_error.h"
#include "cli/line_walk.h"
#include "cli/memory_info.h"
#include "cli/options.h"
#include "cli/spot_file.h"
#include "engine/game/game.h"
#include "session/solve_config.h"

namespace tidewell_cli {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::Not;
using testing::StartsWith;

/// A folder of the test's own, removed at the end.
class Folder {
  public:
    Folder() {
        std::string name = (fs::temp_directory_path() / "tidewell-test-XXXXXX").string();
        path_ = mkdtemp(name.data());
    }
    ~Folder() { fs::remove_all(path_); }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    std::string write(const std::string& name, const std::string& text) const {
        const fs::path file = path_ / name;
        fs::create_directories(file.parent_path());
        std::ofstream(file) << text;
        return file.string();
    }
    std::string operator/(const std::string& name) const { return (path_ / name).string(); }
    const fs::path& path() const { return path_; }

  private:
    fs::path path_;
};

std::string contents(const std::string& file) {
    std::ostringstream text;
    text << std::ifstream(file).rdbuf();
    return text.str();
}

struct RunResult {
    int exit_code = -1;
    std::string out;
    std::string err;
};

/// The program as a child process with files for its output.
class Child {
  public:
    explicit Child(std::vector<std::string> arguments, rlim_t data_limit = RLIM_INFINITY) {
        pid_ = fork();
        if (pid_ != 0) return;
        for (const auto& [descriptor, name] : {std::pair(1, "out"), std::pair(2, "err")}) {
            dup2(open((folder_ / name).c_str(), O_WRONLY | O_CREAT, 0600), descriptor);
        }
        const rlimit limit = {data_limit, data_limit};
        setrlimit(RLIMIT_DATA, &limit);
        std::string program = TIDEWELL_SOLVE_PATH;
        std::vector<char*> argv = {program.data()};
        for (std::string& argument : arguments)
            argv.push_back(argument.data());
        argv.push_back(nullptr);
        execv(program.c_str(), argv.data());
        _exit(127);
    }

    std::string out() const { return contents(folder_ / "out"); }
    void send(int signal_number) const { kill(pid_, signal_number); }

    RunResult wait() {
        int status = 0;
        waitpid(pid_, &status, 0);
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status), out(),
                contents(folder_ / "err")};
    }

  private:
    Folder folder_;
    pid_t pid_ = -1;
};

RunResult run(std::vector<std::string> arguments) {
    return Child(std::move(arguments)).wait();
}

const char* const river_spot = R"({
  "board": "AhKd7c4s2h", "starting_pot": 20, "effective_stack": 90,
  "oop_range": "22+,A2s+,K9s+,QTs+,ATo+", "ip_range": "QQ-22,A2s+:0.8,KTs+,KJo+",
  "oop_river_bet_sizes": "50, 100", "oop_river_raise_sizes": "60", "oop_river_add_all_in": true,
  "ip_river_bet_sizes": 75, "ip_river_raise_sizes": "3x",
  "rake_percent": 5, "rake_cap": 3, "max_iterations": 130, "target_exploitability": 0
})";

json river_with(const std::string& key, const json& value) {
    json spot = json::parse(river_spot);
    spot[key] = value;
    return spot;
}

TEST(Options, Read) {
    const std::vector<const char*> arguments = {
        "--threads", "3",     "--iterations=70", "--target", "0.25", "--json=-",
        "--node",    "Check", "--list-nodes",    "2",        "--",   "-spot.json"};
    const Options options = parse_options(arguments);
    EXPECT_EQ(options.threads, 3U);
    EXPECT_EQ(options.iterations, 70U);
    EXPECT_EQ(options.target_percent, 0.25);
    EXPECT_EQ(options.json_path, "-");
    EXPECT_EQ(options.node_line, "Check");
    EXPECT_EQ(options.list_depth, 2U);
    EXPECT_EQ(options.spot_path, "-spot.json");
}

TEST(Options, Refused) {
    const std::vector<std::vector<const char*>> cases = {
        {"--threads", "0"},
        {"--threads", "2x"},
        {"--threads", "-1"},
        {"--threads"},
        {"--threads", "5000"},
        {"--iterations", "0"},
        {"--iterations=1.5"},
        {"--iterations", "4294967296"},
        {"--target", "nan"},
        {"--target", "-1"},
        {"--target", "101"},
        {"--target="},
        {"--json="},
        {"--list-nodes", "-1"},
        {"--verbose"},
        {"-x"},
        {"--help=yes"},
        {"a.json", "b.json"},
        {"--signature", "a.json"},
        {""},
    };
    for (const auto& arguments : cases) {
        EXPECT_THROW(parse_options(arguments), InputError) << arguments.front();
    }
}

TEST(SpotFile, ReadsLooselyTypedValues) {
    std::vector<std::string> warnings;
    const auto map = parse_spot_text(
        R"({"board": "ah kd 7c", "oop_range": "AA", "ip_range": "50%", "starting_pot": "12.5",
            "oop_flop_bet_sizes": 33.5, "ip_flop_add_all_in": "true", "effective_stack": 3,
            "effective_stack": 4, "bord": 1, "apply_node_locks": 0})",
        "spot", warnings);
    const auto config = kestrel_app::config_from_map(map);
    EXPECT_EQ(config.board, "AhKd7c");
    EXPECT_EQ(config.starting_pot, 1250U);
    EXPECT_EQ(config.effective_stack, 400U);
    EXPECT_EQ(config.oop_flop.bet_sizes, "33.5");
    EXPECT_TRUE(config.ip_flop.add_all_in);
    EXPECT_EQ(config.starting_street, "flop");
    EXPECT_THAT(warnings,
                ElementsAre("spot: key 'effective_stack' stands there twice; the last one counts",
                            "spot: unknown key 'bord' is ignored"));

    // The street follows from the board where it is left out.
    EXPECT_EQ(kestrel_app::to_text(parse_spot_text(river_spot, "", warnings)["starting_street"]),
              "river");
}

TEST(SpotFile, RefusesWhatCannotBeMeant) {
    const struct {
        const char* key;
        json value;
        const char* message;
    } cases[] = {
        {"board", "AhKd7c4s2hQs", "board must be three to five cards such as AdJd8s, not"},
        {"board", "AhKd7x", "board must be three to five cards"},
        {"board", 5, "board must be text, not 5"},
        {"starting_pot", -5, "starting_pot must be a number from 0.01 to 21474836.46, not -5"},
        {"starting_pot", 0, "starting_pot must be"},
        {"starting_pot", "nan", "starting_pot must be"},
        {"starting_pot", nullptr, "not null"},
        {"starting_pot", true, "not true"},
        {"effective_stack", 3e7, "effective_stack must be"},
        {"effective_stack", json::array({1}), "not a list"},
        {"effective_stack", json::object(), "not an object"},
        {"rake_percent", 100.5, "rake_percent must be a number from 0 to 100, not 100.5"},
        {"rake_cap", -1, "rake_cap must be"},
        {"max_iterations", 0, "max_iterations must be a whole number from 1 to 4294967295"},
        {"max_iterations", 1.5, "max_iterations must be"},
        {"thread_count", 0, "thread_count must be a whole number from 1 to 1024, not 0"},
        {"oop_river_add_all_in", "yes", "oop_river_add_all_in must be true or false, not \"yes\""},
        {"oop_river_add_all_in", 2, "must be true or false"},
        {"oop_range", "AA:2", "oop_range: Weight must be within [0, 1]"},
        {"ip_range", "AK+s", "ip_range: "},
        {"starting_street", "preflop", "starting_street must be flop, turn or river"},
    };
    const auto message_of = [](const std::string& text) {
        std::vector<std::string> warnings;
        try {
            parse_spot_text(text, "a.json", warnings);
        } catch (const InputError& error) {
            return std::string(error.what());
        }
        return std::string("accepted");
    };
    for (const auto& [key, value, message] : cases) {
        const std::string told = message_of(river_with(key, value).dump());
        EXPECT_THAT(told, StartsWith("a.json: ")) << key;
        EXPECT_THAT(told, HasSubstr(message)) << key;
    }
    const std::pair<const char*, const char*> texts[] = {
        {"", "a.json: line 1"},
        {"{\n\"board\": \"AhKd7c\",\n}", "a.json: line 3"},
        {"{\n\n\"starting_pot\": 1e999}", "a.json: line 3: the number 1e999 is too large"},
        {"[1]", "a.json: a spot is one JSON object"},
        {"{\"board\": \"AhKd7c\", \"ip_range\": \"AA\"}", "a.json: oop_range is missing"},
        {"{\"board\": \"\xff\"}", "a.json: line 1"},
    };
    for (const auto& [text, message] : texts) {
        EXPECT_THAT(message_of(text), StartsWith(message));
    }
    EXPECT_THAT(message_of(std::string(100000, '[')), StartsWith("a.json: line 1"));
}

class LineWalk : public testing::Test {
  protected:
    // Diamonds and spades play alike until one of them is dealt. Two bets share a name.
    static kestrel_app::SolveConfig config() {
        kestrel_app::SolveConfig config;
        config.board = "9h8h2c";
        config.oop_range = "AA,KK";
        config.ip_range = "QQ,JJ";
        config.starting_pot = 1000;
        config.effective_stack = 3000;
        config.oop_flop = {"50, 50.2", ""};
        config.ip_flop = {"75", "60", true, false};
        return config;
    }
    std::string message_of(const char* line) const {
        try {
            walk_line(game_, line);
        } catch (const InputError& error) {
            return error.what();
        }
        return "accepted";
    }

    const kestrel_app::SpotInputs spot_ = kestrel_app::parse_spot(config());
    const kestrel::Game game_{spot_.options, kestrel::CardContext(spot_.board, spot_.ranges)};
};

TEST_F(LineWalk, FollowsNamesCardsAndNumbers) {
    const std::pair<const char*, const char*> lines[] = {
        {"", "root"},
        {"root", "root"},
        {"Check/Bet 75%/Call/2d", "Check/Bet 75%/Call/2d"},
        {" check / BET75% /call/ aS/CHECK", ""},
        {"check/all-in/call/kd", "Check/All-In/Call/Kd"},
        {"#2/#1", "Bet 50%/Fold"},
        {"#3/fold", "Bet 50%/Fold"},
    };
    for (const auto& [line, canonical] : lines) {
        if (*canonical == '\0') {
            EXPECT_THAT(message_of(line), HasSubstr("name Ad instead")) << line;
            continue;
        }
        const NodePath path = walk_line(game_, line);
        EXPECT_EQ(line_of(game_, path), canonical) << line;
        std::uint64_t node = 0;
        for (const LineStep& step : path.steps) {
            EXPECT_EQ(step.node, node);
            node = game_.nodes[node].children[step.action];
        }
        EXPECT_EQ(path.node, node);
    }
    EXPECT_NE(walk_line(game_, "#2").node, walk_line(game_, "#3").node);
}

TEST_F(LineWalk, RefusesWithTheChoices) {
    const std::pair<const char*, const char*> lines[] = {
        {"Chek", "there is no 'Chek' behind root; choices: Check, Bet 50%, Bet 50%"},
        {"Bet 50%", "'Bet 50%' behind root has several meanings: #2 to 5 chips, #3 to 5.02 chips"},
        {"Check/Check/2s", "'2s' behind Check/Check plays like another suit: name 2d instead"},
        {"Check/Check/9h", "'9h' behind Check/Check is on the board already"},
        {"#2/Fold/Check", "the hand is over behind Bet 50%/Fold, 'Check' cannot follow"},
        {"#4", "there is no '#4' behind root"},
    };
    for (const auto& [line, message] : lines) {
        EXPECT_THAT(message_of(line), StartsWith(message)) << line;
    }
}

TEST(MemoryInfo, TakesTheTightestLimit) {
    const auto kilo = [](std::uint64_t count) { return count * 1024; };
    Folder root;
    root.write("proc/meminfo", "MemTotal: 900 kB\nMemAvailable:   500 kB\n");
    EXPECT_EQ(available_memory(root.path()), kilo(500));

    root.write("proc/self/cgroup", "0::/batch/job\n");
    root.write("sys/fs/cgroup/batch/job/memory.max", "max\n");
    root.write("sys/fs/cgroup/batch/job/memory.current", "1024\n");
    EXPECT_EQ(available_memory(root.path()), kilo(500));
    root.write("sys/fs/cgroup/batch/memory.max", std::to_string(kilo(400)));
    root.write("sys/fs/cgroup/batch/memory.current", std::to_string(kilo(300)));
    EXPECT_EQ(available_memory(root.path()), kilo(100));
    root.write("sys/fs/cgroup/batch/memory.stat", "anon 5\ninactive_file 51200\n");
    EXPECT_EQ(available_memory(root.path()), kilo(150));

    root.write("proc/self/cgroup", "5:cpu:/x\n4:pids,memory:/job\n");
    root.write("sys/fs/cgroup/memory/job/memory.limit_in_bytes", std::to_string(kilo(90)));
    root.write("sys/fs/cgroup/memory/job/memory.usage_in_bytes", std::to_string(kilo(20)));
    EXPECT_EQ(available_memory(root.path()), kilo(70));
    EXPECT_GT(available_memory(), kilo(1024));
    EXPECT_GT(peak_resident_bytes(), kilo(1024));
}

TEST(MemoryInfo, AllocationLimitTurnsExcessIntoAnException) {
    constexpr std::size_t size = std::size_t{256} << 20;
    {
        const AllocationLimit limit(size / 4);
        EXPECT_THROW(std::vector<char>(size, 'x'), std::bad_alloc);
    }
    EXPECT_EQ(std::vector<char>(size, 'x').back(), 'x');
}

TEST(Program, WritesTheWholeResult) {
    Folder folder;
    const std::string spot = folder.write("river.json", river_spot);
    const std::string file = folder / "result.json";
    const RunResult result =
        run({spot, "--json", file, "--node", "check/bet 75%", "--threads", "2"});
    EXPECT_EQ(result.exit_code, 0);
    EXPECT_THAT(result.err, IsEmpty());
    EXPECT_THAT(result.out, HasSubstr("iteration 50  exploitability"));
    EXPECT_THAT(result.out, HasSubstr("Check/Bet 75%: River, OOP to act, pot 35"));
    EXPECT_THAT(result.out, Not(HasSubstr("\x1b")));  // no terminal, no colours

    const json report = json::parse(contents(file));
    EXPECT_EQ(report["board"], "AhKd7c4s2h");
    EXPECT_EQ(report["starting_pot"], 20.0);
    EXPECT_EQ(report["effective_stack"], 90.0);
    EXPECT_EQ(report["iterations"], 130);
    const double exploitability = report["exploitability"];
    EXPECT_GT(exploitability, 0.0);
    EXPECT_LT(exploitability, 0.2);
    EXPECT_DOUBLE_EQ(report["exploitability_pct"], exploitability * 5);
    // The rake is all that the two lose against an even split: at least 5 % of the pot, at most 3.
    const double both = report["ev_oop"].get<double>() + report["ev_ip"].get<double>();
    EXPECT_LT(both, -0.99);
    EXPECT_GT(both, -3.01);
    EXPECT_GT(report["nodes"], report["decision_nodes"]);
    EXPECT_GT(report["estimate_bytes"], 1000);
    EXPECT_GT(report["peak_rss_bytes"], report["estimate_bytes"]);
    EXPECT_GT(report["iteration_ms"], 0.0);
    double phases = 0;
    for (const char* phase : {"card_context", "tree", "prepare", "solve"}) {
        EXPECT_GT(report["seconds"][phase], 0.0) << phase;
        phases += report["seconds"][phase].get<double>();
    }
    EXPECT_GE(report["seconds"]["total"], phases);
    ASSERT_EQ(report["trace"].size(), 3U);
    EXPECT_EQ(report["trace"][0]["iteration"], 50);
    EXPECT_EQ(report["trace"][2], (json{{"iteration", 130}, {"exploitability", exploitability}}));

    const json& node = report["node"];
    EXPECT_EQ(node["player"], "OOP");
    EXPECT_EQ(node["pot"], 35.0);
    double sum = 0;
    std::vector<std::string> names;
    for (const json& action : node["actions"]) {
        names.push_back(action["name"].get<std::string>() + "|" +
                        action["type"].get<std::string>());
        sum += action["frequency"].get<double>();
        EXPECT_GT(action["child"], node["index"]);
    }
    EXPECT_THAT(names,
                ElementsAre("Fold|fold", "Call|call", "Raise 129%|raise 129%", "All-In|allin"));
    EXPECT_NEAR(sum, 1.0, 1e-12);
    EXPECT_EQ(node["combos"].size(), report["hands_oop"]);
    for (const json& combo : node["combos"]) {
        EXPECT_THAT(combo["combo"].get<std::string>(), MatchesRegex("[2-9TJQKA][cdhs]"
                                                                    "[2-9TJQKA][cdhs]"));
        double total = 0;
        for (const double prob : combo["probs"])
            total += prob;
        EXPECT_NEAR(total, 1.0, 1e-12);
    }
    // Behind a check the weights are what the player checks at the root.
    const RunResult root = run({spot, "--json", "-", "--threads", "1"});
    const json at_root = json::parse(root.out)["node"];
    EXPECT_THAT(root.err, HasSubstr("Exploitability"));
    for (std::size_t i = 0; i < node["combos"].size(); ++i) {
        const json& before = at_root["combos"][i];
        EXPECT_EQ(node["combos"][i]["combo"], before["combo"]);
        EXPECT_NEAR(node["combos"][i]["weight"],
                    before["weight"].get<double>() * before["probs"][0].get<double>(), 1e-7);
    }
}

TEST(Program, StopsAtTheTargetInPercentOfThePot) {
    Folder folder;
    const std::string spot = folder.write("river.json", river_spot);
    const RunResult result =
        run({spot, "--target", "5", "--iterations", "1000", "--json", folder / "r.json"});
    EXPECT_EQ(result.exit_code, 0);
    const json report = json::parse(contents(folder / "r.json"));
    EXPECT_LE(report["exploitability_pct"], 5.0);
    EXPECT_EQ(report["iterations"].get<int>() % 50, 0);
    EXPECT_LT(report["iterations"], 1000);
}

TEST(Program, ListsNodesThatNodeUnderstands) {
    Folder folder;
    const std::string spot = folder.write("river.json", river_spot);
    const RunResult list = run({spot, "--list-nodes", "2"});
    EXPECT_EQ(list.exit_code, 0);
    std::istringstream lines(list.out);
    std::string line;
    std::getline(lines, line);
    int count = 0;
    while (std::getline(lines, line)) {
        const std::size_t place = line.rfind("  ");
        const RunResult node = run({spot, "--iterations", "1", "--json", folder / "n.json",
                                    "--node", line.substr(place + 2)});
        ASSERT_EQ(node.exit_code, 0) << line;
        EXPECT_EQ(json::parse(contents(folder / "n.json"))["node"]["index"], std::stoi(line));
        ++count;
    }
    EXPECT_GT(count, 10);
}

TEST(Program, TellsBadInputInOneLineWithCodeTwo) {
    Folder folder;
    int files = 0;
    const auto spot = [&](const std::string& key, const json& value) {
        return folder.write(std::to_string(++files) + ".json", river_with(key, value).dump());
    };
    const std::string good = folder.write("good.json", river_spot);
    const std::pair<std::vector<std::string>, const char*> cases[] = {
        {{"--threads=0"}, "--threads takes a whole number from 1 to 1024, not '0'"},
        {{folder / "nowhere.json"}, "cannot open "},
        {{folder.path().string()}, "is a folder"},
        {{folder.write("bad.json", "{\n1")}, "line 2"},
        {{spot("starting_street", "a\nb")}, "not 'a?b'"},
        {{spot("board", "AhAh7c4s2h")}, "Flop cards must be unique"},
        {{spot("board", "AhKd7cAh2s")}, "Turn conflicts with flop"},
        {{spot("ip_range", "AhKd")}, "Player range empty after filtering board cards"},
        {{spot("ip_river_bet_sizes", "2x")}, "IP river sizing (bet='2x'"},
        {{spot("starting_street", "turn")}, "Starting street does not match the board"},
        {{spot("effective_stack", 21474836)}, "Pot and stack are too large"},
        {{good, "--node", "Chek"}, "choices: Check, Bet 50%, Bet 100%, All-In"},
        {{good, "--json", folder / "no/such.json"}, "cannot write "},
    };
    for (const auto& [arguments, message] : cases) {
        const RunResult result = run(arguments);
        EXPECT_EQ(result.exit_code, 2) << message;
        EXPECT_THAT(result.err, HasSubstr(message));
        EXPECT_THAT(result.err, StartsWith("tidewell-solve: "));
        EXPECT_EQ(std::ranges::count(result.err, '\n'), 1) << result.err;
    }
    const RunResult warned = run({spot("bet_size", 1), "--iterations", "1"});
    EXPECT_EQ(warned.exit_code, 0);
    EXPECT_THAT(warned.err, HasSubstr("warning: "));
    EXPECT_THAT(warned.err, HasSubstr("unknown key 'bet_size' is ignored"));
}

TEST(Program, RefusesWhatDoesNotFitInMemory) {
    const std::pair<rlim_t, const char*> cases[] = {
        {rlim_t{700} << 20, "not enough memory: the solve needs 1.1"},
        {rlim_t{40} << 20, "not enough memory: the betting tree alone needs more than the "},
    };
    for (const auto& [limit, message] : cases) {
        const RunResult result = Child({}, limit).wait();
        EXPECT_EQ(result.exit_code, 1);
        EXPECT_THAT(result.err, HasSubstr(message));
        EXPECT_THAT(result.err, HasSubstr("available"));
    }
}

TEST(Program, CtrlCEndsASolve) {
    Folder folder;
    Child child({folder.write("river.json", river_spot), "--iterations", "4000000000"});
    for (int i = 0; i < 1000 && child.out().find("iteration 50 ") == std::string::npos; ++i) {
        usleep(10000);
    }
    child.send(SIGINT);
    const RunResult result = child.wait();
    EXPECT_EQ(result.exit_code, 130);
    EXPECT_THAT(result.err, HasSubstr("interrupted after "));
}

TEST(Program, TellsVersionAndHelp) {
    EXPECT_THAT(run({"--version"}).out, MatchesRegex("tidewell-solve [0-9.]+\n"));
    const RunResult help = run({"--help"});
    EXPECT_EQ(help.exit_code, 0);
    for (const char* option : {"--threads", "--iterations", "--target", "--json", "--node",
                               "--signature", "--list-nodes", "--version"}) {
        EXPECT_THAT(help.out, HasSubstr(option));
    }
}

}  // namespace
}  // namespace tidewell_cli
