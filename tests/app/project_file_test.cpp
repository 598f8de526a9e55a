#include "app/project_file.h"

#include <QDir>
#include <QJSEngine>
#include <QJsonArray>
#include <QUrl>
#include <functional>

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
    data.results.summary = "Board Td9c6h6c2s | expl≈0.1";
    data.results.startingPot = 10.5;
    data.results.iterations = 1000000;
    data.results.exploitability = 0.1234567890123;
    data.results.evOop = -0.25;
    data.results.evIp = 0.25;
    data.results.rootActions = {
        QVariantMap{{"name", "Check"}, {"actionType", "check"}, {"frequency", 1.0}}};
    data.results.tree = tree;
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

    const QVariantMap held = flat(data);
    const QJsonObject expectedResults = json(QVariantMap{{"resultsSummary", data.results.summary},
                                                         {"resultStartingPot", 10.5},
                                                         {"resultIterations", 1000000},
                                                         {"resultExploitability", 0.1234567890123},
                                                         {"resultEvOop", -0.25},
                                                         {"resultEvIp", 0.25},
                                                         {"rootActions", held["rootActions"]},
                                                         {"treeNodeMeta", held["metas"]},
                                                         {"treeNodeActions", held["actions"]}})
                                            .toObject();
    QJsonObject file = object();
    const QJsonObject caches = file.take("nodeCaches").toObject();
    EXPECT_EQ(file.take("results"), expectedResults);
    const QJsonObject expected = {{"format", "kestrel_project"},
                                  {"version", 1},
                                  {"hasResults", true},
                                  {"project", json(data.project)},
                                  {"nodeLocks", json(data.nodeLocks)},
                                  {"lastUiCfg", json(data.lastUiCfg)}};
    EXPECT_EQ(file, expected);

    EXPECT_EQ(caches.keys(),
              (QStringList{"actionStatsByNode", "handBucketsByNode", "handCombosByNode",
                           "handStrategyByNode", "seatHandCombosByNode"}));
    for (const QString& name : caches.keys()) {
        const bool bySeat = name == "seatHandCombosByNode";
        const QStringList keys =
            bySeat ? QStringList{"data", "nodeIndex", "seat"} : QStringList{"data", "nodeIndex"};
        for (const QJsonValue element : caches[name].toArray()) {
            EXPECT_EQ(element.toObject().keys(), keys);
            EXPECT_EQ(element["data"].isObject(), name == "handStrategyByNode");
            if (bySeat) {
                EXPECT_EQ(element["seat"], element["nodeIndex"].toInt() % 2 == 0 ? "OOP" : "IP");
            }
        }
    }
    EXPECT_EQ(caches["handBucketsByNode"][0]["data"][0].toObject().keys(),
              (QStringList{"actionProbs", "combos", "name"}));

    progress = 0;
    const ReadProject back = readProject(path(), &progress);
    EXPECT_EQ(progress, 1.0);
    EXPECT_EQ(back.error, "");
    EXPECT_EQ(json(flat(back.data)), json(held));
}

TEST_F(ProjectFile, HoldsLittleWithoutResults) {
    ASSERT_EQ(writeProject(path(), {}, nullptr), "");
    const QJsonObject expected = {{"format", "kestrel_project"}, {"version", 1},
                                  {"project", QJsonObject()},    {"hasResults", false},
                                  {"nodeLocks", QJsonArray()},   {"lastUiCfg", QJsonObject()}};
    EXPECT_EQ(object(), expected);
    const ReadProject back = readProject(path(), nullptr);
    EXPECT_EQ(back.error, "");
    EXPECT_FALSE(back.data.hasResults);
    EXPECT_FALSE(back.data.results.any());
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

/// Something that acts when it is asked for its text.
struct Trap {
    std::function<void()> act;
};

TEST_F(ProjectFile, AFailedCommitLeavesTheFormerFile) {
    QMetaType::registerConverter<Trap, QString>([](const Trap& trap) {
        trap.act();
        return QString("x");
    });
    ASSERT_TRUE(QDir(folder_.path()).mkdir("folder"));
    write("former");
    ASSERT_TRUE(QFile::rename(path(), path("folder/a")));
    ProjectData data;
    data.project = {{"a", QVariant::fromValue(Trap{[&] {
                         ASSERT_TRUE(QFile::rename(path("folder"), path("moved")));
                     }})}};
    EXPECT_TRUE(writeProject(path("folder/a"), data, nullptr)
                    .startsWith("commit failed: " + path("folder/a") + " No such"));
    ASSERT_TRUE(QFile::rename(path("moved/a"), path()));
    EXPECT_EQ(bytes(), "former");
}

}  // namespace
}  // namespace tidewell
