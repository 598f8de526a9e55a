#include "app/files/project_file.h"

#include <QCoreApplication>
#include <QFile>
#include <QSaveFile>
#include <algorithm>
#include <cmath>
#include <limits>
#include <string_view>
#include <utility>

#include "app/files/json_reader.h"
#include "app/files/json_writer.h"
#include "app/files/regular_file.h"
#include "app/files/write_all.h"

namespace tidewell {
namespace {

constexpr const char* formatWord = "kestrel_project";
constexpr int formatVersion = 1;
constexpr const char* seatNames[] = {"OOP", "IP"};

void tell(std::atomic<double>* progress, double fraction) {
    if (progress != nullptr) {
        progress->store(fraction, std::memory_order_relaxed);
    }
}

void writeResults(JsonWriter& json, const SolveResults& results, std::atomic<double>* progress) {
    json.beginObject();
    json.member("resultsSummary", results.summary);
    json.member("resultStartingPot", results.startingPot);
    json.member("resultIterations", results.iterations);
    json.member("resultExploitability", results.exploitability);
    json.member("resultEvOop", results.evOop);
    json.member("resultEvIp", results.evIp);
    json.member("rootActions", QVariant(results.rootActions));
    const int nodes = results.tree.nodeCount();
    const int lists = results.tree.actionListCount();
    const double total = nodes + lists;
    json.key("treeNodeMeta");
    json.beginArray();
    for (int node = 0; node < nodes; ++node) {
        results.tree.writeMeta(node, json);
        tell(progress, node / total);
    }
    json.endArray();
    json.key("treeNodeActions");
    json.beginArray();
    for (int node = 0; node < lists; ++node) {
        results.tree.writeActions(node, json);
        tell(progress, (nodes + node) / total);
    }
    json.endArray();
    json.endObject();
}

template <class Data>
void writeEntry(JsonWriter& json, int node, const Data& data, const char* seat = nullptr) {
    json.beginObject();
    json.member("nodeIndex", node);
    if (seat != nullptr) {
        json.member("seat", seat);
    }
    json.member("data", QVariant(data));
    json.endObject();
}

template <class Data>
void writeCache(JsonWriter& json, const char* name, const QHash<int, Data>& cache) {
    json.key(name);
    json.beginArray();
    for (auto entry = cache.begin(); entry != cache.end(); ++entry) {
        writeEntry(json, entry.key(), entry.value());
    }
    json.endArray();
}

void writeCaches(JsonWriter& json, const NodeCaches& caches) {
    json.beginObject();
    writeCache(json, "handStrategyByNode", caches.handStrategy);
    writeCache(json, "actionStatsByNode", caches.actionStats);
    writeCache(json, "handCombosByNode", caches.handCombos);
    writeCache(json, "handBucketsByNode", caches.handBuckets);
    json.key("seatHandCombosByNode");
    json.beginArray();
    for (std::size_t seat = 0; seat < 2; ++seat) {
        const auto& cache = caches.seatHandCombos[seat];
        for (auto entry = cache.begin(); entry != cache.end(); ++entry) {
            writeEntry(json, entry.key(), entry.value(), seatNames[seat]);
        }
    }
    json.endArray();
    json.endObject();
}

// Members of an object by kind: what is missing or of another kind is empty or 0.

QString textAt(const QVariantMap& map, const char* key) {
    const QVariant value = map.value(key);
    return value.typeId() == QMetaType::QString ? value.toString() : QString();
}

double numberAt(const QVariantMap& map, const char* key, double missing = 0) {
    const QVariant value = map.value(key);
    const bool isNumber =
        value.typeId() == QMetaType::LongLong || value.typeId() == QMetaType::Double;
    return isNumber ? value.toDouble() : missing;
}

/// Whole numbers alone count.
int intAt(const QVariantMap& map, const char* key, int missing = 0) {
    const double number = numberAt(map, key, missing);
    const bool fits =
        std::floor(number) == number && std::abs(number) <= std::numeric_limits<int>::max();
    return fits ? static_cast<int>(number) : missing;
}

QVariantMap mapAt(const QVariantMap& map, const char* key) {
    const QVariant value = map.value(key);
    return value.typeId() == QMetaType::QVariantMap ? value.toMap() : QVariantMap();
}

QVariantList listAt(const QVariantMap& map, const char* key) {
    const QVariant value = map.value(key);
    return value.typeId() == QMetaType::QVariantList ? value.toList() : QVariantList();
}

bool flagAt(const QVariantMap& map, const char* key) {
    const QVariant value = map.value(key);
    return value.typeId() == QMetaType::Bool && value.toBool();
}

void readResults(const QVariantMap& map, SolveResults& results) {
    results.summary = textAt(map, "resultsSummary");
    results.startingPot = numberAt(map, "resultStartingPot");
    results.iterations = intAt(map, "resultIterations");
    results.exploitability = numberAt(map, "resultExploitability");
    results.evOop = numberAt(map, "resultEvOop");
    results.evIp = numberAt(map, "resultEvIp");
    for (const QVariant& action : listAt(map, "rootActions")) {
        results.rootActions.append(action.toMap());
    }
}

template <class Store>
void readCache(const QVariantMap& caches, const char* name, Store store) {
    for (const QVariant& element : listAt(caches, name)) {
        const QVariantMap entry = element.toMap();
        const int node = intAt(entry, "nodeIndex", -1);
        if (node >= 0) {
            store(node, entry);
        }
    }
}

NodeCaches readCaches(const QVariantMap& map) {
    NodeCaches caches;
    readCache(map, "handStrategyByNode", [&](int node, const QVariantMap& entry) {
        caches.handStrategy.insert(node, mapAt(entry, "data"));
    });
    const std::pair<const char*, QHash<int, QVariantList>*> lists[] = {
        {"actionStatsByNode", &caches.actionStats},
        {"handCombosByNode", &caches.handCombos},
        {"handBucketsByNode", &caches.handBuckets}};
    for (const auto& [name, cache] : lists) {
        readCache(map, name, [cache = cache](int node, const QVariantMap& entry) {
            cache->insert(node, listAt(entry, "data"));
        });
    }
    readCache(map, "seatHandCombosByNode", [&](int node, const QVariantMap& entry) {
        const QString seat = textAt(entry, "seat").trimmed().toUpper();
        for (std::size_t s = 0; s < 2; ++s) {
            if (seat == seatNames[s]) {
                caches.seatHandCombos[s].insert(node, listAt(entry, "data"));
            }
        }
    });
    return caches;
}

/// The locks that name a node and a hand, with the parts that are of their kind.
QVariantList readLocks(const QVariantList& list) {
    QVariantList locks;
    for (const QVariant& element : list) {
        const QVariantMap entry = element.toMap();
        const int node = intAt(entry, "nodeIndex", -1);
        const QString hand = textAt(entry, "hand");
        if (node < 0 || hand.isEmpty()) {
            continue;
        }
        QVariantMap lock = {{"nodeIndex", node},
                            {"hand", hand},
                            {"actionIndex", intAt(entry, "actionIndex", -1)},
                            {"actionProb", numberAt(entry, "actionProb", 1.0)}};
        if (entry.contains("actionProbs")) {
            lock.insert("actionProbs", listAt(entry, "actionProbs"));
        }
        locks.append(lock);
    }
    return locks;
}

ProjectData readData(const QVariantMap& object, ResultTree::Builder& tree) {
    ProjectData data;
    data.project = mapAt(object, "project");
    data.hasResults = flagAt(object, "hasResults");
    if (data.hasResults) {
        readResults(mapAt(object, "results"), data.results);
        data.results.tree = tree.finish();
    }
    data.caches = readCaches(mapAt(object, "nodeCaches"));
    data.nodeLocks = readLocks(listAt(object, "nodeLocks"));
    data.lastUiCfg = mapAt(object, "lastUiCfg");
    return data;
}

ReadProject readDocument(QFile& file, std::atomic<double>* progress) {
    ResultTree::Builder tree;
    const QHash<QStringList, JsonStream> streams = {
        {{"results", "treeNodeMeta"},
         {[&] { tree.beginMeta(); }, [&](const QVariant& entry) { tree.addMeta(entry.toMap()); }}},
        {{"results", "treeNodeActions"},
         {[&] { tree.beginActions(); },
          [&](const QVariant& entry) { tree.addActions(entry.toList()); }}}};
    const auto total = static_cast<double>(std::max<qint64>(file.size(), 1));
    const JsonDocument document = readJson(
        file, streams, [&](qint64 bytes) { tell(progress, static_cast<double>(bytes) / total); });
    if (!document.valid) {
        return {QT_TRANSLATE_NOOP("AppController", "Invalid JSON"), {}, document.end};
    }
    if (textAt(document.object, "format") != formatWord) {
        return {QT_TRANSLATE_NOOP("AppController", "Unrecognized project format"), {}};
    }
    if (intAt(document.object, "version") != formatVersion) {
        return {QT_TRANSLATE_NOOP("AppController", "Unsupported project version"), {}};
    }
    return {{}, readData(document.object, tree)};
}

}  // namespace

bool writeProjectText(const std::function<void(std::string_view)>& write, const ProjectData& data,
                      std::atomic<double>* progress) {
    JsonWriter json(write);
    json.beginObject();
    json.member("format", formatWord);
    json.member("version", formatVersion);
    json.member("project", QVariant(data.project));
    json.member("hasResults", data.hasResults);
    json.member("lastUiCfg", QVariant(data.lastUiCfg));
    json.member("nodeLocks", QVariant(data.nodeLocks));
    if (data.hasResults) {
        json.key("nodeCaches");
        writeCaches(json, data.caches);
        json.key("results");
        writeResults(json, data.results, progress);
    }
    json.endObject();
    return json.finish();
}

QString writeProject(const QString& path, const ProjectData& data, std::atomic<double>* progress) {
    QSaveFile file(path);
    if (!openForAll(file)) {
        return "failed to open: " + path + ' ' + file.errorString();
    }
    const auto write = [&](std::string_view bytes) {
        writeAll(file, QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size())));
    };
    if (!writeProjectText(write, data, progress)) {
        return "failed to convert to JSON";
    }
    QString reason;
    if (!commitAll(file, reason)) {
        return "commit failed: " + path + ' ' + reason;
    }
    tell(progress, 1.0);
    return {};
}

ReadProject readProject(const QString& path, std::atomic<double>* progress) {
    QFile file;
    if (const OpenRefusal refusal = openRegularFile(file, path); !file.isOpen()) {
        const char* const text = QT_TRANSLATE_NOOP("AppController", "Failed to open file");
        return {refusal.text != nullptr ? refusal.text : text, {}};
    }
    return readDocument(file, progress);
}

}  // namespace tidewell
