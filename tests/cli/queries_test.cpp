#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <future>
#include <limits>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "cli/line_walk.h"
#include "cli/report_json.h"
#include "cli/spot_file.h"
#include "cli/tables.h"
#include "session/hand_labels.h"
#include "session/node_here.h"
#include "session/solve_session.h"
#include "tests/cli/support.h"

namespace tidewell_cli {
namespace {

using nlohmann::json;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

using Row = std::vector<std::string>;

/// Fields of tab-separated values, line by line.
std::vector<Row> rows_of(const std::string& table) {
    std::vector<Row> rows;
    std::istringstream lines(table);
    for (std::string line; std::getline(lines, line);) {
        Row& row = rows.emplace_back();
        for (std::size_t begin = 0; begin <= line.size();) {
            const std::size_t end = std::min(line.find('\t', begin), line.size());
            row.push_back(line.substr(begin, end - begin));
            begin = end + 1;
        }
    }
    return rows;
}

/// A solve of the same spot without the program.
class Reference {
  public:
    explicit Reference(const std::string& spot,
                       std::vector<kestrel_app::NodeLockEntry> locks = {}) {
        std::vector<std::string> warnings;
        auto config = kestrel_app::config_from_map(parse_spot_text(spot, "spot", warnings));
        config.node_locks = std::move(locks);
        session_.start(config, [this](const kestrel_app::SolveProgress& progress) {
            if (progress.result) {
                last_.set_value(*progress.result);
            }
        });
        result_ = last_.get_future().get();
    }

    const kestrel_app::SolveSession& session() const { return session_; }
    const kestrel_app::SolveResult& result() const { return result_; }
    std::uint64_t node(const std::string& line) const {
        return walk_line(*session_.game(), line).node;
    }

  private:
    std::promise<kestrel_app::SolveResult> last_;  // outlives the session's thread
    kestrel_app::SolveSession session_;
    kestrel_app::SolveResult result_;
};

class Queries : public testing::Test {
  protected:
    const Folder folder_;
    const std::string turn_ = folder_.write("turn.json", turn_spot);
    const std::string river_ = folder_.write("river.json", river_spot);
    const std::string file_ = folder_ / "result.json";
};

void expect_figures(const Row& row, std::size_t first, const std::vector<double>& figures) {
    ASSERT_GE(row.size(), first + figures.size());
    for (std::size_t i = 0; i < figures.size(); ++i) {
        EXPECT_NEAR(std::stod(row[first + i]), figures[i], 0.51e-4) << row[0] << ' ' << i;
    }
}

TEST_F(Queries, AnswersAreThoseOfTheSession) {
    const Reference reference(turn_spot);
    const std::pair<const char*, Row> cases[] = {
        {"", {"Check", "Bet 50% #2", "Bet 50% #3"}},
        {"Check/Check/2s/Bet 60%", {"Fold", "Call"}},
    };
    for (const auto& [line, names] : cases) {
        const RunResult output = run({turn_, "--combos", "--distributions", "--buckets", "--stats",
                                      "--node", line, "--json", file_});
        ASSERT_EQ(output.exit_code, 0) << output.err;
        const std::vector<Row> rows = rows_of(output.out);
        std::size_t next = 0;
        const std::uint64_t node = reference.node(line);
        const auto combos = *reference.session().hand_combos(node);
        const auto buckets = *reference.session().hand_buckets(node);
        const auto distributions = *reference.session().hand_distributions(node);
        ASSERT_EQ(rows.size(), 5 + combos.size() + buckets.size() + distributions[0].hands.size() +
                                   distributions[1].hands.size());

        Row combo_header = {"combo", "weight", "ev"};
        Row class_header = {"class", "combos"};
        for (const std::string& name : names) {
            combo_header.insert(combo_header.end(), {name + " ev", name + " prob"});
            class_header.push_back(name + " prob");
        }
        combo_header.emplace_back("tags");
        EXPECT_EQ(rows[next++], combo_header);
        for (const kestrel_app::HandCombo& combo : combos) {
            const Row& row = rows[next++];
            ASSERT_EQ(row.size(), combo_header.size());
            EXPECT_EQ(row[0], combo.c1 + combo.c2);
            expect_figures(row, 1, {combo.weight, combo.ev / 100});
            for (std::size_t a = 0; a < names.size(); ++a) {
                expect_figures(row, 3 + 2 * a, {combo.action_evs[a] / 100, combo.action_probs[a]});
            }
            EXPECT_THAT(row.back(), StartsWith(combo.buckets.empty() ? "" : combo.buckets[0]));
        }

        EXPECT_EQ(rows[next++], Row{""});
        EXPECT_EQ(rows[next++], class_header);
        for (const kestrel_app::HandBucket& bucket : buckets) {
            const auto& probs = bucket.action_probs;
            EXPECT_EQ(rows[next][0], bucket.name);
            expect_figures(rows[next], 1, {bucket.combos});
            expect_figures(rows[next++], 2, {probs.begin(), probs.end()});
        }

        EXPECT_EQ(rows[next++], Row{""});
        EXPECT_EQ(rows[next++], (Row{"seat", "hand", "ev", "equity"}));
        for (const std::size_t seat : {0U, 1U}) {
            const kestrel_app::SeatDistribution& expected = distributions[seat];
            for (std::size_t h = 0; h < expected.hands.size(); ++h) {
                EXPECT_EQ(rows[next][0] + rows[next][1],
                          (seat == 0 ? "OOP" : "IP") + expected.hands[h]);
                expect_figures(rows[next++], 2, {expected.ev[h] / 100, expected.equity[h]});
            }
        }

        const json actions = json::parse(contents(file_))["node"]["actions"];
        const auto stats = *reference.session().node_action_stats(node);
        ASSERT_EQ(actions.size(), stats.ev.size());
        for (std::size_t a = 0; a < stats.ev.size(); ++a) {
            EXPECT_NEAR(actions[a]["frequency"], static_cast<double>(stats.frequencies[a]), 1e-6);
            EXPECT_DOUBLE_EQ(actions[a]["combos"], stats.combos[a]);
            EXPECT_DOUBLE_EQ(actions[a]["equity"], stats.equity[a]);
            EXPECT_DOUBLE_EQ(actions[a]["ev"], stats.ev[a] / 100);
        }
        const auto here = *action_stats_here(*reference.session().finished(), node);
        for (std::size_t a = 0; a < here.ev.size(); ++a) {
            const json expected = {{"frequency", here.frequencies[a]},
                                   {"combos", here.combos[a]},
                                   {"equity", here.equity[a]},
                                   {"ev", here.ev[a] / 100}};
            EXPECT_EQ(actions[a]["here"], expected);
        }
    }
    // With tables the report is told beside them. A card to come is nobody's choice.
    const RunResult dealt = run({turn_, "--distributions", "--node", "Check/Check"});
    EXPECT_THAT(dealt.err, AllOf(HasSubstr("Exploitability"), HasSubstr("Check/Check")));
    const auto hands = *reference.session().hand_distributions(reference.node("Check/Check"));
    EXPECT_EQ(rows_of(dealt.out).size(), 1 + hands[0].hands.size() + hands[1].hands.size());
}

TEST_F(Queries, WhyAddsUpToTheEv) {
    const Reference reference(turn_spot);
    const RunResult output = run({turn_, "--why", " jsAS", "--node", "Check", "--json", file_});
    EXPECT_THAT(output.out, AllOf(HasSubstr("With JsAs"), HasSubstr("\n    Fold ")));
    const json node = json::parse(contents(file_))["node"];
    EXPECT_EQ(node["why"]["hand"], "JsAs");
    const auto evs =
        *reference.session().pocket_action_evs(node["index"], kestrel::Seat::IP, "As", "Js");
    ASSERT_EQ(node["why"]["actions"].size(), evs.size());
    for (std::size_t a = 0; a < evs.size(); ++a) {
        const json& action = node["why"]["actions"][a];
        EXPECT_EQ(action["follows"], a == 0 ? "deal" : "answers");
        double sum = 0;
        for (const json& part : action["parts"]) {
            sum += part["ev"].is_null()
                       ? 0.0
                       : part["probability"].get<double>() * part["ev"].get<double>();
        }
        EXPECT_NEAR(sum, evs[a] / 100, 1e-4);
        EXPECT_NEAR(action["ev"], evs[a] / 100, 1e-9);
    }
}

TEST(Tables, UnknownFiguresAreDashesAndNull) {
    kestrel_app::HandDistributions hands;
    hands[1] = {{"2c3d"}, {150.0}, {std::numeric_limits<double>::quiet_NaN()}};
    EXPECT_EQ(distributions_table(hands), "seat\thand\tev\tequity\nIP\t2c3d\t1.5000\t-\n");

    SolveReport report;
    report.node.actions = {{"Check", "check", 1.0, 1}};
    report.stats.emplace();
    report.stats->combos = {2.5};
    report.stats->equity = {std::numeric_limits<double>::quiet_NaN()};
    report.stats->ev = {150.0};
    EXPECT_TRUE(json::parse(json_text(report))["node"]["actions"][0]["equity"].is_null());
    std::ostringstream out;
    print_stats(out, {}, report);
    EXPECT_THAT(out.str(), HasSubstr(" 100.00 %     2.50        -   1.5000\n"));
}

TEST_F(Queries, LocksHoldInASecondSolve) {
    const RunResult output = run({river_, "--json", file_, "--node", "Check/Bet 75%",  //
                                  "--lock", "check/bet 75%;*=0,1,0,0",                 //
                                  "--lock", "Check / Bet 75%; kqs = 10, 30, 0, 60",    //
                                  "--lock", ";22=0,0,0,1"});
    ASSERT_EQ(output.exit_code, 0) << output.err;
    const json report = json::parse(contents(file_));

    // What a solve with the same locks, and one without, comes to.
    const Reference before(river_spot);
    const std::uint64_t locked_node = before.node("Check/Bet 75%");
    std::vector<kestrel_app::NodeLockEntry> entries;
    for (std::size_t label = 0; label < kestrel_app::label_count; ++label) {
        entries.push_back({locked_node, kestrel_app::hand_label(label), 1, 1.0F, {}});
    }
    entries.push_back({locked_node, "KQs", -1, 1.0F, {0.1F, 0.3F, 0.0F, 0.6F}});
    entries.push_back({0, "22", 3, 1.0F, {}});
    const Reference after(river_spot, entries);
    const auto expect_figures = [](const json& figures, const kestrel_app::SolveResult& result) {
        EXPECT_DOUBLE_EQ(figures["exploitability"],
                         static_cast<double>(result.exploitability) / 100);
        EXPECT_DOUBLE_EQ(figures["ev_oop"], static_cast<double>(result.ev_oop) / 100);
        EXPECT_DOUBLE_EQ(figures["ev_ip"], static_cast<double>(result.ev_ip) / 100);
        EXPECT_EQ(figures["iterations"], result.iterations);
    };
    expect_figures(report["before_locks"], before.result());
    expect_figures(report, after.result());
    EXPECT_NE(report["ev_oop"], report["before_locks"]["ev_oop"]);
    EXPECT_EQ(report["locks"].size(), 3U);
    EXPECT_EQ(report["locks"][1]["hand"], "KQs");
    EXPECT_NEAR(report["locks"][1]["probs"][3], 0.6, 1e-6);

    double from = 0;
    double to = 0;
    const std::string told = output.out.substr(output.out.find("By the locks "));
    ASSERT_EQ(std::sscanf(told.c_str(), "By the locks EV %lf -> %lf OOP", &from, &to), 2);
    EXPECT_NEAR(from, report["before_locks"]["ev_oop"], 1e-4);
    EXPECT_NEAR(to, report["ev_oop"], 1e-4);
}

TEST_F(Queries, WhatCannotBeAskedIsToldBeforeTheSolve) {
    const std::pair<std::vector<std::string>, const char*> cases[] = {
        {{"--lock", "Check;AKs"}, "--lock 'Check;AKs': a lock reads LINE;HAND=p1,p2,... as in "},
        {{"--lock", ";AKx=1,0,0,0"},
         "'AKx' is no hand such as AA, AKs or AKo, nor * for all hands"},
        {{"--lock", ";AKs=1,x,0,0"}, "'x' is no probability"},
        {{"--lock", ";AKs=nan,-1,0,0"}, "'nan' is no probability"},
        {{"--lock", ";AKs=0,0,0,0"}, "one of the probabilities must be above 0"},
        {{"--lock", ";AKs=1,0"},
         "2 given for the 4 choices behind root: Check, Bet 50%, Bet 100%, "},
        {{"--lock", "Chek;AKs=1,0"}, "there is no 'Chek' behind root; choices: Check"},
        {{"--lock", "Check/Check;AKs=1"}, "nobody decides behind Check/Check"},
        {{"--lock", ";72o=1,0,0,0"}, "OOP holds no 72o behind root"},
        {{"--stats", "--node", "Check/Check"}, "nobody decides behind Check/Check"},
        {{"--why", "KcQd", "--node", "Check/Check"}, "nobody decides behind Check/Check"},
        {{"--why", "KK"}, "a hand of two cards such as AhKd, not 'KK'"},
        {{"--why", "KcKc"}, "a hand of two cards"},
        {{"--why", "KdAh"}, "OOP cannot hold KdAh behind root"},
    };
    for (auto [arguments, message] : cases) {
        arguments.insert(arguments.begin(), river_);
        const RunResult result = run(arguments);
        EXPECT_EQ(result.exit_code, 2) << message;
        EXPECT_THAT(result.err, AllOf(StartsWith("tidewell-solve: "), HasSubstr(message)));
        EXPECT_THAT(result.out, IsEmpty());
    }
}

}  // namespace
}  // namespace tidewell_cli
