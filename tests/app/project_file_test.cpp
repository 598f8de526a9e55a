#include "app/project_file.h"

#include <QDir>
#include <QJSEngine>
#include <QJsonArray>
#include <QUrl>

#include "app/node_answers.h"
#include "tests/app/file_size_limit.h"
#include "tests/app/project_folder.h"
#include "tests/app/solved_spot.h"

namespace tidewell {
namespace {

class ProjectFile : public ProjectFolder {};

ProjectData solvedProject(SolvedSpot& spot) {
    const ResultTree tree = spot.tree();
    NodeAnswers answers(spot.session(), tree);
    for (int node = 0; node < 10; ++node) {
        answers.handStrategy(node);
        answers.handCombos(node);
        answers.handBuckets(node);
        answers.actionStats(node);
        answers.seatHandCombos(node, node % 2 == 0 ? "OOP" : "IP");
    }
    ProjectData data;
    data.project = {{"board", "Td9c6h6c2s"}, {"deep", QVariantList{1.5, QVariantMap{{"a", "ä"}}}}};
    data.hasResults = true;
    data.results = {.summary = "Board Td9c6h6c2s | expl≈0.1",
                    .startingPot = 10.5,
                    .iterations = 1000000,
                    .exploitability = 0.1234567890123,
                    .evOop = -0.25,
                    .evIp = 0.25,
                    .rootActions = {QVariantMap{{"name", "Check"}, {"frequency", 1.0}}},
                    .tree = tree};
    data.caches = answers.caches();
    data.nodeLocks = {
        QVariantMap{{"nodeIndex", 0}, {"hand", "TT"}, {"actionIndex", 1}, {"actionProb", 0.5}},
        QVariantMap{{"nodeIndex", 3},
                    {"hand", "87s"},
                    {"actionIndex", -1},
                    {"actionProb", 1.0},
                    {"actionProbs", QVariantList{0.25, 0.75}}}};
    data.lastUiCfg = riverConfig();
    return data;
}

TEST_F(ProjectFile, HoldsASolveAndGivesItBack) {
    SolvedSpot spot;
    const ProjectData data = solvedProject(spot);
    std::atomic<double> progress = 0;
    ASSERT_EQ(writeProject(path(), data, &progress), "");
    EXPECT_EQ(progress, 1.0);

    const QJsonObject caches = object()["nodeCaches"].toObject();
    EXPECT_EQ(caches.keys(),
              (QStringList{"actionStatsByNode", "handBucketsByNode", "handCombosByNode",
                           "handStrategyByNode", "seatHandCombosByNode"}));
    EXPECT_EQ(caches["handBucketsByNode"][0]["data"][0].toObject().keys(),
              (QStringList{"actionProbs", "combos", "name"}));

    progress = 0;
    const ReadProject back = readProject(path(), &progress);
    EXPECT_EQ(progress, 1.0);
    EXPECT_EQ(back.error, "");
    EXPECT_EQ(json(flat(back.data)), json(flat(data)));
}

TEST_F(ProjectFile, HoldsWhatThePagesHandOver) {
    QJSEngine pages;
    AppController controller;
    QJSEngine::setObjectOwnership(&controller, QJSEngine::CppOwnership);
    pages.globalObject().setProperty("controller", pages.newQObject(&controller));
    pages.globalObject().setProperty("url", QUrl::fromLocalFile(path()).toString());
    const QJSValue saved = pages.evaluate(
        R"(controller.saveProject(url, {text: "a\ud800", list: [1, , {b: [2.5, "c"]}], none: null,
               missing: undefined, date: new Date(2024, 1, 29), flag: true, nan: NaN, call: () => 1}))");
    EXPECT_TRUE(saved.toBool()) << saved.toString().toStdString();
    const QJsonObject expected = {
        {"text", "a?"},
        {"list", QJsonArray{1, QJsonValue(), QJsonObject{{"b", QJsonArray{2.5, "c"}}}}},
        {"none", QJsonValue()},
        {"missing", QJsonValue()},
        {"date", "2024-02-29T00:00:00.000"},
        {"flag", true},
        {"nan", QJsonValue()},
        {"call", QJsonValue()}};
    EXPECT_EQ(object()["project"].toObject(), expected);
    const QVariantMap loaded = controller.loadProject(QUrl::fromLocalFile(path()));
    EXPECT_EQ(json(loaded["project"]), expected);
}

TEST_F(ProjectFile, AFailedSaveLeavesTheFormerFile) {
    SolvedSpot spot;
    ProjectData data = solvedProject(spot);
    ASSERT_EQ(writeProject(path(), data, nullptr), "");
    const qint64 size = bytes().size();
    const QByteArray former = R"({"former": true})";
    write(former);
    const auto expectFailure = [&](const QString& error) {
        EXPECT_EQ(writeProject(path(), data, nullptr), error);
        EXPECT_EQ(bytes(), former);
        EXPECT_EQ(
            QDir(folder_.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
            QStringList("a.tidewellproj"));
    };
    const QString commit = "commit failed: " + path() + " File too large";
    for (const qint64 full : {qint64{0}, qint64{1}, size / 2, size - 20000, size - 100, size - 1}) {
        const FileSizeLimit limit(static_cast<rlim_t>(full));
        expectFailure(commit);
    }
    QVariant deep;
    for (int i = 0; i < 2000; ++i) {
        deep = QVariantList{deep};
    }
    data.project = {{"deep", deep}};
    expectFailure("failed to convert to JSON");

    data = {};
    {
        const FileSizeLimit limit(10);
        expectFailure(commit);
    }
    for (const QString& wrong : {path("none/a"), folder_.path()}) {
        EXPECT_TRUE(writeProject(wrong, data, nullptr).startsWith("failed to open: " + wrong));
    }
}

}  // namespace
}  // namespace tidewell
