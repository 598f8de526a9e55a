#pragma once

#include <QHash>
#include <QList>
#include <QMap>
#include <QObject>
#include <QString>
#include <QVariantList>
#include <functional>
#include <optional>
#include <vector>

#include "session/node_locks.h"
#include "session/node_queries.h"

namespace tidewell {

/// The fixed play of one starting hand at a node.
struct NodeLock {
    QList<float> probs;    ///< one for each action, adding up to 1
    int actionIndex = -1;  ///< the action that a lock of one action means, or -1
    double actionProb = 1.0;

    bool operator==(const NodeLock&) const = default;
};

/// The locks that a person has set, by node and label, until the next solve that is not made under
/// them. What does not fit is dropped without a word: a negative node, an empty label, a node
/// without actions, an action that it does not have.
class NodeLockStore : public QObject {
    Q_OBJECT

  public:
    bool empty() const { return locks_.isEmpty(); }

    /// Whether they are other ones than at the last call of `markSaved`, at first than none.
    bool unsaved() const { return locks_ != saved_; }
    void markSaved();
    void clear();
    void clearNode(int node);

    /// Locks one action of a hand at `prob` (clamped to 0 and 1), the others sharing the rest. A
    /// node without locks is first frozen as a whole at `present`, its strategy now, if there is
    /// one. `actions`: how many the node has.
    void setAction(int node, const QString& hand, int action, double prob, int actions,
                   const std::function<std::optional<kestrel_app::HandStrategy>()>& present);

    /// Locks a hand at a mix, scaled to a sum of 1; missing and unusable entries are 0, and
    /// nothing usable is uniform. Other hands stay free.
    void setProbs(int node, const QString& hand, const QVariantList& probs, int actions);

    /// Locks a hand as a solve does.
    void add(const kestrel_app::NodeLockEntry& entry);

    /// The locks of a node by rising label: maps of `hand`, `actionIndex`, `actionProb`,
    /// `actionProbs`.
    QVariantList ofNode(int node) const;

    /// All locks by rising node, each map with `nodeIndex`.
    QVariantList all() const;

    /// Takes up what `all` has told, as far as it fits the tree. `actionsOf`: how many actions a
    /// node has.
    void restore(const QVariantList& locks, const std::function<int(int)>& actionsOf);

    /// As a solve takes them.
    std::vector<kestrel_app::NodeLockEntry> entries() const;

  Q_SIGNALS:
    void changed();  ///< also of `unsaved`

  private:
    QMap<int, QMap<QString, NodeLock>> locks_;
    QMap<int, QMap<QString, NodeLock>> saved_;
};

}  // namespace tidewell
