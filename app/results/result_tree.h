#pragma once

#include <QVariantList>
#include <QVariantMap>
#include <memory>

#include "session/result_snapshot.h"

namespace tidewell {

/// The tree of a result as the pages read it, by node index: what each node is, and its actions.
/// Maps are made on demand from compact records, money in chips. A cheap value; copies share.
class ResultTree {
  public:
    ResultTree() = default;
    ResultTree(std::shared_ptr<const kestrel_app::TreeSnapshot> snapshot, double effectiveStack);

    int nodeCount() const;

    /// `nodeType`, `chanceDeal`, `player`, `pot`, `effectiveStack`, `investedOop`, `investedIp`,
    /// `hasChildren`. Empty for an index out of range.
    QVariantMap meta(int node) const;

    /// Per action `name`, `actionType`, `frequency`, `childIndex`. Empty for an index out of range.
    QVariantList actions(int node) const;
    int actionCount(int node) const;

    /// The records themselves; null for an empty tree.
    const kestrel_app::TreeSnapshot* snapshot() const { return snapshot_.get(); }
    double effectiveStack() const { return effectiveStack_; }

  private:
    bool has(int node) const { return node >= 0 && node < nodeCount(); }

    std::shared_ptr<const kestrel_app::TreeSnapshot> snapshot_;
    double effectiveStack_ = 0;
};

}  // namespace tidewell
