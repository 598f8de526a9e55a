#pragma once

#include <QHash>
#include <QString>
#include <QVariantList>
#include <QVariantMap>

#include "app/results/node_caches.h"
#include "app/results/result_tree.h"
#include "session/solve_session.h"

namespace tidewell {

/// Answers the pages' questions about nodes in maps and lists, money in chips: from a live solve,
/// whose dear answers are kept, or from what a project file has kept of one. What cannot be
/// answered is empty. The session and the tree must outlive the object.
class NodeAnswers {
  public:
    NodeAnswers(const kestrel_app::SolveSession& session, const ResultTree& tree)
        : session_(session), tree_(tree) {}

    /// Per action `name`, `actionType`, `frequency`, `combos`, `equity`, `ev`.
    QVariantList actionStats(int node);

    /// `weights`, `dominantActionTypes` and `actionProbs` by hand label, `actionNames` and
    /// `actionTypeList` by action.
    QVariantMap handStrategy(int node);

    /// The same with `weights` and `actionProbs` of the hands that come to the node, or of those
    /// among them that belong to a class (any case, blanks around it ignored; empty for all).
    QVariantMap handStrategyReach169(int node, const QString& bucketName);

    /// Per hand of the acting seat `c1`, `c2`, `weight`, `ev`, `actionEvs`, `buckets`,
    /// `actionProbs`; by falling `ev`.
    QVariantList handCombos(int node);

    /// Per hand `c1`, `c2`, `weight`. `player`: "IP" in any case, anything else is OOP.
    QVariantList seatHandCombos(int node, const QString& player);

    /// One value for each action of one hand.
    QVariantList pocketActionEvs(int node, const QString& player, const QString& c1,
                                 const QString& c2);

    /// Per class of hands `name`, `combos`, `actionProbs`, and `displayName` in the language of the
    /// moment.
    QVariantList handBuckets(int node);

    /// Asks all that a project keeps of the acting seat's node.
    void keep(int node);

    void clear();
    const NodeCaches& caches() const { return caches_; }
    void restore(NodeCaches caches);

  private:
    const kestrel_app::SolveSession& session_;
    const ResultTree& tree_;
    NodeCaches caches_;
    QHash<QString, QVariantMap> reachStrategy_;  // by "node|class"
};

}  // namespace tidewell
