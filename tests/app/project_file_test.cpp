#include "app/files/project_file.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>
#include <cmath>
#include <nlohmann/json.hpp>
#include <string>

#include "app/files/json_value.h"
#include "app/results/node_answers.h"
#include "tests/app/file_size_limit.h"
#include "tests/app/files.h"
#include "tests/app/solved_spot.h"

namespace tidewell {
namespace {

using nlohmann::json;

/// A folder with one project file.
class ProjectFile : public testing::Test {
  protected:
    QString path(const QString& name = "a.tidewellproj") const { return folder_.filePath(name); }

    ReadProject read(const QByteArray& text) const {
        writeFile(path(), text);
        return readProject(path(), nullptr);
    }
    ReadProject read(const json& text) const {
        return read(QByteArray::fromStdString(text.dump()));
    }

    /// All that a project holds.
    json held(const ProjectData& data) const {
        EXPECT_EQ(writeProject(path("held"), data, nullptr), "");
        return json::parse(readFile(path("held")).toStdString());
    }

    QTemporaryDir folder_;
};

ProjectData solvedProject(SolvedSpot& spot) {
    const ResultTree tree = spot.tree();
    NodeAnswers answers(spot.session());
    for (int node = 0; node < 10; ++node) {
        answers.handStrategyReach169(node, "");
        answers.handBuckets(node);
        answers.actionStats(node);
        if (auto here = action_stats_here(*spot.session().finished(), node)) {
            answers.keepHere(node, *std::move(here));
        }
        if (node < 5) {
            answers.handCombos(node);
            answers.seatHandCombos(node, node % 2 == 0 ? "OOP" : "IP");
        }
    }
    ProjectData data;
    data.project = {{"board", "Td9c6h6c2s"}, {"deep", QVariantList{1.5, QVariantMap{{"a", "ä"}}}}};
    data.hasResults = true;
    data.results.summary = "Board Td9c6h6c2s | expl≈0.1";
    data.results.tree = tree;
    data.records = answers.records();
    data.lastUiCfg = riverConfig();
    return data;
}

// What the file holds is answered as the solve has answered it.
TEST_F(ProjectFile, HoldsASolveAndAnswersAsItDid) {
    SolvedSpot spot;
    const ProjectData data = solvedProject(spot);
    std::atomic<double> progress = 0;
    ASSERT_EQ(writeProject(path(), data, &progress), "");
    EXPECT_EQ(progress.exchange(0), 1.0);
    const json text = json::parse(readFile(path()).toStdString());
    const json bucket = text["nodeCaches"]["handBucketsByNode"][0]["data"][0];
    EXPECT_EQ(bucket.size(), 3U);
    EXPECT_TRUE(bucket.contains("actionProbs") && bucket.contains("combos"));

    const ReadProject back = readProject(path(), &progress);
    EXPECT_EQ(progress, 1.0);
    EXPECT_EQ(back.error, "");
    EXPECT_EQ(held(back.data), text);
    EXPECT_EQ(back.data.project, data.project);

    const kestrel_app::SolveSession none;
    NodeAnswers loaded(none);
    loaded.restore(back.data.records);
    NodeAnswers live(spot.session());
    bool unknown = false;
    for (int node = 0; node < 10; ++node) {
        // Beside each other as JSON, where what is not known is null.
        const auto same = [&](const QVariant& a, const QVariant& b) {
            EXPECT_EQ(jsonOf(a).dump(), jsonOf(b).dump()) << node;
        };
        same(loaded.handStrategy(node), live.handStrategy(node));
        same(loaded.handStrategyReach169(node, ""), live.handStrategyReach169(node, ""));
        same(loaded.handBuckets(node), live.handBuckets(node));
        same(loaded.actionStats(node), live.actionStats(node));
        if (auto here = action_stats_here(*spot.session().finished(), node)) {
            EXPECT_EQ(loaded.opponentComes(node), here->opponent_comes);
            live.keepHere(node, *std::move(here));
        }
        same(loaded.actionStatsHere(node), live.actionStatsHere(node));
        for (const QVariant& action : loaded.actionStats(node)) {
            unknown = unknown || std::isnan(action.toMap()["equity"].toDouble());
        }
        if (node < 5) {
            const QString seat = node % 2 == 0 ? "OOP" : "IP";
            same(loaded.handCombos(node), live.handCombos(node));
            same(loaded.handStrategyReach169(node, " Set"), live.handStrategyReach169(node, "set"));
            same(loaded.seatHandCombos(node, seat), live.seatHandCombos(node, seat));
        }
    }
    EXPECT_TRUE(unknown) << "an equity that is null in the file";
    EXPECT_TRUE(loaded.handCombos(5).isEmpty());
}

TEST_F(ProjectFile, AFailedSaveLeavesTheFormerFile) {
    SolvedSpot spot;
    ProjectData data = solvedProject(spot);
    ASSERT_EQ(writeProject(path(), data, nullptr), "");
    const qint64 size = readFile(path()).size();
    const QByteArray former = R"({"former": true})";
    writeFile(path(), former);
    const auto expectFailure = [&](const QString& error) {
        EXPECT_EQ(writeProject(path(), data, nullptr), error);
        EXPECT_EQ(readFile(path()), former);
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

    for (const QString& wrong : {path("none/a"), folder_.path()}) {
        EXPECT_TRUE(writeProject(wrong, data, nullptr).startsWith("failed to open: " + wrong));
    }
}

/// A project with one of everything; a tree of a bet and its fold.
json smallFile() {
    return json::parse(R"({"format": "kestrel_project", "version": 1,
        "project": {"p": 1}, "hasResults": true, "lastUiCfg": {"c": 2},
        "results": {"resultsSummary": "s", "resultStartingPot": 1.5, "resultIterations": 2,
            "resultExploitability": 3.5, "resultEvOop": 4.5, "resultEvIp": 5.5,
            "rootActions": [{"name": "r"}],
            "treeNodeMeta": [
                {"nodeType": "decision", "player": "IP", "pot": 10.25, "investedOop": 1,
                 "investedIp": 3.01, "effectiveStack": 40.5, "hasChildren": true},
                {"nodeType": "decision", "player": "OOP", "effectiveStack": 40.5},
                {"nodeType": "terminal", "chanceDeal": "", "effectiveStack": 40.5}],
            "treeNodeActions": [
                [{"name": "Bet 50%", "actionType": "bet 50%", "frequency": 0.5, "childIndex": 1}],
                [{"name": "Fold", "actionType": "fold", "frequency": 1, "childIndex": 2}], []]},
        "nodeCaches": {
            "handStrategyByNode": [{"nodeIndex": 3, "data": {"weights": {"AA": 1},
                "actionProbs": {"AA": [1]}, "actionTypeList": ["check"]}}],
            "handStrategyReachByNode": [{"nodeIndex": 3, "data": {"weights": {"AA": 0.5},
                "actionProbs": {"AA": [0.5]}}}],
            "actionStatsByNode": [{"nodeIndex": 4, "data": [{"name": "Fold", "equity": 0.5}]}],
            "actionStatsHereByNode": [{"nodeIndex": 4, "data": [{"name": "Fold", "combos": 2,
                "reached": true}]}],
            "handCombosByNode": [{"nodeIndex": 5, "data": [{"c1": "2c", "ev": 1.25}]}],
            "handBucketsByNode": [{"nodeIndex": 6, "data": [{"name": "air", "combos": 3}]}],
            "seatHandCombosByNode": [{"nodeIndex": 7, "seat": " ip ", "data": [{"c1": "2c"}]}]},
        "nodeLocks": [{"nodeIndex": 8, "hand": "AKs", "actionIndex": 1, "actionProb": 0.5,
            "actionProbs": [1, 2]}]})");
}

TEST_F(ProjectFile, ReadsWrongKindsAsMissing) {
    const ProjectData data = read(smallFile()).data;
    const json whole = held(data);
    EXPECT_EQ(held(read(whole).data), whole);
    const ResultTree& tree = data.results.tree;
    json node = jsonOf(tree.meta(0));
    node.merge_patch(smallFile()["/results/treeNodeMeta/0"_json_pointer]);
    EXPECT_EQ(jsonOf(tree.meta(0)), node);
    EXPECT_EQ(jsonOf(tree.actions(1)), smallFile()["/results/treeNodeActions/1"_json_pointer]);
    for (const int outside : {-1, 3}) {
        EXPECT_TRUE(tree.meta(outside).isEmpty() && tree.actions(outside).isEmpty());
        EXPECT_EQ(tree.actionCount(outside), 0);
    }
    const QString results =
        "results/resultsSummary results/resultStartingPot "
        "results/resultIterations results/resultEvIp results/rootActions "
        "results/treeNodeMeta/0/pot results/treeNodeMeta/0/player "
        "results/treeNodeActions/0/0/frequency ";
    const QString others =
        "project hasResults lastUiCfg nodeLocks nodeLocks/0/nodeIndex "
        "nodeLocks/0/hand nodeLocks/0/actionIndex nodeLocks/0/actionProb "
        "nodeCaches nodeCaches/seatHandCombosByNode/0/seat "
        "nodeCaches/handStrategyByNode/0/data/weights/AA "
        "nodeCaches/actionStatsByNode/0/data/0/equity "
        "nodeCaches/handCombosByNode/0/data/0/ev";
    QStringList places = (results + others).split(' ');
    for (const auto& [cache, list] : whole["nodeCaches"].items()) {
        for (const char* const part : {"", "/0/nodeIndex", "/0/data"}) {
            places.append("nodeCaches/" + QString::fromStdString(cache) + part);
        }
    }
    const json values[] = {nullptr, true, 2.5, 1e10, "x", json::array(), json::object()};
    for (const QString& name : places) {
        const json::json_pointer place('/' + name.toStdString());
        json file = smallFile();
        const json good = file[place];
        file[place.parent_pointer()].erase(place.back());
        const json missing = held(read(file).data);
        EXPECT_NE(missing, whole) << place;
        const bool mustBeWhole = name.endsWith("Index") || name.endsWith("Iterations");
        for (const json& value : values) {
            if (value.is_number() == good.is_number() && !mustBeWhole &&
                (good.is_number() || value.type() == good.type())) {
                continue;
            }
            file[place] = value;
            const ReadProject back = read(file);
            EXPECT_EQ(back.error, "") << place << value;
            EXPECT_EQ(held(back.data), missing) << place << value;
        }
    }
}

TEST_F(ProjectFile, RefusesATreeThatIsDamaged) {
    json action = smallFile()["/results/treeNodeActions/0/0"_json_pointer];
    const json node = smallFile()["/results/treeNodeMeta/2"_json_pointer];
    json fan = smallFile();  // whole, but for its size
    for (int child = 3; child < 4000; ++child) {
        action["childIndex"] = child;
        fan["results"]["treeNodeActions"][0].push_back(action);
        fan["results"]["treeNodeActions"].push_back(json::array());
        fan["results"]["treeNodeMeta"].push_back(node);
    }
    EXPECT_EQ(read(fan).damage, "node 0: more actions than any node has");

    json cases = json::parse(R"([
        ["Actions/0/0/childIndex", 0, 2, 3, -1, 1.5, 1e10, "x"],
        ["Actions/1/0/childIndex", 0, 1, 4294967298], ["Actions", [], 5], ["Actions/1", []],
        ["Actions/3", []], ["Actions/0/0/frequency", 1e300, -0.5], ["Meta", []], ["Meta/3", {}],
        ["Meta/1", null], ["Meta/1/nodeType", "fork"], ["Meta/1/player", "BB"],
        ["Meta/0/pot", 1e300], ["Meta/0/investedIp", -21474836.49],
        ["Meta/2/effectiveStack", 41]])");
    cases.push_back({"Actions/0", json(900, action)});
    for (const json& row : cases) {
        for (std::size_t i = 1; i < row.size(); ++i) {
            json file = smallFile();
            file[json::json_pointer("/results/treeNode" + row[0].get<std::string>())] = row[i];
            const ReadProject refused = read(file);
            EXPECT_EQ(refused.error, "The project file is damaged") << row[0] << row[i];
            EXPECT_NE(refused.damage, "") << row[0] << row[i];
            file["version"] = 2;
            EXPECT_EQ(read(file).error, "Unsupported project version");
        }
    }
}

TEST_F(ProjectFile, PassesOverOddEntries) {
    const ReadProject back = read(QByteArray(R"({"format": "kestrel_project", "version": 1.0,
        "hasResults": 1, "results": {"resultsSummary": "s", "treeNodeMeta": [{}]},
        "nodeCaches": {"handCombosByNode": [{"nodeIndex": -1, "data": [{}]}, 5,
            {"nodeIndex": 3000000000, "data": [{}]}, {"nodeIndex": 2, "data": [{}]},
            {"nodeIndex": 2.0, "data": [{}, {}]}],
            "seatHandCombosByNode": [{"nodeIndex": 1, "seat": "Oop\t", "data": [{}]},
                {"nodeIndex": 1, "seat": "BB", "data": [{}, {}]}, {"nodeIndex": 1, "seat": "ip"}]},
        "nodeLocks": [{"nodeIndex": 1, "hand": ""}, {"nodeIndex": -1, "hand": "AA"}, [],
            {"hand": "AA"}, {"nodeIndex": 1}, {"nodeIndex": 1, "hand": "AA", "other": 1}]})"));
    EXPECT_EQ(back.error, "");
    EXPECT_FALSE(back.data.hasResults);
    EXPECT_EQ(back.data.results.summary, "");
    auto records = back.data.records;  // which count without results too
    ASSERT_TRUE(records[2].combos && records[1].seat_combos[0] && records[1].seat_combos[1]);
    EXPECT_EQ(records[2].combos->size(), 2U);
    EXPECT_EQ(records[1].seat_combos[0]->size(), 1U);
    EXPECT_TRUE(records[1].seat_combos[1]->empty());
    EXPECT_EQ(back.data.nodeLocks,
              (QVariantList{QVariantMap{
                  {"nodeIndex", 1}, {"hand", "AA"}, {"actionIndex", -1}, {"actionProb", 1.0}}}));
}

TEST_F(ProjectFile, RefusesByName) {
    const QByteArray good = R"({"format": "kestrel_project", "version": 1})";
    const char* const invalid = "Invalid JSON";
    const std::pair<const char*, QByteArrayList> cases[] = {
        {"", {good, "\xEF\xBB\xBF" + good}},
        {invalid,
         {"", "\"kestrel_project\"", good + good, "\xFF\xFE" + good, "{\"version\": 2, \"a\": [}",
          QByteArray(good).replace("1}", "1, \"project\": {\"a\": \"\xC3\"}}")}},
        {"Unrecognized project format",
         {'[' + good + ']', R"({"version": 2})", QByteArray(good).replace('k', 'K')}},
        {"Unsupported project version",
         {R"({"format": "kestrel_project"})", QByteArray(good).replace('1', "1.5"),
          QByteArray(good).replace('1', "\"1\""), QByteArray(good).replace('1', "4294967297")}}};
    for (const auto& [error, texts] : cases) {
        for (const QByteArray& text : texts) {
            EXPECT_EQ(read(text).error, error) << text.left(80).toStdString();
        }
    }
    const QString cannot = "Failed to open file";
    EXPECT_EQ(readProject(path("missing"), nullptr).error, cannot);
    EXPECT_EQ(readProject(path("."), nullptr).error, "This is a folder, not a file");
    EXPECT_EQ(readProject("", nullptr).error, cannot);
    EXPECT_EQ(readProject("/proc/self/mem", nullptr).error, invalid) << "opens, but cannot be read";
    // A truncated file is taken only whole.
    const QByteArray text = QByteArray::fromStdString(smallFile().dump());
    for (qsizetype length = text.size() % 7; length < text.size(); length += 7) {
        ASSERT_EQ(read(text.left(length)).error, invalid) << length;
    }
}

}  // namespace
}  // namespace tidewell
