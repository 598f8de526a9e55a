#include "app/results/node_lock_store.h"

#include <algorithm>
#include <cmath>

#include "session/hand_labels.h"

namespace tidewell {
namespace {

/// Scaled to a sum of 1; values that are not finite and above 0 count as 0, and without any other
/// the result is uniform.
template <class Numbers>
QList<float> normalised(const Numbers& numbers) {
    const auto usable = [](double number) {
        return std::isfinite(number) && number > 0 ? number : 0.0;
    };
    double sum = 0;
    for (const double number : numbers) {
        sum += usable(number);
    }
    QList<float> probs;
    for (const double number : numbers) {
        const auto count = static_cast<double>(numbers.size());
        probs.append(static_cast<float>(sum > 0 ? usable(number) / sum : 1.0 / count));
    }
    return probs;
}

QVariantMap lockMap(const QString& hand, const NodeLock& lock) {
    QVariantMap map = {
        {"hand", hand}, {"actionIndex", lock.actionIndex}, {"actionProb", lock.actionProb}};
    if (!lock.probs.isEmpty()) {
        QVariantList probs;
        for (const float prob : lock.probs) {
            probs.append(static_cast<double>(prob));
        }
        map.insert("actionProbs", probs);
    }
    return map;
}

}  // namespace

void NodeLockStore::clear() {
    locks_.clear();
    Q_EMIT changed();
}

void NodeLockStore::clearNode(int node) {
    locks_.remove(node);
    Q_EMIT changed();
}

void NodeLockStore::markSaved() {
    saved_ = locks_;
    Q_EMIT changed();
}

void NodeLockStore::setAction(
    int node, const QString& hand, int action, double prob, int actions,
    const std::function<std::optional<kestrel_app::HandStrategy>()>& present) {
    if (node < 0 || hand.isEmpty() || actions <= 0 || action >= actions) {
        return;
    }
    if (locks_.value(node).isEmpty()) {
        if (const auto strategy = present()) {
            auto& ofNode = locks_[node];
            for (std::size_t label = 0; label < kestrel_app::label_count; ++label) {
                ofNode.insert(QString::fromStdString(kestrel_app::hand_label(label)),
                              {normalised(strategy->action_probs[label])});
            }
        }
    }
    const double share = prob > 0 ? std::min(prob, 1.0) : 0.0;
    NodeLock lock{{1.0F}, action, share};
    if (actions > 1) {
        lock.probs.fill(static_cast<float>((1.0 - share) / (actions - 1)), actions);
        lock.probs[std::max(action, 0)] = static_cast<float>(share);
    }
    locks_[node].insert(hand, lock);
    Q_EMIT changed();
}

void NodeLockStore::setProbs(int node, const QString& hand, const QVariantList& probs,
                             int actions) {
    if (node < 0 || hand.isEmpty() || actions <= 0) {
        return;
    }
    std::vector<double> numbers(static_cast<std::size_t>(actions));
    for (qsizetype i = 0; i < std::min<qsizetype>(probs.size(), actions); ++i) {
        numbers[static_cast<std::size_t>(i)] = probs[i].toDouble();
    }
    locks_[node].insert(hand, {normalised(numbers)});
    Q_EMIT changed();
}

void NodeLockStore::add(const kestrel_app::NodeLockEntry& entry) {
    locks_[static_cast<int>(entry.node_index)].insert(
        QString::fromStdString(entry.hand),
        {{entry.probs.begin(), entry.probs.end()}, entry.action_index, entry.action_prob});
}

QVariantList NodeLockStore::ofNode(int node) const {
    QVariantList list;
    const QMap<QString, NodeLock> locks = locks_.value(node);
    for (auto lock = locks.begin(); lock != locks.end(); ++lock) {
        list.append(lockMap(lock.key(), lock.value()));
    }
    return list;
}

QVariantList NodeLockStore::all() const {
    QVariantList list;
    for (auto node = locks_.begin(); node != locks_.end(); ++node) {
        for (const QVariant& lock : ofNode(node.key())) {
            QVariantMap map = lock.toMap();
            map.insert("nodeIndex", node.key());
            list.append(map);
        }
    }
    return list;
}

void NodeLockStore::restore(const QVariantList& locks, const std::function<int(int)>& actionsOf) {
    const auto nothing = [] { return std::optional<kestrel_app::HandStrategy>(); };
    const bool wereBlocked = blockSignals(true);  // one change, not one for each lock
    for (const QVariant& entry : locks) {
        const QVariantMap lock = entry.toMap();
        const int node = lock.value("nodeIndex", -1).toInt();
        const QString hand = lock.value("hand").toString();
        const int action = lock.value("actionIndex", -1).toInt();
        const QVariantList probs = lock.value("actionProbs").toList();
        if (!probs.isEmpty()) {
            setProbs(node, hand, probs, actionsOf(node));
        } else if (!lock.contains("actionProbs") && action >= 0) {
            const double prob = lock.value("actionProb", 1.0).toDouble();
            setAction(node, hand, action, prob, actionsOf(node), nothing);
        }
    }
    blockSignals(wereBlocked);
    Q_EMIT changed();
}

std::vector<kestrel_app::NodeLockEntry> NodeLockStore::entries() const {
    std::vector<kestrel_app::NodeLockEntry> entries;
    for (auto node = locks_.begin(); node != locks_.end(); ++node) {
        for (auto lock = node->begin(); lock != node->end(); ++lock) {
            entries.push_back({static_cast<std::uint64_t>(node.key()),
                               lock.key().toStdString(),
                               lock->actionIndex,
                               static_cast<float>(lock->actionProb),
                               {lock->probs.begin(), lock->probs.end()}});
        }
    }
    return entries;
}

}  // namespace tidewell
