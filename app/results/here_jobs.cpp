#include "app/results/here_jobs.h"

#include <QScopedValueRollback>
#include <memory>
#include <utility>

namespace tidewell {

using kestrel_app::ActionStatsHere;

QVariantList HereJobs::request(int node) {
    const QVariantList told = answers_.actionSharesHere(node);
    if (told.isEmpty() || !told.front().toMap().contains("pending") || pending_ == node) {
        return told;
    }
    start(node);
    return answers_.actionSharesHere(node);
}

void HereJobs::start(int node) {
    const std::weak_ptr<const kestrel_app::FinishedSolve> asked = session_.finished();
    const auto work = [asked, node](const std::atomic<bool>&) -> std::optional<ActionStatsHere> {
        const auto solve = asked.lock();
        return solve ? action_stats_here(*solve, static_cast<std::uint64_t>(node)) : std::nullopt;
    };
    const auto done = [this, node](std::optional<ActionStatsHere> stats) {
        if (!stats) {
            return;  // pending for good: there is no memory for it
        }
        pending_ = -1;
        answers_.keepHere(node, *std::move(stats));
        if (!starting_) {
            Q_EMIT ready(node);
        }
    };
    pending_ = node;
    const QScopedValueRollback starting(starting_, true);
    job_.start(work, done);
}

void HereJobs::clear() {
    pending_ = -1;
    job_.drop();
}

}  // namespace tidewell
