#include "app/results/distribution_jobs.h"

#include <QFutureWatcher>
#include <QtConcurrent>
#include <memory>
#include <new>

namespace tidewell {
namespace {

QVariantMap emptyAnswer(int node, const QString& error) {
    QVariantMap answer = {{"ok", false}, {"pending", false}, {"nodeIndex", node}, {"error", error}};
    for (const char* const list :
         {"oopHands", "ipHands", "evOop", "evIp", "equityOop", "equityIp"}) {
        answer.insert(list, QVariantList());
    }
    return answer;
}

void addSeat(QVariantMap& answer, const kestrel_app::SeatDistribution& seat, const QString& hands,
             const QString& suffix) {
    QVariantList names;
    QVariantList evs;
    QVariantList equities;
    for (std::size_t i = 0; i < seat.hands.size(); ++i) {
        names.append(QString::fromStdString(seat.hands[i]));
        evs.append(seat.ev[i] / 100.0);
        equities.append(seat.equity[i]);
    }
    answer.insert(hands, names);
    answer.insert("ev" + suffix, evs);
    answer.insert("equity" + suffix, equities);
}

QVariantMap unavailable(int node) {
    QVariantMap answer =
        emptyAnswer(node, QStringLiteral("Distributions unavailable (no live solve state)."));
    answer.insert("hands", QVariantList());
    return answer;
}

QVariantMap workOut(const std::shared_ptr<const kestrel_app::FinishedSolve>& solve, int node) {
    try {
        const auto found =
            solve ? kestrel_app::hand_distributions(*solve, static_cast<std::uint64_t>(node))
                  : std::nullopt;
        if (found) {
            QVariantMap answer = emptyAnswer(node, QString());
            answer.insert("ok", true);
            addSeat(answer, (*found)[0], "oopHands", "Oop");
            addSeat(answer, (*found)[1], "ipHands", "Ip");
            return answer;
        }
    } catch (const std::bad_alloc&) {
        // Without the memory for it there is no answer.
    }
    return unavailable(node);
}

}  // namespace

DistributionJobs::~DistributionJobs() {
    clear();
    for (auto* const watcher : findChildren<QFutureWatcherBase*>()) {
        watcher->waitForFinished();
    }
}

QVariantMap DistributionJobs::request(int node) {
    if (node < 0) {
        return emptyAnswer(node, QStringLiteral("Invalid node index."));
    }
    if (const auto known = answers_.constFind(node); known != answers_.constEnd()) {
        return *known;
    }
    if (!pending_.contains(node)) {
        pending_.insert(node);
        auto* const watcher = new QFutureWatcher<QVariantMap>(this);
        connect(watcher, &QFutureWatcherBase::finished, this,
                [this, watcher, node, generation = generation_] {
                    watcher->deleteLater();
                    if (generation == generation_) {
                        finish(node, watcher->result());
                    }
                });
        watcher->setFuture(QtConcurrent::run(workOut, session_.finished(), node));
    }
    QVariantMap answer = emptyAnswer(node, QStringLiteral("Computing…"));
    answer.insert("pending", true);
    return answer;
}

void DistributionJobs::clear() {
    answers_.clear();
    pending_.clear();
    ++generation_;
    for (auto* const watcher : findChildren<QFutureWatcherBase*>()) {
        watcher->cancel();  // what has not begun need not hold its solve for long
    }
}

void DistributionJobs::finish(int node, const QVariantMap& answer) {
    pending_.remove(node);
    answers_.insert(node, answer);
    Q_EMIT ready(node);
}

}  // namespace tidewell
