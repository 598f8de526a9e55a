#include "app/files/project_file.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QTemporaryDir>

#include "app/results/node_answers.h"
#include "tests/app/file_size_limit.h"
#include "tests/app/files.h"
#include "tests/app/solved_spot.h"

namespace tidewell {
namespace {

/// A folder with one project file, written and read with the library's own JSON.
class ProjectFile : public testing::Test {
  protected:
    QString path(const QString& name = "a.tidewellproj") const { return folder_.filePath(name); }

    void write(const QByteArray& bytes) const { writeFile(path(), bytes); }
    QByteArray bytes() const { return readFile(path()); }

    QJsonObject object() const {
        QJsonParseError error;
        const QJsonDocument document = QJsonDocument::fromJson(bytes(), &error);
        EXPECT_EQ(error.error, QJsonParseError::NoError) << error.errorString().toStdString();
        return document.object();
    }

    ReadProject read(const QByteArray& text) const {
        write(text);
        return readProject(path(), nullptr);
    }
    ReadProject read(const QJsonObject& object) const {
        return read(QJsonDocument(object).toJson());
    }

    QTemporaryDir folder_;
};

template <class Data>
QJsonValue json(const Data& data) {
    return QJsonValue::fromVariant(QVariant(data));
}

/// A cache as a list of nodes, each with what it holds.
template <class Data>
QVariantList pairs(const QHash<int, Data>& cache) {
    QMap<int, QVariant> sorted;
    for (auto entry = cache.begin(); entry != cache.end(); ++entry) {
        sorted.insert(entry.key(), entry.value());
    }
    QVariantList list;
    for (auto entry = sorted.begin(); entry != sorted.end(); ++entry) {
        list += {entry.key(), entry.value()};
    }
    return list;
}

/// All that a project holds, flat.
QVariantMap flat(const ProjectData& data) {
    QVariantList metas;
    for (int node = 0; node < data.results.tree.nodeCount(); ++node) {
        metas.append(data.results.tree.meta(node));
    }
    QVariantList actions;
    for (int node = 0; node < data.results.tree.actionListCount(); ++node) {
        actions.append(QVariant(data.results.tree.actions(node)));
    }
    return {{"project", data.project},
            {"hasResults", data.hasResults},
            {"lastUiCfg", data.lastUiCfg},
            {"summary", data.results.summary},
            {"pot", data.results.startingPot},
            {"iterations", data.results.iterations},
            {"exploitability", data.results.exploitability},
            {"evOop", data.results.evOop},
            {"evIp", data.results.evIp},
            {"rootActions", data.results.rootActions},
            {"metas", metas},
            {"actions", actions},
            {"strategy", pairs(data.caches.handStrategy)},
            {"stats", pairs(data.caches.actionStats)},
            {"combos", pairs(data.caches.handCombos)},
            {"buckets", pairs(data.caches.handBuckets)},
            {"oop", pairs(data.caches.seatHandCombos[0])},
            {"ip", pairs(data.caches.seatHandCombos[1])},
            {"locks", data.nodeLocks}};
}

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

/// A project with one of everything.
QJsonObject smallFile() {
    return QJsonDocument::fromJson(R"({"format": "kestrel_project", "version": 1,
        "project": {"p": 1}, "hasResults": true, "lastUiCfg": {"c": 2},
        "results": {"resultsSummary": "s", "resultStartingPot": 1.5, "resultIterations": 2,
            "resultExploitability": 3.5, "resultEvOop": 4.5, "resultEvIp": 5.5,
            "rootActions": [{"name": "r"}], "treeNodeMeta": [{"m": 1}, {"m": 2}],
            "treeNodeActions": [[{"a": 1}], [{"a": 2}], []]},
        "nodeCaches": {"handStrategyByNode": [{"nodeIndex": 3, "data": {"h": 1}}],
            "actionStatsByNode": [{"nodeIndex": 4, "data": [1]}],
            "handCombosByNode": [{"nodeIndex": 5, "data": [2]}],
            "handBucketsByNode": [{"nodeIndex": 6, "data": [3]}],
            "seatHandCombosByNode": [{"nodeIndex": 7, "seat": " ip ", "data": [4]}]},
        "nodeLocks": [{"nodeIndex": 8, "hand": "AKs", "actionIndex": 1, "actionProb": 0.5,
            "actionProbs": [1, 2]}]})")
        .object();
}

/// Sets a member deep inside an object; in a list the first element. Undefined takes it away.
QJsonValue replaced(const QJsonValue& outer, QStringList path, const QJsonValue& value) {
    if (path.isEmpty()) {
        return value;
    }
    if (outer.isArray()) {
        QJsonArray list = outer.toArray();
        list[0] = replaced(list[0], path, value);
        return list;
    }
    QJsonObject object = outer.toObject();
    const QString key = path.takeFirst();
    object[key] = replaced(object[key], path, value);
    return object;
}

TEST_F(ProjectFile, ReadsWrongKindsAsMissing) {
    QJsonObject file = smallFile();
    const QVariantMap whole = flat(read(file).data);
    for (const char* const name : {"results", "nodeCaches", "nodeLocks", "lastUiCfg", "project"}) {
        file.remove(name);
    }
    QVariantMap nothing = flat({});
    nothing["hasResults"] = true;
    EXPECT_EQ(json(flat(read(file).data)), json(nothing));
    file["results"] = file["nodeCaches"] = QJsonObject();
    EXPECT_EQ(json(flat(read(file).data)), json(nothing));

    const QStringList places =
        QString(
            "project hasResults lastUiCfg results results/resultsSummary results/resultStartingPot "
            "results/resultIterations results/resultExploitability results/resultEvOop "
            "results/resultEvIp results/rootActions results/treeNodeMeta results/treeNodeActions "
            "nodeCaches nodeCaches/handStrategyByNode nodeCaches/handStrategyByNode/nodeIndex "
            "nodeCaches/handStrategyByNode/data nodeCaches/actionStatsByNode "
            "nodeCaches/actionStatsByNode/nodeIndex nodeCaches/actionStatsByNode/data "
            "nodeCaches/handCombosByNode nodeCaches/handCombosByNode/data "
            "nodeCaches/handBucketsByNode nodeCaches/handBucketsByNode/data "
            "nodeCaches/seatHandCombosByNode nodeCaches/seatHandCombosByNode/seat "
            "nodeCaches/seatHandCombosByNode/data nodeLocks nodeLocks/nodeIndex nodeLocks/hand "
            "nodeLocks/actionIndex nodeLocks/actionProb nodeLocks/actionProbs")
            .split(' ');
    const QJsonValue values[] = {QJsonValue(), true, 2.5, 1e10, "x", QJsonArray(), QJsonObject()};
    for (const QString& name : places) {
        const QStringList place = name.split('/');
        QJsonValue good = smallFile();
        for (const QString& key : place) {
            good = (good.isArray() ? good[0] : good)[key];
        }
        const QJsonValue none(QJsonValue::Undefined);
        QVariantMap missing = flat(read(replaced(smallFile(), place, none).toObject()).data);
        EXPECT_NE(json(missing), json(whole)) << name.toStdString();
        if (name == "nodeLocks/actionProbs") {  // which a lock of one action has not
            QVariantMap lock = missing["locks"].toList()[0].toMap();
            lock["actionProbs"] = QVariantList();
            missing["locks"] = QVariantList{lock};
        }
        const bool mustBeWhole = name.endsWith("Index") || name.endsWith("Iterations");
        for (const QJsonValue& value : values) {
            if (value.type() == good.type() && !(value.isDouble() && mustBeWhole)) {
                continue;
            }
            const ReadProject back = read(replaced(smallFile(), place, value).toObject());
            EXPECT_EQ(back.error, "");
            EXPECT_EQ(json(flat(back.data)), json(missing))
                << name.toStdString() << " of type " << value.type();
        }
    }
}

TEST_F(ProjectFile, KeepsOddTreesAndPassesOverOddEntries) {
    const QByteArray metas = R"([{"pot": 10.005, "more": [1, {"a": null}]}, 5, "x", [], {},
        {"pot": 1e300, "effectiveStack": 12345678901234567890}])";
    const QByteArray lists = R"([[{"name": "a", "frequency": 0.1}, 7, null], {"a": 1}, 3, []])";
    ReadProject back = read(R"({"format": "kestrel_project", "version": 1.0, "hasResults": true,
        "results": {"treeNodeMeta": )" +
                            metas + R"(, "treeNodeActions": )" + lists + R"(}})");
    EXPECT_EQ(back.error, "");
    QJsonArray expectedMetas = QJsonDocument::fromJson(metas).array();
    expectedMetas[1] = expectedMetas[2] = expectedMetas[3] = QJsonObject();
    QJsonArray expectedLists = QJsonDocument::fromJson(lists).array();
    expectedLists[1] = expectedLists[2] = QJsonArray();
    EXPECT_EQ(json(flat(back.data)["metas"]), expectedMetas);
    EXPECT_EQ(json(flat(back.data)["actions"]), expectedLists);
    // Saved, it is the same again.
    ASSERT_EQ(writeProject(path(), back.data, nullptr), "");
    const QJsonValue results = object()["results"];
    EXPECT_EQ(results["treeNodeMeta"], expectedMetas);
    EXPECT_EQ(results["treeNodeActions"], expectedLists);

    back = read(R"({"format": "kestrel_project", "version": 1, "hasResults": 1,
        "results": {"resultsSummary": "s", "treeNodeMeta": [{}]},
        "nodeCaches": {"handCombosByNode": [{"nodeIndex": -1, "data": [1]}, 5,
            {"nodeIndex": 3000000000, "data": [1]}, {"nodeIndex": 2, "data": [1]},
            {"nodeIndex": 2.0, "data": [2]}],
            "seatHandCombosByNode": [{"nodeIndex": 1, "seat": "Oop\t", "data": [3]},
                {"nodeIndex": 1, "seat": "BB", "data": [4]}, {"nodeIndex": 1, "seat": "ip"}]},
        "nodeLocks": [{"nodeIndex": 1, "hand": ""}, {"nodeIndex": -1, "hand": "AA"}, [],
            {"hand": "AA"}, {"nodeIndex": 1}, {"nodeIndex": 1, "hand": "AA", "other": 1}]})");
    QVariantMap expected = flat({});
    expected["combos"] = QVariantList{2, QVariantList{2}};
    expected["oop"] = QVariantList{1, QVariantList{3}};
    expected["ip"] = QVariantList{1, QVariantList()};
    expected["locks"] = QVariantList{
        QVariantMap{{"nodeIndex", 1}, {"hand", "AA"}, {"actionIndex", -1}, {"actionProb", 1.0}}};
    EXPECT_EQ(json(flat(back.data)), json(expected)) << "with no results the caches count";
}

TEST_F(ProjectFile, RefusesByName) {
    const QByteArray good = R"({"format": "kestrel_project", "version": 1})";
    const char* const json = "Invalid JSON";
    const char* const format = "Unrecognized project format";
    const char* const version = "Unsupported project version";
    const std::pair<QByteArray, const char*> cases[] = {
        {good, ""},
        {"\xEF\xBB\xBF" + good, ""},
        {"", json},
        {"\"kestrel_project\"", json},
        {good + good, json},
        {good + QByteArray(1, '\0'), json},
        {"\xFF\xFE" + good, json},
        {QByteArray(good).replace("1}", "1, \"project\": {\"a\": \"\xC3\"}}"), json},
        {QByteArray(good).replace("1}", "1, \"project\": {\"a\": 1e999}}"), json},
        {QByteArray(good).replace("1}", "1, \"a\": " + QByteArray(100000, '[') + "}"), json},
        {"{\"version\": 2, \"results\": [}", json},
        {"[" + good + "]", format},
        {R"({"version": 2})", format},
        {R"({"format": "Kestrel_project", "version": 1})", format},
        {R"({"format": "kestrel_project"})", version},
        {R"({"format": "kestrel_project", "version": 1.5})", version},
        {R"({"format": "kestrel_project", "version": "1"})", version},
        {R"({"format": "kestrel_project", "version": 4294967297})", version}};
    for (const auto& [text, error] : cases) {
        EXPECT_EQ(read(text).error, error) << text.left(80).toStdString();
    }
    const QString cannot = "Failed to open file";
    EXPECT_EQ(readProject(path("missing"), nullptr).error, cannot);
    EXPECT_EQ(readProject(path("."), nullptr).error, "This is a folder, not a file");
    EXPECT_EQ(readProject("", nullptr).error, cannot);
    EXPECT_EQ(readProject("/proc/self/mem", nullptr).error, json) << "opens, but cannot be read";
    write(good);
    QFile::setPermissions(path(), {});
    EXPECT_EQ(readProject(path(), nullptr).error,
              QFile(path()).open(QIODevice::ReadOnly) ? "" : cannot)
        << "the superuser may read everything";
}

TEST_F(ProjectFile, TakesATruncatedFileOnlyWhole) {
    const QByteArray text = QJsonDocument(smallFile()).toJson(QJsonDocument::Compact);
    for (qsizetype length = 0; length <= text.size(); ++length) {
        const char* const error = length < text.size() ? "Invalid JSON" : "";
        ASSERT_EQ(read(text.left(length)).error, error) << length;
    }
}

}  // namespace
}  // namespace tidewell
