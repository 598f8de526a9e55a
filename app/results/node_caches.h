#pragma once

#include <QHash>
#include <QVariantList>
#include <QVariantMap>
#include <array>

namespace tidewell {

/// Answers to questions about nodes, by node index, as the pages get them. What a project file
/// keeps of a solve besides its tree.
struct NodeCaches {
    QHash<int, QVariantMap> handStrategy;
    QHash<int, QVariantList> actionStats;
    QHash<int, QVariantList> handCombos;
    QHash<int, QVariantList> handBuckets;                    ///< without `displayName`
    std::array<QHash<int, QVariantList>, 2> seatHandCombos;  ///< OOP's first
};

}  // namespace tidewell
