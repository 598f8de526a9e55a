#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QSettings>
#include <QUrl>
#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

#include "app/app_controller.h"
#include "tests/cli/support.h"

namespace tidewell_cli {
namespace {

using nlohmann::json;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

/// Everything that a solve came to, but for what the machine had to do with it.
json figures(json report) {
    for (const char* key : {"seconds", "iteration_ms", "peak_rss_bytes", "locks", "before_locks"}) {
        report.erase(key);
    }
    return report;
}

/// A saved project with its lists of answers in one order; a file has them in any.
json sorted_project(const std::string& file) {
    json project = json::parse(contents(file));
    for (json& cache : project["nodeCaches"]) {
        std::sort(cache.begin(), cache.end(), [](const json& a, const json& b) {
            return a["nodeIndex"].get<int>() < b["nodeIndex"].get<int>();
        });
    }
    return project;
}

class Project : public testing::Test {
  protected:
    struct Solved {
        json figures;
        std::string err;
    };
    Solved solve(std::vector<std::string> arguments) const {
        const std::string file = folder_ / "report.json";
        arguments.insert(arguments.end(), {"--json", file});
        const RunResult result = run(arguments);
        EXPECT_EQ(result.exit_code, 0) << result.err;
        return {figures(json::parse(contents(file))), result.err};
    }
    /// A project of the river spot.
    json saved(std::vector<std::string> arguments = {}) const {
        const std::string file = folder_ / "saved.tidewellproj";
        arguments.insert(arguments.begin(), {river_, "--save", file});
        EXPECT_EQ(run(arguments).exit_code, 0);
        return json::parse(contents(file));
    }

    const Folder folder_;
    const std::string river_ = folder_.write("river.json", river_spot);
    const std::string turn_ = folder_.write("turn.json", turn_spot);
};

TEST_F(Project, IsSolvedAgainToTheSameBits) {
    const std::vector<std::string> cases[] = {
        {river_, "--target", "3"},
        {river_, "--iterations", "61", "--node", "Check"},
        // Thirds, which stay what they are however often they are scaled to a sum of 1.
        {river_, "--lock", ";*=1,1,1,0", "--lock", "Check;KQs=3,7", "--lock", "Check;KQs=5,2"},
        {turn_, "--exact-all-in", "--node", "Check/Check/2s"},
    };
    for (std::size_t i = 0; i < std::size(cases); ++i) {
        const std::string first = folder_ / ("a" + std::to_string(i) + ".tidewellproj");
        const std::string second = folder_ / ("b" + std::to_string(i) + ".json");
        std::vector<std::string> arguments = cases[i];
        arguments.insert(arguments.end(), {"--save", first});
        const Solved from_spot = solve(arguments);
        EXPECT_EQ(from_spot.err, "");

        arguments = {first, "--save", second};
        const auto node = std::ranges::find(cases[i], "--node");
        arguments.insert(arguments.end(), node, cases[i].end());
        const Solved from_project = solve(arguments);
        EXPECT_EQ(from_project.err, "");
        EXPECT_EQ(from_project.figures, from_spot.figures);
        EXPECT_EQ(sorted_project(second), sorted_project(first));
        EXPECT_EQ(solve({second}).figures["ev_oop"], from_spot.figures["ev_oop"]);
    }
}

TEST_F(Project, WithoutASolveIsWhatItsPagesShow) {
    json project = saved({"--target", "4.5", "--exact-all-in"});
    const Solved from_spot = solve({river_, "--target", "4.5"});
    EXPECT_EQ(from_spot.figures["iterations"], 50);
    EXPECT_LE(from_spot.figures["exploitability_pct"], 4.5);
    const json pages = project["project"];
    EXPECT_EQ(pages["targetExploitability"], 4.5);
    EXPECT_EQ(pages["exactAllIn"], true);
    project["lastUiCfg"] = json::object();
    project["project"]["startingStreet"] = "flop";  // which the board corrects
    const std::string file = folder_ / "again.tidewellproj";
    const Solved from_pages =
        solve({folder_.write("pages.tidewellproj", project.dump()), "--save", file});
    EXPECT_EQ(from_pages.figures, from_spot.figures);
    EXPECT_EQ(from_pages.err, "");
    const json again = json::parse(contents(file))["project"];
    EXPECT_EQ(again["startingStreet"], "river");
    EXPECT_EQ(again, pages);
}

TEST_F(Project, TellsWhatItDoesNotHeed) {
    const json good = saved({"--lock", "Check;KQs=1,0"});
    const Solved free = solve({river_});
    const Solved locked = solve({river_, "--lock", "Check;KQs=1,0"});
    ASSERT_NE(free.figures, locked.figures);
    json action_lock = good["nodeLocks"][0];
    action_lock.erase("actionProbs");
    action_lock["actionIndex"] = 0;
    const struct {
        const char* place;
        json value;
        const Solved& expected;
        const char* warning;
    } cases[] = {
        {"/lastUiCfg/apply_node_locks", true, locked, nullptr},
        {"/lastUiCfg/apply_node_locks", false, free,
         ": its node locks (1) are ignored, as its last solve was made without them"},
        {"/project/boardText", "AhKd7c4s3h", locked,
         ": its pages show another spot than its last solve, which is the one solved"},
        {"/nodeLocks/0/hand", "ATx", free,
         "node locks of the project (1) do not fit the tree and are ignored"},
        {"/nodeLocks/0/actionProbs", {1, 0, 0}, free, "(1) do not fit the tree"},
        // Of one action alone.
        {"/nodeLocks/0", action_lock, locked, nullptr},
        // The desktop program solves what it makes of these.
        {"/lastUiCfg/ip_river_bet_sizes", "7 5", locked,
         ": ip_river_bet_sizes: '7 5' is no size; it is read as '75%', as in the desktop program"},
        {"/lastUiCfg/ip_river_bet_sizes", "pot, 75", locked, "is read as none"},
        {"/lastUiCfg/effective_stak", 1, locked, ": unknown key 'effective_stak' is ignored"},
    };
    for (const auto& [place, value, expected, warning] : cases) {
        json project = good;
        project[json::json_pointer(place)] = value;
        SCOPED_TRACE(place + (" = " + value.dump()));
        const Solved solved = solve({folder_.write("a.tidewellproj", project.dump())});
        EXPECT_EQ(solved.figures, expected.figures);
        EXPECT_THAT(solved.err, warning == nullptr ? testing::Matcher<std::string>(IsEmpty())
                                                   : AllOf(StartsWith("tidewell-solve: warning: "),
                                                           HasSubstr(warning)));
    }

    // A part of a chip is solved for, though pages round it.
    const std::string cap = folder_.write("cap.json", river_with("rake_cap", 0.25).dump());
    const std::string file = folder_ / "cap.tidewellproj";
    const Solved capped = solve({cap, "--save", file});
    EXPECT_THAT(capped.err, EndsWith("they will show a rake cap of 1, not 0.25\n"));
    EXPECT_EQ(json::parse(contents(file))["project"]["rakeCap"], 1);
    const Solved again = solve({file});
    EXPECT_EQ(again.figures, capped.figures);
    EXPECT_EQ(again.err, "");
}

TEST_F(Project, BadOnesAreRefused) {
    const json good = saved();
    const auto with = [&](const char* place, const json& value) {
        json project = good;
        project[json::json_pointer(place)] = value;
        return project.dump();
    };
    const json nothing = {{"format", "kestrel_project"}, {"version", 1}};
    const std::pair<std::string, const char*> cases[] = {
        {good.dump().substr(0, 1000), ": Invalid JSON at byte 1000\n"},
        {with("/lastUiCfg/ip_river_bet_sizes", "1.2.3"), ": ip_river_bet_sizes: '1.2.3' is no"},
        {nothing.dump(), ": the project holds no spot"},
        {with("/lastUiCfg/board", 7), ": board must be text, not 7"},
    };
    const std::string file = folder_ / "a.tidewellproj";
    for (const auto& [content, message] : cases) {
        const RunResult result = run({folder_.write("a.tidewellproj", content)});
        EXPECT_EQ(result.exit_code, 2) << message;
        EXPECT_THAT(result.err, StartsWith("tidewell-solve: " + file + message));
        EXPECT_EQ(std::ranges::count(result.err, '\n'), 1) << result.err;
    }
}

/// The desktop program's controller, with a settings store that nobody else sees.
class Desktop : public Project {
  protected:
    Desktop() : application_(count_, arguments_) {
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                           QString::fromStdString(folder_ / "settings"));
        QCoreApplication::setOrganizationName("TidewellTests");
        QCoreApplication::setApplicationName("TidewellTests");
    }

    static QUrl url(const std::string& file) {
        return QUrl::fromLocalFile(QString::fromStdString(file));
    }
    static void solve_again(AppController& controller) {
        QEventLoop loop;
        QObject::connect(&controller, &AppController::runningChanged, &loop, [&] {
            if (!controller.running()) {
                loop.quit();
            }
        });
        controller.reSolveWithNodeLocks();
        if (controller.running()) {
            loop.exec();
        }
        EXPECT_EQ(controller.statusText(), "Done");
    }
    static void expect_results(const AppController& controller, const json& figures) {
        EXPECT_EQ(controller.resultIterations(), figures["iterations"]);
        EXPECT_EQ(controller.resultExploitability(), figures["exploitability"]);
        EXPECT_EQ(controller.resultEvOop(), figures["ev_oop"]);
        EXPECT_EQ(controller.resultEvIp(), figures["ev_ip"]);
        EXPECT_EQ(controller.resultStartingPot(), figures["starting_pot"]);
    }

  private:
    int count_ = 1;
    char name_[10] = "cli_tests";
    char* arguments_[2] = {name_, nullptr};
    QCoreApplication application_;
};

TEST_F(Desktop, OpensWhatWasSaved) {
    const std::string file = folder_ / "a.tidewellproj";
    const json report = solve({river_, "--save", file, "--node", "Check", "--stats",  //
                               "--lock", "Check;KQs=3,1", "--lock", ";22=1,0,0,0"})
                            .figures;
    AppController controller;
    const QVariantMap loaded = controller.loadProject(url(file));
    EXPECT_EQ(loaded["error"], "");
    EXPECT_EQ(loaded["ok"], true);
    EXPECT_EQ(loaded["hasResults"], true);
    expect_results(controller, report);
    const int node = report["node"]["index"];
    for (const int index : {0, node}) {
        EXPECT_FALSE(controller.nodeHandStrategy(index)["weights"].toMap().isEmpty());
        EXPECT_FALSE(controller.nodeHandCombos(index).isEmpty());
        EXPECT_FALSE(controller.nodeHandBuckets(index).isEmpty());
    }
    ASSERT_EQ(controller.nodeLocks(node).size(), 1);
    EXPECT_EQ(controller.nodeLocks(node)[0].toMap()["actionProbs"], (QVariantList{0.75, 0.25}));

    // Solved again there, saved there, and solved again here.
    solve_again(controller);
    expect_results(controller, report);
    const std::string second = folder_ / "b.tidewellproj";
    ASSERT_TRUE(controller.saveProject(url(second), loaded["project"].toMap()));
    EXPECT_EQ(solve({second, "--node", "Check", "--stats"}).figures, report);
}

TEST_F(Desktop, PagesGetTheirValuesInTheirKinds) {
    const std::string file = folder_ / "a.tidewellproj";
    solve({turn_, "--save", file, "--threads", "2", "--target", "0.7"});
    AppController controller;
    // "-": no sizes, but not blank, as pages wait for those to be filled in.
    const json expected = json::parse(R"({
        "boardText": "Td9c6h6c", "oopRangeText": "TT,87s,KQo:0.5",
        "ipRangeText": "99,AJs,A6s,54s", "betSizesText": "", "maxIterations": 120,
        "startingPot": 10, "effectiveStack": 40, "threadCount": 2, "startingStreet": "turn",
        "targetExploitability": 0.7, "rakePercent": 0, "rakeCap": 0, "oopFlopBetSizesText": "-",
        "oopTurnBetSizesText": "50, 50.2", "oopRiverBetSizesText": "60",
        "oopFlopRaiseSizesText": "-", "oopTurnRaiseSizesText": "-", "oopRiverRaiseSizesText": "-",
        "ipFlopBetSizesText": "-", "ipTurnBetSizesText": "75", "ipRiverBetSizesText": "-",
        "ipFlopRaiseSizesText": "-", "ipTurnRaiseSizesText": "60", "ipRiverRaiseSizesText": "-",
        "oopFlopAddAllIn": false, "oopTurnAddAllIn": false, "oopRiverAddAllIn": false,
        "ipFlopAddAllIn": false, "ipTurnAddAllIn": false, "ipRiverAddAllIn": false,
        "oopFlopDontDonk": false, "oopTurnDontDonk": false, "oopRiverDontDonk": true,
        "oopAddAllInIfJamLtEnabled": true, "oopAddAllInIfJamLtPct": 300,
        "ipAddAllInIfJamLtEnabled": false, "ipAddAllInIfJamLtPct": 0, "exactAllIn": false
    })");
    EXPECT_EQ(json::parse(contents(file))["project"], expected);
    EXPECT_EQ(controller.loadProject(url(file))["project"].toMap().size(), expected.size());
    solve_again(controller);
}

}  // namespace
}  // namespace tidewell_cli
