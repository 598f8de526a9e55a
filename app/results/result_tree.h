#pragma once

#include <QHash>
#include <QVariantList>
#include <QVariantMap>
#include <memory>

#include "session/result_snapshot.h"

namespace tidewell {

class JsonWriter;

/// The tree of a result as the pages read it, by node index: what each node is, and its actions.
/// Maps are made on demand from compact records, money in chips. A cheap value; copies share.
class ResultTree {
  public:
    class Builder;

    ResultTree() = default;

    /// A tree that was solved.
    ResultTree(std::shared_ptr<const kestrel_app::TreeSnapshot> snapshot, double effectiveStack);

    /// Nodes, and lists of actions: the same but for a damaged file.
    int nodeCount() const;
    int actionListCount() const;

    /// `nodeType`, `chanceDeal`, `player`, `pot`, `effectiveStack`, `investedOop`, `investedIp`,
    /// `hasChildren`. Empty for an index out of range.
    QVariantMap meta(int node) const;

    /// Per action `name`, `actionType`, `frequency`, `childIndex`. Empty for an index out of range.
    QVariantList actions(int node) const;
    int actionCount(int node) const;

    // What `meta` and `actions` tell, written at once.
    void writeMeta(int node, JsonWriter& json) const;
    void writeActions(int node, JsonWriter& json) const;

  private:
    std::shared_ptr<const kestrel_app::TreeSnapshot> nodes_;
    std::shared_ptr<const kestrel_app::TreeSnapshot> lists_;  // of actions; mostly the same object
    double effectiveStack_ = 0;
    // Entries that the records cannot hold, as they were read; a record stands in their place.
    QHash<int, QVariantMap> oddMeta_;
    QHash<int, QVariantList> oddActions_;
};

/// Puts a tree together from entries that were read, nodes and lists of actions each in index
/// order. Every entry is told again as it was given.
class ResultTree::Builder {
  public:
    // These begin anew.
    void beginMeta();
    void beginActions();

    void addMeta(const QVariantMap& meta);
    void addActions(const QVariantList& actions);
    ResultTree finish();

  private:
    kestrel_app::TreeSnapshot::Builder nodeRecords_;
    kestrel_app::TreeSnapshot::Builder listRecords_;
    ResultTree tree_;
    int nodes_ = 0;
    int lists_ = 0;
};

}  // namespace tidewell
