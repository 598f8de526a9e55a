#include "app/app_controller.h"

#include <gtest/gtest.h>

#include <QStringList>
#include <array>
#include <limits>
#include <memory>
#include <optional>
#include <thread>
#include <utility>

#include "platform/memory_info.h"
#include "tests/app/controller_support.h"
#include "tests/app/solved_spot.h"

namespace tidewell {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

TEST(AppController, SolvesAndShowsTheResult) {
    AppController controller;
    QSignalSpy results(&controller, &AppController::resultsChanged);
    QStringList statuses;
    QObject::connect(&controller, &AppController::statusTextChanged, &controller,
                     [&] { statuses.append(controller.statusText()); });
    const int before = controller.solvesToday();
    solve(controller, riverConfig());

    EXPECT_EQ(statuses.first(), "Starting...");
    EXPECT_TRUE(statuses.contains("Iter 1 | exploitability≈0.0000"));
    EXPECT_EQ(statuses.last(), "Done");
    EXPECT_EQ(statuses.size(), 4 + 60 + 2 + 1);
    EXPECT_EQ(results.count(), 2);
    EXPECT_EQ(controller.progress(), 1.0);
    EXPECT_EQ(controller.solvesToday(), before + 1);
    EXPECT_TRUE(controller.resultsSummary().startsWith("Board Td9c6h6c2s | iters 60 | expl≈"));
    EXPECT_EQ(controller.rootActions().value(1).toMap()["actionType"], "bet 50%");
    const QVariantMap bet = controller.nodeActions(0).value(1).toMap();
    EXPECT_EQ(controller.nodeMeta(bet["childIndex"].toInt())["investedOop"], 5.0);

    controller.clearResults();
    EXPECT_EQ(controller.statusText(), "Ready");
    EXPECT_EQ(controller.resultsSummary(), "");
    EXPECT_TRUE(controller.nodeHandStrategy(0).isEmpty());
    controller.reSolveWithNodeLocks();
    EXPECT_EQ(controller.statusText(), "No previous solve config (solve once first)");
}

QVariantMap with(QVariantMap cfg, const char* key, const QVariant& value) {
    cfg[key] = value;
    return cfg;
}

TEST(AppController, ChecksBeforeASolve) {
    AppController controller;
    solve(controller, riverConfig(1));
    const QVariantMap solved = controller.solvedConfig();
    controller.setNodeLockProbs(0, "TT", {1.0, 0.0});
    controller.startSolveWithConfig(with(riverConfig(), "board", QVariantList{1, 2}));
    EXPECT_FALSE(controller.running());
    EXPECT_EQ(controller.statusText(), "Not ready: enter a valid board first");
    EXPECT_TRUE(controller.nodeLocks(0).isEmpty());
    EXPECT_FALSE(controller.nodeHandStrategy(0).isEmpty());
    EXPECT_EQ(controller.solvedConfig(), solved);

    // What only the solve itself finds out.
    solve(controller, with(riverConfig(), "oop_range", "AAx"));
    EXPECT_TRUE(controller.statusText().startsWith("Error: "));
    EXPECT_EQ(controller.resultsSummary(),
              "Solve failed: " + controller.statusText().mid(QString("Error: ").size()));
    EXPECT_EQ(controller.treeNodeCount(), 0);
}

TEST(AppController, CancelClearAndStartAgain) {
    AppController controller;
    controller.cancelSolve();
    EXPECT_EQ(controller.statusText(), "Cancelling...");
    const auto start = [](AppController& any) {
        any.startSolveWithConfig(endlessConfig());
        ASSERT_TRUE(waitUntil([&] { return any.statusText().startsWith("Iter"); }));
    };
    const auto end = [&] {
        EXPECT_TRUE(controller.running());
        ASSERT_TRUE(waitUntil([&] { return !controller.running(); }));
        EXPECT_FALSE(controller.cancelling());
    };

    solve(controller, riverConfig(1));
    controller.startSolveWithConfig(riverConfig(1));
    controller.cancelSolve();  // while it is only being checked: nothing was given up yet
    EXPECT_FALSE(controller.running());
    EXPECT_EQ(controller.statusText(), "Cancelled");
    QCoreApplication::processEvents();
    EXPECT_FALSE(controller.nodeHandStrategy(0).isEmpty());

    start(controller);
    controller.startSolveWithConfig(riverConfig());  // no effect
    EXPECT_TRUE(controller.nodeHandCombos(0).isEmpty());
    controller.cancelSolve();
    EXPECT_TRUE(controller.cancelling());
    QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
    if (controller.running()) {
        EXPECT_EQ(controller.statusText(), "Cancelling...") << "whatever is still reported";
        end();
    }
    EXPECT_EQ(controller.statusText(), "Cancelled");
    EXPECT_EQ(controller.resultsSummary(), "Solve failed: Cancelled");

    // Cleared while it runs, it ends before anything else begins, and its end is not told.
    for (const bool cancelled : {false, true}) {
        start(controller);
        if (cancelled) controller.cancelSolve();
        controller.clearResults();
        EXPECT_TRUE(controller.cancelling());
        controller.startSolveWithConfig(riverConfig());  // no effect
        end();
        EXPECT_EQ(controller.statusText(), "Ready");
        EXPECT_EQ(controller.resultsSummary(), "");
    }
    // Neither is that of one that has just ended well.
    {
        QObject once;
        QObject::connect(&controller, &AppController::statusTextChanged, &once, [&] {
            if (controller.statusText().startsWith("Iter")) {
                while (controller.nodeHandStrategy(0).isEmpty())
                    std::this_thread::yield();
                controller.clearResults();
            }
        });
        solve(controller, riverConfig(1));
    }
    EXPECT_EQ(controller.statusText(), "Ready");
    EXPECT_TRUE(controller.nodeHandStrategy(0).isEmpty());
    solve(controller, riverConfig(1));
    EXPECT_EQ(controller.statusText(), "Done");

    // And left while it runs.
    auto shortLived = std::make_unique<AppController>();
    start(*shortLived);
    shortLived->nodeHandDistributions169(0);
    shortLived->requestSolveMemoryEstimate(endlessConfig());
    shortLived.reset();
    QCoreApplication::processEvents();
}

// The address sanitizer ends a process that runs out of memory.
#ifndef __SANITIZE_ADDRESS__
// A start and a re-solve that do not fit leave everything as it was.
TEST(AppController, IsRefusedBeforeAnythingIsGivenUp) {
    AppController controller;
    solve(controller, riverConfig(1));
    const QVariantMap solved = controller.solvedConfig();
    controller.setNodeLockProbs(0, "TT", {1.0, 0.0});
    for (const bool underLocks : {false, true}) {
        const tidewell_platform::AllocationLimit limit(std::uint64_t{50} << 20);
        solve(controller, with(wideConfig(), "apply_node_locks", underLocks));
        EXPECT_EQ(controller.statusText(),
                  "Not enough RAM to solve (after clearing previous results)");
        EXPECT_EQ(controller.nodeLocks(0).size(), 1);
    }
    EXPECT_FALSE(controller.nodeHandStrategy(0).isEmpty());
    EXPECT_EQ(controller.solvedConfig(), solved);
}

// A solve ends without the memory for it, and the next one finds everything in order.
TEST(AppController, RunsOutOfMemory) {
    AppController controller;
    std::optional<tidewell_platform::AllocationLimit> limit;
    QObject::connect(&controller, &AppController::statusTextChanged, &controller, [&] {
        if (controller.statusText().startsWith("Init: building game object")) {
            limit.emplace(std::uint64_t{50} << 20);
        }
    });
    solve(controller, wideConfig());
    limit.reset();
    EXPECT_EQ(controller.statusText(), "Error: Not enough memory");
    EXPECT_EQ(controller.resultsSummary(), "Solve failed: Not enough memory");
    controller.disconnect();
    solve(controller, riverConfig(1));
    EXPECT_EQ(controller.statusText(), "Done");
}
#endif

TEST(AppController, LocksAndReSolve) {
    AppController controller;
    controller.reSolveWithNodeLocks();
    EXPECT_EQ(controller.statusText(), "No previous solve config (solve once first)");
    controller.setNodeLock(0, "TT", 1, 0.7);
    EXPECT_TRUE(controller.nodeLocks(0).isEmpty()) << "no tree to lock";
    solve(controller, riverConfig());

    // A mix leaves the other hands free.
    const std::pair<QVariantList, QVariantList> mixes[] = {
        {{2, 0, 2}, {1.0, 0.0}}, {{3, 1}, {0.75, 0.25}}, {{0, 0}, {0.5, 0.5}},
        {{nan, -1}, {0.5, 0.5}}, {{"x", 5}, {0.0, 1.0}}, {{1}, {1.0, 0.0}},
        {{}, {0.5, 0.5}}};
    for (const auto& [given, kept] : mixes) {
        controller.setNodeLockProbs(0, "TT", given);
        const QVariantMap lock = {
            {"hand", "TT"}, {"actionIndex", -1}, {"actionProb", 1.0}, {"actionProbs", kept}};
        EXPECT_EQ(controller.nodeLocks(0), QVariantList{lock});
    }
    const int last = controller.treeNodeCount() - 1;
    for (const int node : {-1, last, last + 1}) {  // dropped without a word
        controller.setNodeLock(node, "TT", 0, 1);
        controller.setNodeLockProbs(node, "TT", {1});
        EXPECT_TRUE(controller.nodeLocks(node).isEmpty()) << node;
    }

    controller.setNodeLockProbs(0, "TT", {0, 1});
    for (int i = 0; i < 2; ++i) {  // a further re-solve keeps the locks
        controller.reSolveWithNodeLocks();
        ASSERT_TRUE(waitUntil([&] { return !controller.running(); }));
        const auto probs = controller.nodeHandStrategy(0)["actionProbs"].toMap();
        EXPECT_EQ(probs["TT"].toList(), (QVariantList{0.0, 1.0}));
    }

    // One action locked freezes the whole node as it is.
    controller.clearNodeLocks(0);
    controller.setNodeLock(0, "TT", 2, 1);
    EXPECT_TRUE(controller.nodeLocks(0).isEmpty()) << "no such action, nothing is frozen";
    const auto present = controller.nodeHandStrategy(0)["actionProbs"].toMap();
    controller.setNodeLock(0, "TT", 1, 0.25);
    EXPECT_EQ(controller.nodeLocks(0).size(), 169);
    for (const QVariant& entry : controller.nodeLocks(0)) {
        const QVariantMap lock = entry.toMap();
        const double was = present[lock["hand"].toString()].toList()[0].toDouble();
        const double is = lock["actionProbs"].toList()[0].toDouble();
        EXPECT_NEAR(is, lock["hand"] == "TT" ? 0.75 : was > 0 ? was : is, 1e-6);
    }
    solve(controller, riverConfig(1));
    EXPECT_TRUE(controller.nodeLocks(0).isEmpty());
}

TEST(AppController, AnswersAboutNodes) {
    AppController controller;
    solve(controller, riverConfig());
    const auto keys = [](const QVariant& map) { return map.toMap().keys().join(' '); };
    EXPECT_EQ(keys(controller.nodeHandStrategy(0)),
              "actionNames actionProbs actionTypeList dominantActionTypes weights");
    const QVariantMap combo = controller.nodeHandCombos(0).value(0).toMap();
    EXPECT_EQ(keys(combo), "actionEvs actionProbs buckets c1 c2 ev weight");
    EXPECT_EQ(
        controller.nodePocketActionEvs(0, " oop ", combo["c2"].toString(), combo["c1"].toString()),
        combo["actionEvs"].toList());
    const QVariantMap house = controller.nodeHandStrategyReach169(0, "  Full HOUSE ");
    EXPECT_EQ(keys(house["weights"]), "TT");
    EXPECT_EQ(controller.nodeHandBuckets(0).value(0).toMap()["displayName"], "full house");
    EXPECT_EQ(controller.nodeSeatHandCombos(0, "IP"), controller.nodeSeatHandCombos(0, " ip"));

    const int terminal = controller.treeNodeCount() - 1;
    for (const int node : {-1, terminal, terminal + 1, std::numeric_limits<int>::min()}) {
        EXPECT_TRUE(controller.nodeHandStrategyReach169(node, "").isEmpty());
        EXPECT_TRUE(controller.nodeHandBuckets(node).isEmpty());
        EXPECT_TRUE(controller.nodeActionStats(node).isEmpty());
        EXPECT_TRUE(controller.nodePocketActionEvs(node, "OOP", "Th", "Ts").isEmpty());
        EXPECT_EQ(controller.nodeSeatHandCombos(node, "OOP").isEmpty(), node != terminal);
    }
}

TEST(AppController, DistributionsComeLater) {
    AppController controller;
    EXPECT_EQ(controller.nodeHandDistributions169(-1)["error"], "Invalid node index.");
    const auto ask = [&](int node) {
        QSignalSpy ready(&controller, &AppController::handDistributions169Ready);
        const QVariantMap first = controller.nodeHandDistributions169(node);
        EXPECT_TRUE(first["pending"].toBool());
        EXPECT_EQ(first["error"], "Computing…");
        EXPECT_EQ(controller.nodeHandDistributions169(node), first);
        EXPECT_TRUE(waitUntil([&] { return ready.count() > 0; }));
        return controller.nodeHandDistributions169(node);
    };
    const QVariantMap none = ask(0);
    EXPECT_EQ(none["error"], "Distributions unavailable (no live solve state).");
    solve(controller, riverConfig());
    const QVariantMap answer = ask(0);
    EXPECT_TRUE(answer["ok"].toBool());
    EXPECT_EQ(answer["evOop"].toList().size(), answer["oopHands"].toList().size());
    EXPECT_FALSE(ask(controller.treeNodeCount())["ok"].toBool());

    // What belongs to a solve that is gone does not show in the next.
    QSignalSpy ready(&controller, &AppController::handDistributions169Ready);
    for (const int node : {1, 2, 3, 4, 5, 6})
        controller.nodeHandDistributions169(node);
    controller.clearResults();
    solve(controller, riverConfig(1));
    EXPECT_TRUE(ask(1)["ok"].toBool());
    EXPECT_EQ(ready.count(), 1);
}

// A job that waits for its turn keeps no solve alive, and one that has begun not for long.
TEST(DistributionJobs, KeepNoOldSolveAlive) {
    SolvedSpot spot;
    DistributionJobs jobs(spot.session());
    for (const int node : {0, 1, 2, 3, 4, 5, 6, 7})
        jobs.request(node);
    const std::weak_ptr solve = spot.session().finished();
    jobs.clear();
    spot.session().clearResults();
    EXPECT_TRUE(waitUntil([&] { return solve.expired(); }));
}

TEST(AppController, DeveloperModeIsDecidedByTheFirstVariable) {
    const char* const names[] = {"KESTREL_DEV_MODE", "BRIGHTLEA_DEV_MODE",
                                 "NATIVE_SOLVER_DEV_MODE"};
    const std::pair<std::array<const char*, 3>, bool> cases[] = {
        {{"2", "true", ""}, false}, {{" On ", "", ""}, true}, {{"0", "1", "1"}, false},
        {{"", "yes", "0"}, true},   {{"", "", "true"}, true}, {{"", "", ""}, false}};
    for (const auto& [values, mode] : cases) {
        for (std::size_t i = 0; i < 3; ++i)
            qputenv(names[i], values[i]);
        EXPECT_EQ(AppController().developerMode(), mode);
    }
}

TEST(Showdown, NamesTheWinner) {
    const std::array<const char*, 4> cases[] = {
        // board, OOP, IP, winner
        {"AhKsQdJc2d", "AsAd", "KcKd", "OOP"},  // three aces, three kings
        {"AhKsQdJc2d", "AsAd", "Tc3c", "IP"},   // a straight
        {"AhKsQdJcTd", "2s2d", "3s3d", "TIE"},
        {" ah ks\tQD Jc\n2d7c7h", "a s A D??", "kckd", "OOP"},  // what follows is not read
        {"AhKsQdJc2", "AsAd", "KcKd", "UNKNOWN"},
        {"AhKsQdJc2d", "AsAd", "", "UNKNOWN"},
        {"AhKsQdJc1d", "AsAd", "KcKd", "UNKNOWN"},
        {"AhKsQdJc2d", "AsAä", "KcKd", "UNKNOWN"}};
    for (const auto& [board, oopHand, ipHand, winner] : cases) {
        const QVariantMap result = showdownWinner(board, oopHand, ipHand);
        const auto oop = result["oopStrength"].toUInt();
        const auto ip = result["ipStrength"].toUInt();
        EXPECT_EQ(result["winner"], winner) << board << ' ' << oopHand << ' ' << ipHand;
        const QString order = oop > ip ? "OOP" : oop < ip ? "IP" : oop > 0 ? "TIE" : "UNKNOWN";
        EXPECT_EQ(order, winner);
    }
}

}  // namespace
}  // namespace tidewell
