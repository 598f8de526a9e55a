#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <QUrl>
#include <utility>

#include "tests/app/controller_support.h"
#include "tests/app/files.h"

// Projects through the controller: what a loaded one answers, and what a refused one leaves alone.

namespace tidewell {
namespace {

class ControllerProject : public testing::Test {
  protected:
    QUrl file(const QString& name) const { return QUrl::fromLocalFile(folder_.filePath(name)); }

    QTemporaryDir folder_;
};

TEST_F(ControllerProject, ALoadedSolveAnswersAsFarAsItWasSaved) {
    const QVariantMap state = {{"oopRange", "TT,87s"}, {"pot", 10}, {"deep", QVariantList{1, "x"}}};
    AppController saved;
    solve(saved, riverConfig());
    const int betNode = saved.nodeActions(0)[1].toMap()["childIndex"].toInt();
    saved.nodeHandCombos(betNode);
    saved.nodeHandStrategy(betNode);
    saved.setNodeLockProbs(0, "TT", {1, 1});
    ASSERT_TRUE(saved.saveProject(file("a.tidewellproj"), state));

    AppController loaded;
    QSignalSpy results(&loaded, &AppController::resultsChanged);
    const QVariantMap answer = loaded.loadProject(file("a.tidewellproj"));
    EXPECT_TRUE(answer["ok"].toBool()) << answer["error"].toString().toStdString();
    EXPECT_TRUE(answer["hasResults"].toBool());
    EXPECT_EQ(answer["project"].toMap(), state);
    EXPECT_EQ(results.count(), 1);
    EXPECT_EQ(loaded.statusText(), "Loaded project (2 strategy nodes, 2 combo nodes)");
    EXPECT_EQ(loaded.resultsSummary(), saved.resultsSummary());
    EXPECT_EQ(loaded.nodeActions(betNode), saved.nodeActions(betNode));
    for (const int node : {0, betNode})
        EXPECT_EQ(loaded.nodeHandCombos(node), saved.nodeHandCombos(node));
    EXPECT_FALSE(loaded.nodeActionStats(0).isEmpty() || loaded.nodeHandBuckets(0).isEmpty());
    EXPECT_TRUE(loaded.nodeActionStats(betNode).isEmpty());
    EXPECT_TRUE(loaded.nodeSeatHandCombos(betNode, "OOP").isEmpty());
    const QVariantMap combo = loaded.nodeHandCombos(0)[0].toMap();
    EXPECT_EQ(loaded.nodePocketActionEvs(0, "anybody", combo["c2"].toString().toUpper(),
                                         ' ' + combo["c1"].toString()),
              combo["actionEvs"].toList());
    EXPECT_EQ(loaded.nodeLocks(0), saved.nodeLocks(0));

    // Saved again it holds the same, and its settings can be solved again, under its lock.
    ASSERT_TRUE(loaded.saveProject(file("b.tidewellproj"), state));
    AppController again;
    EXPECT_TRUE(again.loadProject(file("b.tidewellproj"))["ok"].toBool());
    EXPECT_EQ(again.nodeHandCombos(betNode), saved.nodeHandCombos(betNode));
    again.reSolveWithNodeLocks();
    ASSERT_TRUE(waitUntil([&] { return !again.running(); }));
    EXPECT_EQ(again.nodeHandStrategy(0)["actionProbs"].toMap()["TT"], (QVariantList{0.5, 0.5}));
}

TEST_F(ControllerProject, WithoutResults) {
    AppController controller;
    ASSERT_TRUE(controller.saveProject(file("empty"), {}));
    solve(controller, riverConfig(1));
    const QVariantMap answer = controller.loadProject(file("empty"));
    EXPECT_TRUE(answer["ok"].toBool());
    EXPECT_FALSE(answer["hasResults"].toBool());
    EXPECT_EQ(controller.statusText(), "Loaded project (0 strategy nodes, 0 combo nodes)");
    EXPECT_EQ(controller.treeNodeCount(), 0);
    EXPECT_TRUE(controller.nodeHandStrategy(0).isEmpty()) << "the live solve is gone";
    controller.reSolveWithNodeLocks();
    EXPECT_EQ(controller.statusText(), "No previous solve config (solve once first)");
}

TEST_F(ControllerProject, WhatIsRefusedChangesNothing) {
    writeFile(folder_.filePath("large"), "{" + QByteArray(2 << 20, ' '));
    writeFile(folder_.filePath("newer"), R"({"format": "kestrel_project", "version": 2})");
    AppController controller;
    solve(controller, riverConfig());
    const QString summary = controller.resultsSummary();
    const std::pair<QUrl, const char*> cases[] = {
        {QUrl(), "Invalid/non-local file URL"},
        {QUrl("https://example.invalid/a.tidewellproj"), "Invalid/non-local file URL"},
        {QUrl("file:"), "Empty file path"},
        {file("missing"), "Failed to open file"},
        {file("large"), "Invalid JSON"},
        {file("newer"), "Unsupported project version"}};
    for (const auto& [url, error] : cases) {
        const QVariantMap answer = controller.loadProject(url);
        EXPECT_FALSE(answer["ok"].toBool());
        EXPECT_EQ(answer["error"], error) << url.toString().toStdString();
        EXPECT_TRUE(answer["project"].toMap().isEmpty());
        EXPECT_EQ(controller.resultsSummary(), summary);
        EXPECT_FALSE(controller.nodeHandCombos(0).isEmpty());
        EXPECT_EQ(controller.statusText(), "Done");
    }
    for (const QUrl& url : {QUrl(), QUrl("https://example.invalid/a"), file("no/such/folder")})
        EXPECT_FALSE(controller.saveProject(url, {}));

    // While a solve runs no save takes results away, neither before nor after its first report.
    ASSERT_TRUE(controller.saveProject(file("solved"), {}));
    const QByteArray solved = readFile(folder_.filePath("solved"));
    controller.startSolveWithConfig(endlessConfig());
    EXPECT_FALSE(controller.saveProject(file("new"), {}));
    ASSERT_TRUE(waitUntil([&] { return controller.statusText().startsWith("Iter"); }));
    EXPECT_FALSE(controller.saveProject(file("solved"), {}));
    EXPECT_TRUE(controller.saveError().startsWith("A solve is running"));
    EXPECT_EQ(readFile(folder_.filePath("solved")), solved);
    EXPECT_TRUE(controller.saveProject(file("new"), {}));
    EXPECT_TRUE(controller.saveProject(file("new"), {}));
    EXPECT_EQ(controller.saveError(), "");
    EXPECT_EQ(controller.loadProject(file("solved"))["error"], "A solve is running");
    controller.cancelSolve();
    ASSERT_TRUE(waitUntil([&] { return !controller.running(); }));
}

}  // namespace
}  // namespace tidewell
