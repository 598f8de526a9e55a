#include "app/results/result_tree.h"

#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/files/json_writer.h"

namespace tidewell {
namespace {

using kestrel_app::SolveActionInfo;
using kestrel_app::SolveNodeMeta;
using kestrel_app::TreeSnapshot;

constexpr double hundredthsPerChip = 100.0;

QVariant variant(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

template <class Value>
QVariant variant(const Value& value) {
    return value;
}

/// Tells the members of an entry to `member(key, value)`.
template <class Member>
void tellMeta(const SolveNodeMeta& meta, double effectiveStack, const Member& member) {
    member("chanceDeal", meta.chance_deal);
    member("effectiveStack", effectiveStack);
    member("hasChildren", meta.has_children);
    member("investedIp", meta.invested_ip / hundredthsPerChip);
    member("investedOop", meta.invested_oop / hundredthsPerChip);
    member("nodeType", meta.node_type);
    member("player", meta.player);
    member("pot", meta.pot / hundredthsPerChip);
}

template <class Member>
void tellAction(const SolveActionInfo& action, const Member& member) {
    member("actionType", action.action_type);
    member("childIndex", static_cast<int>(action.child_index));
    member("frequency", static_cast<double>(action.frequency));
    member("name", action.name);
}

// Parts of an entry; nothing where one is missing, of another kind, or more than a record can hold.

std::optional<std::string> textAt(const QVariantMap& map, const QString& key) {
    const QVariant value = map.value(key);
    return value.typeId() == QMetaType::QString ? std::optional(value.toString().toStdString())
                                                : std::nullopt;
}

std::optional<double> numberAt(const QVariantMap& map, const QString& key) {
    const QVariant value = map.value(key);
    const double number = value.toDouble();
    constexpr double mostExact =
        9007199254740992.0;  // 2^53: a double holds all whole numbers to it
    switch (value.typeId()) {
        case QMetaType::Double:
            return number;
        case QMetaType::Int:
        case QMetaType::LongLong:
            return std::abs(number) <= mostExact ? std::optional(number) : std::nullopt;
        default:
            return std::nullopt;
    }
}

/// Chips that are whole hundredths.
std::optional<std::int32_t> hundredthsAt(const QVariantMap& map, const QString& key) {
    const auto chips = numberAt(map, key);
    constexpr double most = std::numeric_limits<std::int32_t>::max() / hundredthsPerChip;
    if (!chips || !(std::abs(*chips) <= most)) {
        return std::nullopt;
    }
    const auto hundredths = static_cast<std::int32_t>(std::lround(*chips * hundredthsPerChip));
    return hundredths / hundredthsPerChip == *chips ? std::optional(hundredths) : std::nullopt;
}

std::optional<float> floatAt(const QVariantMap& map, const QString& key) {
    const auto number = numberAt(map, key);
    constexpr auto most = static_cast<double>(std::numeric_limits<float>::max());
    if (!number || !(std::abs(*number) <= most)) {
        return std::nullopt;
    }
    const auto narrow = static_cast<float>(*number);
    return static_cast<double>(narrow) == *number ? std::optional(narrow) : std::nullopt;
}

std::optional<std::uint32_t> indexAt(const QVariantMap& map, const QString& key) {
    const auto number = numberAt(map, key);
    if (!number || !(*number >= 0 && *number <= std::numeric_limits<int>::max()) ||
        std::trunc(*number) != *number) {
        return std::nullopt;
    }
    return static_cast<std::uint32_t>(*number);
}

/// An action with the texts that it points into.
struct ReadAction {
    std::string name;
    std::string type;
    float frequency;
    std::uint32_t child;
};

/// An entry that a record can hold without loss.
std::optional<ReadAction> readAction(const QVariant& entry) {
    const QVariantMap map = entry.toMap();
    const auto name = textAt(map, QStringLiteral("name"));
    const auto type = textAt(map, QStringLiteral("actionType"));
    const auto frequency = floatAt(map, QStringLiteral("frequency"));
    const auto child = indexAt(map, QStringLiteral("childIndex"));
    if (map.size() != 4 || !name || !type || !frequency || !child) {
        return std::nullopt;
    }
    return ReadAction{*name, *type, *frequency, *child};
}

}  // namespace

ResultTree::ResultTree(std::shared_ptr<const TreeSnapshot> snapshot, double effectiveStack)
    : nodes_(snapshot), lists_(std::move(snapshot)), effectiveStack_(effectiveStack) {}

int ResultTree::nodeCount() const {
    return nodes_ ? static_cast<int>(nodes_->size()) : 0;
}

int ResultTree::actionListCount() const {
    return lists_ ? static_cast<int>(lists_->action_lists()) : 0;
}

QVariantMap ResultTree::meta(int node) const {
    if (node < 0 || node >= nodeCount()) {
        return {};
    }
    if (const auto odd = oddMeta_.find(node); odd != oddMeta_.end()) {
        return *odd;
    }
    QVariantMap map;
    tellMeta(nodes_->node(static_cast<std::size_t>(node)), effectiveStack_,
             [&](const char* key, const auto& value) { map.insert(key, variant(value)); });
    return map;
}

QVariantList ResultTree::actions(int node) const {
    if (node < 0 || node >= actionListCount()) {
        return {};
    }
    if (const auto odd = oddActions_.find(node); odd != oddActions_.end()) {
        return *odd;
    }
    QVariantList list;
    for (const SolveActionInfo& action : lists_->actions(static_cast<std::size_t>(node))) {
        QVariantMap map;
        tellAction(action,
                   [&](const char* key, const auto& value) { map.insert(key, variant(value)); });
        list.append(map);
    }
    return list;
}

int ResultTree::actionCount(int node) const {
    if (node < 0 || node >= actionListCount()) {
        return 0;
    }
    const auto odd = oddActions_.find(node);
    return static_cast<int>(odd != oddActions_.end()
                                ? static_cast<std::size_t>(odd->size())
                                : lists_->action_count(static_cast<std::size_t>(node)));
}

void ResultTree::writeMeta(int node, JsonWriter& json) const {
    if (node < 0 || node >= nodeCount() || oddMeta_.contains(node)) {
        json.value(QVariant(meta(node)));
        return;
    }
    json.beginObject();
    tellMeta(nodes_->node(static_cast<std::size_t>(node)), effectiveStack_,
             [&](const char* key, const auto& value) { json.member(key, value); });
    json.endObject();
}

void ResultTree::writeActions(int node, JsonWriter& json) const {
    if (node < 0 || node >= actionListCount() || oddActions_.contains(node)) {
        json.value(QVariant(actions(node)));
        return;
    }
    json.beginArray();
    for (const SolveActionInfo& action : lists_->actions(static_cast<std::size_t>(node))) {
        json.beginObject();
        tellAction(action, [&](const char* key, const auto& value) { json.member(key, value); });
        json.endObject();
    }
    json.endArray();
}

void ResultTree::Builder::beginMeta() {
    nodeRecords_ = {};
    tree_.oddMeta_.clear();
    tree_.effectiveStack_ = 0;
    nodes_ = 0;
}

void ResultTree::Builder::beginActions() {
    listRecords_ = {};
    tree_.oddActions_.clear();
    lists_ = 0;
}

void ResultTree::Builder::addMeta(const QVariantMap& meta) {
    const auto type = textAt(meta, QStringLiteral("nodeType"));
    const auto deal = textAt(meta, QStringLiteral("chanceDeal"));
    const auto player = textAt(meta, QStringLiteral("player"));
    const auto pot = hundredthsAt(meta, QStringLiteral("pot"));
    const auto oop = hundredthsAt(meta, QStringLiteral("investedOop"));
    const auto ip = hundredthsAt(meta, QStringLiteral("investedIp"));
    const auto stack = numberAt(meta, QStringLiteral("effectiveStack"));
    const QVariant children = meta.value(QStringLiteral("hasChildren"));
    if (nodes_ == 0 && stack) {
        tree_.effectiveStack_ = *stack;
    }
    const bool fits =
        meta.size() == 8 && type && deal && player && pot && oop && ip && stack &&
        *stack == tree_.effectiveStack_ && children.typeId() == QMetaType::Bool &&
        nodeRecords_.add_node({*type, *deal, *player, *pot, *oop, *ip, children.toBool()});
    if (!fits) {
        tree_.oddMeta_.insert(nodes_, meta);
        nodeRecords_.add_node({"terminal", "", "", 0, 0, 0, false});
    }
    ++nodes_;
}

void ResultTree::Builder::addActions(const QVariantList& actions) {
    std::vector<ReadAction> read;
    for (const QVariant& entry : actions) {
        if (auto action = readAction(entry)) {
            read.push_back(std::move(*action));
        }
    }
    std::vector<SolveActionInfo> infos;
    if (static_cast<qsizetype>(read.size()) == actions.size()) {
        for (const ReadAction& action : read) {
            infos.push_back({action.name, action.type, action.frequency, action.child});
        }
    } else {
        tree_.oddActions_.insert(lists_, actions);
    }
    listRecords_.add_actions(infos);
    ++lists_;
}

ResultTree ResultTree::Builder::finish() {
    tree_.nodes_ = nodeRecords_.finish();
    tree_.lists_ = listRecords_.finish();
    nodes_ = 0;
    lists_ = 0;
    return std::exchange(tree_, ResultTree());
}

}  // namespace tidewell
