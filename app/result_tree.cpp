#include "app/result_tree.h"

#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <utility>

namespace tidewell {
namespace {

using kestrel_app::SolveActionInfo;
using kestrel_app::SolveNodeMeta;
using kestrel_app::TreeSnapshot;

QString text(std::string_view view) {
    return QString::fromUtf8(view.data(), static_cast<qsizetype>(view.size()));
}

QVariantMap metaMap(const SolveNodeMeta& meta, double effectiveStack) {
    return {{"nodeType", text(meta.node_type)},
            {"chanceDeal", text(meta.chance_deal)},
            {"player", text(meta.player)},
            {"pot", meta.pot / 100.0},
            {"effectiveStack", effectiveStack},
            {"investedOop", meta.invested_oop / 100.0},
            {"investedIp", meta.invested_ip / 100.0},
            {"hasChildren", meta.has_children}};
}

QVariantMap actionMap(const SolveActionInfo& action) {
    return {{"name", text(action.name)},
            {"actionType", text(action.action_type)},
            {"frequency", static_cast<double>(action.frequency)},
            {"childIndex", static_cast<int>(action.child_index)}};
}

bool isNumber(const QVariant& value) {
    switch (value.typeId()) {
        case QMetaType::Int:
        case QMetaType::LongLong:
        case QMetaType::Double:
            return true;
        default:
            return false;
    }
}

/// A text, a number or a flag of an entry; nothing where it is missing or of another kind.
std::optional<std::string> textAt(const QVariantMap& map, const char* key) {
    const QVariant value = map.value(key);
    return value.typeId() == QMetaType::QString ? std::optional(value.toString().toStdString())
                                                : std::nullopt;
}

std::optional<double> numberAt(const QVariantMap& map, const char* key) {
    const QVariant value = map.value(key);
    return isNumber(value) ? std::optional(value.toDouble()) : std::nullopt;
}

/// Chips as whole hundredths, where they are just that.
std::optional<std::int32_t> hundredthsAt(const QVariantMap& map, const char* key) {
    const auto chips = numberAt(map, key);
    constexpr double most = std::numeric_limits<std::int32_t>::max() / 100;
    if (!chips || !(std::abs(*chips) <= most)) {
        return std::nullopt;
    }
    const auto hundredths = static_cast<std::int32_t>(std::lround(*chips * 100.0));
    return hundredths / 100.0 == *chips ? std::optional(hundredths) : std::nullopt;
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
    const auto name = textAt(map, "name");
    const auto type = textAt(map, "actionType");
    const auto frequency = numberAt(map, "frequency");
    const auto child = numberAt(map, "childIndex");
    if (map.size() != 4 || !name || !type || !frequency || !child || *child < 0 ||
        *child > std::numeric_limits<int>::max() || std::floor(*child) != *child) {
        return std::nullopt;
    }
    const auto narrow = static_cast<float>(*frequency);
    if (static_cast<double>(narrow) != *frequency) {
        return std::nullopt;
    }
    return ReadAction{*name, *type, narrow, static_cast<std::uint32_t>(*child)};
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
    return metaMap(nodes_->node(static_cast<std::size_t>(node)), effectiveStack_);
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
        list.append(actionMap(action));
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

void ResultTree::Builder::beginMeta() {
    nodeRecords_ = {};
    tree_.oddMeta_.clear();
    nodes_ = 0;
}

void ResultTree::Builder::beginActions() {
    listRecords_ = {};
    tree_.oddActions_.clear();
    lists_ = 0;
}

void ResultTree::Builder::addMeta(const QVariantMap& meta) {
    const auto type = textAt(meta, "nodeType");
    const auto deal = textAt(meta, "chanceDeal");
    const auto player = textAt(meta, "player");
    const auto pot = hundredthsAt(meta, "pot");
    const auto oop = hundredthsAt(meta, "investedOop");
    const auto ip = hundredthsAt(meta, "investedIp");
    const auto stack = numberAt(meta, "effectiveStack");
    const QVariant children = meta.value("hasChildren");
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
