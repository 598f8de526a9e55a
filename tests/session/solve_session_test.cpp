#include "session/solve_session.h"

#include <gtest/gtest.h>

#include <cmath>
#include <condition_variable>
#include <limits>
#include <mutex>
#include <regex>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "session/action_names.h"
#include "tests/session/failing_allocation.h"

namespace kestrel_app {
namespace {

SolveConfig river_config(std::uint32_t iterations = 120) {
    SolveConfig config;
    config.board = "Td9c6h6c2s";
    config.starting_street = "river";
    config.oop_range = "TT,87s,KQo";
    config.ip_range = "99,AJs,A6s,54s";
    config.oop_river = config.ip_river = {"50", "60", true, false};
    config.starting_pot = 1000;
    config.effective_stack = 4000;
    config.max_iterations = iterations;
    config.target_exploitability = 0;
    config.thread_count = 2;
    return config;
}

SolveConfig turn_config(std::uint32_t iterations) {
    SolveConfig config = river_config(iterations);
    config.board = "Td9c6h6c";
    config.starting_street = "turn";
    config.oop_turn = config.ip_turn = {"75", "", false, false};
    return config;
}

/// Listens to a session: remembers every report and waits for the one that bears the result.
class Listener {
  public:
    ProgressCallback callback(std::function<void(const SolveProgress&)> also = nullptr) {
        return [this, also](const SolveProgress& progress) {
            if (also) also(progress);
            const std::scoped_lock lock(mutex_);
            reports_.push_back(progress);
            ended_.notify_all();
        };
    }

    std::vector<SolveProgress> wait() {
        std::unique_lock lock(mutex_);
        ended_.wait(lock, [this] { return !reports_.empty() && reports_.back().result; });
        return std::exchange(reports_, {});
    }

  private:
    std::mutex mutex_;
    std::condition_variable ended_;
    std::vector<SolveProgress> reports_;
};

void wait_until_idle(const SolveSession& session) {
    while (session.isRunning())
        std::this_thread::yield();
}

SolveProgress solve(SolveSession& session, const SolveConfig& config,
                    std::function<void(const SolveProgress&)> also = nullptr) {
    wait_until_idle(session);
    Listener listener;
    EXPECT_TRUE(session.start(config, listener.callback(std::move(also))));
    SolveProgress last = listener.wait().back();
    wait_until_idle(session);
    return last;
}

void expect_nothing_to_ask(const SolveSession& session) {
    EXPECT_FALSE(session.isRunning() || session.game() || session.solver());
    EXPECT_FALSE(session.hand_strategy(0) || session.hand_distributions(0));
}

TEST(SolveSessionParallel, ReportsInOrderAndKeepsTheSolve) {
    SolveSession session;
    expect_nothing_to_ask(session);
    Listener listener;
    ASSERT_TRUE(session.start(river_config(), listener.callback()));
    const std::vector<SolveProgress> reports = listener.wait();

    std::vector<std::pair<double, std::string>> phases;
    std::uint32_t iteration = 0;
    for (const SolveProgress& report : reports) {
        std::smatch match;
        const std::regex form(R"(Iter (\d+) \| exploitability≈(\d+\.\d{4}))");
        if (!std::regex_match(report.status, match, form)) {
            phases.emplace_back(report.fraction, report.status);
            continue;
        }
        EXPECT_EQ(std::stoul(match[1]), ++iteration);
        EXPECT_EQ(report.iteration, iteration);
        EXPECT_DOUBLE_EQ(report.fraction, std::min(iteration / 120.0, 0.999));
        EXPECT_EQ(match[2] == "0.0000", iteration < measuring_interval);
    }
    EXPECT_EQ(iteration, 120U);
    const std::vector<std::pair<double, std::string>> expected = {
        {0, "Init: building game object..."},
        {0, "Init: building game tree structures..."},
        {0, "Init: starting solver..."},
        {0.999, "Finalizing: computing results..."},
        {0.999, "Finalizing: building result snapshot..."},
        {1, "Done"}};
    EXPECT_EQ(phases, expected);

    const SolveResult& result = *reports.back().result;
    ASSERT_TRUE(result.ok);
    EXPECT_EQ(std::tuple(result.board, result.starting_pot, result.effective_stack),
              std::tuple("Td9c6h6c2s", 1000U, 4000U));
    EXPECT_EQ(result.exploitability, session.solver()->exploitability);
    EXPECT_NEAR(result.ev_oop, -result.ev_ip, 0.01);
    EXPECT_EQ(result.root_action_names, (std::vector<std::string>{"Check", "Bet 50%", "All-In"}));

    // Handles outlive what the session gives up.
    const auto finished = session.finished();
    session.clearResults();
    wait_until_idle(session);
    expect_nothing_to_ask(session);
    EXPECT_TRUE(hand_combos(*finished, 0));
}

TEST(SolveSessionParallel, CancelAtEveryPhase) {
    const char* const phases[] = {"Init: building game object...",
                                  "Init: building game tree",
                                  "Init: starting solver...",
                                  "Iter 1 |",
                                  "Iter 120 |",
                                  "Finalizing: computing results...",
                                  "Done"};
    SolveSession session;
    for (const std::string phase : phases) {
        SCOPED_TRACE(phase);
        const bool cancels = phase[0] == 'I';
        const SolveProgress last = solve(session, river_config(), [&](const SolveProgress& report) {
            if (report.status.starts_with(phase)) session.cancel();
        });
        EXPECT_EQ(std::tuple(last.result->ok, last.status, last.fraction),
                  cancels ? std::tuple(false, "Cancelled", 0.0) : std::tuple(true, "Done", 1.0));
        EXPECT_EQ(last.result->error, cancels ? "Cancelled" : "");
        EXPECT_EQ(session.game() == nullptr, cancels);
    }
    session.cancel();  // with nothing to cancel: the next solve is not touched
    EXPECT_TRUE(solve(session, river_config(1)).result->ok);
    EXPECT_EQ(solve(session, river_config(0)).result->iterations, 0U);
}

TEST(SolveSessionParallel, OneSolveAtATime) {
    SolveSession session;
    Listener first;
    Listener second;
    bool inner = true;
    ASSERT_TRUE(session.start(turn_config(1000000), first.callback([&](const SolveProgress& now) {
        if (now.iteration != 1) return;
        inner = session.start(river_config(), second.callback());
        session.clearResults();  // no lasting effect on the running solve
        session.cancel();
    })));
    EXPECT_FALSE(session.start(river_config(), second.callback()));
    EXPECT_FALSE(session.hand_strategy(0)) << "nothing to ask while a solve runs";
    EXPECT_EQ(first.wait().back().status, "Cancelled");
    EXPECT_FALSE(inner);
    wait_until_idle(session);
    ASSERT_TRUE(session.start(river_config(), second.callback()));
    EXPECT_TRUE(second.wait().back().result->ok);
    wait_until_idle(session);
    session.start(turn_config(1000000), [](const SolveProgress&) {});  // ended by the destructor
}

TEST(SolveSessionParallel, FailuresAreReported) {
    const SolveConfig base = river_config(1);
    SolveConfig blocked = base;
    blocked.oop_range = "6c6h";
    SolveSession session;
    EXPECT_TRUE(solve(session, base).result->ok);
    SolveProgress last = solve(session, blocked);
    const std::string message = "Player range empty after filtering board cards";
    EXPECT_EQ(std::tuple(last.result->ok, last.result->error, last.result->board, last.fraction),
              std::tuple(false, message, blocked.board, 0.0));
    EXPECT_EQ(last.status, "Error: " + message);
    expect_nothing_to_ask(session);
    last = solve(session, base, [](const SolveProgress& report) {
        if (report.iteration == 1) throw 1;
    });
    EXPECT_EQ(last.status, "Error: Unknown error");
    EXPECT_EQ(last.result->error, "Unknown error");
    expect_nothing_to_ask(session);
}

// Whatever a report ends in, somebody waits for the last one.
TEST(SolveSessionParallel, TheLastReportIsToldUntilItIsHeard) {
    SolveSession session;
    int refused = 0;
    const SolveProgress last = solve(session, river_config(1), [&](const SolveProgress& report) {
        if (report.result && ++refused < 3) throw std::bad_alloc();
    });
    EXPECT_EQ(last.status, "Done");
    EXPECT_EQ(refused, 3);
    // A start, and the destructor, are answer enough.
    std::atomic<int> reports = 0;
    session.start(river_config(1), [&](const SolveProgress& report) {
        if (report.result && ++reports > 0) throw std::bad_alloc();
    });
    while (reports < 2)
        std::this_thread::yield();
    EXPECT_TRUE(session.isRunning());
    Listener next;
    ASSERT_TRUE(session.start(river_config(1), next.callback()));
    EXPECT_TRUE(next.wait().back().result->ok);
    wait_until_idle(session);
    session.start(river_config(1), [](const SolveProgress&) { throw std::bad_alloc(); });
}

// Every allocation of the solve thread fails once, from the cards to the snapshot.
TEST(SolveSessionParallel, RunsOutOfMemoryAnywhere) {
    SolveConfig config = river_config(2);
    config.thread_count = 1;
    SolveSession session;
    std::size_t failures = 0;
    bool failed = true;
    for (std::size_t skipped = 0; failed && skipped < 100000; skipped += 1 + skipped / 8) {
        const SolveProgress last = solve(session, config, [&](const SolveProgress& report) {
            if (report.status == "Init: building game object...") {
                fail_allocation_after(skipped, 256);
            } else if (report.result) {
                failed = allocation_failed();
            }
        });
        EXPECT_EQ(last.result->ok, !failed);
        if (failed) {
            ++failures;
            EXPECT_EQ(last.status, "Error: std::bad_alloc");
            expect_nothing_to_ask(session);
        }
    }
    EXPECT_FALSE(failed);
    EXPECT_GE(failures, 10U);
}

TEST(TreeSnapshot, TellsEveryNode) {
    SolveSession session;
    const auto nodes = solve(session, turn_config(3)).result->nodes;
    const auto game = session.game();
    const auto solver = session.solver();
    ASSERT_EQ(nodes->size(), game->nodes.size());
    EXPECT_LE(nodes->memory_bytes(), 100 * nodes->size());
    for (std::size_t i = 0; i < nodes->size(); ++i) {
        const kestrel::GameNode& node = game->nodes[i];
        const auto actions = nodes->actions(i);
        const bool decides = node.kind == kestrel::NodeKind::Decision;
        const bool deals = node.kind == kestrel::NodeKind::Chance;
        const char* const type = decides ? "decision" : deals ? "chance" : "terminal";
        const char* const seat = node.seat == kestrel::Seat::OOP ? "OOP" : "IP";
        const SolveNodeMeta expected{type,
                                     deals ? "river" : "",
                                     decides ? seat : "",
                                     node.pot,
                                     node.contributed[0],
                                     node.contributed[1],
                                     !actions.empty()};
        EXPECT_EQ(nodes->node(i), expected);
        ASSERT_EQ(nodes->action_count(i), actions.size());
        ASSERT_EQ(actions.size(), node.actions.size());
        const auto frequencies = solver->action_frequencies(i);
        for (std::size_t a = 0; a < actions.size(); ++a) {
            EXPECT_EQ(actions[a].name, action_display_name(node.actions[a], naming_pot(*game, i)));
            EXPECT_EQ(actions[a].action_type,
                      action_type_name(node.actions[a], naming_pot(*game, i)));
            EXPECT_EQ(actions[a].child_index, node.children[a]);
            EXPECT_FLOAT_EQ(actions[a].frequency,
                            decides ? frequencies[a] : 1.0F / static_cast<float>(actions.size()));
        }
    }
    EXPECT_THROW(static_cast<void>(nodes->node(nodes->size())), std::out_of_range);

    std::vector<float> none = {std::numeric_limits<float>::quiet_NaN(), -1.0F, 0.0F, INFINITY};
    normalise_frequencies(none);
    EXPECT_EQ(none, std::vector<float>(4, 0.25F));
}

}  // namespace
}  // namespace kestrel_app
