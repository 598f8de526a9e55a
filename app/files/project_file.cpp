#include "app/files/project_file.h"

#include <QCoreApplication>
#include <QFile>
#include <QSaveFile>
#include <algorithm>
#include <exception>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/files/flat_json.h"
#include "app/files/json_lines.h"
#include "app/files/json_reader.h"
#include "app/files/json_value.h"
#include "app/files/project_json.h"
#include "app/files/regular_file.h"
#include "app/files/write_all.h"

namespace tidewell {
namespace {

using kestrel_app::NodeRecord;
using kestrel_app::NodeRecords;
using nlohmann::json;

constexpr const char* formatWord = "kestrel_project";
constexpr int formatVersion = 1;
constexpr const char* seatNames[] = {"OOP", "IP"};

// The summary of the hands that come to a node stands in for its hand list, which is twenty times
// as long.
constexpr const char* reachCache = "handStrategyReachByNode";

constexpr const char* hereCache = "actionStatsHereByNode";

void tell(std::atomic<double>* progress, double fraction) {
    if (progress != nullptr) {
        progress->store(fraction, std::memory_order_relaxed);
    }
}

void writeResults(JsonLines& lines, const SolveResults& results, std::atomic<double>* progress) {
    lines.open('{', "results");
    lines.add(jsonOf(results.summary), "resultsSummary");
    lines.add(results.startingPot, "resultStartingPot");
    lines.add(results.iterations, "resultIterations");
    lines.add(results.exploitability, "resultExploitability");
    lines.add(results.evOop, "resultEvOop");
    lines.add(results.evIp, "resultEvIp");
    lines.add(jsonOf(results.rootActions), "rootActions");
    const kestrel_app::TreeSnapshot* const tree = results.tree.snapshot();
    const std::size_t nodes = tree != nullptr ? tree->size() : 0;
    const double total = 2.0 * static_cast<double>(nodes);
    std::string text;
    lines.open('[', "treeNodeMeta");
    for (std::size_t node = 0; node < nodes; ++node) {
        text.clear();
        appendJsonObject(text, tree->node(node), results.tree.effectiveStack());
        lines.addText(text);
        tell(progress, static_cast<double>(node) / total);
    }
    lines.close();
    lines.open('[', "treeNodeActions");
    for (std::size_t node = 0; node < nodes; ++node) {
        text = "[";
        for (const kestrel_app::SolveActionInfo& action : tree->actions(node)) {
            text += text.size() > 1 ? "," : "";
            appendJsonObject(text, action);
        }
        lines.addText(text += ']');
        tell(progress, static_cast<double>(nodes + node) / total);
    }
    lines.close();
    lines.close();
}

/// A list of nodes, each with what `dataOf` makes of its record, if that is not null.
template <class DataOf>
void writeCache(JsonLines& lines, const char* name, const NodeRecords& records, DataOf dataOf) {
    lines.open('[', name);
    for (const auto& [node, record] : records) {
        if (json data = dataOf(record); !data.is_null()) {
            lines.add({{"nodeIndex", node}, {"data", std::move(data)}});
        }
    }
    lines.close();
}

void writeCaches(JsonLines& lines, const NodeRecords& records) {
    const auto objectOf = [](const auto& kept) { return kept ? jsonObject(*kept) : json(); };
    const auto listOf = [](const auto& kept) { return kept ? jsonList(*kept) : json(); };
    lines.open('{', "nodeCaches");
    writeCache(lines, "handStrategyByNode", records,
               [&](const NodeRecord& record) { return objectOf(record.strategy); });
    writeCache(lines, reachCache, records, [&](const NodeRecord& record) {
        return record.combos ? json() : objectOf(record.reach);
    });
    writeCache(lines, "actionStatsByNode", records,
               [&](const NodeRecord& record) { return listOf(record.stats); });
    writeCache(lines, hereCache, records,
               [&](const NodeRecord& record) { return listOf(record.stats_here); });
    writeCache(lines, "handCombosByNode", records,
               [&](const NodeRecord& record) { return listOf(record.combos); });
    writeCache(lines, "handBucketsByNode", records,
               [&](const NodeRecord& record) { return listOf(record.buckets); });
    lines.open('[', "seatHandCombosByNode");
    for (const auto& [node, record] : records) {
        for (std::size_t seat = 0; seat < 2; ++seat) {
            if (json data = listOf(record.seat_combos[seat]); !data.is_null()) {
                lines.add(
                    {{"nodeIndex", node}, {"seat", seatNames[seat]}, {"data", std::move(data)}});
            }
        }
    }
    lines.close();
    lines.close();
}

void writeDocument(JsonLines& lines, const ProjectData& data, std::atomic<double>* progress) {
    constexpr std::size_t innerLevels = deepestJson - 1;
    lines.open('{');
    lines.add(formatWord, "format");
    lines.add(formatVersion, "version");
    lines.add(jsonOf(data.project, innerLevels), "project");
    lines.add(data.hasResults, "hasResults");
    lines.add(jsonOf(data.lastUiCfg, innerLevels), "lastUiCfg");
    lines.add(jsonOf(data.nodeLocks, innerLevels), "nodeLocks");
    if (data.hasResults) {
        writeCaches(lines, data.records);
        writeResults(lines, data.results, progress);
    }
    lines.close();
    lines.finish();
}

/// Puts the tree together from what is read of it, until that does not fit.
class TreeReader {
  public:
    JsonStream metas() {
        return [this](const json& entry) { heedDamage([&] { addMeta(entry); }); };
    }
    JsonStream actions() {
        return [this](const json& entry) {
            heedDamage([&] { builder_.add_actions(readActions(entry, lists_++)); });
        };
    }

    ResultTree finish() {
        ResultTree tree;
        heedDamage([&] { tree = {builder_.finish(), effectiveStack_}; });
        return tree;
    }

    /// What is wrong with the tree; empty for a whole one.
    const std::string& damage() const { return damage_; }

  private:
    void addMeta(const json& entry) {
        builder_.add_node(readMeta(entry, nodes_));
        const double stack = numberAt(entry, "effectiveStack");
        if (nodes_ == 0) {
            effectiveStack_ = stack;
        } else if (stack != effectiveStack_) {
            throw std::invalid_argument("node " + std::to_string(nodes_) +
                                        ": another effective stack");
        }
        ++nodes_;
    }

    template <class Step>
    void heedDamage(const Step& step) {
        try {
            if (damage_.empty()) {
                step();
            }
        } catch (const std::invalid_argument& error) {
            damage_ = error.what();
        }
    }

    kestrel_app::TreeSnapshot::Builder builder_;
    double effectiveStack_ = 0;
    std::size_t nodes_ = 0;
    std::size_t lists_ = 0;
    std::string damage_;
};

/// Stores the answers of one list of the file. `read` puts the data of an entry into a record.
template <class Read>
JsonStream cacheStream(NodeRecords& records, Read read) {
    return [&records, read](const json& entry) {
        const int node = intAt(entry, "nodeIndex", -1);
        if (node >= 0) {
            read(records[node], entry);
        }
    };
}

/// The data of an entry, read by `read`, as the part of a record.
template <class Answer, class Read>
auto intoPart(std::shared_ptr<const Answer> NodeRecord::*part, Read read) {
    return [part, read](NodeRecord& record, const json& entry) {
        record.*part = std::make_shared<const Answer>(read(entry));
    };
}

void readSeatHands(NodeRecord& record, const json& entry) {
    const QString seat = QString::fromStdString(textAt(entry, "seat")).trimmed().toUpper();
    for (std::size_t s = 0; s < 2; ++s) {
        if (seat == seatNames[s]) {
            record.seat_combos[s] = std::make_shared<const std::vector<kestrel_app::SeatCombo>>(
                readSeatCombos(listAt(entry, "data")));
        }
    }
}

QHash<QStringList, JsonStream> streamsInto(TreeReader& tree, NodeRecords& records) {
    const auto list = [](auto read) {
        return [read](const json& entry) { return read(listAt(entry, "data")); };
    };
    const auto cache = [&](const char* name, auto read) {
        return std::pair(QStringList{"nodeCaches", name}, cacheStream(records, read));
    };
    return {{{"results", "treeNodeMeta"}, tree.metas()},
            {{"results", "treeNodeActions"}, tree.actions()},
            cache("handStrategyByNode",
                  [](NodeRecord& record, const json& entry) {
                      if (auto strategy = readStrategy(objectAt(entry, "data"))) {
                          record.strategy = std::make_shared<const kestrel_app::HandStrategy>(
                              *std::move(strategy));
                      }
                  }),
            cache(reachCache,
                  intoPart(&NodeRecord::reach,
                           [](const json& entry) { return readReach(objectAt(entry, "data")); })),
            cache("actionStatsByNode", intoPart(&NodeRecord::stats, list(readStats))),
            cache(hereCache, intoPart(&NodeRecord::stats_here, list(readStatsHere))),
            cache("handCombosByNode", intoPart(&NodeRecord::combos, list(readCombos))),
            cache("handBucketsByNode", intoPart(&NodeRecord::buckets, list(readBuckets))),
            cache("seatHandCombosByNode", readSeatHands)};
}

void readResults(const json& object, SolveResults& results) {
    results.summary = QString::fromStdString(textAt(object, "resultsSummary"));
    results.startingPot = numberAt(object, "resultStartingPot");
    results.iterations = intAt(object, "resultIterations");
    results.exploitability = numberAt(object, "resultExploitability");
    results.evOop = numberAt(object, "resultEvOop");
    results.evIp = numberAt(object, "resultEvIp");
    for (const json& action : listAt(object, "rootActions")) {
        results.rootActions.append(variantOf(action).toMap());
    }
}

/// The locks that name a node and a hand, with the parts that are of their kind.
QVariantList readLocks(const json& list) {
    QVariantList locks;
    for (const json& entry : list) {
        const int node = intAt(entry, "nodeIndex", -1);
        const QString hand = QString::fromStdString(textAt(entry, "hand"));
        if (node < 0 || hand.isEmpty()) {
            continue;
        }
        QVariantMap lock = {{"nodeIndex", node},
                            {"hand", hand},
                            {"actionIndex", intAt(entry, "actionIndex", -1)},
                            {"actionProb", numberAt(entry, "actionProb", 1.0)}};
        if (entry.contains("actionProbs")) {
            lock.insert("actionProbs", variantOf(listAt(entry, "actionProbs")));
        }
        locks.append(lock);
    }
    return locks;
}

ReadProject readDocument(QFile& file, std::atomic<double>* progress) {
    TreeReader tree;
    ReadProject read;
    ProjectData& data = read.data;
    const auto refused = [](const char* error) { return ReadProject{.error = error}; };
    const auto total = static_cast<double>(std::max<qint64>(file.size(), 1));
    const JsonDocument document =
        readJson(file, streamsInto(tree, data.records),
                 [&](qint64 bytes) { tell(progress, static_cast<double>(bytes) / total); });
    const json& object = document.object;
    if (!document.valid) {
        read = refused(QT_TRANSLATE_NOOP("AppController", "Invalid JSON"));
        read.invalidAt = document.end;
        return read;
    }
    if (textAt(object, "format") != formatWord) {
        return refused(QT_TRANSLATE_NOOP("AppController", "Unrecognized project format"));
    }
    if (intAt(object, "version") != formatVersion) {
        return refused(QT_TRANSLATE_NOOP("AppController", "Unsupported project version"));
    }
    data.project = variantOf(objectAt(object, "project")).toMap();
    data.hasResults = flagAt(object, "hasResults");
    if (data.hasResults) {
        readResults(objectAt(object, "results"), data.results);
        data.results.tree = tree.finish();
        if (!tree.damage().empty()) {
            read = refused(QT_TRANSLATE_NOOP("AppController", "The project file is damaged"));
            read.damage = QString::fromStdString(tree.damage());
            return read;
        }
    }
    data.nodeLocks = readLocks(listAt(object, "nodeLocks"));
    data.lastUiCfg = variantOf(objectAt(object, "lastUiCfg")).toMap();
    return read;
}

}  // namespace

bool writeProjectText(const std::function<void(std::string_view)>& write, const ProjectData& data,
                      std::atomic<double>* progress) {
    JsonLines lines(write);
    try {
        writeDocument(lines, data, progress);
    } catch (const std::length_error&) {
        return false;
    }
    return true;
}

qint64 writtenBytes(const ProjectData& data) {
    constexpr qint64 nodeBytes = 500;  // as found in files
    qint64 bytes = data.results.tree.nodeCount() * nodeBytes;
    for (const auto& [node, record] : data.records) {
        bytes += static_cast<qint64>(kestrel_app::memory_bytes(record));
    }
    return data.hasResults ? bytes : 0;
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
        return {.error = refusal.text != nullptr ? refusal.text : text};
    }
    return readDocument(file, progress);
}

}  // namespace tidewell
