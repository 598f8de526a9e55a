#include "app/results/node_answers.h"

#include <algorithm>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "app/results/bucket_names.h"
#include "app/results/variant_map.h"

namespace tidewell {
namespace {

using kestrel::Seat;
using kestrel_app::ActionStatsHere;
using kestrel_app::HandBucket;
using kestrel_app::HandCombo;
using kestrel_app::HandStrategy;
using kestrel_app::NodeActionStats;
using kestrel_app::NodeRecord;
using kestrel_app::ReachStrategy;
using kestrel_app::SeatCombo;

Seat seatOf(const QString& player) {
    return player.trimmed().toUpper() == "IP" ? Seat::IP : Seat::OOP;
}

std::uint64_t indexOf(int node) {
    return static_cast<std::uint64_t>(node);
}

template <class Record>
QVariantList listOf(const NodeRecord::Kept<std::vector<Record>>& records) {
    QVariantList list;
    if (records) {
        list.reserve(static_cast<qsizetype>(records->size()));
        for (const Record& record : *records) {
            list.append(variantMap(record));
        }
    }
    return list;
}

/// A map for each action.
template <class Stats>
QVariantList listOfActions(const Stats& stats) {
    QVariantList list;
    for (std::size_t a = 0; a < stats.action_names.size(); ++a) {
        list.append(variantMap(stats, a));
    }
    return list;
}

/// The actions of a strategy or, in a file that lost them, of a hand.
std::size_t countActions(const HandStrategy* strategy, const std::vector<HandCombo>& combos) {
    std::size_t count = strategy != nullptr ? strategy->action_types.size() : 0;
    for (std::size_t i = 0; count == 0 && i < combos.size(); ++i) {
        count = combos[i].action_probs.size();
    }
    return count;
}

}  // namespace

/// A part of a node's record; asked for, and kept, where it is not there.
template <class Part, class Ask>
Part NodeAnswers::known(int node, Part NodeRecord::*part, Ask ask) {
    if (node < 0) {
        return nullptr;
    }
    const auto found = records_.find(node);
    if (found != records_.end() && found->second.*part) {
        return found->second.*part;
    }
    auto answer = ask();
    if (!answer) {
        return nullptr;
    }
    using Answer = typename Part::element_type;
    return records_[node].*part = std::make_shared<Answer>(*std::move(answer));
}

QVariantList NodeAnswers::actionStats(int node) {
    const auto stats = known(node, &NodeRecord::stats, [&]() -> std::optional<NodeActionStats> {
        auto answer = session_.node_action_stats(indexOf(node));
        return answer ? std::optional(kestrel_app::in_chips(*std::move(answer))) : std::nullopt;
    });
    return stats ? listOfActions(*stats) : QVariantList();
}

QVariantList NodeAnswers::actionStatsHere(int node) const {
    const auto record = records_.find(node);
    return record == records_.end() || !record->second.stats_here
               ? QVariantList()
               : listOfActions(*record->second.stats_here);
}

void NodeAnswers::keepHere(int node, ActionStatsHere stats) {
    records_[node].stats_here =
        std::make_shared<const ActionStatsHere>(kestrel_app::in_chips(std::move(stats)));
}

QVariantList NodeAnswers::actionSharesHere(int node) const {
    QVariantList list = actionStatsHere(node);
    const auto shares =
        node >= 0 && list.isEmpty() ? session_.action_shares_here(indexOf(node)) : std::nullopt;
    for (const QVariant& action : shares ? listOfActions(*shares) : QVariantList()) {
        QVariantMap map = action.toMap();
        map.insert("pending", true);
        list.append(map);
    }
    return list;
}

bool NodeAnswers::opponentComes(int node) const {
    if (node >= 0 && session_.finished()) {
        return session_.opponent_comes(indexOf(node)).value_or(true);
    }
    const auto record = records_.find(node);
    return record == records_.end() || !record->second.stats_here ||
           record->second.stats_here->opponent_comes;
}

NodeAnswers::Kept<HandStrategy> NodeAnswers::strategyOf(int node) {
    return known(node, &NodeRecord::strategy,
                 [&] { return session_.hand_strategy(indexOf(node)); });
}

QVariantMap NodeAnswers::handStrategy(int node) {
    const auto strategy = strategyOf(node);
    return strategy ? variantMap(*strategy) : QVariantMap();
}

/// Those of a class are quickly worked out, and not kept.
NodeAnswers::Kept<ReachStrategy> NodeAnswers::reachOf(int node, std::string_view bucket) {
    if (bucket.empty()) {
        if (auto reach = known(node, &NodeRecord::reach,
                               [&] { return session_.reach_strategy(indexOf(node), bucket); })) {
            return reach;
        }
    } else if (auto reach = session_.reach_strategy(indexOf(node), bucket)) {
        return std::make_shared<const ReachStrategy>(*std::move(reach));
    }
    const auto record = records_.find(node);
    if (record == records_.end() || !record->second.combos || record->second.combos->empty()) {
        return nullptr;
    }
    const std::vector<HandCombo>& combos = *record->second.combos;
    return std::make_shared<const ReachStrategy>(kestrel_app::reach_strategy(
        combos, countActions(record->second.strategy.get(), combos), bucket));
}

QVariantMap NodeAnswers::handStrategyReach169(int node, const QString& bucketName) {
    if (node < 0) {
        return {};
    }
    const std::string bucket = bucketName.trimmed().toStdString();
    QVariantMap answer = handStrategy(node);
    const auto reach = reachOf(node, bucket);
    if (reach && !(bucket.empty() && reach->empty())) {
        answer.insert(variantMap(*reach));
    }
    return answer;
}

QVariantList NodeAnswers::handCombos(int node) {
    const auto combos =
        known(node, &NodeRecord::combos, [&]() -> std::optional<std::vector<HandCombo>> {
            auto answer = session_.hand_combos(indexOf(node));
            return answer ? std::optional(kestrel_app::in_chips(*std::move(answer))) : std::nullopt;
        });
    used(node);
    return listOf(combos);
}

QVariantList NodeAnswers::handCombosPart(int node, int first, int count) {
    const auto record = records_.find(node);
    if (record == records_.end() || !record->second.combos || first < 0) {
        return {};
    }
    const auto combos = record->second.combos;
    used(node);
    QVariantList list;
    const auto end = std::min(combos->size(), static_cast<std::size_t>(first) +
                                                  static_cast<std::size_t>(std::max(0, count)));
    for (std::size_t i = static_cast<std::size_t>(first); i < end; ++i) {
        list.append(variantMap((*combos)[i]));
    }
    return list;
}

bool NodeAnswers::knowsHandCombos(int node) const {
    const auto record = records_.find(node);
    return record != records_.end() && record->second.combos;
}

void NodeAnswers::keepHandCombos(int node, std::vector<HandCombo> combos) {
    records_[node].combos =
        std::make_shared<const std::vector<HandCombo>>(kestrel_app::in_chips(std::move(combos)));
    used(node);
}

QVariantList NodeAnswers::seatHandCombos(int node, const QString& player) {
    return listOf(rangeOf(node, seatOf(player)));
}

NodeAnswers::Kept<std::vector<SeatCombo>> NodeAnswers::rangeOf(int node, Seat seat) {
    if (node < 0) {
        return nullptr;
    }
    if (auto combos = session_.seat_hand_combos(indexOf(node), seat)) {
        records_[node].seat_combos[index_of(seat)] =
            std::make_shared<const std::vector<SeatCombo>>(*std::move(combos));
    }
    const auto record = records_.find(node);
    if (record == records_.end()) {
        return nullptr;
    }
    const auto combos = record->second.seat_combos[index_of(seat)];
    used(node);
    return combos;
}

QVariantList NodeAnswers::pocketActionEvs(int node, const QString& player, const QString& c1,
                                          const QString& c2) {
    if (node < 0) {
        return {};
    }
    // With a solve at hand, only the acting seat's own hands have an answer.
    if (session_.finished()) {
        auto evs = session_.pocket_action_evs(indexOf(node), seatOf(player), c1.toStdString(),
                                              c2.toStdString());
        if (!evs) {
            return {};
        }
        for (double& ev : *evs) {
            ev /= kestrel_app::hundredths_per_chip;
        }
        return variant(*evs).toList();
    }
    const auto record = records_.find(node);
    if (record == records_.end() || !record->second.combos) {
        return {};
    }
    const auto pair = [](const QString& a, const QString& b) {
        return std::minmax({a.trimmed().toLower(), b.trimmed().toLower()});
    };
    for (const HandCombo& combo : *record->second.combos) {
        if (pair(QString::fromStdString(combo.c1), QString::fromStdString(combo.c2)) ==
            pair(c1, c2)) {
            return variant(combo.action_evs).toList();
        }
    }
    return {};
}

QVariantList NodeAnswers::handBuckets(int node) {
    const auto buckets =
        known(node, &NodeRecord::buckets, [&] { return session_.hand_buckets(indexOf(node)); });
    QVariantList answer;
    for (const HandBucket& bucket : buckets ? *buckets : std::vector<HandBucket>()) {
        QVariantMap map = variantMap(bucket);
        map.insert("displayName", bucketDisplayName(QString::fromStdString(bucket.name)));
        answer.append(map);
    }
    return answer;
}

bool NodeAnswers::isKept(int node) const {
    const auto found = records_.find(node);
    if (found == records_.end()) {
        return false;
    }
    const NodeRecord& record = found->second;
    return record.strategy && record.combos && record.buckets && record.stats && record.stats_here;
}

/// What is known already stays.
void NodeAnswers::take(int node, NodeRecord record) {
    NodeRecord& known = records_[node];
    const auto part = [&](auto NodeRecord::*member) {
        if (!(known.*member)) {
            known.*member = std::move(record.*member);
        }
    };
    part(&NodeRecord::strategy);
    part(&NodeRecord::combos);
    part(&NodeRecord::buckets);
    part(&NodeRecord::stats);
    part(&NodeRecord::stats_here);
}

void NodeAnswers::keep(int node, NodeRecord record) {
    if (node < 0) {
        return;
    }
    take(node, std::move(record));
    forGood_.insert(node);
    recent_.forget(node);
}

void NodeAnswers::add(int node, NodeRecord record) {
    if (node >= 0) {
        take(node, std::move(record));
        used(node);
    }
}

void NodeAnswers::keep(int node) {
    const auto solve = session_.finished();
    if (node < 0 || !solve || isKept(node)) {
        return;
    }
    try {
        keep(node, kestrel_app::work_out(*solve, indexOf(node)));
    } catch (const std::bad_alloc&) {
        return;  // a project without it is better than none
    }
}

/// The lists of a node are in use: others make room for them.
void NodeAnswers::used(int node) {
    const auto record = records_.find(node);
    if (record == records_.end() || forGood_.contains(node)) {
        return;
    }
    for (const int gone : recent_.use(node, kestrel_app::hand_list_bytes(record->second))) {
        records_[gone].drop_hand_lists();
    }
}

void NodeAnswers::clear() {
    restore({});
}

void NodeAnswers::restore(kestrel_app::NodeRecords records) {
    records_ = std::move(records);
    recent_.clear();
    forGood_.clear();
    for (const auto& [node, record] : records_) {
        forGood_.insert(node);
    }
}

std::size_t NodeAnswers::memoryBytes() const {
    std::size_t bytes = 0;
    for (const auto& [node, record] : records_) {
        bytes += kestrel_app::memory_bytes(record);
    }
    return bytes;
}

}  // namespace tidewell
