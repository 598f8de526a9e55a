#include "app/results/node_answers.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>
#include <optional>
#include <stdexcept>
#include <utility>
#include <vector>

#include "app/results/bucket_names.h"
#include "session/hand_labels.h"

namespace tidewell {
namespace {

using kestrel::Seat;

constexpr double hundredthsPerChip = 100.0;

Seat seatOf(const QString& player) {
    return player.trimmed().toUpper() == "IP" ? Seat::IP : Seat::OOP;
}

QString text(const std::string& utf8) {
    return QString::fromStdString(utf8);
}

QVariantList list(const auto& numbers, double divisor = 1.0) {
    QVariantList result;
    for (const auto number : numbers) {
        result.append(static_cast<double>(number) / divisor);
    }
    return result;
}

QVariantList texts(const std::vector<std::string>& strings) {
    QVariantList result;
    for (const std::string& string : strings) {
        result.append(text(string));
    }
    return result;
}

QVariantMap comboMap(const kestrel_app::HandCombo& combo) {
    return {{"c1", text(combo.c1)},
            {"c2", text(combo.c2)},
            {"weight", combo.weight},
            {"ev", combo.ev / hundredthsPerChip},
            {"actionEvs", list(combo.action_evs, hundredthsPerChip)},
            {"buckets", texts(combo.buckets)},
            {"actionProbs", list(combo.action_probs)}};
}

QVariantMap strategyMap(const kestrel_app::HandStrategy& strategy, const QVariantList& actions) {
    QVariantMap weights;
    QVariantMap dominant;
    QVariantMap probs;
    for (std::size_t label = 0; label < kestrel_app::label_count; ++label) {
        const QString name = text(kestrel_app::hand_label(label));
        weights.insert(name, strategy.weights[label]);
        dominant.insert(name, text(strategy.dominant_action_types[label]));
        probs.insert(name, list(strategy.action_probs[label]));
    }
    // The types that the action bars show.
    const auto count = static_cast<qsizetype>(strategy.action_types.size());
    QVariantList types;
    for (qsizetype a = 0; a < count; ++a) {
        types.append(actions.size() == count ? actions[a].toMap().value("actionType").toString()
                                             : QStringLiteral("none"));
    }
    return {{"weights", weights},
            {"dominantActionTypes", dominant},
            {"actionProbs", probs},
            {"actionNames", texts(strategy.action_names)},
            {"actionTypeList", types}};
}

/// The pocket of two card texts; nothing for any other text.
std::optional<kestrel::Pocket> pocketOf(const QVariantMap& combo) {
    try {
        const auto card = [&](const char* key) {
            return kestrel::parse_card(combo.value(key).toString().trimmed().toStdString());
        };
        const auto [low, high] = std::minmax({card("c1"), card("c2")});
        return low == high ? std::nullopt : std::optional(kestrel::Pocket{low, high});
    } catch (const std::invalid_argument&) {
        return std::nullopt;
    }
}

bool hasBucket(const QVariantMap& combo, const QString& key) {
    const QVariantList buckets = combo.value("buckets").toList();
    return std::any_of(buckets.begin(), buckets.end(), [&](const QVariant& bucket) {
        return bucket.toString().trimmed().toLower() == key;
    });
}

/// The combos of one label, added up.
struct LabelSums {
    double weight = 0;
    int combos = 0;
    std::vector<double> played;  // per action, probability times weight

    QVariantList shares() const {
        std::vector<double> result;
        for (const double sum : played) {
            const double share = sum / weight;
            result.push_back(std::isfinite(share) && share > 0 ? share : 0.0);
        }
        const double total = std::accumulate(result.begin(), result.end(), 0.0);
        return list(result, total > 0 ? total : 1.0);
    }
};

std::map<std::size_t, LabelSums> sumsByLabel(const QVariantList& combos, const QString& bucket,
                                             std::size_t actions) {
    std::map<std::size_t, LabelSums> labels;
    for (const QVariant& entry : combos) {
        const QVariantMap combo = entry.toMap();
        const auto pocket = pocketOf(combo);
        const double weight = combo.value("weight").toDouble();
        const QVariantList probs = combo.value("actionProbs").toList();
        if (!pocket || !std::isfinite(weight) || !(weight > 0) || probs.isEmpty() ||
            (!bucket.isEmpty() && !hasBucket(combo, bucket))) {
            continue;
        }
        LabelSums& sums = labels[kestrel_app::label_index(*pocket)];
        const double counted = std::min(weight, 1.0);
        sums.weight += counted;
        ++sums.combos;
        sums.played.resize(actions);
        const std::size_t shared = std::min(actions, static_cast<std::size_t>(probs.size()));
        for (std::size_t a = 0; a < shared; ++a) {
            const double prob = probs[static_cast<qsizetype>(a)].toDouble();
            sums.played[a] += std::isfinite(prob) && prob > 0 ? prob * counted : 0.0;
        }
    }
    return labels;
}

/// The actions of a strategy or, in a file that lost them, of a combo.
std::size_t countActions(const QVariantMap& strategy, const QVariantList& combos) {
    qsizetype count = strategy.value("actionTypeList").toList().size();
    for (qsizetype i = 0; count == 0 && i < combos.size(); ++i) {
        count = combos[i].toMap().value("actionProbs").toList().size();
    }
    return static_cast<std::size_t>(count);
}

}  // namespace

QVariantList NodeAnswers::actionStats(int node) {
    if (node < 0 || caches_.actionStats.contains(node)) {
        return caches_.actionStats.value(node);
    }
    const auto stats = session_.node_action_stats(static_cast<std::uint64_t>(node));
    if (!stats) {
        return {};
    }
    QVariantList answer;
    for (std::size_t a = 0; a < stats->action_names.size(); ++a) {
        answer.append(QVariantMap{{"name", text(stats->action_names[a])},
                                  {"actionType", text(stats->action_types[a])},
                                  {"frequency", static_cast<double>(stats->frequencies[a])},
                                  {"combos", stats->combos[a]},
                                  {"equity", stats->equity[a]},
                                  {"ev", stats->ev[a] / hundredthsPerChip}});
    }
    return *caches_.actionStats.insert(node, answer);
}

QVariantMap NodeAnswers::handStrategy(int node) {
    if (node < 0 || caches_.handStrategy.contains(node)) {
        return caches_.handStrategy.value(node);
    }
    const auto strategy = session_.hand_strategy(static_cast<std::uint64_t>(node));
    if (!strategy) {
        return {};
    }
    return *caches_.handStrategy.insert(node, strategyMap(*strategy, tree_.actions(node)));
}

QVariantMap NodeAnswers::handStrategyReach169(int node, const QString& bucketName) {
    if (node < 0) {
        return {};
    }
    const QString bucket = bucketName.trimmed().toLower();
    const QString key = QString::number(node) + '|' + bucket;
    if (const auto cached = reachStrategy_.constFind(key); cached != reachStrategy_.constEnd()) {
        return *cached;
    }
    QVariantMap answer = handStrategy(node);
    const QVariantList combos = handCombos(node);
    const auto labels = sumsByLabel(combos, bucket, countActions(answer, combos));
    if (!combos.isEmpty() && !(bucket.isEmpty() && labels.empty())) {
        QVariantMap weights;
        QVariantMap probs;
        for (const auto& [label, sums] : labels) {
            const QString name = text(kestrel_app::hand_label(label));
            weights.insert(name, sums.weight / sums.combos);
            probs.insert(name, sums.shares());
        }
        answer.insert("weights", weights);
        answer.insert("actionProbs", probs);
    }
    return *reachStrategy_.insert(key, answer);
}

QVariantList NodeAnswers::handCombos(int node) {
    if (node < 0 || caches_.handCombos.contains(node)) {
        return caches_.handCombos.value(node);
    }
    const auto combos = session_.hand_combos(static_cast<std::uint64_t>(node));
    if (!combos) {
        return {};
    }
    QVariantList answer;
    for (const kestrel_app::HandCombo& combo : *combos) {
        answer.append(comboMap(combo));
    }
    return *caches_.handCombos.insert(node, answer);
}

QVariantList NodeAnswers::seatHandCombos(int node, const QString& player) {
    if (node < 0) {
        return {};
    }
    const Seat seat = seatOf(player);
    auto& cache = caches_.seatHandCombos[index_of(seat)];
    const auto combos = session_.seat_hand_combos(static_cast<std::uint64_t>(node), seat);
    if (!combos) {
        return cache.value(node);
    }
    QVariantList answer;
    for (const kestrel_app::SeatCombo& combo : *combos) {
        answer.append(
            QVariantMap{{"c1", text(combo.c1)}, {"c2", text(combo.c2)}, {"weight", combo.weight}});
    }
    return *cache.insert(node, answer);
}

QVariantList NodeAnswers::pocketActionEvs(int node, const QString& player, const QString& c1,
                                          const QString& c2) {
    if (node < 0) {
        return {};
    }
    // With a solve at hand, only the acting seat's own hands have an answer.
    if (session_.game()) {
        const auto evs = session_.pocket_action_evs(
            static_cast<std::uint64_t>(node), seatOf(player), c1.toStdString(), c2.toStdString());
        return evs ? list(*evs, hundredthsPerChip) : QVariantList();
    }
    const auto key = [](const QString& card) { return card.trimmed().toLower(); };
    const auto pair = [&](const QString& a, const QString& b) {
        return std::minmax({key(a), key(b)});
    };
    for (const QVariant& entry : caches_.handCombos.value(node)) {
        const QVariantMap combo = entry.toMap();
        if (pair(combo.value("c1").toString(), combo.value("c2").toString()) == pair(c1, c2)) {
            return combo.value("actionEvs").toList();
        }
    }
    return {};
}

QVariantList NodeAnswers::handBuckets(int node) {
    if (node < 0) {
        return {};
    }
    auto cached = caches_.handBuckets.find(node);
    if (cached == caches_.handBuckets.end()) {
        const auto buckets = session_.hand_buckets(static_cast<std::uint64_t>(node));
        if (!buckets) {
            return {};
        }
        QVariantList answer;
        for (const kestrel_app::HandBucket& bucket : *buckets) {
            answer.append(QVariantMap{{"name", text(bucket.name)},
                                      {"combos", bucket.combos},
                                      {"actionProbs", list(bucket.action_probs)}});
        }
        cached = caches_.handBuckets.insert(node, answer);
    }
    QVariantList answer;
    for (const QVariant& entry : *cached) {
        QVariantMap bucket = entry.toMap();
        bucket.insert("displayName", bucketDisplayName(bucket.value("name").toString()));
        answer.append(bucket);
    }
    return answer;
}

void NodeAnswers::keep(int node) {
    handStrategy(node);
    handCombos(node);
    handBuckets(node);
    actionStats(node);
}

void NodeAnswers::clear() {
    restore({});
}

void NodeAnswers::restore(NodeCaches caches) {
    caches_ = std::move(caches);
    reachStrategy_.clear();
}

}  // namespace tidewell
