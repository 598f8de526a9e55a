#include "app/app_controller.h"

#include <gtest/gtest.h>

#include <QStringList>
#include <array>
#include <limits>
#include <memory>
#include <thread>
#include <utility>
#include <vector>

#include "tests/app/controller_support.h"

namespace tidewell {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

TEST(AppController, SolvesAndShowsTheResult) {
    AppController controller;
    QSignalSpy results(&controller, &AppController::resultsChanged);
    QSignalSpy stats(&controller, &AppController::solveStatsChanged);
    QStringList statuses;
    std::vector<double> fractions;
    QObject::connect(&controller, &AppController::statusTextChanged, &controller,
                     [&] { statuses.append(controller.statusText()); });
    QObject::connect(&controller, &AppController::progressChanged, &controller,
                     [&] { fractions.push_back(controller.progress()); });
    const int before = controller.solvesToday();
    solve(controller, riverConfig());

    EXPECT_EQ(statuses.first(), "Starting...");
    EXPECT_TRUE(statuses.contains("Iter 1 | exploitability≈0.0000"));
    EXPECT_EQ(statuses.last(), "Done");
    EXPECT_EQ(statuses.size(), 4 + 60 + 2 + 1);
    EXPECT_TRUE(std::ranges::is_sorted(fractions));
    EXPECT_EQ(fractions.back(), 1.0);
    EXPECT_EQ(results.count(), 2);
    EXPECT_EQ(stats.count(), 1);
    EXPECT_EQ(controller.solvesToday(), before + 1);
    EXPECT_EQ(controller.resultsSummary(),
              QString("Board Td9c6h6c2s | iters 60 | expl≈%1 | EV(oop)=%2 EV(ip)=%3")
                  .arg(controller.resultExploitability(), 0, 'f', 4)
                  .arg(controller.resultEvOop(), 0, 'f', 3)
                  .arg(controller.resultEvIp(), 0, 'f', 3));
    ASSERT_EQ(controller.rootActions().size(), 2);
    EXPECT_EQ(controller.rootActions()[1].toMap()["actionType"], "bet 50%");

    EXPECT_EQ(controller.nodeMeta(0)["effectiveStack"], 40.0);
    const QVariantMap bet = controller.nodeActions(0)[1].toMap();
    EXPECT_EQ(controller.nodeMeta(bet["childIndex"].toInt())["investedOop"], 5.0);

    controller.clearResults();
    EXPECT_EQ(controller.statusText(), "Ready");
    EXPECT_EQ(controller.resultsSummary(), "");
    EXPECT_EQ(controller.treeNodeCount(), 0);
    EXPECT_TRUE(controller.nodeHandStrategy(0).isEmpty());
    controller.reSolveWithNodeLocks();
    EXPECT_EQ(controller.statusText(), "No previous solve config (solve once first)");
}

TEST(AppController, ChecksBeforeASolve) {
    const auto with = [](const char* key, const QVariant& value) {
        QVariantMap cfg = riverConfig();
        cfg[key] = value;
        return cfg;
    };
    const std::pair<QVariantMap, const char*> cases[] = {
        {{}, "Not ready: enter a valid board first"},
        {with("board", QVariantList{1, 2}), "Not ready: enter a valid board first"},
        {with("ip_range", QVariant()), "Not ready: select at least one hand in both ranges"}};
    AppController controller;
    solve(controller, riverConfig(1));
    controller.setNodeLockProbs(0, "TT", {1.0, 0.0});
    for (const auto& [cfg, status] : cases) {
        controller.startSolveWithConfig(cfg);
        EXPECT_FALSE(controller.running());
        EXPECT_EQ(controller.statusText(), status);
    }
    EXPECT_GT(controller.treeNodeCount(), 0) << "a failed check keeps the result";
    EXPECT_TRUE(controller.nodeLocks(0).isEmpty()) << "a fresh start drops the locks";

    // What only the solve itself finds out.
    solve(controller, with("oop_range", "AAx"));
    EXPECT_TRUE(controller.statusText().startsWith("Error: "));
    EXPECT_EQ(controller.resultsSummary(),
              "Solve failed: " + controller.statusText().mid(QString("Error: ").size()));
    EXPECT_EQ(controller.treeNodeCount(), 0);
}

TEST(AppController, CancelClearAndStartAgain) {
    AppController controller;
    controller.cancelSolve();
    EXPECT_EQ(controller.statusText(), "Cancelling...");
    const auto started = [&] {
        return waitUntil([&] { return controller.statusText().startsWith("Iter"); });
    };

    controller.startSolveWithConfig(endlessConfig());
    ASSERT_TRUE(started());
    controller.startSolveWithConfig(riverConfig());  // no effect
    EXPECT_TRUE(controller.nodeHandCombos(0).isEmpty());
    controller.cancelSolve();
    EXPECT_TRUE(controller.running());
    ASSERT_TRUE(waitUntil([&] { return !controller.running(); }));
    EXPECT_EQ(controller.statusText(), "Cancelled");
    EXPECT_EQ(controller.resultsSummary(), "Solve failed: Cancelled");

    // Cleared while it runs: the old solve's end is not told, and a start before it waits for it.
    controller.startSolveWithConfig(endlessConfig());
    ASSERT_TRUE(started());
    controller.clearResults();
    EXPECT_FALSE(controller.running());
    EXPECT_EQ(controller.statusText(), "Ready");
    controller.startSolveWithConfig(riverConfig());
    ASSERT_TRUE(waitUntil([&] { return !controller.running(); }));
    if (controller.treeNodeCount() == 0) {  // the old solve was still there
        EXPECT_EQ(controller.statusText(), "Cancelled");
        solve(controller, riverConfig());
    }
    EXPECT_EQ(controller.statusText(), "Done");
    QCoreApplication::processEvents();
    EXPECT_GT(controller.treeNodeCount(), 0);

    // And left while it runs.
    auto shortLived = std::make_unique<AppController>();
    shortLived->startSolveWithConfig(endlessConfig());
    ASSERT_TRUE(waitUntil([&] { return shortLived->statusText().startsWith("Iter"); }));
    shortLived->nodeHandDistributions169(0);
    shortLived->requestSolveMemoryEstimate(endlessConfig());
    shortLived.reset();
    QCoreApplication::processEvents();
}

// The former solve has ended, but its last report waits in the queue when the next one starts.
TEST(AppController, AReportThatComesTooLateTouchesNothing) {
    AppController controller;
    for (int i = 0; i < 20; ++i) {
        ASSERT_TRUE(waitUntil([&] { return !controller.running(); }));
        controller.startSolveWithConfig(riverConfig(1));
        while (controller.nodeHandStrategy(0).isEmpty())
            std::this_thread::yield();
        controller.clearResults();
        controller.startSolveWithConfig(endlessConfig());
        if (controller.statusText() == "Already running") {  // a moment too early
            ASSERT_TRUE(waitUntil([&] { return !controller.running(); }));
            EXPECT_EQ(controller.statusText(), "Cancelled");
            EXPECT_TRUE(controller.nodeHandStrategy(0).isEmpty());
            continue;
        }
        ASSERT_TRUE(waitUntil([&] { return controller.statusText().startsWith("Iter "); }));
        EXPECT_TRUE(controller.running());
        controller.cancelSolve();
    }
    ASSERT_TRUE(waitUntil([&] { return !controller.running(); }));
    solve(controller, riverConfig(1));
    EXPECT_FALSE(controller.nodeHandCombos(0).isEmpty());
}

TEST(AppController, LocksAndReSolve) {
    AppController controller;
    controller.reSolveWithNodeLocks();
    EXPECT_EQ(controller.statusText(), "No previous solve config (solve once first)");
    controller.setNodeLock(0, "TT", 1, 0.7);
    EXPECT_TRUE(controller.nodeLocks(0).isEmpty()) << "no tree to lock";
    solve(controller, riverConfig());
    ASSERT_EQ(controller.nodeActions(0).size(), 2);

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
    // What cannot be locked is dropped without a word.
    const int last = controller.treeNodeCount() - 1;
    for (const int node : {-1, last, last + 1, std::numeric_limits<int>::max()}) {
        controller.setNodeLock(node, "TT", 0, 1);
        controller.setNodeLock(node, "TT", -1, 1);
        controller.setNodeLockProbs(node, "TT", {1});
        EXPECT_TRUE(controller.nodeLocks(node).isEmpty()) << node;
    }
    controller.setNodeLockProbs(0, "", {1});
    EXPECT_EQ(controller.nodeLocks(0).size(), 1);

    controller.setNodeLockProbs(0, "TT", {0, 1});
    for (int i = 0; i < 2; ++i) {  // a further re-solve keeps the locks
        controller.reSolveWithNodeLocks();
        ASSERT_TRUE(waitUntil([&] { return !controller.running(); }));
        const auto probs = controller.nodeHandStrategy(0)["actionProbs"].toMap();
        EXPECT_EQ(probs["TT"].toList(), (QVariantList{0.0, 1.0}));
    }

    // One action locked freezes the whole node as it is.
    controller.clearNodeLocks(0);
    controller.clearNodeLocks(0);
    controller.setNodeLock(0, "TT", 2, 1);
    EXPECT_TRUE(controller.nodeLocks(0).isEmpty()) << "no such action, nothing is frozen";
    const auto present = controller.nodeHandStrategy(0)["actionProbs"].toMap();
    controller.setNodeLock(0, "TT", 1, 0.25);
    EXPECT_EQ(controller.nodeLocks(0).size(), 169);
    for (const QVariant& entry : controller.nodeLocks(0)) {
        const QVariantMap lock = entry.toMap();
        const QString hand = lock["hand"].toString();
        const QVariantList probs = lock["actionProbs"].toList();
        if (hand == "TT") {
            EXPECT_EQ(probs, (QVariantList{0.75, 0.25}));
            EXPECT_EQ(lock["actionIndex"], 1);
            EXPECT_EQ(lock["actionProb"], 0.25);
        } else if (present[hand].toList()[0].toDouble() > 0) {
            EXPECT_NEAR(probs[0].toDouble(), present[hand].toList()[0].toDouble(), 1e-6);
        }
    }
    solve(controller, riverConfig(1));
    EXPECT_TRUE(controller.nodeLocks(0).isEmpty());
}

TEST(AppController, AnswersAboutNodes) {
    AppController controller;
    solve(controller, riverConfig());
    const auto keys = [](const QVariant& map) { return map.toMap().keys().join(' '); };
    const QVariantMap strategy = controller.nodeHandStrategy(0);
    EXPECT_EQ(keys(strategy), "actionNames actionProbs actionTypeList dominantActionTypes weights");
    EXPECT_EQ(strategy["weights"].toMap().size(), 169);
    EXPECT_EQ(strategy["dominantActionTypes"].toMap()["AA"], "");
    EXPECT_EQ(strategy["actionTypeList"], (QVariantList{"check", "bet 50%"}));

    const QVariantMap combo = controller.nodeHandCombos(0).value(0).toMap();
    EXPECT_EQ(keys(combo), "actionEvs actionProbs buckets c1 c2 ev weight");
    const auto evs = [&](const char* player, const QString& c1, const QString& c2) {
        return controller.nodePocketActionEvs(0, player, c1, c2);
    };
    EXPECT_EQ(evs(" oop ", combo["c2"].toString(), combo["c1"].toString()),
              combo["actionEvs"].toList());
    EXPECT_TRUE(evs("ip", combo["c1"].toString(), combo["c2"].toString()).isEmpty());
    EXPECT_TRUE(evs("OOP", "", "xx").isEmpty());

    // All hands reach the root, so the mean of a label is what the strategy plays.
    const QVariantMap reach = controller.nodeHandStrategyReach169(0, "");
    EXPECT_EQ(keys(reach["weights"]), "87s KQo TT");
    EXPECT_EQ(reach["weights"].toMap()["TT"], 1.0);
    const QVariantList played = reach["actionProbs"].toMap()["87s"].toList();
    EXPECT_NEAR(played.value(0).toDouble() + played.value(1).toDouble(), 1.0, 1e-9);
    const QVariantMap house = controller.nodeHandStrategyReach169(0, "  Full HOUSE ");
    EXPECT_EQ(keys(house["weights"]), "TT");
    EXPECT_EQ(keys(controller.nodeHandStrategyReach169(0, "top pair")["weights"]), "");

    EXPECT_EQ(controller.nodeHandBuckets(0).value(0).toMap()["displayName"], "full house");
    EXPECT_EQ(controller.nodeSeatHandCombos(0, "IP"), controller.nodeSeatHandCombos(0, " ip"));
    EXPECT_NE(controller.nodeSeatHandCombos(0, "IP"), controller.nodeSeatHandCombos(0, "?"));
    const QVariantList stats = controller.nodeActionStats(0);
    ASSERT_EQ(stats.size(), 2);
    EXPECT_EQ(keys(stats[0]), "actionType combos equity ev frequency name");

    const int terminal = controller.treeNodeCount() - 1;
    for (const int node : {-1, terminal, terminal + 1, std::numeric_limits<int>::min()}) {
        EXPECT_TRUE(controller.nodeHandStrategy(node).isEmpty());
        EXPECT_TRUE(controller.nodeHandStrategyReach169(node, "").isEmpty());
        EXPECT_TRUE(controller.nodeHandCombos(node).isEmpty());
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
        EXPECT_EQ(ready.count(), 1);
        return controller.nodeHandDistributions169(node);
    };
    const QVariantMap none = ask(0);
    EXPECT_FALSE(none["ok"].toBool() || none["pending"].toBool());
    EXPECT_EQ(none["error"], "Distributions unavailable (no live solve state).");
    EXPECT_EQ(none["hands"], QVariantList());

    solve(controller, riverConfig());
    const QVariantMap answer = ask(0);
    EXPECT_TRUE(answer["ok"].toBool());
    EXPECT_EQ(answer["nodeIndex"], 0);
    for (const char* const list : {"oopHands", "evOop", "equityOop"})
        EXPECT_EQ(answer[list].toList().size(), controller.nodeHandCombos(0).size());
    EXPECT_EQ(answer["evIp"].toList().size(), answer["ipHands"].toList().size());
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

TEST(AppController, MemoryEstimateAndRefusal) {
    AppController controller;
    QSignalSpy required(&controller, &AppController::solveRequiredMemoryChanged);
    QVariantMap broken = riverConfig();
    broken["oop_river_bet_sizes"] = "2x";
    for (int i = 0; i < 5; ++i)
        controller.requestSolveMemoryEstimate(broken);
    controller.requestSolveMemoryEstimate(endlessConfig());
    ASSERT_TRUE(waitUntil([&] { return controller.solveRequiredMemoryBytes() != 0; }));
    EXPECT_EQ(required.count(), 2) << "that it is worked out, and the newest answer alone";
    const quint64 needed = controller.solveRequiredMemoryBytes();

    QVariantMap cfg = endlessConfig();
    cfg["max_iterations"] = 1;
    solve(controller, cfg);
    EXPECT_EQ(controller.resultsReclaimableMemoryBytes(), needed);
    controller.requestSolveMemoryEstimate(broken);
    ASSERT_TRUE(waitUntil([&] { return controller.solveRequiredMemoryBytes() == 0; }));
    solve(controller, riverConfig(1));
    EXPECT_EQ(controller.resultsReclaimableMemoryBytes(), 0U);
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
        {" ah ks\tQD Jc\n2d ", "a s A D", "kckd", "OOP"},
        {"AhKsQdJc2d7c7h", "AsAd??", "KcKd", "OOP"},  // what follows the cards is not read
        {"AhKsQdJc2", "AsAd", "KcKd", "UNKNOWN"},
        {"AhKsQdJc2d", "AsAd", "", "UNKNOWN"},
        {"AhKsQdJc1d", "AsAd", "KcKd", "UNKNOWN"},
        {"AhKsQdJc2d", "AsAä", "KcKd", "UNKNOWN"}};
    const AppController controller;
    for (const auto& [board, oopHand, ipHand, expected] : cases) {
        const QVariantMap result = controller.showdownWinner(board, oopHand, ipHand);
        const QString winner = result["winner"].toString();
        const quint32 oop = result["oopStrength"].toUInt();
        const quint32 ip = result["ipStrength"].toUInt();
        EXPECT_EQ(winner, expected) << board << ' ' << oopHand << ' ' << ipHand;
        EXPECT_EQ(winner == "OOP", oop > ip);
        EXPECT_EQ(winner == "IP", oop < ip);
        EXPECT_EQ(winner == "UNKNOWN", oop == 0 && ip == 0);
    }
}

}  // namespace
}  // namespace tidewell
