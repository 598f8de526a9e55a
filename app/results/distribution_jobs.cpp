#include "app/results/distribution_jobs.h"

#include <QFutureWatcher>
#include <QtConcurrent>
#include <memory>
#include <new>
#include <utility>

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

using Stop = std::shared_ptr<std::atomic<bool>>;

QVariantMap workOut(const std::weak_ptr<const kestrel_app::FinishedSolve>& asked, int node,
                    const Stop& stop) {
    try {
        const auto solve = asked.lock();
        const auto found = solve ? kestrel_app::hand_distributions(
                                       *solve, static_cast<std::uint64_t>(node), stop.get())
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
        const auto stop = std::make_shared<std::atomic<bool>>(false);
        pending_.insert(node, stop);
        auto* const watcher = new QFutureWatcher<QVariantMap>(this);
        connect(watcher, &QFutureWatcherBase::finished, this, [this, watcher, node, stop] {
            watcher->deleteLater();
            if (!*stop) {
                finish(node, watcher->result());
            }
        });
        watcher->setFuture(QtConcurrent::run(
            workOut, std::weak_ptr<const kestrel_app::FinishedSolve>(session_.finished()), node,
            stop));
    }
    QVariantMap answer = emptyAnswer(node, QStringLiteral("Computing…"));
    answer.insert("pending", true);
    return answer;
}

void DistributionJobs::cancel(int node) {
    if (const Stop stop = pending_.take(node)) {
        *stop = true;
    }
}

void DistributionJobs::clear() {
    answers_.clear();
    for (const Stop& stop : std::exchange(pending_, {})) {
        *stop = true;
    }
}

void DistributionJobs::finish(int node, const QVariantMap& answer) {
    pending_.remove(node);
    answers_.insert(node, answer);
    Q_EMIT ready(node);
}

}  // namespace tidewell
