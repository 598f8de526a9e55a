#pragma once

#include <QString>
#include <QVariantList>
#include <QVariantMap>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string_view>
#include <vector>

#include "session/node_record.h"
#include "session/recent_nodes.h"
#include "session/solve_session.h"

namespace tidewell {

/// Answers the pages' questions about nodes in maps and lists, money in chips: from a live solve,
/// or from what a project file has kept of one. What cannot be answered is empty. What was worked
/// out is kept as records, and told in maps on demand. The session must outlive the object.
///
/// A project holds these records. Summaries stay, some 30 kB for a node with whole ranges. Whole
/// hand lists stay of the nodes that were last asked for them, up to `handListBytes` all together,
/// and besides of the nodes that `keep` or `restore` was told of. Thread of the event loop, but
/// for what says otherwise; `kestrel_app::work_out` does the dear part of `keep` on any thread.
class NodeAnswers {
  public:
    static constexpr std::size_t handListBytes = 16 << 20;

    explicit NodeAnswers(const kestrel_app::SolveSession& session) : session_(session) {}

    /// Per action `name`, `actionType`, `frequency`, `combos`, `equity`, `ev`; a figure that is not
    /// known is NaN.
    QVariantList actionStats(int node);

    /// The same of the hands that come to the node, and `reached`: whether the opponent comes, too.
    /// What is kept; see HereJobs. See ActionStatsHere.
    QVariantList actionStatsHere(int node) const;

    /// Takes over what was worked out of them. Money in hundredths of a chip.
    void keepHere(int node, kestrel_app::ActionStatsHere stats);

    /// The same at once: where equity and EV are not kept they are NaN, and `pending` is set.
    QVariantList actionSharesHere(int node) const;

    /// Whether the opponent of who decides at a node ever comes there; true where nobody knows.
    bool opponentComes(int node) const;

    /// `weights`, `dominantActionTypes` and `actionProbs` by hand label, `actionNames` and
    /// `actionTypeList` by action.
    QVariantMap handStrategy(int node);

    /// The same with `weights` and `actionProbs` of the hands that come to the node, or of those
    /// among them that belong to a class (any case, blanks around it ignored; empty for all).
    QVariantMap handStrategyReach169(int node, const QString& bucketName);

    /// Per hand of the acting seat `c1`, `c2`, `weight`, `ev`, `actionEvs`, `buckets`,
    /// `actionProbs`; by falling `ev`.
    QVariantList handCombos(int node);

    /// `count` of its entries from `first` on, or as many as there are, of a list that is known.
    QVariantList handCombosPart(int node, int first, int count);

    /// Whether `handCombos` has nothing left to ask.
    bool knowsHandCombos(int node) const;

    /// Takes over what was worked out for `handCombos`. Money in hundredths of a chip.
    void keepHandCombos(int node, std::vector<kestrel_app::HandCombo> combos);

    /// Per hand `c1`, `c2`, `weight`. `player`: "IP" in any case, anything else is OOP.
    QVariantList seatHandCombos(int node, const QString& player);

    /// The same as records, weights of the range; null where nothing is known.
    std::shared_ptr<const std::vector<kestrel_app::SeatCombo>> rangeOf(int node,
                                                                       kestrel::Seat seat);

    /// One value for each action of one hand.
    QVariantList pocketActionEvs(int node, const QString& player, const QString& c1,
                                 const QString& c2);

    /// Per class of hands `name`, `combos`, `actionProbs`, and `displayName` in the language of the
    /// moment.
    QVariantList handBuckets(int node);

    /// Whether `keep` has nothing left to ask of the node.
    bool isKept(int node) const;

    /// Takes over what `work_out` told of a node, for good. What is known already stays.
    void keep(int node, kestrel_app::NodeRecord record);

    /// The same, for as long as there is room.
    void add(int node, kestrel_app::NodeRecord record);

    /// Works it out first where need be.
    void keep(int node);

    void clear();
    const kestrel_app::NodeRecords& records() const { return records_; }
    void restore(kestrel_app::NodeRecords records);

    /// What the records take, about.
    std::size_t memoryBytes() const;

  private:
    template <class Answer>
    using Kept = kestrel_app::NodeRecord::Kept<Answer>;

    template <class Part, class Ask>
    Part known(int node, Part kestrel_app::NodeRecord::*part, Ask ask);
    Kept<kestrel_app::HandStrategy> strategyOf(int node);
    Kept<kestrel_app::ReachStrategy> reachOf(int node, std::string_view bucket);
    void take(int node, kestrel_app::NodeRecord record);
    void used(int node);

    const kestrel_app::SolveSession& session_;
    kestrel_app::NodeRecords records_;
    kestrel_app::RecentNodes recent_{handListBytes};
    std::set<int> forGood_;  // nodes whose lists stay
};

}  // namespace tidewell
